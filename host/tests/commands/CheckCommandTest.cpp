#include "CommandKit.h"
#include "commands/CheckCommand.h"

#include <gmock/gmock.h>

namespace kesview {
namespace {

using support::Answer;
using support::golden;
using support::run;
using testing::HasSubstr;
using testing::Not;

Document documentWith(std::vector<Finding> findings) {
    Document document;
    document.findings = std::move(findings);
    return document;
}

const Finding note{Finding::Severity::Note, "a.note", "Said.", "", 1};
const Finding warning{Finding::Severity::Warning, "b.warning", "Doubted.", "#12", 3};
const Finding error{Finding::Severity::Error, "c.error", "Lost.", "Bolt", 1};

TEST(CheckCommandTest, WorstFirst) {
    const Answer answer = run({"check", "a.stp"}, documentWith({note, warning, error}));
    EXPECT_EQ(answer.code, ExitCode::Findings);
    EXPECT_EQ(answer.out, golden("check.txt", answer.out));
}

TEST(CheckCommandTest, Json) {
    const Answer answer =
        run({"check", "a.stp", "--format", "json"}, documentWith({note, warning, error}));
    EXPECT_EQ(answer.out, golden("check.json", answer.out));
    EXPECT_EQ(support::violations("check", answer.out), "");
}

TEST(CheckCommandTest, NotesAloneAreNoFindings) {
    EXPECT_EQ(run({"check", "a.stp"}, documentWith({note})).code, ExitCode::Done);
    EXPECT_EQ(run({"check", "a.stp"}, documentWith({warning})).code, ExitCode::Findings);
}

TEST(CheckCommandTest, NothingFoundIsSaid) {
    const Answer answer = run({"check", "a.stp"}, Document());
    EXPECT_EQ(answer.code, ExitCode::Done);
    EXPECT_EQ(answer.out, "a.stp: nothing found\n");
}

TEST(CheckCommandTest, SeveritiesAreColouredOnATerminalAlone) {
    const Tools tools = support::toolsReading(documentWith({error}));
    EXPECT_THAT(run({"check", "a.stp"}, tools, {true, true}).out, HasSubstr("\x1b[31merror"));
    EXPECT_THAT(run({"check", "a.stp"}, tools, {true, false}).out, Not(HasSubstr("\x1b")));
}

}  // namespace
}  // namespace kesview
