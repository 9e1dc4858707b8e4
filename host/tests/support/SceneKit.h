#pragma once

/// @file
/// A document described to this host's adapter, for tests of what stands on a scene.

#include "building/ModelRenderer.h"
#include "building/PmiRenderer.h"
#include "building/SceneIds.h"
#include "loading/Load.h"
#include "view/SceneAdapter.h"

#include <KesVizCore/scene/SceneBuilder.h>
#include <KesVizCore/scene/SceneBuilderFactory.h>
#include <KesVizCore/scene/VizFactories.h>

#include <memory>
#include <string>
#include <utility>

namespace kesview::support {

/// Loads @p document and has both renderers ready; nothing is described yet.
class SceneKit {
public:
    explicit SceneKit(Document given) : document(std::move(given)), model(load(document)) {
        viz::VizFactories::Instance().SetSceneBuilderFactory(new viz::SceneBuilderFactory());
        viz::SceneBuilder* const builder =
            viz::VizFactories::Instance().CreateSceneBuilder(&adapter);
        modelRenderer = std::make_unique<ModelRenderer>(builder, document, *model, "machine.stp");
        pmiRenderer = std::make_unique<PmiRenderer>(builder, document, *model);
    }

    /// The library's dump of the graph.
    std::string Structure() {
        std::string text;
        adapter.GetSceneStructure(text, false);
        return text;
    }
    /// By a text such as "1/50/31"; null where there is none.
    viz::GeoNode* NodeAt(const std::string& renderId) {
        return adapter.GetNode(*parseRenderId(renderId));
    }

    Document document;
    std::unique_ptr<LoadedModel> model;
    SceneAdapter adapter;
    std::unique_ptr<ModelRenderer> modelRenderer;
    std::unique_ptr<PmiRenderer> pmiRenderer;
};

}  // namespace kesview::support
