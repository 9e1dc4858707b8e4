#include "CommandKit.h"
#include "commands/DiffCommand.h"
#include "support/DocumentKit.h"
#include "support/FileContent.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace kesview {
namespace {

using support::annotatedMachine;
using support::Answer;
using support::golden;
using support::run;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class DiffCommandTest : public testing::Test {
protected:
    DiffCommandTest() {
        // "new.stp" has another colour and lacks a bolt.
        _tools.read = [](const std::string& path, const ReadOptions&, const ReadProgress&) {
            Document document = annotatedMachine();
            if (path == "new.stp") {
                document.products[0].bodies[0].color = Color{1, 2, 3, 255};
                document.products[1].components.pop_back();
            }
            return document;
        };
    }

    std::string file(const std::string& name) const { return _folder.File(name); }

    const support::TemporaryFolder _folder;
    Tools _tools = support::toolsReading(Document());
};

TEST_F(DiffCommandTest, ReportIsXmlOnTheDataStream) {
    const Answer answer = run({"report", "old.stp", "-q"}, _tools);
    EXPECT_EQ(answer.code, ExitCode::Done);
    EXPECT_EQ(answer.out, golden("report.xml", answer.out));
    const Answer json = run({"report", "old.stp", "-q", "--format", "json"}, _tools);
    EXPECT_EQ(support::violations("report", json.out), "");
}

TEST_F(DiffCommandTest, OtherXmlIsNoReport) {
    _folder.Write("page.xml", "<html><body/></html>");
    const Answer answer = run({"diff", file("page.xml"), "old.stp", "-q"}, _tools);
    EXPECT_EQ(answer.code, ExitCode::UnknownFormat);
    EXPECT_THAT(answer.out, IsEmpty());
    EXPECT_THAT(answer.err, HasSubstr("is no report: it begins with <html>"));
}

TEST_F(DiffCommandTest, ReportGoesIntoAFileWhole) {
    const Answer answer = run({"report", "old.stp", "-q", "-o", file("old.xml")}, _tools);
    EXPECT_EQ(answer.out, file("old.xml") + "  report of old.stp\n");
    EXPECT_EQ(support::contentOfFile(file("old.xml")),
              run({"report", "old.stp", "-q"}, _tools).out);
}

TEST_F(DiffCommandTest, ReportThatCannotBeWrittenSaysWhy) {
    const Answer answer = run({"report", "old.stp", "-q", "-o", file("no/old.xml")}, _tools);
    EXPECT_EQ(answer.code, ExitCode::Unreadable);
    EXPECT_THAT(answer.err, StartsWith("kesview: error: "));
    EXPECT_THAT(answer.out, IsEmpty());
}

TEST_F(DiffCommandTest, AFileDoesNotDifferFromItself) {
    const Answer answer = run({"diff", "old.stp", "old.stp", "-q"}, _tools);
    EXPECT_EQ(answer.code, ExitCode::Done);
    EXPECT_EQ(answer.out, "no differences\n");
}

TEST_F(DiffCommandTest, DifferencesAreListedAndAreFindings) {
    const Answer answer = run({"diff", "old.stp", "new.stp", "-q"}, _tools);
    EXPECT_EQ(answer.code, ExitCode::Findings);
    EXPECT_EQ(answer.out, golden("diff.txt", answer.out));
    const Answer json = run({"diff", "old.stp", "new.stp", "-q", "--format", "json"}, _tools);
    EXPECT_EQ(json.out, golden("diff.json", json.out));
    EXPECT_EQ(support::violations("diff", json.out), "");
}

TEST_F(DiffCommandTest, AReportStandsForItsFile) {
    run({"report", "old.stp", "-q", "-o", file("old.xml")}, _tools);
    EXPECT_EQ(run({"diff", file("old.xml"), "old.stp", "-q"}, _tools).code, ExitCode::Done);
    EXPECT_EQ(run({"diff", file("old.xml"), "new.stp", "-q"}, _tools).out,
              run({"diff", "old.stp", "new.stp", "-q"}, _tools).out);
}

TEST_F(DiffCommandTest, ADamagedReportIsDamage) {
    _folder.Write("bad.xml", "<Scene><Node></Scene>");
    const Answer answer = run({"diff", file("bad.xml"), "old.stp", "-q"}, _tools);
    EXPECT_EQ(answer.code, ExitCode::Damaged);
    EXPECT_THAT(answer.err, HasSubstr("bad.xml"));
}

}  // namespace
}  // namespace kesview
