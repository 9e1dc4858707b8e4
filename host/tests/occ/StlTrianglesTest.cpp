#include "reading/occ/StlTriangles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace kesview {
namespace {

constexpr StlCorner a = {0, 0, 0};
constexpr StlCorner b = {1, 0, 0};
constexpr StlCorner c = {0, 1, 0};
constexpr StlCorner d = {1, 1, 0};

TEST(StlTrianglesTest, CornersAtTheSamePlaceBecomeOnePoint) {
    Face face;
    fillFace({"", {{{a, b, c}}, {{c, b, d}}}}, face);
    EXPECT_THAT(face.points, testing::ElementsAre(0, 0, 0, 1, 0, 0, 0, 1, 0, 1, 1, 0));
    EXPECT_THAT(face.triangles, testing::ElementsAre(0, 1, 2, 2, 1, 3));
    EXPECT_TRUE(face.normals.empty());
}

TEST(StlTrianglesTest, BothZerosAreOnePlace) {
    Face face;
    constexpr StlCorner minus = {-0.0F, 0, -0.0F};
    fillFace({"", {{{a, b, c}}, {{minus, c, d}}}}, face);
    EXPECT_EQ(face.points.size(), 4U * 3);
}

TEST(StlTrianglesTest, TrianglesWithoutAreaAreLeftOutAndCounted) {
    Face face;
    constexpr StlCorner farOnLine = {2, 0, 0};
    const StlLosses losses = fillFace({"", {{{a, a, b}}, {{a, b, farOnLine}}, {{a, b, c}}}}, face);
    EXPECT_EQ(losses.degenerate, 2U);
    EXPECT_EQ(face.triangles.size(), 3U);
}

TEST(StlTrianglesTest, CoordinatesThatAreNoNumbersAreLeftOutAndCounted) {
    Face face;
    constexpr StlCorner nan = {std::numeric_limits<float>::quiet_NaN(), 0, 0};
    constexpr StlCorner huge = {1e30F, 0, 0};
    const StlLosses losses = fillFace({"", {{{a, b, nan}}, {{huge, b, c}}}}, face);
    EXPECT_EQ(losses.absurd, 2U);
    EXPECT_TRUE(face.points.empty());
}

}  // namespace
}  // namespace kesview
