#include "core/OutOfMemory.h"

#include <KesVizCore/scene/IRenderingOptionsListener.h>
#include <KesVizCore/scene/RenderingOptions.h>

#include <gtest/gtest.h>

#include <new>

namespace KesVizCore {
namespace {

class Counter : public IRenderingOptionsListener {
public:
    void OnOptionsChange(RenderingOptions*) override { ++calls; }
    int calls = 0;
};

/// True when @p operation throws std::bad_alloc with its allocation @p failing failing.
template <typename Operation>
bool throwsBadAlloc(long failing, Operation operation) {
    OutOfMemory outOfMemory(failing);
    try {
        operation();
    } catch (const std::bad_alloc&) {
        return true;
    }
    return false;
}

TEST(RenderingOptionsOutOfMemoryTest, CreateDefaultAnswersNull) {
    const long allocations = FailEachAllocation([](long failing) {
        RenderingOptions* options = nullptr;
        bool failed = false;
        {
            OutOfMemory outOfMemory(failing);
            options = RenderingOptions::CreateDefault();
            failed = outOfMemory.HasFailed();
        }
        EXPECT_EQ(options == nullptr, failed) << "at allocation " << failing;
        delete options;
        return failed;
    });
    EXPECT_EQ(allocations, 1);
}

TEST(RenderingOptionsOutOfMemoryTest, AddListenerThrowsAndLeavesTheList) {
    RenderingOptions options;
    Counter listener;
    EXPECT_TRUE(throwsBadAlloc(1, [&] { options.AddListener(&listener); }));
    EXPECT_EQ(options.GetNumberOfListeners(nullptr), 0U);
}

TEST(RenderingOptionsOutOfMemoryTest, RemoveListenerNeedsNoMemory) {
    RenderingOptions options;
    Counter listener;
    options.AddListener(&listener);
    EXPECT_FALSE(throwsBadAlloc(1, [&] { options.RemoveListener(&listener); }));
    EXPECT_EQ(options.GetNumberOfListeners(nullptr), 0U);
}

TEST(RenderingOptionsOutOfMemoryTest, ASetterWithListenersThrowsAndKeepsTheOldValue) {
    RenderingOptions options;
    Counter listener;
    options.AddListener(&listener);
    for (const long failing : {1L, 2L}) {  // the copy, and the round over the listeners
        EXPECT_TRUE(throwsBadAlloc(failing, [&] { options.SetDisplayFaces(false); })) << failing;
        EXPECT_TRUE(options.GetDisplayFaces()) << failing;
    }
    EXPECT_EQ(listener.calls, 0);
    options.SetDisplayFaces(false);
    EXPECT_FALSE(options.GetDisplayFaces());
    EXPECT_EQ(listener.calls, 1);
}

// Unlike the others, the level is stored before the listeners are told.
TEST(RenderingOptionsOutOfMemoryTest, SetAntialiasLevelWithListenersThrowsAndKeepsTheNewLevel) {
    RenderingOptions options;
    Counter listener;
    options.AddListener(&listener);
    EXPECT_TRUE(throwsBadAlloc(1, [&] { options.SetAntialiasLevel(8); }));
    EXPECT_EQ(options.GetAntialiasLevel(), 8);
    EXPECT_EQ(listener.calls, 0);
}

TEST(RenderingOptionsOutOfMemoryTest, ASetterWithoutListenersNeedsNoMemory) {
    RenderingOptions options;
    EXPECT_FALSE(throwsBadAlloc(1, [&] {
        options.SetDisplayFaces(false);
        options.SetHighlightColor(RGBAColor::Red());
        options.SetAntialiasLevel(8);
    }));
    EXPECT_FALSE(options.GetDisplayFaces());
    EXPECT_EQ(options.GetAntialiasLevel(), 8);
}

}  // namespace
}  // namespace KesVizCore
