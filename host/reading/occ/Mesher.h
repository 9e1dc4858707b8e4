#pragma once

/// @file
/// Puts triangles on the faces and points on the edges of a product's shape.

#include "reading/ReadFile.h"

#include <TopTools_MapOfShape.hxx>
#include <TopoDS_Shape.hxx>

namespace kesview {

/// Meshes the shape in place but for its @p absurd faces and edges, and returns the distance in
/// millimetres that triangles may stray from the surface. Faces that could not be meshed are
/// left without triangles; nothing is thrown but std::bad_alloc.
double meshShape(const TopoDS_Shape& shape, const TopTools_MapOfShape& absurd,
                 const ReadOptions& options);

}  // namespace kesview
