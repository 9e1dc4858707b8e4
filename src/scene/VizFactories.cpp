#include <KesVizCore/scene/AView3DAdapterFactory.h>
#include <KesVizCore/scene/SceneBuilderFactory.h>
#include <KesVizCore/scene/VizFactories.h>

namespace KesVizCore {

VizFactories& VizFactories::Instance() {
    static VizFactories* const instance = new VizFactories();
    return *instance;
}

VizFactories::VizFactories()
    : _sceneBuilderFactory(nullptr), _view3DAdapterFactory(nullptr), _initialised(false) {
    Init();
}

void VizFactories::Init() {
    if (_initialised) {
        return;
    }
    _sceneBuilderFactory = nullptr;
    _view3DAdapterFactory = nullptr;
    _initialised = true;
}

void VizFactories::Terminate() {
    SetSceneBuilderFactory(nullptr);
    SetView3DAdapterFactory(nullptr);
}

void VizFactories::SetSceneBuilderFactory(SceneBuilderFactory* factory) {
    delete _sceneBuilderFactory;
    _sceneBuilderFactory = factory;
}

void VizFactories::SetView3DAdapterFactory(AView3DAdapterFactory* factory) {
    delete _view3DAdapterFactory;
    _view3DAdapterFactory = factory;
}

SceneBuilder* VizFactories::CreateSceneBuilder(AView3DAdapter* adapter) {
    return _sceneBuilderFactory != nullptr ? _sceneBuilderFactory->MakeSceneBuilder(adapter)
                                           : nullptr;
}

void VizFactories::DeleteSceneBuilder(SceneBuilder*& builder) {
    if (_sceneBuilderFactory != nullptr) {
        _sceneBuilderFactory->DeleteSceneBuilder(builder);
    }
}

AView3DAdapter* VizFactories::CreateView3DAdapter() {
    return _view3DAdapterFactory != nullptr ? _view3DAdapterFactory->MakeView3DAdapter() : nullptr;
}

}  // namespace KesVizCore
