#include "drawing/vtk/Outline.h"

#include <gtest/gtest.h>

#include <cmath>

namespace kesview {
namespace {

double area(const FilledOutline& filled) {
    double sum = 0;
    for (std::size_t i = 0; i < filled.triangles.size(); i += 3) {
        const auto& a = filled.points.at(filled.triangles[i]);
        const auto& b = filled.points.at(filled.triangles[i + 1]);
        const auto& c = filled.points.at(filled.triangles[i + 2]);
        sum += std::abs((b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0])) / 2;
    }
    return sum;
}

Contour square(double left, double bottom, double size) {
    return {
        {left, bottom}, {left + size, bottom}, {left + size, bottom + size}, {left, bottom + size}};
}

Contour reversed(Contour contour) {
    return {contour.rbegin(), contour.rend()};
}

TEST(FillOutlineTest, ASquareIsFilled) {
    EXPECT_DOUBLE_EQ(area(fill({square(1, 2, 3)})), 9);
}

TEST(FillOutlineTest, AContourTheOtherWayIsAHole) {
    EXPECT_DOUBLE_EQ(area(fill({square(0, 0, 4), reversed(square(1, 1, 2))})), 12);
}

TEST(FillOutlineTest, OverlappingContoursAreFilledOnce) {
    EXPECT_DOUBLE_EQ(area(fill({square(0, 0, 4), square(2, 2, 4)})), 28);
}

TEST(FillOutlineTest, ACrossedContourIsFilledOnBothSides) {
    EXPECT_DOUBLE_EQ(area(fill({{{0, 0}, {2, 2}, {2, 0}, {0, 2}}})), 2);
}

TEST(FillOutlineTest, NothingIsFilledByNothing) {
    EXPECT_TRUE(fill({}).triangles.empty());
    EXPECT_TRUE(fill({{{0, 0}, {1, 1}}}).triangles.empty());
}

}  // namespace
}  // namespace kesview
