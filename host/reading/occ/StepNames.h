#pragma once

/// @file
/// Names that a STEP file gives to solids, faces and edges.

#include <NCollection_DataMap.hxx>
#include <Standard_Handle.hxx>
#include <TopTools_ShapeMapHasher.hxx>
#include <TopoDS_Shape.hxx>
#include <string>

class XSControl_WorkSession;

namespace kesview {

/// By the shape without its location. Names are UTF-8.
using ShapeNames = NCollection_DataMap<TopoDS_Shape, std::string, TopTools_ShapeMapHasher>;

/// Empty where the shape has no name.
std::string nameOfShape(const ShapeNames& names, const TopoDS_Shape& shape);

/// The names of all solids, shells, faces and edges that have been transferred. "NONE", which
/// programs write for lack of a name, counts as none.
ShapeNames readStepNames(const Handle(XSControl_WorkSession) & session);

}  // namespace kesview
