#pragma once

/// @file
/// Directions, placements and boxes in double precision. Matrices are column by column, translation
/// at 12..14; the last row is not read.

#include "document/Vectors.h"

#include <cmath>
#include <cstddef>

namespace kesview {

/// Length 1; zero for what is too short to have a direction.
inline Vector unit(const Vector& a) {
    const double length = lengthOf(a);
    return length > 1e-300 ? (1 / length) * a : Vector{0, 0, 0};
}

inline Vector transformPoint(const Matrix& m, const Vector& p) {
    return {m[0] * p[0] + m[4] * p[1] + m[8] * p[2] + m[12],
            m[1] * p[0] + m[5] * p[1] + m[9] * p[2] + m[13],
            m[2] * p[0] + m[6] * p[1] + m[10] * p[2] + m[14]};
}
/// @p p is x, y, z.
inline Vector transformPoint(const Matrix& m, const float* p) {
    return transformPoint(m, Vector{p[0], p[1], p[2]});
}
/// Without the translation.
inline Vector transformDirection(const Matrix& m, const Vector& d) {
    return {m[0] * d[0] + m[4] * d[1] + m[8] * d[2], m[1] * d[0] + m[5] * d[1] + m[9] * d[2],
            m[2] * d[0] + m[6] * d[1] + m[10] * d[2]};
}

/// First @p inner, then @p outer.
inline Matrix product(const Matrix& outer, const Matrix& inner) {
    Matrix out = identityMatrix;
    for (std::size_t column = 0; column < 4; ++column) {
        const Vector from = {inner[4 * column], inner[4 * column + 1], inner[4 * column + 2]};
        const Vector to =
            column < 3 ? transformDirection(outer, from) : transformPoint(outer, from);
        for (std::size_t row = 0; row < 3; ++row) {
            out[4 * column + row] = to[row];
        }
    }
    return out;
}

/// A box in the world; empty until a point is added.
struct Box {
    Vector low = {HUGE_VAL, HUGE_VAL, HUGE_VAL};
    Vector high = {-HUGE_VAL, -HUGE_VAL, -HUGE_VAL};

    bool IsEmpty() const { return !(low[0] <= high[0]); }
    void Add(const Vector& p) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            low[axis] = p[axis] < low[axis] ? p[axis] : low[axis];
            high[axis] = p[axis] > high[axis] ? p[axis] : high[axis];
        }
    }
    Vector Center() const { return 0.5 * (low + high); }
    double Diagonal() const { return IsEmpty() ? 0 : lengthOf(high - low); }
};

}  // namespace kesview
