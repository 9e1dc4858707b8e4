#pragma once

/// @file
/// All that can be set about a view, as a value: a window and a command line drive a view alike.

#include "view/Picture.h"

#include <KesVizCore/core/RenderId.h>

#include <optional>
#include <set>
#include <utility>
#include <vector>

namespace kesview {

namespace viz = KesVizCore;

class SceneView;

struct ViewState {
    int width = 1600;
    int height = 1000;
    Camera camera;
    Color background = {255, 255, 255, 255};
    std::optional<Color> backgroundTop;
    int samples = 8;
    double aperture = 3;  ///< of picking, in pixels
    std::optional<SavedView::Plane> clipping;
    bool clipsAnnotations = false;

    bool faces = true;
    bool edges = true;
    bool vertices = false;
    bool clouds = true;
    bool annotations = true;
    std::set<int> hiddenTypes;  ///< filter ids

    std::vector<viz::RenderId> hidden;
    std::vector<viz::RenderId> shown;     ///< against what the file or a path above says
    std::vector<viz::RenderId> isolated;  ///< none: everything
    /// With no colour: a part of something highlighted that is not.
    std::vector<std::pair<viz::RenderId, std::optional<Color>>> highlighted;
};

ViewState stateOf(const SceneView& view);

/// Makes the view as @p state says, in one update. Without a scene only what is the view's own.
void apply(const ViewState& state, SceneView& view);

}  // namespace kesview
