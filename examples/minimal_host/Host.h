#pragma once

/// @file
/// The whole host put together, and the order in which it goes up and comes down.

#include "Bracket.h"
#include "BracketRenderer.h"
#include "Listeners.h"
#include "PmiLoaders.h"
#include "PmiRenderer.h"
#include "View.h"

#include <KesVizCore/model/VizContainer.h>
#include <KesVizCore/pmi/VizPMICollection.h>
#include <KesVizCore/pmi/VizPMIContainer.h>
#include <KesVizCore/view/AView3DAdapter.h>

#include <memory>

namespace host {

/// Owns data model, view, adapter and renderers. One at a time: the factories belong to the whole
/// process.
class Host {
public:
    /// Throws std::runtime_error where the library makes no adapter or builder.
    Host();
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    viz::AView3DAdapter& GetAdapter() { return *_adapter; }
    View& GetView() { return _view; }
    BracketRenderer& GetRenderer() { return *_renderer; }
    PmiRenderer& GetPmiRenderer() { return *_pmiRenderer; }
    viz::VizContainer& GetGeometry() { return _geometry; }
    viz::VizPMIContainer& GetPmi() { return _pmi; }
    /// Faces, edges, bodies and annotations.
    const viz::VizPMICollection::EntityMap& GetElements() const { return _elements; }
    const AnnotationsByFace& GetAnnotationsByFace() const { return _annotationsByFace; }
    /// The bracket renderer's own, which the other one borrows.
    viz::SceneBuilder& GetBuilder() { return *_builder; }

private:
    // In the order in which one needs the other; they go in the reverse one.
    Model _model;
    viz::VizContainer _geometry;
    viz::VizPMICollection::EntityMap _elements;
    viz::VizPMIContainer _pmi;
    AnnotationsByFace _annotationsByFace;
    View _view;
    PickPrinter _pickPrinter;
    std::unique_ptr<viz::AView3DAdapter> _adapter;
    std::unique_ptr<OptionsListener> _optionsListener;
    viz::SceneBuilder* _builder = nullptr;
    std::unique_ptr<BracketRenderer> _renderer;
    std::unique_ptr<PmiRenderer> _pmiRenderer;
};

}  // namespace host
