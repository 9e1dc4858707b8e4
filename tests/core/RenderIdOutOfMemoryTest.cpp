#include "core/OutOfMemory.h"

#include <KesVizCore/core/RenderId.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <new>
#include <vector>

namespace KesVizCore {
namespace {

using Values = std::vector<std::uint64_t>;

/// Fails each allocation of @p create in turn: the answer is then null and nothing leaks.
/// Returns how many allocations it makes when none fails.
template <typename Create>
long expectNullForEachFailure(Create create) {
    return FailEachAllocation([&](long failing) {
        const long before = OutOfMemory::BlocksInUse();
        RenderId* id = nullptr;
        bool failed = false;
        {
            OutOfMemory outOfMemory(failing);
            id = create();
            failed = outOfMemory.HasFailed();
        }
        EXPECT_EQ(id == nullptr, failed) << "at allocation " << failing;
        RenderId::DeleteRenderId(id);
        EXPECT_EQ(OutOfMemory::BlocksInUse(), before) << "at allocation " << failing;
        return failed;
    });
}

/// Runs @p edit with its first allocation failing: it throws and the id stays as it was.
template <typename Edit>
void expectUnchangedWithoutMemory(Edit edit) {
    const Values values(7, 5);
    RenderId id(values, View3D);
    const RenderId original = id;
    bool thrown = false;
    {
        OutOfMemory outOfMemory(1);
        try {
            edit(id);
        } catch (const std::bad_alloc&) {
            thrown = true;
        }
    }
    EXPECT_TRUE(thrown);
    EXPECT_TRUE(id == original) << id.ToString();
}

TEST(RenderIdOutOfMemoryTest, CreateRenderIdAnswersNull) {
    EXPECT_EQ(expectNullForEachFailure([] { return RenderId::CreateRenderId(); }), 1);
}

TEST(RenderIdOutOfMemoryTest, CreateRenderIdFromAVectorAnswersNull) {
    const Values values(1000, 5);
    EXPECT_EQ(expectNullForEachFailure([&] { return RenderId::CreateRenderId(values, View3D); }),
              2);  // the object, then its array
}

TEST(RenderIdOutOfMemoryTest, CreateRenderIdFromAPointerAnswersNull) {
    const Values values(1000, 5);
    EXPECT_EQ(expectNullForEachFailure(
                  [&] { return RenderId::CreateRenderId(values.data(), 1000, View3D); }),
              2);
}

TEST(RenderIdOutOfMemoryTest, DeleteRenderIdGivesBackAllItsMemory) {
    const long before = OutOfMemory::BlocksInUse();
    RenderId* id = RenderId::CreateRenderId(Values(1000, 5), View3D);
    EXPECT_EQ(OutOfMemory::BlocksInUse(), before + 2);
    RenderId::DeleteRenderId(id);
    EXPECT_EQ(OutOfMemory::BlocksInUse(), before);
}

TEST(RenderIdOutOfMemoryTest, DeleteRenderIdArrGivesBackAllItsMemory) {
    const long before = OutOfMemory::BlocksInUse();
    auto* ids = new RenderId[3];
    for (int place = 0; place < 3; ++place) {
        ids[place].SetLength(1000);
    }
    EXPECT_EQ(OutOfMemory::BlocksInUse(), before + 4);
    RenderId::DeleteRenderIdArr(ids);
    EXPECT_EQ(OutOfMemory::BlocksInUse(), before);
}

TEST(RenderIdOutOfMemoryTest, AddValueLeavesTheIdAsItWas) {
    RenderId id({5}, View3D);
    int added = 1;
    bool thrown = false;
    {
        OutOfMemory outOfMemory(1);
        try {
            for (; added < 1000; ++added) {  // until the array must grow
                id.AddValue(5);
            }
        } catch (const std::bad_alloc&) {
            thrown = true;
        }
    }
    EXPECT_TRUE(thrown);
    EXPECT_TRUE(id == RenderId(Values(static_cast<std::size_t>(added), 5), View3D));
}

TEST(RenderIdOutOfMemoryTest, SetValueLeavesTheIdAsItWas) {
    expectUnchangedWithoutMemory([](RenderId& id) { id.SetValue(5000, 1); });
}

TEST(RenderIdOutOfMemoryTest, TheLargestIndexIsRefusedForWantOfMemoryAlone) {
    expectUnchangedWithoutMemory(
        [](RenderId& id) { id.SetValue(std::numeric_limits<int>::max() - 1, 1); });
    expectUnchangedWithoutMemory(
        [](RenderId& id) { id.SetValue(std::numeric_limits<int>::max(), 1); });
}

TEST(RenderIdOutOfMemoryTest, SetLengthLeavesTheIdAsItWas) {
    expectUnchangedWithoutMemory([](RenderId& id) { id.SetLength(5000); });
}

TEST(RenderIdOutOfMemoryTest, AssignmentLeavesTheIdAsItWas) {
    const RenderId other(Values(5000, 7), ViewTree);
    expectUnchangedWithoutMemory([&other](RenderId& id) { id = other; });
}

TEST(RenderIdOutOfMemoryTest, HashAndComparisonNeedNoMemory) {
    const RenderId one(Values(1000, 5), View3D);
    const RenderId other(Values(1000, 5), View3D);
    long allocations = -1;
    bool equal = false;
    {
        OutOfMemory outOfMemory(0);
        equal = one == other && std::hash<RenderId>()(one) == std::hash<RenderId>()(other);
        allocations = outOfMemory.Allocations();
    }
    EXPECT_TRUE(equal);
    EXPECT_EQ(allocations, 0);
}

}  // namespace
}  // namespace KesVizCore
