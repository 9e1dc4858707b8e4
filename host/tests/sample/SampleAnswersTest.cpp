#include "ProgramKit.h"
#include "SampleKit.h"
#include "support/FileContent.h"
#include "support/Golden.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace kesview {
namespace {

using support::contentOfFile;
using support::ProgramAnswer;
using support::runProgram;
using support::sampleFile;
using testing::IsEmpty;

/// The sample's path differs from one checkout to the next.
std::string withoutFolder(std::string text) {
    const std::string path = sampleFile();
    for (std::size_t at = 0; (at = text.find(path, at)) != std::string::npos;) {
        text.replace(at, path.size(), "bracket.step");
    }
    return text;
}

void expectGolden(const std::string& name, const std::string& text) {
    const std::string path = std::string(KESVIEW_SAMPLE_GOLDEN) + "/" + name;
    EXPECT_EQ(text, support::goldenText(path, text)) << name;
}

class SampleAnswersTest : public testing::TestWithParam<std::string> {};

TEST_P(SampleAnswersTest, AreThoseThatAreKept) {
    for (const std::string format : {"text", "json"}) {
        const ProgramAnswer answer = runProgram({GetParam(), sampleFile(), "--format", format});
        EXPECT_EQ(answer.code, 0);
        EXPECT_THAT(answer.err, IsEmpty());
        expectGolden(GetParam() + (format == "text" ? ".txt" : ".json"), withoutFolder(answer.out));
    }
}

INSTANTIATE_TEST_SUITE_P(Verbs, SampleAnswersTest,
                         testing::Values("info", "tree", "pmi", "views", "check"),
                         [](const auto& test) { return test.param; });

TEST(SampleReportTest, AReportOfTheSampleDoesNotDifferFromTheSample) {
    const support::TemporaryFolder folder;
    const std::string report = folder.File("report.xml");
    EXPECT_EQ(runProgram({"report", sampleFile(), "-o", report}).code, 0);
    const ProgramAnswer answer = runProgram({"diff", report, sampleFile()});
    EXPECT_EQ(answer.code, 0);
    EXPECT_EQ(answer.out, "no differences\n");
}

TEST(SampleReportTest, AnotherColourIsADifference) {
    const support::TemporaryFolder folder;
    std::string bytes = contentOfFile(sampleFile());
    const std::size_t bore = bytes.find("0.921568");  // 235 of 255, the red of the bore
    ASSERT_NE(bore, std::string::npos);
    bytes.replace(bore, 3, "0.1");
    const std::string other = folder.Write("other.step", bytes);
    const ProgramAnswer answer = runProgram({"diff", sampleFile(), other});
    EXPECT_EQ(answer.code, 1);
    EXPECT_THAT(answer.out, testing::AllOf(testing::HasSubstr("@Name='Bore'"),
                                           testing::HasSubstr("@Color changed from '235,140,40")));
}

}  // namespace
}  // namespace kesview
