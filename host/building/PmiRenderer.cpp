/// @file
#include "building/PmiRenderer.h"

#include "building/RendererParts.h"

#include <KesVizCore/graph/AGeometryItem.h>
#include <KesVizCore/graph/AGeometryItemFactory.h>
#include <KesVizCore/graph/Node.h>
#include <KesVizCore/math/VectorMath.h>
#include <KesVizCore/model/VizEdge.h>
#include <KesVizCore/model/VizFace.h>
#include <KesVizCore/model/VizPolygon.h>
#include <KesVizCore/model/VizText.h>
#include <KesVizCore/pmi/VizPMI.h>
#include <KesVizCore/scene/ASceneBuilderContext.h>
#include <KesVizCore/scene/RenderingOptions.h>
#include <KesVizCore/scene/SceneBuilder.h>
#include <KesVizCore/view/AView3DAdapter.h>

#include <memory>
#include <optional>

namespace kesview {

namespace {

constexpr Id kFirstPlace = 2;  // the root's id, 1, opens the root wherever it stands

/// Lays x into the direction of the text, y up its letters.
Matrix placeOf(const viz::VizText& text) {
    float up[3];
    viz::CrossProduct(text.GetNormal(), text.GetDirection(), up);
    const float* const columns[4] = {text.GetDirection(), up, text.GetNormal(),
                                     text.GetAnchorPoint()};
    Matrix matrix = identityMatrix;
    for (std::size_t column = 0; column < 4; ++column) {
        for (std::size_t row = 0; row < 3; ++row) {
            matrix[4 * column + row] = double{columns[column][row]};
        }
    }
    return matrix;
}

}  // namespace

PmiRenderer::PmiRenderer(viz::SceneBuilder* builder, const Document& document,
                         const LoadedModel& model)
    : SceneRenderer(builder), _document(document), _model(model), _index(document) {
    SetBuilderOwnership(false);
    _renderId =
        viz::RenderId({viz::Node::GetRootNodeId(), _index.AnnotationContainer()}, viz::View3D);
}

// --- describing the annotations -----------------------------------------------------------------

bool PmiRenderer::Render() {
    viz::SceneBuilder* const builder = getSceneBuilder();
    if (getGeometryItemFactory() == nullptr || !IsEmpty()) {
        return false;
    }
    if (_document.annotations.empty()) {
        return true;
    }
    const viz::ConstructionContext construction(builder);
    const viz::SceneContext scene(builder, viz::Node::GetRootNodeId(), std::wstring());
    const viz::ContainerContext container(builder, _index.AnnotationContainer(),
                                          widen(annotationsName),
                                          viz::SceneBuilder::AddressedContainer);
    if (!construction.IsOK() || !scene.IsOK() || !container.IsOK()) {
        return false;
    }
    int done = 0;
    for (const Annotation& annotation : _document.annotations) {
        viz::VizPMI* const loaded = _model.pmi.GetVizPMI(widen(annotation.key));
        const std::string name = sceneNameOf(annotation);
        const bool isLoaded = loaded != nullptr && entityIdOf(*loaded).ID == annotation.id;
        if (isLoaded && !describe(*loaded, name)) {
            return false;
        }
        tellProgress(++done, name);
    }
    return true;
}

bool PmiRenderer::describe(viz::VizPMI& annotation, const std::string& name) {
    viz::SceneBuilder* const builder = getSceneBuilder();
    const viz::EntityId entity = entityIdOf(annotation);
    const viz::EntityTypeContext type(builder, entity.Type,
                                      widen(nameOfAnnotations(entity.Type) + "s"));
    const viz::EntityContext context(builder, entity.ID, widen(name), false, viz::RGBAColor());
    if (!type.IsOK() || !context.IsOK()) {
        return false;
    }
    if (annotation.HasColor()) {
        builder->SetColor(annotation.GetColor(), true);
    }
    if (annotation.GetHidden()) {
        builder->SetVisibility(false);
    }
    viz::RenderId id;
    if (builder->GetCurrentRenderId(id)) {
        annotation.Set3DRenderID(id);
    }
    count(_report.Annotations, 1);
    return describeGraphics(annotation, entity.ID);
}

bool PmiRenderer::describeGraphics(const viz::VizPMI& annotation, Id id) {
    for (const viz::VizEdge* line : annotation.GetEdges()) {
        const std::vector<float>& points = line->GetVertices();
        if (!points.empty() && !add(getGeometryItemFactory()->CreatePolyline(
                                   id, arrayOf(points), pointCountOf(points)))) {
            return false;
        }
    }
    for (const viz::VizFace* area : annotation.GetFaces()) {
        if (!describeArea(*area, id)) {
            return false;
        }
    }
    Id place = kFirstPlace;
    for (const viz::VizText* text : annotation.GetTexts()) {
        if (!describeText(*text, id, place++)) {
            return false;
        }
    }
    return true;
}

bool PmiRenderer::describeArea(const viz::VizFace& area, Id id) {
    const std::vector<float>& points = area.GetVertices();
    for (const viz::VizPolygon* polygon : area.GetPolygons()) {
        const std::vector<int>& corners = polygon->GetIndices();
        if (!points.empty() &&
            !add(getGeometryItemFactory()->CreateTriangleSet(
                id, arrayOf(points), nullptr, arrayOf(corners), pointCountOf(points), 0,
                countOf(corners.size()), polygon->GetPolygonType()))) {
            return false;
        }
        count(_report.Triangles, corners.size() / 3);
    }
    return true;
}

// The maker of items is told a position but no direction: the node's transform has both.
bool PmiRenderer::describeText(const viz::VizText& text, Id id, Id place) {
    viz::SceneBuilder* const builder = getSceneBuilder();
    const viz::SceneLevelContext level(builder, place, L"Text");
    if (!level.IsOK()) {
        return false;
    }
    Matrix matrix = placeOf(text);
    builder->SetTransformation(matrix.data());
    float position[3] = {0, 0, 0};
    return add(getGeometryItemFactory()->CreateText(id, text.GetText(), text.GetFontName(),
                                                    position, text.GetFontAttrs(), 0.0F));
}

// The item is ours until the builder has taken it, which it refuses only without an adapter.
void PmiRenderer::tellProgress(int done, const std::string& name) {
    if (_progressCallback != nullptr) {
        _progressCallback(done, countOf(_document.annotations.size()), name.c_str());
    }
}

// --- what is named by which id ------------------------------------------------------------------

bool PmiRenderer::GetEntityId(const viz::RenderId& id, viz::EntityId& out) const {
    const std::optional<SceneNode> node = _index.Find(id);
    if (!node.has_value() || node->annotation == nullptr) {
        return false;
    }
    out = node->entity;
    return true;
}

bool PmiRenderer::GetRenderId(const viz::EntityId& entity, viz::RenderId& out) const {
    const auto found = _model.elements.find(entity);  // whose order ignores the type
    viz::RenderId id;
    if (!entity.IsAnnotation() || found == _model.elements.end() ||
        entityIdOf(*found->second) != entity || !found->second->Get3DRenderID(id)) {
        return false;
    }
    out = id;
    return true;
}

std::wstring PmiRenderer::GetToolTip(const viz::RenderId& id) {
    const std::optional<SceneNode> node = _index.Find(id);
    if (!node.has_value() || node->annotation == nullptr) {
        return std::wstring();
    }
    return widen(nameOfAnnotations(node->entity.Type) + " " + std::to_string(node->entity.ID) +
                 " '" + sceneNameOf(*node->annotation) + "'");
}

// --- showing ------------------------------------------------------------------------------------

bool PmiRenderer::Update() {
    Clear();
    return Render();
}

void PmiRenderer::Clear() {
    if (!IsEmpty()) {
        getView3DAdapter()->Clear(_renderId);
    }
    for (viz::VizPMI* annotation : _model.pmi.GetVizPMIs()) {
        annotation->Set3DRenderID(viz::RenderId());
    }
    ClearReport();
}

bool PmiRenderer::IsEmpty() const {
    viz::AView3DAdapter* const adapter = getView3DAdapter();
    const viz::GeoNode* const container =
        adapter != nullptr ? adapter->GetNode(_renderId) : nullptr;
    return container == nullptr || !container->HasChildren();
}

}  // namespace kesview
