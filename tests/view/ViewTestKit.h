#pragma once

/// @file
/// Short words for the tests of the view: paths, small graphs, every kind of attribute.

#include "support/RecordingHost.h"
#include "support/TellingAttribute.h"

#include <KesVizCore/KesVizCore.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

namespace KesVizCore::support {

/// A path as a node answers it: origin View3D.
inline RenderId pathOf(std::initializer_list<std::uint64_t> ids) {
    return RenderId(std::vector<std::uint64_t>(ids), View3D);
}

inline Node* addGroup(Node* parent, std::uint64_t id, const std::wstring& name = std::wstring()) {
    Node* const group = parent->CreateChild(id);
    group->SetName(name);
    return group;
}

inline GeoNode* addLeaf(Node* parent, std::uint64_t id, const std::wstring& name = std::wstring()) {
    GeoNode* const leaf = parent->CreateGeoChild(id);
    leaf->SetName(name);
    return leaf;
}

/// The ids of the items of a node, in order; 0 for null.
inline std::vector<std::uint64_t> itemIds(const GeoNode& node) {
    std::vector<std::uint64_t> ids;
    for (const AGeometryItem* item : node.Geometry()) {
        ids.push_back(item != nullptr ? item->ID() : 0);
    }
    return ids;
}

/// The types of the attributes of a node, in order.
inline std::vector<int> attributeTypes(GeoNode& node) {
    std::vector<int> types;
    for (Attribute* attribute : *node.Attributes()) {
        types.push_back(attribute->GetType());
    }
    return types;
}

inline std::vector<std::uint64_t> childIds(const Node& node) {
    std::vector<std::uint64_t> ids;
    for (const auto& entry : node.Children()) {
        ids.push_back(entry.first);
    }
    return ids;
}

/// Gives @p node one attribute of each kind, in the order line style, transform, visibility,
/// colour, highlight; each writes its type into @p destroyed when it dies.
inline void addEveryAttribute(GeoNode& node, std::vector<int>& destroyed) {
    node.SetAttribute(new TellingAttribute<AttributeLineStyle>(destroyed, 2.0F, "dashed"));
    node.SetAttribute(new TellingAttribute<AttributeTransform>(destroyed));
    node.SetAttribute(new TellingAttribute<AttributeVisibility>(destroyed, true));
    node.SetAttribute(new TellingAttribute<AttributeColor>(destroyed, RGBAColor::Red(), true));
    node.SetAttribute(new TellingAttribute<AttributeHighlight>(destroyed, RGBAColor::Blue()));
}

/// A host that also writes down the deletions that the library asks itself for.
class EditLoggingAdapter : public RecordingAdapter {
public:
    using RecordingAdapter::RecordingAdapter;

    bool DeleteNode(const RenderId& path) override {
        log.push_back("DeleteNode(" + path.ToString() + ")");
        return RecordingAdapter::DeleteNode(path);
    }
    bool DeleteNode(const std::uint64_t& id) override {
        log.push_back("DeleteNode(" + std::to_string(id) + ")");
        return RecordingAdapter::DeleteNode(id);
    }
};

}  // namespace KesVizCore::support
