#include "view/SceneAdapter.h"

#include "view/Items.h"
#include "view/SceneLinks.h"

#include <KesVizCore/graph/AGeometryItem.h>
#include <KesVizCore/graph/Attribute.h>
#include <KesVizCore/math/Ray.h>
#include <KesVizCore/view/IView3D.h>

#include <algorithm>
#include <cstddef>
#include <new>
#include <utility>

namespace kesview {

SceneAdapter::SceneAdapter(const MakePicker& makePicker)
    : _graph(viz::Node::CreateRoot()),
      _highlighting([this](const viz::RenderId& id) { return GetNode(id); }),
      _hiding([this](const viz::RenderId& id) { return GetNode(id); }),
      _filter(new FilterManager([this] { Redraw(); })),
      _showing(_hiding.GetMarks(), _isolation, *_filter, _options),
      _optionsListener(*this) {
    _filterManager = _filter;  // the base owns it
    if (_graph == nullptr) {
        throw std::bad_alloc();
    }
    _rootNode = _graph.get();
    SetHighlightStrategy(&_highlighting);
    SetHideStrategy(&_hiding);
    setDefaultColors();
    _options.AddListener(&_optionsListener);
    _picker = makePicker ? makePicker(*this) : nullptr;
}

SceneAdapter::~SceneAdapter() {
    _options.RemoveListener(&_optionsListener);
    _picker.reset();
    unlinkSharedNodes(*_graph);
}

void SceneAdapter::setDefaultColors() {
    const viz::RGBAColor metal(190, 196, 204, 255);
    const viz::RGBAColor ink(28, 32, 38, 255);
    _options.SetDefaultBodyColor(metal);
    _options.SetDefaultFaceColor(metal);
    _options.SetDefaultEdgeColor(ink);
    _options.SetDefaultTessEdgeColor(ink);
    _options.SetDefaultVertexColor(ink);
    _options.SetDefaultCloudColor(ink);
    _options.SetDefaultPMIColor(viz::RGBAColor(20, 60, 140, 255));
    _options.SetHighlightColor(viz::RGBAColor(255, 140, 0, 255));
}

// What the options become does not matter: they are read when the next picture is made.
void SceneAdapter::OptionsListener::OnOptionsChange(viz::RenderingOptions* /*changed*/) {
    _adapter.Redraw();
}

void SceneAdapter::SetView3D(viz::IView3D* view) {
    _view = view;
    AView3DAdapter::SetView3D(view);
}

// --- the stack of open nodes --------------------------------------------------------------------

void SceneAdapter::StartConstruction(viz::Node* /*node*/) {
    _constructing = true;
    BeginUpdate();
}

void SceneAdapter::EndConstruction() {
    if (_constructing) {
        _constructing = false;
        EndUpdate();
    }
}

void SceneAdapter::OpenTopNode() {
    OpenNode(_graph->Id(), std::wstring());
}

void SceneAdapter::CloseTopNode() {
    CloseAllNodes();
}

bool SceneAdapter::OpenNode(const std::uint64_t& id, const std::wstring& /*name*/) {
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

bool SceneAdapter::canHaveChild(std::uint64_t id) const {
    const auto* const group =
        _openNodes.empty() ? nullptr : dynamic_cast<const viz::Node*>(_openNodes.top());
    return group != nullptr && id != _graph->Id() && group->GetChild(id) == nullptr;
}

bool SceneAdapter::CreateNode(const std::uint64_t& id, const std::wstring& name) {
    return canHaveChild(id) &&
           openNew(static_cast<viz::Node*>(_openNodes.top())->CreateChild(id), name);
}

bool SceneAdapter::CreateGeoNode(const std::uint64_t& id, const std::wstring& name) {
    return canHaveChild(id) &&
           openNew(static_cast<viz::Node*>(_openNodes.top())->CreateGeoChild(id), name);
}

bool SceneAdapter::openNew(viz::GeoNode* child, const std::wstring& name) {
    if (child == nullptr) {
        return false;  // memory ran out
    }
    child->SetName(name);
    _openNodes.push(child);
    return true;
}

bool SceneAdapter::AddReference(const viz::RenderId& path) {
    GeometryChanged();
    return AView3DAdapter::AddReference(path);
}

void SceneAdapter::CloseNode() {
    if (!_openNodes.empty()) {
        _openNodes.pop();
    }
}

void SceneAdapter::CloseAllNodes() {
    while (!_openNodes.empty()) {
        _openNodes.pop();
    }
    Redraw();
}

// --- what is put on the open node ---------------------------------------------------------------

// Who is handed something owns it: it goes to the open node or is destroyed here. Colours and line
// styles the builder has set on the node already; setting the very same again does no harm.
void SceneAdapter::ApplyAttribute(viz::Attribute* attribute) {
    std::unique_ptr<viz::Attribute> owned(attribute);
    viz::GeoNode* const open = GetCurrentOpenNode();
    if (open != nullptr && open->SetAttribute(attribute)) {
        static_cast<void>(owned.release());
    }
    GeometryChanged();
}

void SceneAdapter::RemoveAttribute(const viz::AttributeType& type) {
    viz::GeoNode* const open = GetCurrentOpenNode();
    if (open != nullptr) {
        const std::unique_ptr<viz::Attribute> removed(open->GetAttribute(type));
        open->DeleteAttribute(type);  // takes it off without destroying it
    }
    GeometryChanged();
}

void SceneAdapter::AddGeometryItem(viz::AGeometryItem* item) {
    std::unique_ptr<viz::AGeometryItem> owned(item);
    viz::GeoNode* const open = GetCurrentOpenNode();
    if (open == nullptr || item == nullptr) {
        return;
    }
    open->AddGeometry(item);
    static_cast<void>(owned.release());
    GeometryChanged();
}

void SceneAdapter::TransferNodeGeometryFrom(viz::GeoNode& source) {
    AView3DAdapter::TransferNodeGeometryFrom(source);
    GeometryChanged();
}

// --- deleting -----------------------------------------------------------------------------------

void SceneAdapter::releaseSharedBelow(std::uint64_t child) {
    viz::GeoNode* const open = _openNodes.empty() ? _graph.get() : _openNodes.top();
    const auto* const parent = dynamic_cast<const viz::Node*>(open);
    viz::GeoNode* const doomed = parent != nullptr ? parent->GetChild(child) : nullptr;
    auto* const group = dynamic_cast<viz::Node*>(doomed);
    if (group != nullptr && group->EachParent().size() == 1) {
        unlinkSharedNodes(*group);
    }
}

bool SceneAdapter::DeleteNode(const std::uint64_t& id) {
    releaseSharedBelow(id);
    GeometryChanged();
    return AView3DAdapter::DeleteNode(id);
}

void SceneAdapter::DeleteAllNodes() {
    CloseAllNodes();  // none of them may be open any more
    unlinkSharedNodes(*_graph);
    while (_graph->HasChildren()) {
        _graph->DeleteChildById(_graph->EachChild().begin()->id);
    }
    GeometryChanged();
}

// A path of one id names a scene: where that is a node below the root, it is cleared alone.
void SceneAdapter::ClearScene(const viz::RenderId& id) {
    if (id.IsEmpty()) {
        return;
    }
    if (id[0] == _graph->Id()) {
        DeleteAllNodes();
        _graph->DeleteAllGeometry();
    } else if (_graph->GetChild(id[0]) != nullptr) {
        CloseAllNodes();
        Clear(viz::RenderId({_graph->Id(), id[0]}, viz::View3D));
    }
}

void SceneAdapter::Clear(const viz::RenderId& path) {
    AView3DAdapter::Clear(path);
    GeometryChanged();
}

// --- showing ------------------------------------------------------------------------------------

bool SceneAdapter::Show(const viz::RenderId& id) {
    const bool shown = _hiding.Undo(id);
    if (shown && !_isolation.IsEmpty() && !_isolation.Nearest(id)) {
        _isolation.Set(id, true);
    }
    Redraw();
    return shown;
}

bool SceneAdapter::Hide(const viz::RenderId& id) {
    const bool hidden = _hiding.Apply(id);
    Redraw();
    return hidden;
}

bool SceneAdapter::IsVisible(const viz::RenderId& id) {
    return !id.IsEmpty() && Walk(id).Next();
}

bool SceneAdapter::Isolate(const viz::RenderId& id) {
    if (GetNode(id) == nullptr) {
        return false;
    }
    SetIsolated({id});
    if (_hiding.GetMarks().Nearest(id) == Shownness::Hidden) {
        _hiding.GetMarks().Set(id, Shownness::Shown);
    }
    return true;
}

void SceneAdapter::SetIsolated(const std::vector<viz::RenderId>& paths) {
    _isolation.Clear();
    for (const viz::RenderId& path : paths) {
        _isolation.Set(path, true);
    }
    Redraw();
}

std::vector<viz::RenderId> SceneAdapter::GetIsolated() const {
    std::vector<viz::RenderId> paths;
    for (const auto& [path, marked] : _isolation.List()) {
        paths.push_back(path);
    }
    return paths;
}

void SceneAdapter::ShowAll() {
    _hiding.UndoAll();
    SetIsolated({});
}

void SceneAdapter::SetClipping(const std::optional<SavedView::Plane>& plane, bool cutsAnnotations) {
    _clipping = plane;
    _clipsAnnotations = cutsAnnotations;
    Redraw();
}

// --- highlighting -------------------------------------------------------------------------------

bool SceneAdapter::Highlight(const viz::RenderId& id, const viz::RGBAColor& color) {
    _highlighting.SetColor(toColor(color));
    const bool highlighted = _highlighting.Apply(id);
    Redraw();
    return highlighted;
}

bool SceneAdapter::Unhighlight(const viz::RenderId& id) {
    const bool unhighlighted = _highlighting.Undo(id);
    Redraw();
    return unhighlighted;
}

void SceneAdapter::UnhighlightAll() {
    _highlighting.UndoAll();
    Redraw();
}

// --- asking -------------------------------------------------------------------------------------

ShownWalk SceneAdapter::Walk() const {
    return ShownWalk(*_graph, _showing, _highlighting.GetMarks(), _options);
}

ShownWalk SceneAdapter::Walk(const viz::RenderId& top) const {
    ShownWalk walk = Walk();
    walk.LimitTo(top);
    return walk;
}

std::optional<PickHit> SceneAdapter::Pick(const PickRay& ray) {
    return _picker != nullptr ? _picker->Pick(ray) : std::nullopt;
}

bool SceneAdapter::PickVisual(const viz::Ray& ray, viz::RenderId& id) {
    const auto widened = [](const float* v) { return Vector{v[0], v[1], v[2]}; };
    const std::optional<PickHit> hit =
        Pick({widened(ray.Root), widened(ray.Direction), ray.Aperture});
    if (!hit) {
        return false;
    }
    id = hit->path;
    return true;
}

Box SceneAdapter::GetBox(const viz::RenderId& id, const Matrix& axesFromWorld) const {
    Box box;
    ShownWalk walk = Walk(id);
    while (!id.IsEmpty() && walk.Next()) {
        addToBox(shapeOf(walk.Item()), product(axesFromWorld, walk.WorldFromLocal()), box);
    }
    return box;
}

bool SceneAdapter::GetExtents(const viz::RenderId& id, float* extrema) {
    const Box box = GetBox(id);
    if (box.IsEmpty()) {
        return false;
    }
    for (std::size_t axis = 0; axis < 3; ++axis) {
        extrema[axis] = static_cast<float>(box.low[axis]);
        extrema[axis + 3] = static_cast<float>(box.high[axis]);
    }
    return true;
}

// --- telling the view ---------------------------------------------------------------------------

void SceneAdapter::GeometryChanged() {
    ++_revision;
    Redraw();
}

void SceneAdapter::BeginUpdate() {
    ++_updates;
}

void SceneAdapter::EndUpdate() {
    _updates = std::max(0, _updates - 1);
    Redraw();
}

void SceneAdapter::Redraw() {
    if (_view != nullptr && _updates == 0) {
        _view->Invalidate();
    }
}

// --- the factory --------------------------------------------------------------------------------

SceneAdapterFactory::SceneAdapterFactory(MakePicker makePicker)
    : _makePicker(std::move(makePicker)) {}

viz::AView3DAdapter* SceneAdapterFactory::makeView3DAdapterImpl() {
    return new SceneAdapter(_makePicker);
}

}  // namespace kesview
