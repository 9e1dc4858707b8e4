#include "picking/RayTests.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <random>

namespace kesview {
namespace {

using Long = std::array<long double, 3>;

Long widened(const Vector& v) {
    return {v[0], v[1], v[2]};
}
Long minus(const Long& a, const Long& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}
long double inner(const Long& a, const Long& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}
Long outer(const Long& a, const Long& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

/// Where a line meets a triangle, by determinants in long double.
struct Exact {
    long double distance;
    long double inside;  ///< the smallest of the three shares: below 0 is outside
};
Exact meet(const Vector& root, const Vector& direction, const Vector& a, const Vector& b,
           const Vector& c) {
    const Long e1 = minus(widened(b), widened(a));
    const Long e2 = minus(widened(c), widened(a));
    const Long d = widened(direction);
    const Long p = outer(d, e2);
    const long double determinant = inner(e1, p);
    const Long t = minus(widened(root), widened(a));
    const long double u = inner(t, p) / determinant;
    const Long q = outer(t, e1);
    const long double v = inner(d, q) / determinant;
    return {inner(e2, q) / determinant, std::min({u, v, 1 - u - v})};
}

class Draws {
public:
    explicit Draws(unsigned seed) : _random(seed) {}
    Vector InBox(double half) {
        std::uniform_real_distribution<double> along(-half, half);
        return {along(_random), along(_random), along(_random)};
    }

private:
    std::mt19937 _random;
};

/// Sizes from a hundredth of a millimetre to a kilometre, near zero and far away.
class TriangleSizeTest : public ::testing::TestWithParam<std::pair<double, double>> {};

TEST_P(TriangleSizeTest, AgreesWithDeterminants) {
    const auto [size, away] = GetParam();
    Draws draws(7);
    int hits = 0;
    for (int trial = 0; trial < 20000; ++trial) {
        const Vector center = away * draws.InBox(1);
        const Vector a = center + draws.InBox(size);
        const Vector b = center + draws.InBox(size);
        const Vector c = center + draws.InBox(size);
        const Vector root = center + draws.InBox(5 * size);
        const Vector direction = unit(center + draws.InBox(size) - root);
        const Exact exact = meet(root, direction, a, b, c);
        const std::optional<RayHit> hit = hitTriangle(TestRay({root, direction, 0}), a, b, c);
        if (exact.inside > 1e-4L && exact.distance > 0.001L * size) {
            // A sliver, or one that is seen on edge, need not be hit.
            const Vector normal = unit(cross(b - a, c - a));
            const double thickness = lengthOf(cross(b - a, c - a)) / (size * size);
            if (thickness < 1e-3 || std::abs(dot(normal, direction)) < 1e-3) {
                continue;
            }
            ASSERT_TRUE(hit) << "trial " << trial;
            ASSERT_NEAR(hit->distance, static_cast<double>(exact.distance),
                        1e-3 * size + 1e-9 * away);
            ++hits;
        } else if (exact.inside < -1e-2L || exact.distance < -0.01L * size) {
            ASSERT_FALSE(hit) << "trial " << trial;
        }
    }
    EXPECT_GT(hits, 1000);
}

INSTANTIATE_TEST_SUITE_P(All, TriangleSizeTest,
                         ::testing::Values(std::pair(0.01, 1.0), std::pair(10.0, 100.0),
                                           std::pair(1e6, 1.0), std::pair(1.0, 1e6)));

TEST(HitTriangleTest, NoRaySlipsThroughTheSeamOfTwo) {
    Draws draws(11);
    for (int trial = 0; trial < 20000; ++trial) {
        const Vector a = draws.InBox(10);
        const Vector b = draws.InBox(10);
        const Vector c = draws.InBox(10);
        const Vector d = draws.InBox(10);
        const double along = 0.1 + 0.8 * (trial % 100) / 100;
        const Vector root = draws.InBox(50);
        const TestRay ray({root, a + along * (c - a) - root, 0});
        EXPECT_TRUE(hitTriangle(ray, a, b, c) || hitTriangle(ray, a, c, d)) << trial;
    }
}

TEST(HitTriangleTest, ARayAlmostAlongAnAxisIsNotBent) {
    // The library's own test takes this direction for the axis, and would hit 0.3 away.
    const Vector a = {0.2, -1, 0};
    const TestRay ray({{0, 0, 1000}, {0.0003, 0, -1}, 0});
    const std::optional<RayHit> hit = hitTriangle(ray, a, {1, -1, 0}, {0.2, 3, 0});
    ASSERT_TRUE(hit);
    EXPECT_NEAR(hit->point[0], 0.3, 1e-5);
}

TEST(HitTriangleTest, MissesWhatIsBehindOrNoTriangle) {
    const TestRay ray({{0, 0, 1}, {0, 0, 1}, 0});
    EXPECT_FALSE(hitTriangle(ray, {-1, -1, 0}, {1, -1, 0}, {0, 1, 0}));
    const TestRay down({{0, 0, 1}, {0, 0, -1}, 0});
    EXPECT_TRUE(hitTriangle(down, {-1, -1, 0}, {1, -1, 0}, {0, 1, 0}));
    EXPECT_FALSE(hitTriangle(down, {0, 0, 0}, {0, 0, 0}, {0, 0, 0}));
    EXPECT_FALSE(hitTriangle(down, {-1, 0, 0}, {0, 0, 0}, {1, 0, 0}));
    EXPECT_FALSE(hitTriangle(down, {NAN, 0, 0}, {0, 1, 0}, {1, 0, 0}));
    EXPECT_FALSE(
        hitTriangle(TestRay(PickRay{{0, 0, 1}, {0, 0, 0}, 0}), {-1, -1, 0}, {1, -1, 0}, {0, 1, 0}));
}

TEST(HitSegmentTest, IsHitWithinTheAperture) {
    const TestRay ray({{0, 0, 100}, {0, 0, -2}, 0.5});
    const std::optional<RayHit> hit = hitSegment(ray, {-10, 0.4, 3}, {10, 0.4, 3});
    ASSERT_TRUE(hit);
    EXPECT_NEAR(hit->distance, 97, 1e-4);
    EXPECT_NEAR(hit->point[1], 0.4, 1e-5);
    EXPECT_FALSE(hitSegment(ray, {-10, 0.6, 3}, {10, 0.6, 3}));
    EXPECT_FALSE(hitSegment(ray, {1, 0.4, 3}, {10, 0.4, 3})) << "it ends before";
    EXPECT_FALSE(hitSegment(ray, {-10, 0.4, 103}, {10, 0.4, 103})) << "behind the root";
    EXPECT_TRUE(hitSegment(ray, {0.2, 0, 3}, {0.2, 0, 9})) << "along the ray";
    EXPECT_FALSE(hitSegment(TestRay({{0, 0, 100}, {0, 0, -1}, 0}), {-1, 0, 0}, {1, 0, 0}));
}

TEST(HitSegmentTest, AShortLineIsHitAsWell) {
    const TestRay ray({{0, 0, 100}, {0, 0, -1}, 0.5});
    EXPECT_TRUE(hitSegment(ray, {0.1, -1e-5, 0}, {0.1, 1e-5, 0}));
    EXPECT_TRUE(hitSegment(ray, {0.1, 0, 0}, {0.1, 0, 0})) << "a point";
}

TEST(HitPointTest, IsHitWithinTheAperture) {
    const TestRay ray({{0, 0, 100}, {0, 0, -1}, 0.5});
    EXPECT_TRUE(hitPoint(ray, {0.3, 0.3, 0}));
    EXPECT_FALSE(hitPoint(ray, {0.4, 0.4, 0}));
    EXPECT_FALSE(hitPoint(ray, {0, 0, 101}));
}

}  // namespace
}  // namespace kesview
