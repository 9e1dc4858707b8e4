#include "reading/part21/FilledOutline.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace kesview {
namespace {

using Outline = std::vector<Vector>;

double areaOf(const PmiDrawing::Area& area) {
    double sum = 0;
    const auto point = [&](std::size_t i) {
        return area.points[static_cast<std::size_t>(area.triangles[i])];
    };
    for (std::size_t i = 0; i + 2 < area.triangles.size(); i += 3) {
        sum += lengthOf(cross(point(i + 1) - point(i), point(i + 2) - point(i))) / 2;
    }
    return sum;
}

Outline square(double low, double high, double x = 0) {
    return {{x, low, low}, {x, high, low}, {x, high, high}, {x, low, high}, {x, low, low}};
}

TEST(FilledOutlineTest, FillsAConcaveOutline) {
    const Outline corner = {{0, 0, 0}, {2, 0, 0}, {2, 1, 0}, {1, 1, 0}, {1, 2, 0}, {0, 2, 0}};
    const auto area = fillOutlines({corner});
    ASSERT_TRUE(area);
    EXPECT_EQ(area->triangles.size(), 12U);
    EXPECT_NEAR(areaOf(*area), 3, 1e-12);
}

TEST(FilledOutlineTest, DirectionDoesNotMatter) {
    Outline outline = square(0, 3, 7);
    std::reverse(outline.begin(), outline.end());
    const auto area = fillOutlines({outline});
    ASSERT_TRUE(area);
    EXPECT_NEAR(areaOf(*area), 9, 1e-12);
}

TEST(FilledOutlineTest, LeavesHolesOpenAndFillsIslandsInThem) {
    const auto area = fillOutlines({square(0, 10), square(1, 4), square(6, 9), square(2, 3)});
    ASSERT_TRUE(area);
    EXPECT_NEAR(areaOf(*area), 100 - 9 - 9 + 1, 1e-9);
}

TEST(FilledOutlineTest, WhatEnclosesNothingIsNone) {
    EXPECT_FALSE(fillOutlines({}));
    EXPECT_FALSE(fillOutlines({Outline{{0, 0, 0}, {1, 0, 0}}}));
    EXPECT_FALSE(fillOutlines({Outline{{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}}));
}

}  // namespace
}  // namespace kesview
