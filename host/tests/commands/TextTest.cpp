#include "commands/Text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace kesview {
namespace {

TEST(PlainTextTest, LettersOfAllScriptsStay) {
    EXPECT_EQ(plainText("Schraube \xC3\xA4 \xE8\x9E\xBA \xE2\x8C\x80 \xF0\x9F\x94\xA9"),
              "Schraube \xC3\xA4 \xE8\x9E\xBA \xE2\x8C\x80 \xF0\x9F\x94\xA9");
}

TEST(PlainTextTest, EscapeSequencesAreSpelledOut) {
    EXPECT_EQ(plainText("a\x1b[31mb\x07"), "a\\x1b[31mb\\x07");
    EXPECT_EQ(plainText(std::string("a\0b", 3)), "a\\x00b");
    EXPECT_EQ(plainText("del\x7f"), "del\\x7f");
}

TEST(PlainTextTest, ControlsOfTheUpperRangeAreSpelledOut) {
    EXPECT_EQ(plainText("\xC2\x9B[2J"), "\\u{9b}[2J");  // a one-letter escape of terminals
}

TEST(PlainTextTest, LinesStayOneLine) {
    EXPECT_EQ(plainText("a\nb\rc\td"), "a\\nb\\rc\\td");
    EXPECT_EQ(plainText("a\xE2\x80\xA8z"), "a\\u{2028}z");
}

TEST(PlainTextTest, ChangesOfDirectionAreSpelledOut) {
    EXPECT_EQ(plainText("gpj\xE2\x80\xAEstp"), "gpj\\u{202e}stp");
    EXPECT_EQ(plainText("\xE2\x81\xA6x"), "\\u{2066}x");
}

TEST(PlainTextTest, WhatIsNoUtf8IsSpelledOutByteByByte) {
    EXPECT_EQ(plainText("\xE4hm"), "\\xe4hm");                // Latin-1
    EXPECT_EQ(plainText("\xC0\xAF"), "\\xc0\\xaf");           // overlong slash
    EXPECT_EQ(plainText("\xED\xA0\x80"), "\\xed\\xa0\\x80");  // a surrogate
    EXPECT_EQ(plainText("end\xE2\x8C"), "end\\xe2\\x8c");
    EXPECT_EQ(plainText("\xF4\x90\x80\x80"), "\\xf4\\x90\\x80\\x80");  // beyond Unicode
}

TEST(LengthTextTest, ThreeDecimalsWithoutTrailingZeros) {
    EXPECT_EQ(lengthText(12.5), "12.5");
    EXPECT_EQ(lengthText(100), "100");
    EXPECT_EQ(lengthText(-0.0004999 * 3), "-0.001");
    EXPECT_EQ(lengthText(1.0 / 3), "0.333");
    EXPECT_EQ(lengthText(-0.0), "0");
    EXPECT_EQ(lengthText(0.99999), "1");
}

TEST(LengthTextTest, TinyAndHugeHaveAnExponent) {
    EXPECT_EQ(lengthText(0.00012), "0.00012");
    EXPECT_EQ(lengthText(1e-9), "1e-09");
    EXPECT_EQ(lengthText(2.82843e100), "2.828e+100");
}

TEST(LengthTextTest, WhatIsNoNumberIsUnknown) {
    EXPECT_EQ(lengthText(std::nan("")), "unknown");
    EXPECT_EQ(lengthText(std::numeric_limits<double>::infinity()), "unknown");
}

TEST(ColorTextTest, AlphaIsSaidWhereItIsNotOpaque) {
    EXPECT_EQ(colorText({255, 0, 16, 255}), "#ff0010");
    EXPECT_EQ(colorText({255, 0, 16, 128}), "#ff001080");
}

TEST(PaddingTest, CountsCharactersNotBytes) {
    EXPECT_EQ(padRight("\xC3\xA4", 3), "\xC3\xA4  ");
    EXPECT_EQ(padLeft("\xC3\xA4", 3), "  \xC3\xA4");
    EXPECT_EQ(padRight("long", 2), "long");
}

TEST(CountTextTest, OneIsSingular) {
    EXPECT_EQ(countText(1, "face", "faces"), "1 face");
    EXPECT_EQ(countText(0, "face", "faces"), "0 faces");
}

}  // namespace
}  // namespace kesview
