#pragma once

/// @file
/// Annotations and what they speak of, both ways.

#include "building/SceneIndex.h"
#include "commands/Selectors.h"

#include <string>
#include <vector>

namespace kesview {

/// The face, edge, body or product of a link at every place where it stands; empty for a vertex,
/// which the scene does not hold.
std::vector<SceneNode> placesOf(const SceneIndex& index, const EntityLink& link);

/// The annotations that speak of anything selected or of what is in it: of a body for its faces, of
/// an instance for its product and all below. A selected annotation names itself, a view its
/// members. In the order of the document.
std::vector<const Annotation*> annotationsOf(const SceneIndex& index, const Selection& selection);

}  // namespace kesview
