#include "core/OutOfMemory.h"

#include <KesVizCore/core/Pooled.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <random>
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

template <std::size_t size>
struct Sized : Pooled {
    unsigned char bytes[size];
};

/// How many blocks of the heap that many objects take.
template <std::size_t size>
long blocksOf(std::size_t count) {
    std::vector<std::unique_ptr<Sized<size>>> objects(count);
    const long before = OutOfMemory::BlocksInUse();
    for (std::unique_ptr<Sized<size>>& object : objects) {
        object.reset(new Sized<size>);
    }
    return OutOfMemory::BlocksInUse() - before;
}

TEST_P(PooledOutOfMemoryTest, ObjectsOfUpTo120BytesAreInSlabs) {
    const long expected = GetParam() ? 1 : 100;
    EXPECT_EQ(blocksOf<1>(100), expected);
    EXPECT_EQ(blocksOf<8>(100), expected);
    EXPECT_EQ(blocksOf<120>(100), expected);
    EXPECT_EQ(blocksOf<121>(100), 100);
}

// A size that no other test here uses, so that its first slab is the first of all.
TEST_P(PooledOutOfMemoryTest, SlabsAreAsLargeAsWhatIsInUse) {
    const long few = blocksOf<88>(5'000);
    const long many = blocksOf<88>(50'000);
    EXPECT_GE(few, GetParam() ? 3 : 5'000);
    EXPECT_LE(few, GetParam() ? 10 : 5'000);
    EXPECT_LE(many, GetParam() ? few + 5 : 50'000);
    EXPECT_EQ(blocksOf<88>(5'000), few);
}

TEST_P(PooledOutOfMemoryTest, PlacesAreTakenAgainWhicheverObjectsGo) {
    std::mt19937 random(1);
    const long atFirst = OutOfMemory::BlocksInUse();
    {
        std::vector<std::unique_ptr<Small>> objects(20'000);
        const auto makeWhatIsMissing = [&objects] {
            for (std::unique_ptr<Small>& object : objects) {
                object.reset(object == nullptr ? new Small : object.release());
            }
        };
        makeWhatIsMissing();
        const long whenFull = OutOfMemory::BlocksInUse();
        for (int round = 0; round < 10; ++round) {
            std::shuffle(objects.begin(), objects.end(), random);
            for (std::size_t place = 0; place < objects.size() / 2; ++place) {
                objects[place].reset();
            }
            makeWhatIsMissing();
            EXPECT_EQ(OutOfMemory::BlocksInUse(), whenFull);
        }
        std::shuffle(objects.begin(), objects.end(), random);
        while (!objects.empty()) {
            objects.pop_back();
        }
    }
    EXPECT_EQ(OutOfMemory::BlocksInUse(), atFirst);
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
