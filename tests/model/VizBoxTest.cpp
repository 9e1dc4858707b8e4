#include "math/Floats.h"

#include <KesVizCore/model/VizBox.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string>

namespace KesVizCore {
namespace {

using Corner = std::array<double, 3>;

constexpr double kDoubleNaN = std::numeric_limits<double>::quiet_NaN();

VizBox boxOf(const Corner& low, const Corner& high) {
    return VizBox(low.data(), high.data());
}

/// What one of the three operations below writes, and nothing behind it.
Corner writtenBy(const VizBox& box, void (VizBox::*get)(double*) const) {
    double out[4] = {-99.0, -99.0, -99.0, -99.0};
    (box.*get)(out);
    EXPECT_EQ(out[3], -99.0);
    return {out[0], out[1], out[2]};
}

Corner lowOf(const VizBox& box) {
    return writtenBy(box, &VizBox::GetLow);
}

Corner highOf(const VizBox& box) {
    return writtenBy(box, &VizBox::GetHigh);
}

Corner centerOf(const VizBox& box) {
    return writtenBy(box, &VizBox::GetCenter);
}

void expectBox(const VizBox& box, const Corner& low, const Corner& high) {
    EXPECT_FALSE(box.IsEmpty());
    EXPECT_EQ(lowOf(box), low);
    EXPECT_EQ(highOf(box), high);
}

TEST(VizBoxTest, IsEmptyWithCornersAtTheOriginByDefault) {
    const VizBox box;
    EXPECT_TRUE(box.IsEmpty());
    EXPECT_EQ(lowOf(box), (Corner{0.0, 0.0, 0.0}));
    EXPECT_EQ(highOf(box), (Corner{0.0, 0.0, 0.0}));
}

TEST(VizBoxTest, CornersMakeItNonEmpty) {
    expectBox(boxOf({1.0, 2.0, 3.0}, {4.0, 5.0, 6.0}), {1.0, 2.0, 3.0}, {4.0, 5.0, 6.0});
    expectBox(boxOf({0.0, 0.0, 0.0}, {0.0, 0.0, 0.0}), {0.0, 0.0, 0.0}, {0.0, 0.0, 0.0});
}

TEST(VizBoxTest, CornersAreNotChecked) {
    expectBox(boxOf({4.0, 5.0, 6.0}, {1.0, 2.0, 3.0}), {4.0, 5.0, 6.0}, {1.0, 2.0, 3.0});
}

TEST(VizBoxTest, CornersAreCopied) {
    Corner low = {1.0, 2.0, 3.0};
    Corner high = {4.0, 5.0, 6.0};
    const VizBox box = boxOf(low, high);
    low.fill(0.0);
    high.fill(0.0);
    expectBox(box, {1.0, 2.0, 3.0}, {4.0, 5.0, 6.0});
}

TEST(VizBoxTest, CopiesAreWholeCopies) {
    const VizBox box = boxOf({1.0, 2.0, 3.0}, {4.0, 5.0, 6.0});
    VizBox copy(box);
    expectBox(copy, {1.0, 2.0, 3.0}, {4.0, 5.0, 6.0});
    copy = VizBox();
    EXPECT_TRUE(copy.IsEmpty());
    EXPECT_EQ(highOf(copy), (Corner{0.0, 0.0, 0.0}));
    expectBox(box, {1.0, 2.0, 3.0}, {4.0, 5.0, 6.0});
}

TEST(VizBoxTest, CenterIsHalfwayBetweenTheCorners) {
    EXPECT_EQ(centerOf(boxOf({1.0, 2.0, -3.0}, {4.0, 6.0, 3.0})), (Corner{2.5, 4.0, 0.0}));
}

TEST(VizBoxTest, CenterOfAnEmptyBoxIsTheOrigin) {
    EXPECT_EQ(centerOf(VizBox()), (Corner{0.0, 0.0, 0.0}));
}

TEST(VizBoxTest, CenterIsHalfTheSum) {
    // The sum comes first, and overflows.
    const double large = std::numeric_limits<double>::max();
    const Corner center = centerOf(boxOf({large, 0.0, 0.0}, {large, 1e-320, 0.0}));
    EXPECT_EQ(center[0], std::numeric_limits<double>::infinity());
    EXPECT_EQ(center[1], 0.5 * 1e-320);
}

TEST(VizBoxTest, AddingAPointToAnEmptyBoxMakesThatPoint) {
    VizBox box;
    const Corner point = {1.0, -2.0, 3.0};
    box.Add(point.data());
    expectBox(box, point, point);
}

TEST(VizBoxTest, AddingTheOriginToAnEmptyBoxMakesItNonEmpty) {
    VizBox box;
    const Corner origin = {0.0, 0.0, 0.0};
    box.Add(origin.data());
    EXPECT_FALSE(box.IsEmpty());
}

TEST(VizBoxTest, AddingAPointWidensEachAxisByItself) {
    VizBox box = boxOf({0.0, 0.0, 0.0}, {1.0, 1.0, 1.0});
    const Corner point = {-1.0, 0.5, 2.0};
    box.Add(point.data());
    expectBox(box, {-1.0, 0.0, 0.0}, {1.0, 1.0, 2.0});
}

TEST(VizBoxTest, AddingAPointInsideOrOnTheSurfaceChangesNothing) {
    for (const double place : {0.0, 0.25, 1.0}) {
        VizBox box = boxOf({0.0, 0.0, 0.0}, {1.0, 1.0, 1.0});
        const Corner point = {place, 0.5, 1.0 - place};
        box.Add(point.data());
        expectBox(box, {0.0, 0.0, 0.0}, {1.0, 1.0, 1.0});
    }
}

TEST(VizBoxTest, AnInvertedAxisIsWidenedOnlyBeyondBothCorners) {
    struct Case {
        double Added;
        double Low;
        double High;
    };
    // The low corner is 5, the high one 1.
    for (const Case& expected : {Case{0.0, 0.0, 1.0},     // below both: the low corner moves
                                 Case{1.0, 5.0, 1.0},     // on the high corner
                                 Case{3.0, 5.0, 1.0},     // below low and above high
                                 Case{5.0, 5.0, 1.0},     // on the low corner
                                 Case{7.0, 5.0, 7.0}}) {  // above both: the high corner moves
        SCOPED_TRACE(expected.Added);
        VizBox box = boxOf({5.0, 5.0, 5.0}, {1.0, 1.0, 1.0});
        const Corner point = {expected.Added, expected.Added, expected.Added};
        box.Add(point.data());
        expectBox(box, {expected.Low, expected.Low, expected.Low},
                  {expected.High, expected.High, expected.High});
    }
}

TEST(VizBoxTest, AddingANaNChangesNothing) {
    VizBox box = boxOf({0.0, 0.0, 0.0}, {1.0, 1.0, 1.0});
    const Corner point = {kDoubleNaN, 2.0, kDoubleNaN};
    box.Add(point.data());
    expectBox(box, {0.0, 0.0, 0.0}, {1.0, 2.0, 1.0});
}

TEST(VizBoxTest, ACornerThatIsNaNStays) {
    VizBox box = boxOf({kDoubleNaN, 0.0, 0.0}, {1.0, 1.0, 1.0});
    for (const double place : {-5.0, 5.0}) {
        const Corner point = {place, 0.0, 0.0};
        box.Add(point.data());
        EXPECT_TRUE(std::isnan(lowOf(box)[0]));
        EXPECT_EQ(highOf(box)[0], 1.0);  // since the point is not above both
    }
}

TEST(VizBoxTest, AddingAnEmptyBoxChangesNothing) {
    VizBox box = boxOf({1.0, 1.0, 1.0}, {2.0, 2.0, 2.0});
    box.Add(VizBox());
    expectBox(box, {1.0, 1.0, 1.0}, {2.0, 2.0, 2.0});
    VizBox empty;
    empty.Add(VizBox());
    EXPECT_TRUE(empty.IsEmpty());
}

TEST(VizBoxTest, AddingToAnEmptyBoxCopiesTheOther) {
    VizBox box;
    box.Add(boxOf({4.0, 5.0, 6.0}, {1.0, 2.0, 3.0}));  // not sorted on the way
    expectBox(box, {4.0, 5.0, 6.0}, {1.0, 2.0, 3.0});
}

TEST(VizBoxTest, AddingABoxAddsItsCorners) {
    VizBox box = boxOf({0.0, 0.0, 0.0}, {1.0, 1.0, 1.0});
    box.Add(boxOf({-1.0, 0.5, 0.5}, {0.5, 3.0, 0.75}));
    expectBox(box, {-1.0, 0.0, 0.0}, {1.0, 3.0, 1.0});
}

TEST(VizBoxTest, AddingABoxAddsTheLowCornerFirst) {
    // Low 5, high 1. On x, 0 moves the low corner and then 3 lies above both and moves the high
    // one. On y, 3 lies between them and changes nothing before 0 moves the low corner.
    VizBox box = boxOf({5.0, 5.0, 5.0}, {1.0, 1.0, 1.0});
    box.Add(boxOf({0.0, 3.0, 0.0}, {3.0, 0.0, 3.0}));
    expectBox(box, {0.0, 0.0, 0.0}, {3.0, 1.0, 3.0});
}

TEST(VizBoxTest, AddingABoxToItselfChangesNothing) {
    VizBox box = boxOf({1.0, 2.0, 3.0}, {4.0, 5.0, 6.0});
    box.Add(box);
    expectBox(box, {1.0, 2.0, 3.0}, {4.0, 5.0, 6.0});
}

TEST(VizBoxTest, HoldsExactlyTheRangeOfRandomPoints) {
    SeededNumbers numbers(51);
    for (int round = 0; round < 200; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        VizBox box;
        Corner low{};
        Corner high{};
        const int count = 1 + round % 7;
        for (int point = 0; point < count; ++point) {
            Corner added{};
            for (std::size_t axis = 0; axis < 3; ++axis) {
                added[axis] = numbers.Between(-10.0, 10.0);
                low[axis] = point == 0 ? added[axis] : std::min(low[axis], added[axis]);
                high[axis] = point == 0 ? added[axis] : std::max(high[axis], added[axis]);
            }
            box.Add(added.data());
        }
        expectBox(box, low, high);
    }
}

TEST(VizBoxTest, ScaleMultipliesBothCornersAboutTheOrigin) {
    VizBox box = boxOf({1.0, 1.0, 1.0}, {2.0, 2.0, 2.0});
    box.Scale(2.0);
    expectBox(box, {2.0, 2.0, 2.0}, {4.0, 4.0, 4.0});  // about its centre it would be 0.5..2.5
    box = boxOf({-1.0, 2.0, -3.0}, {4.0, 5.0, 6.0});
    box.Scale(0.5);
    expectBox(box, {-0.5, 1.0, -1.5}, {2.0, 2.5, 3.0});
}

TEST(VizBoxTest, ScaleByAnythingNotAboveZeroChangesNothing) {
    for (const double factor :
         {0.0, -0.0, -2.0, -1e-300, kDoubleNaN, -std::numeric_limits<double>::infinity()}) {
        SCOPED_TRACE(factor);
        VizBox box = boxOf({1.0, 2.0, 3.0}, {4.0, 5.0, 6.0});
        box.Scale(factor);
        expectBox(box, {1.0, 2.0, 3.0}, {4.0, 5.0, 6.0});
    }
}

TEST(VizBoxTest, ScaleByTheSmallestNumberAboveZeroCounts) {
    VizBox box = boxOf({1.0, 2.0, 3.0}, {4.0, 5.0, 6.0});
    const double smallest = std::numeric_limits<double>::denorm_min();
    box.Scale(smallest);
    expectBox(box, {smallest, 2.0 * smallest, 3.0 * smallest},
              {4.0 * smallest, 5.0 * smallest, 6.0 * smallest});
}

TEST(VizBoxTest, ScaleLeavesAnEmptyBoxEmpty) {
    VizBox box;
    box.Scale(2.0);
    EXPECT_TRUE(box.IsEmpty());
    EXPECT_EQ(highOf(box), (Corner{0.0, 0.0, 0.0}));
}

}  // namespace
}  // namespace KesVizCore
