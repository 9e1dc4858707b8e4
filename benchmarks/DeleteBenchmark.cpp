/// @file
/// Deleting all bodies of a scene one by one, clearing a scene, and destroying it.

#include "support/Bench.h"
#include "support/OurScene.h"
#include "support/PlainScene.h"

namespace bench {
namespace {

void deleteOurBodies(benchmark::State& state, std::int64_t size) {
    const SceneModel model(size);
    std::vector<viz::RenderId> paths;
    for (const std::uint64_t id : shuffledBodies(model)) {
        paths.push_back(viz::RenderId({sceneId, containerId, id}, viz::View3D));
    }
    timeOnFresh(
        state, [&] { return OurScene::Built(model); },
        [&](OurScene& scene) {
            for (const viz::RenderId& path : paths) {
                if (!scene.adapter.DeleteNode(path)) {
                    state.SkipWithError("a body was not deleted");
                }
            }
        });
    countItems(state, model.BodyCount());
}

void deletePlainBodies(benchmark::State& state, std::int64_t size) {
    const SceneModel model(size);
    std::vector<Path> paths;
    for (const std::uint64_t id : shuffledBodies(model)) {
        paths.push_back({sceneId, containerId, id});
    }
    timeOnFresh(
        state, [&] { return PlainScene::Built(model); },
        [&](PlainScene& scene) {
            for (const Path& path : paths) {
                if (!scene.Delete(path)) {
                    state.SkipWithError("a body was not deleted");
                }
            }
        });
    countItems(state, model.BodyCount());
}

/// Times @p work on a built scene; per node.
template <typename Scene, typename Work>
Measure onBuilt(Work work) {
    return [work](benchmark::State& state, std::int64_t size) {
        const SceneModel model(size);
        timeOnFresh(
            state, [&] { return Scene::Built(model); }, work);
        countItems(state, model.NodeCount());
    };
}

const Registered registered([] {
    for (const std::int64_t size : sizesOr({10'000, 100'000, 1'000'000})) {
        add("delete a body/ours", size, deleteOurBodies);
        add("delete a body/plain", size, deletePlainBodies);
        add("clear/ours", size, onBuilt<OurScene>([](OurScene& scene) {
                scene.builder.Clear(viz::RenderId({sceneId}, viz::View3D));
            }));
        add("clear/plain", size,
            onBuilt<PlainScene>([](PlainScene& scene) { scene.root->children.clear(); }));
        add("destroy/ours", size,
            onBuilt<OurScene>([](OurScene& scene) { scene.adapter.DestroyGraph(); }));
        add("destroy/plain", size,
            onBuilt<PlainScene>([](PlainScene& scene) { scene.root.reset(); }));
    }
});

}  // namespace
}  // namespace bench
