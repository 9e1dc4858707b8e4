#pragma once

/// @file
/// The bound between lengths that parts have and errors.

#include <cmath>

namespace kesview {

/// Coordinates beyond it, in millimetres, are taken for errors: no part is a million kilometres
/// away, and single precision could not square much larger ones.
constexpr double absurdLength = 1e12;

inline bool isSoundLength(double length) {
    return std::isfinite(length) && std::abs(length) < absurdLength;
}

}  // namespace kesview
