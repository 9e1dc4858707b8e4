/// @file
/// What happens when memory runs out while a text is formatted.

#include "core/OutOfMemory.h"

#include <KesVizCore/report/Utils.h>

#include <gtest/gtest.h>

#include <new>
#include <string>

namespace KesVizCore {
namespace {

TEST(UtilsMemoryTest, SWprintfLThrowsBadAllocWithoutMemory) {
    Utils::SWprintfL(L"%d", 1);  // the first call makes the locale
    bool hasThrown = false;
    try {
        const OutOfMemory outOfMemory(1);
        Utils::SWprintfL(L"%100d", 1);
    } catch (const std::bad_alloc&) {
        hasThrown = true;
    }
    EXPECT_TRUE(hasThrown);
    EXPECT_EQ(Utils::SWprintfL(L"%100d", 1), std::wstring(99, L' ') + L"1");
}

}  // namespace
}  // namespace KesVizCore
