#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/graph/ChildRange.h>
#include <KesVizCore/graph/ChildTable.h>
#include <KesVizCore/graph/GeoNode.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace KesVizCore {

/// A group of the scene graph: a GeoNode that also has children.
///
/// @code
/// KesVizCore::Node* root = KesVizCore::Node::CreateRoot();
/// KesVizCore::Node* body = root->CreateChild(KesVizCore::Node::GetNextId());
/// body->SetName(L"Bracket");
/// delete root;   // and the body with it
/// @endcode
///
/// @par Ownership
/// Parents own a child jointly. DeleteChildById destroys it when no parent is left. Destroying a
/// node destroys the children, in the order of their ids, that have exactly one parent; a child
/// of several survives and keeps a pointer to the dead node, so unlink shared children first.
/// Depth is no limit: a chain of a million nodes is destroyed and reported on a small stack. Only
/// classes that a host derives from Node are destroyed and reported one inside the other. What is
/// destroyed on the way may link and unlink other children: those of lower ids are passed by then.
///
/// @par Errors
/// As for GeoNode.
///
/// @par Memory
/// As for GeoNode. A child costs its parent two words; where the ids of children have no gaps,
/// one is found without a search, and otherwise in logarithmic time.
///
/// @par Threads
/// As for GeoNode; CreateRoot restarts the counter: one thread at a time.
class KESVIZCORE_API Node : public GeoNode {
public:
    /// The id of every root: 1.
    static std::uint64_t GetRootNodeId();
    /// The next unused id since the last CreateRoot; before the first one it begins at 1, the
    /// root's own.
    static std::uint64_t GetNextId();
    /// A new root of id 1 named "ROOT", owned by the caller; null when memory runs out. Every
    /// call restarts the ids, whatever ids an earlier graph uses.
    static Node* CreateRoot();

    /// Writes this node and all below it into @p report, which must be open; always true.
    ///
    /// As for a leaf, but in an element "Node" that also holds the reports of the children, in
    /// the order of their names. Of children of the same name only the one of the lowest id is
    /// written.
    bool GetReport(AReport& report) override;

    ~Node() override;

    /// True with at least one child.
    bool HasChildren() const override;
    /// The text of the leaf, followed by ` children(3)`.
    std::string ToString() const override;

    /// @name Making children
    /// Each answers the new node, or null when memory runs out. Where the id is taken, the new
    /// node is answered unlinked and the caller holds the only pointer to it: HasParent() tells.
    /// @{

    /// A group, without a name.
    virtual Node* CreateChild(const std::uint64_t& id);
    /// A leaf, without a name.
    virtual GeoNode* CreateGeoChild(const std::uint64_t& id);
    /// @}

    Node(const Node& other);  ///< shares the children, whose parents do not list it
    /// Drops its own children without destroying them, and shares those of the other.
    Node& operator=(const Node& other);

    /// Links @p child under its id, both ways. False, and nothing changed, for null and for an
    /// id that is taken.
    bool AddChild(GeoNode* child);
    /// The child of that id, or null. The node keeps it.
    GeoNode* GetChild(const std::uint64_t& id) const;
    /// The children, ascending by id, as they are kept.
    ChildRange EachChild() const;
    /// The same as a map, which is made when it is first asked for, with memory for every child,
    /// and from then on kept in step. GetChild and EachChild need none.
    const std::map<std::uint64_t, GeoNode*>& Children() const;

    /// Unlinks a child for a caller that takes it over: the child lives on, and its list of
    /// parents still names this node. False without such a child.
    bool RemoveChildById(const std::uint64_t& id);
    /// Unlinks a child both ways and destroys it if no parent is left. False without such a child.
    bool DeleteChildById(const std::uint64_t& id);
    /// Forgets all children and does nothing else: none is destroyed, none is told.
    void ClearChildren();

protected:
    /// As the constructor of GeoNode, without children.
    explicit Node(const std::uint64_t& id);

private:
    friend struct NodeAccess;

    void eraseChildNode(GeoNode* child, const std::uint64_t& id);
    ChildTable::Iterator placeOf(const GeoNode& child) const;
    void destroyChildren();
    void pushReportedChildren(std::vector<GeoNode*>& stack) const;

    ChildTable _children;
};

}  // namespace KesVizCore
