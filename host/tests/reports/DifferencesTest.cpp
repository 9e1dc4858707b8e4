/// @file
#include "reports/Differences.h"
#include "reports/XmlReport.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kesview {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A report of the XML that stands in @p text.
void restore(XmlReport& report, const std::string& text) {
    const support::TemporaryFolder folder;
    folder.Write("r.xml", text);
    EXPECT_TRUE(report.Restore((folder.Path() / "r.xml").wstring())) << report.Problem();
}

std::vector<std::string> sentences(const std::string& before, const std::string& after) {
    XmlReport first;
    XmlReport second;
    restore(first, before);
    restore(second, after);
    std::vector<std::string> all;
    for (const Difference& difference : differences(first, second)) {
        all.push_back(sentence(difference));
    }
    return all;
}

TEST(DifferencesTest, EqualTreesHaveNone) {
    EXPECT_THAT(sentences("<R A='1' B='2'><N>t</N></R>", "<R B='2' A='1'>\n<N>t</N>\n</R>"),
                IsEmpty());
}

TEST(DifferencesTest, CommentsCountForNothing) {
    EXPECT_THAT(sentences("<R><!-- one --><N/></R>", "<R><N/><!-- two --></R>"), IsEmpty());
}

TEST(DifferencesTest, AttributesAreAddedRemovedAndChanged) {
    EXPECT_THAT(sentences("<R Gone='1' Same='2' Other='3'/>", "<R Same='2' Other='4' New='5'/>"),
                ElementsAre("Attribute /R/@Gone was removed: '1'.",
                            "Attribute /R/@Other changed from '3' to '4'.",
                            "Attribute /R/@New was added: '5'."));
}

TEST(DifferencesTest, TextsAreAddedRemovedAndChanged) {
    EXPECT_THAT(
        sentences("<R><A>x</A><B>y</B><C/></R>", "<R><A>z</A><B/><C>w</C></R>"),
        ElementsAre("Text /R/A/text() changed from 'x' to 'z'.",
                    "Text /R/B/text() was removed: 'y'.", "Text /R/C/text() was added: 'w'."));
}

TEST(DifferencesTest, ElementsAreMatchedByName) {
    EXPECT_THAT(sentences("<R><N Name='a' C='1'/><N Name='b' C='2'/></R>",
                          "<R><N Name='b' C='3'/><N Name='c' C='2'/></R>"),
                ElementsAre("Element /R/N[@Name='a'] was removed: '<N Name=\"a\" C=\"1\">'.",
                            "Attribute /R/N[@Name='b']/@C changed from '2' to '3'.",
                            "Element /R/N[@Name='c'] was added: '<N Name=\"c\" C=\"2\">'."));
}

TEST(DifferencesTest, ARenamedElementIsTheSameByItsId) {
    EXPECT_THAT(sentences("<R><N ID='7' Name='a'/></R>", "<R><N ID='7' Name='b'/></R>"),
                ElementsAre("Attribute /R/N[@Name='b']/@Name changed from 'a' to 'b'."));
}

TEST(DifferencesTest, ANewIdDoesNotHideTheName) {
    EXPECT_THAT(sentences("<R><N ID='7' Name='a'/></R>", "<R><N ID='8' Name='a'/></R>"),
                ElementsAre("Attribute /R/N[@Name='a']/@ID changed from '7' to '8'."));
}

TEST(DifferencesTest, AnElementWithoutNameIsMatchedByItsId) {
    EXPECT_THAT(sentences("<R><N ID='1' C='x'/><N ID='2' C='y'/></R>", "<R><N ID='2' C='z'/></R>"),
                ElementsAre("Element /R/N[@ID='1'] was removed: '<N ID=\"1\" C=\"x\">'.",
                            "Attribute /R/N[@ID='2']/@C changed from 'y' to 'z'."));
}

TEST(DifferencesTest, OfManyAlikeTheOneThatWentIsNamed) {
    EXPECT_THAT(sentences("<R><N Name='b' X='1'/><N Name='b' X='2'/><N Name='b' X='3'/></R>",
                          "<R><N Name='b' X='2'/><N Name='b' X='3'/></R>"),
                ElementsAre("Element /R/N[@Name='b'][1] was removed: '<N Name=\"b\" X=\"1\">'."));
}

TEST(DifferencesTest, NamelessNeighboursStayInTheirOrder) {
    EXPECT_THAT(sentences("<R><G T='a'/><G T='b'/></R>", "<R><G T='b'/><G T='c'/></R>"),
                ElementsAre("Element /R/G[1] was removed: '<G T=\"a\">'.",
                            "Element /R/G[2] was added: '<G T=\"c\">'."));
    EXPECT_THAT(sentences("<R><G T='a'/><G T='b'/></R>", "<R><G T='x'/><G T='b'/></R>"),
                ElementsAre("Attribute /R/G[1]/@T changed from 'a' to 'x'."));
}

TEST(DifferencesTest, AnotherOrderIsAMove) {
    EXPECT_THAT(sentences("<R><N Name='a'/><N Name='b'/><N Name='c'/></R>",
                          "<R><N Name='c'/><N Name='a'/><N Name='b'/></R>"),
                ElementsAre("Element /R/N[@Name='c'] moved to another place."));
}

TEST(DifferencesTest, WhatIsInsideAnAddedElementIsNotListedAgain) {
    EXPECT_THAT(sentences("<R/>", "<R><N><M A='1'/></N></R>"),
                ElementsAre("Element /R/N was added: '<N>'."));
}

TEST(DifferencesTest, ReportsOfOtherNamesHaveNothingInCommon) {
    EXPECT_THAT(sentences("<R A='1'/>", "<S A='1'/>"),
                ElementsAre("Element /R was removed: '<R A=\"1\">'.",
                            "Element /S was added: '<S A=\"1\">'."));
}

TEST(DifferencesTest, PathsSurviveQuotesAndStrokesInNames) {
    EXPECT_THAT(sentences("<R><N Name=\"a'/@b\" C='1'/></R>", "<R><N Name=\"a'/@b\" C='2'/></R>"),
                ElementsAre("Attribute /R/N[@Name=\"a'/@b\"]/@C changed from '1' to '2'."));
    EXPECT_THAT(sentences("<R/>", "<R><N Name='x/@y'/></R>"),
                ElementsAre("Element /R/N[@Name='x/@y'] was added: '<N Name=\"x/@y\">'."));
}

TEST(DifferencesTest, ManyDifferencesStandInTheOrderOfTheReports) {
    EXPECT_THAT(sentences("<R V='1'><N Name='a'><M X='1'/></N><N Name='b'/></R>",
                          "<R V='2'><N Name='a'><M X='2'/></N><N Name='b' Y='3'/></R>"),
                ElementsAre("Attribute /R/@V changed from '1' to '2'.",
                            "Attribute /R/N[@Name='a']/M/@X changed from '1' to '2'.",
                            "Attribute /R/N[@Name='b']/@Y was added: '3'."));
}

TEST(DifferencesTest, BothValuesAndTheKindAreThere) {
    XmlReport first;
    XmlReport second;
    restore(first, "<R A='1'/>");
    restore(second, "<R A='2'/>");
    const std::vector<Difference> found = differences(first, second);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].kind, Difference::Kind::Changed);
    EXPECT_EQ(found[0].path, "/R/@A");
    EXPECT_EQ(found[0].before, "1");
    EXPECT_EQ(found[0].after, "2");
}

TEST(DifferencesTest, AReportThatFailedToRestoreDiffersByEverything) {
    XmlReport first;
    XmlReport second;
    restore(first, "<R/>");
    EXPECT_FALSE(second.Restore(L"/nowhere/at/all.xml"));
    ASSERT_EQ(differences(first, second).size(), 1U);
    EXPECT_EQ(sentence(differences(first, second)[0]), "Element /R was removed: '<R>'.");
    EXPECT_THAT(differences(second, second), IsEmpty());
}

}  // namespace
}  // namespace kesview
