/// @file
/// Building the scene by Open CASCADE's application framework.

#include "peers/OcafScene.h"
#include "support/Bench.h"

namespace bench {
namespace {

void build(benchmark::State& state, std::int64_t size) {
    const SceneModel model(size);
    const OcafModel ocafModel(model);
    timeOnFresh(
        state, [] { return std::make_unique<OcafScene>(); },
        [&](OcafScene& scene) { scene.Build(ocafModel); });
    countItems(state, model.NodeCount());
}

const Registered registered([] {
    for (const std::int64_t size : sizesOr({10'000, 100'000, 1'000'000})) {
        add("build/OCAF", size, build);
    }
});

}  // namespace
}  // namespace bench
