#pragma once

/// @file
/// The renderer that describes annotations to the library.

#include "building/SceneIndex.h"
#include "building/SceneRenderer.h"
#include "document/Document.h"
#include "loading/Load.h"

#include <KesVizCore/core/EntityId.h>
#include <KesVizCore/core/RenderId.h>

#include <string>

namespace KesVizCore {
class VizFace;
class VizPMI;
class VizText;
}  // namespace KesVizCore

namespace kesview {

/// Describes the annotations of a loaded model below the root of the scene, in a container of their
/// own whose id IdsBeyond::AnnotationContainer tells. SceneIndex tells the paths.
///
/// Lines become polylines and filled areas triangle sets of the annotation's node. A text stands at
/// the origin of a node below it, whose transform lays it into place: x along the writing, y up the
/// letters. An annotation without any drawing is a node all the same, so that it can be named.
///
/// @par Ownership
/// Borrows the builder, which is the model renderer's. Document and model as there.
///
/// @par Errors
/// As for ModelRenderer.
///
/// @par Threads
/// One renderer, one thread: that of its adapter.
class PmiRenderer : public SceneRenderer {
public:
    PmiRenderer(viz::SceneBuilder* builder, const Document& document, const LoadedModel& model);

    std::wstring GetName() const override { return L"PMI renderer"; }
    /// Describes all annotations and sets their 3D render ids; false where they are described
    /// already. In report mode annotations and triangles are counted. Without annotations there is
    /// no container either.
    bool Render() override;
    bool Update() override;
    /// Empties the container, which stays; the model is not touched.
    void Clear() override;
    bool IsEmpty() const override;
    /// "Dimension 77 'Bore depth'"; empty for what is no annotation.
    std::wstring GetToolTip(const viz::RenderId& id) override;
    /// Of an annotation, and of the place of one of its texts. False for anything else.
    bool GetEntityId(const viz::RenderId& id, viz::EntityId& out) const override;
    bool GetRenderId(const viz::EntityId& entity, viz::RenderId& out) const override;

private:
    bool describe(viz::VizPMI& annotation, const std::string& name);
    bool describeGraphics(const viz::VizPMI& annotation, Id id);
    bool describeArea(const viz::VizFace& area, Id id);
    bool describeText(const viz::VizText& text, Id id, Id place);
    void tellProgress(int done, const std::string& name);

    const Document& _document;
    const LoadedModel& _model;
    SceneIndex _index;
};

}  // namespace kesview
