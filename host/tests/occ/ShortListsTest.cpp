#include "reading/occ/ShortLists.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>

namespace kesview {
namespace {

using support::TemporaryFolder;

std::string inFile(const std::string& records) {
    return "ISO-10303-21;\nHEADER;\nENDSEC;\nDATA;\n" + records + "ENDSEC;\nEND-ISO-10303-21;\n";
}

TEST(ShortListsTest, KeepsOneElementOfEachListOfTriangles) {
    EXPECT_EQ(
        withShortLists(inFile("#1=COMPLEX_TRIANGULATED_SURFACE_SET('a',#2,5,((0.,0.,1.),(0.,1.,0.)"
                              "),$,((1,2,3,4),(5,6,7)),());\n")),
        inFile("#1=COMPLEX_TRIANGULATED_SURFACE_SET('a',#2,5,((0.,0.,1.)),$,((1,2,3,4)),());\n"));
}

TEST(ShortListsTest, KeepsOnePointOfCoordinates) {
    EXPECT_EQ(withShortLists(inFile("#1 = COORDINATES_LIST('', 2, ((1.,2.,3.),\n(4.,5.,6.)));\n")),
              inFile("#1 = COORDINATES_LIST('', 2, ((1.,2.,3.)));\n"));
}

TEST(ShortListsTest, TakesParenthesesAndCommasOfATextForText) {
    EXPECT_EQ(withShortLists(inFile("#1=COORDINATES_LIST('it''s ((a,b),',2,((1.,2.),(3.,4.)));\n")),
              inFile("#1=COORDINATES_LIST('it''s ((a,b),',2,((1.,2.)));\n"));
}

TEST(ShortListsTest, KeepsAllRecordsBetweenAndBehind) {
    const std::string before = "#1=CARTESIAN_POINT('',(1.,2.,3.));\n";
    const std::string after = "#3=POLY_LOOP('',(#1,#1,#1));\n";
    EXPECT_EQ(
        withShortLists(inFile(before + "#2=TRIANGULATED_FACE('',((1,2,3),(4,5,6)));\n" + after)),
        inFile(before + "#2=TRIANGULATED_FACE('',((1,2,3)));\n" + after));
}

TEST(ShortListsTest, KeepsARecordWhoseParenthesesDoNotPair) {
    const std::string text = inFile("#1=COORDINATES_LIST('',2,((1.,2.,3.),(4.,5.,6.));\n");
    EXPECT_EQ(withShortLists(text), text);
}

TEST(ShortListsTest, KeepsARecordWithACommentWhoseCommaIsNone) {
    const std::string text = inFile(
        "#1=COORDINATES_LIST('',2,((1.,2.,3.) /* first, */,(4.,5.,6.)));\n"
        "#2=CARTESIAN_POINT('',(1.,2.,3.));\n");
    EXPECT_EQ(withShortLists(text), text);
}

TEST(ShortListsTest, KeepsATextThatIsCut) {
    const std::string text = "DATA;\n#1=COORDINATES_LIST('',2,((1.,2.,3.),(4.";
    EXPECT_EQ(withShortLists(text), text);
}

TEST(ShortListsTest, LeavesComplexRecordsAlone) {
    const std::string text =
        inFile("#1=(COORDINATES_LIST(2,((1.,2.,3.),(4.,5.,6.)))TESSELLATED_ITEM());\n");
    EXPECT_EQ(withShortLists(text), text);
}

TEST(ShortListsTest, ReadsAFileAnewOnlyWhereItHoldsThem) {
    const TemporaryFolder folder;
    const std::string with = inFile("#1=COORDINATES_LIST('',2,((1.,2.),(3.,4.)));\n");
    const std::string without = inFile("#1=CARTESIAN_POINT('',(1.,2.,3.));\n");
    EXPECT_EQ(textWithShortLists(folder.Write("with.stp", with)), withShortLists(with));
    EXPECT_EQ(textWithShortLists(folder.Write("without.stp", without)), std::nullopt);
    EXPECT_EQ(textWithShortLists(folder.File("none.stp")), std::nullopt);
}

}  // namespace
}  // namespace kesview
