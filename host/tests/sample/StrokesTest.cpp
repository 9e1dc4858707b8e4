#include "sample/Strokes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

namespace kesview {
namespace {

/// The box around all strokes: least x, least y, greatest x, greatest y.
std::array<double, 4> box(const Strokes& strokes) {
    std::array<double, 4> result = {1e9, 1e9, -1e9, -1e9};
    for (const Polyline& line : strokes.Lines()) {
        for (const PlanePoint& point : line) {
            result[0] = std::min(result[0], point[0]);
            result[1] = std::min(result[1], point[1]);
            result[2] = std::max(result[2], point[0]);
            result[3] = std::max(result[3], point[1]);
        }
    }
    return result;
}

TEST(StrokesTest, ACapitalIsAsHighAsItsTextAndStandsOnItsStart) {
    Strokes strokes(3);
    EXPECT_DOUBLE_EQ(strokes.AddText(U"H", {10, 20}), 3);
    EXPECT_EQ(box(strokes), (std::array<double, 4>{10, 20, 12, 23}));
    EXPECT_EQ(strokes.Lines().size(), std::size_t(3));
}

TEST(StrokesTest, LettersFollowEachOther) {
    Strokes strokes(6);
    EXPECT_DOUBLE_EQ(strokes.AddText(U"L L", {0, 0}), 18);
    EXPECT_EQ(box(strokes), (std::array<double, 4>{0, 0, 16, 6}));
}

TEST(StrokesTest, ALetterWithoutStrokesIsRefused) {
    Strokes strokes(3);
    EXPECT_THROW(strokes.AddText(U"ß", {0, 0}), std::invalid_argument);
}

TEST(StrokesTest, AnArrowEndsInItsTip) {
    Strokes strokes(4);
    strokes.AddArrow({0, 0}, {10, 0});
    ASSERT_EQ(strokes.Lines().size(), std::size_t(2));
    EXPECT_EQ(strokes.Lines()[1][1], (PlanePoint{10, 0}));
    EXPECT_EQ(box(strokes)[2], 10);
}

TEST(StrokesTest, CellsStandSideBySideAroundTheirTexts) {
    Strokes strokes(4);
    const double width = strokes.AddCells({U"A", U"B"}, {1, 2});
    EXPECT_DOUBLE_EQ(width, 2 * (2 + 4 + 0.8));
    const std::array<double, 4> all = box(strokes);
    EXPECT_DOUBLE_EQ(all[0], 1);
    EXPECT_DOUBLE_EQ(all[1], 2);
    EXPECT_DOUBLE_EQ(all[2], 1 + width);
    EXPECT_DOUBLE_EQ(all[3], 10);
}

}  // namespace
}  // namespace kesview
