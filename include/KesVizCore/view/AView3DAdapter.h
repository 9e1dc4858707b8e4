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
/// strategies and the view. Attributes that the adapter takes off a node it destroys. A copy
/// shares every pointer, so the copy and the original must not both be destroyed.
///
/// @par Errors
/// Paths that lead nowhere are answered by false or null. GetNode throws std::runtime_error
/// without a root, and so does all that looks a node up. DeleteNode also writes to dbg.
///
/// @par Threads
/// One adapter, one thread.
class KESVIZCORE_API AView3DAdapter {
public:
    AView3DAdapter(const AView3DAdapter& other);
    AView3DAdapter& operator=(const AView3DAdapter& other);
    /// The graph, the strategies and the builders are left alone.
    virtual ~AView3DAdapter();

    /// Tells @p view, unless it is null, that this is its adapter. The adapter keeps no pointer.
    virtual void SetView3D(IView3D* view);
    /// The view that the host serves with this adapter.
    virtual IView3D* GetView3D() = 0;

    /// @name Construction and the stack of open nodes
    /// @{
    virtual bool IsConstructing() const = 0;
    /// The body here does nothing.
    virtual void StartConstruction(Node* node);
    /// The body here does nothing.
    virtual void EndConstruction();
    /// Has the view open the root; the view must not be null.
    virtual void OpenTopNode();
    /// Has the view close all that is open; the view must not be null.
    virtual void CloseTopNode();
    /// Opens the child @p id of the current open node; false without one. The root's id opens the
    /// root, whatever is open. @p name may be empty: edits open nodes by id alone.
    virtual bool OpenNode(const std::uint64_t& id, const std::wstring& name) = 0;
    /// Opens every node of the path from the root on; stops at the first that fails and answers
    /// false. What was opened stays open.
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
    /// two ids opens nothing: its last id must be a child of the current open node. False where
    /// nothing is deleted; the stack is as before then too.
    virtual bool DeleteNode(const RenderId& path);
    /// Deletes the child @p id of the current open node. With nothing open only the id of the
    /// root is looked for, among the children of the root. False where nothing is deleted, and a
    /// line on dbg where there is no parent to look in.
    virtual bool DeleteNode(const std::uint64_t& id);
    /// Destroys everything below the root.
    virtual void DeleteAllNodes() = 0;
    /// The node at @p path, or null. The graph keeps it.
    ///
    /// @throws std::runtime_error when there is no root; an empty path answers null even so.
    virtual GeoNode* GetNode(const RenderId& path);
    /// The top of the stack, or null.
    virtual GeoNode* GetCurrentOpenNode();
    /// @}

    /// @name Edits of the current open node
    /// Without an open node they do nothing.
    /// @{
    /// Destroys the node's colour and transform and hands copies of those of @p source to
    /// ApplyAttribute. Other attributes are left alone on both sides.
    virtual void CopyNodeAttributesFrom(GeoNode& source);
    /// Moves the geometry of @p source here.
    virtual void TransferNodeGeometryFrom(GeoNode& source);
    /// Colours the node's own geometry items; its children and its attributes stay.
    virtual void SetColor(const RGBAColor& color);
    virtual void SetFilterId(const int& filterId);
    /// @}

    /// @name Libraries
    /// For hosts whose renderer keeps shared parts; the bodies here do nothing and answer true.
    /// @{
    virtual bool OpenLibrary(const std::string& name);
    virtual void CloseLibrary();
    virtual bool AddLibraryReference(const std::uint64_t& id, const std::string& library,
                                     const std::uint64_t& referencedId);
    /// @}

    /// @name Text dumps
    /// @{
    /// Appends to @p out a line for each node of the graph, indented by its depth; see
    /// nodeToString. A node of several parents is written under each. @p flag changes nothing.
    virtual void GetSceneStructure(std::string& out, bool flag);
    /// The view's own text of its graph; the view must not be null.
    virtual void GetSceneGraphStructure(std::string& out, bool flag);
    /// @}

    /// @name What the host's renderer takes and shows
    /// @{
    /// Takes @p attribute for the current open node; null where memory ran out on the way.
    virtual void ApplyAttribute(Attribute* attribute) = 0;
    /// Takes the attribute of that type off the current open node.
    virtual void RemoveAttribute(const AttributeType& type) = 0;
    /// Takes @p item for the current open node.
    virtual void AddGeometryItem(AGeometryItem* item) = 0;
    /// The maker of this host's items; the adapter keeps it.
    virtual AGeometryItemFactory* GetGeometryItemFactory() = 0;
    /// Clears the whole scene that a path of one id names.
    virtual void ClearScene(const RenderId& id) = 0;
    /// Empties the node at @p path: a leaf, or a group without children, loses its geometry; a
    /// group with children loses these and keeps its geometry. Colour, highlight and transform
    /// are destroyed in both cases; visibility and line style stay.
    ///
    /// Where a node is open, that one must be the node of @p path, or nothing happens; where none
    /// is, the path is opened and all is closed again, even when the walk fails. The path must
    /// equal the node's render id, its origin View3D included.
    virtual void Clear(const RenderId& path);
    /// Shows the node and all below it.
    virtual bool Show(const RenderId& id) = 0;
    virtual bool Hide(const RenderId& id) = 0;
    /// What the ray hits first; the body here answers false.
    virtual bool PickVisual(const Ray& ray, RenderId& id);
    virtual bool Highlight(const RenderId& id, const RGBAColor& color) = 0;
    virtual bool Unhighlight(const RenderId& id) = 0;
    virtual void UnhighlightAll() = 0;
    /// What the highlight strategy says of @p id; false without a strategy.
    ///
    /// @throws whatever std::exception the strategy throws; anything else that it throws comes
    ///     out as std::runtime_error.
    virtual bool IsHighlighted(const RenderId& id);
    virtual bool IsVisible(const RenderId& id) = 0;
    /// Writes 6 floats, min x, y, z and max x, y, z, of what the node shows; false without.
    virtual bool GetExtents(const RenderId& id, float* extrema) = 0;
    virtual RenderingOptions* GetRenderingOptions() = 0;
    /// Hides everything but the node.
    virtual bool Isolate(const RenderId& id) = 0;
    virtual void ShowAll() = 0;
    /// Between these two many edits cost one drawing.
    virtual void BeginUpdate() = 0;
    virtual void EndUpdate() = 0;
    /// @}

    /// The entity at @p path, from the first registered builder that knows one; otherwise @p out
    /// is as the last builder left it.
    virtual void Convert(const RenderId& path, EntityId& out);

    /// Null at first; owned by the adapter.
    AFilterManager* GetFilterManager() const;
    IViewDoUndoStrategy* GetHighlightStrategy() const;
    void SetHighlightStrategy(IViewDoUndoStrategy* strategy);
    IViewDoUndoStrategy* GetHideStrategy() const;
    void SetHideStrategy(IViewDoUndoStrategy* strategy);
    /// Owned by the adapter.
    SelectionHolder* GetSelectionHolder() const;

protected:
    friend class SceneBuilderFactory;

    AView3DAdapter();

    /// Appends the lines of @p node and of all below it, children by ascending id, 2 blanks
    /// deeper each: `Node [2] 'A', parents: 1    geometry objects: 3  , Attr: Co`. A group with
    /// children tells their number in place of the geometry. Every line says "Node", and ids are
    /// printed as signed 32-bit numbers.
    void nodeToString(GeoNode* node, std::string& out, int indentation, bool flag);
    /// A blank, or the two-letter marks of the node's attributes: " , Attr: Co Tx".
    std::string getAttributeString(GeoNode* node);
    /// A blank.
    std::string getColorString(GeoNode* node);

    Node* _rootNode;
    std::vector<SceneBuilder*> _sceneBuilders;
    AFilterManager* _filterManager;
    IViewDoUndoStrategy* _highlightStrategy;
    IViewDoUndoStrategy* _hideStrategy;
    SelectionHolder* _selectionHolder;
    std::stack<GeoNode*> _openNodes;

private:
    int openPath(const RenderId& path, int count);
    Node* parentToDeleteFrom(const std::uint64_t& id);
    void clearNode(GeoNode& node);
};

}  // namespace KesVizCore
