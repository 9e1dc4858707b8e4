#pragma once

/// @file
/// Walks over the scene graph: what is shown and where, and all that lies below a node.

#include "Geometry.h"

#include <KesVizCore/core/RenderId.h>

#include <functional>
#include <vector>

namespace KesVizCore {
class AFilterManager;
class GeoNode;
class Node;
}  // namespace KesVizCore

namespace host {

/// An item that is shown, met on one way down from the root. An item of a shared node is met once
/// for each of these ways, at another path and in another place.
struct ShownItem {
    viz::RenderId path;  ///< of the node that has the item
    viz::AGeometryItem* item;
    Placement placement;
};

/// Everything that is shown: not hidden itself, and not below a node that is hidden or whose
/// filter id @p filter hides.
std::vector<ShownItem> findShownItems(viz::Node& root, const viz::AFilterManager& filter);

/// The nearest thing that the ray hits; false when it hits nothing.
bool pickNearest(const std::vector<ShownItem>& shown, const viz::Ray& ray, viz::RenderId& id);

/// Calls @p visit for the node and for all below it.
void visitBelow(viz::GeoNode& node, const std::function<void(viz::GeoNode&)>& visit);

/// Takes away all links but one of each shared node, so that what is left is a tree, which
/// destroys itself from the top. Without this a shared node would outlive its parents.
void unlinkSharedNodes(viz::Node& group);

/// True when the node at @p path lies at or below the one at @p top.
bool isAtOrBelow(const viz::RenderId& path, const viz::RenderId& top);

}  // namespace host
