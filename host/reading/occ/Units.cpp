/// @file
/// See Units.h.

#include "reading/occ/Units.h"

#include <array>
#include <cmath>
#include <utility>

namespace kesview {

std::string unitName(double millimetres) {
    constexpr std::array<std::pair<double, const char*>, 12> units = {{
        {1e-6, "nanometre"},
        {2.54e-5, "microinch"},
        {1e-3, "micrometre"},
        {0.0254, "mil"},
        {1, "millimetre"},
        {10, "centimetre"},
        {25.4, "inch"},
        {100, "decimetre"},
        {304.8, "foot"},
        {1000, "metre"},
        {1e6, "kilometre"},
        {1609344, "mile"},
    }};
    for (const auto& [size, name] : units) {
        // files round their factors: an inch is 25.4 or 25.4000001
        if (std::abs(millimetres - size) < 1e-5 * size) {
            return name;
        }
    }
    return {};
}

}  // namespace kesview
