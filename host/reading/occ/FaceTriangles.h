#pragma once

/// @file
/// Turns the triangulation of a face into plain arrays.

#include "document/Document.h"

class TopoDS_Face;

namespace kesview {

/// Fills points (relative to @p origin), normals and triangles, wound so that they and the
/// normals look out of the solid. False where the face has no triangles.
bool fillTriangles(const TopoDS_Face& shape, const Vector& origin, Face& face);

}  // namespace kesview
