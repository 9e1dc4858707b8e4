#pragma once

/// @file
/// Outlines of letters filled with triangles.

#include <array>
#include <cstdint>
#include <vector>

namespace kesview {

using Contour = std::vector<std::array<double, 2>>;

struct FilledOutline {
    std::vector<std::array<double, 2>> points;
    std::vector<std::uint32_t> triangles;  ///< three indices of points each
};

/// Fills where the contours wind around a point at all, as fonts mean it: contours may overlap,
/// and one that runs the other way cuts a hole.
FilledOutline fill(const std::vector<Contour>& contours);

}  // namespace kesview
