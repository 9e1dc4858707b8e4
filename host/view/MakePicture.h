#pragma once

/// @file
/// Turns what a scene shows into what is drawn.

#include "view/Picture.h"

namespace kesview {

class SceneAdapter;

/// Fills @p picture, which holds nothing yet, with all that @p scene shows: one batch for each
/// colour, however many bodies there are. The origin becomes the middle of it all. A batch has
/// normals when the items in it have. Surfaces with alpha below 255 thus stand in batches of their
/// own. Annotations are unlit and kept apart. Lines have the weight and pattern of the nearest line
/// style on their path, or else their item's own; every pattern but "", "solid" and "continuous" is
/// dashed.
void addScene(const SceneAdapter& scene, Picture& picture);

}  // namespace kesview
