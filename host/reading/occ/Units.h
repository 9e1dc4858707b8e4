#pragma once

/// @file
/// Names of units of length.

#include <string>

namespace kesview {

/// "millimetre", "inch", …; empty for a length that has no common name.
std::string unitName(double millimetres);

}  // namespace kesview
