#include "core/Allocation.h"
#include "graph/NodeAccess.h"
#include "graph/RenderIdOf.h"

#include <KesVizCore/core/EntityId.h>
#include <KesVizCore/core/RGBAColor.h>
#include <KesVizCore/graph/AGeometryItem.h>
#include <KesVizCore/graph/AttributeColor.h>
#include <KesVizCore/graph/AttributeTransform.h>
#include <KesVizCore/graph/Node.h>
#include <KesVizCore/report/DebugStream.h>
#include <KesVizCore/scene/SceneBuilder.h>
#include <KesVizCore/view/AFilterManager.h>
#include <KesVizCore/view/AView3DAdapter.h>
#include <KesVizCore/view/IView3D.h>
#include <KesVizCore/view/IViewDoUndoStrategy.h>
#include <KesVizCore/view/SelectionHolder.h>

#include <algorithm>
#include <cstddef>
#include <exception>
#include <ostream>
#include <stdexcept>
#include <utility>

namespace KesVizCore {

AView3DAdapter::AView3DAdapter()
    : _rootNode(nullptr),
      _filterManager(nullptr),
      _highlightStrategy(nullptr),
      _hideStrategy(nullptr),
      // cppcheck-suppress noCopyConstructor ; a copy shares every pointer, as the interface says
      // cppcheck-suppress noOperatorEq ; the same
      _selectionHolder(new SelectionHolder()) {}

AView3DAdapter::AView3DAdapter(const AView3DAdapter& other) = default;
AView3DAdapter& AView3DAdapter::operator=(const AView3DAdapter& other) = default;

AView3DAdapter::~AView3DAdapter() {
    _rootNode = nullptr;
    delete _selectionHolder;
    _selectionHolder = nullptr;
    delete _filterManager;
    _filterManager = nullptr;
}

AFilterManager* AView3DAdapter::GetFilterManager() const {
    return _filterManager;
}

IViewDoUndoStrategy* AView3DAdapter::GetHighlightStrategy() const {
    return _highlightStrategy;
}

void AView3DAdapter::SetHighlightStrategy(IViewDoUndoStrategy* strategy) {
    _highlightStrategy = strategy;
}

IViewDoUndoStrategy* AView3DAdapter::GetHideStrategy() const {
    return _hideStrategy;
}

void AView3DAdapter::SetHideStrategy(IViewDoUndoStrategy* strategy) {
    _hideStrategy = strategy;
}

SelectionHolder* AView3DAdapter::GetSelectionHolder() const {
    return _selectionHolder;
}

void AView3DAdapter::SetView3D(IView3D* view) {
    if (view != nullptr) {
        view->SetView3DAdapter(this);
    }
}

// --- construction and the stack of open nodes ---------------------------------------------------

void AView3DAdapter::StartConstruction(Node* /*node*/) {}

void AView3DAdapter::EndConstruction() {}

void AView3DAdapter::OpenTopNode() {
    GetView3D()->OpenTopNode();
}

void AView3DAdapter::CloseTopNode() {
    GetView3D()->CloseTopNode();
}

void AView3DAdapter::CloseNodeAndOptimize() {
    CloseNode();
}

GeoNode* AView3DAdapter::GetCurrentOpenNode() {
    return _openNodes.empty() ? nullptr : _openNodes.top();
}

/// Opens the first @p count nodes of the path, or as many as can be; answers how many. Where
/// opening one throws, those before it are closed again.
int AView3DAdapter::openPath(const RenderId& path, int count) {
    int opened = 0;
    try {
        while (opened < count && OpenNode(path[opened], std::wstring())) {
            ++opened;
        }
    } catch (...) {
        for (; opened > 0; --opened) {
            CloseNode();
        }
        throw;
    }
    return opened;
}

bool AView3DAdapter::OpenNodes(const RenderId& path) {
    return openPath(path, path.Length()) == path.Length();
}

bool AView3DAdapter::AddReference(const RenderId& path) {
    Node* const group = NodeAccess::asGroup(GetCurrentOpenNode());
    if (group == nullptr) {
        return false;
    }
    GeoNode* const referenced = GetNode(path);
    _openNodes.push(referenced);  // first, since a link is harder to take back
    bool linked = false;
    try {
        linked = group->AddChild(referenced);
    } catch (...) {
        _openNodes.pop();
        throw;
    }
    if (!linked) {
        _openNodes.pop();
    }
    return linked;
}

// --- deleting and finding nodes -----------------------------------------------------------------

GeoNode* AView3DAdapter::GetNode(const RenderId& path) {
    if (path.IsEmpty()) {
        return nullptr;
    }
    if (_rootNode == nullptr) {
        throw std::runtime_error("Unexpected NULL value of _rootNode encountered");
    }
    if (path[0] != _rootNode->Id()) {
        return nullptr;
    }
    GeoNode* node = _rootNode;
    for (int place = 1; place < path.Length() && node != nullptr; ++place) {
        const Node* const group = NodeAccess::asGroup(node);
        node = group != nullptr ? group->GetChild(path[place]) : nullptr;
    }
    return node;
}

Node* AView3DAdapter::parentToDeleteFrom(const std::uint64_t& id) {
    if (_openNodes.empty()) {
        if (id == Node::GetRootNodeId()) {
            return _rootNode;
        }
        dbg << "Stack is zero, yet is requesting for children" << std::endl;
        return nullptr;
    }
    GeoNode* const open = GetCurrentOpenNode();
    if (open == nullptr || !open->HasChildren()) {
        dbg << "Cannot delete child node, no children found." << std::endl;
        return nullptr;
    }
    return NodeAccess::asGroup(open);
}

bool AView3DAdapter::DeleteNode(const std::uint64_t& id) {
    Node* const parent = parentToDeleteFrom(id);
    if (parent == nullptr) {
        dbg << "Cannot delete child node " << std::to_string(id) << std::endl;
        return false;
    }
    return parent->DeleteChildById(id);
}

namespace {

/// Runs @p walk and then @p close, which also runs where the walk throws.
template <typename Walk, typename Close>
void walkAndClose(const Walk& walk, const Close& close) {
    try {
        walk();
    } catch (...) {
        close();
        throw;
    }
    close();
}

}  // namespace

bool AView3DAdapter::DeleteNode(const RenderId& path) {
    if (path.IsEmpty()) {
        return false;
    }
    const int parents = path.Length() - 1;
    if (parents < 2) {
        return DeleteNode(path[parents]);
    }
    const bool opensTop = GetCurrentOpenNode() == nullptr;
    if (opensTop) {
        OpenTopNode();
    }
    int opened = 0;
    bool deleted = false;
    const auto deleteLast = [&] {
        opened = openPath(path, parents);
        deleted = opened == parents && DeleteNode(path[parents]);
    };
    walkAndClose(deleteLast, [&] {
        if (opensTop) {
            CloseAllNodes();
            return;
        }
        for (; opened > 0; --opened) {
            CloseNode();
        }
    });
    return deleted;
}

// --- edits --------------------------------------------------------------------------------------

namespace {

void destroyAttribute(GeoNode& node, AttributeType type) {
    Attribute* const attribute = node.GetAttribute(type);
    node.DeleteAttribute(type);
    delete attribute;
}

/// A copy of an attribute that CopyNodeAttributesFrom copies, or null for any other; @p copied
/// tells the two nulls apart, since memory may run out.
Attribute* copyOfColorOrTransform(Attribute* attribute, bool& copied) {
    copied = true;
    if (const auto* color = dynamic_cast<const AttributeColor*>(attribute)) {
        return nullWhenExhausted([&] { return new AttributeColor(*color); });
    }
    if (const auto* transform = dynamic_cast<const AttributeTransform*>(attribute)) {
        return nullWhenExhausted([&] { return new AttributeTransform(*transform); });
    }
    copied = false;
    return nullptr;
}

}  // namespace

void AView3DAdapter::Clear(const RenderId& path) {
    if (path.IsEmpty()) {
        return;
    }
    const bool opensPath = GetCurrentOpenNode() == nullptr;
    const auto clearTarget = [&] {
        const bool found = !opensPath || openPath(path, path.Length()) == path.Length();
        GeoNode* const target = found ? GetCurrentOpenNode() : nullptr;
        if (target != nullptr && renderIdOf(*target) == path) {
            clearNode(*target);
        }
    };
    walkAndClose(clearTarget, [&] {
        if (opensPath) {
            CloseAllNodes();
            CloseTopNode();
        }
    });
}

void AView3DAdapter::clearNode(GeoNode& node) {
    const Node* const group = node.HasChildren() ? NodeAccess::asGroup(&node) : nullptr;
    if (group == nullptr) {
        node.DeleteAllGeometry();
    } else {
        // All ids first: with one child a parent may die through which another child is named.
        std::vector<RenderId> children;
        children.reserve(NodeAccess::children(*group).size());
        for (const ChildTable::Entry& entry : NodeAccess::children(*group)) {
            children.push_back(renderIdOf(*entry.child));
        }
        for (const RenderId& child : children) {
            DeleteNode(child);
        }
    }
    destroyAttribute(node, AttributeType::Color);
    destroyAttribute(node, AttributeType::Highlight);
    destroyAttribute(node, AttributeType::Transform);
}

void AView3DAdapter::CopyNodeAttributesFrom(GeoNode& source) {
    GeoNode* const open = GetCurrentOpenNode();
    if (open == nullptr) {
        return;
    }
    // ApplyAttribute is the host's and may change any list of attributes. Room for a copy of the
    // list is found before anything is destroyed.
    std::vector<Attribute*> attributes;
    attributes.reserve(NodeAccess::attributes(source).size());
    destroyAttribute(*open, AttributeType::Color);
    destroyAttribute(*open, AttributeType::Transform);
    attributes.assign(NodeAccess::attributes(source).begin(), NodeAccess::attributes(source).end());
    for (Attribute* attribute : attributes) {
        bool copied = false;
        Attribute* const copy = copyOfColorOrTransform(attribute, copied);
        if (copied) {
            ApplyAttribute(copy);
        }
    }
}

void AView3DAdapter::TransferNodeGeometryFrom(GeoNode& source) {
    GeoNode* const open = GetCurrentOpenNode();
    if (open != nullptr) {
        open->TransferGeometryFrom(&source);
    }
}

void AView3DAdapter::SetColor(const RGBAColor& color) {
    GeoNode* const open = GetCurrentOpenNode();
    if (open == nullptr) {
        return;
    }
    for (AGeometryItem* item : NodeAccess::geometry(*open)) {
        if (item != nullptr) {
            item->SetColor(color);
        }
    }
}

void AView3DAdapter::SetFilterId(const int& filterId) {
    GeoNode* const open = GetCurrentOpenNode();
    if (open != nullptr) {
        open->SetFilterID(filterId);
    }
}

// --- libraries ----------------------------------------------------------------------------------

bool AView3DAdapter::OpenLibrary(const std::string& /*name*/) {
    return true;
}

void AView3DAdapter::CloseLibrary() {}

bool AView3DAdapter::AddLibraryReference(const std::uint64_t& /*id*/,
                                         const std::string& /*library*/,
                                         const std::uint64_t& /*referencedId*/) {
    return true;
}

// --- picking and asking -------------------------------------------------------------------------

bool AView3DAdapter::PickVisual(const Ray& /*ray*/, RenderId& /*id*/) {
    return false;
}

bool AView3DAdapter::IsHighlighted(const RenderId& id) {
    if (_highlightStrategy == nullptr) {
        return false;
    }
    try {
        return _highlightStrategy->IsApplied(id);
    } catch (const std::exception&) {
        throw;
    } catch (...) {
        // The message has always named an EntityId; hosts compare it.
        throw std::runtime_error(
            "Unrecognized Exception thrown from AView3DAdapter::IsHighlighted( const EntityId& )");
    }
}

void AView3DAdapter::Convert(const RenderId& path, EntityId& out) {
    for (const SceneBuilder* builder : _sceneBuilders) {
        if (builder == nullptr) {
            continue;
        }
        builder->ExtractEntityId(path, out);
        if (!out.IsEmpty()) {
            return;
        }
    }
}

// --- text dumps, of which SceneDump.cpp has the rest ---------------------------------------------

void AView3DAdapter::GetSceneGraphStructure(std::string& out, bool flag) {
    GetView3D()->GetSceneGraphStructure(out, flag);
}

}  // namespace KesVizCore
