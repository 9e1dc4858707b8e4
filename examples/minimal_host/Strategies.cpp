#include "Strategies.h"

#include "Geometry.h"
#include "SceneWalk.h"

#include <KesVizCore/graph/AGeometryItem.h>
#include <KesVizCore/graph/AttributeColor.h>
#include <KesVizCore/graph/AttributeHighlight.h>
#include <KesVizCore/graph/AttributeVisibility.h>
#include <KesVizCore/graph/Node.h>
#include <KesVizCore/view/AView3DAdapter.h>

namespace host {

// --- both strategies ----------------------------------------------------------------------------

bool NodeStrategy::Apply(const viz::RenderId& id) {
    viz::GeoNode* const named = _adapter.GetNode(id);
    if (named == nullptr) {
        return false;
    }
    if (!IsApplied(id)) {
        named->SetAttribute(makeMark(*named).release());  // the node owns it from now on
    }
    applyTo(*named);
    return true;
}

bool NodeStrategy::Undo(const viz::RenderId& id) {
    viz::GeoNode* const named = _adapter.GetNode(id);
    bool undone = false;
    if (named != nullptr) {
        visitBelow(*named, [&](viz::GeoNode& node) { undone = undoOnNode(node) || undone; });
    }
    return undone;
}

bool NodeStrategy::undoOnNode(viz::GeoNode& node) const {
    bool undone = false;
    viz::Attribute* const attribute = node.GetAttribute(markType());
    if (attribute != nullptr && isMark(*attribute)) {
        // DeleteAttribute takes it off without destroying it, which is left to us.
        const std::unique_ptr<viz::Attribute> mark(attribute);
        node.DeleteAttribute(markType());
        undone = true;
    }
    for (viz::AGeometryItem* item : node.EachGeometry()) {
        undone = undoOnItem(*item) || undone;
    }
    return undone;
}

void NodeStrategy::UndoAll() {
    Undo(viz::RenderId({viz::Node::GetRootNodeId()}, viz::View3D));
}

bool NodeStrategy::IsApplied(const viz::RenderId& id) {
    const viz::GeoNode* const node = _adapter.GetNode(id);
    viz::Attribute* const attribute = node != nullptr ? node->GetAttribute(markType()) : nullptr;
    return attribute != nullptr && isMark(*attribute);
}

bool NodeStrategy::isMark(viz::Attribute& /*attribute*/) const {
    return true;
}

// --- highlighting -------------------------------------------------------------------------------

namespace {

bool isHighlighted(const viz::AGeometryItem& item) {
    const auto* const hostItem = dynamic_cast<const HostItem*>(&item);
    return hostItem != nullptr && hostItem->IsHighlighted();
}

}  // namespace

viz::AttributeType HighlightStrategy::markType() const {
    return viz::AttributeType::Highlight;
}

std::unique_ptr<viz::Attribute> HighlightStrategy::makeMark(const viz::GeoNode& node) const {
    viz::RGBAColor color;
    if (auto* own =
            dynamic_cast<viz::AttributeColor*>(node.GetAttribute(viz::AttributeType::Color))) {
        color = own->GetColor();
    } else if (!node.EachGeometry().empty()) {
        node.EachGeometry().front()->GetColor(color);
    }
    return std::make_unique<viz::AttributeHighlight>(color);
}

void HighlightStrategy::applyTo(viz::GeoNode& named) const {
    visitBelow(named, [this](viz::GeoNode& node) {
        for (viz::AGeometryItem* item : node.EachGeometry()) {
            if (!isHighlighted(*item)) {
                item->SaveColor();  // a second time would lose the item's own colour
            }
            item->SetColor(_color);
        }
    });
}

bool HighlightStrategy::undoOnItem(viz::AGeometryItem& item) const {
    const bool highlighted = isHighlighted(item);
    item.RestoreColor();
    return highlighted;
}

// --- hiding -------------------------------------------------------------------------------------

viz::AttributeType HideStrategy::markType() const {
    return viz::AttributeType::Visibility;
}

bool HideStrategy::isMark(viz::Attribute& attribute) const {
    return !dynamic_cast<viz::AttributeVisibility&>(attribute).GetIsVisible();
}

std::unique_ptr<viz::Attribute> HideStrategy::makeMark(const viz::GeoNode& /*node*/) const {
    return std::make_unique<viz::AttributeVisibility>(false);
}

void HideStrategy::applyTo(viz::GeoNode& named) const {
    for (viz::AGeometryItem* item : named.EachGeometry()) {
        item->SetVisible(false);
    }
}

bool HideStrategy::undoOnItem(viz::AGeometryItem& item) const {
    const bool hidden = !item.IsVisible();
    item.SetVisible(true);
    return hidden;
}

// --- filters ------------------------------------------------------------------------------------

void FilterManager::SetVisible(int filterId, bool visible) {
    if (visible) {
        _hidden.erase(filterId);
    } else {
        _hidden.insert(filterId);
    }
    _onChange();
}

void FilterManager::Reset() {
    _hidden.clear();
    _onChange();
}

}  // namespace host
