#include "core/Allocation.h"

#include <KesVizCore/scene/SceneBuilder.h>
#include <KesVizCore/scene/SceneBuilderFactory.h>
#include <KesVizCore/view/AView3DAdapter.h>

#include <algorithm>
#include <vector>

namespace KesVizCore {

namespace {

/// False, with the list as it was, where memory runs out.
bool enlist(std::vector<SceneBuilder*>& registered, SceneBuilder* builder) {
    return nullWhenExhausted([&] {
               registered.push_back(builder);
               return builder;
           }) != nullptr;
}

}  // namespace

SceneBuilderFactory::~SceneBuilderFactory() = default;

SceneBuilder* SceneBuilderFactory::makeSceneBuilderImpl() {
    return nullWhenExhausted([] { return new SceneBuilder(); });
}

SceneBuilder* SceneBuilderFactory::MakeSceneBuilder(AView3DAdapter* adapter) {
    SceneBuilder* builder = makeSceneBuilderImpl();
    if (builder == nullptr) {
        return nullptr;
    }
    if (adapter != nullptr && !enlist(adapter->_sceneBuilders, builder)) {
        DeleteSceneBuilder(builder);
        return nullptr;
    }
    builder->_view3DAdapter = adapter;
    return builder;
}

void SceneBuilderFactory::DeleteSceneBuilder(SceneBuilder*& builder) {
    if (builder == nullptr) {
        return;
    }
    if (builder->_view3DAdapter != nullptr) {
        std::vector<SceneBuilder*>& registered = builder->_view3DAdapter->_sceneBuilders;
        const auto place = std::find(registered.begin(), registered.end(), builder);
        if (place != registered.end()) {
            registered.erase(place);
        }
    }
    delete builder;
    builder = nullptr;
}

}  // namespace KesVizCore
