#include "core/Allocation.h"
#include "core/OutOfMemory.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>

namespace KesVizCore {
namespace {

TEST(NullWhenExhaustedTest, AnswersWhatWasMade) {
    int made = 5;
    EXPECT_EQ(nullWhenExhausted([&] { return &made; }), &made);
}

TEST(NullWhenExhaustedTest, AnswersNullWhenMemoryRunsOut) {
    std::string* made = nullptr;
    bool failed = false;
    {
        OutOfMemory outOfMemory(1);
        made = nullWhenExhausted([] { return new std::string(); });
        failed = outOfMemory.HasFailed();
    }
    EXPECT_TRUE(failed);
    EXPECT_EQ(made, nullptr);
}

TEST(NullWhenExhaustedTest, AnswersNullWithoutALeakWhenMemoryRunsOutHalfWay) {
    const std::string text(1000, 'x');  // the object, then its text
    const long before = OutOfMemory::BlocksInUse();
    std::string* made = nullptr;
    bool failed = false;
    {
        OutOfMemory outOfMemory(2);
        made = nullWhenExhausted([&] { return new std::string(text); });
        failed = outOfMemory.HasFailed();
    }
    EXPECT_TRUE(failed);
    EXPECT_EQ(made, nullptr);
    EXPECT_EQ(OutOfMemory::BlocksInUse(), before);
}

TEST(NullWhenExhaustedTest, AnImpossibleArrayLengthCountsAsExhausted) {
    const auto make = []() -> int* { throw std::bad_array_new_length(); };
    EXPECT_EQ(nullWhenExhausted(make), nullptr);
}

TEST(NullWhenExhaustedTest, LetsOtherErrorsPass) {
    const auto make = []() -> int* { throw std::length_error("not the heap's fault"); };
    EXPECT_THROW(nullWhenExhausted(make), std::length_error);
}

TEST(NullWhenExhaustedTest, TakesACallableThatCanOnlyBeMoved) {
    auto owned = std::make_unique<int>(5);
    int* const expected = owned.get();
    auto make = [held = std::move(owned)]() mutable { return held.release(); };
    const std::unique_ptr<int> made(nullWhenExhausted(std::move(make)));
    EXPECT_EQ(made.get(), expected);
}

}  // namespace
}  // namespace KesVizCore
