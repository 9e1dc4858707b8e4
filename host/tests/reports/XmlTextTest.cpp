/// @file
#include "reports/XmlText.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <random>

namespace kesview {
namespace {

TEST(XmlTextTest, PlainAndForeignTextsStayAsTheyAre) {
    EXPECT_EQ(toXmlText(L""), "");
    EXPECT_EQ(toXmlText(L"a <b> & \"c\"\n\td"), "a <b> & \"c\"\n\td");
    EXPECT_EQ(toXmlText(L"⌀ 5.5 ±0.1 \U0001F529"), "⌀ 5.5 ±0.1 \U0001F529");
    EXPECT_EQ(toXmlText(L"C:\\users\\name"), "C:\\users\\name");
}

TEST(XmlTextTest, ForbiddenCharactersStandAsNumbers) {
    EXPECT_EQ(toXmlText(std::wstring(L"a\0b", 3)), "a\\u{0}b");
    EXPECT_EQ(toXmlText(L"\x01\x1F\r"), "\\u{1}\\u{1F}\\u{D}");
    EXPECT_EQ(toXmlText(L"\xFFFE\xFFFF"), "\\u{FFFE}\\u{FFFF}");
    EXPECT_EQ(toXmlText(std::wstring(1, static_cast<wchar_t>(0xD800))), "\\u{D800}");
    EXPECT_EQ(toXmlText(std::wstring(1, static_cast<wchar_t>(0x110000))), "\\u{110000}");
}

TEST(XmlTextTest, ATextThatLooksLikeANumberIsToldFromOne) {
    EXPECT_EQ(toXmlText(L"\\u{1}"), "\\u{5C}u{1}");
    EXPECT_EQ(fromXmlText("\\u{5C}u{1}"), L"\\u{1}");
}

TEST(XmlTextTest, BlanksAloneAreKeptInTextsAndPlainInValues) {
    EXPECT_EQ(toXmlText(L"  \n"), "\\u{20} \n");
    EXPECT_EQ(toXmlText(L"\n"), "\\u{A}");
    EXPECT_EQ(toXmlValue(L"  \n"), "  \n");
}

TEST(XmlTextTest, CommentsHoldNoTwoHyphensInARow) {
    EXPECT_EQ(toXmlComment(L"a - b"), "a - b");
    EXPECT_EQ(toXmlComment(L"a -- b"), "a -\\u{2D} b");
    EXPECT_EQ(toXmlComment(L"---"), "-\\u{2D}\\u{2D}");
    EXPECT_EQ(toXmlComment(L"end-"), "end\\u{2D}");
}

TEST(XmlTextTest, EveryTextComesBack) {
    constexpr unsigned seed = 815;
    std::mt19937 random(seed);
    const std::wstring alphabet = L"\\u{}5C20-- \n\r\x01\xFFFF⌀\U0001F529";
    std::uniform_int_distribution<std::size_t> letter(0, alphabet.size() - 1);
    std::uniform_int_distribution<int> length(0, 8);
    for (int trial = 0; trial < 20'000; ++trial) {
        std::wstring text;
        for (int left = length(random); left > 0; --left) {
            text += alphabet[letter(random)];
        }
        ASSERT_EQ(fromXmlText(toXmlText(text)), text) << toXmlText(text);
        ASSERT_EQ(fromXmlText(toXmlValue(text)), text) << toXmlValue(text);
        const std::string comment = toXmlComment(text);
        ASSERT_EQ(fromXmlText(comment), text) << comment;
        ASSERT_EQ(comment.find("--"), std::string::npos) << comment;
    }
}

TEST(XmlTextTest, NamesThatXmlAllowsStayAsTheyAre) {
    for (const char* name : {"Node", "_a", "a-b.c_d7", "Maß"}) {
        EXPECT_EQ(toXmlName(name), name);
    }
}

TEST(XmlTextTest, OtherNamesAreSpeltWithNumbersAndComeBack) {
    const std::pair<std::string, std::string> names[] = {
        {"Tolerance Type", "Tolerance_x20_Type"},
        {"7th", "_x37_th"},
        {"-a", "_x2D_a"},
        {"a_x", "a_x5F_x"},
        {"_x20_", "_x5F_x20_"},
        {"a:b", "a_x3A_b"},
        {"<&>", "_x3C__x26__x3E_"},
        {"a\xFFz", "a_xFF_z"},
        {"", "_x_"},
        {"\n", "_xA_"},
    };
    for (const auto& [name, written] : names) {
        EXPECT_EQ(toXmlName(name), written);
        EXPECT_EQ(fromXmlName(written), name);
    }
}

TEST(XmlTextTest, NumbersReadBackExactly) {
    EXPECT_EQ(toXmlNumber(0.1), "0.1");
    EXPECT_EQ(toXmlNumber(-0.0), "-0");
    EXPECT_EQ(toXmlNumber(1e300), "1e+300");
    EXPECT_EQ(toXmlNumber(std::numeric_limits<double>::infinity()), "inf");
    EXPECT_EQ(toXmlNumber(-std::numeric_limits<double>::infinity()), "-inf");
    EXPECT_EQ(toXmlNumber(std::numeric_limits<double>::quiet_NaN()), "nan");
    constexpr unsigned seed = 4712;
    std::mt19937_64 random(seed);
    for (int trial = 0; trial < 20'000; ++trial) {
        const std::uint64_t bits = random();
        double number = 0;
        std::memcpy(&number, &bits, sizeof number);
        if (number == number) {
            ASSERT_EQ(std::strtod(toXmlNumber(number).c_str(), nullptr), number);
        }
    }
}

}  // namespace
}  // namespace kesview
