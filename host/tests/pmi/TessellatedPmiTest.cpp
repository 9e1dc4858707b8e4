#include "reading/part21/PmiDrawing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kesview {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

const std::string square =
    "#1=COORDINATES_LIST('',4,((0.,0.,0.),(1.,0.,0.),(1.,1.,0.),(0.,1.,0.)));"
    "#2=COLOUR_RGB('',1.,0.5,0.);#3=CURVE_STYLE('',#9,$,#2);#4=PRESENTATION_STYLE_ASSIGNMENT((#3));"
    "#5=CARTESIAN_POINT('',(10.,0.,0.));#6=DIRECTION('',(0.,1.,0.));#7=DIRECTION('',(0.,0.,1.));"
    "#8=AXIS2_PLACEMENT_3D('',#5,#6,#7);";

PmiDrawing drawn(const std::string& text, double scale = 1) {
    const ExchangeFile file = ExchangeFile::FromText(square + text);
    PmiDrawing drawing;
    drawOccurrence(ExchangeGeometry(file, scale, 1), file, 100, drawing);
    return drawing;
}

std::string occurrenceOf(const std::string& children) {
    return children +
           "#99=TESSELLATED_GEOMETRIC_SET('',(#50));"
           "#100=TESSELLATED_ANNOTATION_OCCURRENCE('',(#4),#99);";
}

TEST(TessellatedPmiTest, CurveSetsBecomeLinesInMillimetres) {
    const PmiDrawing drawing =
        drawn(occurrenceOf("#50=TESSELLATED_CURVE_SET('',#1,((1,2,3),(3,4)));"), 25.4);
    ASSERT_EQ(drawing.lines.size(), 2U);
    EXPECT_THAT(drawing.lines[0],
                ElementsAre(Vector{0, 0, 0}, Vector{25.4, 0, 0}, Vector{25.4, 25.4, 0}));
    EXPECT_THAT(drawing.unread, IsEmpty());
}

TEST(TessellatedPmiTest, TakesTheColourOfItsStyle) {
    const PmiDrawing drawing = drawn(occurrenceOf("#50=TESSELLATED_CURVE_SET('',#1,((1,2)));"));
    EXPECT_EQ(drawing.color, (Color{255, 128, 0, 255}));
}

TEST(TessellatedPmiTest, StripsAlternateAndFansTurnAboutTheirFirstPoint) {
    const PmiDrawing strips =
        drawn(occurrenceOf("#50=COMPLEX_TRIANGULATED_SURFACE_SET('',#1,4,(),(),((1,2,4,3)),());"));
    ASSERT_EQ(strips.areas.size(), 1U);
    EXPECT_THAT(strips.areas[0].triangles, ElementsAre(0, 1, 3, 3, 1, 2));
    const PmiDrawing fans =
        drawn(occurrenceOf("#50=COMPLEX_TRIANGULATED_SURFACE_SET('',#1,4,(),(),(),((1,2,3,4)));"));
    EXPECT_THAT(fans.areas[0].triangles, ElementsAre(0, 1, 2, 0, 2, 3));
}

TEST(TessellatedPmiTest, FlatTrianglesAreLeftOut) {
    const PmiDrawing drawing = drawn(
        occurrenceOf("#50=COMPLEX_TRIANGULATED_SURFACE_SET('',#1,4,(),(),(),((1,2,3),(1,3,1)));"));
    EXPECT_EQ(drawing.areas[0].triangles.size(), 3U);
    EXPECT_THAT(drawing.unread, IsEmpty());
}

TEST(TessellatedPmiTest, PlainSetsAndFacesFollowTheirPointIndices) {
    const PmiDrawing set =
        drawn(occurrenceOf("#50=TRIANGULATED_SURFACE_SET('',#1,3,(),(4,3,2),((1,2,3)));"));
    EXPECT_THAT(set.areas[0].triangles, ElementsAre(3, 2, 1));
    const PmiDrawing face =
        drawn(occurrenceOf("#50=TRIANGULATED_FACE('',#1,3,(),$,(4,3,2),((1,2,3)));"));
    EXPECT_THAT(face.areas[0].triangles, ElementsAre(3, 2, 1));
}

TEST(TessellatedPmiTest, RepositionedSetsMoveWithAllTheyHold) {
    const PmiDrawing drawing = drawn(
        "#50=TESSELLATED_CURVE_SET('',#1,((1,2,4)));"
        "#99=(GEOMETRIC_REPRESENTATION_ITEM()REPOSITIONED_TESSELLATED_ITEM(#8)"
        "REPRESENTATION_ITEM('')TESSELLATED_GEOMETRIC_SET((#50))TESSELLATED_ITEM());"
        "#100=TESSELLATED_ANNOTATION_OCCURRENCE('',(#4),#99);");
    // x of the frame is the model's z, z its y, and so y its x
    EXPECT_THAT(drawing.lines.at(0),
                ElementsAre(Vector{10, 0, 0}, Vector{10, 0, 1}, Vector{11, 0, 0}));
}

TEST(TessellatedPmiTest, IndicesOutOfRangeAreCountedAndTheRestIsDrawn) {
    const PmiDrawing drawing = drawn(occurrenceOf(
        "#50=COMPLEX_TRIANGULATED_SURFACE_SET('',#1,4,(),(),(),((1,2,3),(1,2,5),(0,1,2)));"));
    EXPECT_EQ(drawing.areas[0].triangles.size(), 3U);
    EXPECT_THAT(drawing.unread, ElementsAre(Pair("triangles out of range", 2U)));
}

TEST(PmiDrawingTest, WhatHasAbsurdCoordinatesIsCountedAndTheRestIsDrawn) {
    const PmiDrawing drawing = drawn(
        "#50=POLYLINE('',(#5,#51));#51=CARTESIAN_POINT('',(1.,1.,1.));"
        "#52=POLYLINE('',(#51,#53,#5));#53=CARTESIAN_POINT('',(1.,-1E12,1.));"
        "#54=CIRCLE('',#8,1E308);#55=POLYLINE('',(#5,#56));#56=CARTESIAN_POINT('',(9E11,1.,1.));"
        "#99=GEOMETRIC_CURVE_SET('',(#52,#50,#54,#55));"
        "#100=ANNOTATION_CURVE_OCCURRENCE('',(#4),#99);");
    EXPECT_THAT(drawing.lines, ElementsAre(ElementsAre(Vector{10, 0, 0}, Vector{1, 1, 1}),
                                           ElementsAre(Vector{10, 0, 0}, Vector{9e11, 1, 1})));
    EXPECT_THAT(drawing.unread, ElementsAre(Pair("absurdly large coordinates", 2U)));
}

TEST(TessellatedPmiTest, AreasWithAbsurdCoordinatesAreCounted) {
    const PmiDrawing drawing =
        drawn(occurrenceOf("#20=COORDINATES_LIST('',3,((0.,0.,0.),(1.,0.,0.),(1E30,1.,0.)));"
                           "#50=COMPLEX_TRIANGULATED_SURFACE_SET('',#20,3,(),(),((1,2,3)),());"));
    EXPECT_TRUE(drawing.IsEmpty());
    EXPECT_THAT(drawing.unread, ElementsAre(Pair("absurdly large coordinates", 1U)));
}

TEST(TessellatedPmiTest, UnknownItemsAreCounted) {
    const PmiDrawing drawing = drawn(occurrenceOf("#50=CUBIC_BEZIER_TRIANGULATED_FACE('',#1);"));
    EXPECT_TRUE(drawing.IsEmpty());
    EXPECT_THAT(drawing.unread, ElementsAre(Pair("CUBIC_BEZIER_TRIANGULATED_FACE", 1U)));
}

TEST(PmiDrawingTest, CurveSetsOfOlderFilesAreDrawnToo) {
    const PmiDrawing drawing = drawn(
        "#50=POLYLINE('',(#5,#51));#51=CARTESIAN_POINT('',(1.,1.,1.));"
        "#52=CIRCLE('',#8,2.);#99=GEOMETRIC_CURVE_SET('',(#50,#52,#51));"
        "#100=ANNOTATION_CURVE_OCCURRENCE('',(#4),#99);");
    EXPECT_EQ(drawing.lines.size(), 2U);
    EXPECT_THAT(drawing.unread, IsEmpty());  // a loose point draws nothing and lacks nothing
}

TEST(PmiDrawingTest, FillsTheOutlinesOfFillAreas) {
    const PmiDrawing drawing = drawn(
        "#50=CIRCLE('',#8,2.);#98=ANNOTATION_FILL_AREA('',(#50));"
        "#100=ANNOTATION_FILL_AREA_OCCURRENCE('',(#4),#98,#5);");
    ASSERT_EQ(drawing.areas.size(), 1U);
    EXPECT_EQ(drawing.areas[0].triangles.size(), 3U * 46U);
}

TEST(PmiDrawingTest, TextLiteralsBecomePlacedTexts) {
    const PmiDrawing drawing = drawn(
        "#98=TEXT_LITERAL('','5 \\X2\\00B1\\X0\\ 1',#8,'',.RIGHT.,#5);"
        "#100=ANNOTATION_TEXT_OCCURRENCE('',(#4),#98);");
    ASSERT_EQ(drawing.texts.size(), 1U);
    EXPECT_EQ(drawing.texts[0].text, "5 ± 1");
    EXPECT_EQ(drawing.texts[0].position, (Vector{10, 0, 0}));
    EXPECT_EQ(drawing.texts[0].u, (Vector{0, 0, 1}));
}

TEST(PmiDrawingTest, TextsAtAbsurdPlacesAreCounted) {
    const PmiDrawing drawing = drawn(
        "#50=CARTESIAN_POINT('',(0.,0.,-1E300));#51=AXIS2_PLACEMENT_3D('',#50,#6,#7);"
        "#98=TEXT_LITERAL('','far',#51,'',.RIGHT.,#5);"
        "#100=ANNOTATION_TEXT_OCCURRENCE('',(#4),#98);");
    EXPECT_TRUE(drawing.IsEmpty());
    EXPECT_THAT(drawing.unread, ElementsAre(Pair("absurdly large coordinates", 1U)));
}

/// A list of that many references to one instance.
std::string listOf(const std::string& reference, int count) {
    std::string list = "(" + reference;
    for (int i = 1; i < count; ++i) {
        list += "," + reference;
    }
    return list + ")";
}

TEST(TessellatedPmiTest, SetsThatHoldThemselvesAreDrawnOnce) {
    const PmiDrawing drawing = drawn(
        "#50=TESSELLATED_CURVE_SET('',#1,((1,2)));#99=TESSELLATED_GEOMETRIC_SET('',(#50,#98));"
        "#98=TESSELLATED_GEOMETRIC_SET(''," +
        listOf("#98", 50) + ");#100=TESSELLATED_ANNOTATION_OCCURRENCE('',(#4),#99);");
    EXPECT_EQ(drawing.lines.size(), 1U);
    EXPECT_THAT(drawing.unread, IsEmpty());
}

TEST(TessellatedPmiTest, ASetAtTwoPlacesIsDrawnAtBoth) {
    const auto at = [](int number, int point) {
        const std::string frame = std::to_string(number + 1);
        return "#" + std::to_string(number) + "=(GEOMETRIC_REPRESENTATION_ITEM()" +
               "REPOSITIONED_TESSELLATED_ITEM(#" + frame + ")REPRESENTATION_ITEM('')" +
               "TESSELLATED_GEOMETRIC_SET((#50))TESSELLATED_ITEM());" + "#" + frame +
               "=AXIS2_PLACEMENT_3D('',#" + std::to_string(point) + ",$,$);";
    };
    const PmiDrawing drawing =
        drawn("#50=TESSELLATED_CURVE_SET('',#1,((1,2)));#60=CARTESIAN_POINT('',(0.,0.,1.));" +
              at(70, 5) + at(80, 60) +
              "#99=TESSELLATED_GEOMETRIC_SET('',(#70,#80,#70));"
              "#100=TESSELLATED_ANNOTATION_OCCURRENCE('',(#4),#99);");
    ASSERT_EQ(drawing.lines.size(), 2U);
    EXPECT_NE(drawing.lines[0], drawing.lines[1]);
}

TEST(TessellatedPmiTest, SetsThatHoldThemselvesAtEverNewPlacesAreGivenUp) {
    const PmiDrawing drawing = drawn(
        "#98=(GEOMETRIC_REPRESENTATION_ITEM()REPOSITIONED_TESSELLATED_ITEM(#97)"
        "REPRESENTATION_ITEM('')TESSELLATED_GEOMETRIC_SET(" +
        listOf("#98", 50) +
        ")TESSELLATED_ITEM());#96=CARTESIAN_POINT('',(0.,0.,1.));"
        "#97=AXIS2_PLACEMENT_3D('',#96,$,$);"
        "#100=TESSELLATED_ANNOTATION_OCCURRENCE('',(#4),#98);");
    EXPECT_TRUE(drawing.IsEmpty());
    EXPECT_THAT(drawing.unread, ElementsAre(Pair(testing::_, 1U)));
}

TEST(PmiDrawingTest, SetsThatHoldThemselvesAreDrawnOnce) {
    const PmiDrawing drawing = drawn(
        "#50=POLYLINE('',(#5,#5));#99=GEOMETRIC_CURVE_SET('',(#50,#98,#98));"
        "#98=GEOMETRIC_CURVE_SET(''," +
        listOf("#98", 50) + ");#100=ANNOTATION_CURVE_OCCURRENCE('',(#4),#99);");
    EXPECT_EQ(drawing.lines.size(), 1U);
    EXPECT_THAT(drawing.unread, IsEmpty());
}

}  // namespace
}  // namespace kesview
