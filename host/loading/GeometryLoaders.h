#pragma once

/// @file
/// Loads bodies: meshes, wires and point sets.

#include "loading/Load.h"

namespace kesview {

/// Fills the geometry of @p model and enters its elements; the points leave @p document as they are
/// loaded, one face or edge at a time, so that they never stand in memory twice.
///
/// A body of edges alone whose kind is Wire is a wire, one of points alone a point set, all others
/// are meshes. Where a mesh or a wire has loose points too, a point set stands for the same body
/// beside it, and the map names the mesh or wire.
void loadGeometry(Document& document, LoadedModel& model);

}  // namespace kesview
