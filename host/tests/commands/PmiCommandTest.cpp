#include "CommandKit.h"
#include "commands/PmiCommand.h"

#include <gmock/gmock.h>

namespace kesview {
namespace {

using support::annotatedMachine;
using support::Answer;
using support::golden;
using support::run;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

std::vector<std::string> keysOf(const std::string& selector) {
    Document document = annotatedMachine();
    PmiOptions options;
    options.of = selector;
    std::vector<std::string> keys;
    for (const AnnotationFacts& facts : pmiOf(document, options).annotations) {
        keys.push_back(facts.key);
    }
    return keys;
}

TEST(PmiCommandTest, TextOfAMachine) {
    const Answer answer = run({"pmi", "machine.stp"}, annotatedMachine());
    EXPECT_EQ(answer.code, ExitCode::Done);
    EXPECT_EQ(answer.out, golden("pmi.txt", answer.out));
}

TEST(PmiCommandTest, SemanticRecordsWhereAskedFor) {
    const Answer answer = run({"pmi", "machine.stp", "--semantic"}, annotatedMachine());
    EXPECT_EQ(answer.out, golden("pmi_semantic.txt", answer.out));
}

TEST(PmiCommandTest, JsonOfAMachine) {
    const Answer answer =
        run({"pmi", "machine.stp", "--semantic", "--format", "json"}, annotatedMachine());
    EXPECT_EQ(answer.out, golden("pmi.json", answer.out));
    EXPECT_EQ(support::violations("pmi", answer.out), "");
}

TEST(PmiCommandTest, OfNamesThoseOfAFace) {
    EXPECT_THAT(keysOf("face:12"), ElementsAre("#600"));
    EXPECT_THAT(keysOf("1/50/32/22/11/10002/13"), ElementsAre("#600", "#620"));
}

TEST(PmiCommandTest, OfWhatIsNotThereIsAUsageError) {
    const Answer answer = run({"pmi", "a.stp", "--of", "Bollt", "-q"}, annotatedMachine());
    EXPECT_EQ(answer.code, ExitCode::Usage);
    EXPECT_EQ(answer.err, "kesview: error: nothing is named \"Bollt\". Did you mean \"Bolt\"?\n");
}

TEST(PmiCommandTest, AFileWithoutAnnotationsSaysSo) {
    EXPECT_EQ(run({"pmi", "a.stp"}, Document()).out, "no annotations\n");
    const Answer answer = run({"pmi", "a.stp", "--format", "json"}, Document());
    EXPECT_EQ(support::violations("pmi", answer.out), "");
}

TEST(PmiCommandTest, ALostDrawingIsToldFromNone) {
    Document document = annotatedMachine();
    document.annotations[2].drawnInFile = true;
    EXPECT_THAT(run({"pmi", "a.stp", "--of", "#620"}, document).out,
                HasSubstr("drawing lost in reading, hidden"));
    EXPECT_THAT(run({"pmi", "a.stp", "--of", "#620"}, annotatedMachine()).out,
                HasSubstr("drawing none in the file, hidden"));
}

TEST(PmiCommandTest, ADrawingThatAnnotationsShareIsToldFromALostOne) {
    Document document = annotatedMachine();
    document.annotations[2].drawnInFile = true;
    document.annotations[2].attributes["DrawnWith"] = "#600";
    EXPECT_THAT(run({"pmi", "a.stp", "--of", "#620"}, document).out,
                HasSubstr("drawing with #600, hidden"));
}

TEST(PmiCommandTest, TextsOfTheFileCannotDriveATerminal) {
    Document document = annotatedMachine();
    document.annotations[0].name = "\x1b[2J";
    document.annotations[0].attributes["Value"] = "\x07";
    document.annotations[0].text = "\x1b[31m";
    const Answer answer = run({"pmi", "a.stp", "--semantic"}, document);
    EXPECT_THAT(answer.out, Not(HasSubstr("\x1b")));
    EXPECT_THAT(answer.out, Not(HasSubstr("\x07")));
}

}  // namespace
}  // namespace kesview
