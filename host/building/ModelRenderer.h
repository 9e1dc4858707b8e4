#pragma once

/// @file
/// The renderer that describes parts and assemblies to the library.

#include "building/SceneIndex.h"
#include "building/SceneRenderer.h"
#include "document/Document.h"
#include "loading/Load.h"

#include <KesVizCore/core/EntityId.h>
#include <KesVizCore/core/RenderId.h>

#include <string>
#include <unordered_map>
#include <vector>

namespace KesVizCore {
class VizEdge;
class VizElement;
class VizFace;
class VizMesh;
class VizPointSet;
class VizWire;
}  // namespace KesVizCore

namespace kesview {

/// Describes the structure of a document with the geometry of its loaded model. SceneIndex tells
/// the paths of its nodes.
///
/// An instance of an assembly is a scene level, one of a part an addressed container. What is in a
/// product is described where it is used first; every other use refers to the same nodes, so that
/// 5,000 instances of two parts cost two descriptions. A node of several parents has the render id
/// of its first use; GetEntityId understands the paths of all uses.
///
/// @par Colours
/// A face or edge of its own colour, and an instance that overrides colours, have theirs with
/// priority; a body has without priority its own colour or else its part's, and an instance of a
/// coloured assembly without an override the assembly's. Nothing else has a colour. What is shown
/// is the colour with priority that is nearest on the way up from the face; where there is none,
/// the nearest colour; where there is none either, the default of the RenderingOptions. So the
/// face's own comes before the instance's, that before the body's, the product's and the default.
/// Of overrides one inside the other, the inner one wins.
///
/// @par Ownership
/// Owns the builder, unless SetBuilderOwnership(false). Document and model are borrowed and must
/// outlive the renderer; the document must have been loaded into that model. Items are made over
/// the arrays of the model, which the factory may keep pointers into: the model must outlive the
/// scene too.
///
/// @par Errors
/// The constructor throws as SceneIndex does. Render answers false where the library or the maker
/// of items refuses something.
///
/// @par Threads
/// One renderer, one thread: that of its adapter.
class ModelRenderer : public SceneRenderer {
public:
    /// @p sceneName, UTF-8, becomes the name of the root.
    ModelRenderer(viz::SceneBuilder* builder, const Document& document, const LoadedModel& model,
                  const std::string& sceneName);

    std::wstring GetName() const override { return L"Model renderer"; }
    /// Describes everything and sets the 3D render ids of the model's elements; false where the
    /// model is described already. A progress callback is told of each body. In report mode,
    /// bodies, faces, edges, loose points and triangles are counted as described: once, not for
    /// each use.
    bool Render() override;
    bool Update() override;
    /// Empties the whole scene, annotations included.
    void Clear() override;
    bool IsEmpty() const override;
    /// "Gearbox / Bolt:2 / Body / face 12 'Bearing seat'"; empty for what is no node of the model.
    std::wstring GetToolTip(const viz::RenderId& id) override;
    /// Of a face, edge, body or instance, through any of its uses; of the node that holds all faces
    /// or all edges of a body, the body. False for anything else.
    bool GetEntityId(const viz::RenderId& id, viz::EntityId& out) const override;
    /// The path through the first use. An instance and a product are answered by their id, whatever
    /// the owner and which of the two types. False before Render.
    bool GetRenderId(const viz::EntityId& entity, viz::RenderId& out) const override;

private:
    /// The elements that stand for one body; those that it does not have are null.
    struct Elements {
        viz::VizMesh* mesh = nullptr;
        viz::VizWire* wire = nullptr;
        viz::VizPointSet* points = nullptr;
    };

    void gatherElements(const LoadedModel& model);
    bool describeComponents(const std::vector<Component>& components);
    bool describeComponent(const Component& component, const std::string& name);
    void describeAttributes(const Component& component);
    bool describeContent(std::size_t product);
    bool describeAssembly(std::size_t product);
    bool describeBodies(std::size_t product);
    bool describeBody(const Body& body, const std::string& name, const Product& product);
    bool describeElements(const Body& body);
    bool describeMesh(const viz::VizMesh& mesh);
    bool describeFace(viz::VizFace& face);
    bool describeEdges(viz::EntityType type, const std::vector<viz::VizEdge*>& edges);
    bool describeEdge(viz::VizEdge& edge);
    bool describePoints(const Body& body, const viz::VizPointSet& set);
    bool refer(std::size_t product);
    bool referTo(viz::RenderId path, Id id);
    void remember(viz::VizElement& element);
    void rememberInstance(Id id);
    void forgetRenderIds();
    void tellProgress(const std::string& name);
    std::size_t placeOf(const Product& product) const;

    const Document& _document;
    const LoadedModel& _model;
    SceneIndex _index;
    std::wstring _sceneName;
    std::unordered_map<Id, Elements> _elements;        ///< by body
    std::unordered_map<Id, viz::RenderId> _instances;  ///< by component, and product: first use
    const Product* _open = nullptr;                    ///< whose content is being described
    int _bodiesDone = 0;
};

}  // namespace kesview
