#include "BracketRenderer.h"

#include <KesVizCore/graph/AGeometryItemFactory.h>
#include <KesVizCore/graph/AGeometryItemTriangleSet.h>
#include <KesVizCore/graph/AttributeTransform.h>
#include <KesVizCore/graph/Node.h>
#include <KesVizCore/report/Utils.h>
#include <KesVizCore/scene/ASceneBuilderContext.h>
#include <KesVizCore/scene/RenderingOptions.h>
#include <KesVizCore/scene/SceneBuilder.h>
#include <KesVizCore/view/AView3DAdapter.h>

#include <memory>
#include <utility>

namespace host {

namespace {

viz::RenderId sceneId() {
    return viz::RenderId({viz::Node::GetRootNodeId()}, viz::View3D);
}

viz::EntityId idOf(const Body& body) {
    return viz::EntityId(0, viz::BodyType, body.id);
}

}  // namespace

BracketRenderer::BracketRenderer(viz::SceneBuilder* builder, const Model& model)
    : ARenderer(builder, nullptr), _model(model) {
    _renderId = sceneId();
}

// --- describing the model -----------------------------------------------------------------------

// Each guard begins a level and ends it when it goes out of scope, so that every way out of these
// functions, also an early one, leaves the levels closed.
bool BracketRenderer::Render() {
    viz::SceneBuilder* const builder = getSceneBuilder();
    const viz::ConstructionContext construction(builder);
    const viz::SceneContext scene(builder, viz::Node::GetRootNodeId(), L"Bracket with two bolts");
    if (!construction.IsOK() || !scene.IsOK() || getGeometryItemFactory() == nullptr) {
        return false;
    }
    const int total = static_cast<int>(_model.instances.size());
    int done = 0;
    for (const Instance& instance : _model.instances) {
        if (!describeInstance(instance)) {
            return false;
        }
        ++done;
        if (_progressCallback != nullptr) {
            _progressCallback(done, total, viz::Utils::WstringToString(instance.name).c_str());
        }
    }
    return true;
}

bool BracketRenderer::describeInstance(const Instance& instance) {
    viz::SceneBuilder* const builder = getSceneBuilder();
    const viz::ContainerContext container(builder, instance.id, instance.name,
                                          viz::SceneBuilder::AddressedContainer);
    const Body* const body = _model.FindBody(instance.bodyId);
    if (!container.IsOK() || body == nullptr) {
        return false;
    }
    std::array<double, 16> matrix = instance.worldFromBody;
    if (!viz::AttributeTransform(matrix.data()).IsIdentity()) {
        builder->SetTransformation(matrix.data());
    }
    viz::RenderId described;
    return GetRenderId(idOf(*body), described) ? refer(described) : describeBody(*body);
}

// AddReference answers false whatever happens, so the graph is asked whether it worked.
bool BracketRenderer::refer(const viz::RenderId& body) {
    viz::SceneBuilder* const builder = getSceneBuilder();
    builder->AddReference(body);
    viz::RenderId reference;
    if (!builder->GetCurrentRenderId(reference)) {
        return false;
    }
    reference.AddValue(body[body.Length() - 1]);
    return getView3DAdapter()->GetNode(reference) != nullptr;
}

bool BracketRenderer::describeBody(const Body& body) {
    viz::SceneBuilder* const builder = getSceneBuilder();
    const viz::BodyContext context(builder, body.id, body.name);
    if (!context.IsOK()) {
        return false;
    }
    builder->SetColor(body.color, false);
    remember(idOf(body));
    count(_report.Bodies, 1);
    return describeFaces(body) && describeEdges(body);
}

bool BracketRenderer::describeFaces(const Body& body) {
    viz::SceneBuilder* const builder = getSceneBuilder();
    const viz::EntityTypeContext faces(builder, viz::FaceType, L"Faces");
    for (Face face : body.faces) {  // a copy: the factory's arrays are not const
        const viz::EntityContext context(builder, face.id, face.name, face.color.has_value(),
                                         face.color.value_or(body.color));
        if (!faces.IsOK() || !context.IsOK() ||
            !add(getGeometryItemFactory()->CreateQuadSet(
                face.id, face.points.data(), face.quads.data(),
                static_cast<int>(face.points.size() / 3), static_cast<int>(face.quads.size()),
                nullptr, 0))) {
            return false;
        }
        remember(viz::EntityId(body.id, viz::FaceType, face.id));
        count(_report.Faces, 1);
    }
    return faces.IsOK();
}

bool BracketRenderer::describeEdges(const Body& body) {
    viz::SceneBuilder* const builder = getSceneBuilder();
    const viz::EntityTypeContext edges(builder, viz::EdgeType, L"Edges");
    const viz::RGBAColor color = GetRenderingOptions()->GetDefaultEdgeColor();
    for (Edge edge : body.edges) {
        const viz::EntityContext context(builder, edge.id, edge.name, true, color);
        if (!edges.IsOK() || !context.IsOK() ||
            !add(getGeometryItemFactory()->CreatePolyline(
                edge.id, edge.points.data(), static_cast<int>(edge.points.size() / 3)))) {
            return false;
        }
        remember(viz::EntityId(body.id, viz::EdgeType, edge.id));
        count(_report.Edges, 1);
    }
    return edges.IsOK();
}

// The item is ours until the builder has taken it, which it refuses only without an adapter.
bool BracketRenderer::add(viz::AGeometryItem* item) {
    std::unique_ptr<viz::AGeometryItem> owned(item);
    if (item == nullptr || !getSceneBuilder()->AddGeometry(item)) {
        return false;
    }
    static_cast<void>(owned.release());
    if (const auto* triangles = dynamic_cast<const viz::AGeometryItemTriangleSet*>(item)) {
        count(_report.Triangles, triangles->GetNumberOfTriangles());
    }
    return true;
}

void BracketRenderer::count(std::uint64_t& counter, int more) {
    counter += GetReportMode() ? static_cast<std::uint64_t>(more) : 0;
}

bool BracketRenderer::Update() {
    Clear();
    return Render();
}

void BracketRenderer::Clear() {
    if (getSceneBuilder() != nullptr) {
        getSceneBuilder()->Clear(_renderId);  // a path of one id: the whole scene
    }
    _renderIds.clear();
    ClearReport();
}

bool BracketRenderer::IsEmpty() const {
    return _renderIds.empty();
}

// --- what is named by which id ------------------------------------------------------------------

BracketRenderer::Key BracketRenderer::keyOf(const viz::EntityId& entity) {
    return {entity.Type, entity.OwnerID, entity.ID};
}

// Now is the time to ask the builder: it composes ids for the container begun last, and later
// that is another one.
void BracketRenderer::remember(const viz::EntityId& entity) {
    viz::RenderId id;
    getSceneBuilder()->BuildRenderId(id, entity, viz::RGBAColor(), viz::RGBAColor());
    _renderIds.emplace(keyOf(entity), id);
}

bool BracketRenderer::GetRenderId(const viz::EntityId& entity, viz::RenderId& out) const {
    const auto found = _renderIds.find(keyOf(entity));
    if (found == _renderIds.end()) {
        return false;
    }
    out = found->second;
    return true;
}

// What the library's conversion leaves out, the path still has: a path of five ids is converted
// to owner and type without the ID, and one of three ids, a body's, to the ID alone.
bool BracketRenderer::GetEntityId(const viz::RenderId& id, viz::EntityId& out) const {
    if (getView3DAdapter() == nullptr || id.IsEmpty()) {
        return false;
    }
    getView3DAdapter()->Convert(id, out);
    if (id.Length() == 3) {
        out.Type = viz::BodyType;
    } else if (out.Type != viz::InvalidType) {
        out.ID = id[id.Length() - 1];
    }
    return _renderIds.count(keyOf(out)) != 0;
}

std::wstring BracketRenderer::GetToolTip(const viz::RenderId& id) {
    std::wstring names;
    viz::RenderId path = sceneId();
    for (int at = 1; at < id.Length() && getView3DAdapter() != nullptr; ++at) {
        path.AddValue(id[at]);
        const viz::GeoNode* const node = getView3DAdapter()->GetNode(path);
        if (node == nullptr) {
            return std::wstring();
        }
        const bool isType = viz::EntityId::GetTypeFromInt(id[at]) != viz::InvalidType;
        names += isType ? std::wstring() : (names.empty() ? L"" : L" / ") + node->Name();
    }
    return names;
}

// --- showing ------------------------------------------------------------------------------------

bool BracketRenderer::Activate(viz::RenderId& id) {
    viz::AView3DAdapter* const adapter = getView3DAdapter();
    return adapter != nullptr && adapter->Highlight(id, GetRenderingOptions()->GetHighlightColor());
}

bool BracketRenderer::Deactivate(viz::RenderId& id) {
    return getView3DAdapter() != nullptr && getView3DAdapter()->Unhighlight(id);
}

bool BracketRenderer::Show(const viz::RenderId& id) {
    return getView3DAdapter() != nullptr && getView3DAdapter()->Show(id);
}

bool BracketRenderer::Hide(const viz::RenderId& id) {
    return getView3DAdapter() != nullptr && getView3DAdapter()->Hide(id);
}

}  // namespace host
