#include "core/OutOfMemory.h"

#include <KesVizCore/core/Pooled.h>

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <vector>

namespace KesVizCore {
namespace {

struct Small : Pooled {
    unsigned char bytes[56];
};

/// Each test runs with slabs and without.
class PooledOutOfMemoryTest : public testing::TestWithParam<bool> {
protected:
    PooledOutOfMemoryTest() { Pooled::UseSlabs(GetParam()); }
    ~PooledOutOfMemoryTest() override { Pooled::UseSlabs(false); }
};

TEST_P(PooledOutOfMemoryTest, AllMemoryGoesBackToTheHeap) {
    const long before = OutOfMemory::BlocksInUse();
    {
        std::vector<std::unique_ptr<Small>> objects(100'000);
        for (std::unique_ptr<Small>& object : objects) {
            object.reset(new Small);
        }
    }
    EXPECT_EQ(OutOfMemory::BlocksInUse(), before);
}

/// Makes objects until one cannot be had, which needs memory sooner or later.
template <typename Make>
std::vector<std::unique_ptr<Small>> makeUntilExhausted(const Make& make) {
    std::vector<std::unique_ptr<Small>> objects;
    objects.reserve(10'000);
    OutOfMemory outOfMemory(1);
    for (Small* made = make(); made != nullptr; made = make()) {
        objects.emplace_back(made);
    }
    return objects;
}

TEST_P(PooledOutOfMemoryTest, NewThrowsAndTheNextOneDoesNot) {
    const auto make = []() -> Small* {
        try {
            return new Small;
        } catch (const std::bad_alloc&) {
            return nullptr;
        }
    };
    const std::vector<std::unique_ptr<Small>> objects = makeUntilExhausted(make);
    EXPECT_LT(objects.size(), 10'000U);
    EXPECT_NE(std::unique_ptr<Small>(new Small), nullptr);
}

TEST_P(PooledOutOfMemoryTest, TheNothrowFormAnswersNull) {
    const std::vector<std::unique_ptr<Small>> objects =
        makeUntilExhausted([] { return new (std::nothrow) Small; });
    EXPECT_LT(objects.size(), 10'000U);
    EXPECT_NE(std::unique_ptr<Small>(new (std::nothrow) Small), nullptr);
}

TEST_P(PooledOutOfMemoryTest, ObjectsNeedFewBlocksInSlabs) {
    std::vector<std::unique_ptr<Small>> objects(10'000);
    const long before = OutOfMemory::BlocksInUse();
    for (std::unique_ptr<Small>& object : objects) {
        object.reset(new Small);
    }
    const long blocks = OutOfMemory::BlocksInUse() - before;
    EXPECT_LE(blocks, GetParam() ? 20 : 10'000);
    EXPECT_GE(blocks, GetParam() ? 1 : 10'000);
}

TEST_P(PooledOutOfMemoryTest, ObjectsGoBackWhereTheyCameFrom) {
    const long before = OutOfMemory::BlocksInUse();
    auto earlier = std::make_unique<Small>();
    Pooled::UseSlabs(!GetParam());
    auto later = std::make_unique<Small>();
    earlier.reset();
    later.reset();
    EXPECT_EQ(OutOfMemory::BlocksInUse(), before);
}

INSTANTIATE_TEST_SUITE_P(Storage, PooledOutOfMemoryTest, testing::Bool(),
                         [](const auto& slabs) { return slabs.param ? "Slabs" : "Heap"; });

}  // namespace
}  // namespace KesVizCore
