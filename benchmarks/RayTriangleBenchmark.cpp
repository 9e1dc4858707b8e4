/// @file
/// One ray and many triangles that it hits, or passes by, beside the test of T. Möller and
/// B. Trumbore (Fast, Minimum Storage Ray/Triangle Intersection, 1997).

#include "support/Bench.h"

#include <KesVizCore/math/HitTests.h>

#include <cmath>
#include <random>

namespace bench {
namespace {

namespace viz = KesVizCore;

const float root[3] = {0.0F, 0.0F, -10.0F};
const float direction[3] = {0.0F, 0.0F, 1.0F};

/// Triangles around the z axis, on which the ray runs, or @p shift beside it; 9 floats each.
std::vector<float> triangles(std::int64_t count, float shift) {
    std::mt19937 random(1);
    std::uniform_real_distribution<float> angle(0.0F, 2.0F);
    std::uniform_real_distribution<float> radius(0.5F, 2.0F);
    std::uniform_real_distribution<float> height(-1.0F, 1.0F);
    std::vector<float> corners;
    corners.reserve(9 * static_cast<std::size_t>(count));
    for (std::int64_t number = 0; number < count; ++number) {
        const float start = angle(random);
        for (int corner = 0; corner < 3; ++corner) {
            const float at = start + static_cast<float>(corner) * 2.0943951F;  // a third of a turn
            const float far = radius(random);
            corners.push_back(shift + far * std::cos(at));
            corners.push_back(far * std::sin(at));
            corners.push_back(height(random));
        }
    }
    return corners;
}

template <bool hit>
struct Triangles {
    explicit Triangles(std::int64_t count) : corners(triangles(count, hit ? 0.0F : 5.0F)) {}

    std::vector<float> corners;
};

struct Vector {
    float x, y, z;
};

Vector minus(const float* a, const float* b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

Vector cross(const Vector& a, const Vector& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

float dot(const Vector& a, const Vector& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

bool moellerTrumbore(const float* p0, const float* p1, const float* p2, float* hitPoint,
                     float& distance) {
    const Vector along{direction[0], direction[1], direction[2]};
    const Vector edge1 = minus(p1, p0);
    const Vector edge2 = minus(p2, p0);
    const Vector p = cross(along, edge2);
    const float determinant = dot(edge1, p);
    if (std::fabs(determinant) < 1e-9F) {
        return false;
    }
    const float inverse = 1.0F / determinant;
    const Vector toRoot = minus(root, p0);
    const float u = dot(toRoot, p) * inverse;
    if (u < 0.0F || u > 1.0F) {
        return false;
    }
    const Vector q = cross(toRoot, edge1);
    const float v = dot(along, q) * inverse;
    if (v < 0.0F || u + v > 1.0F) {
        return false;
    }
    distance = dot(edge2, q) * inverse;
    if (distance < 0.0F) {
        return false;
    }
    for (int axis = 0; axis < 3; ++axis) {
        hitPoint[axis] = root[axis] + distance * direction[axis];
    }
    return true;
}

bool ours(const float* p0, const float* p1, const float* p2, float* hitPoint, float& distance) {
    return viz::RayHitsTriangle(p0, p1, p2, root, direction, hitPoint, distance);
}

using Test = bool (*)(const float*, const float*, const float*, float*, float&);

template <Test test, bool hit>
void testAll(benchmark::State& state, std::int64_t size) {
    const std::vector<float>& corners = once<Triangles<hit>>(size).corners;
    std::int64_t hits = 0;
    timeRounds(state, [&] {
        hits = 0;
        for (std::size_t at = 0; at < corners.size(); at += 9) {
            const float* const p = corners.data() + at;
            float hitPoint[3];
            float distance = 0.0F;
            hits += test(p, p + 3, p + 6, hitPoint, distance) ? 1 : 0;
            benchmark::DoNotOptimize(hitPoint);
            benchmark::DoNotOptimize(distance);
        }
    });
    if (hits != (hit ? size : 0)) {
        state.SkipWithError("hit another number than there are");
    }
    countItems(state, size);
}

const Registered registered([] {
    for (const std::int64_t size : sizesOr({1'000'000})) {
        add("ray hits triangle/ours", size, testAll<ours, true>);
        add("ray hits triangle/scalar", size, testAll<moellerTrumbore, true>);
        add("ray misses triangle/ours", size, testAll<ours, false>);
        add("ray misses triangle/scalar", size, testAll<moellerTrumbore, false>);
    }
});

}  // namespace
}  // namespace bench
