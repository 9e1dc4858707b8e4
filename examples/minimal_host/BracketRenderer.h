#pragma once

/// @file
/// The renderer: it describes the model to the library, and knows which render id names what.

#include "Bracket.h"

#include <KesVizCore/core/EntityId.h>
#include <KesVizCore/core/RenderId.h>
#include <KesVizCore/model/VizContainer.h>
#include <KesVizCore/scene/ARenderer.h>

#include <map>
#include <tuple>

namespace KesVizCore {
class AGeometryItem;
class VizEdge;
class VizElement;
class VizFace;
class VizMesh;
}  // namespace KesVizCore

namespace host {

namespace viz = KesVizCore;

/// The shapes come from the container, and where they stand from the model.
///
/// The scene: the root is the scene's node; below it an addressed container for each instance,
/// which holds the body, or a reference to it where it has been described already.
///
///     root 1 / container / body / type / face or edge
///
/// So the render id that the builder composes for a face is also the path of its node.
class BracketRenderer : public viz::ARenderer {
public:
    /// Owns @p builder from now on; @p model and @p geometry must outlive the renderer. Elements
    /// of the geometry get their 3D render ids from it.
    BracketRenderer(viz::SceneBuilder* builder, const Model& model,
                    const viz::VizContainer& geometry);

    std::wstring GetName() const override { return L"Bracket renderer"; }
    /// Describes the whole model; false where the library refuses something on the way.
    bool Render() override;
    /// Takes everything away and describes it again.
    bool Update() override;
    void Clear() override;
    bool IsEmpty() const override;
    /// Highlights in the colour that the options name.
    bool Activate(viz::RenderId& id) override;
    bool Deactivate(viz::RenderId& id) override;
    bool Show(const viz::RenderId& id) override;
    bool Hide(const viz::RenderId& id) override;
    /// "Bracket / Bracket plate / Base top"
    std::wstring GetToolTip(const viz::RenderId& id) override;
    /// The entity that a picked path names; false for what is no body, face or edge of the model.
    bool GetEntityId(const viz::RenderId& id, viz::EntityId& out) const override;
    /// The path of an entity; of a body that is used twice, and all in it, through its first use.
    bool GetRenderId(const viz::EntityId& entity, viz::RenderId& out) const override;

private:
    /// EntityId sorts without looking at the type, so that it would be a poor key: face 5 and
    /// edge 5 of a body would share an entry. A body is looked for without its owner, the
    /// instance: it may have several.
    using Key = std::tuple<viz::EntityType, std::uint64_t, std::uint64_t>;
    static Key keyOf(const viz::EntityId& entity);

    bool describeInstance(viz::VizMesh& mesh, const Instance& instance);
    bool describeBody(viz::VizMesh& mesh);
    bool describeFaces(const viz::VizMesh& mesh);
    bool describeFace(viz::VizFace& face);
    bool describeEdges(const viz::VizMesh& mesh);
    bool describeEdge(viz::VizEdge& edge);
    bool refer(const viz::RenderId& body);
    bool add(viz::AGeometryItem* item);
    void count(std::uint64_t& counter, int more);
    void remember(viz::VizElement& element);

    const Model& _model;
    const viz::VizContainer& _geometry;
    std::map<Key, viz::RenderId> _renderIds;
};

}  // namespace host
