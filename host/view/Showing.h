#pragma once

/// @file
/// The rules by which something is shown, applied node by node on the way down a path.

#include "view/FilterManager.h"
#include "view/Strategies.h"

#include <KesVizCore/core/EntityId.h>

namespace KesVizCore {
class RenderingOptions;
}

namespace kesview {

/// What the rules say of the node entered last.
struct ShowState {
    bool hidden = false;
    bool forced = false;  ///< shown by a mark, against what nodes below say of themselves
    bool isolated = true;
    const HideStrategy::Marks::Place* marks = nullptr;
    const PathMarks<bool>::Place* isolation = nullptr;

    bool ShowsItems() const { return isolated && !hidden; }
};

/// A node is shown unless it, or the nearest above that says anything, is hidden. A mark of the
/// hiding strategy says more than the node's own attribute. Once anything is isolated, only that
/// and what is below it is shown. Below a node whose filter id the filter or the options hide
/// nothing is shown at all.
class Showing {
public:
    Showing(const HideStrategy::Marks& marks, const PathMarks<bool>& isolation,
            const FilterManager& filter, const viz::RenderingOptions& options);

    /// Before the root is entered.
    ShowState Begin() const;
    /// Goes down to @p node; false where nothing is shown at it or below.
    bool Enter(const viz::GeoNode& node, ShowState& state) const;

private:
    bool showsType(int filterId) const;

    const HideStrategy::Marks& _marks;
    const PathMarks<bool>& _isolation;
    const FilterManager& _filter;
    const viz::RenderingOptions& _options;
};

/// The entity type whose things stand below a node; InvalidType for most nodes.
viz::EntityType typeOf(const viz::GeoNode& node);
/// Whether things of that type are annotations.
bool isAnnotation(viz::EntityType type);

}  // namespace kesview
