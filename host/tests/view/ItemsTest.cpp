#include "view/FillPolygon.h"
#include "view/ItemFactory.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

namespace kesview {
namespace {

using Item = std::unique_ptr<viz::AGeometryItem>;
using Corners = std::array<int, 3>;

float square[12] = {0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0};

TEST(ItemFactoryTest, TrianglesBorrowTheirArrays) {
    ItemFactory factory;
    int corners[6] = {0, 1, 2, 0, 2, 3};
    float normals[12] = {};
    const Item item(
        factory.CreateTriangleSet(7, square, normals, corners, 4, 4, 6, viz::IndexedTriangles));
    const Shape shape = shapeOf(*item);
    EXPECT_EQ(item->ID(), 7U);
    EXPECT_EQ(shape.points, square);
    EXPECT_EQ(shape.normals, normals);
    EXPECT_EQ(shape.corners, corners);
    EXPECT_EQ(shape.TriangleCount(), 2);
    EXPECT_EQ(static_cast<viz::AGeometryItemTriangleSet&>(*item).GetNumberOfTriangles(), 2);
}

TEST(ItemFactoryTest, AQuadSetKeepsTheCornersThatTheLibraryMakes) {
    ItemFactory factory;
    int quads[4] = {0, 1, 2, 3};
    const Item item(factory.CreateQuadSet(7, square, quads, 4, 4, nullptr, 0));
    quads[0] = 99;
    const Shape shape = shapeOf(*item);
    ASSERT_EQ(shape.TriangleCount(), 2);
    EXPECT_EQ(shape.Triangle(0), (Corners{0, 1, 2}));
    EXPECT_EQ(shape.Triangle(1), (Corners{0, 2, 3}));
    int corners[3] = {0, 1, 2};
    const Item next(
        factory.CreateTriangleSet(8, square, nullptr, corners, 4, 0, 3, viz::IndexedTriangles));
    EXPECT_EQ(shapeOf(*next).corners, corners) << "what follows is borrowed again";
}

TEST(ItemFactoryTest, StripsKeepTheirWindingAndFansTheirFirstPoint) {
    ItemFactory factory;
    const Item strip(
        factory.CreateTriangleSet(1, square, nullptr, nullptr, 4, 0, 0, viz::TriangleStrip));
    EXPECT_EQ(shapeOf(*strip).TriangleCount(), 2);
    EXPECT_EQ(shapeOf(*strip).Triangle(0), (Corners{0, 1, 2}));
    EXPECT_EQ(shapeOf(*strip).Triangle(1), (Corners{1, 3, 2}));
    int order[4] = {3, 2, 1, 0};
    const Item fan(factory.CreateTriangleSet(1, square, nullptr, order, 4, 0, 4, viz::TriangleFan));
    EXPECT_EQ(shapeOf(*fan).Triangle(0), (Corners{3, 2, 1}));
    EXPECT_EQ(shapeOf(*fan).Triangle(1), (Corners{3, 1, 0}));
}

TEST(ItemFactoryTest, RefusesWhatCannotBeDrawn) {
    ItemFactory factory;
    int outside[3] = {0, 1, 4};
    int negative[3] = {0, 1, -1};
    EXPECT_EQ(factory.CreateTriangleSet(1, nullptr, nullptr, nullptr, 3, 0, 0, viz::TriangleList),
              nullptr);
    EXPECT_EQ(
        factory.CreateTriangleSet(1, square, nullptr, outside, 4, 0, 3, viz::IndexedTriangles),
        nullptr);
    EXPECT_EQ(
        factory.CreateTriangleSet(1, square, nullptr, negative, 4, 0, 3, viz::IndexedTriangles),
        nullptr);
    EXPECT_EQ(factory.CreateVertex(1, nullptr), nullptr);
    EXPECT_EQ(factory.CreateText(1, L"", L"", nullptr, {}, 0), nullptr);
}

TEST(ItemFactoryTest, NormalsThatAreNotOneForEachPointAreIgnored) {
    ItemFactory factory;
    float normals[3] = {0, 0, 1};
    const Item item(
        factory.CreateTriangleSet(1, square, normals, nullptr, 4, 1, 0, viz::TriangleStrip));
    EXPECT_EQ(shapeOf(*item).normals, nullptr);
}

TEST(ItemFactoryTest, EveryKindHasItsPointsInItsExtents) {
    ItemFactory factory;
    const Item items[] = {Item(factory.CreatePolyline(1, square, 4)),
                          Item(factory.CreateFilledPolyline(1, square, 4)),
                          Item(factory.CreatePointCloud(1, 4, square)),
                          Item(factory.CreateVertex(1, square + 6))};
    for (const Item& item : items) {
        float box[6];
        ASSERT_TRUE(item->GetExtents(box));
        EXPECT_EQ(box[3], 1);
        EXPECT_EQ(box[4], 1);
        EXPECT_TRUE(item->IsVisible());
    }
    const Item empty(factory.CreatePolyline(1, nullptr, 4));
    float box[6] = {9, 9, 9, 9, 9, 9};
    EXPECT_FALSE(empty->GetExtents(box));
    EXPECT_EQ(box[0], 9);
}

TEST(ItemFactoryTest, ATextTakesUpARectangleOfItsLines) {
    ItemFactory factory;
    float position[3] = {5, 7, 1};
    const Item item(factory.CreateText(1, L"wide line\nx", L"font", position, {2, 1, 1}, 0));
    float box[6];
    ASSERT_TRUE(item->GetExtents(box));
    EXPECT_FLOAT_EQ(box[0], 5);
    EXPECT_FLOAT_EQ(box[4], 9) << "the head of the first line";
    EXPECT_LT(box[1], 6) << "the second line is below the first";
    EXPECT_GT(box[3], 5 + 9) << "nine letters are wider than nine half heights";
    EXPECT_EQ(shapeOf(*item).form, Shape::Form::Text);
    EXPECT_EQ(static_cast<TextItem&>(*item).Position(), (Vector{5, 7, 1}));
}

TEST(ItemFactoryTest, OnlyAColorThatWasSetCounts) {
    ItemFactory factory;
    const Item item(factory.CreatePolyline(1, square, 4));
    EXPECT_FALSE(hasOwnColor(*item));
    item->SetColor(viz::RGBAColor(1, 2, 3, 255));
    EXPECT_TRUE(hasOwnColor(*item));
}

double areaOf(const std::vector<float>& points, const std::vector<int>& corners) {
    double area = 0;
    for (std::size_t at = 0; at < corners.size(); at += 3) {
        const auto point = [&](std::size_t corner, std::size_t axis) {
            return static_cast<double>(
                points[3 * static_cast<std::size_t>(corners[at + corner]) + axis]);
        };
        area += ((point(1, 0) - point(0, 0)) * (point(2, 1) - point(0, 1)) -
                 (point(2, 0) - point(0, 0)) * (point(1, 1) - point(0, 1))) /
                2;
    }
    return area;
}

TEST(FillPolygonTest, FillsALineWithANotch) {
    // An L of area 3, whichever way round it runs.
    const std::vector<float> l = {0, 0, 0, 2, 0, 0, 2, 1, 0, 1, 1, 0, 1, 2, 0, 0, 2, 0};
    const std::vector<int> corners = fillPolygon(l.data(), 6);
    EXPECT_EQ(corners.size(), 12U);
    EXPECT_DOUBLE_EQ(areaOf(l, corners), 3);
    const std::vector<float> back = {0, 2, 0, 1, 2, 0, 1, 1, 0, 2, 1, 0, 2, 0, 0, 0, 0, 0};
    EXPECT_DOUBLE_EQ(areaOf(back, fillPolygon(back.data(), 6)), -3);
}

TEST(FillPolygonTest, FillsNothingWhereThereIsNoArea) {
    const std::vector<float> line = {0, 0, 0, 1, 0, 0, 2, 0, 0};
    EXPECT_TRUE(fillPolygon(line.data(), 3).empty());
    EXPECT_TRUE(fillPolygon(line.data(), 2).empty());
    EXPECT_TRUE(fillPolygon(nullptr, 3).empty());
}

}  // namespace
}  // namespace kesview
