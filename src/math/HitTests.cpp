#include <KesVizCore/math/HitTests.h>
#include <KesVizCore/math/VectorMath.h>

#include <cmath>

namespace KesVizCore {

namespace {

constexpr float kHitTolerance = 1e-9F;

void copyVector(const float* from, float* to) {
    for (int i = 0; i < 3; ++i) {
        to[i] = from[i];
    }
}

/// Writes start + factor · direction.
void pointAlong(const float* start, float factor, const float* direction, float* out) {
    for (int i = 0; i < 3; ++i) {
        out[i] = start[i] + factor * direction[i];
    }
}

/// Where two lines come closest to each other, in lengths of their own directions.
struct ClosestParameters {
    float segment;
    float ray;
};

/// @p u and @p v are the directions of segment and ray, @p w leads from the ray's root to the
/// segment's start.
ClosestParameters closestParameters(const float* u, const float* v, const float* w) {
    const float uv = DotProduct(u, v);
    const float uu = DotProduct(u, u);
    const float vv = DotProduct(v, v);
    const float vw = DotProduct(v, w);
    if (std::fabs(uv) < kHitTolerance) {
        const float minusU[3] = {-u[0], -u[1], -u[2]};
        return {DotProduct(minusU, w) / uu, vw / vv};
    }

    // The smaller this difference, the nearer to parallel; dividing by it comes last.
    const float difference = uv / uu - vv / uv;
    if (std::fabs(difference) < kHitTolerance) {
        return {0.0F, vw / vv};
    }
    const float uw = DotProduct(u, w);
    const float ray = (uw / uu - vw / uv) / difference;
    return {ray * uv / uu - uw / uu, ray};
}

/// Writes @p hitPoint and @p distance only when the answer is true. @p normal may have any length.
bool rayHitsPlane(const float* point, const float* normal, const float* root,
                  const float* direction, float* hitPoint, float& distance) {
    const float normalLength = Length(normal);
    if (normalLength < kHitTolerance) {
        return false;
    }

    // The perpendicular from the root to the plane.
    float perpendicular[3] = {normal[0] / normalLength, normal[1] / normalLength,
                              normal[2] / normalLength};
    float toPoint[3];
    Subtract(point, root, toPoint);
    Multiply(perpendicular, DotProduct(perpendicular, toPoint));
    const float height = Length(perpendicular);
    if (height < kHitTolerance) {
        copyVector(root, hitPoint);
        distance = 0.0F;
        return true;
    }

    float unitDirection[3];
    copyVector(direction, unitDirection);
    Normalize(unitDirection);
    const float towardsPlane[3] = {perpendicular[0] / height, perpendicular[1] / height,
                                   perpendicular[2] / height};
    const float cosine = DotProduct(towardsPlane, unitDirection);
    if (std::fabs(cosine) < kHitTolerance) {
        return false;
    }
    const float reach = height / cosine;
    if (reach < 0.0F) {
        return false;
    }
    distance = reach;
    pointAlong(root, reach, unitDirection, hitPoint);
    return true;
}

/// True when @p point is not beyond the edge @p edgeStart - @p edgeEnd, seen from the opposite
/// @p corner.
bool isInsideEdge(const float* corner, const float* point, const float* edgeStart,
                  const float* edgeEnd, const float* normal) {
    float edge[3];
    float outward[3];
    Subtract(edgeStart, edgeEnd, edge);
    CrossProduct(edge, normal, outward);
    return SameHalfSpace(corner, point, edgeStart, outward);
}

bool liesInPlane(const float* direction, const float* normal) {
    float unitNormal[3];
    float unitDirection[3];
    copyVector(normal, unitNormal);
    copyVector(direction, unitDirection);
    return std::fabs(DotProduct(Normalize(unitNormal), Normalize(unitDirection))) < kHitTolerance;
}

/// Adds one edge to the edges already tested, of which @p hit says whether one was hit. A first
/// hit is looked for right in the outputs, a nearer one beside them.
bool rayHitsFurtherEdge(bool hit, const float* a, const float* b, const float* root,
                        const float* direction, float* hitPoint, float& distance) {
    if (!hit) {
        return RayHitsLineSegment(a, b, kHitTolerance, root, direction, hitPoint, distance);
    }
    float otherPoint[3];
    float otherDistance = 0.0F;
    if (RayHitsLineSegment(a, b, kHitTolerance, root, direction, otherPoint, otherDistance) &&
        distance > otherDistance) {
        copyVector(otherPoint, hitPoint);
        distance = otherDistance;
    }
    return true;
}

bool rayHitsEdges(const float* p0, const float* p1, const float* p2, const float* root,
                  const float* direction, float* hitPoint, float& distance) {
    bool hit = RayHitsLineSegment(p0, p1, kHitTolerance, root, direction, hitPoint, distance);
    hit = rayHitsFurtherEdge(hit, p1, p2, root, direction, hitPoint, distance);
    return rayHitsFurtherEdge(hit, p0, p2, root, direction, hitPoint, distance);
}

/// @p edgeOn is null when nobody asks.
bool rayHitsTriangle(const float* p0, const float* p1, const float* p2, const float* root,
                     const float* direction, float* hitPoint, float& distance, bool* edgeOn) {
    if (edgeOn != nullptr) {
        *edgeOn = false;
    }

    float toP1[3];
    float toP2[3];
    float normal[3];
    CrossProduct(Subtract(p1, p0, toP1), Subtract(p2, p0, toP2), normal);
    if (!rayHitsPlane(p0, normal, root, direction, hitPoint, distance)) {
        return false;
    }
    const bool inside = isInsideEdge(p0, hitPoint, p1, p2, normal) &&
                        isInsideEdge(p1, hitPoint, p2, p0, normal) &&
                        isInsideEdge(p2, hitPoint, p0, p1, normal);

    // Whether the two are one array is asked, not whether they hold the same point.
    const bool isAsked = !inside || edgeOn != nullptr;
    if (!isAsked || hitPoint != root || !liesInPlane(direction, normal)) {
        return inside;
    }
    if (edgeOn != nullptr) {
        *edgeOn = true;
    }
    return inside || rayHitsEdges(p0, p1, p2, root, direction, hitPoint, distance);
}

}  // namespace

void GetRayVector(int x, int y, int width, int height, float* eye, float* target, float* up,
                  float viewWidth, float viewHeight, bool perspective, float* rayRoot,
                  float* rayDirection) {
    // The pixel's centre from -1 to 1 across the viewport, to the right and upward.
    const float screenX = (static_cast<float>(x) + 0.5F) / static_cast<float>(width) * 2.0F - 1.0F;
    const float screenY =
        -((static_cast<float>(y) + 0.5F) / static_cast<float>(height) * 2.0F - 1.0F);

    // The pixel's point on the view plane.
    float back[3];
    float right[3];
    float pixelPoint[3];
    CrossProduct(up, Subtract(eye, target, back), right);
    Normalize(right);
    pointAlong(target, screenX * viewWidth / 2.0F, right, pixelPoint);
    pointAlong(pixelPoint, screenY * viewHeight / 2.0F, up, pixelPoint);

    if (perspective) {
        Subtract(pixelPoint, eye, rayDirection);
        copyVector(eye, rayRoot);
        return;
    }
    float sight[3];
    Normalize(Subtract(target, eye, sight));
    copyVector(Multiply(sight, Length(back)), rayDirection);
    Subtract(pixelPoint, rayDirection, rayRoot);
}

bool SameHalfSpace(const float* p1, const float* p2, const float* q, const float* n) {
    float fromPlane1[3];
    float fromPlane2[3];
    const float side1 = DotProduct(Subtract(p1, q, fromPlane1), n);
    const float side2 = DotProduct(Subtract(p2, q, fromPlane2), n);
    return !(side1 * side2 < 0.0F);
}

bool RayHitsLineSegment(const float* a, const float* b, float aperture, const float* root,
                        const float* direction, float* hitPoint, float& distance) {
    float u[3];
    float w[3];
    const auto [s, t] = closestParameters(Subtract(b, a, u), direction, Subtract(a, root, w));

    // If hitPoint is the array root, the ray is measured from the point that is written here.
    float rayPoint[3];
    float gap[3];
    pointAlong(a, s, u, hitPoint);
    pointAlong(root, t, direction, rayPoint);
    const float apart = Length(Subtract(hitPoint, rayPoint, gap));
    distance = t;  // last, since it may be a coordinate of hitPoint

    constexpr double tolerance = kHitTolerance;
    return aperture > apart && double{s} <= 1.0 + tolerance && double{s} >= -tolerance &&
           double{t} >= -tolerance;
}

bool RayHitsTriangle(const float* p0, const float* p1, const float* p2, const float* root,
                     const float* direction, float* hitPoint, float& distance, bool& edgeOn) {
    return rayHitsTriangle(p0, p1, p2, root, direction, hitPoint, distance, &edgeOn);
}

bool RayHitsTriangle(const float* p0, const float* p1, const float* p2, const float* root,
                     const float* direction, float* hitPoint, float& distance) {
    return rayHitsTriangle(p0, p1, p2, root, direction, hitPoint, distance, nullptr);
}

}  // namespace KesVizCore
