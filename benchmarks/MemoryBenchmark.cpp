/// @file
/// Memory of a scene that is built: bytes and blocks of malloc for each node, with the host's
/// geometry items and without them.

#include "support/Allocations.h"
#include "support/Bench.h"
#include "support/OurScene.h"
#include "support/PlainScene.h"

namespace bench {
namespace {

/// What a scene keeps in use for each node.
template <typename Scene>
struct Used {
    explicit Used(std::int64_t size) {
        const SceneModel model(size);
        const Allocations before = allocations();
        const auto scene = Scene::Built(model);
        const Allocations all = allocations() - before;
        const Allocations beforeItem = allocations();
        const auto item = std::make_unique<Item>(1);
        const Allocations one = allocations() - beforeItem;

        const auto nodes = static_cast<double>(model.NodeCount());
        const std::int64_t items = model.EntityCount();
        bytes = static_cast<double>(all.bytes) / nodes;
        blocks = static_cast<double>(all.blocks) / nodes;
        bytesWithoutItems = static_cast<double>(all.bytes - items * one.bytes) / nodes;
        blocksWithoutItems = static_cast<double>(all.blocks - items) / nodes;
    }

    double bytes;
    double blocks;
    double bytesWithoutItems;
    double blocksWithoutItems;
};

template <typename Scene>
void addValue(const std::string& name, std::int64_t size, double Used<Scene>::*value) {
    addFigure(name, size, [value](std::int64_t of) { return once<Used<Scene>>(of).*value; });
}

template <typename Scene>
void addAll(const std::string& who, std::int64_t size) {
    using Of = Used<Scene>;
    addValue<Scene>("memory/" + who, size, &Of::bytes);
    addValue<Scene>("memory without items/" + who, size, &Of::bytesWithoutItems);
    addValue<Scene>("allocations/" + who, size, &Of::blocks);
    addValue<Scene>("allocations without items/" + who, size, &Of::blocksWithoutItems);
}

const Registered registered([] {
    for (const std::int64_t size : sizesOr({10'000, 100'000, 1'000'000})) {
        addAll<OurScene>("ours", size);
        addAll<PlainScene>("plain", size);
    }
});

}  // namespace
}  // namespace bench
