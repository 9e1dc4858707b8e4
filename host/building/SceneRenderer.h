#pragma once

/// @file
/// What the renderers of the model and of the annotations do alike.

#include <KesVizCore/core/RenderId.h>
#include <KesVizCore/scene/ARenderer.h>

#include <cstddef>
#include <cstdint>

namespace KesVizCore {
class AGeometryItem;
}  // namespace KesVizCore

namespace kesview {

namespace viz = KesVizCore;

/// Acts on the nodes of the scene through the adapter of its builder; false where there is none.
class SceneRenderer : public viz::ARenderer {
public:
    /// Highlights in the colour that the options name.
    bool Activate(viz::RenderId& id) override;
    bool Deactivate(viz::RenderId& id) override;
    bool Show(const viz::RenderId& id) override;
    bool Hide(const viz::RenderId& id) override;

protected:
    explicit SceneRenderer(viz::SceneBuilder* builder) : ARenderer(builder, nullptr) {}

    /// Takes @p item over; false where there is none, or the builder refuses it.
    bool add(viz::AGeometryItem* item);
    /// Counts in report mode.
    void count(std::uint64_t& counter, std::size_t more);
};

}  // namespace kesview
