#include "CommandKit.h"
#include "commands/TreeCommand.h"
#include "support/DocumentKit.h"

#include <gmock/gmock.h>

namespace kesview {
namespace {

using support::annotatedMachine;
using support::Answer;
using support::golden;
using support::run;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

TEST(TreeCommandTest, TextOfAMachine) {
    const Answer answer = run({"tree", "machine.stp"}, annotatedMachine());
    EXPECT_EQ(answer.code, ExitCode::Done);
    EXPECT_EQ(answer.out, golden("tree.txt", answer.out));
}

TEST(TreeCommandTest, FacesAndEdgesWhereAskedFor) {
    const Answer answer = run({"tree", "machine.stp", "--faces"}, annotatedMachine());
    EXPECT_EQ(answer.out, golden("tree_faces.txt", answer.out));
}

TEST(TreeCommandTest, JsonOfAMachine) {
    const Answer answer =
        run({"tree", "machine.stp", "--faces", "--format", "json"}, annotatedMachine());
    EXPECT_EQ(answer.out, golden("tree.json", answer.out));
    EXPECT_EQ(support::violations("tree", answer.out), "");
}

TEST(TreeCommandTest, DepthCutsAndSaysSo) {
    TreeOptions options;
    options.depth = 2;
    const TreeResult result = treeOf(annotatedMachine(), options);
    ASSERT_EQ(result.roots.size(), 1U);
    EXPECT_FALSE(result.roots[0].cut);
    ASSERT_EQ(result.roots[0].children.size(), 4U);  // two pairs, the plate, the seam
    EXPECT_TRUE(result.roots[0].children[0].cut);
    EXPECT_THAT(result.roots[0].children[0].children, IsEmpty());
}

TEST(TreeCommandTest, ASelectorOfEachPathLeadsToItsRenderId) {
    const Answer answer =
        run({"tree", "a.stp", "--depth", "1", "--format", "json"}, annotatedMachine());
    EXPECT_THAT(answer.out, HasSubstr("\"renderId\": \"1/50\""));
    EXPECT_THAT(answer.out, HasSubstr("\"cut\": true"));
}

TEST(TreeCommandTest, AnEmptyDocumentIsAnEmptyTree) {
    EXPECT_THAT(run({"tree", "a.stp"}, Document()).out, IsEmpty());
    const Answer answer = run({"tree", "a.stp", "--format", "json"}, Document());
    EXPECT_EQ(support::violations("tree", answer.out), "");
}

TEST(TreeCommandTest, SceneIsTheLibrarysOwnDump) {
    const Answer answer = run({"tree", "a.stp", "--scene", "-q"}, annotatedMachine());
    EXPECT_EQ(answer.code, ExitCode::Done);
    EXPECT_EQ(answer.out, golden("tree_scene.txt", answer.out));
    const Answer json =
        run({"tree", "a.stp", "--scene", "-q", "--format", "json"}, annotatedMachine());
    EXPECT_EQ(support::violations("tree", json.out), "");
}

TEST(TreeCommandTest, NamesOfTheFileCannotDriveATerminal) {
    Document document = annotatedMachine();
    document.roots[0].name = "\x1b[2J\n";
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{"tree", "a.stp"},
                                                      {"tree", "a.stp", "--format", "json"},
                                                      {"tree", "a.stp", "--scene"}}) {
        EXPECT_THAT(run(arguments, document).out, Not(HasSubstr("\x1b")));
    }
}

}  // namespace
}  // namespace kesview
