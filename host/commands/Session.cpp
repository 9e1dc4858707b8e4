#include "commands/Session.h"

#include "building/ModelRenderer.h"
#include "building/PmiRenderer.h"
#include "reports/XmlReportFactory.h"

#include <KesVizCore/graph/Node.h>
#include <KesVizCore/report/AReportFactory.h>
#include <KesVizCore/scene/SceneBuilderFactory.h>
#include <KesVizCore/scene/VizFactories.h>

#include <stdexcept>
#include <utility>

namespace kesview {

namespace {

constexpr const char* kSceneName = "Scene";  // the file's would make every two reports differ

void require(bool done, const char* what) {
    if (!done) {
        throw std::runtime_error(what);
    }
}

}  // namespace

/// What the library makes its parts by, as long as the session lives.
class Session::Factories {
public:
    explicit Factories(const MakePicker& makePicker) {
        viz::VizFactories& factories = viz::VizFactories::Instance();
        factories.SetView3DAdapterFactory(new SceneAdapterFactory(makePicker));
        factories.SetSceneBuilderFactory(new viz::SceneBuilderFactory());
        viz::AReportFactory::SetActiveReportFactory(new XmlReportFactory());
    }
    ~Factories() {
        viz::VizFactories::Instance().Terminate();
        viz::AReportFactory::SetActiveReportFactory(nullptr);
    }
    Factories(const Factories&) = delete;
    Factories& operator=(const Factories&) = delete;
};

Session::Session(Document document, Console& console, const MakePicker& makePicker)
    : _document(std::move(document)),
      _model(console.Timed("loading", [this] { return load(_document); })),
      _index(_document) {
    console.Timed("building", [&] { build(console, makePicker); });
}

Session::~Session() {
    _pmiRenderer.reset();
    _modelRenderer.reset();  // deletes the builder, for which it needs the factories
    _adapter.reset();
    _factories.reset();
}

void Session::build(Console& console, const MakePicker& makePicker) {
    _factories = std::make_unique<Factories>(makePicker);
    viz::VizFactories& factories = viz::VizFactories::Instance();
    _adapter.reset(static_cast<SceneAdapter*>(factories.CreateView3DAdapter()));
    require(_adapter != nullptr, "the library makes no adapter.");
    _adapter->SetView3D(&_view);
    viz::SceneBuilder* const builder = factories.CreateSceneBuilder(_adapter.get());
    require(builder != nullptr, "the library makes no scene builder.");
    _modelRenderer = std::make_unique<ModelRenderer>(builder, _document, *_model, kSceneName);
    _pmiRenderer = std::make_unique<PmiRenderer>(builder, _document, *_model);
    console.Progress("building", 0);
    require(_modelRenderer->Render(), "the library refused a part of the model.");
    console.Progress("building", 0.9);
    require(_pmiRenderer->Render(), "the library refused a part of the annotations.");
    console.Progress("building", 1);
}

std::optional<viz::EntityId> Session::EntityAt(const viz::RenderId& path) const {
    viz::EntityId entity;
    if (_modelRenderer->GetEntityId(path, entity) || _pmiRenderer->GetEntityId(path, entity)) {
        return entity;
    }
    return std::nullopt;
}

viz::RenderId sceneRoot() {
    return viz::RenderId({viz::Node::GetRootNodeId()}, viz::View3D);
}

}  // namespace kesview
