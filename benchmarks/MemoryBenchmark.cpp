/// @file
/// Memory of a scene that is built: bytes and blocks of malloc for each node, with the host's
/// geometry items and without them.

#include "support/Allocations.h"
#include "support/Bench.h"
#include "support/OurScene.h"
#include "support/PlainScene.h"

namespace bench {
namespace {

template <typename Scene>
Allocations keptByScene(const SceneModel& model) {
    const Allocations before = allocations();
    const auto scene = Scene::Built(model);
    return allocations() - before;
}

/// The same items without a scene. Several may share a block, so that one alone tells nothing.
template <typename Item>
Allocations keptByItems(std::int64_t count) {
    std::vector<std::unique_ptr<Item>> items;
    items.reserve(static_cast<std::size_t>(count));
    const Allocations before = allocations();
    for (std::int64_t id = 0; id < count; ++id) {
        items.push_back(std::make_unique<Item>(static_cast<std::uint64_t>(id)));
    }
    return allocations() - before;
}

/// What a scene keeps in use for each node.
template <typename Scene>
struct Used {
    explicit Used(std::int64_t size) {
        const SceneModel model(size);
        const Allocations all = keptByScene<Scene>(model);
        const Allocations items = keptByItems<typename Scene::GeometryItem>(model.EntityCount());
        const auto nodes = static_cast<double>(model.NodeCount());
        bytes = static_cast<double>(all.bytes) / nodes;
        blocks = static_cast<double>(all.blocks) / nodes;
        bytesWithoutItems = static_cast<double>((all - items).bytes) / nodes;
        blocksWithoutItems = static_cast<double>((all - items).blocks) / nodes;
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
