#include "reading/part21/DimensionRecords.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kesview {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Key;
using testing::Not;
using testing::Pair;

const std::string units =
    "#1=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));"
    "#2=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(25.4),#1);"
    "#3=(CONVERSION_BASED_UNIT('INCH',#2)LENGTH_UNIT()NAMED_UNIT(#9));"
    "#4=(NAMED_UNIT(*)PLANE_ANGLE_UNIT()SI_UNIT($,.RADIAN.));"
    "#20=DIMENSIONAL_SIZE(#30,'diameter');"
    "#21=DIMENSIONAL_CHARACTERISTIC_REPRESENTATION(#20,#22);";

PmiRecord onlyRecord(const std::string& text) {
    const auto records = readDimensions(ExchangeFile::FromText(units + text));
    EXPECT_EQ(records.size(), 1U);
    return records.empty() ? PmiRecord() : records.front();
}

std::string measure(int number, const char* name, const char* value, const char* unit = "#1",
                    const char* qualifiers = "") {
    return "#" + std::to_string(number) +
           "=(LENGTH_MEASURE_WITH_UNIT()MEASURE_REPRESENTATION_ITEM()MEASURE_WITH_UNIT("
           "LENGTH_MEASURE(" +
           value + ")," + unit + ")" + qualifiers + "REPRESENTATION_ITEM('" + name + "'));";
}

TEST(DimensionRecordsTest, AValueWithDeviationsGivesItsLimits) {
    const PmiRecord record =
        onlyRecord(measure(23, "nominal value", "5.5") +
                   "#22=SHAPE_DIMENSION_REPRESENTATION('',(#23),#9);"
                   "#24=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(-0.1),#1);"
                   "#25=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(0.1),#1);"
                   "#26=TOLERANCE_VALUE(#24,#25);#27=PLUS_MINUS_TOLERANCE(#26,#20);");
    EXPECT_EQ(record.text, "⌀ 5.5 ±0.1");
    EXPECT_EQ(record.type, "diameter");
    EXPECT_EQ(record.typeCode, 15);
    EXPECT_THAT(record.targets, ElementsAre(30U));
    EXPECT_THAT(record.attributes,
                ElementsAre(Pair("LowerVal", "5.4"), Pair("MainType", "Dimension"),
                            Pair("SubType", "diameter"), Pair("Tolerance Type", "plus-minus"),
                            Pair("UpperVal", "5.6"), Pair("Value", "5.5")));
}

TEST(DimensionRecordsTest, AttributesAreInMillimetresAndTheTextAsWritten) {
    const PmiRecord record = onlyRecord(
        measure(23, "nominal value", "0.25", "#3", "QUALIFIED_REPRESENTATION_ITEM((#28))") +
        "#28=VALUE_FORMAT_TYPE_QUALIFIER('NR2 "
        "1.3');#22=SHAPE_DIMENSION_REPRESENTATION('',(#23),#9);"
        "#24=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(-0.0),#3);"
        "#25=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(0.003),#3);"
        "#26=TOLERANCE_VALUE(#24,#25);#27=PLUS_MINUS_TOLERANCE(#26,#20);");
    EXPECT_EQ(record.text, "⌀ 0.250 +0.003 0.000 in");
    EXPECT_THAT(record.attributes, Contains(Pair("Value", "6.35")));
    EXPECT_THAT(record.attributes, Contains(Pair("UpperVal", "6.4262")));
    EXPECT_THAT(record.attributes, Contains(Pair("Precision", "3")));
}

TEST(DimensionRecordsTest, LimitsStandForThemselves) {
    const PmiRecord record =
        onlyRecord(measure(23, "lower limit", "1.5") + measure(24, "upper limit", "2") +
                   "#22=SHAPE_DIMENSION_REPRESENTATION('',(#23,#24),#9);");
    EXPECT_EQ(record.text, "⌀ 1.5 – 2");
    EXPECT_THAT(record.attributes, Contains(Pair("Tolerance Type", "limits")));
    EXPECT_THAT(record.attributes, Contains(Pair("LowerVal", "1.5")));
}

TEST(DimensionRecordsTest, BasicAndReferenceValuesAndFitsAreMarked) {
    const std::string nominal = measure(23, "nominal value", "8");
    EXPECT_EQ(onlyRecord(nominal + "#24=DESCRIPTIVE_REPRESENTATION_ITEM('dimensional note',"
                                   "'theoretical');"
                                   "#22=SHAPE_DIMENSION_REPRESENTATION('',(#23,#24),#9);")
                  .text,
              "[⌀ 8]");
    EXPECT_EQ(onlyRecord(nominal + "#24=DESCRIPTIVE_REPRESENTATION_ITEM('x','auxiliary');"
                                   "#22=SHAPE_DIMENSION_REPRESENTATION('',(#23,#24),#9);")
                  .text,
              "(⌀ 8)");
    EXPECT_EQ(onlyRecord(nominal + "#22=SHAPE_DIMENSION_REPRESENTATION('',(#23),#9);"
                                   "#26=LIMITS_AND_FITS('H','hole','7','');"
                                   "#27=PLUS_MINUS_TOLERANCE(#26,#20);")
                  .text,
              "⌀ 8 H7");
}

TEST(DimensionRecordsTest, AQualifiedValueSaysOfWhatItIsTheLimitOrMean) {
    const auto textOf = [](const char* qualifier) {
        const auto* const item = "QUALIFIED_REPRESENTATION_ITEM((#28))";
        return onlyRecord(measure(23, "nominal value", "8", "#1", item) + "#28=TYPE_QUALIFIER('" +
                          qualifier + "');#22=SHAPE_DIMENSION_REPRESENTATION('',(#23),#9);")
            .text;
    };
    EXPECT_EQ(textOf("maximum"), "⌀ 8 MAX");
    EXPECT_EQ(textOf("minimum"), "⌀ 8 MIN");
    EXPECT_EQ(textOf("average"), "⌀ 8 AVG");
}

TEST(DimensionRecordsTest, AnglesAreRadiansAndReadInDegrees) {
    const auto records = readDimensions(ExchangeFile::FromText(
        "#4=(NAMED_UNIT(*)PLANE_ANGLE_UNIT()SI_UNIT($,.RADIAN.));"
        "#10=ANGULAR_LOCATION('',$,#1,#2,.SMALL.);"
        "#11=DIMENSIONAL_CHARACTERISTIC_REPRESENTATION(#10,#12);"
        "#12=SHAPE_DIMENSION_REPRESENTATION('',(#13),#9);"
        "#13=(MEASURE_REPRESENTATION_ITEM()MEASURE_WITH_UNIT(PLANE_ANGLE_MEASURE(1.5707963267949),"
        "#4)PLANE_ANGLE_MEASURE_WITH_UNIT()REPRESENTATION_ITEM('nominal value'));"));
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].text, "90°");
    EXPECT_EQ(records[0].typeCode, 11);
    EXPECT_THAT(records[0].attributes, Contains(Pair("Value", "1.57079633")));
    EXPECT_THAT(records[0].targets, ElementsAre(1U, 2U));
}

TEST(DimensionRecordsTest, ADimensionWithoutAValueTellsItsType) {
    const PmiRecord record = onlyRecord("");
    EXPECT_EQ(record.text, "diameter");
    EXPECT_THAT(record.attributes, Not(Contains(Key("Value"))));
}

TEST(DimensionRecordsTest, ItemsThatHoldThemselvesAreReadOnce) {
    std::string again;
    for (int i = 0; i < 200; ++i) {
        again += "#24,";
    }
    const PmiRecord record =
        onlyRecord(measure(23, "nominal value", "5.5") +
                   "#22=SHAPE_DIMENSION_REPRESENTATION('',(#24),#9);"
                   "#24=COMPOUND_REPRESENTATION_ITEM('',(" +
                   again + "#23,#25));#25=DESCRIPTIVE_REPRESENTATION_ITEM('','once');");
    EXPECT_THAT(record.attributes, Contains(Pair("Value", "5.5")));
    EXPECT_THAT(record.attributes, Contains(Pair("TolNote", "once")));
}

}  // namespace
}  // namespace kesview
