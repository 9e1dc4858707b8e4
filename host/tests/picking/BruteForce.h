#pragma once

/// @file
/// What a ray hits, by looking at everything that is shown: slow, and plain enough to be believed.

#include "view/Items.h"
#include "view/SceneAdapter.h"

#include <optional>
#include <vector>

namespace kesview::testing {

/// All that a scene shows when this is made; what is changed or hidden later is not followed.
class Everything {
public:
    explicit Everything(const SceneAdapter& scene);

    std::optional<PickHit> Search(const PickRay& ray) const;

private:
    struct Shown {
        Shape shape;
        std::vector<Vector> points;  ///< in the world
        PickHit what;                ///< without point and distance
        bool isCuttable = false;
    };

    std::vector<Shown> _shown;
    std::optional<SavedView::Plane> _clipping;
};

}  // namespace kesview::testing
