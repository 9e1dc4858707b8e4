/// @file
#include "building/ModelRenderer.h"

#include "building/PathPattern.h"
#include "building/RendererParts.h"

#include <KesVizCore/graph/AGeometryItem.h>
#include <KesVizCore/graph/AGeometryItemFactory.h>
#include <KesVizCore/graph/Node.h>
#include <KesVizCore/model/VizEdge.h>
#include <KesVizCore/model/VizFace.h>
#include <KesVizCore/model/VizMesh.h>
#include <KesVizCore/model/VizPointSet.h>
#include <KesVizCore/model/VizPoints.h>
#include <KesVizCore/model/VizPolygon.h>
#include <KesVizCore/model/VizWire.h>
#include <KesVizCore/pmi/VizPMI.h>
#include <KesVizCore/scene/ASceneBuilderContext.h>
#include <KesVizCore/scene/RenderingOptions.h>
#include <KesVizCore/scene/SceneBuilder.h>
#include <KesVizCore/view/AView3DAdapter.h>

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <utility>

namespace kesview {

namespace {

viz::RenderId sceneId() {
    return viz::RenderId({viz::Node::GetRootNodeId()}, viz::View3D);
}

viz::RGBAColor colorOf(const Color& color) {
    return {color[0], color[1], color[2], color[3]};
}

}  // namespace

ModelRenderer::ModelRenderer(viz::SceneBuilder* builder, const Document& document,
                             const LoadedModel& model, const std::string& sceneName)
    : SceneRenderer(builder),
      _document(document),
      _model(model),
      _index(document),
      _sceneName(widen(sceneName)) {
    _renderId = sceneId();
    gatherElements(model);
}

void ModelRenderer::gatherElements(const LoadedModel& model) {
    for (viz::VizMesh* mesh : model.geometry.GetMeshes()) {
        _elements[entityIdOf(*mesh).ID].mesh = mesh;
    }
    for (viz::VizWire* wire : model.geometry.GetWires()) {
        _elements[entityIdOf(*wire).ID].wire = wire;
    }
    for (viz::VizPointSet* set : model.geometry.GetPointSets()) {
        _elements[entityIdOf(*set).ID].points = set;
    }
}

// --- describing the assembly --------------------------------------------------------------------

// Each guard begins a level and ends it when it goes out of scope, so that every way out of these
// functions, also an early one, leaves the levels closed.
bool ModelRenderer::Render() {
    viz::SceneBuilder* const builder = getSceneBuilder();
    if (getGeometryItemFactory() == nullptr || !IsEmpty()) {
        return false;
    }
    const viz::ConstructionContext construction(builder);
    const viz::SceneContext scene(builder, sceneId()[0], _sceneName);
    if (!construction.IsOK() || !scene.IsOK()) {
        return false;
    }
    // The root was there before and has kept its name.
    getView3DAdapter()->GetCurrentOpenNode()->SetName(_sceneName);
    _bodiesDone = 0;
    _open = nullptr;
    return describeComponents(_document.roots);
}

bool ModelRenderer::describeComponents(const std::vector<Component>& components) {
    const Product* const owner = _open;
    for (std::size_t i = 0; i < components.size(); ++i) {
        const std::string& name = owner == nullptr ? _index.Names().Root(i)
                                                   : _index.Names().Component(placeOf(*owner), i);
        const bool described = describeComponent(components[i], name);
        _open = owner;
        if (!described) {
            return false;
        }
    }
    return true;
}

bool ModelRenderer::describeComponent(const Component& component, const std::string& name) {
    const Product& product = _document.products[component.product];
    if (product.components.empty()) {
        const viz::ContainerContext part(getSceneBuilder(), component.id, widen(name),
                                         viz::SceneBuilder::AddressedContainer);
        if (!part.IsOK()) {
            return false;
        }
        describeAttributes(component);
        return describeContent(component.product);
    }
    const viz::SceneLevelContext assembly(getSceneBuilder(), component.id, widen(name));
    if (!assembly.IsOK()) {
        return false;
    }
    describeAttributes(component);
    return describeContent(component.product);
}

void ModelRenderer::describeAttributes(const Component& component) {
    viz::SceneBuilder& builder = *getSceneBuilder();
    const Product& product = _document.products[component.product];
    rememberInstance(component.id);
    if (component.parentFromChild != identityMatrix) {
        Matrix matrix = component.parentFromChild;  // a copy: the argument is not const
        builder.SetTransformation(matrix.data());
    }
    if (component.color.has_value()) {
        builder.SetColor(colorOf(*component.color), true);
    } else if (product.color.has_value() && !product.components.empty()) {
        builder.SetColor(colorOf(*product.color), false);
    }
    if (component.hidden) {
        builder.SetVisibility(false);
    }
}

bool ModelRenderer::describeContent(std::size_t product) {
    const Product& content = _document.products[product];
    if (_instances.count(content.id) != 0) {
        return refer(product);
    }
    rememberInstance(content.id);
    _open = &content;
    return content.components.empty() ? describeBodies(product) : describeAssembly(product);
}

bool ModelRenderer::describeAssembly(std::size_t product) {
    const Product& assembly = _document.products[product];
    if (!describeComponents(assembly.components)) {
        return false;
    }
    if (assembly.bodies.empty()) {
        return true;
    }
    const viz::ContainerContext bodies(getSceneBuilder(), assembly.id, widen(assembly.name),
                                       viz::SceneBuilder::AddressedContainer);
    return bodies.IsOK() && describeBodies(product);
}

bool ModelRenderer::describeBodies(std::size_t product) {
    const Product& part = _document.products[product];
    for (std::size_t i = 0; i < part.bodies.size(); ++i) {
        if (!describeBody(part.bodies[i], _index.Names().Body(product, i), part)) {
            return false;
        }
    }
    return true;
}

// --- referring to what is described already -----------------------------------------------------

bool ModelRenderer::refer(std::size_t product) {
    const Product& content = _document.products[product];
    const viz::RenderId first = _instances.at(content.id);
    for (const Component& component : content.components) {
        if (!referTo(first, component.id)) {
            return false;
        }
    }
    if (!content.components.empty()) {
        return content.bodies.empty() || referTo(first, content.id);
    }
    for (const Body& body : content.bodies) {
        if (!referTo(first, body.id)) {
            return false;
        }
    }
    return true;
}

// AddReference answers false whatever happens, so the open node is asked whether it has the child.
bool ModelRenderer::referTo(viz::RenderId path, Id id) {
    path.AddValue(id);
    getSceneBuilder()->AddReference(path);
    const auto* const open =
        dynamic_cast<const viz::Node*>(getView3DAdapter()->GetCurrentOpenNode());
    return open != nullptr && open->GetChild(id) != nullptr;
}

// --- describing bodies --------------------------------------------------------------------------

bool ModelRenderer::describeBody(const Body& body, const std::string& name,
                                 const Product& product) {
    viz::SceneBuilder* const builder = getSceneBuilder();
    const viz::BodyContext context(builder, body.id, widen(name));
    if (!context.IsOK()) {
        return false;
    }
    const std::optional<Color>& color = body.color.has_value() ? body.color : product.color;
    if (color.has_value() && (body.color.has_value() || product.components.empty())) {
        builder->SetColor(colorOf(*color), false);
    }
    if (body.hidden) {
        builder->SetVisibility(false);
    }
    if (body.origin != Vector{0, 0, 0}) {
        Matrix matrix = identityMatrix;
        std::copy(body.origin.begin(), body.origin.end(), matrix.begin() + 12);
        builder->SetTransformation(matrix.data());
    }
    count(_report.Bodies, 1);
    tellProgress(name);
    return describeElements(body);
}

bool ModelRenderer::describeElements(const Body& body) {
    const auto found = _elements.find(body.id);
    if (found == _elements.end()) {
        return true;
    }
    const Elements& elements = found->second;
    if (elements.mesh != nullptr && !describeMesh(*elements.mesh)) {
        return false;
    }
    if (elements.wire != nullptr && !describeEdges(viz::WireType, elements.wire->GetEdges())) {
        return false;
    }
    if (elements.points != nullptr && !describePoints(body, *elements.points)) {
        return false;
    }
    for (viz::VizElement* element :
         std::initializer_list<viz::VizElement*>{elements.mesh, elements.wire, elements.points}) {
        if (element != nullptr) {
            remember(*element);
        }
    }
    return true;
}

bool ModelRenderer::describeMesh(const viz::VizMesh& mesh) {
    if (!mesh.GetFaces().empty()) {
        const viz::EntityTypeContext faces(getSceneBuilder(), viz::FaceType, L"Faces");
        for (viz::VizFace* face : mesh.GetFaces()) {
            if (!faces.IsOK() || !describeFace(*face)) {
                return false;
            }
        }
    }
    return describeEdges(viz::EdgeType, mesh.GetEdges());
}

bool ModelRenderer::describeFace(viz::VizFace& face) {
    const Id id = entityIdOf(face).ID;
    const viz::EntityContext context(getSceneBuilder(), id, face.GetMechanicalID(), false,
                                     viz::RGBAColor());
    if (!context.IsOK()) {
        return false;
    }
    if (face.HasColor()) {
        getSceneBuilder()->SetColor(face.GetColor(), true);
    }
    const std::vector<float>& points = face.GetVertices();
    const std::vector<float>& normals = face.GetNormals();
    for (const viz::VizPolygon* polygon : face.GetPolygons()) {
        const std::vector<int>& corners = polygon->GetIndices();
        if (!add(getGeometryItemFactory()->CreateTriangleSet(
                id, arrayOf(points), arrayOf(normals), arrayOf(corners), pointCountOf(points),
                pointCountOf(normals), countOf(corners.size()), polygon->GetPolygonType()))) {
            return false;
        }
        count(_report.Triangles, corners.size() / 3);
    }
    remember(face);
    count(_report.Faces, 1);
    return true;
}

bool ModelRenderer::describeEdges(viz::EntityType type, const std::vector<viz::VizEdge*>& edges) {
    if (edges.empty()) {
        return true;
    }
    const viz::EntityTypeContext group(getSceneBuilder(), type, L"Edges");
    for (viz::VizEdge* edge : edges) {
        if (!group.IsOK() || !describeEdge(*edge)) {
            return false;
        }
    }
    return true;
}

bool ModelRenderer::describeEdge(viz::VizEdge& edge) {
    const Id id = entityIdOf(edge).ID;
    const viz::EntityContext context(getSceneBuilder(), id, edge.GetMechanicalID(), false,
                                     viz::RGBAColor());
    if (!context.IsOK()) {
        return false;
    }
    if (edge.HasColor()) {
        getSceneBuilder()->SetColor(edge.GetColor(), true);
    }
    const std::vector<float>& points = edge.GetVertices();
    if (!points.empty() &&
        !add(getGeometryItemFactory()->CreatePolyline(id, arrayOf(points), pointCountOf(points)))) {
        return false;
    }
    remember(edge);
    count(_report.Edges, 1);
    return true;
}

// Loose points have no ids of their own: the item has the body's.
bool ModelRenderer::describePoints(const Body& body, const viz::VizPointSet& set) {
    const viz::EntityTypeContext type(getSceneBuilder(), viz::PointSetType, L"Points");
    for (const viz::VizPoints* points : set.GetPointSets()) {
        const std::vector<float>& vertices = points->GetVertices();
        if (!type.IsOK() || !add(getGeometryItemFactory()->CreatePointCloud(
                                body.id, pointCountOf(vertices), arrayOf(vertices)))) {
            return false;
        }
        count(_report.Vertices, vertices.size() / 3);
    }
    return type.IsOK();
}

// The item is ours until the builder has taken it, which it refuses only without an adapter.
// --- counting and telling -----------------------------------------------------------------------

void ModelRenderer::tellProgress(const std::string& name) {
    ++_bodiesDone;
    if (_progressCallback != nullptr) {
        _progressCallback(_bodiesDone, countOf(_elements.size()), name.c_str());
    }
}

std::size_t ModelRenderer::placeOf(const Product& product) const {
    return static_cast<std::size_t>(&product - _document.products.data());
}

// --- what is named by which id ------------------------------------------------------------------

// The builder composes render ids without the levels of the assembly, so the open node is asked.
void ModelRenderer::remember(viz::VizElement& element) {
    viz::RenderId id;
    if (getSceneBuilder()->GetCurrentRenderId(id)) {
        element.Set3DRenderID(id);
    }
}

void ModelRenderer::rememberInstance(Id id) {
    viz::RenderId path;
    if (getSceneBuilder()->GetCurrentRenderId(path)) {
        _instances.emplace(id, path);
    }
}

bool ModelRenderer::GetRenderId(const viz::EntityId& entity, viz::RenderId& out) const {
    if (entity.Type == viz::PartType || entity.Type == viz::AssemblyType) {
        const auto found = _instances.find(entity.ID);
        if (found != _instances.end()) {
            out = found->second;
        }
        return found != _instances.end();
    }
    if (!entity.IsFace() && !entity.IsEdge() && !entity.IsBody()) {
        return false;
    }
    const auto found = _model.elements.find(entity);  // whose order ignores the type
    viz::RenderId id;
    if (found == _model.elements.end() || entityIdOf(*found->second) != entity ||
        !found->second->Get3DRenderID(id)) {
        return false;
    }
    out = id;
    return true;
}

bool ModelRenderer::GetEntityId(const viz::RenderId& id, viz::EntityId& out) const {
    const std::optional<SceneNode> node = _index.Find(id);
    if (!node.has_value() || node->product == nullptr) {
        return false;
    }
    out = node->entity;
    return true;
}

std::wstring ModelRenderer::GetToolTip(const viz::RenderId& id) {
    const std::optional<SceneNode> node = _index.Find(id);
    if (!node.has_value() || node->product == nullptr) {
        return std::wstring();
    }
    std::vector<std::string> names = namesOfPath(node->path);
    if (node->face != nullptr || node->edge != nullptr) {
        const std::string number = narrow(visualIdOf(node->entity));
        names.back() = names.back() == number ? number : number + " '" + names.back() + "'";
    }
    std::string text;
    for (const std::string& name : names) {
        text += (text.empty() ? "" : " / ") + name;
    }
    return widen(text);
}

// --- showing ------------------------------------------------------------------------------------

bool ModelRenderer::Update() {
    Clear();
    return Render();
}

void ModelRenderer::Clear() {
    if (getSceneBuilder() != nullptr) {
        getSceneBuilder()->Clear(_renderId);  // a path of one id: the whole scene
    }
    forgetRenderIds();
    _instances.clear();
    ClearReport();
}

void ModelRenderer::forgetRenderIds() {
    const auto forget = [](const auto& elements) {
        for (viz::VizElement* element : elements) {
            element->Set3DRenderID(viz::RenderId());
        }
    };
    for (viz::VizMesh* mesh : _model.geometry.GetMeshes()) {
        forget(mesh->GetFaces());
        forget(mesh->GetEdges());
    }
    for (viz::VizWire* wire : _model.geometry.GetWires()) {
        forget(wire->GetEdges());
    }
    forget(_model.geometry.GetMeshes());
    forget(_model.geometry.GetWires());
    forget(_model.geometry.GetPointSets());
    forget(_model.pmi.GetVizPMIs());
}

bool ModelRenderer::IsEmpty() const {
    viz::AView3DAdapter* const adapter = getView3DAdapter();
    if (adapter == nullptr || _document.roots.empty()) {
        return true;
    }
    viz::RenderId first = sceneId();
    first.AddValue(_document.roots.front().id);
    return adapter->GetNode(first) == nullptr;
}

}  // namespace kesview
