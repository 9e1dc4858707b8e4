/// @file
/// Finding every entity of a scene by its path, in random order. A peer is in the folder peers.

#include "support/Bench.h"
#include "support/OurScene.h"
#include "support/PlainScene.h"

namespace bench {
namespace {

/// A scene and the paths of its entities. Each path is made anew in its place in the order, so that
/// the paths themselves lie in memory as they are used.
struct Ours {
    explicit Ours(std::int64_t size) : model(size), scene(OurScene::Built(model)) {
        for (const Path& path : shuffledPaths(model)) {
            paths.emplace_back(path, viz::View3D);
        }
    }
    viz::GeoNode* Find(const viz::RenderId& path) const { return scene->adapter.GetNode(path); }

    SceneModel model;
    std::unique_ptr<OurScene> scene;
    std::vector<viz::RenderId> paths;
};

struct Plain {
    explicit Plain(std::int64_t size) : model(size), scene(PlainScene::Built(model)) {
        for (const Path& path : shuffledPaths(model)) {
            paths.push_back(path);
        }
    }
    PlainNode* Find(const Path& path) const { return scene->Find(path); }

    SceneModel model;
    std::unique_ptr<PlainScene> scene;
    std::vector<Path> paths;
};

template <typename Subject>
void lookUp(benchmark::State& state, std::int64_t size) {
    const Subject& subject = once<Subject>(size);
    std::size_t found = 0;
    timeRounds(state, [&] {
        found = 0;
        for (const auto& path : subject.paths) {
            found += subject.Find(path) != nullptr ? 1U : 0U;
        }
        benchmark::DoNotOptimize(found);
    });
    if (found != subject.paths.size()) {
        state.SkipWithError("a node was not found");
    }
    countItems(state, static_cast<std::int64_t>(subject.paths.size()));
}

const Registered registered([] {
    for (const std::int64_t size : sizesOr({10'000, 100'000, 1'000'000})) {
        add("look-up/ours", size, lookUp<Ours>);
        add("look-up/plain", size, lookUp<Plain>);
    }
});

}  // namespace
}  // namespace bench
