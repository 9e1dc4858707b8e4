#pragma once

/// @file
/// Arithmetic of points and directions, and placements in space.

#include "document/Document.h"

#include <cmath>

namespace kesview {

inline Vector plus(const Vector& a, const Vector& b) {
    return {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
}
inline Vector minus(const Vector& a, const Vector& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}
inline Vector times(const Vector& a, double factor) {
    return {a[0] * factor, a[1] * factor, a[2] * factor};
}
inline double dot(const Vector& a, const Vector& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}
inline Vector cross(const Vector& a, const Vector& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
inline double lengthOf(const Vector& a) {
    return std::sqrt(dot(a, a));
}

/// Of length 1; @p otherwise where @p a is zero or not finite.
inline Vector normalized(const Vector& a, const Vector& otherwise) {
    const double length = lengthOf(a);
    return std::isfinite(length) && length > 1e-12 ? times(a, 1 / length) : otherwise;
}

/// A right-handed frame: origin and directions of length 1.
struct Placement {
    Vector origin = {0, 0, 0};
    Vector x = {1, 0, 0};
    Vector y = {0, 1, 0};
    Vector z = {0, 0, 1};

    Vector Direction(const Vector& local) const {
        return plus(plus(times(x, local[0]), times(y, local[1])), times(z, local[2]));
    }
    Vector Point(const Vector& local) const { return plus(origin, Direction(local)); }
};

/// The frame of @p inner, told in @p outer, as the world sees it.
inline Placement nested(const Placement& outer, const Placement& inner) {
    return {outer.Point(inner.origin), outer.Direction(inner.x), outer.Direction(inner.y),
            outer.Direction(inner.z)};
}

}  // namespace kesview
