#include "reading/part21/ExchangePmi.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace kesview {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

const std::string common =
    "#1=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));"
    "#2=(GLOBAL_UNIT_ASSIGNED_CONTEXT((#1))REPRESENTATION_CONTEXT('',''));"
    "#3=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(0.2),#1);#4=SHAPE_ASPECT('','',#90,.T.);"
    "#5=COORDINATES_LIST('',2,((0.,0.,0.),(1.,0.,0.)));#6=TESSELLATED_CURVE_SET('',#5,((1,2)));"
    "#7=TESSELLATED_GEOMETRIC_SET('flatness',(#6));"
    "#8=TESSELLATED_ANNOTATION_OCCURRENCE('drawn',(),#7);#9=DRAUGHTING_CALLOUT('call',(#8));"
    "#10=DRAUGHTING_MODEL('',(#9),#2);";

const ExchangeAnnotation* find(const ExchangePmi& pmi, const std::string& key) {
    const auto found = std::find_if(pmi.annotations.begin(), pmi.annotations.end(),
                                    [&](const auto& a) { return a.annotation.key == key; });
    return found == pmi.annotations.end() ? nullptr : &*found;
}

ExchangePmi pmiOf(const std::string& text) {
    return readExchangePmi(ExchangeFile::FromText(common + text), 1);
}

TEST(ExchangePmiTest, ADrawingBelongsToTheRecordThatItPresents) {
    const ExchangePmi pmi = pmiOf(
        "#20=FLATNESS_TOLERANCE('','',#3,#4);"
        "#21=DRAUGHTING_MODEL_ITEM_ASSOCIATION('','',#20,#10,#9);");
    ASSERT_EQ(pmi.annotations.size(), 1U);
    const ExchangeAnnotation& only = pmi.annotations.front();
    EXPECT_EQ(only.annotation.key, "#20");
    EXPECT_EQ(only.annotation.name, "call");
    EXPECT_TRUE(only.annotation.semantic);
    EXPECT_TRUE(only.annotation.drawnInFile);
    EXPECT_EQ(only.drawing.lines.size(), 1U);
    EXPECT_THAT(pmi.findings, IsEmpty());
}

TEST(ExchangePmiTest, ADrawingWithoutARecordIsAnAnnotationNamedByItself) {
    const ExchangePmi pmi = pmiOf("");
    ASSERT_EQ(pmi.annotations.size(), 1U);
    EXPECT_EQ(pmi.annotations[0].annotation.key, "#9");
    EXPECT_EQ(pmi.annotations[0].annotation.kind, AnnotationKind::Tolerance);
    EXPECT_EQ(pmi.annotations[0].annotation.type, "flatness");
    EXPECT_FALSE(pmi.annotations[0].annotation.semantic);
}

TEST(ExchangePmiTest, OneDrawingOfSeveralRecordsIsDrawnOnce) {
    const ExchangePmi pmi = pmiOf(
        "#20=FLATNESS_TOLERANCE('','',#3,#4);#21=FLATNESS_TOLERANCE('','',#3,#4);"
        "#22=DRAUGHTING_MODEL_ITEM_ASSOCIATION('','',#20,#10,#9);"
        "#23=DRAUGHTING_MODEL_ITEM_ASSOCIATION('','',#21,#10,#9);");
    EXPECT_EQ(find(pmi, "#20")->drawing.lines.size(), 1U);
    EXPECT_TRUE(find(pmi, "#21")->drawing.IsEmpty());
    EXPECT_TRUE(find(pmi, "#21")->annotation.drawnInFile);
    EXPECT_THAT(find(pmi, "#21")->annotation.attributes, Contains(Pair("DrawnWith", "#20")));
}

TEST(ExchangePmiTest, TheLowerSegmentOfACompositeIsDrawnWithTheUpper) {
    const ExchangePmi pmi = pmiOf(
        "#20=FLATNESS_TOLERANCE('','',#3,#4);#21=FLATNESS_TOLERANCE('','',#3,#4);"
        "#22=DRAUGHTING_MODEL_ITEM_ASSOCIATION('','',#20,#10,#9);"
        "#23=GEOMETRIC_TOLERANCE_RELATIONSHIP('composite','',#20,#21);");
    EXPECT_TRUE(find(pmi, "#21")->annotation.drawnInFile);
    EXPECT_THAT(find(pmi, "#21")->annotation.attributes, Contains(Pair("DrawnWith", "#20")));
}

TEST(ExchangePmiTest, ADatumIsDrawnByItsFeatureUnlessAToleranceIsMeant) {
    const std::string datum =
        "#30=DATUM('',$,#90,.F.,'A');#31=DATUM_FEATURE('','',#90,.T.);"
        "#32=SHAPE_ASPECT_RELATIONSHIP('',$,#31,#30);"
        "#33=DRAUGHTING_MODEL_ITEM_ASSOCIATION('','',#31,#10,#9);";
    EXPECT_EQ(find(pmiOf(datum), "#30")->drawing.lines.size(), 1U);
    const ExchangePmi both = pmiOf(datum +
                                   "#20=FLATNESS_TOLERANCE('','',#3,#31);"
                                   "#21=DRAUGHTING_MODEL_ITEM_ASSOCIATION('','',#20,#10,#9);");
    EXPECT_TRUE(find(both, "#30")->drawing.IsEmpty());
    EXPECT_EQ(find(both, "#20")->drawing.lines.size(), 1U);
}

TEST(ExchangePmiTest, EqualDatumsOfOneFeatureAreOne) {
    const ExchangePmi pmi = pmiOf(
        "#30=DATUM('',$,#90,.F.,'A');#31=DATUM('',$,#90,.F.,'A');"
        "#32=DATUM('',$,#90,.F.,'B');#33=DATUM_FEATURE('','',#90,.T.);"
        "#34=SHAPE_ASPECT_RELATIONSHIP('',$,#33,#30);"
        "#35=SHAPE_ASPECT_RELATIONSHIP('',$,#33,#31);"
        "#36=GEOMETRIC_ITEM_SPECIFIC_USAGE('','',#33,#80,#70);"
        "#37=DATUM_SYSTEM('',$,#90,.F.,(#38));"
        "#38=DATUM_REFERENCE_COMPARTMENT('',$,#90,.F.,#31,$);"
        "#39=PARALLELISM_TOLERANCE('','',#3,#4,(#37));");
    EXPECT_NE(find(pmi, "#30"), nullptr);
    EXPECT_EQ(find(pmi, "#31"), nullptr);
    EXPECT_NE(find(pmi, "#32"), nullptr);
    EXPECT_THAT(find(pmi, "#39")->annotation.datums, ElementsAre("#30"));
    EXPECT_THAT(find(pmi, "#39")->annotation.attributes, Contains(Pair("DatumRefDatas", "#30")));
}

TEST(ExchangePmiTest, APropertysTextIsANote) {
    const ExchangePmi pmi = pmiOf(
        "#40=PROPERTY_DEFINITION('','',#4);#41=PROPERTY_DEFINITION_REPRESENTATION(#40,#42);"
        "#42=REPRESENTATION('',(#43),#2);"
        "#43=DESCRIPTIVE_REPRESENTATION_ITEM('','BREAK EDGES');"
        "#44=DRAUGHTING_MODEL_ITEM_ASSOCIATION('','',#40,#10,#9);");
    ASSERT_EQ(pmi.annotations.size(), 1U);
    EXPECT_EQ(pmi.annotations[0].annotation.kind, AnnotationKind::Note);
    EXPECT_EQ(pmi.annotations[0].annotation.text, "BREAK EDGES");
    EXPECT_TRUE(pmi.annotations[0].annotation.semantic);
}

TEST(ExchangePmiTest, ADrawingThatCannotBeReadIsToldOf) {
    const ExchangePmi pmi = pmiOf("#50=MYSTERY('x');#51=ANNOTATION_OCCURRENCE('note',(),#50);");
    EXPECT_TRUE(find(pmi, "#51")->drawing.IsEmpty());
    EXPECT_TRUE(find(pmi, "#51")->annotation.drawnInFile);
    ASSERT_EQ(pmi.findings.size(), 2U);
    EXPECT_EQ(pmi.findings[0].code, "pmi.drawing-incomplete");
    EXPECT_EQ(pmi.findings[1].code, "pmi.no-drawing");
    EXPECT_EQ(pmi.findings[1].where, "#51");
}

TEST(ExchangePmiTest, OfInvisibleLayersAnnotationsAreHidden) {
    const ExchangePmi pmi = pmiOf(
        "#60=PRESENTATION_LAYER_ASSIGNMENT('1','',(#8));"
        "#61=INVISIBILITY((#60));");
    EXPECT_TRUE(pmi.annotations[0].annotation.hidden);
    EXPECT_THAT(pmi.annotations[0].annotation.attributes, Contains(Pair("Hidden", "true")));
}

TEST(ExchangePmiTest, UnitsComeFromTheModelThatHoldsTheDrawing) {
    const ExchangePmi pmi =
        readExchangePmi(ExchangeFile::FromText(
                            "#1=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));"
                            "#2=(GLOBAL_UNIT_ASSIGNED_CONTEXT((#1))REPRESENTATION_CONTEXT('',''));"
                            "#3=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.CENTI.,.METRE.));"
                            "#4=(GLOBAL_UNIT_ASSIGNED_CONTEXT((#3))REPRESENTATION_CONTEXT('',''));"
                            "#5=CARTESIAN_POINT('',(1.,0.,0.));#6=CARTESIAN_POINT('',(2.,0.,0.));"
                            "#7=POLYLINE('',(#5,#6));#8=ANNOTATION_CURVE_OCCURRENCE('note',(),#7);"
                            "#9=DRAUGHTING_MODEL('',(#8),#4);"),
                        1);
    ASSERT_EQ(pmi.annotations.size(), 1U);
    EXPECT_EQ(pmi.annotations[0].drawing.lines.at(0).at(1), (Vector{20, 0, 0}));
}

TEST(ExchangePmiTest, AFileWithoutUnitsTakesTheGivenScale) {
    const ExchangePmi pmi =
        readExchangePmi(ExchangeFile::FromText(
                            "#5=CARTESIAN_POINT('',(1.,0.,0.));#6=CARTESIAN_POINT('',(2.,0.,0.));"
                            "#7=POLYLINE('',(#5,#6));#8=ANNOTATION_OCCURRENCE('note',(),#7);"),
                        1000);
    EXPECT_EQ(pmi.annotations.at(0).drawing.lines.at(0).at(1), (Vector{2000, 0, 0}));
}

TEST(ExchangePmiTest, CalloutsThatHoldEachOtherAreDrawnOnce) {
    std::string again;
    for (int i = 0; i < 50; ++i) {
        again += "#30,#31,";
    }
    const ExchangePmi pmi = pmiOf("#30=DRAUGHTING_CALLOUT('outer',(" + again +
                                  "#8));#31=DRAUGHTING_CALLOUT('inner',(" + again + "#30));");
    ASSERT_NE(find(pmi, "#30"), nullptr);
    EXPECT_EQ(find(pmi, "#30")->drawing.lines.size(), 1U);
}

TEST(ExchangePmiTest, AChainOfAspectsMayBeLong) {
    constexpr int length = 100'000;
    const auto number = [](int offset) { return "#" + std::to_string(1000 + offset); };
    std::string text = "#20=FLATNESS_TOLERANCE('','',#3," + number(0) + ");" +
                       "#21=GEOMETRIC_ITEM_SPECIFIC_USAGE('','',#1000000,$,#22);"
                       "#22=ADVANCED_FACE('',(),$,.T.);";
    for (int i = 0; i < length; ++i) {
        text += number(2 * i + 1) + "=SHAPE_ASPECT_RELATIONSHIP('',''," + number(2 * i) + "," +
                (i + 1 < length ? number(2 * i + 2) : std::string("#1000000")) + ");";
    }
    const ExchangePmi pmi = pmiOf(text);
    ASSERT_NE(find(pmi, "#20"), nullptr);
    EXPECT_THAT(find(pmi, "#20")->geometry, ElementsAre(22U));
}

}  // namespace
}  // namespace kesview
