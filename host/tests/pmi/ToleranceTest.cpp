#include "reading/part21/DatumRecords.h"
#include "reading/part21/ToleranceRecords.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kesview {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Pair;

const std::string common =
    "#1=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));"
    "#2=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(0.2),#1);#3=SHAPE_ASPECT('','',#90,.T.);"
    "#10=DATUM('',$,#90,.F.,'A');#11=DATUM('',$,#90,.F.,'B');#12=DATUM('',$,#90,.F.,'C');"
    "#20=DATUM_REFERENCE_COMPARTMENT('',$,#90,.F.,#10,$);"
    "#21=DATUM_REFERENCE_COMPARTMENT('',$,#90,.F.,COMMON_DATUM_LIST((#22,#23)),$);"
    "#22=DATUM_REFERENCE_ELEMENT('',$,#90,.F.,#11,(SIMPLE_DATUM_REFERENCE_MODIFIER("
    ".MAXIMUM_MATERIAL_REQUIREMENT.)));#23=DATUM_REFERENCE_ELEMENT('',$,#90,.F.,#12,$);"
    "#24=DATUM_SYSTEM('',$,#90,.F.,(#20,#21));";

PmiRecord onlyRecord(const std::string& text) {
    const auto records = readTolerances(ExchangeFile::FromText(common + text));
    EXPECT_EQ(records.size(), 1U);
    return records.empty() ? PmiRecord() : records.front();
}

TEST(ToleranceRecordsTest, AFrameReadsAsOnADrawing) {
    const PmiRecord record = onlyRecord(
        "#30=(GEOMETRIC_TOLERANCE('Position.1','',#2,#3)GEOMETRIC_TOLERANCE_WITH_DATUM_REFERENCE("
        "(#24))GEOMETRIC_TOLERANCE_WITH_MODIFIERS((.MAXIMUM_MATERIAL_REQUIREMENT.))"
        "POSITION_TOLERANCE());"
        "#31=TOLERANCE_ZONE('',$,#90,.F.,(#30),#32);"
        "#32=TOLERANCE_ZONE_FORM('cylindrical or circular');");
    EXPECT_EQ(record.text, "⌖ ⌀0.2 Ⓜ | A | B Ⓜ-C");
    EXPECT_EQ(record.type, "position");
    EXPECT_EQ(record.typeCode, 10);
    EXPECT_EQ(record.label, "Position.1");
    EXPECT_THAT(record.datums, ElementsAre(10U, 11U, 12U));
    EXPECT_THAT(record.targets, ElementsAre(3U));
    EXPECT_THAT(record.attributes, Contains(Pair("Tolerance Value", "0.2")));
    EXPECT_THAT(record.attributes, Contains(Pair("Value Type", "diameter")));
    EXPECT_THAT(record.attributes, Contains(Pair("TolNote", "Ⓜ")));
}

TEST(ToleranceRecordsTest, SimpleInstancesHoldTheirDatumsLast) {
    const PmiRecord record = onlyRecord("#30=PARALLELISM_TOLERANCE('','',#2,#3,(#24));");
    EXPECT_EQ(record.text, "∥ 0.2 | A | B Ⓜ-C");
    EXPECT_THAT(record.attributes, Contains(Pair("Value Type", "width")));
}

TEST(ToleranceRecordsTest, OlderDatumReferencesAreRead) {
    const PmiRecord record = onlyRecord(
        "#30=ANGULARITY_TOLERANCE('','',#2,#3,(#31,#32));"
        "#31=DATUM_REFERENCE(1,#11);#32=DATUM_REFERENCE(2,#10);");
    EXPECT_EQ(record.text, "∠ 0.2 | B | A");
}

TEST(ToleranceRecordsTest, TellsAreaUnitsShiftsAndProjections) {
    const std::string one = "#40=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(25.),#1);";
    const PmiRecord area = onlyRecord(one +
                                      "#30=(FLATNESS_TOLERANCE()GEOMETRIC_TOLERANCE('','',#2,#3)"
                                      "GEOMETRIC_TOLERANCE_WITH_DEFINED_AREA_UNIT(.CIRCULAR.,$)"
                                      "GEOMETRIC_TOLERANCE_WITH_DEFINED_UNIT(#40));");
    EXPECT_EQ(area.text, "⏥ 0.2/⌀25");
    EXPECT_THAT(area.attributes, Contains(Pair("RateUnit1", "25")));
    const PmiRecord shifted =
        onlyRecord(one +
                   "#30=(GEOMETRIC_TOLERANCE('','',#2,#3)SURFACE_PROFILE_TOLERANCE()"
                   "UNEQUALLY_DISPOSED_GEOMETRIC_TOLERANCE(#40));");
    EXPECT_EQ(shifted.text, "⌓ 0.2 Ⓤ 25");
    EXPECT_THAT(shifted.attributes, Contains(Pair("ShiftValue", "25")));
    const PmiRecord projected = onlyRecord(one +
                                           "#30=PERPENDICULARITY_TOLERANCE('','',#2,#3,(#24));"
                                           "#31=TOLERANCE_ZONE('',$,#90,.F.,(#30),#32);"
                                           "#32=TOLERANCE_ZONE_FORM('parallel planes');"
                                           "#33=PROJECTED_ZONE_DEFINITION(#31,(),#3,#40);");
    EXPECT_EQ(projected.text, "⟂ 0.2 Ⓟ 25 | A | B Ⓜ-C");
    EXPECT_THAT(projected.attributes, Contains(Pair("ProjTolZoneLength", "25")));
}

TEST(ToleranceRecordsTest, SegmentsOfACompositeKnowTheUpperOne) {
    const auto records =
        readTolerances(ExchangeFile::FromText(
            common + "#30=POSITION_TOLERANCE('','',#2,#3);#31=POSITION_TOLERANCE('','',#2,#3);"
                     "#32=GEOMETRIC_TOLERANCE_RELATIONSHIP('composite','',#30,#31);"));
    ASSERT_EQ(records.size(), 2U);
    EXPECT_THAT(records[0].attributes, Contains(Pair("IsComposite", "true")));
    EXPECT_THAT(records[1].drawnWith, ElementsAre(30U));
}

TEST(ToleranceRecordsTest, DeviationsOfDimensionsAreNoTolerances) {
    EXPECT_TRUE(readTolerances(ExchangeFile::FromText(common + "#30=PLUS_MINUS_TOLERANCE(#2,#3);"))
                    .empty());
}

TEST(DatumRecordsTest, ADatumIsOneHoweverOftenItIsUsed) {
    const ExchangeFile file =
        ExchangeFile::FromText(common + "#30=DATUM_REFERENCE_COMPARTMENT('',$,#90,.F.,#10,$);");
    const auto records = readDatums(file, AspectLinks(file));
    ASSERT_EQ(records.size(), 3U);
    EXPECT_EQ(records[0].text, "A");
    EXPECT_EQ(records[2].label, "C");
}

TEST(DatumRecordsTest, ATargetCarriesTheLetterOfItsDatum) {
    const ExchangeFile file =
        ExchangeFile::FromText(common +
                               "#40=PLACED_DATUM_TARGET_FEATURE('','rectangle',#90,.T.,'1');"
                               "#41=SHAPE_ASPECT_RELATIONSHIP('','',#40,#12);");
    const auto records = readDatums(file, AspectLinks(file));
    ASSERT_EQ(records.size(), 4U);
    EXPECT_EQ(records[3].kind, AnnotationKind::DatumTarget);
    EXPECT_EQ(records[3].text, "C1");
    EXPECT_EQ(records[3].type, "datum target rectangle");
    EXPECT_THAT(records[3].datums, ElementsAre(12U));
    EXPECT_THAT(records[2].drawnWith, ElementsAre(40U));
}

TEST(AspectLinksTest, FollowsCompositesAndFeaturesToTheirGeometry) {
    const ExchangeFile file = ExchangeFile::FromText(
        common +
        "#50=COMPOSITE_SHAPE_ASPECT('','',#90,.T.);#51=SHAPE_ASPECT('','',#90,.T.);"
        "#52=SHAPE_ASPECT_RELATIONSHIP('',$,#50,#51);"
        "#53=GEOMETRIC_ITEM_SPECIFIC_USAGE('','',#51,#80,#70);"
        "#54=ITEM_IDENTIFIED_REPRESENTATION_USAGE('','',#51,#80,"
        "SET_REPRESENTATION_ITEM((#71,#70)));"
        "#55=SHAPE_ASPECT_RELATIONSHIP('',$,#51,#50);"
        "#56=DATUM_FEATURE('','',#90,.T.);#57=SHAPE_ASPECT_RELATIONSHIP('',$,#56,#10);"
        "#58=GEOMETRIC_ITEM_SPECIFIC_USAGE('','',#56,#80,#72);"
        "#90=PRODUCT_DEFINITION_SHAPE('','',#91);#91=PRODUCT_DEFINITION('','',#92,#93);");
    const AspectLinks links(file);
    EXPECT_THAT(links.ItemsOf(50), ElementsAre(70U, 71U));  // though #51 leads back to #50
    EXPECT_THAT(links.ItemsOf(10), ElementsAre(72U));
    EXPECT_THAT(links.ItemsOf(90), ElementsAre(91U));
    EXPECT_EQ(links.ProductOf(50), 91U);
}

}  // namespace
}  // namespace kesview
