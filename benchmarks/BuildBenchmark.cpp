/// @file
/// Building a scene through the whole protocol of nested calls. Peers are in the folder peers.

#include "support/Bench.h"
#include "support/OurScene.h"
#include "support/PlainScene.h"

namespace bench {
namespace {

template <typename Scene>
void build(benchmark::State& state, std::int64_t size) {
    const SceneModel model(size);
    timeOnFresh(
        state, [] { return std::make_unique<Scene>(); }, [&](Scene& scene) { scene.Build(model); });
    countItems(state, model.NodeCount());
}

const Registered registered([] {
    for (const std::int64_t size : sizesOr({10'000, 100'000, 1'000'000})) {
        add("build/ours", size, build<OurScene>);
        add("build/plain", size, build<PlainScene>);
    }
});

}  // namespace
}  // namespace bench
