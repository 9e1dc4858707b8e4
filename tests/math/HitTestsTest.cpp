#include "Floats.h"

#include <KesVizCore/math/HitTests.h>
#include <KesVizCore/math/VectorMath.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <string>

namespace KesVizCore {
namespace {

using ::testing::PrintToString;

constexpr float kHitTolerance = 1e-9F;
constexpr long double kUnit = 0x1p-24L;  // half a unit in the last place, relative
constexpr int kRounds = 5000;
constexpr float kUntouched = -77.0F;

// GetRayVector

struct Camera {
    Vector eye;
    Vector target;
    Vector up;
    float viewWidth;
    float viewHeight;
    int width;
    int height;
};

struct PixelRay {
    Vector root;
    Vector direction;
};

PixelRay rayThrough(int x, int y, Camera camera, bool perspective) {
    PixelRay ray = {};
    GetRayVector(x, y, camera.width, camera.height, camera.eye.data(), camera.target.data(),
                 camera.up.data(), camera.viewWidth, camera.viewHeight, perspective,
                 ray.root.data(), ray.direction.data());
    return ray;
}

/// Looks down on the plane z = 2 from z = 12: 8 by 4 units on 4 by 2 pixels, centred on (1, 1).
const Camera kFromAbove = {
    {1.0F, 1.0F, 12.0F}, {1.0F, 1.0F, 2.0F}, {0.0F, 1.0F, 0.0F}, 8.0F, 4.0F, 4, 2};

TEST(HitTestsTest, PerspectiveRayOfTheCentrePixelIsTheLineOfSight) {
    Camera camera = {
        {1.0F, 2.0F, 10.0F}, {4.0F, -2.0F, 3.0F}, {0.0F, 0.0F, 1.0F}, 8.0F, 6.0F, 801, 601};
    const PixelRay ray = rayThrough(400, 300, camera, true);
    EXPECT_EQ(ray.root, camera.eye);
    EXPECT_EQ(ray.direction, (Vector{3.0F, -4.0F, -7.0F}));
}

TEST(HitTestsTest, PerspectiveRayReachesThePixelsPointOnTheViewPlane) {
    // The first pixel is the one at the top left: half a pixel, 1 unit, inside the corner.
    const PixelRay topLeft = rayThrough(0, 0, kFromAbove, true);
    EXPECT_EQ(topLeft.root, kFromAbove.eye);
    EXPECT_EQ(topLeft.direction, (Vector{-3.0F, 1.0F, -10.0F}));
    const PixelRay bottomRight = rayThrough(3, 1, kFromAbove, true);
    EXPECT_EQ(bottomRight.direction, (Vector{3.0F, -1.0F, -10.0F}));
}

TEST(HitTestsTest, ParallelRayStartsInThePlaneOfTheEyeAndHasTheLengthOfTheSight) {
    const PixelRay ray = rayThrough(0, 0, kFromAbove, false);
    EXPECT_EQ(ray.root, (Vector{-2.0F, 2.0F, 12.0F}));
    EXPECT_EQ(ray.direction, (Vector{0.0F, 0.0F, -10.0F}));
}

TEST(HitTestsTest, PixelsOutsideTheViewportLieOutsideTheView) {
    EXPECT_EQ(rayThrough(-1, 2, kFromAbove, true).direction, (Vector{-5.0F, -3.0F, -10.0F}));
}

TEST(HitTestsTest, RayUsesTheUpVectorAsGiven) {
    Camera camera = kFromAbove;
    camera.up = {0.0F, 2.0F, 0.0F};
    // The view is stretched upward, not sideways.
    EXPECT_EQ(rayThrough(0, 0, camera, true).direction, (Vector{-3.0F, 2.0F, -10.0F}));
}

TEST(HitTestsTest, RayOfAnUpVectorAlongTheSightThrowsAndWritesNothing) {
    Camera camera = kFromAbove;
    camera.up = {0.0F, 0.0F, 1.0F};
    for (const bool perspective : {true, false}) {
        Vector root = {7.0F, 7.0F, 7.0F};
        Vector direction = root;
        EXPECT_THROW(
            GetRayVector(0, 0, 4, 2, camera.eye.data(), camera.target.data(), camera.up.data(),
                         8.0F, 4.0F, perspective, root.data(), direction.data()),
            std::invalid_argument);
        EXPECT_EQ(root, (Vector{7.0F, 7.0F, 7.0F}));
        EXPECT_EQ(direction, (Vector{7.0F, 7.0F, 7.0F}));
    }
}

TEST(HitTestsTest, RayOfAnEyeInTheTargetThrows) {
    Camera camera = kFromAbove;
    camera.eye = camera.target;
    EXPECT_THROW(rayThrough(0, 0, camera, true), std::invalid_argument);
    EXPECT_THROW(rayThrough(0, 0, camera, false), std::invalid_argument);
}

TEST(HitTestsTest, ParallelRayOfASightTooShortToNormaliseThrowsAndWritesNothing) {
    Camera camera = kFromAbove;
    camera.target = {};
    camera.eye = {0.0F, 0.0F, 1e-8F};
    camera.up = {0.0F, 1e10F, 0.0F};  // long enough for a horizontal vector
    EXPECT_NO_THROW(rayThrough(0, 0, camera, true));
    Vector root = {7.0F, 7.0F, 7.0F};
    Vector direction = root;
    EXPECT_THROW(GetRayVector(0, 0, 4, 2, camera.eye.data(), camera.target.data(), camera.up.data(),
                              8.0F, 4.0F, false, root.data(), direction.data()),
                 std::invalid_argument);
    EXPECT_EQ(root, (Vector{7.0F, 7.0F, 7.0F}));
    EXPECT_EQ(direction, (Vector{7.0F, 7.0F, 7.0F}));
}

TEST(HitTestsTest, RayMayBeWrittenOverTheCamera) {
    for (const bool perspective : {true, false}) {
        Camera camera = kFromAbove;
        const PixelRay apart = rayThrough(1, 0, camera, perspective);
        GetRayVector(1, 0, 4, 2, camera.eye.data(), camera.target.data(), camera.up.data(), 8.0F,
                     4.0F, perspective, camera.eye.data(), camera.target.data());
        EXPECT_EQ(camera.eye, apart.root);
        EXPECT_EQ(camera.target, apart.direction);
    }
}

Camera randomCamera(SeededNumbers& numbers) {
    Camera camera = {numbers.VectorWithin(100.0),
                     numbers.VectorWithin(10.0),
                     numbers.UnitVector(),
                     numbers.FloatBetween(1.0, 50.0),
                     numbers.FloatBetween(1.0, 50.0),
                     static_cast<int>(numbers.Between(1.0, 2000.0)),
                     static_cast<int>(numbers.Between(1.0, 2000.0))};
    return camera;
}

std::string describe(const Camera& camera, int x, int y) {
    return PrintToString(camera.eye) + PrintToString(camera.target) + PrintToString(camera.up) +
           PrintToString(camera.viewWidth) + "x" + PrintToString(camera.viewHeight) + " pixel " +
           PrintToString(x) + "," + PrintToString(y) + " of " + PrintToString(camera.width) + "x" +
           PrintToString(camera.height);
}

/// The pixel's point from fractions of the viewport, measured from its lower left corner.
LongVector exactPixelPoint(const Camera& camera, int x, int y) {
    const LongVector back = difference(widened(camera.eye), widened(camera.target));
    const LongVector right = cross(widened(camera.up), back);
    const long double fromLeft = (x + 0.5L) / camera.width;
    const long double fromBelow = 1.0L - (y + 0.5L) / camera.height;
    return sum(widened(camera.target),
               sum(times((fromLeft - 0.5L) * camera.viewWidth / length(right), right),
                   times((fromBelow - 0.5L) * camera.viewHeight, widened(camera.up))));
}

TEST(HitTestsTest, RaysMeetTheirPixelsPointForAnyCamera) {
    SeededNumbers numbers(201);
    for (int round = 0; round < kRounds; ++round) {
        const Camera camera = randomCamera(numbers);
        const int x = static_cast<int>(numbers.Between(0.0, camera.width));
        const int y = static_cast<int>(numbers.Between(0.0, camera.height));
        SCOPED_TRACE(describe(camera, x, y));
        const LongVector back = difference(widened(camera.eye), widened(camera.target));
        const LongVector right = cross(widened(camera.up), back);
        const auto isNearAxis = [](const LongVector& v) {
            return std::max({std::fabs(v[0]), std::fabs(v[1]), std::fabs(v[2])}) >
                   0.999L * length(v);
        };
        if (length(back) < 1.0L || length(right) < 0.1L * length(back) || isNearAxis(back) ||
            isNearAxis(right)) {
            continue;  // ill-conditioned, or snapped to an axis
        }
        const LongVector exact = exactPixelPoint(camera, x, y);
        const PixelRay toPoint = rayThrough(x, y, camera, true);
        const PixelRay parallel = rayThrough(x, y, camera, false);
        EXPECT_EQ(toPoint.root, camera.eye);
        // Coordinates below 300, some thirty roundings; the horizontal vector is off by ten times
        // its own where up and sight are nearly parallel.
        const long double bound = 300.0L * 60.0L * kUnit;
        const LongVector end = sum(widened(toPoint.root), widened(toPoint.direction));
        const LongVector parallelEnd = sum(widened(parallel.root), widened(parallel.direction));
        EXPECT_LE(length(difference(end, exact)), bound);
        EXPECT_LE(length(difference(parallelEnd, exact)), bound);
        EXPECT_LE(length(sum(widened(parallel.direction), back)), bound);
    }
}

TEST(HitTestsTest, RayRoundsEveryStepToAFloat) {
    SeededNumbers numbers(202);
    for (int round = 0; round < kRounds; ++round) {
        const Camera camera = randomCamera(numbers);
        const int x = static_cast<int>(numbers.Between(0.0, camera.width));
        const int y = static_cast<int>(numbers.Between(0.0, camera.height));
        SCOPED_TRACE(describe(camera, x, y));
        const Rounded screenX =
            (Rounded(static_cast<float>(x)) + 0.5F) / static_cast<float>(camera.width) * 2.0F -
            1.0F;
        const Rounded screenY =
            -((Rounded(static_cast<float>(y)) + 0.5F) / static_cast<float>(camera.height) * 2.0F -
              1.0F);
        const Rounded across = screenX * camera.viewWidth / 2.0F;
        const Rounded along = screenY * camera.viewHeight / 2.0F;
        Vector back = {};
        Vector right = {};
        Vector sight = {};
        CrossProduct(camera.up.data(),
                     Subtract(camera.eye.data(), camera.target.data(), back.data()), right.data());
        Normalize(right.data());
        Normalize(Subtract(camera.target.data(), camera.eye.data(), sight.data()));
        const Rounded size = Length(back.data());

        const PixelRay toPoint = rayThrough(x, y, camera, true);
        const PixelRay parallel = rayThrough(x, y, camera, false);
        for (std::size_t i = 0; i < 3; ++i) {
            const Rounded point = across * right[i] + camera.target[i] + along * camera.up[i];
            const Rounded parallelDirection = size * sight[i];
            EXPECT_EQ(toPoint.direction[i], (point - camera.eye[i]).Value());
            EXPECT_EQ(parallel.direction[i], parallelDirection.Value());
            EXPECT_EQ(parallel.root[i], (point - parallelDirection).Value());
        }
    }
}

// SameHalfSpace

bool sameHalfSpace(const Vector& p1, const Vector& p2, const Vector& q, const Vector& n) {
    return SameHalfSpace(p1.data(), p2.data(), q.data(), n.data());
}

TEST(HitTestsTest, PointsOnOneSideShareTheHalfSpace) {
    const Vector q = {5.0F, 5.0F, 1.0F};
    const Vector n = {0.0F, 0.0F, 2.0F};
    EXPECT_TRUE(sameHalfSpace({0.0F, 0.0F, 2.0F}, {9.0F, 9.0F, 1.5F}, q, n));
    EXPECT_TRUE(sameHalfSpace({0.0F, 0.0F, 0.0F}, {9.0F, 9.0F, 0.5F}, q, n));
}

TEST(HitTestsTest, PointsOnBothSidesDoNotShareTheHalfSpace) {
    const Vector q = {5.0F, 5.0F, 1.0F};
    const Vector n = {0.0F, 0.0F, 2.0F};
    EXPECT_FALSE(sameHalfSpace({0.0F, 0.0F, 2.0F}, {9.0F, 9.0F, 0.5F}, q, n));
    EXPECT_FALSE(sameHalfSpace({0.0F, 0.0F, 0.5F}, {9.0F, 9.0F, 2.0F}, q, n));
}

TEST(HitTestsTest, APointOnThePlaneSharesTheHalfSpaceWithAnyOther) {
    const Vector q = {5.0F, 5.0F, 1.0F};
    const Vector n = {0.0F, 0.0F, 2.0F};
    const Vector onPlane = {-3.0F, 4.0F, 1.0F};
    for (const float z : {-1000.0F, 1.0F, 1000.0F}) {
        EXPECT_TRUE(sameHalfSpace(onPlane, {0.0F, 0.0F, z}, q, n));
        EXPECT_TRUE(sameHalfSpace({0.0F, 0.0F, z}, onPlane, q, n));
    }
}

TEST(HitTestsTest, HalfSpaceTakesProductsBelowTheToleranceForPointsOnThePlane) {
    const Vector below = {0.0F, 0.0F, -1.0F};
    const Vector origin = {};
    const Vector n = {0.0F, 0.0F, 1.0F};
    EXPECT_TRUE(sameHalfSpace({0.0F, 0.0F, justBelow(1e-7F)}, below, origin, n));
    EXPECT_FALSE(sameHalfSpace({0.0F, 0.0F, 1e-7F}, below, origin, n));
    // The normal's length counts too.
    EXPECT_TRUE(sameHalfSpace({0.0F, 0.0F, 1e-4F}, below, origin, {0.0F, 0.0F, 9e-4F}));
}

TEST(HitTestsTest, HalfSpaceIsSharedWhereAPointIsNaN) {
    EXPECT_TRUE(sameHalfSpace({0.0F, 0.0F, kNaN}, {0.0F, 0.0F, -1.0F}, {}, {0.0F, 0.0F, 1.0F}));
}

// RayHitsLineSegment

struct SegmentAnswer {
    bool hit;
    Vector point;
    float distance;
};

SegmentAnswer testSegment(const Vector& a, const Vector& b, float aperture, const Vector& root,
                          const Vector& direction) {
    SegmentAnswer answer = {};
    answer.hit = RayHitsLineSegment(a.data(), b.data(), aperture, root.data(), direction.data(),
                                    answer.point.data(), answer.distance);
    return answer;
}

TEST(HitTestsTest, SegmentWithinTheApertureIsHit) {
    const SegmentAnswer answer = testSegment({0.0F, 0.0F, 0.0F}, {1.0F, 0.0F, 0.0F}, 0.1F,
                                             {0.5F, 0.05F, 1.0F}, {0.0F, 0.0F, -1.0F});
    EXPECT_TRUE(answer.hit);
    EXPECT_EQ(answer.point, (Vector{0.5F, 0.0F, 0.0F}));
    EXPECT_EQ(answer.distance, 1.0F);
}

TEST(HitTestsTest, SegmentAtTheApertureItselfIsNotHitButReported) {
    const SegmentAnswer answer = testSegment({0.0F, 0.0F, 0.0F}, {1.0F, 0.0F, 0.0F}, 0.05F,
                                             {0.5F, 0.05F, 1.0F}, {0.0F, 0.0F, -1.0F});
    EXPECT_FALSE(answer.hit);
    EXPECT_EQ(answer.point, (Vector{0.5F, 0.0F, 0.0F}));
    EXPECT_EQ(answer.distance, 1.0F);
}

TEST(HitTestsTest, SegmentIsHitFromTheNextApertureOn) {
    const Vector a = {0.0F, 0.0F, 0.0F};
    const Vector b = {1.0F, 0.0F, 0.0F};
    const Vector root = {0.5F, 0.0625F, 1.0F};
    const Vector direction = {0.0F, 0.0F, -1.0F};
    EXPECT_FALSE(testSegment(a, b, justBelow(0.0625F), root, direction).hit);
    EXPECT_FALSE(testSegment(a, b, 0.0625F, root, direction).hit);
    EXPECT_TRUE(testSegment(a, b, justAbove(0.0625F), root, direction).hit);
    EXPECT_FALSE(testSegment(a, b, kNaN, root, direction).hit);
}

TEST(HitTestsTest, SegmentDistanceMayBeACoordinateOfTheHitPoint) {
    const Vector a = {0.0F, 0.0F, 0.0F};
    const Vector b = {1.0F, 0.0F, 0.0F};
    const Vector root = {0.5F, 0.05F, 1.0F};
    const Vector direction = {0.0F, 0.0F, -1.0F};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        Vector point = {};
        EXPECT_TRUE(RayHitsLineSegment(a.data(), b.data(), 0.1F, root.data(), direction.data(),
                                       point.data(), point[axis]));
        EXPECT_EQ(point[axis], 1.0F);
    }
}

TEST(HitTestsTest, SegmentDistanceCountsLengthsOfTheDirection) {
    const SegmentAnswer answer = testSegment({0.0F, 0.0F, 0.0F}, {1.0F, 0.0F, 0.0F}, 0.1F,
                                             {0.5F, 0.0F, 1.0F}, {0.0F, 0.0F, -4.0F});
    EXPECT_TRUE(answer.hit);
    EXPECT_EQ(answer.distance, 0.25F);
}

TEST(HitTestsTest, SegmentThatEndsBeforeTheRayIsNotHitThoughWithinTheAperture) {
    const Vector a = {0.0F, 0.0F, 0.0F};
    const Vector b = {1.0F, 0.0F, 0.0F};
    const Vector down = {0.0F, 0.0F, -1.0F};
    const SegmentAnswer beyond = testSegment(a, b, 10.0F, {1.5F, 0.0F, 1.0F}, down);
    EXPECT_FALSE(beyond.hit);
    EXPECT_EQ(beyond.point, (Vector{1.5F, 0.0F, 0.0F}));
    EXPECT_FALSE(testSegment(a, b, 10.0F, {-0.5F, 0.0F, 1.0F}, down).hit);
}

TEST(HitTestsTest, SegmentIncludesItsFarEndAndNoFloatBeyond) {
    const Vector a = {0.0F, 0.0F, 0.0F};
    const Vector b = {1.0F, 0.0F, 0.0F};
    const Vector down = {0.0F, 0.0F, -1.0F};
    EXPECT_TRUE(testSegment(a, b, 0.1F, {1.0F, 0.0F, 1.0F}, down).hit);
    EXPECT_FALSE(testSegment(a, b, 0.1F, {justAbove(1.0F), 0.0F, 1.0F}, down).hit);
}

TEST(HitTestsTest, SegmentIncludesTheHitToleranceBeforeItsNearEnd) {
    // So long that the small numbers survive the products.
    const Vector a = {0.0F, 0.0F, 0.0F};
    const Vector b = {1024.0F, 0.0F, 0.0F};
    const Vector down = {0.0F, 0.0F, -1.0F};
    const auto hit = [&](float s) {
        return testSegment(a, b, 0.1F, {1024.0F * s, 0.0F, 1.0F}, down).hit;
    };
    EXPECT_TRUE(hit(0.0F));
    EXPECT_TRUE(hit(justAbove(-kHitTolerance)));
    EXPECT_TRUE(hit(-kHitTolerance));
    EXPECT_FALSE(hit(justBelow(-kHitTolerance)));
}

TEST(HitTestsTest, SegmentIncludesTheHitToleranceBehindTheRoot) {
    const Vector a = {0.0F, 0.0F, 0.0F};
    const Vector b = {1.0F, 0.0F, 0.0F};
    const auto hit = [&](float t) {
        return testSegment(a, b, 0.1F, {0.5F, 0.0F, 1024.0F * t}, {0.0F, 0.0F, -1024.0F}).hit;
    };
    EXPECT_TRUE(hit(0.0F));
    EXPECT_TRUE(hit(justAbove(-kHitTolerance)));
    EXPECT_TRUE(hit(-kHitTolerance));
    EXPECT_FALSE(hit(justBelow(-kHitTolerance)));
}

TEST(HitTestsTest, SegmentBehindTheRootIsReportedWithANegativeDistance) {
    const SegmentAnswer answer = testSegment({0.0F, 0.0F, 0.0F}, {1.0F, 0.0F, 0.0F}, 0.1F,
                                             {0.5F, 0.0F, 1.0F}, {0.0F, 0.0F, 2.0F});
    EXPECT_FALSE(answer.hit);
    EXPECT_EQ(answer.point, (Vector{0.5F, 0.0F, 0.0F}));
    EXPECT_EQ(answer.distance, -0.5F);
}

TEST(HitTestsTest, SegmentAskewToTheRayIsHitWhereTheLinesAreClosest) {
    const SegmentAnswer answer = testSegment({0.0F, 0.0F, 0.0F}, {2.0F, 0.0F, 0.0F}, 0.6F,
                                             {-1.0F, -2.0F, 0.5F}, {1.0F, 1.0F, 0.0F});
    EXPECT_TRUE(answer.hit);
    EXPECT_EQ(answer.point, (Vector{1.0F, 0.0F, 0.0F}));
    EXPECT_EQ(answer.distance, 2.0F);
}

TEST(HitTestsTest, SegmentPerpendicularToTheRayIsHitWhateverWayItRuns) {
    const SegmentAnswer alongX = testSegment({-1.0F, 0.0F, 0.0F}, {3.0F, 0.0F, 0.0F}, 0.1F,
                                             {0.0F, 0.0F, 1.0F}, {0.0F, 0.0F, -1.0F});
    const SegmentAnswer alongY = testSegment({0.0F, -1.0F, 0.0F}, {0.0F, 3.0F, 0.0F}, 0.1F,
                                             {0.0F, 0.0F, 1.0F}, {0.0F, 0.0F, -1.0F});
    const SegmentAnswer alongZ = testSegment({0.0F, 0.0F, -1.0F}, {0.0F, 0.0F, 3.0F}, 0.1F,
                                             {1.0F, 0.0F, 0.0F}, {-1.0F, 0.0F, 0.0F});
    for (const SegmentAnswer& answer : {alongX, alongY, alongZ}) {
        EXPECT_TRUE(answer.hit);
        EXPECT_EQ(answer.point, (Vector{0.0F, 0.0F, 0.0F}));
        EXPECT_EQ(answer.distance, 1.0F);
    }
}

TEST(HitTestsTest, SegmentParallelToTheRayIsComparedAtItsStart) {
    const SegmentAnswer answer = testSegment({3.0F, 0.0F, 0.0F}, {5.0F, 0.0F, 0.0F}, 0.3F,
                                             {1.0F, 0.25F, 0.0F}, {0.5F, 0.0F, 0.0F});
    EXPECT_TRUE(answer.hit);
    EXPECT_EQ(answer.point, (Vector{3.0F, 0.0F, 0.0F}));
    EXPECT_EQ(answer.distance, 4.0F);
    // The start lies behind the root, though the end does not.
    EXPECT_FALSE(testSegment({0.0F, 0.0F, 0.0F}, {5.0F, 0.0F, 0.0F}, 0.3F, {1.0F, 0.25F, 0.0F},
                             {0.5F, 0.0F, 0.0F})
                     .hit);
}

TEST(HitTestsTest, SegmentAndRayAreParallelBelowTheHitToleranceOnly) {
    // With u = (2^20, 0, 0) these directions make u·v / u·u - v·v / u·v the negative of the float
    // below the tolerance, the tolerance, and the float above it.
    const Vector below = {0x1.12e0bcp-10F, 0x1.12e0bcp-10F, 0.0F};
    const Vector equal = {0x1.12e0bep-10F, 0x1.12e0bep-10F, 0.0F};
    const Vector above = {0x1.12e0bcp-10F, 0x1.12e0bep-10F, 0.0F};
    const Vector a = {0.0F, 0.0F, 0.0F};
    const Vector b = {0x1p+20F, 0.0F, 0.0F};
    const Vector root = {0x1p+19F, 0.0F, 0.0F};
    const auto point = [&](const Vector& direction) {
        return testSegment(a, b, 1.0F, root, direction).point;
    };
    EXPECT_EQ(point(below), a);
    EXPECT_EQ(point(equal), root);
    EXPECT_EQ(point(above), root);

    // Against the segment the difference is positive.
    const auto turned = [](const Vector& v) { return Vector{-v[0], v[1], v[2]}; };
    EXPECT_EQ(point(turned(below)), a);
    EXPECT_EQ(point(turned(equal)), root);
    EXPECT_EQ(point(turned(above)), root);
}

TEST(HitTestsTest, SegmentAndRayArePerpendicularWhereTheirProductIsBelowTheTolerance) {
    // The two lines cross far off the perpendicular through the root: its foot at s = 0.5 tells
    // that the product counted as 0.
    const Vector a = {0.0F, 0.0F, 0.0F};
    const Vector b = {1.0F, 0.0F, 0.0F};
    const Vector root = {0.5F, 0.0F, 2e6F};
    const Vector perpendicular = {justBelow(1e-7F), 0.0F, -1.0F};
    const Vector askew = {1e-7F, 0.0F, -1.0F};
    EXPECT_EQ(testSegment(a, b, 1.0F, root, perpendicular).point, (Vector{0.5F, 0.0F, 0.0F}));
    EXPECT_NEAR(testSegment(a, b, 1.0F, root, askew).point[0], 0.7F, 1e-3F);
    EXPECT_EQ(testSegment(a, b, 1.0F, root, {-justBelow(1e-7F), 0.0F, -1.0F}).point,
              (Vector{0.5F, 0.0F, 0.0F}));
    EXPECT_NEAR(testSegment(a, b, 1.0F, root, {-1e-7F, 0.0F, -1.0F}).point[0], 0.3F, 1e-3F);
}

TEST(HitTestsTest, SegmentWithoutLengthIsNeverHit) {
    const Vector a = {0.5F, 0.0F, 0.0F};
    const SegmentAnswer answer = testSegment(a, a, 10.0F, {0.5F, 0.0F, 1.0F}, {0.0F, 0.0F, -1.0F});
    EXPECT_FALSE(answer.hit);
    EXPECT_TRUE(std::isnan(answer.point[0]));  // written all the same
    EXPECT_EQ(answer.distance, 1.0F);
}

TEST(HitTestsTest, SegmentIsNeverHitByADirectionWithoutLength) {
    const SegmentAnswer answer = testSegment({0.0F, 0.0F, 0.0F}, {1.0F, 0.0F, 0.0F}, 10.0F,
                                             {0.5F, 0.0F, 0.0F}, {0.0F, 0.0F, 0.0F});
    EXPECT_FALSE(answer.hit);
    EXPECT_EQ(answer.point, (Vector{0.5F, 0.0F, 0.0F}));
    EXPECT_TRUE(std::isnan(answer.distance));
}

TEST(HitTestsTest, SegmentWhoseSquaredLengthCountsAsZeroIsNeverHit) {
    // 0.0003² = 9e-8, 0.00032² = 1.024e-7
    const Vector down = {0.0F, 0.0F, -1.0F};
    const Vector askew = {1.0F, 0.0F, -1.0F};
    EXPECT_FALSE(testSegment({}, {3e-4F, 0.0F, 0.0F}, 10.0F, {1e-4F, 0.0F, 1.0F}, down).hit);
    EXPECT_TRUE(testSegment({}, {3.2e-4F, 0.0F, 0.0F}, 10.0F, {1e-4F, 0.0F, 1.0F}, down).hit);
    EXPECT_FALSE(testSegment({}, {3e-4F, 0.0F, 0.0F}, 10.0F, {-0.9999F, 0.0F, 1.0F}, askew).hit);
    EXPECT_FALSE(testSegment({}, {3e-4F, 0.0F, 0.0F}, 10.0F, {0.0F, 5.0F, 0.0F}, askew).hit);
}

TEST(HitTestsTest, SegmentIsNotHitWhereACoordinateIsNaN) {
    EXPECT_FALSE(testSegment({kNaN, 0.0F, 0.0F}, {1.0F, 0.0F, 0.0F}, 10.0F, {0.5F, 0.0F, 1.0F},
                             {0.0F, 0.0F, -1.0F})
                     .hit);
    EXPECT_FALSE(testSegment({0.0F, 0.0F, 0.0F}, {1.0F, 0.0F, 0.0F}, 10.0F, {0.5F, kNaN, 1.0F},
                             {0.0F, 0.0F, -1.0F})
                     .hit);
}

TEST(HitTestsTest, SegmentHitPointMayBeAnEndOfTheSegment) {
    const Vector root = {0.5F, 0.05F, 1.0F};
    const Vector direction = {0.0F, 0.0F, -1.0F};
    for (const bool atStart : {true, false}) {
        Vector a = {0.0F, 0.0F, 0.0F};
        Vector b = {1.0F, 0.0F, 0.0F};
        Vector& point = atStart ? a : b;
        float distance = 0.0F;
        EXPECT_TRUE(RayHitsLineSegment(a.data(), b.data(), 0.1F, root.data(), direction.data(),
                                       point.data(), distance));
        EXPECT_EQ(point, (Vector{0.5F, 0.0F, 0.0F}));
        EXPECT_EQ(distance, 1.0F);
    }
}

TEST(HitTestsTest, SegmentHitPointThatIsTheRootMovesTheRayToItself) {
    // The ray passes right through the segment, one unit from its root. Measured from the point
    // on the segment it ends one unit off.
    const Vector a = {0.0F, 0.0F, 0.0F};
    const Vector b = {1.0F, 0.0F, 0.0F};
    const Vector direction = {0.0F, 0.0F, -1.0F};
    float distance = 0.0F;

    Vector shared = {0.5F, 0.0F, 1.0F};
    EXPECT_FALSE(RayHitsLineSegment(a.data(), b.data(), 1.0F, shared.data(), direction.data(),
                                    shared.data(), distance));
    EXPECT_EQ(shared, (Vector{0.5F, 0.0F, 0.0F}));
    EXPECT_EQ(distance, 1.0F);

    shared = {0.5F, 0.0F, 1.0F};
    EXPECT_TRUE(RayHitsLineSegment(a.data(), b.data(), justAbove(1.0F), shared.data(),
                                   direction.data(), shared.data(), distance));

    // Its own distance from the segment no longer counts.
    shared = {0.5F, 100.0F, 0.5F};
    EXPECT_TRUE(RayHitsLineSegment(a.data(), b.data(), 0.75F, shared.data(), direction.data(),
                                   shared.data(), distance));
    EXPECT_EQ(distance, 0.5F);
}

std::string describe(const Vector& a, const Vector& b, const Vector& root,
                     const Vector& direction) {
    return PrintToString(a) + PrintToString(b) + " root " + PrintToString(root) + " direction " +
           PrintToString(direction);
}

TEST(HitTestsTest, SegmentAnswersAgreeWithTheCommonPerpendicular) {
    SeededNumbers numbers(203);
    int hits = 0;
    for (int round = 0; round < kRounds; ++round) {
        const Vector a = numbers.VectorWithin(5.0);
        const Vector b = numbers.VectorWithin(5.0);
        const Vector root = numbers.VectorWithin(5.0);
        const Vector direction = numbers.VectorWithin(5.0);
        SCOPED_TRACE(describe(a, b, root, direction));
        const LongVector u = difference(widened(b), widened(a));
        const LongVector v = widened(direction);
        const LongVector n = cross(u, v);
        if (length(u) < 1.0L || length(v) < 1.0L || length(n) < 0.3L * length(u) * length(v) ||
            std::fabs(dot(u, v)) < 0.1L) {
            continue;  // ill-conditioned
        }
        // Both parameters and the gap from the triple products with the common perpendicular.
        const LongVector toRoot = difference(widened(root), widened(a));
        const long double s = dot(cross(toRoot, v), n) / dot(n, n);
        const long double t = dot(cross(toRoot, u), n) / dot(n, n);
        const long double gap = std::fabs(dot(toRoot, n)) / length(n);

        const SegmentAnswer answer = testSegment(a, b, 2.0F, root, direction);
        EXPECT_NEAR(static_cast<double>(answer.distance - t), 0.0, 2e-4);
        EXPECT_LE(length(difference(widened(answer.point), sum(widened(a), times(s, u)))), 1e-3L);
        const long double margin = 1e-3L;
        if (std::fabs(s) > margin && std::fabs(s - 1.0L) > margin && std::fabs(t) > margin &&
            std::fabs(gap - 2.0L) > margin) {
            const bool expected = s > 0.0L && s < 1.0L && t > 0.0L && gap < 2.0L;
            EXPECT_EQ(answer.hit, expected);
            hits += expected ? 1 : 0;
        }
    }
    EXPECT_GT(hits, 100);
}

TEST(HitTestsTest, SegmentRoundsEveryStepToAFloat) {
    SeededNumbers numbers(204);
    for (int round = 0; round < kRounds; ++round) {
        const Vector a = numbers.VectorWithin(5.0);
        const Vector b = numbers.VectorWithin(5.0);
        const Vector root = numbers.VectorWithin(5.0);
        const Vector direction = numbers.VectorWithin(5.0);
        SCOPED_TRACE(describe(a, b, root, direction));
        Vector u = {};
        Vector w = {};
        Subtract(b.data(), a.data(), u.data());
        Subtract(a.data(), root.data(), w.data());
        const Rounded uv = DotProduct(u.data(), direction.data());
        const Rounded uu = DotProduct(u.data(), u.data());
        const Rounded vv = DotProduct(direction.data(), direction.data());
        const Rounded uw = DotProduct(u.data(), w.data());
        const Rounded vw = DotProduct(direction.data(), w.data());
        const Rounded t = (uw / uu - vw / uv) / (uv / uu - vv / uv);
        const Rounded s = t * uv / uu - uw / uu;
        const SegmentAnswer answer = testSegment(a, b, 2.0F, root, direction);
        EXPECT_EQ(answer.distance, t.Value());
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_EQ(answer.point[i], (s * u[i] + a[i]).Value());
        }
    }
}

// RayHitsTriangle

struct Triangle {
    Vector p0;
    Vector p1;
    Vector p2;
};

struct TriangleAnswer {
    bool hit;
    Vector point;
    float distance;
    bool edgeOn;
};

/// Tests with distinct arrays; the outputs start from values that no test hits.
TriangleAnswer testTriangle(const Triangle& triangle, const Vector& root, const Vector& direction) {
    TriangleAnswer answer = {false, {kUntouched, kUntouched, kUntouched}, kUntouched, true};
    answer.hit =
        RayHitsTriangle(triangle.p0.data(), triangle.p1.data(), triangle.p2.data(), root.data(),
                        direction.data(), answer.point.data(), answer.distance, answer.edgeOn);

    // Without the question the other answers are the same.
    TriangleAnswer same = {false, {kUntouched, kUntouched, kUntouched}, kUntouched, false};
    same.hit = RayHitsTriangle(triangle.p0.data(), triangle.p1.data(), triangle.p2.data(),
                               root.data(), direction.data(), same.point.data(), same.distance);
    EXPECT_EQ(same.hit, answer.hit);
    EXPECT_EQ(bitsOf(same.point), bitsOf(answer.point));
    EXPECT_EQ(bitsOf(same.distance), bitsOf(answer.distance));
    return answer;
}

/// Tests with the hit point in the array of the root, with the question and without it.
TriangleAnswer testTriangleInPlace(const Triangle& triangle, const Vector& root,
                                   const Vector& direction) {
    TriangleAnswer answer = {false, root, kUntouched, false};
    answer.hit = RayHitsTriangle(triangle.p0.data(), triangle.p1.data(), triangle.p2.data(),
                                 answer.point.data(), direction.data(), answer.point.data(),
                                 answer.distance, answer.edgeOn);

    TriangleAnswer same = {false, root, kUntouched, false};
    same.hit =
        RayHitsTriangle(triangle.p0.data(), triangle.p1.data(), triangle.p2.data(),
                        same.point.data(), direction.data(), same.point.data(), same.distance);
    EXPECT_EQ(same.hit, answer.hit);
    EXPECT_EQ(bitsOf(same.point), bitsOf(answer.point));
    EXPECT_EQ(bitsOf(same.distance), bitsOf(answer.distance));
    return answer;
}

const Triangle kUnitTriangle = {{0.0F, 0.0F, 0.0F}, {1.0F, 0.0F, 0.0F}, {0.0F, 1.0F, 0.0F}};
const Triangle kFlatTriangle = {{0.0F, 0.0F, 0.0F}, {4.0F, 0.0F, 0.0F}, {0.0F, 4.0F, 0.0F}};
const Vector kDown = {0.0F, 0.0F, -1.0F};

TEST(HitTestsTest, TriangleIsHitInsideWithTheDistanceInModelUnits) {
    for (const float size : {1.0F, 2.0F, 0.25F}) {
        const TriangleAnswer answer =
            testTriangle(kUnitTriangle, {0.2F, 0.2F, 5.0F}, {0.0F, 0.0F, -size});
        EXPECT_TRUE(answer.hit);
        EXPECT_EQ(answer.point, (Vector{0.2F, 0.2F, 0.0F}));
        EXPECT_EQ(answer.distance, 5.0F);
        EXPECT_FALSE(answer.edgeOn);
    }
}

TEST(HitTestsTest, TriangleIsHitFromEitherSide) {
    const TriangleAnswer answer =
        testTriangle(kUnitTriangle, {0.2F, 0.2F, -5.0F}, {0.0F, 0.0F, 1.0F});
    EXPECT_TRUE(answer.hit);
    EXPECT_EQ(answer.distance, 5.0F);
}

TEST(HitTestsTest, TriangleBehindTheRootIsMissedAndNothingWritten) {
    const TriangleAnswer answer = testTriangle(kUnitTriangle, {0.2F, 0.2F, -5.0F}, kDown);
    EXPECT_FALSE(answer.hit);
    EXPECT_EQ(answer.point, (Vector{kUntouched, kUntouched, kUntouched}));
    EXPECT_EQ(answer.distance, kUntouched);
    EXPECT_FALSE(answer.edgeOn);  // but this is always written
}

TEST(HitTestsTest, TriangleHitObliquelyReportsTheDistanceAlongTheRay) {
    const TriangleAnswer answer =
        testTriangle(kFlatTriangle, {1.0F, 4.0F, 4.0F}, {0.0F, -0.3F, -0.4F});
    EXPECT_TRUE(answer.hit);
    EXPECT_NEAR(answer.point[0], 1.0F, 1e-6F);
    EXPECT_NEAR(answer.point[1], 1.0F, 1e-6F);
    EXPECT_NEAR(answer.point[2], 0.0F, 1e-6F);
    EXPECT_NEAR(answer.distance, 5.0F, 1e-6F);
}

TEST(HitTestsTest, TriangleMissedInItsPlaneStillReportsThePlane) {
    const TriangleAnswer answer = testTriangle(kUnitTriangle, {2.0F, 3.0F, 5.0F}, kDown);
    EXPECT_FALSE(answer.hit);
    EXPECT_EQ(answer.point, (Vector{2.0F, 3.0F, 0.0F}));
    EXPECT_EQ(answer.distance, 5.0F);
    EXPECT_FALSE(answer.edgeOn);
}

TEST(HitTestsTest, TriangleIsMissedBeyondEachOfItsEdges) {
    EXPECT_FALSE(testTriangle(kUnitTriangle, {0.4F, -0.1F, 5.0F}, kDown).hit);
    EXPECT_FALSE(testTriangle(kUnitTriangle, {0.6F, 0.6F, 5.0F}, kDown).hit);
    EXPECT_FALSE(testTriangle(kUnitTriangle, {-0.1F, 0.4F, 5.0F}, kDown).hit);
}

TEST(HitTestsTest, TriangleIncludesItsCorners) {
    for (const Vector& corner : {kUnitTriangle.p0, kUnitTriangle.p1, kUnitTriangle.p2}) {
        EXPECT_TRUE(testTriangle(kUnitTriangle, {corner[0], corner[1], 5.0F}, kDown).hit);
    }
}

TEST(HitTestsTest, TriangleIncludesItsEdges) {
    EXPECT_TRUE(testTriangle(kUnitTriangle, {0.5F, 0.0F, 5.0F}, kDown).hit);
    EXPECT_TRUE(testTriangle(kUnitTriangle, {0.5F, 0.5F, 5.0F}, kDown).hit);
    EXPECT_TRUE(testTriangle(kUnitTriangle, {0.0F, 0.5F, 5.0F}, kDown).hit);
}

TEST(HitTestsTest, TriangleIncludesPointsWhoseProductCountsAsZero) {
    // Beyond the edge on the x axis by y, the product is 4 · 16 · y.
    EXPECT_TRUE(testTriangle(kFlatTriangle, {1.0F, -1.5e-9F, 5.0F}, kDown).hit);
    EXPECT_FALSE(testTriangle(kFlatTriangle, {1.0F, -1.6e-9F, 5.0F}, kDown).hit);
}

TEST(HitTestsTest, TinyTriangleIsHitAnywhereInItsPlane) {
    // Where the square of the normal is below 1e-7 every side counts as inside.
    const Triangle tiny = {{0.0F, 0.0F, 0.0F}, {0.017F, 0.0F, 0.0F}, {0.0F, 0.017F, 0.0F}};
    const Triangle larger = {{0.0F, 0.0F, 0.0F}, {0.018F, 0.0F, 0.0F}, {0.0F, 0.018F, 0.0F}};
    EXPECT_TRUE(testTriangle(tiny, {100.0F, -100.0F, 5.0F}, kDown).hit);
    EXPECT_FALSE(testTriangle(larger, {100.0F, -100.0F, 5.0F}, kDown).hit);
}

TEST(HitTestsTest, TriangleWithoutAreaIsMissedAndNothingWritten) {
    const Triangle line = {{0.0F, 0.0F, 0.0F}, {1.0F, 0.0F, 0.0F}, {2.0F, 0.0F, 0.0F}};
    const TriangleAnswer answer = testTriangle(line, {0.5F, 0.0F, 5.0F}, kDown);
    EXPECT_FALSE(answer.hit);
    EXPECT_EQ(answer.point, (Vector{kUntouched, kUntouched, kUntouched}));
    EXPECT_EQ(answer.distance, kUntouched);
    EXPECT_FALSE(answer.edgeOn);
}

TEST(HitTestsTest, TriangleHasNoAreaBelowTheHitToleranceOnly) {
    const auto hit = [](float doubleArea) {
        return testTriangle({{0.0F, 0.0F, 0.0F}, {1.0F, 0.0F, 0.0F}, {0.0F, doubleArea, 0.0F}},
                            {0.5F, 0.0F, 5.0F}, kDown)
            .hit;
    };
    EXPECT_FALSE(hit(justBelow(kHitTolerance)));
    EXPECT_TRUE(hit(kHitTolerance));
    EXPECT_TRUE(hit(justAbove(kHitTolerance)));
}

TEST(HitTestsTest, RootInThePlaneIsItsOwnHitPointWhateverTheDirection) {
    for (const Vector& direction : {kDown, Vector{1.0F, 0.0F, 0.0F}, Vector{0.0F, 0.0F, 3.0F}}) {
        const TriangleAnswer inside = testTriangle(kUnitTriangle, {0.2F, 0.2F, 0.0F}, direction);
        EXPECT_TRUE(inside.hit);
        EXPECT_EQ(inside.point, (Vector{0.2F, 0.2F, 0.0F}));
        EXPECT_EQ(inside.distance, 0.0F);
        const TriangleAnswer outside = testTriangle(kUnitTriangle, {2.0F, 0.2F, 0.0F}, direction);
        EXPECT_FALSE(outside.hit);
        EXPECT_EQ(outside.point, (Vector{2.0F, 0.2F, 0.0F}));
        EXPECT_EQ(outside.distance, 0.0F);
    }
}

TEST(HitTestsTest, RootCountsAsInThePlaneBelowTheToleranceOfTheDotProduct) {
    const Vector up = {0.0F, 0.0F, 1.0F};  // away from the plane: a hit only from within it
    const TriangleAnswer within = testTriangle(kUnitTriangle, {0.2F, 0.2F, justBelow(1e-7F)}, up);
    EXPECT_TRUE(within.hit);
    EXPECT_EQ(within.point, (Vector{0.2F, 0.2F, justBelow(1e-7F)}));  // not moved onto the plane
    EXPECT_EQ(within.distance, 0.0F);
    EXPECT_FALSE(testTriangle(kUnitTriangle, {0.2F, 0.2F, 1e-7F}, up).hit);
    EXPECT_TRUE(testTriangle(kUnitTriangle, {0.2F, 0.2F, -justBelow(1e-7F)}, kDown).hit);
    EXPECT_FALSE(testTriangle(kUnitTriangle, {0.2F, 0.2F, -1e-7F}, kDown).hit);
}

TEST(HitTestsTest, RayParallelToThePlaneMissesAndWritesNothing) {
    const TriangleAnswer answer =
        testTriangle(kUnitTriangle, {-5.0F, 0.2F, 0.5F}, {1.0F, 0.0F, 0.0F});
    EXPECT_FALSE(answer.hit);
    EXPECT_EQ(answer.point, (Vector{kUntouched, kUntouched, kUntouched}));
    EXPECT_EQ(answer.distance, kUntouched);
    EXPECT_FALSE(answer.edgeOn);
}

TEST(HitTestsTest, RayIsParallelToThePlaneBelowTheTolerance) {
    // Of length 1 with and without the third component.
    const auto distance = [](float z) {
        return testTriangle(kFlatTriangle, {1.0F, 1.0F, 1.0F}, {0.6F, 0.8F, z}).distance;
    };
    EXPECT_EQ(distance(-justBelow(1e-7F)), kUntouched);
    EXPECT_EQ(distance(-1e-7F), (Rounded(1.0F) / 1e-7F).Value());
}

TEST(HitTestsTest, RayIsParallelToAPlaneAskewWhereTheDotProductCountsAsZero) {
    const Triangle upright = {{0.0F, 0.0F, 0.0F}, {0.0F, 0.0F, 1e6F}, {-8e6F, 6e6F, 0.0F}};
    const Vector root = {3.0F, 4.0F, 1000.0F};  // 5 units off the plane
    const auto distance = [&](int stepsToward) {
        Vector direction = {-0.8F, 0.6F, 0.0F};
        for (int i = 0; i < stepsToward; ++i) {
            direction[0] = justBelow(direction[0]);  // 0.36e-7 of cosine each
        }
        return testTriangle(upright, root, direction).distance;
    };
    EXPECT_EQ(distance(0), kUntouched);
    EXPECT_EQ(distance(1), kUntouched);
    EXPECT_GT(distance(8), 1e7F);
}

TEST(HitTestsTest, TriangleThrowsForAZeroDirectionUnlessTheRootLiesInThePlane) {
    const Vector zero = {};
    bool edgeOn = true;
    float distance = kUntouched;
    Vector root = {0.2F, 0.2F, 5.0F};
    Vector point = {};
    EXPECT_THROW(
        RayHitsTriangle(kUnitTriangle.p0.data(), kUnitTriangle.p1.data(), kUnitTriangle.p2.data(),
                        root.data(), zero.data(), point.data(), distance, edgeOn),
        std::invalid_argument);
    EXPECT_FALSE(edgeOn);
    EXPECT_EQ(distance, kUntouched);
    EXPECT_TRUE(testTriangle(kUnitTriangle, {0.2F, 0.2F, 0.0F}, zero).hit);
}

TEST(HitTestsTest, TriangleInPlaceThrowsForAZeroDirectionWhereTheGrazingCheckRuns) {
    EXPECT_THROW(testTriangleInPlace(kUnitTriangle, {0.2F, 0.2F, 0.0F}, {}), std::invalid_argument);
    EXPECT_THROW(testTriangleInPlace(kUnitTriangle, {2.0F, 0.2F, 0.0F}, {}), std::invalid_argument);

    // Inside and unasked, the check does not run.
    Vector root = {0.2F, 0.2F, 0.0F};
    float distance = kUntouched;
    EXPECT_TRUE(RayHitsTriangle(kUnitTriangle.p0.data(), kUnitTriangle.p1.data(),
                                kUnitTriangle.p2.data(), root.data(), Vector{}.data(), root.data(),
                                distance));
    EXPECT_EQ(distance, 0.0F);
}

TEST(HitTestsTest, TriangleInPlaceThrowsForANormalTooSmallToNormalise) {
    // Large enough for the plane, not for Normalize.
    const Triangle sliver = {{0.0F, 0.0F, 0.0F}, {1e-4F, 0.0F, 0.0F}, {0.0F, 9e-4F, 0.0F}};
    EXPECT_TRUE(testTriangle(sliver, {0.0F, 0.0F, 5.0F}, kDown).hit);
    EXPECT_THROW(testTriangleInPlace(sliver, {0.0F, 0.0F, 5.0F}, kDown), std::invalid_argument);

    // Inside and unasked, the normal is not looked at again.
    Vector root = {0.0F, 0.0F, 5.0F};
    float distance = kUntouched;
    EXPECT_TRUE(RayHitsTriangle(sliver.p0.data(), sliver.p1.data(), sliver.p2.data(), root.data(),
                                kDown.data(), root.data(), distance));
    EXPECT_EQ(distance, 5.0F);
}

TEST(HitTestsTest, TriangleHitByARayAcrossItIsTheSameInPlace) {
    const TriangleAnswer answer = testTriangleInPlace(kUnitTriangle, {0.2F, 0.2F, 5.0F}, kDown);
    EXPECT_TRUE(answer.hit);
    EXPECT_EQ(answer.point, (Vector{0.2F, 0.2F, 0.0F}));
    EXPECT_EQ(answer.distance, 5.0F);
    EXPECT_FALSE(answer.edgeOn);
}

TEST(HitTestsTest, TriangleMissedByARayAcrossItsPlaneIsTheSameInPlace) {
    const TriangleAnswer answer = testTriangleInPlace(kUnitTriangle, {2.0F, 3.0F, 5.0F}, kDown);
    EXPECT_FALSE(answer.hit);
    EXPECT_EQ(answer.point, (Vector{2.0F, 3.0F, 0.0F}));
    EXPECT_EQ(answer.distance, 5.0F);
    EXPECT_FALSE(answer.edgeOn);
}

TEST(HitTestsTest, TriangleInPlaceWhosePlaneIsMissedLeavesTheRoot) {
    const TriangleAnswer answer = testTriangleInPlace(kUnitTriangle, {0.2F, 0.2F, -5.0F}, kDown);
    EXPECT_FALSE(answer.hit);
    EXPECT_EQ(answer.point, (Vector{0.2F, 0.2F, -5.0F}));
    EXPECT_EQ(answer.distance, kUntouched);
    EXPECT_FALSE(answer.edgeOn);
}

TEST(HitTestsTest, RayParallelToThePlaneInPlaceIsNoHitAndNotEdgeOn) {
    const TriangleAnswer answer =
        testTriangleInPlace(kUnitTriangle, {0.2F, 0.2F, 0.5F}, {1.0F, 0.0F, 0.0F});
    EXPECT_FALSE(answer.hit);
    EXPECT_FALSE(answer.edgeOn);
    EXPECT_EQ(answer.point, (Vector{0.2F, 0.2F, 0.5F}));
    EXPECT_EQ(answer.distance, kUntouched);
}

TEST(HitTestsTest, RayWithinThePlaneIsEdgeOnOnlyWhereHitPointIsTheRoot) {
    const Vector root = {1.0F, 1.0F, 0.0F};
    const Vector direction = {1.0F, 0.0F, 0.0F};
    const TriangleAnswer inPlace = testTriangleInPlace(kFlatTriangle, root, direction);
    EXPECT_TRUE(inPlace.hit);
    EXPECT_TRUE(inPlace.edgeOn);
    EXPECT_EQ(inPlace.point, root);
    EXPECT_EQ(inPlace.distance, 0.0F);
    const TriangleAnswer apart = testTriangle(kFlatTriangle, root, direction);
    EXPECT_TRUE(apart.hit);
    EXPECT_FALSE(apart.edgeOn);
}

TEST(HitTestsTest, RayThatLeavesThePlaneIsNotEdgeOn) {
    const TriangleAnswer inside =
        testTriangleInPlace(kFlatTriangle, {1.0F, 1.0F, 0.0F}, {1.0F, 0.0F, 1.0F});
    EXPECT_TRUE(inside.hit);
    EXPECT_FALSE(inside.edgeOn);
    const TriangleAnswer outside = testTriangleInPlace(kFlatTriangle, {5.0F, 5.0F, 0.0F}, kDown);
    EXPECT_FALSE(outside.hit);
    EXPECT_FALSE(outside.edgeOn);
    EXPECT_EQ(outside.point, (Vector{5.0F, 5.0F, 0.0F}));  // no edge was tested
}

TEST(HitTestsTest, RayIsEdgeOnBelowTheToleranceOfTheDotProduct) {
    // Normalised, the directions keep their length of 1 and the third component.
    const auto edgeOn = [](float z) {
        const Vector direction = {0.6F, 0.8F, z};
        Vector unit = direction;
        Normalize(unit.data());
        EXPECT_EQ(unit[2], z < 1e-7F ? 0.0F : z);
        return testTriangleInPlace(kFlatTriangle, {1.0F, 1.0F, 0.0F}, direction).edgeOn;
    };
    EXPECT_TRUE(edgeOn(justBelow(1e-7F)));
    EXPECT_FALSE(edgeOn(1e-7F));
}

TEST(HitTestsTest, RayIsEdgeOnAgainstTheNormalSnappedToItsAxis) {
    // The plane rises by 1 in 10,000. For finding its hit point the normal is exact, for the
    // grazing check it has been snapped to the z axis.
    const Triangle rising = {{0.0F, 0.0F, 0.0F}, {32768.0F, 0.0F, 3.2768F}, {0.0F, 32768.0F, 0.0F}};
    const TriangleAnswer answer =
        testTriangleInPlace(rising, {100.0F, 100.0F, 1.0F}, {1.0F, 0.0F, 0.0F});
    EXPECT_TRUE(answer.hit);
    EXPECT_TRUE(answer.edgeOn);
    EXPECT_NEAR(answer.distance, 9900.0F, 1.0F);
    EXPECT_NEAR(answer.point[0], 10000.0F, 1.0F);
}

// The edges, in the plane z = 0 with the hit point in the array of the root. Each test that follows
// no hit moves the root onto the edge's line and asks whether the ray is closest there.

TEST(HitTestsTest, GrazingRayThatCrossesTheTriangleMissesAndEveryEdgeOverwritesTheOutputs) {
    // The root moves to p0 at distance 1, on to p1 at distance 4, and to p0 at distance -4.
    const TriangleAnswer answer =
        testTriangleInPlace(kFlatTriangle, {-1.0F, 1.0F, 0.0F}, {1.0F, 0.0F, 0.0F});
    EXPECT_FALSE(answer.hit);
    EXPECT_TRUE(answer.edgeOn);
    EXPECT_EQ(answer.point, (Vector{0.0F, 0.0F, 0.0F}));
    EXPECT_EQ(answer.distance, -4.0F);
}

TEST(HitTestsTest, GrazingRayWithArraysApartTestsNoEdge) {
    // The ray of the next test, which hits there.
    const TriangleAnswer answer =
        testTriangle(kFlatTriangle, {0.0F, -1.0F, 0.0F}, {1.0F, 0.0F, 0.0F});
    EXPECT_FALSE(answer.hit);
    EXPECT_FALSE(answer.edgeOn);
    EXPECT_EQ(answer.point, (Vector{0.0F, -1.0F, 0.0F}));
    EXPECT_EQ(answer.distance, 0.0F);
}

TEST(HitTestsTest, GrazingRayHitsTheFirstEdgeAndKeepsItBeforeAFartherOne) {
    // Beside p0 of a parallel edge. From p0 the edge p1 - p2 is hit too, at distance 4.
    const TriangleAnswer answer =
        testTriangleInPlace(kFlatTriangle, {0.0F, -1.0F, 0.0F}, {1.0F, 0.0F, 0.0F});
    EXPECT_TRUE(answer.hit);
    EXPECT_TRUE(answer.edgeOn);
    EXPECT_EQ(answer.point, kFlatTriangle.p0);
    EXPECT_EQ(answer.distance, 0.0F);
}

TEST(HitTestsTest, GrazingRayHitsTheSecondEdgeWhereTheFirstMovedTheRootOntoIt) {
    // The line of the ray meets the line of p0 - p1 in p1, before the root and behind it.
    for (const float y : {1.0F, -1.0F}) {
        const TriangleAnswer answer =
            testTriangleInPlace(kFlatTriangle, {4.0F, -1.0F, 0.0F}, {0.0F, y, 0.0F});
        EXPECT_TRUE(answer.hit);
        EXPECT_TRUE(answer.edgeOn);
        EXPECT_EQ(answer.point, kFlatTriangle.p1);
        EXPECT_EQ(answer.distance, 0.0F);
    }
}

TEST(HitTestsTest, GrazingRayHitsTheThirdEdgeWhereTheSecondMovedTheRootOntoIt) {
    // The line of the ray meets the line of p0 - p1 in (-4, 0, 0) and p1 - p2 in p2.
    const TriangleAnswer answer =
        testTriangleInPlace(kFlatTriangle, {-5.0F, -1.0F, 0.0F}, {1.0F, 1.0F, 0.0F});
    EXPECT_TRUE(answer.hit);
    EXPECT_TRUE(answer.edgeOn);
    EXPECT_EQ(answer.point, kFlatTriangle.p2);
    EXPECT_EQ(answer.distance, 0.0F);
}

/// Its corner p1 is the end of p0 + 1000 x only up to rounding, so that the two edges that meet
/// there report different points. The roots lie just outside, below the corner.
const Triangle kCornerAtP1 = {
    {-1000.0F, 0.0F, 0.0F}, {1e-10F, 0.0F, 0.0F}, {1e-10F, 1000.0F, 0.0F}};
const Vector kLongY = {0.0F, 1000.0F, 0.0F};

TEST(HitTestsTest, GrazingRayTakesTheSecondEdgeWhereItIsNearerThanTheFirst) {
    // 5e-13 lengths of the direction to the first edge, 0 from there to the second.
    const TriangleAnswer answer = testTriangleInPlace(kCornerAtP1, {0.0F, -5e-10F, 0.0F}, kLongY);
    EXPECT_TRUE(answer.hit);
    EXPECT_EQ(answer.point, kCornerAtP1.p1);
    EXPECT_EQ(answer.distance, 0.0F);
}

TEST(HitTestsTest, GrazingRayKeepsTheFirstEdgeBeforeTheSecondAsNear) {
    // So near that the product counts as 0.
    const TriangleAnswer answer = testTriangleInPlace(kCornerAtP1, {0.0F, -0.9e-10F, 0.0F}, kLongY);
    EXPECT_TRUE(answer.hit);
    EXPECT_EQ(answer.point, (Vector{0.0F, 0.0F, 0.0F}));
    EXPECT_EQ(answer.distance, 0.0F);
}

const Triangle kCornerAtP0 = {{0.0F, 0.0F, 0.0F}, {1000.0F, 0.0F, 0.0F}, {0.0F, 1000.0F, 0.0F}};

TEST(HitTestsTest, GrazingRayTakesTheThirdEdgeWhereItIsNearerThanTheFirst) {
    const TriangleAnswer answer = testTriangleInPlace(kCornerAtP0, {3e-10F, -5e-10F, 0.0F}, kLongY);
    EXPECT_TRUE(answer.hit);
    EXPECT_EQ(answer.point, (Vector{0.0F, 0.0F, 0.0F}));
    EXPECT_EQ(answer.distance, 0.0F);
}

TEST(HitTestsTest, GrazingRayKeepsTheFirstEdgeBeforeTheThirdAsNear) {
    const TriangleAnswer answer =
        testTriangleInPlace(kCornerAtP0, {3e-10F, -0.9e-10F, 0.0F}, kLongY);
    EXPECT_TRUE(answer.hit);
    EXPECT_NEAR(answer.point[0], 3e-10F, 1e-16F);
    EXPECT_EQ(answer.point[1], 0.0F);
    EXPECT_EQ(answer.distance, 0.0F);
}

TEST(HitTestsTest, GrazingRayMissesAnEdgeFartherThanTheHitTolerance) {
    // 2e-9 from the first edge: that is no hit any more, nor does a later edge make it one.
    const TriangleAnswer answer = testTriangleInPlace(kCornerAtP0, {3e-10F, -2e-9F, 0.0F}, kLongY);
    EXPECT_FALSE(answer.hit);
    EXPECT_TRUE(answer.edgeOn);
}

/// At 2^24 floats lie 2 apart, and a ray that advances by less stays where it is: edges are hit
/// at distances that differ although their points are the same.
constexpr float kFarOut = 16777216.0F;

TEST(HitTestsTest, GrazingRayTakesTheThirdEdgeWhereItIsNearerThanTheSecond) {
    // p0 - p1 crosses the x axis beyond its end, p1 - p2 0.4 and p0 - p2 nothing beyond 2^24.
    const Triangle triangle = {
        {kFarOut, -8.0F, 0.0F}, {kFarOut + 2.0F, -96.0F, 0.0F}, {kFarOut, 24.0F, 0.0F}};
    const TriangleAnswer answer =
        testTriangleInPlace(triangle, {kFarOut - 10.0F, 0.0F, 0.0F}, {1.0F, 0.0F, 0.0F});
    EXPECT_TRUE(answer.hit);
    EXPECT_EQ(answer.point[0], kFarOut);
    EXPECT_EQ(answer.distance, 0.0F);

    // Without the third edge the answer would have been the second's.
    const SegmentAnswer second = testSegment(triangle.p1, triangle.p2, kHitTolerance,
                                             {kFarOut, 0.0F, 0.0F}, {1.0F, 0.0F, 0.0F});
    EXPECT_NEAR(second.distance, 0.4F, 1e-5F);
}

TEST(HitTestsTest, GrazingRayKeepsTheSecondEdgeBeforeAFartherThird) {
    const Triangle triangle = {
        {kFarOut + 2.0F, -1.5F, 0.0F}, {kFarOut, -0x1p-10F, 0.0F}, {kFarOut, 0.5F, 0.0F}};
    const Vector direction = {1.0F, 0.0F, 0.0F};
    const TriangleAnswer answer =
        testTriangleInPlace(triangle, {kFarOut - 8.0F, 0.0F, 0.0F}, direction);
    EXPECT_TRUE(answer.hit);
    EXPECT_EQ(answer.point[0], kFarOut);
    EXPECT_EQ(answer.distance, 0.0F);

    const SegmentAnswer third =
        testSegment(triangle.p0, triangle.p2, kHitTolerance, answer.point, direction);
    EXPECT_TRUE(third.hit);
    EXPECT_NEAR(third.distance, 0.5F, 1e-6F);
}

/// Where the line of the ray lies in the triangle, as signed volumes: the ray passes it where the
/// three have one sign.
LongVector volumes(const Triangle& triangle, const Vector& root, const Vector& direction) {
    const LongVector v = widened(direction);
    const LongVector q0 = difference(widened(triangle.p0), widened(root));
    const LongVector q1 = difference(widened(triangle.p1), widened(root));
    const LongVector q2 = difference(widened(triangle.p2), widened(root));
    return {dot(v, cross(q1, q2)), dot(v, cross(q2, q0)), dot(v, cross(q0, q1))};
}

TEST(HitTestsTest, TriangleAnswersAgreeWithSignedVolumes) {
    SeededNumbers numbers(205);
    int hits = 0;
    int misses = 0;
    for (int round = 0; round < kRounds; ++round) {
        const Triangle triangle = {numbers.VectorWithin(5.0), numbers.VectorWithin(5.0),
                                   numbers.VectorWithin(5.0)};
        const Vector root = numbers.VectorWithin(5.0);
        const Vector direction = numbers.VectorWithin(2.0);
        SCOPED_TRACE(PrintToString(triangle.p0) + PrintToString(triangle.p1) +
                     describe(triangle.p2, {}, root, direction));
        const LongVector toP1 = difference(widened(triangle.p1), widened(triangle.p0));
        const LongVector toP2 = difference(widened(triangle.p2), widened(triangle.p0));
        const LongVector n = cross(toP1, toP2);
        const LongVector v = widened(direction);
        const long double steepness = dot(n, v) / (length(n) * length(v));
        if (length(n) < 1.0L || length(v) < 0.1L || std::fabs(steepness) < 0.2L) {
            continue;  // ill-conditioned
        }
        const LongVector part = volumes(triangle, root, direction);
        const long double whole = part[0] + part[1] + part[2];
        const LongVector weight = times(1.0L / whole, part);
        const LongVector point = sum(
            times(weight[0], widened(triangle.p0)),
            sum(times(weight[1], widened(triangle.p1)), times(weight[2], widened(triangle.p2))));
        const long double distance = dot(difference(point, widened(root)), v) / length(v);
        const long double least = std::min({weight[0], weight[1], weight[2]});
        if (std::fabs(least) < 1e-3L || std::fabs(distance) < 1e-3L) {
            continue;  // too near to call
        }
        const TriangleAnswer answer = testTriangle(triangle, root, direction);
        EXPECT_EQ(answer.hit, least > 0.0L && distance > 0.0L);
        EXPECT_FALSE(answer.edgeOn);
        if (distance > 0.0L) {
            // Coordinates up to 100, some twenty roundings, enlarged by the shallow angle.
            EXPECT_LE(length(difference(widened(answer.point), point)), 1e-3L);
            EXPECT_LE(std::fabs(answer.distance - distance), 1e-3L);
        } else {
            EXPECT_EQ(answer.distance, kUntouched);
        }
        hits += answer.hit ? 1 : 0;
        misses += answer.hit ? 0 : 1;
    }
    EXPECT_GT(hits, 100);
    EXPECT_GT(misses, 1000);
}

TEST(HitTestsTest, TriangleHitPointIsInsideForEveryWindingAndFirstCorner) {
    SeededNumbers numbers(206);
    for (int round = 0; round < kRounds; ++round) {
        const Vector p0 = numbers.VectorWithin(5.0);
        const Vector p1 = numbers.VectorWithin(5.0);
        const Vector p2 = numbers.VectorWithin(5.0);
        const Vector root = numbers.VectorWithin(20.0);
        const long double third = 1.0L / 3.0L;
        const LongVector toCentre = difference(
            times(third, sum(widened(p0), sum(widened(p1), widened(p2)))), widened(root));
        const Vector direction = {static_cast<float>(toCentre[0]), static_cast<float>(toCentre[1]),
                                  static_cast<float>(toCentre[2])};
        SCOPED_TRACE(PrintToString(p0) + PrintToString(p1) + describe(p2, {}, root, direction));
        const LongVector n =
            cross(difference(widened(p1), widened(p0)), difference(widened(p2), widened(p0)));
        if (length(n) < 1.0L || std::fabs(dot(n, toCentre)) < 0.2L * length(n) * length(toCentre)) {
            continue;  // ill-conditioned
        }
        for (const Triangle& triangle :
             {Triangle{p0, p1, p2}, Triangle{p1, p2, p0}, Triangle{p2, p0, p1},
              Triangle{p0, p2, p1}, Triangle{p2, p1, p0}, Triangle{p1, p0, p2}}) {
            EXPECT_TRUE(testTriangle(triangle, root, direction).hit);
        }
    }
}

}  // namespace
}  // namespace KesVizCore
