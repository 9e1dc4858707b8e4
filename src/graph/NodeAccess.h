#pragma once

#include <KesVizCore/graph/Node.h>

namespace KesVizCore {

/// How the library reads a node: as it is kept, without making the containers that hosts get.
struct NodeAccess {
    static const CompactName& name(const GeoNode& node) { return node._name; }
    static const PointerList<Attribute>& attributes(const GeoNode& node) {
        return node._attributes;
    }
    static const PointerList<Node>& parents(const GeoNode& node) { return node._parents; }
    static const PointerList<AGeometryItem>& geometry(const GeoNode& node) {
        return node._geometry;
    }
    static const ChildTable& children(const Node& node) { return node._children; }

    /// The node as a group, or null for null and for a leaf.
    static const Node* asGroup(const GeoNode* node) {
        return node != nullptr && node->_isGroup ? static_cast<const Node*>(node) : nullptr;
    }
    static Node* asGroup(GeoNode* node) {
        return node != nullptr && node->_isGroup ? static_cast<Node*>(node) : nullptr;
    }
};

}  // namespace KesVizCore
