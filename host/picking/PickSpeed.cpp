/// @file
/// Measures picks per second, and beside them rays per second of Embree alone on the same
/// triangles.
///
///     kesview_pick_speed [triangles [rays]]

#include "picking/PickIndex.h"
#include "view/SceneAdapter.h"

#include <KesVizCore/graph/AttributeTransform.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <embree3/rtcore.h>
#include <random>
#include <vector>

namespace kesview {
namespace {

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// A ball of about @p count triangles.
struct Ball {
    explicit Ball(int count) : rows(std::max(2, static_cast<int>(std::sqrt(count / 2.0)))) {
        constexpr double pi = 3.14159265358979323846;
        for (int row = 0; row <= rows; ++row) {
            for (int column = 0; column <= rows; ++column) {
                const double a = pi * row / rows;
                const double b = 2 * pi * column / rows;
                points.push_back(static_cast<float>(std::sin(a) * std::cos(b)));
                points.push_back(static_cast<float>(std::sin(a) * std::sin(b)));
                points.push_back(static_cast<float>(std::cos(a)));
            }
        }
        for (int row = 0; row < rows; ++row) {
            for (int column = 0; column < rows; ++column) {
                const int at = row * (rows + 1) + column;
                corners.insert(corners.end(),
                               {at, at + rows + 1, at + 1, at + 1, at + rows + 1, at + rows + 2});
            }
        }
        for (int column = 0; column <= rows; ++column) {
            const std::size_t at = 3 * static_cast<std::size_t>(rows / 2 * (rows + 1) + column);
            equator.insert(equator.end(), {points[at], points[at + 1], points[at + 2]});
        }
    }

    int rows;
    std::vector<float> points;
    std::vector<int> corners;
    std::vector<float> equator;
};

constexpr int kSide = 10;  // balls along each of two axes
constexpr double kGap = 2.5;

viz::Node* addGroup(viz::Node& parent, std::uint64_t id) {
    return parent.CreateChild(id);
}

/// The balls stand in a square; each is described itself, or all are references to the first.
void fillScene(SceneAdapter& scene, Ball& ball, bool shared) {
    const viz::RenderId top({1}, viz::View3D);
    auto& root = *static_cast<viz::Node*>(scene.GetNode(top));
    viz::AGeometryItemFactory& factory = *scene.GetGeometryItemFactory();
    viz::Node* first = nullptr;
    for (int number = 0; number < kSide * kSide; ++number) {
        viz::Node* const place = addGroup(root, 2 + static_cast<std::uint64_t>(number));
        Matrix matrix = identityMatrix;
        matrix[12] = kGap * (number % kSide);
        matrix[13] = kGap * (number / kSide);
        place->SetAttribute(new viz::AttributeTransform(matrix.data()));
        if (shared && first != nullptr) {
            place->AddChild(first);
            continue;
        }
        first = addGroup(*place, 1000);
        const auto faceType = static_cast<std::uint64_t>(viz::FaceType);
        viz::Node* const faces = addGroup(*first, faceType);
        faces->SetFilterID(viz::FaceType);
        addGroup(*faces, 1)->AddGeometry(factory.CreateTriangleSet(
            1, ball.points.data(), nullptr, ball.corners.data(),
            static_cast<int>(ball.points.size() / 3), 0, static_cast<int>(ball.corners.size()),
            viz::IndexedTriangles));
        viz::Node* const edges = addGroup(*first, static_cast<std::uint64_t>(viz::EdgeType));
        edges->SetFilterID(viz::EdgeType);
        addGroup(*edges, 1)->AddGeometry(factory.CreatePolyline(
            1, ball.equator.data(), static_cast<int>(ball.equator.size() / 3)));
    }
    scene.GeometryChanged();
}

std::vector<PickRay> makeRays(int count) {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> across(-2, kGap * kSide + 2);
    std::uniform_real_distribution<double> tilt(-0.3, 0.3);
    std::vector<PickRay> rays;
    for (int number = 0; number < count; ++number) {
        rays.push_back({{across(random), across(random), 50}, {tilt(random), tilt(random), -1}, 0});
    }
    return rays;
}

void measure(const char* name, Ball& ball, bool shared, const std::vector<PickRay>& rays,
             double aperture) {
    SceneAdapter scene(makePickIndex);
    fillScene(scene, ball, shared);
    const Clock::time_point begin = Clock::now();
    PickRay first = rays.front();
    first.aperture = aperture;
    scene.Pick(first);
    const double build = secondsSince(begin);
    const Clock::time_point start = Clock::now();
    std::size_t hits = 0;
    for (PickRay ray : rays) {
        ray.aperture = aperture;
        hits += scene.Pick(ray) ? 1U : 0U;
    }
    const double seconds = secondsSince(start);
    const double count = static_cast<double>(rays.size());
    std::printf("%-34s index %7.3f s   %9.0f picks/s   %6.2f us each   %4.1f %% hit\n", name, build,
                count / seconds, 1e6 * seconds / count, 100 * static_cast<double>(hits) / count);
}

/// All triangles in one flat scene, as triangles of Embree's own.
void measureEmbree(const Ball& ball, const std::vector<PickRay>& rays) {
    const Clock::time_point begin = Clock::now();
    RTCDevice device = rtcNewDevice(nullptr);
    RTCScene scene = rtcNewScene(device);
    rtcSetSceneFlags(scene, RTC_SCENE_FLAG_ROBUST);
    const std::size_t pointCount = ball.points.size() / 3;
    const std::size_t triangleCount = ball.corners.size() / 3;
    for (int number = 0; number < kSide * kSide; ++number) {
        RTCGeometry geometry = rtcNewGeometry(device, RTC_GEOMETRY_TYPE_TRIANGLE);
        auto* const points = static_cast<float*>(rtcSetNewGeometryBuffer(
            geometry, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3, 12, pointCount));
        auto* const corners = static_cast<unsigned*>(rtcSetNewGeometryBuffer(
            geometry, RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3, 12, triangleCount));
        for (std::size_t at = 0; at < ball.points.size(); ++at) {
            const double shift = at % 3 == 0   ? kGap * (number % kSide)
                                 : at % 3 == 1 ? kGap * (number / kSide)
                                               : 0;
            points[at] = ball.points[at] + static_cast<float>(shift);
        }
        std::copy(ball.corners.begin(), ball.corners.end(), corners);
        rtcCommitGeometry(geometry);
        rtcAttachGeometry(scene, geometry);
        rtcReleaseGeometry(geometry);
    }
    rtcCommitScene(scene);
    const double build = secondsSince(begin);
    const Clock::time_point start = Clock::now();
    std::size_t hits = 0;
    for (const PickRay& ray : rays) {
        RTCRayHit asked = {};
        asked.ray.org_x = static_cast<float>(ray.root[0]);
        asked.ray.org_y = static_cast<float>(ray.root[1]);
        asked.ray.org_z = static_cast<float>(ray.root[2]);
        asked.ray.dir_x = static_cast<float>(ray.direction[0]);
        asked.ray.dir_y = static_cast<float>(ray.direction[1]);
        asked.ray.dir_z = static_cast<float>(ray.direction[2]);
        asked.ray.tfar = HUGE_VALF;
        asked.ray.mask = static_cast<unsigned>(-1);
        asked.hit.geomID = RTC_INVALID_GEOMETRY_ID;
        RTCIntersectContext context;
        rtcInitIntersectContext(&context);
        rtcIntersect1(scene, &context, &asked);
        hits += asked.hit.geomID != RTC_INVALID_GEOMETRY_ID ? 1U : 0U;
    }
    const double seconds = secondsSince(start);
    const double count = static_cast<double>(rays.size());
    std::printf("%-34s index %7.3f s   %9.0f rays/s    %6.2f us each   %4.1f %% hit\n",
                "Embree alone, flat", build, count / seconds, 1e6 * seconds / count,
                100 * static_cast<double>(hits) / count);
    rtcReleaseScene(scene);
    rtcReleaseDevice(device);
}

void run(int triangles, int rayCount) {
    Ball ball(triangles / (kSide * kSide));
    const std::vector<PickRay> rays = makeRays(rayCount);
    std::printf("%zu triangles in %d bodies, %d rays\n", ball.corners.size() / 3 * kSide * kSide,
                kSide * kSide, rayCount);
    measure("faces, bodies of their own", ball, false, rays, 0);
    measure("faces and edges, their own", ball, false, rays, 0.02);
    measure("faces, one shared body", ball, true, rays, 0);
    measure("faces and edges, one shared body", ball, true, rays, 0.02);
    measureEmbree(ball, rays);
}

}  // namespace
}  // namespace kesview

int main(int count, char** arguments) {
    const int triangles = count > 1 ? std::atoi(arguments[1]) : 1000000;
    const int rays = count > 2 ? std::atoi(arguments[2]) : 200000;
    if (triangles < 800 || rays < 1) {
        std::fprintf(stderr, "usage: kesview_pick_speed [triangles [rays]]\n");
        return 2;
    }
    kesview::run(triangles, rays);
    return 0;
}
