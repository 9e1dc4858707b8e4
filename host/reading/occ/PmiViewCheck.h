#pragma once

/// @file
/// Sees to it that a saved view looks at the model.

#include "document/Document.h"
#include "reading/occ/PmiShapes.h"

namespace kesview {

/// Turns a parallel view round that has the whole of @p scene behind its eye, and centres one on
/// the scene whose window misses it: less than a quarter of the window is taken up by the scene,
/// and yet the scene is cut off. The window is unknown then. Each becomes a finding. Perspective
/// views and empty scenes are left alone.
void aimAtScene(const PmiBox& scene, SavedView& view, Document& document);

}  // namespace kesview
