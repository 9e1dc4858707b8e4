#pragma once

/// @file
/// Directions and placements in space.

#include "document/Vectors.h"

#include <cmath>

namespace kesview {

/// Of length 1; @p otherwise where @p a is zero or not finite.
inline Vector normalized(const Vector& a, const Vector& otherwise) {
    const double length = lengthOf(a);
    return std::isfinite(length) && length > 1e-12 ? (1 / length) * a : otherwise;
}

/// A right-handed frame: origin and directions of length 1.
struct Placement {
    Vector origin = {0, 0, 0};
    Vector x = {1, 0, 0};
    Vector y = {0, 1, 0};
    Vector z = {0, 0, 1};

    Vector Direction(const Vector& local) const {
        return local[0] * x + local[1] * y + local[2] * z;
    }
    Vector Point(const Vector& local) const { return origin + Direction(local); }
};

/// The frame of @p inner, told in @p outer, as the world sees it.
inline Placement nested(const Placement& outer, const Placement& inner) {
    return {outer.Point(inner.origin), outer.Direction(inner.x), outer.Direction(inner.y),
            outer.Direction(inner.z)};
}

}  // namespace kesview
