#pragma once

/// @file
/// Arithmetic of points and directions.

#include "document/Document.h"

#include <cmath>

namespace kesview {

inline Vector operator+(const Vector& a, const Vector& b) {
    return {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
}
inline Vector operator-(const Vector& a, const Vector& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}
inline Vector operator*(double factor, const Vector& a) {
    return {factor * a[0], factor * a[1], factor * a[2]};
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

}  // namespace kesview
