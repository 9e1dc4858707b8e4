/// @file
/// From an entity to its render id and back: how often memory is asked for. A copy of the answer
/// asks for the answer's own.

#include "support/Allocations.h"
#include "support/Bench.h"
#include "support/OurScene.h"

namespace bench {
namespace {

constexpr int calls = 100;

/// Takes @p work, which is done @p calls times.
template <typename Work>
double allocationsOfEach(const Work& work) {
    const Allocations before = allocations();
    for (int call = 0; call < calls; ++call) {
        work();
    }
    return static_cast<double>((allocations() - before).calls) / calls;
}

double ours(std::int64_t size) {
    const auto scene = OurScene::Built(SceneModel(size));
    const viz::EntityId face(firstBodyId, viz::FaceType, firstEntityId);
    const viz::RGBAColor color;
    return allocationsOfEach([&] {
        viz::RenderId path;
        viz::EntityId entity;
        scene->builder.BuildRenderId(path, face, color, color);
        scene->builder.ExtractEntityId(path, entity);
        benchmark::DoNotOptimize(entity);
    });
}

double copiedAnswer(std::int64_t size) {
    const auto scene = OurScene::Built(SceneModel(size));
    const viz::RGBAColor color;
    viz::RenderId answer;
    scene->builder.BuildRenderId(answer, {firstBodyId, viz::FaceType, firstEntityId}, color, color);
    return allocationsOfEach([&] {
        viz::RenderId copy(answer);
        benchmark::DoNotOptimize(copy);
    });
}

const Registered registered([] {
    for (const std::int64_t size : sizesOr({10'000})) {
        addFigure("render id and back/ours", size, ours);
        addFigure("render id and back/answer", size, copiedAnswer);
    }
});

}  // namespace
}  // namespace bench
