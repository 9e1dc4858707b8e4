#include "reading/part21/ExchangeText.h"

#include <gtest/gtest.h>

namespace kesview {
namespace {

TEST(ExchangeTextTest, PlainTextStaysAsItIs) {
    EXPECT_EQ(decodeExchangeText("abc 12"), "abc 12");
}

TEST(ExchangeTextTest, DoubledApostrophesAndBackslashesAreSingle) {
    EXPECT_EQ(decodeExchangeText(R"(it''s c:\\d)"), R"(it's c:\d)");
}

TEST(ExchangeTextTest, SelectsTheUpperHalfOfThePage) {
    EXPECT_EQ(decodeExchangeText(R"(Gr\S\vCe)"), "GröCe");
}

TEST(ExchangeTextTest, ReadsBytesInHexadecimal) {
    EXPECT_EQ(decodeExchangeText(R"(\X\D8 5)"), "Ø 5");
}

TEST(ExchangeTextTest, ReadsWideCharacters) {
    EXPECT_EQ(decodeExchangeText(R"(\X2\23002316\X0\!)"), "⌀⌖!");
}

TEST(ExchangeTextTest, ReadsPairsOfHalvesAndFourByteCharacters) {
    EXPECT_EQ(decodeExchangeText(R"(\X2\D83DDE00\X0\)"), "😀");
    EXPECT_EQ(decodeExchangeText(R"(\X4\0001F600\X0\)"), "😀");
}

TEST(ExchangeTextTest, ReadsLineBreaksAndSkipsFoldsAndPages) {
    EXPECT_EQ(decodeExchangeText(R"(a\N\b)"), "a\nb");
    EXPECT_EQ(decodeExchangeText("fol\r\nded"), "folded");
    EXPECT_EQ(decodeExchangeText(R"(\PA\x)"), "x");
}

TEST(ExchangeTextTest, KeepsUtf8AndTakesOtherBytesAsLatin1) {
    EXPECT_EQ(decodeExchangeText("Größe"), "Größe");
    EXPECT_EQ(decodeExchangeText("Gr\xF6\xDF"
                                 "e"),
              "Größe");
}

TEST(ExchangeTextTest, DamagedControlsStayAsTheyAreWritten) {
    EXPECT_EQ(decodeExchangeText(R"(\X2\23)"), R"(\X2\23)");
    EXPECT_EQ(decodeExchangeText(R"(\X2\ZZZZ\X0\)"), R"(\X2\ZZZZ\X0\)");
    EXPECT_EQ(decodeExchangeText(R"(end\)"), R"(end\)");
}

}  // namespace
}  // namespace kesview
