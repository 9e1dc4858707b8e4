#pragma once

/// @file
/// Texts in space as triangles.

#include "drawing/vtk/Fonts.h"
#include "view/Picture.h"

#include <vector>

namespace kesview {

/// All @p texts filled with triangles, merged by colour in the order of first use, not lit.
std::vector<TriangleBatch> makeTextTriangles(const std::vector<PictureText>& texts, Fonts& fonts);

}  // namespace kesview
