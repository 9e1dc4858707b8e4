#pragma once

#include <KesVizCore/Export.h>

#include <cstdint>
#include <stack>
#include <string>
#include <vector>

namespace KesVizCore {

class AFilterManager;
class AGeometryItem;
class AGeometryItemFactory;
class Attribute;
class EntityId;
class GeoNode;
class IView3D;
class IViewDoUndoStrategy;
class Node;
class RGBAColor;
class RenderId;
class RenderingOptions;
class SceneBuilder;
class SelectionHolder;
struct AttributeType;
struct Ray;

/// Keeps the scene graph of one view: the root, the stack of open nodes and the edits by path.
///
/// The host completes it with the operations that touch its renderer (those that are pure); the
/// library's own bodies call them. Scene builders describe a scene through it: each Begin opens
/// or creates a child of the current open node, which is the top of the stack; each End closes
/// one. Outside of a construction the stack is empty.
///
/// @par Ownership
/// The adapter owns its filter manager and its selection holder. The host owns the graph, the
/// strategies and the view. Attributes that the adapter takes off a node it destroys. Scene
/// builders are listed, not owned: delete them before the adapter. A copy shares every pointer, so
/// the copy and the original must not both be destroyed.
///
/// @par Errors
/// Paths that lead nowhere are answered by false or null. GetNode throws std::runtime_error without
/// a root, and so does AddReference, which looks a node up while a group is open. DeleteNode also
/// writes to dbg. std::bad_alloc when memory runs out. What the host's operations throw passes
/// through. In both cases nodes that were opened on the way are closed again; of an edit of several
/// nodes or attributes those that came first are done, and the edit can be repeated.
///
/// @par Threads
/// One adapter, one thread.
class KESVIZCORE_API AView3DAdapter {
public:
    AView3DAdapter(const AView3DAdapter& other);  ///< member by member
    /// Drops its own holder and manager without destroying them.
    AView3DAdapter& operator=(const AView3DAdapter& other);
    /// Destroys the filter manager and the selection holder. The graph, the strategies and the
    /// builders are left alone.
    virtual ~AView3DAdapter();

    /// Tells @p view, unless it is null, that this is its adapter. The adapter keeps no pointer.
    virtual void SetView3D(IView3D* view);
    /// The view that the host serves with this adapter; not owned. Null where there is none, but
    /// see the operations that need one.
    virtual IView3D* GetView3D() = 0;

    /// @name Construction and the stack of open nodes
    /// @{

    /// True from StartConstruction to EndConstruction.
    virtual bool IsConstructing() const = 0;
    /// Called before anything is opened; scene builders pass null. The body here does nothing.
    virtual void StartConstruction(Node* node);
    /// Called after everything is closed. The body here does nothing.
    virtual void EndConstruction();
    /// Has the view open the root; the view must not be null.
    virtual void OpenTopNode();
    /// Has the view close all that is open; the view must not be null.
    virtual void CloseTopNode();
    /// Opens the child @p id of the current open node; false without one. The root's id opens the
    /// root, whatever is open. @p name may be empty: edits open nodes by id alone.
    virtual bool OpenNode(const std::uint64_t& id, const std::wstring& name) = 0;
    /// Opens every node of the path from the root on; stops at the first that fails and answers
    /// false. What was opened stays open then. True for an empty path.
    virtual bool OpenNodes(const RenderId& path);
    /// Hangs the node at @p path under the current open node as well, and opens it: close it with
    /// CloseNode. False, with nothing changed, without an open group, without a node at the path,
    /// or where the id is a child already. That no cycle comes of it is the caller's to keep.
    virtual bool AddReference(const RenderId& path);
    /// Closes the current open node.
    virtual void CloseNode() = 0;
    /// Closes every node that is open.
    virtual void CloseAllNodes() = 0;
    /// CloseNode, and time for the host to rework the closed node.
    virtual void CloseNodeAndOptimize();
    /// Creates a group @p id under the current open node and opens it; false where it cannot.
    virtual bool CreateNode(const std::uint64_t& id, const std::wstring& name) = 0;
    /// The same with a leaf.
    virtual bool CreateGeoNode(const std::uint64_t& id, const std::wstring& name) = 0;
    /// @}

    /// @name Deleting and finding nodes
    /// @{

    /// Deletes the node at @p path, opening and closing its parents on the way. A path of one or
    /// two ids opens nothing: its last id must be a child of the current open node. With nothing
    /// open a longer path has the view open the root, so that the view must not be null, and all is
    /// closed at the end. False where nothing is deleted; the stack is as before then too. A node
    /// that is open further up must not be deleted: the stack would keep it.
    virtual bool DeleteNode(const RenderId& path);
    /// Deletes the child @p id of the current open node, as Node::DeleteChildById does: where it
    /// has other parents it is only unlinked. With nothing open only the id of the root is looked
    /// for, among the children of the root. False where nothing is deleted, and a line on dbg where
    /// there is no parent to look in.
    virtual bool DeleteNode(const std::uint64_t& id);
    /// Destroys everything below the root.
    virtual void DeleteAllNodes() = 0;
    /// The node at @p path, or null. The graph keeps it.
    ///
    /// @throws std::runtime_error when there is no root; an empty path answers null even so.
    virtual GeoNode* GetNode(const RenderId& path);
    /// The top of the stack, or null. The graph keeps it.
    virtual GeoNode* GetCurrentOpenNode();
    /// @}

    /// @name Edits of the current open node
    /// Without an open node they do nothing.
    /// @{

    /// Destroys the node's colour and transform and hands copies of those of @p source to
    /// ApplyAttribute. Other attributes are left alone on both sides.
    virtual void CopyNodeAttributesFrom(GeoNode& source);
    /// Moves the geometry of @p source here, with its ownership.
    virtual void TransferNodeGeometryFrom(GeoNode& source);
    /// Colours the node's own geometry items; its children and its attributes stay.
    virtual void SetColor(const RGBAColor& color);
    /// Tags the node alone, for the filter manager.
    virtual void SetFilterId(const int& filterId);
    /// @}

    /// @name Libraries
    /// For hosts whose renderer keeps shared parts; the bodies here do nothing and answer true.
    /// @{

    /// Begins the shared part of that name.
    virtual bool OpenLibrary(const std::string& name);
    /// Ends the shared part that is open.
    virtual void CloseLibrary();
    /// Shows the node @p referencedId of a shared part under the current open node, as @p id.
    virtual bool AddLibraryReference(const std::uint64_t& id, const std::string& library,
                                     const std::uint64_t& referencedId);
    /// @}

    /// @name Text dumps
    /// @{

    /// Appends to @p out a line for each node of the graph, indented by its depth; see
    /// nodeToString. A node of several parents is written under each. Nothing without a root, and
    /// @p flag changes nothing.
    virtual void GetSceneStructure(std::string& out, bool flag);
    /// The view's own text of its graph; the view must not be null.
    virtual void GetSceneGraphStructure(std::string& out, bool flag);
    /// @}

    /// @name What the host's renderer takes and shows
    /// @{

    /// Takes @p attribute for the current open node; null where memory ran out on the way.
    /// Setting it on the node is right for all: where SceneBuilder::SetColor or SetLineStyle has
    /// done so already, that does no harm. What is not set is to be destroyed.
    virtual void ApplyAttribute(Attribute* attribute) = 0;
    /// Takes the attribute of that type off the current open node and destroys it.
    virtual void RemoveAttribute(const AttributeType& type) = 0;
    /// Takes @p item, and its ownership, for the current open node.
    virtual void AddGeometryItem(AGeometryItem* item) = 0;
    /// The maker of this host's items, which the host owns.
    virtual AGeometryItemFactory* GetGeometryItemFactory() = 0;
    /// Clears the whole scene that a path of one id names.
    virtual void ClearScene(const RenderId& id) = 0;
    /// Empties the node at @p path: a leaf, or a group without children, loses its geometry; a
    /// group with children loses these and keeps its geometry. Colour, highlight and transform
    /// are destroyed in both cases; visibility and line style stay.
    ///
    /// Where a node is open, that one must be the node of @p path, or nothing happens; where none
    /// is, the path is opened and all is closed again, even when the walk fails, for which the view
    /// must not be null. The path must equal the node's render id, its origin View3D included.
    /// Children are deleted by their render ids, which lead through the first parent of each: one
    /// that has another parent first is unlinked there and stays here.
    virtual void Clear(const RenderId& path);
    /// Shows the node and all below it; false where there is none.
    virtual bool Show(const RenderId& id) = 0;
    /// Hides the node and all below it; false where there is none.
    virtual bool Hide(const RenderId& id) = 0;
    /// Writes the render id of the node that the ray hits first; false, with @p id as it was, where
    /// it hits none. The body here answers false.
    virtual bool PickVisual(const Ray& ray, RenderId& id);
    /// Shows the node and all below it in @p color; false where there is none.
    virtual bool Highlight(const RenderId& id, const RGBAColor& color) = 0;
    /// Takes that back; false where there is nothing to take back.
    virtual bool Unhighlight(const RenderId& id) = 0;
    /// Takes back all highlighting.
    virtual void UnhighlightAll() = 0;
    /// What the highlight strategy says of @p id; false without a strategy.
    ///
    /// @throws whatever std::exception the strategy throws; anything else that it throws comes
    ///     out as std::runtime_error.
    virtual bool IsHighlighted(const RenderId& id);
    /// Whether the node, or anything below it, is shown.
    virtual bool IsVisible(const RenderId& id) = 0;
    /// Writes 6 floats in model units, min x, y, z and max x, y, z, of what the node shows; false
    /// without. @p extrema is not null.
    virtual bool GetExtents(const RenderId& id, float* extrema) = 0;
    /// What kinds of things the view shows, which the host owns.
    virtual RenderingOptions* GetRenderingOptions() = 0;
    /// Hides everything but the node and all below it; false where there is none.
    virtual bool Isolate(const RenderId& id) = 0;
    /// Shows everything that was hidden.
    virtual void ShowAll() = 0;
    /// From here to EndUpdate many edits cost one drawing.
    virtual void BeginUpdate() = 0;
    /// Ends what BeginUpdate began, and draws.
    virtual void EndUpdate() = 0;
    /// @}

    /// The entity at @p path, from the first registered builder that knows one; otherwise @p out
    /// is as the last builder left it.
    virtual void Convert(const RenderId& path, EntityId& out);

    /// Null at first; owned by the adapter.
    AFilterManager* GetFilterManager() const;
    IViewDoUndoStrategy* GetHighlightStrategy() const;         ///< null at first; not owned
    void SetHighlightStrategy(IViewDoUndoStrategy* strategy);  ///< null takes it away
    IViewDoUndoStrategy* GetHideStrategy() const;              ///< null at first; not owned
    void SetHideStrategy(IViewDoUndoStrategy* strategy);       ///< null takes it away
    /// Never null; owned by the adapter.
    SelectionHolder* GetSelectionHolder() const;

protected:
    friend class SceneBuilderFactory;

    /// No root, builders, strategies or filter manager, nothing open, and a new selection holder.
    ///
    /// @throws std::bad_alloc when memory runs out
    AView3DAdapter();

    /// Appends the lines of @p node and of all below it, children by ascending id, 2 blanks
    /// deeper each: `Node [2] 'A', parents: 1    geometry objects: 3  , Attr: Co`. A group with
    /// children tells their number in place of the geometry. Every line says "Node", and ids are
    /// printed as signed 32-bit numbers. A line whose indentation is below zero has no blanks.
    /// What the host's nodes and attributes do when they are asked must not edit the graph.
    void nodeToString(GeoNode* node, std::string& out, int indentation, bool flag);
    /// A blank, or the marks of the node's attributes in their order: Co, Hi, Tx, Vi, and "Unknown
    /// attribute" for line styles and all other kinds, as in " , Attr: Co Tx".
    std::string getAttributeString(GeoNode* node);
    /// A blank.
    std::string getColorString(GeoNode* node);

    Node* _rootNode;  ///< null until the derived class sets it, which also destroys it
    std::vector<SceneBuilder*> _sceneBuilders;  ///< kept by SceneBuilderFactory
    AFilterManager* _filterManager;             ///< set by the derived class, destroyed here
    IViewDoUndoStrategy* _highlightStrategy;    ///< not owned
    IViewDoUndoStrategy* _hideStrategy;         ///< not owned
    SelectionHolder* _selectionHolder;          ///< made and destroyed here
    /// Pushed and popped by the derived class; the library pushes in AddReference alone.
    std::stack<GeoNode*> _openNodes;

private:
    int openPath(const RenderId& path, int count);
    Node* parentToDeleteFrom(const std::uint64_t& id);
    void clearNode(GeoNode& node);
};

}  // namespace KesVizCore
