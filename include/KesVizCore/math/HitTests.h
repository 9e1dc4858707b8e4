#pragma once

#include <KesVizCore/Export.h>

/// @file
/// Rays made from pixels, and what rays hit.
///
/// Points, vectors and directions are 3 floats in model units, and directions may have any length
/// but 0. The arithmetic is single precision with the functions of VectorMath.h, so that a dot
/// product below 1e-7 counts as 0. The hit tolerance is the float nearest to 1e-9.
///
/// The methods are those of textbooks: the closest points of two lines, and a plane's hit point
/// that is compared with the three edges (C. Ericson, Real-Time Collision Detection, 2005, chapter
/// 5). The tolerances and the order of the steps are our own.
///
/// @par Ownership
/// Every array belongs to the caller, and none may be null.
///
/// @par Errors
/// std::invalid_argument from Normalize() where a function says so. Nothing else is checked:
/// coordinates must be finite for an answer to mean anything.
///
/// @par Threads
/// No function keeps anything: any thread may call any of them on arrays of its own.

namespace KesVizCore {

/// Writes the ray through the centre of a pixel.
///
/// With @p perspective the ray starts at @p eye and reaches the pixel's point on the view plane
/// after the length of @p rayDirection. Without it, @p rayDirection is as long as the line of
/// sight and points along it, and @p rayRoot lies that far before the pixel's point.
///
/// @param x,y the pixel, counted from 0 at the left and at the top; others lie outside the view
/// @param width,height the size of the viewport in pixels, above 0
/// @param eye,target the two ends of the line of sight
/// @param up used as it is: it should have length 1 and be perpendicular to the line of sight
/// @param viewWidth,viewHeight what the viewport shows, in model units in the plane through
/// @p target perpendicular to the line of sight
/// @param perspective false for a parallel projection
/// @param rayRoot,rayDirection receive 3 floats each; @p rayDirection must not be @p eye
/// @throws std::invalid_argument when @p up is parallel to the line of sight or either has no
/// length; nothing is written then.
KESVIZCORE_API void GetRayVector(int x, int y, int width, int height, float* eye, float* target,
                                 float* up, float viewWidth, float viewHeight, bool perspective,
                                 float* rayRoot, float* rayDirection);

/// True unless @p p1 and @p p2 lie on different sides of the plane through @p q with normal @p n.
///
/// @p n may have any length. A point on the plane lies on either side. So does a point whose
/// distance from it, times the length of n, is below 1e-7. A NaN answers true.
KESVIZCORE_API bool SameHalfSpace(const float* p1, const float* p2, const float* q, const float* n);

/// True when the ray passes less than @p aperture from the segment @p a - @p b, not behind its
/// root.
///
/// The ends of the segment and the root count, with the hit tolerance to spare. Where ray and
/// segment are parallel they are compared at @p a alone. A segment shorter than about 0.0003, whose
/// squared length is below 1e-7, is never hit, and neither is any by a zero direction.
///
/// @param a,b the ends of the segment
/// @param aperture in model units; a ray at just this distance misses
/// @param root,direction the ray
/// @param hitPoint receives 3 floats: the point of the segment's line closest to the ray's line,
/// also when the answer is false. It may be @p a or @p b, but not @p direction. It may be the very
/// array @p root: the ray is then measured from the point just written, so that only a ray whose
/// own closest point is its root, within @p aperture, is near enough.
/// @param distance receives the ray's closest point, counted in lengths of @p direction from its
/// root, also when the answer is false; it may be negative or NaN
KESVIZCORE_API bool RayHitsLineSegment(const float* a, const float* b, float aperture,
                                       const float* root, const float* direction, float* hitPoint,
                                       float& distance);

/// True when the ray hits the triangle @p p0, @p p1, @p p2 from either side, edges and corners
/// included.
///
/// A root in the plane of the triangle, within 1e-7, hits that plane at once, whatever the
/// direction. The sides of the edges are compared by products that grow with the square of the
/// area: for triangles of less than about 0.00016 square model units every product counts as 0,
/// and each point of the plane as inside.
///
/// Rays within the plane are looked at more closely only where @p hitPoint is the very array
/// @p root. If then the root lies outside, the ray is tested against the edges with the hit
/// tolerance as aperture, from the first p0 - p1 over p1 - p2 to p0 - p2. The nearest edge wins,
/// the earlier of two as near. Each of these tests that follows no hit writes into @p hitPoint,
/// and with it moves the root: see RayHitsLineSegment() for what it then finds.
///
/// @param p0,p1,p2 the corners; a triangle without area is never hit
/// @param root,direction the ray
/// @param hitPoint receives 3 floats: the point where the ray hits the plane, also when that lies
/// outside the triangle; unchanged when the plane is not hit. May be the very array @p root, as
/// above, but none of the others.
/// @param distance receives the distance from the root to the plane's hit point in model units,
/// whatever the length of @p direction, unchanged when the plane is not hit; after the test of
/// the edges, the distance of RayHitsLineSegment()
/// @param edgeOn receives true when the plane is hit, @p hitPoint is the array @p root and the
/// direction is perpendicular to the triangle's normal as Normalize() makes it; false otherwise
/// @throws std::invalid_argument for a zero direction, unless the triangle has no area, or the
/// root lies in the plane and the two arrays differ; and, where they are the same, for a normal
/// (p1 - p0) × (p2 - p0) whose components are all below 1e-7. @p edgeOn is false by then.
KESVIZCORE_API bool RayHitsTriangle(const float* p0, const float* p1, const float* p2,
                                    const float* root, const float* direction, float* hitPoint,
                                    float& distance, bool& edgeOn);
/// The same without the question whether the ray lies within the plane. A hit inside is not looked
/// at more closely, so that only one outside can throw for its normal, and from a root in the plane
/// for a zero direction.
KESVIZCORE_API bool RayHitsTriangle(const float* p0, const float* p1, const float* p2,
                                    const float* root, const float* direction, float* hitPoint,
                                    float& distance);

}  // namespace KesVizCore
