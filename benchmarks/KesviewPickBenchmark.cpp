/// @file
/// Picks of kesview among many triangles, the index included, beside Embree alone on the same
/// triangles; one pick for every five triangles.

#include "picking/PickIndex.h"
#include "support/Bench.h"
#include "view/SceneAdapter.h"

#include <KesVizCore/graph/AttributeTransform.h>

#include <algorithm>
#include <cmath>
#include <embree3/rtcore.h>
#include <random>
#include <vector>

namespace kesview {
namespace {

/// A ball of about @p count triangles.
struct Ball {
    explicit Ball(std::int64_t count)
        : rows(std::max(2, static_cast<int>(std::sqrt(static_cast<double>(count) / 2.0)))) {
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

/// The balls stand in a square; each is described itself, or all are references to the first. Its
/// items keep pointers into @p ball.
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

std::vector<PickRay> makeRays(std::int64_t count) {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> across(-2, kGap * kSide + 2);
    std::uniform_real_distribution<double> tilt(-0.3, 0.3);
    std::vector<PickRay> rays;
    for (std::int64_t number = 0; number < count; ++number) {
        rays.push_back({{across(random), across(random), 50}, {tilt(random), tilt(random), -1}, 0});
    }
    return rays;
}

/// What is picked, and the rays.
struct Subject {
    explicit Subject(std::int64_t triangles)
        : ball(triangles / (kSide * kSide)),
          rays(makeRays(std::max<std::int64_t>(1, triangles / 5))) {}

    Ball ball;
    std::vector<PickRay> rays;
};

/// The first pick makes the index.
std::size_t pickAll(SceneAdapter& scene, const std::vector<PickRay>& rays, double aperture) {
    std::size_t hits = 0;
    for (PickRay ray : rays) {
        ray.aperture = aperture;
        hits += scene.Pick(ray) ? 1U : 0U;
    }
    return hits;
}

bench::Measure kesviewPicks(bool shared, double aperture) {
    return [shared, aperture](benchmark::State& state, std::int64_t size) {
        auto& subject = bench::once<Subject>(size);
        std::size_t hits = 0;
        const auto make = [&] {
            auto scene = std::make_unique<SceneAdapter>(makePickIndex);
            fillScene(*scene, subject.ball, shared);
            return scene;
        };
        bench::timeOnFresh(state, make, [&](SceneAdapter& scene) {
            hits = pickAll(scene, subject.rays, aperture);
        });
        if (hits == 0) {
            state.SkipWithError("nothing was hit");
        }
        bench::countItems(state, static_cast<std::int64_t>(subject.rays.size()));
    };
}

/// All triangles in one flat scene, as triangles of Embree's own.
class EmbreeScene {
public:
    EmbreeScene() = default;
    EmbreeScene(const EmbreeScene&) = delete;
    EmbreeScene& operator=(const EmbreeScene&) = delete;
    ~EmbreeScene() {
        rtcReleaseScene(_scene);
        rtcReleaseDevice(_device);
    }

    void MakeIndex(const Ball& ball) {
        rtcSetSceneFlags(_scene, RTC_SCENE_FLAG_ROBUST);
        for (int number = 0; number < kSide * kSide; ++number) {
            addBall(ball, number);
        }
        rtcCommitScene(_scene);
    }

    bool IsHit(const PickRay& ray) const {
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
        rtcIntersect1(_scene, &context, &asked);
        return asked.hit.geomID != RTC_INVALID_GEOMETRY_ID;
    }

private:
    void addBall(const Ball& ball, int number) {
        RTCGeometry geometry = rtcNewGeometry(_device, RTC_GEOMETRY_TYPE_TRIANGLE);
        auto* const points = static_cast<float*>(rtcSetNewGeometryBuffer(
            geometry, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3, 12, ball.points.size() / 3));
        auto* const corners = static_cast<unsigned*>(rtcSetNewGeometryBuffer(
            geometry, RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3, 12, ball.corners.size() / 3));
        const double shift[3] = {kGap * (number % kSide), kGap * (number / kSide), 0};
        for (std::size_t at = 0; at < ball.points.size(); ++at) {
            points[at] = ball.points[at] + static_cast<float>(shift[at % 3]);
        }
        std::copy(ball.corners.begin(), ball.corners.end(), corners);
        rtcCommitGeometry(geometry);
        rtcAttachGeometry(_scene, geometry);
        rtcReleaseGeometry(geometry);
    }

    RTCDevice _device = rtcNewDevice(nullptr);
    RTCScene _scene = rtcNewScene(_device);
};

void embreeAlone(benchmark::State& state, std::int64_t size) {
    const auto& subject = bench::once<Subject>(size);
    std::size_t hits = 0;
    bench::timeOnFresh(
        state, [] { return std::make_unique<EmbreeScene>(); },
        [&](EmbreeScene& scene) {
            scene.MakeIndex(subject.ball);
            hits = 0;
            for (const PickRay& ray : subject.rays) {
                hits += scene.IsHit(ray) ? 1U : 0U;
            }
        });
    if (hits == 0) {
        state.SkipWithError("nothing was hit");
    }
    bench::countItems(state, static_cast<std::int64_t>(subject.rays.size()));
}

// Indexes are made by several threads, whose time counts too.
const bench::Registered registered([] {
    constexpr double nearEdges = 0.02;
    for (const std::int64_t size : bench::sizesOr({1'000'000})) {
        const auto add = [size](const char* name, const bench::Measure& measure) {
            bench::add(name, size, measure)->MeasureProcessCPUTime();
        };
        add("kesview pick/ours", kesviewPicks(false, 0));
        add("kesview pick of a shared body/ours", kesviewPicks(true, 0));
        add("kesview pick with edges/ours", kesviewPicks(false, nearEdges));
        add("kesview pick/Embree", embreeAlone);
    }
});

}  // namespace
}  // namespace kesview
