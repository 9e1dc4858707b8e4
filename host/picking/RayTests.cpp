#include "picking/RayTests.h"

#include <KesVizCore/math/HitTests.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace kesview {

namespace {

constexpr double kTestSize = 100;       // units of the frame
constexpr double kGrowth = 1 + 1e-5;    // of triangles
constexpr double kSmallestArea = 0.02;  // twice the area, in square units of the frame
constexpr double kShortestLine = 1e-3;  // in units of the frame

// Three axes at right angles, the first of them where rays point in the frame of the tests.
constexpr Vector kAhead = {2.0 / 7, 3.0 / 7, 6.0 / 7};
constexpr Vector kAside = {3.0 / 7, -6.0 / 7, 2.0 / 7};
constexpr Vector kAbove = {6.0 / 7, 2.0 / 7, -3.0 / 7};
constexpr float kAheadFloat[3] = {2.0F / 7, 3.0F / 7, 6.0F / 7};

/// The frame of one test: its centre in the world, and how large a millimetre is in it.
struct Frame {
    const TestRay& ray;
    Vector center;
    double scale;

    void ToTest(const Vector& offset, float* out) const {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            out[axis] = static_cast<float>(scale * dot(ray.rows[axis], offset));
        }
    }
    Vector ToWorld(const float* point) const {
        Vector world = center;
        for (std::size_t axis = 0; axis < 3; ++axis) {
            world = world + (static_cast<double>(point[axis]) / scale) * ray.rows[axis];
        }
        return world;
    }
};

/// From the centre to the point of the ray that is nearest to it.
Vector toNearest(const TestRay& ray, const Vector& center) {
    const Vector toRoot = ray.root - center;
    return toRoot - dot(toRoot, ray.direction) * ray.direction;
}

std::optional<RayHit> hitAt(const TestRay& ray, const Vector& point) {
    const double distance = dot(point - ray.root, ray.direction);
    return distance >= 0 || ray.isLine ? std::optional<RayHit>({point, distance}) : std::nullopt;
}

}  // namespace

TestRay::TestRay(const PickRay& ray)
    : root(ray.root), direction(unit(ray.direction)), aperture(ray.aperture), isLine(ray.isLine) {
    const Vector other = std::abs(direction[0]) < 0.6 ? Vector{1, 0, 0} : Vector{0, 1, 0};
    const Vector aside = unit(cross(other, direction));
    const Vector above = cross(direction, aside);
    for (std::size_t axis = 0; axis < 3; ++axis) {
        rows[axis] = kAhead[axis] * direction + kAside[axis] * aside + kAbove[axis] * above;
    }
}

std::optional<RayHit> hitTriangle(const TestRay& ray, const Vector& a, const Vector& b,
                                  const Vector& c) {
    const Vector center = (1.0 / 3) * (a + b + c);
    const Vector offsets[3] = {a - center, b - center, c - center};
    const double square = std::max(
        {dot(offsets[0], offsets[0]), dot(offsets[1], offsets[1]), dot(offsets[2], offsets[2])});
    const Vector nearest = toNearest(ray, center);
    // Written so that a NaN is a miss.
    if (!(square > 0) || !(dot(nearest, nearest) <= square * kGrowth * kGrowth * kGrowth)) {
        return std::nullopt;
    }
    const double size = std::sqrt(square);
    const Frame frame = {ray, center, kTestSize / size};
    const double area = frame.scale * frame.scale *
                        lengthOf(cross(offsets[1] - offsets[0], offsets[2] - offsets[0]));
    if (!(area >= kSmallestArea) || !(dot(ray.direction, ray.direction) > 0)) {
        return std::nullopt;
    }
    float corners[3][3];
    for (std::size_t corner = 0; corner < 3; ++corner) {
        frame.ToTest(kGrowth * offsets[corner], corners[corner]);
    }
    float root[3];
    frame.ToTest(nearest - (2 * size) * ray.direction, root);
    float point[3];  // an array of its own: the test does more where it is the root's
    float distance = 0;
    if (!viz::RayHitsTriangle(corners[0], corners[1], corners[2], root, kAheadFloat, point,
                              distance)) {
        return std::nullopt;
    }
    return hitAt(ray, frame.ToWorld(point));
}

std::optional<RayHit> hitSegment(const TestRay& ray, const Vector& a, const Vector& b) {
    const Vector center = 0.5 * (a + b);
    const Vector half = 0.5 * (b - a);
    const double reach = lengthOf(half) + ray.aperture;
    const Vector nearest = toNearest(ray, center);
    if (!(reach > 0) || !(dot(nearest, nearest) <= reach * reach)) {
        return std::nullopt;
    }
    const Frame frame = {ray, center, kTestSize / std::max(lengthOf(half), ray.aperture)};
    if (2 * frame.scale * lengthOf(half) < kShortestLine) {
        return hitPoint(ray, center);
    }
    float ends[2][3];
    frame.ToTest(-1 * half, ends[0]);
    frame.ToTest(half, ends[1]);
    float root[3];
    frame.ToTest(nearest - (2 * reach) * ray.direction, root);
    float point[3];
    float steps = 0;
    if (!viz::RayHitsLineSegment(ends[0], ends[1], static_cast<float>(frame.scale * ray.aperture),
                                 root, kAheadFloat, point, steps)) {
        return std::nullopt;
    }
    return hitAt(ray, frame.ToWorld(point));
}

std::optional<RayHit> hitPoint(const TestRay& ray, const Vector& point) {
    const Vector nearest = toNearest(ray, point);
    if (!(lengthOf(nearest) < ray.aperture)) {
        return std::nullopt;
    }
    return hitAt(ray, point);
}

}  // namespace kesview
