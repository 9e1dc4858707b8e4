#pragma once

/// @file
/// Triangles within closed outlines in space.

#include "reading/part21/PmiDrawing.h"

#include <optional>
#include <vector>

namespace kesview {

/// Fills what lies in an odd number of the outlines, each closed by its first point and all near
/// one plane; outlines within outlines are holes. None where they enclose no area.
std::optional<PmiDrawing::Area> fillOutlines(const std::vector<std::vector<Vector>>& outlines);

}  // namespace kesview
