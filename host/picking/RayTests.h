#pragma once

/// @file
/// Whether a ray hits a triangle, a line or a point, and where: decided by the library's hit tests,
/// in a frame in which they are at their best.
///
/// The library's tests work in single precision with fixed tolerances: triangles of less than
/// 0.0002 square units are hit anywhere in their plane, lines shorter than 0.0003 never, and
/// directions within 0.0004 of an axis are turned onto it. So what is tested is moved to zero,
/// made about 100 units large, and turned so that no ray runs along an axis.

#include "view/Picker.h"
#include "view/Vectors.h"

#include <optional>

namespace kesview {

/// A ray with what every test needs of it.
struct TestRay {
    explicit TestRay(const PickRay& ray);

    Vector root;
    Vector direction;  ///< length 1; zero where the ray has none: nothing is hit then
    double aperture;
    bool isLine;
    /// Rows of the turn into the frame of the tests.
    Vector rows[3];
};

struct RayHit {
    Vector point;     ///< on what is hit
    double distance;  ///< from the root along the ray
};

/// The triangle is taken larger by a 100,000th, so that no ray slips through between two. One that
/// is thinner than a 10,000th of its length or so is no target; nor is what is not finite.
std::optional<RayHit> hitTriangle(const TestRay& ray, const Vector& a, const Vector& b,
                                  const Vector& c);

/// Where the line of the segment is nearest to the ray, when that is on the segment and nearer
/// than the aperture.
std::optional<RayHit> hitSegment(const TestRay& ray, const Vector& a, const Vector& b);

/// The library has no test for points: a point is hit when it is nearer than the aperture.
std::optional<RayHit> hitPoint(const TestRay& ray, const Vector& point);

}  // namespace kesview
