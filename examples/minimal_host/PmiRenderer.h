#pragma once

/// @file
/// The second renderer: it describes the annotations to the library.

#include <KesVizCore/core/EntityId.h>
#include <KesVizCore/core/RenderId.h>
#include <KesVizCore/pmi/VizPMIContainer.h>
#include <KesVizCore/scene/ARenderer.h>

namespace KesVizCore {
class AGeometryItem;
}

namespace host {

namespace viz = KesVizCore;

/// The annotations stand in a container of their own, in the scene of the bracket:
///
///     root 1 / container 40 / set of annotations / type / annotation
///
/// Which render id names what stands in the annotations themselves, as their 3D render ids.
class PmiRenderer : public viz::ARenderer {
public:
    /// Borrows @p builder; @p pmi must outlive the renderer.
    PmiRenderer(viz::SceneBuilder* builder, const viz::VizPMIContainer& pmi);

    std::wstring GetName() const override { return L"PMI renderer"; }
    bool Render() override;
    bool Update() override;
    void Clear() override;
    bool IsEmpty() const override;
    bool Activate(viz::RenderId& id) override;
    bool Deactivate(viz::RenderId& id) override;
    bool Show(const viz::RenderId& id) override;
    bool Hide(const viz::RenderId& id) override;
    /// False for what is no annotation.
    bool GetEntityId(const viz::RenderId& id, viz::EntityId& out) const override;
    bool GetRenderId(const viz::EntityId& entity, viz::RenderId& out) const override;

private:
    bool describe(viz::VizPMI& annotation, const viz::EntityId& entity);
    bool describeGraphics(const viz::VizPMI& annotation);
    bool add(viz::AGeometryItem* item);

    const viz::VizPMIContainer& _pmi;
};

}  // namespace host
