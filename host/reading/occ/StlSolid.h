#pragma once

/// @file
/// One solid of an STL file as it is written.

#include <array>
#include <string>
#include <vector>

namespace kesview {

using StlCorner = std::array<float, 3>;
using StlTriangle = std::array<StlCorner, 3>;

struct StlSolid {
    std::string name;
    std::vector<StlTriangle> triangles;
};

}  // namespace kesview
