#include "CommandKit.h"
#include "commands/InfoCommand.h"
#include "support/DocumentKit.h"

#include <gmock/gmock.h>

#include <limits>

namespace kesview {
namespace {

using support::annotatedMachine;
using support::Answer;
using support::golden;
using support::run;
using testing::HasSubstr;
using testing::Not;

TEST(InfoCommandTest, TextOfAMachine) {
    const Answer answer = run({"info", "machine.stp"}, annotatedMachine());
    EXPECT_EQ(answer.code, ExitCode::Done);
    EXPECT_EQ(answer.out, golden("info.txt", answer.out));
}

TEST(InfoCommandTest, JsonOfAMachine) {
    const Answer answer = run({"info", "machine.stp", "--format", "json"}, annotatedMachine());
    EXPECT_EQ(answer.out, golden("info.json", answer.out));
    EXPECT_EQ(support::violations("info", answer.out), "");
}

TEST(InfoCommandTest, AnEmptyDocumentHasCountsOfZero) {
    const Answer answer = run({"info", "a.stp", "--format", "json"}, Document());
    EXPECT_EQ(answer.out, golden("info_empty.json", answer.out));
    EXPECT_EQ(support::violations("info", answer.out), "");
}

TEST(InfoCommandTest, SharedPartsCountOnceAndForEachUse) {
    const InfoResult info = infoOf(annotatedMachine());
    // By hand: 4 bolts of 2 faces and 1 edge, a plate of 1 face, a wire of 1 edge.
    EXPECT_EQ(info.unique.solids, 1U);
    EXPECT_EQ(info.expanded.solids, 4U);
    EXPECT_EQ(info.unique.faces, 3U);
    EXPECT_EQ(info.expanded.faces, 9U);
    EXPECT_EQ(info.expanded.triangles, 18U);
    EXPECT_EQ(info.expanded.edges, 5U);
    EXPECT_EQ(info.instances, 8U);
    EXPECT_EQ(info.leaves, 5U);
    EXPECT_EQ(info.levels, 3U);
}

TEST(InfoCommandTest, TheBoxHoldsAllPlacesAndOrigins) {
    const InfoResult info = infoOf(annotatedMachine());
    // The second pair stands 20 up in y, its second bolt 10 in x; the plate a million away.
    EXPECT_EQ(info.box.low, (Vector{0, 0, 0}));
    EXPECT_EQ(info.box.high, (Vector{1e6 + 1, 21, 5}));
}

TEST(InfoCommandTest, PointsThatAreNoNumbersDoNotSpoilTheBox) {
    Document document = support::machine();
    document.products[0].bodies[0].faces[0].points[0] = std::numeric_limits<float>::quiet_NaN();
    document.products[0].bodies[0].faces[0].points[4] = std::numeric_limits<float>::infinity();
    const InfoResult info = infoOf(document);
    EXPECT_EQ(info.box.low, (Vector{0, 0, 0}));
    EXPECT_EQ(info.box.high, (Vector{1e6 + 1, 21, 5}));
}

TEST(InfoCommandTest, WhatRoundingLeftOfZeroIsSaidAsZero) {
    Document document = support::machine();
    document.roots[0].parentFromChild[13] = -1.776e-15;
    EXPECT_THAT(run({"info", "a.stp"}, document).out, HasSubstr(" mm, from 0, 0, 0 to "));
}

TEST(InfoCommandTest, KindsOfAnnotationsAreCountedInWords) {
    Document document;
    document.annotations = {support::annotation(2, "#2", AnnotationKind::SurfaceFinish),
                            support::annotation(3, "#3", AnnotationKind::SurfaceFinish),
                            support::annotation(4, "#4", AnnotationKind::Note)};
    EXPECT_THAT(run({"info", "a.stp"}, document).out,
                HasSubstr("3 annotations: 1 note, 2 surface finishes; 0 semantic, 0 drawn\n"));
}

TEST(InfoCommandTest, NumbersThatAreNoneAreNullInJson) {
    Document document = support::machine();
    document.millimetresPerUnit = std::numeric_limits<double>::quiet_NaN();
    const Answer answer = run({"info", "a.stp", "--format", "json"}, document);
    EXPECT_THAT(answer.out, HasSubstr("\"millimetresPerUnit\": null"));
    EXPECT_EQ(support::violations("info", answer.out), "");
}

TEST(InfoCommandTest, NamesOfTheFileCannotDriveATerminal) {
    Document document = support::machine();
    document.author = "\x1b]0;owned\x07";
    document.products[0].layers = {"\xC2\x9B\x32J"};
    for (const char* format : {"text", "json"}) {
        const Answer answer = run({"info", "a.stp", "--format", format}, document);
        EXPECT_THAT(answer.out, Not(HasSubstr("\x1b"))) << format;
        EXPECT_THAT(answer.out, Not(HasSubstr("\x07"))) << format;
        EXPECT_THAT(answer.out, Not(HasSubstr("\xC2\x9B"))) << format;
    }
}

TEST(InfoCommandTest, AssembliesThatGrowWithoutEndAreRefused) {
    Document document;
    document.products.resize(40);
    for (std::uint32_t i = 0; i + 1 < 40; ++i) {  // 2 to the 39th uses of the last
        document.products[i].id = 100 + i;
        document.products[i].components = {support::component(200 + 2 * i, "a", i + 1),
                                           support::component(201 + 2 * i, "b", i + 1)};
    }
    document.roots = {support::component(2, "top", 0)};
    EXPECT_EQ(run({"info", "a.stp"}, document).code, ExitCode::LimitReached);
    EXPECT_EQ(run({"tree", "a.stp"}, document).code, ExitCode::LimitReached);
    EXPECT_EQ(run({"tree", "a.stp", "--depth", "3"}, document).code, ExitCode::Done);
}

TEST(InfoCommandTest, ASharedDrawingIsNoLostOne) {
    Document document = annotatedMachine();
    document.annotations[2].drawnInFile = true;
    EXPECT_THAT(run({"info", "a.stp"}, document).out, HasSubstr("drawings lost"));
    document.annotations[2].attributes["DrawnWith"] = "#600";
    EXPECT_THAT(run({"info", "a.stp"}, document).out, Not(HasSubstr("drawings lost")));
}

}  // namespace
}  // namespace kesview
