#pragma once

/// @file
/// Tells shapes that can be drawn from those whose coordinates are not numbers, or absurd.

#include <TopTools_MapOfShape.hxx>
#include <TopoDS_Shape.hxx>

class Bnd_Box;

namespace kesview {

/// The faces and edges of a shape that cannot be drawn, with their locations.
TopTools_MapOfShape findAbsurd(const TopoDS_Shape& shape);

/// The box of all faces, loose edges and loose vertices that are not @p absurd; void if none is
/// left. In millimetres, somewhat larger than the shape.
Bnd_Box soundBox(const TopoDS_Shape& shape, const TopTools_MapOfShape& absurd);

}  // namespace kesview
