#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/core/Pooled.h>
#include <KesVizCore/graph/AttributeType.h>
#include <KesVizCore/graph/CompactName.h>
#include <KesVizCore/graph/PointerList.h>

#include <cstdint>
#include <string>
#include <vector>

namespace KesVizCore {

class AGeometryItem;
class AReport;
class Attribute;
class Node;
class RenderId;

/// A leaf of the scene graph: a name, a filter id, attributes and geometry items.
///
/// Node is the kind that also has children. Nodes are made by Node::CreateRoot, CreateChild and
/// CreateGeoChild alone. A node may hang under several parents, so the graph is a directed
/// acyclic graph; that it has no cycle is the caller's to keep.
///
/// @par Ownership
/// A node owns its attributes and its geometry items, not its parents. Its parents own it
/// jointly: it dies with the last link that is deleted, see Node. A copy shares every pointer of
/// the original and owns nothing new: take the pointers off one of the two before it dies.
///
/// @par Errors
/// Nothing here throws, but for the memory that runs out (std::bad_alloc, nothing changed).
/// Refusals are answered by false or null. Reports pass on what the report throws.
///
/// @par Memory
/// A node is small: names of up to 15 Latin-1 characters and lists of up to one entry need no
/// memory of their own. The vectors that Parents(), Attributes() and Geometry() answer are made
/// when they are first asked for, and stay; EachParent(), EachAttribute() and EachGeometry() answer
/// the lists as they are kept, with begin, end, size, empty and front. What these answered before
/// ends when a vector is first asked for; a loop over the range goes on.
///
/// @par Threads
/// One graph, one thread. Ids of all graphs come from one unguarded counter.
class KESVIZCORE_API GeoNode : public Pooled {
public:
    /// Writes this node into @p report, which must be open; always true.
    ///
    /// An element "GeoNode" with "ID" and "Name", then an element for each geometry item
    /// ("Geometry": "ID", "Type"), each attribute and each parent ("Parent": "ID", "Name"). An
    /// "Attribute" has a "Type" and one more: "Color" or "OriginalColor" as red,green,blue,alpha,
    /// "Value", or "Matrix" with three decimal places; a line style, and any other kind, is the
    /// text "Type is Unknown" alone. What the report throws passes through.
    virtual bool GetReport(AReport& report);

    /// Destroys the attributes, then the geometry. No parent is told.
    virtual ~GeoNode();

    /// False for a leaf.
    virtual bool HasChildren() const;

    /// Takes @p item over. Neither null nor an item that is here already is refused; one that is
    /// here twice is destroyed twice.
    virtual void AddGeometry(AGeometryItem* item);
    /// Takes the first item of that id out of the list, if there is one. In spite of the name the
    /// item lives on and is the caller's from then on.
    virtual void DeleteGeometryById(const std::uint64_t& id);
    /// Destroys all items.
    virtual void DeleteAllGeometry();

    /// `[5] "Bracket" parents(1) attributes(0) geoEntities(2)`, cut after 4,095 characters and
    /// converted as by Utils::WstringToString. A zero character ends the name.
    virtual std::string ToString() const;

    GeoNode(const GeoNode& other);             ///< shares attributes, parents and items
    GeoNode& operator=(const GeoNode& other);  ///< drops its own without destroying them

    /// Unique among the children of one parent.
    std::uint64_t Id() const { return _id; }
    std::wstring Name() const;               ///< a copy; empty at first
    void SetName(const std::wstring& name);  ///< any text; siblings may share one
    /// The tag by which the adapter's filter manager knows this node; -1 at first.
    int GetFilterID() const { return _filterId; }
    void SetFilterID(const int& filterId);  ///< any number

    /// The path of ids from the topmost ancestor down to this node, origin View3D, following the
    /// first parent of each. The caller owns the answer (RenderId::DeleteRenderId releases it);
    /// null when memory runs out.
    RenderId* GetRenderId() const;

    bool HasParent() const { return !_parents.empty(); }  ///< whether anything is recorded
    /// The parents in the order in which they were added; none occurs twice.
    const std::vector<Node*>& Parents() const { return _parents.AsVector(); }
    /// The same without a vector; valid until a parent is recorded or forgotten.
    const PointerList<Node>& EachParent() const { return _parents; }
    /// The first parent of that id, or null.
    Node* GetParent(const std::uint64_t& id) const;
    /// Records @p parent, null too, as the last one, unless it is recorded already. Only this side
    /// of the link is made; Node::AddChild makes both.
    void AddToParents(Node* parent);
    /// Forgets @p parent, if it is recorded; the order of the others stays. The parent is not told.
    void RemoveFromParents(Node* parent);

    /// The node's own list, never null and valid as long as the node. The caller may change it:
    /// what it adds is owned by the node, what it takes out is its own.
    std::vector<Attribute*>* Attributes() { return &_attributes.AsVector(); }
    /// The same without a vector; valid until an attribute comes or goes.
    const PointerList<Attribute>& EachAttribute() const { return _attributes; }
    /// Takes @p attribute over, in the place of the one of its type, which is destroyed unless it
    /// is the very same, or else as the last. False for null. Where memory runs out it stays the
    /// caller's.
    bool SetAttribute(Attribute* attribute);
    /// The attribute of that type, or null. The node keeps it.
    Attribute* GetAttribute(AttributeType type) const;
    /// Takes the attribute of that type off the node, if there is one. In spite of the name it
    /// lives on and is the caller's from then on.
    void DeleteAttribute(AttributeType type);

    /// The items in the order in which they were added.
    const std::vector<AGeometryItem*>& Geometry() const { return _geometry.AsVector(); }
    /// The same without a vector; valid until an item comes or goes.
    const PointerList<AGeometryItem>& EachGeometry() const { return _geometry; }
    /// Moves all items of @p source, with their ownership, behind those of this node. Null and
    /// the node itself change nothing.
    void TransferGeometryFrom(GeoNode* source);

    /// The last id handed out by Node::GetNextId.
    static std::uint64_t NodeCounter;

protected:
    /// No name, filter id -1, nothing on it and no parent.
    explicit GeoNode(const std::uint64_t& id);

    /// Writes geometry, attributes and parents: what the reports of leaf and group share.
    void getReport(AReport& report);

private:
    friend class Node;
    friend struct NodeAccess;

    std::uint64_t _id;
    std::int32_t _filterId;
    bool _isGroup;  ///< whether this is a Node
    CompactName _name;
    PointerList<Attribute> _attributes;
    PointerList<Node> _parents;
    PointerList<AGeometryItem> _geometry;
};

}  // namespace KesVizCore
