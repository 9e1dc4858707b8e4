#include "Adapter.h"

#include "SceneWalk.h"

#include <KesVizCore/core/RenderId.h>
#include <KesVizCore/graph/AGeometryItem.h>
#include <KesVizCore/graph/AttributeColor.h>
#include <KesVizCore/view/IView3D.h>

#include <algorithm>
#include <new>
#include <vector>

namespace host {

Adapter::Adapter() : _graph(viz::Node::CreateRoot()), _highlighting(*this), _hiding(*this) {
    if (_graph == nullptr) {
        throw std::bad_alloc();
    }
    _rootNode = _graph.get();
    SetHighlightStrategy(&_highlighting);
    SetHideStrategy(&_hiding);
    // The base owns the filter manager and destroys it.
    _filterManager = std::make_unique<FilterManager>([this] { redraw(); }).release();
}

Adapter::~Adapter() {
    unlinkSharedNodes(*_graph);
}

void Adapter::SetView3D(viz::IView3D* view) {
    _view = view;
    AView3DAdapter::SetView3D(view);
}

// --- the stack of open nodes --------------------------------------------------------------------

void Adapter::StartConstruction(viz::Node* /*node*/) {
    _constructing = true;
    BeginUpdate();
}

void Adapter::EndConstruction() {
    _constructing = false;
    EndUpdate();
}

// The root opens whatever is open, since every path begins with it. For the same reason no other
// node may have its id.
bool Adapter::OpenNode(const std::uint64_t& id, const std::wstring& /*name*/) {
    if (id == _graph->Id()) {
        _openNodes.push(_graph.get());
        return true;
    }
    const auto* const group = dynamic_cast<const viz::Node*>(GetCurrentOpenNode());
    viz::GeoNode* const child = group != nullptr ? group->GetChild(id) : nullptr;
    if (child == nullptr) {
        return false;
    }
    _openNodes.push(child);
    return true;
}

bool Adapter::canHaveChild(std::uint64_t id) const {
    const auto* const group =
        _openNodes.empty() ? nullptr : dynamic_cast<const viz::Node*>(_openNodes.top());
    return group != nullptr && id != _graph->Id() && group->GetChild(id) == nullptr;
}

bool Adapter::CreateNode(const std::uint64_t& id, const std::wstring& name) {
    if (!canHaveChild(id)) {
        return false;
    }
    return openNew(static_cast<viz::Node*>(_openNodes.top())->CreateChild(id), name);
}

bool Adapter::CreateGeoNode(const std::uint64_t& id, const std::wstring& name) {
    if (!canHaveChild(id)) {
        return false;
    }
    return openNew(static_cast<viz::Node*>(_openNodes.top())->CreateGeoChild(id), name);
}

bool Adapter::openNew(viz::GeoNode* child, const std::wstring& name) {
    if (child == nullptr) {
        return false;  // memory ran out
    }
    child->SetName(name);
    _openNodes.push(child);
    return true;
}

void Adapter::CloseNode() {
    if (!_openNodes.empty()) {
        _openNodes.pop();
    }
}

void Adapter::CloseAllNodes() {
    while (!_openNodes.empty()) {
        _openNodes.pop();
    }
    redraw();
}

// --- what is put on the open node ---------------------------------------------------------------

namespace {

/// Gives the item the nearest colour on the way up.
void colorAsInherited(viz::AGeometryItem& item, const viz::GeoNode& node) {
    for (const viz::GeoNode* above = &node; above != nullptr;
         above = above->HasParent() ? above->EachParent().front() : nullptr) {
        if (auto* color = dynamic_cast<viz::AttributeColor*>(
                above->GetAttribute(viz::AttributeType::Color))) {
            item.SetColor(color->GetColor());
            return;
        }
    }
}

}  // namespace

// Who is handed something owns it: it goes to the open node or is destroyed here. For colours and
// line styles the builder has set the attribute on the node already; setting the very same again
// does no harm.
void Adapter::ApplyAttribute(viz::Attribute* attribute) {
    viz::GeoNode* const open = GetCurrentOpenNode();
    if (open == nullptr) {
        const std::unique_ptr<viz::Attribute> unwanted(attribute);
        return;
    }
    open->SetAttribute(attribute);
    for (viz::AGeometryItem* item : open->EachGeometry()) {
        colorAsInherited(*item, *open);
    }
}

void Adapter::RemoveAttribute(const viz::AttributeType& type) {
    viz::GeoNode* const open = GetCurrentOpenNode();
    if (open != nullptr) {
        const std::unique_ptr<viz::Attribute> removed(open->GetAttribute(type));
        open->DeleteAttribute(type);  // takes it off without destroying it
    }
}

void Adapter::AddGeometryItem(viz::AGeometryItem* item) {
    std::unique_ptr<viz::AGeometryItem> owned(item);
    viz::GeoNode* const open = GetCurrentOpenNode();
    if (open == nullptr || item == nullptr) {
        return;
    }
    colorAsInherited(*item, *open);
    open->AddGeometry(item);
    static_cast<void>(owned.release());
}

// --- deleting -----------------------------------------------------------------------------------

void Adapter::DeleteAllNodes() {
    CloseAllNodes();  // none of them may be open any more
    unlinkSharedNodes(*_graph);
    while (_graph->HasChildren()) {
        _graph->DeleteChildById(_graph->EachChild().begin()->id);
    }
    redraw();
}

// The scene's node is the root, so that clearing the scene is clearing all.
void Adapter::ClearScene(const viz::RenderId& id) {
    if (GetNode(id) == _graph.get()) {
        DeleteAllNodes();
        _graph->DeleteAllGeometry();
    }
}

// --- showing and highlighting -------------------------------------------------------------------

bool Adapter::Show(const viz::RenderId& id) {
    const bool shown = _hideStrategy->Undo(id);
    redraw();
    return shown;
}

bool Adapter::Hide(const viz::RenderId& id) {
    const bool hidden = _hideStrategy->Apply(id);
    redraw();
    return hidden;
}

bool Adapter::IsVisible(const viz::RenderId& id) {
    for (const ShownItem& shown : findShownItems(*_graph, *_filterManager)) {
        if (isAtOrBelow(shown.path, id)) {
            return true;
        }
    }
    return false;
}

bool Adapter::Isolate(const viz::RenderId& id) {
    if (GetNode(id) == nullptr) {
        return false;
    }
    ShowAll();
    viz::RenderId path({}, viz::View3D);
    for (int at = 0; at + 1 < id.Length(); ++at) {
        path.AddValue(id[at]);
        hideChildrenBut(path, id[at + 1]);
    }
    redraw();
    return true;
}

void Adapter::hideChildrenBut(const viz::RenderId& path, std::uint64_t shown) {
    for (const auto& [id, child] : static_cast<const viz::Node*>(GetNode(path))->EachChild()) {
        if (id != shown) {
            viz::RenderId sibling = path;
            sibling.AddValue(id);
            _hideStrategy->Apply(sibling);
        }
    }
}

void Adapter::ShowAll() {
    _hideStrategy->UndoAll();
    redraw();
}

bool Adapter::Highlight(const viz::RenderId& id, const viz::RGBAColor& color) {
    _highlighting.SetColor(color);
    const bool highlighted = _highlightStrategy->Apply(id);
    redraw();
    return highlighted;
}

bool Adapter::Unhighlight(const viz::RenderId& id) {
    const bool unhighlighted = _highlightStrategy->Undo(id);
    redraw();
    return unhighlighted;
}

void Adapter::UnhighlightAll() {
    _highlightStrategy->UndoAll();
    redraw();
}

// --- asking -------------------------------------------------------------------------------------

bool Adapter::PickVisual(const viz::Ray& ray, viz::RenderId& id) {
    return pickNearest(findShownItems(*_graph, *_filterManager), ray, id);
}

bool Adapter::GetExtents(const viz::RenderId& id, float* extrema) {
    float box[6];
    clearBox(box);
    for (const ShownItem& shown : findShownItems(*_graph, *_filterManager)) {
        const auto* const item = dynamic_cast<const HostItem*>(shown.item);
        if (item != nullptr && isAtOrBelow(shown.path, id)) {
            addToBox(shown.placement.ToWorld(item->GetShape().Points()), box);
        }
    }
    if (box[0] > box[3]) {
        return false;  // nothing is shown
    }
    std::copy(box, box + 6, extrema);
    return true;
}

void Adapter::BeginUpdate() {
    ++_updates;
}

void Adapter::EndUpdate() {
    _updates = std::max(0, _updates - 1);
    redraw();
}

void Adapter::redraw() {
    if (_view != nullptr && _updates == 0) {
        _view->Invalidate();
    }
}

}  // namespace host
