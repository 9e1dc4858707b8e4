#include "BracketRenderer.h"

#include <KesVizCore/graph/AGeometryItemFactory.h>
#include <KesVizCore/graph/AGeometryItemTriangleSet.h>
#include <KesVizCore/graph/AttributeTransform.h>
#include <KesVizCore/graph/Node.h>
#include <KesVizCore/model/VizEdge.h>
#include <KesVizCore/model/VizFace.h>
#include <KesVizCore/model/VizMesh.h>
#include <KesVizCore/model/VizPolygon.h>
#include <KesVizCore/report/Utils.h>
#include <KesVizCore/scene/ASceneBuilderContext.h>
#include <KesVizCore/scene/RenderingOptions.h>
#include <KesVizCore/scene/SceneBuilder.h>
#include <KesVizCore/view/AView3DAdapter.h>

#include <memory>
#include <utility>
#include <vector>

namespace host {

namespace {

viz::RenderId sceneId() {
    return viz::RenderId({viz::Node::GetRootNodeId()}, viz::View3D);
}

viz::EntityId idOf(const viz::VizElement& element) {
    viz::EntityId entity;
    element.GetEntityID(entity);
    return entity;
}

}  // namespace

BracketRenderer::BracketRenderer(viz::SceneBuilder* builder, const Model& model,
                                 const viz::VizContainer& geometry)
    : ARenderer(builder, nullptr), _model(model), _geometry(geometry) {
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
    const int total = static_cast<int>(_geometry.GetMeshes().size());
    int done = 0;
    for (viz::VizMesh* mesh : _geometry.GetMeshes()) {
        const Instance* const instance = _model.FindInstance(idOf(*mesh).OwnerID);
        if (instance == nullptr || !describeInstance(*mesh, *instance)) {
            return false;
        }
        ++done;
        if (_progressCallback != nullptr) {
            _progressCallback(done, total, viz::Utils::WstringToString(instance->name).c_str());
        }
    }
    return true;
}

bool BracketRenderer::describeInstance(viz::VizMesh& mesh, const Instance& instance) {
    viz::SceneBuilder* const builder = getSceneBuilder();
    const viz::ContainerContext container(builder, instance.id, instance.name,
                                          viz::SceneBuilder::AddressedContainer);
    if (!container.IsOK()) {
        return false;
    }
    std::array<double, 16> matrix = instance.worldFromBody;
    if (!viz::AttributeTransform(matrix.data()).IsIdentity()) {
        builder->SetTransformation(matrix.data());
    }
    viz::RenderId described;
    const bool isAgain = GetRenderId(idOf(mesh), described);
    remember(mesh);
    return isAgain ? refer(described) : describeBody(mesh);
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

bool BracketRenderer::describeBody(viz::VizMesh& mesh) {
    viz::SceneBuilder* const builder = getSceneBuilder();
    const viz::BodyContext context(builder, idOf(mesh).ID, mesh.GetMechanicalID());
    if (!context.IsOK()) {
        return false;
    }
    builder->SetColor(mesh.GetColor(), false);
    count(_report.Bodies, 1);
    return describeFaces(mesh) && describeEdges(mesh);
}

bool BracketRenderer::describeFaces(const viz::VizMesh& mesh) {
    const viz::EntityTypeContext faces(getSceneBuilder(), viz::FaceType, L"Faces");
    for (viz::VizFace* face : mesh.GetFaces()) {
        if (!faces.IsOK() || !describeFace(*face)) {
            return false;
        }
    }
    return faces.IsOK();
}

bool BracketRenderer::describeFace(viz::VizFace& face) {
    const std::uint64_t id = idOf(face).ID;
    const viz::EntityContext context(getSceneBuilder(), id, face.GetMechanicalID(), face.HasColor(),
                                     face.GetColor());
    std::vector<float> points = face.GetVertices();  // copies: the factory's are not const
    for (const viz::VizPolygon* polygon : face.GetPolygons()) {
        std::vector<int> corners = polygon->GetIndices();
        if (!context.IsOK() ||
            !add(getGeometryItemFactory()->CreateTriangleSet(
                id, points.data(), nullptr, corners.data(), static_cast<int>(points.size() / 3), 0,
                static_cast<int>(corners.size()), polygon->GetPolygonType()))) {
            return false;
        }
    }
    remember(face);
    count(_report.Faces, 1);
    return true;
}

bool BracketRenderer::describeEdges(const viz::VizMesh& mesh) {
    const viz::EntityTypeContext edges(getSceneBuilder(), viz::EdgeType, L"Edges");
    for (viz::VizEdge* edge : mesh.GetEdges()) {
        if (!edges.IsOK() || !describeEdge(*edge)) {
            return false;
        }
    }
    return edges.IsOK();
}

bool BracketRenderer::describeEdge(viz::VizEdge& edge) {
    const std::uint64_t id = idOf(edge).ID;
    const viz::EntityContext context(getSceneBuilder(), id, edge.GetMechanicalID(), true,
                                     GetRenderingOptions()->GetDefaultEdgeColor());
    std::vector<float> points = edge.GetVertices();
    if (!context.IsOK() || !add(getGeometryItemFactory()->CreatePolyline(
                               id, points.data(), static_cast<int>(points.size() / 3)))) {
        return false;
    }
    remember(edge);
    count(_report.Edges, 1);
    return true;
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
    return {entity.Type, entity.IsBody() ? 0 : entity.OwnerID, entity.ID};
}

// Now is the time to ask the builder: it composes ids for the container begun last, and later
// that is another one.
void BracketRenderer::remember(viz::VizElement& element) {
    viz::RenderId id;
    getSceneBuilder()->BuildRenderId(id, idOf(element), viz::RGBAColor(), viz::RGBAColor());
    element.Set3DRenderID(id);
    _renderIds.emplace(keyOf(idOf(element)), id);  // a body that is used twice keeps its first
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
