#include "SceneWalk.h"

#include <KesVizCore/graph/AGeometryItem.h>
#include <KesVizCore/graph/AttributeTransform.h>
#include <KesVizCore/graph/AttributeVisibility.h>
#include <KesVizCore/graph/Node.h>
#include <KesVizCore/view/AFilterManager.h>

#include <cstdint>
#include <limits>

namespace host {

namespace {

/// A node's own placement inside its parent.
Placement ownPlacement(const viz::GeoNode& node) {
    auto* const transform =
        dynamic_cast<viz::AttributeTransform*>(node.GetAttribute(viz::AttributeType::Transform));
    return transform != nullptr ? Placement(transform->GetTransform()) : Placement();
}

bool isHidden(const viz::GeoNode& node) {
    auto* const visibility =
        dynamic_cast<viz::AttributeVisibility*>(node.GetAttribute(viz::AttributeType::Visibility));
    return visibility != nullptr && !visibility->GetIsVisible();
}

/// @p path and @p placement are those of the parent. The path is the one really walked, where
/// GeoNode::GetRenderId would answer the way through the first parent for every reference.
void findBelow(viz::GeoNode& node, viz::RenderId path, const Placement& placement,
               const viz::AFilterManager& filter, std::vector<ShownItem>& shown) {
    if (isHidden(node) || !filter.IsVisible(node.GetFilterID())) {
        return;
    }
    path.AddValue(node.Id());
    const Placement world = placement.Around(ownPlacement(node));
    for (viz::AGeometryItem* item : node.EachGeometry()) {
        if (item != nullptr && item->IsVisible()) {
            shown.push_back({path, item, world});
        }
    }
    if (const auto* group = dynamic_cast<const viz::Node*>(&node)) {
        for (const auto& [id, child] : group->EachChild()) {
            findBelow(*child, path, world, filter, shown);
        }
    }
}

struct Hit {
    const ShownItem* shown = nullptr;
    double distance = std::numeric_limits<double>::infinity();
};

}  // namespace

std::vector<ShownItem> findShownItems(viz::Node& root, const viz::AFilterManager& filter) {
    std::vector<ShownItem> shown;
    findBelow(root, viz::RenderId({}, viz::View3D), Placement(), filter, shown);
    return shown;
}

bool pickNearest(const std::vector<ShownItem>& shown, const viz::Ray& ray, viz::RenderId& id) {
    Hit thin;
    Hit solid;
    for (const ShownItem& candidate : shown) {
        const auto* const item = dynamic_cast<const HostItem*>(candidate.item);
        double distance = 0;
        if (item == nullptr || !item->GetShape().IsHit(ray, candidate.placement, distance)) {
            continue;
        }
        Hit& best = item->GetShape().IsThin() ? thin : solid;
        if (distance < best.distance) {
            best = {&candidate, distance};
        }
    }
    // An edge lies on its faces and is met within the aperture only: it wins over the face before
    // it as long as that is not much nearer, and so not another one that covers the edge.
    const bool thinWins =
        thin.shown != nullptr && thin.distance <= solid.distance + 2 * ray.Aperture;
    const ShownItem* const picked = thinWins ? thin.shown : solid.shown;
    if (picked == nullptr) {
        return false;
    }
    id = picked->path;
    return true;
}

void visitBelow(viz::GeoNode& node, const std::function<void(viz::GeoNode&)>& visit) {
    visit(node);
    if (const auto* group = dynamic_cast<const viz::Node*>(&node)) {
        for (const auto& [id, child] : group->EachChild()) {
            visitBelow(*child, visit);
        }
    }
}

void unlinkSharedNodes(viz::Node& group) {
    std::vector<std::uint64_t> shared;
    for (const auto& [id, child] : group.EachChild()) {
        if (child->EachParent().size() > 1) {
            shared.push_back(id);
        } else if (auto* below = dynamic_cast<viz::Node*>(child)) {
            unlinkSharedNodes(*below);
        }
    }
    for (const std::uint64_t id : shared) {
        group.DeleteChildById(id);  // unlinks alone: another parent is left
    }
}

bool isAtOrBelow(const viz::RenderId& path, const viz::RenderId& top) {
    if (path.Length() < top.Length()) {
        return false;
    }
    for (int at = 0; at < top.Length(); ++at) {
        if (path[at] != top[at]) {
            return false;
        }
    }
    return true;
}

}  // namespace host
