#include <KesVizCore/pmi/SemanticPMI.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace KesVizCore {
namespace {

using Links = std::vector<std::wstring>;

Links linksOf(const std::wstring& references) {
    SemanticPMI record;
    record.Attributes[L"DatumRefDatas"] = references;
    Links links{L"what was there before"};
    EXPECT_TRUE(record.GetPMILinks(links));
    return links;
}

/// The dump of a record without ids, with @p middle between the units and the last line.
std::wstring dumpAround(const std::wstring& middle) {
    return L"--------------\n"
           L"Semantic Info:\n"
           L"\n"
           L"ID : \n"
           L"Name : \n"
           L"Label : \n"
           L"Units : millimeters, radians\n" +
           middle + L"--------------\n";
}

TEST(SemanticPMITest, IsEmptyAtFirst) {
    const SemanticPMI record;
    EXPECT_EQ(record.Name, L"");
    EXPECT_EQ(record.Label, L"");
    EXPECT_EQ(record.Id, L"");
    EXPECT_TRUE(record.Attributes.empty());
    EXPECT_TRUE(record.LinkedEntities.empty());
}

SemanticPMI fullRecord() {
    SemanticPMI record;
    record.Name = L"name";
    record.Label = L"label";
    record.Id = L"id";
    record.Attributes = {{L"Value", L"10"}, {L"DatumRefDatas", L"A"}};
    record.LinkedEntities = {EntityId(5, FaceType, 42)};
    return record;
}

void expectFull(const SemanticPMI& record) {
    const std::map<std::wstring, std::wstring> attributes{{L"Value", L"10"},
                                                          {L"DatumRefDatas", L"A"}};
    EXPECT_EQ(record.Name, L"name");
    EXPECT_EQ(record.Label, L"label");
    EXPECT_EQ(record.Id, L"id");
    EXPECT_EQ(record.Attributes, attributes);
    EXPECT_EQ(record.LinkedEntities, std::vector<EntityId>{EntityId(5, FaceType, 42)});
}

TEST(SemanticPMITest, CopiesCarryEveryMember) {
    const SemanticPMI record = fullRecord();
    const SemanticPMI copy(record);
    SemanticPMI assigned;
    assigned = record;
    expectFull(record);
    expectFull(copy);
    expectFull(assigned);
}

TEST(SemanticPMITest, MovesCarryEveryMember) {
    SemanticPMI record = fullRecord();
    SemanticPMI moved(std::move(record));
    expectFull(moved);
    SemanticPMI assigned;
    assigned = std::move(moved);
    expectFull(assigned);
}

// --- links --------------------------------------------------------------------------------------

TEST(SemanticPMITest, WithoutReferencesTheLinksAreLeftAlone) {
    SemanticPMI record;
    record.Attributes[L"DatumRefData"] = L"A";
    Links links{L"before"};
    EXPECT_FALSE(record.GetPMILinks(links));
    EXPECT_EQ(links, Links{L"before"});
}

TEST(SemanticPMITest, LinksReplaceTheCallersList) {
    EXPECT_EQ(linksOf(L"A"), Links{L"A"});
}

TEST(SemanticPMITest, LinksAreSplitAtCommaAndBlank) {
    EXPECT_EQ(linksOf(L"A, B, C"), (Links{L"A", L"B", L"C"}));
}

TEST(SemanticPMITest, ACommaOrABlankAloneSplitsNothing) {
    EXPECT_EQ(linksOf(L"A,B C ,D"), Links{L"A,B C ,D"});
}

TEST(SemanticPMITest, BlanksBeyondTheSeparatorBelongToTheLinks) {
    EXPECT_EQ(linksOf(L" A ,  B "), (Links{L" A ", L" B "}));
}

TEST(SemanticPMITest, AnEmptyValueIsOneEmptyLink) {
    EXPECT_EQ(linksOf(L""), Links{L""});
}

TEST(SemanticPMITest, EmptyPiecesCountAtEitherEndAndBetween) {
    EXPECT_EQ(linksOf(L"A, "), (Links{L"A", L""}));
    EXPECT_EQ(linksOf(L", A"), (Links{L"", L"A"}));
    EXPECT_EQ(linksOf(L"A, , B"), (Links{L"A", L"", L"B"}));
    EXPECT_EQ(linksOf(L", "), (Links{L"", L""}));
    EXPECT_EQ(linksOf(L",, ,"), (Links{L",", L","}));
}

// --- dump ---------------------------------------------------------------------------------------

TEST(SemanticPMITest, DumpsADefaultRecord) {
    EXPECT_EQ(SemanticPMI().ToString(),
              L"--------------\n"
              L"Semantic Info:\n"
              L"\n"
              L"ID : \n"
              L"Name : \n"
              L"Label : \n"
              L"Units : millimeters, radians\n"
              L"--------------\n");
}

TEST(SemanticPMITest, DumpsAFullRecord) {
    SemanticPMI record;
    record.Id = L"M 7";
    record.Name = L"Radius \x2300";
    record.Label = L"R5";
    record.Attributes = {{L"Value", L"5"},           {L"UpperVal", L"0.1"},
                         {L"LowerVal", L"-0.1"},     {L"Tolerance Value", L""},
                         {L"MainType", L"Radius"},   {L"Hidden", L"0"},
                         {L"DatumRefDatas", L"A, B"}};
    record.LinkedEntities = {EntityId(5, FaceType, 42), EntityId(0, BodyType, 5)};
    EXPECT_EQ(record.ToString(),
              L"--------------\n"
              L"Semantic Info:\n"
              L"\n"
              L"ID : M 7\n"
              L"Name : Radius \x2300\n"
              L"Label : R5\n"
              L"Units : millimeters, radians\n"
              L"Value : 5\n"
              L"LowerVal : -0.1\n"
              L"UpperVal : 0.1\n"
              L"MainType : Radius\n"
              L"Hidden : 0\n"
              L"Links (4) : \n"
              L"    42 (Face)\n"
              L"    5 (Body)\n"
              L"A (PMI)\n"
              L"B (PMI)\n"
              L"--------------\n");
}

TEST(SemanticPMITest, DumpsTheTwentyOneKeysInTheirOrder) {
    SemanticPMI record;
    for (const wchar_t* key : {L"Value",
                               L"LowerVal",
                               L"UpperVal",
                               L"Precision",
                               L"MainType",
                               L"SubType",
                               L"Tolerance Value",
                               L"Tolerance Type",
                               L"Value Type",
                               L"TolNote",
                               L"AllAround",
                               L"IsComposite",
                               L"ProjTolZoneLength",
                               L"RateUnit1",
                               L"RateUnit2",
                               L"RefineTolerance",
                               L"ShiftValue",
                               L"ApplicabilityType",
                               L"ObtentionType",
                               L"Manages_Geometry",
                               L"Hidden"}) {
        record.Attributes[key] = std::wstring(L"of ") + key;
    }
    ASSERT_EQ(record.Attributes.size(), 21U);
    EXPECT_EQ(record.ToString(), dumpAround(L"Value : of Value\n"
                                            L"LowerVal : of LowerVal\n"
                                            L"UpperVal : of UpperVal\n"
                                            L"Precision : of Precision\n"
                                            L"MainType : of MainType\n"
                                            L"SubType : of SubType\n"
                                            L"Tolerance Value : of Tolerance Value\n"
                                            L"Tolerance Type : of Tolerance Type\n"
                                            L"Value Type : of Value Type\n"
                                            L"TolNote : of TolNote\n"
                                            L"AllAround : of AllAround\n"
                                            L"IsComposite : of IsComposite\n"
                                            L"ProjTolZoneLength : of ProjTolZoneLength\n"
                                            L"RateUnit1 : of RateUnit1\n"
                                            L"RateUnit2 : of RateUnit2\n"
                                            L"RefineTolerance : of RefineTolerance\n"
                                            L"ShiftValue : of ShiftValue\n"
                                            L"ApplicabilityType : of ApplicabilityType\n"
                                            L"ObtentionType : of ObtentionType\n"
                                            L"Manages_Geometry : of Manages_Geometry\n"
                                            L"Hidden : of Hidden\n"));
}

TEST(SemanticPMITest, EmptyValuesAreNotDumped) {
    SemanticPMI record;
    record.Attributes = {{L"Value", L"10"}, {L"Precision", L""}};
    EXPECT_EQ(record.ToString(), dumpAround(L"Value : 10\n"));
}

TEST(SemanticPMITest, OtherKeysAreNotDumped) {
    SemanticPMI record;
    record.Attributes = {{L"value", L"10"}, {L"Colour", L"red"}, {L"", L"nameless"}};
    EXPECT_EQ(record.ToString(), dumpAround(L""));
}

TEST(SemanticPMITest, DumpsLinkedEntitiesBeforeLinkedAnnotations) {
    SemanticPMI record;
    record.Attributes[L"DatumRefDatas"] = L"A, B";
    record.LinkedEntities = {EntityId(0, FaceType, 42)};
    EXPECT_EQ(record.ToString(), dumpAround(L"Links (3) : \n"
                                            L"    42 (Face)\n"
                                            L"A (PMI)\n"
                                            L"B (PMI)\n"));
}

TEST(SemanticPMITest, DumpsLinkedEntitiesAloneInTheirOrder) {
    SemanticPMI record;
    constexpr std::uint64_t largest = std::numeric_limits<std::uint64_t>::max();
    record.LinkedEntities = {EntityId(9, VertexType, 4),   EntityId(0, BodyType, largest),
                             EntityId(9, EdgeType, 0),     EntityId(9, FaceType, 2),
                             EntityId(0, DatumType, 11),   EntityId(0, OtherType, 3),
                             EntityId(0, InvalidType, 12), EntityId(0, GroupType, 1)};
    EXPECT_EQ(record.ToString(), dumpAround(L"Links (8) : \n"
                                            L"    4 (Vertex)\n"
                                            L"    18446744073709551615 (Body)\n"
                                            L"    0 (Edge)\n"
                                            L"    2 (Face)\n"
                                            L"    11 (Other)\n"
                                            L"    3 (Other)\n"
                                            L"    12 (Other)\n"
                                            L"    1 (Other)\n"));
}

TEST(SemanticPMITest, AnEmptyReferenceIsDumpedAsALink) {
    SemanticPMI record;
    record.Attributes[L"DatumRefDatas"] = L"";
    EXPECT_EQ(record.ToString(), dumpAround(L"Links (1) : \n"
                                            L" (PMI)\n"));
}

}  // namespace
}  // namespace KesVizCore
