#include "Host.h"

#include "Adapter.h"
#include "ModelLoaders.h"
#include "TextReport.h"

#include <KesVizCore/report/AReportFactory.h>
#include <KesVizCore/scene/SceneBuilderFactory.h>
#include <KesVizCore/scene/VizFactories.h>

#include <stdexcept>

namespace host {

namespace {

constexpr int kModelNumber = 1;

}  // namespace

Host::Host() : _model(makeBracketModel()), _geometry(kModelNumber), _pmi(kModelNumber) {
    loadGeometry(_model, _geometry);
    _elements = elementsOf(_geometry);
    loadPmi(makeBracketAnnotations(), _elements, _pmi);
    _annotationsByFace = annotationsByFace(_pmi);

    viz::VizFactories& factories = viz::VizFactories::Instance();
    factories.SetView3DAdapterFactory(new AdapterFactory());           // owned by the library
    factories.SetSceneBuilderFactory(new viz::SceneBuilderFactory());  // and so is this
    viz::AReportFactory::SetActiveReportFactory(new TextReportFactory());

    _adapter.reset(factories.CreateView3DAdapter());
    if (_adapter == nullptr) {
        throw std::runtime_error("no adapter");
    }
    _adapter->SetView3D(&_view);
    _view.SetRayPickListener(&_pickPrinter);
    viz::RenderingOptions& options = *_adapter->GetRenderingOptions();
    options.SetDefaultEdgeColor(viz::RGBAColor(0, 0, 0, 255));
    options.SetHighlightColor(viz::RGBAColor(255, 140, 0, 255));
    _optionsListener = std::make_unique<OptionsListener>(options, *_adapter->GetFilterManager());

    _builder = factories.CreateSceneBuilder(_adapter.get());
    if (_builder == nullptr) {
        throw std::runtime_error("no scene builder");
    }
    _renderer = std::make_unique<BracketRenderer>(_builder, _model, _geometry);
    _pmiRenderer = std::make_unique<PmiRenderer>(_builder, _pmi);
}

Host::~Host() {
    _pmiRenderer.reset();
    _renderer.reset();  // deletes the builder, for which it needs the factories
    _optionsListener.reset();
    _adapter.reset();
    viz::VizFactories::Instance().Terminate();
    viz::AReportFactory::SetActiveReportFactory(nullptr);
}

}  // namespace host
