/// @file
/// What happens when memory runs out where the C library, not operator new, asks for it.

#include <KesVizCore/report/Utils.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>
#include <dlfcn.h>
#include <new>

namespace {

bool memoryIsExhausted = false;

}  // namespace

/// Stands in front of the C library's function of this name for the whole program.
extern "C" std::FILE* open_wmemstream(wchar_t** text, std::size_t* length) noexcept {
    using Function = std::FILE* (*)(wchar_t**, std::size_t*);
    static const auto real = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "open_wmemstream"));
    return memoryIsExhausted ? nullptr : real(text, length);
}

namespace KesVizCore {
namespace {

TEST(UtilsMemoryTest, SWprintfLThrowsBadAllocWithoutMemory) {
    memoryIsExhausted = true;
    EXPECT_THROW(Utils::SWprintfL(L"%d", 1), std::bad_alloc);
    memoryIsExhausted = false;
    EXPECT_EQ(Utils::SWprintfL(L"%d", 1), L"1");
}

}  // namespace
}  // namespace KesVizCore
