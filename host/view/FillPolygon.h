#pragma once

/// @file
/// Triangles that fill a closed plane line.

#include <vector>

namespace kesview {

/// Three indices of points for each triangle; @p points are @p count triples, in a plane or near
/// it, and the last is joined to the first. Of a line that crosses itself some area is left out.
std::vector<int> fillPolygon(const float* points, int count);

}  // namespace kesview
