#include "core/OutOfMemory.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <new>
#include <thread>
#include <vector>

namespace KesVizCore {
namespace {

/// Called by name, the operators are not optimised away as new expressions may be.
struct Block {
    explicit Block(void* allocated) : address(allocated) {}
    ~Block() { ::operator delete(address); }
    Block(const Block&) = delete;
    Block& operator=(const Block&) = delete;
    void* address;
};

TEST(OutOfMemoryTest, ExactlyTheNumberedAllocationFails) {
    std::array<bool, 4> failed{};
    {
        OutOfMemory outOfMemory(3);
        for (bool& one : failed) {
            one = Block(::operator new(8, std::nothrow)).address == nullptr;
        }
    }
    EXPECT_EQ(failed, (std::array<bool, 4>{false, false, true, false}));
}

TEST(OutOfMemoryTest, NumberZeroFailsNothing) {
    OutOfMemory outOfMemory(0);
    const bool allocated = Block(::operator new(8, std::nothrow)).address != nullptr;
    EXPECT_TRUE(allocated);
    EXPECT_FALSE(outOfMemory.HasFailed());
}

TEST(OutOfMemoryTest, TheThrowingFormsFailByBadAlloc) {
    bool single = false;
    bool array = false;
    {
        OutOfMemory outOfMemory(1);
        try {
            ::operator delete(::operator new(8));
        } catch (const std::bad_alloc&) {
            single = true;
        }
    }
    {
        OutOfMemory outOfMemory(1);
        try {
            ::operator delete[](::operator new[](8));
        } catch (const std::bad_alloc&) {
            array = true;
        }
    }
    EXPECT_TRUE(single);
    EXPECT_TRUE(array);
}

TEST(OutOfMemoryTest, TheNothrowFormsFailByNull) {
    const void* single = this;
    const void* array = this;
    {
        OutOfMemory outOfMemory(1);
        single = ::operator new(8, std::nothrow);
    }
    {
        OutOfMemory outOfMemory(1);
        array = ::operator new[](8, std::nothrow);
    }
    EXPECT_EQ(single, nullptr);
    EXPECT_EQ(array, nullptr);
}

TEST(OutOfMemoryTest, TheEndOfTheScopeBringsTheHeapBack) {
    { OutOfMemory outOfMemory(1); }
    EXPECT_NE(Block(::operator new(8, std::nothrow)).address, nullptr);
}

TEST(OutOfMemoryTest, OtherThreadsGoOnAllocating) {
    std::atomic<bool> armed{false};
    std::atomic<bool> done{false};
    bool failed = false;
    std::thread other([&] {
        OutOfMemory outOfMemory(1);
        armed = true;
        while (!done) {
            std::this_thread::yield();
        }
        failed = Block(::operator new(8, std::nothrow)).address == nullptr;
    });
    while (!armed) {
        std::this_thread::yield();
    }
    const bool allocated = Block(::operator new(8, std::nothrow)).address != nullptr;
    done = true;
    other.join();
    EXPECT_TRUE(allocated);
    EXPECT_TRUE(failed);
}

TEST(OutOfMemoryTest, CountsWhatWasAskedForAndWhetherItFailed) {
    long before = -1;
    long after = -1;
    bool failedBefore = true;
    bool failedAfter = false;
    {
        OutOfMemory outOfMemory(2);
        Block one(::operator new(8, std::nothrow));
        before = outOfMemory.Allocations();
        failedBefore = outOfMemory.HasFailed();
        Block other(::operator new(8, std::nothrow));
        after = outOfMemory.Allocations();
        failedAfter = outOfMemory.HasFailed();
    }
    EXPECT_EQ(before, 1);
    EXPECT_FALSE(failedBefore);
    EXPECT_EQ(after, 2);
    EXPECT_TRUE(failedAfter);
}

TEST(OutOfMemoryTest, BlocksInUseGrowWithNewAndShrinkWithDelete) {
    const long before = OutOfMemory::BlocksInUse();
    void* const block = ::operator new(8);
    const long between = OutOfMemory::BlocksInUse();
    ::operator delete(block);
    EXPECT_EQ(between, before + 1);
    EXPECT_EQ(OutOfMemory::BlocksInUse(), before);
}

TEST(OutOfMemoryTest, FailEachAllocationGoesThroughAllOfThem) {
    std::vector<long> asked;
    const long allocations = FailEachAllocation([&](long failing) {
        bool failed = false;
        {
            OutOfMemory outOfMemory(failing);
            Block one(::operator new(8, std::nothrow));
            Block other(::operator new(8, std::nothrow));
            failed = outOfMemory.HasFailed();
        }
        asked.push_back(failing);
        return failed;
    });
    EXPECT_EQ(allocations, 2);
    EXPECT_EQ(asked, (std::vector<long>{1, 2, 3}));
}

}  // namespace
}  // namespace KesVizCore
