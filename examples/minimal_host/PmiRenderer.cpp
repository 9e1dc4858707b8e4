#include "PmiRenderer.h"

#include <KesVizCore/graph/AGeometryItem.h>
#include <KesVizCore/graph/AGeometryItemFactory.h>
#include <KesVizCore/graph/Node.h>
#include <KesVizCore/model/VizEdge.h>
#include <KesVizCore/model/VizText.h>
#include <KesVizCore/pmi/VizPMI.h>
#include <KesVizCore/report/Utils.h>
#include <KesVizCore/scene/ASceneBuilderContext.h>
#include <KesVizCore/scene/RenderingOptions.h>
#include <KesVizCore/scene/SceneBuilder.h>
#include <KesVizCore/view/AView3DAdapter.h>

#include <memory>
#include <vector>

namespace host {

namespace {

constexpr std::uint64_t kContainer = 40;

}  // namespace

PmiRenderer::PmiRenderer(viz::SceneBuilder* builder, const viz::VizPMIContainer& pmi)
    : ARenderer(builder, nullptr), _pmi(pmi) {
    SetBuilderOwnership(false);
    _renderId = viz::RenderId({viz::Node::GetRootNodeId(), kContainer}, viz::View3D);
}

// --- describing the annotations -----------------------------------------------------------------

bool PmiRenderer::Render() {
    viz::SceneBuilder* const builder = getSceneBuilder();
    const viz::ConstructionContext construction(builder);
    const viz::SceneContext scene(builder, viz::Node::GetRootNodeId(), std::wstring());
    const viz::ContainerContext container(builder, kContainer, L"Annotations",
                                          viz::SceneBuilder::AddressedContainer);
    if (!construction.IsOK() || !scene.IsOK() || !container.IsOK() ||
        getGeometryItemFactory() == nullptr) {
        return false;
    }
    for (viz::VizPMI* annotation : _pmi.GetVizPMIs()) {
        viz::EntityId entity;
        if (!annotation->GetEntityID(entity) || !describe(*annotation, entity)) {
            return false;
        }
    }
    return true;
}

// The owner of the annotations has the level of a body, since composed ids lead through it.
bool PmiRenderer::describe(viz::VizPMI& annotation, const viz::EntityId& entity) {
    viz::SceneBuilder* const builder = getSceneBuilder();
    const viz::BodyContext owner(builder, entity.OwnerID, L"Set of annotations");
    const viz::EntityTypeContext type(builder, entity.Type,
                                      viz::Utils::StringToWstring(annotation.GetType().Name));
    std::wstring name;
    _pmi.GetDisplayName(annotation.GetMechanicalID(), name);
    const viz::EntityContext context(builder, entity.ID, name, true,
                                     viz::RGBAColor(0, 0, 160, 255));
    if (!owner.IsOK() || !type.IsOK() || !context.IsOK()) {
        return false;
    }
    viz::RenderId id;
    builder->BuildRenderId(id, entity, viz::RGBAColor(), viz::RGBAColor());
    annotation.Set3DRenderID(id);
    return describeGraphics(annotation);
}

bool PmiRenderer::describeGraphics(const viz::VizPMI& annotation) {
    viz::AGeometryItemFactory& factory = *getGeometryItemFactory();
    for (const viz::VizEdge* edge : annotation.GetEdges()) {
        std::vector<float> points = edge->GetVertices();
        if (!add(factory.CreatePolyline(edge->GetID(), points.data(),
                                        static_cast<int>(points.size() / 3)))) {
            return false;
        }
    }
    for (const viz::VizText* text : annotation.GetTexts()) {
        const float* const anchor = text->GetAnchorPoint();
        float position[3] = {anchor[0], anchor[1], anchor[2]};
        if (!add(factory.CreateText(text->GetID(), text->GetText(), std::wstring(), position,
                                    text->GetFontAttrs(), 0.0F))) {
            return false;
        }
    }
    return true;
}

bool PmiRenderer::add(viz::AGeometryItem* item) {
    std::unique_ptr<viz::AGeometryItem> owned(item);
    if (item == nullptr || !getSceneBuilder()->AddGeometry(item)) {
        return false;
    }
    static_cast<void>(owned.release());
    return true;
}

bool PmiRenderer::Update() {
    Clear();
    return Render();
}

// The container stays, empty; the bracket is not touched.
void PmiRenderer::Clear() {
    if (getView3DAdapter() != nullptr && !IsEmpty()) {
        getView3DAdapter()->Clear(_renderId);
    }
    for (viz::VizPMI* annotation : _pmi.GetVizPMIs()) {
        annotation->Set3DRenderID(viz::RenderId());
    }
}

bool PmiRenderer::IsEmpty() const {
    viz::RenderId id;
    for (const viz::VizPMI* annotation : _pmi.GetVizPMIs()) {
        if (annotation->Get3DRenderID(id)) {
            return false;
        }
    }
    return true;
}

// --- what is named by which id ------------------------------------------------------------------

bool PmiRenderer::GetEntityId(const viz::RenderId& id, viz::EntityId& out) const {
    for (const viz::VizPMI* annotation : _pmi.GetVizPMIs()) {
        viz::RenderId own;
        if (annotation->Get3DRenderID(own) && own == id) {
            return annotation->GetEntityID(out);
        }
    }
    return false;
}

bool PmiRenderer::GetRenderId(const viz::EntityId& entity, viz::RenderId& out) const {
    for (const viz::VizPMI* annotation : _pmi.GetVizPMIs()) {
        viz::EntityId own;
        if (annotation->GetEntityID(own) && own == entity) {
            return annotation->Get3DRenderID(out);
        }
    }
    return false;
}

// --- showing ------------------------------------------------------------------------------------

bool PmiRenderer::Activate(viz::RenderId& id) {
    viz::AView3DAdapter* const adapter = getView3DAdapter();
    return adapter != nullptr && adapter->Highlight(id, GetRenderingOptions()->GetHighlightColor());
}

bool PmiRenderer::Deactivate(viz::RenderId& id) {
    return getView3DAdapter() != nullptr && getView3DAdapter()->Unhighlight(id);
}

bool PmiRenderer::Show(const viz::RenderId& id) {
    return getView3DAdapter() != nullptr && getView3DAdapter()->Show(id);
}

bool PmiRenderer::Hide(const viz::RenderId& id) {
    return getView3DAdapter() != nullptr && getView3DAdapter()->Hide(id);
}

}  // namespace host
