#include "loading/Load.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace kesview {
namespace {

// The right-hand sides are written as code points by hand: the compiler makes the wide text.
TEST(WideTextTest, WidensEveryLengthOfUtf8) {
    EXPECT_EQ(widen("Bolt M6"), L"Bolt M6");
    EXPECT_EQ(widen("\xC3\xA4"), L"\u00E4");
    EXPECT_EQ(widen("\xE2\x8C\x80 5.5"), L"\u2300 5.5");
    EXPECT_EQ(widen("\xF0\x9F\x94\xA9"), L"\U0001F529");
    EXPECT_EQ(widen(std::string("a\0b", 3)), std::wstring(L"a\0b", 3));
}

TEST(WideTextTest, TakesBadUtf8ByteByByte) {
    EXPECT_EQ(widen("\xE4 is Latin"), L"\u00E4 is Latin");
    EXPECT_EQ(widen("cut \xE2\x8C"), L"cut \u00E2\u008C");
    EXPECT_EQ(widen("\xC3("), L"\u00C3(");
    EXPECT_EQ(widen("\x80"), L"\u0080");
}

TEST(WideTextTest, TakesOverlongFormsSurrogatesAndTooLargeOnesByteByByte) {
    EXPECT_EQ(widen("\xC0\xAF"), L"\u00C0\u00AF");
    EXPECT_EQ(widen("\xE0\x80\xAF"), L"\u00E0\u0080\u00AF");
    EXPECT_EQ(widen("\xED\xA0\x80"), L"\u00ED\u00A0\u0080");
    EXPECT_EQ(widen("\xF4\x90\x80\x80"), L"\u00F4\u0090\u0080\u0080");
}

TEST(WideTextTest, NarrowsToUtf8) {
    EXPECT_EQ(narrow(L"\u2300 5.5 \u00B10.1"),
              "\xE2\x8C\x80 5.5 \xC2\xB1"
              "0.1");
    EXPECT_EQ(narrow(L"\U0001F529"), "\xF0\x9F\x94\xA9");
}

TEST(WideTextTest, NarrowsWhatIsNoCharacterToTheReplacementCharacter) {
    EXPECT_EQ(narrow(std::wstring(1, static_cast<wchar_t>(0xD800))), "\xEF\xBF\xBD");
    EXPECT_EQ(narrow(std::wstring(1, static_cast<wchar_t>(0x110000))), "\xEF\xBF\xBD");
}

TEST(WideTextTest, EveryTextOfCharactersComesBack) {
    std::mt19937 random(20240501);
    std::uniform_int_distribution<std::uint32_t> point(1, 0x10FFFF);
    std::wstring text;
    while (text.size() < 20000) {
        const std::uint32_t next = point(random);
        if (next < 0xD800 || next >= 0xE000) {
            text += static_cast<wchar_t>(next);
        }
    }
    EXPECT_EQ(widen(narrow(text)), text);
}

}  // namespace
}  // namespace kesview
