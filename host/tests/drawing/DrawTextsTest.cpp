#include "drawing/Drawing.h"
#include "drawing/Pictures.h"
#include "drawing/vtk/FontFiles.h"
#include "drawing/vtk/Texts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <spdlog/sinks/ostream_sink.h>
#include <spdlog/spdlog.h>
#include <sstream>
#include <string>

namespace kesview {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

/// Catches the program's log while it exists.
class CaughtLog {
public:
    CaughtLog() : _before(spdlog::default_logger()) {
        auto sink = std::make_shared<spdlog::sinks::ostream_sink_mt>(_text);
        spdlog::set_default_logger(std::make_shared<spdlog::logger>("caught", sink));
    }
    ~CaughtLog() { spdlog::set_default_logger(_before); }
    CaughtLog(const CaughtLog&) = delete;
    CaughtLog& operator=(const CaughtLog&) = delete;

    std::string Text() const { return _text.str(); }

private:
    std::shared_ptr<spdlog::logger> _before;
    std::ostringstream _text;
};

PictureText textAt(const std::string& text, Vector position, double height) {
    return {black, {text, position, {1, 0, 0}, {0, 1, 0}, height}};
}

TEST(DrawTextsTest, ATextLeavesInkInItsBoxAndNowhereElse) {
    Picture picture = whiteGround();
    picture.texts.push_back(textAt("H", {-50, -10, 0}, 20));
    const Image image = makeDrawing()->Draw(picture);
    const int ink = countInk(image, 50, 40, 70, 60);
    EXPECT_GT(ink, 60);
    EXPECT_EQ(countInk(image), ink);
    EXPECT_GT(countInk(image, 50, 40, 70, 41), 0);  // a capital letter is as high as it says
    EXPECT_GT(countInk(image, 50, 59, 70, 60), 0);
}

TEST(DrawTextsTest, LettersFollowEachOtherAndLinesGoDown) {
    Picture picture = whiteGround();
    picture.texts.push_back(textAt("HH\nH", {-50, 10, 0}, 10));
    const Image image = makeDrawing()->Draw(picture);
    const int upper = countInk(image, 50, 30, 80, 40);
    const int lower = countInk(image, 50, 47, 80, 57);  // 1.7 heights below
    EXPECT_GT(lower, 15);
    EXPECT_NEAR(upper, 2 * lower, 0.2 * lower);
    EXPECT_EQ(countInk(image), upper + lower);
}

TEST(DrawTextsTest, ATextIsWrittenAlongItsDirections) {
    Picture picture = whiteGround();
    picture.texts.push_back({black, {"HHHH", {0, 0, 0}, {0, 1, 0}, {-1, 0, 0}, 8}});
    const Image image = makeDrawing()->Draw(picture);
    EXPECT_GT(countInk(image), 50);
    EXPECT_EQ(countInk(image), countInk(image, 92, 0, 100, 50));  // upwards, to the left
}

TEST(DrawTextsTest, TextsOfOneColorAreOneBatch) {
    Fonts fonts;
    const std::vector<PictureText> texts = {
        {red, {"A", {}, {1, 0, 0}, {0, 1, 0}, 1}},
        {blue, {"B", {}, {1, 0, 0}, {0, 1, 0}, 1}},
        {red, {"C", {}, {1, 0, 0}, {0, 1, 0}, 1}},
    };
    const std::vector<TriangleBatch> batches = makeTextTriangles(texts, fonts);
    ASSERT_EQ(batches.size(), std::size_t(2));
    EXPECT_EQ(batches[0].color, red);
    EXPECT_EQ(batches[1].color, blue);
    EXPECT_FALSE(batches[0].lit);
}

TEST(DrawTextsTest, AllSymbolsOfTolerancesHaveALetter) {
    const CaughtLog log;
    Fonts fonts;
    const std::u32string symbols =
        U"\u2300\u00B1\u00B0\u2316\u23E5\u23E4\u25CB\u232D\u2312\u2313\u27C2\u2220\u2225\u232F"
        U"\u25CE\u2197\u2330\u24C2\u24C1\u24CC\u24C8\u24BB\u24C5\u2334\u2335\u21A7\u25A1\u2332"
        U"\u2333\u00D7\u00B5\u2264\u2265";
    for (const char32_t symbol : symbols)
        EXPECT_THAT(fonts.Find(symbol).triangles, testing::Not(IsEmpty())) << unsigned(symbol);
    EXPECT_EQ(log.Text(), "");
}

TEST(DrawTextsTest, ALetterThatNoFontHasIsABoxAndIsToldOnce) {
    const CaughtLog log;
    Fonts fonts;
    const Glyph& glyph = fonts.Find(U'\U000E0F00');
    EXPECT_EQ(glyph.triangles.size(), std::size_t(3 * 8));  // a frame
    fonts.Find(U'\U000E0F00');
    const std::string said = log.Text();
    EXPECT_THAT(said, HasSubstr("U+E0F00"));
    EXPECT_EQ(said.find("U+E0F00"), said.rfind("U+E0F00"));
}

TEST(DrawTextsTest, BytesThatAreNoUtf8BecomeOneLetterEach) {
    Fonts fonts;
    const auto width = [&](const std::string& text) {
        return makeTextTriangles({textAt(text, {}, 1)}, fonts).at(0).triangles.size();
    };
    EXPECT_EQ(width("A\xFFH"), width("A\xEF\xBF\xBDH"));
}

TEST(DrawTextsTest, WithoutAnyFontTheLogTellsTheRemedy) {
    const CaughtLog log;
    setenv("KESVIEW_FONTS", "/nowhere", 1);
    Fonts fonts;
    unsetenv("KESVIEW_FONTS");
    EXPECT_THAT(log.Text(), HasSubstr("apt-get install fonts-osifont"));
    EXPECT_THAT(fonts.Find(U'A').triangles, testing::Not(IsEmpty()));
}

}  // namespace
}  // namespace kesview
