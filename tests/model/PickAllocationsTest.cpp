#include "core/OutOfMemory.h"
#include "model/PickingHost.h"

#include <KesVizCore/model/VizContainer.h>

#include <gtest/gtest.h>

#include <cstdint>

namespace KesVizCore {
namespace {

using support::MeshLoader;
using support::newPickable;
using support::PickingAdapter;
using support::WireLoader;

/// The allocations of a pick that passes by that many meshes before it comes to the wire.
long allocationsOfAPick(std::uint64_t meshes) {
    VizContainer container(1);
    for (std::uint64_t mesh = 0; mesh < meshes; ++mesh) {
        container.AddMesh(newPickable<MeshLoader>({1, 2, 3, 4, mesh}));
    }
    auto* const wire = newPickable<WireLoader>({1, 2, 3, 4, meshes});
    container.AddWire(wire);
    PickingAdapter adapter({1, 2, 3, 4, meshes, 6, 7});
    const Ray ray;
    VizElement* out = nullptr;
    long allocations = -1;
    {
        const OutOfMemory counting(0);
        container.PickVisual(&adapter, ray, out);
        allocations = counting.Allocations();
    }
    EXPECT_EQ(out, wire);
    return allocations;
}

TEST(PickAllocationsTest, APickAllocatesNothingForTheElementsThatItPassesBy) {
    const long few = allocationsOfAPick(1);
    EXPECT_EQ(few, 1);  // the adapter's answer
    EXPECT_EQ(allocationsOfAPick(1000), few);
}

}  // namespace
}  // namespace KesVizCore
