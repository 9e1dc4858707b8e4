#include "CommandKit.h"
#include "commands/CommandLine.h"
#include "commands/Errors.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <new>
#include <system_error>

namespace kesview {
namespace {

using support::Answer;
using support::run;
using support::toolsReading;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

const std::vector<std::string>& verbs() {
    static const std::vector<std::string> all = {"info", "tree",   "pmi",  "views", "render",
                                                 "pick", "report", "diff", "check"};
    return all;
}

Tools toolsThrowing(const std::function<void()>& fail) {
    Tools tools = toolsReading(Document());
    tools.read = [fail](const std::string&, const ReadOptions&, const ReadProgress&) -> Document {
        fail();
        return {};
    };
    return tools;
}

/// The options that the reader is given by these arguments.
ReadOptions readOptionsOf(const std::vector<std::string>& arguments) {
    Tools tools = toolsReading(Document());
    ReadOptions seen;
    tools.read = [&seen](const std::string&, const ReadOptions& options, const ReadProgress&) {
        seen = options;
        return Document();
    };
    EXPECT_EQ(run(arguments, tools).code, ExitCode::Done);
    return seen;
}

TEST(CommandLineTest, HelpGoesToTheDataStreamAndListsEveryVerb) {
    const Answer answer = run({"--help"}, Document());
    EXPECT_EQ(answer.code, ExitCode::Done);
    EXPECT_THAT(answer.err, IsEmpty());
    for (const std::string& verb : verbs()) {
        EXPECT_THAT(answer.out, HasSubstr("\n  " + verb + " "));
    }
}

TEST(CommandLineTest, EveryVerbHasHelpWithExamples) {
    for (const std::string& verb : verbs()) {
        const Answer answer = run({verb, "--help"}, Document());
        EXPECT_EQ(answer.code, ExitCode::Done) << verb;
        EXPECT_THAT(answer.out, HasSubstr("Examples:\n  kesview " + verb + " "));
        EXPECT_THAT(answer.out, HasSubstr("Exit codes:"));
    }
}

TEST(CommandLineTest, VersionIsOneLine) {
    const Answer answer = run({"--version"}, Document());
    EXPECT_EQ(answer.code, ExitCode::Done);
    EXPECT_THAT(answer.out, testing::MatchesRegex("kesview [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

TEST(CommandLineTest, UnknownVerbsAreRefusedWithANearOne) {
    const Answer answer = run({"inof", "a.stp"}, Document());
    EXPECT_EQ(answer.code, ExitCode::Usage);
    EXPECT_THAT(answer.out, IsEmpty());
    EXPECT_EQ(run({"rendr"}, Document()).err,
              "kesview: error: \"rendr\" is no verb. Did you mean \"render\"?\n");
}

TEST(CommandLineTest, UsageErrorsAreOneLineAndExitWithTwo) {
    const std::vector<std::vector<std::string>> wrong = {
        {},
        {"info"},
        {"info", "a.stp", "b.stp"},
        {"info", "a.stp", "--nonsense"},
        {"info", "a.stp", "--format", "xml"},
        {"info", "a.stp", "--time-limit", "0"},
        {"info", "a.stp", "--time-limit", "soon"},
        {"info", "a.stp", "--time-limit", "nan"},
        {"info", "a.stp", "--memory-limit", "much"},
        {"info", "a.stp", "--memory-limit", "0"},
        {"info", "a.stp", "--memory-limit", "-5"},
        {"info", "a.stp", "--memory-limit", "99999999999G"},
        {"info", "a.stp", "--format", "1"},
        {"--nonsense"},
        {"-q", "info", "a.stp"},
        {"pmi", "a.stp", "--of", ""},
        {"render", "a.stp", "-o", ""},
        {"report", "a.stp", "-o", ""},
        {"pick", "a.stp", "--at", "1,1", "--view", ""},
        {"pick", "a.stp", "--at", "1,1", "--hide", ""},
        {"tree", "a.stp", "--depth", "0"},
        {"render", "a.stp"},
        {"render", "a.stp", "-o", "a.png", "--size", "10"},
        {"render", "a.stp", "-o", "a.png", "--size", "0x10"},
        {"render", "a.stp", "-o", "a.png", "--size", "20000x10"},
        {"render", "a.stp", "-o", "a.png", "--pmi", "some"},
        {"pick", "a.stp"},
        {"pick", "a.stp", "--at", "1;2"},
        {"diff", "a.stp"}};
    for (const std::vector<std::string>& arguments : wrong) {
        const Answer answer = run(arguments, Document());
        const std::string line = testing::PrintToString(arguments);
        EXPECT_EQ(answer.code, ExitCode::Usage) << line;
        EXPECT_THAT(answer.out, IsEmpty()) << line;
        EXPECT_THAT(answer.err, StartsWith("kesview: error: ")) << line;
        EXPECT_EQ(answer.err.find('\n'), answer.err.size() - 1) << line << answer.err;
    }
}

TEST(CommandLineTest, RefusalsSpeakOfWhatMayBeWritten) {
    EXPECT_THAT(run({"info", "a.stp", "--format", "xml"}, Document()).err,
                HasSubstr("xml not in {text,json}"));
    EXPECT_THAT(run({"tree", "a.stp", "--depth", "0"}, Document()).err,
                HasSubstr("not in range 1 to 2147483647"));
    EXPECT_THAT(run({}, Document()).err, HasSubstr("a verb comes first"));
}

TEST(CommandLineTest, WhatMeansNothingInAnyFileIsRefusedBeforeReading) {
    const Tools tools = toolsThrowing([] { throw std::runtime_error("it was read"); });
    for (const std::vector<std::string>& words : std::vector<std::vector<std::string>>{
             {"--section", "q"}, {"--section", "1e200,0,0,5"}, {"--pmi", "view"}}) {
        for (std::vector<std::string> arguments : std::vector<std::vector<std::string>>{
                 {"pick", "a.stp", "--at", "1,1"}, {"render", "a.stp", "-o", "a.png"}}) {
            arguments.insert(arguments.end(), words.begin(), words.end());
            EXPECT_EQ(run(arguments, tools).code, ExitCode::Usage) << words[1];
        }
    }
}

TEST(CommandLineTest, WhatTheSystemRefusesIsNotTheFilesDamage) {
    EXPECT_EQ(run({"info", "a.stp"}, toolsThrowing([] {
                      throw std::system_error(EMFILE, std::generic_category(), "No pipe");
                  }))
                  .code,
              ExitCode::Unreadable);
}

TEST(CommandLineTest, EveryFailureHasItsExitCode) {
    const std::vector<std::pair<ReadFailure, ExitCode>> table = {
        {ReadFailure::Unreadable, ExitCode::Unreadable},
        {ReadFailure::UnknownFormat, ExitCode::UnknownFormat},
        {ReadFailure::Damaged, ExitCode::Damaged},
        {ReadFailure::LimitReached, ExitCode::LimitReached},
        {ReadFailure::Interrupted, ExitCode::Interrupted}};
    for (const auto& [failure, code] : table) {
        const ReadFailure thrown = failure;
        const Answer answer = run(
            {"info", "a.stp"}, toolsThrowing([thrown] { throw ReadError(thrown, "It broke."); }));
        EXPECT_EQ(answer.code, code);
        EXPECT_EQ(answer.err, "kesview: error: It broke.\n");
        EXPECT_THAT(answer.out, IsEmpty());
    }
}

TEST(CommandLineTest, ExitCodesAreTheNumbersThatScriptsKnow) {
    EXPECT_EQ(static_cast<int>(ExitCode::Done), 0);
    EXPECT_EQ(static_cast<int>(ExitCode::Findings), 1);
    EXPECT_EQ(static_cast<int>(ExitCode::Usage), 2);
    EXPECT_EQ(static_cast<int>(ExitCode::Unreadable), 3);
    EXPECT_EQ(static_cast<int>(ExitCode::UnknownFormat), 4);
    EXPECT_EQ(static_cast<int>(ExitCode::Damaged), 5);
    EXPECT_EQ(static_cast<int>(ExitCode::CannotDraw), 6);
    EXPECT_EQ(static_cast<int>(ExitCode::LimitReached), 7);
    EXPECT_EQ(static_cast<int>(ExitCode::Interrupted), 130);
}

TEST(CommandLineTest, MemoryThatRunsOutIsALimit) {
    EXPECT_EQ(run({"info", "a.stp"}, toolsThrowing([] { throw std::bad_alloc(); })).code,
              ExitCode::LimitReached);
}

TEST(CommandLineTest, LimitsReachTheReader) {
    const ReadOptions options =
        readOptionsOf({"info", "a.stp", "--time-limit", "1.5", "--memory-limit", "2G"});
    EXPECT_EQ(options.timeLimit.count(), 1500);
    EXPECT_EQ(options.memoryLimit, 2ULL << 30);
}

TEST(CommandLineTest, TheLimitOfTimeIsForTheWholeRun) {
    Tools tools = toolsReading(Document());
    std::chrono::milliseconds limit{0};
    tools.limitTime = [&limit](std::chrono::milliseconds asked) { limit = asked; };
    run({"info", "a.stp", "--time-limit", "20"}, tools);
    EXPECT_EQ(limit.count(), 20'000);
}

TEST(CommandLineTest, VerbsReadNoMoreThanTheyNeed) {
    EXPECT_FALSE(readOptionsOf({"tree", "a.stp"}).withPmi);
    EXPECT_FALSE(readOptionsOf({"tree", "a.stp"}).withTessellation);
    EXPECT_TRUE(readOptionsOf({"pmi", "a.stp"}).withPmi);
    EXPECT_FALSE(readOptionsOf({"pmi", "a.stp"}).withTessellation);
    EXPECT_FALSE(readOptionsOf({"views", "a.stp"}).withTessellation);
    EXPECT_TRUE(readOptionsOf({"info", "a.stp"}).withTessellation);
    EXPECT_TRUE(readOptionsOf({"check", "a.stp"}).withTessellation);
}

TEST(CommandLineTest, WhatReadingLostIsSaidOnTheErrorStream) {
    const Document machine = support::annotatedMachine();
    EXPECT_EQ(run({"views", "a.stp"}, machine).err,
              "kesview: warning: A drawing could not be read. (#620, 2 times)\n");
    EXPECT_EQ(run({"views", "a.stp", "-v"}, machine).err,
              "kesview: note: A text was placed by its plane. (#610)\n"
              "kesview: warning: A drawing could not be read. (#620, 2 times)\n");
    EXPECT_THAT(run({"views", "a.stp", "-q"}, machine).err, IsEmpty());
    EXPECT_THAT(run({"info", "a.stp"}, machine).err, IsEmpty());  // its data says it
}

TEST(CommandLineTest, ProgressIsShownOnTerminalsAlone) {
    const Tools tools = toolsReading(Document());
    EXPECT_THAT(run({"info", "a.stp"}, tools).err, IsEmpty());
    EXPECT_EQ(run({"info", "a.stp"}, tools, {true, false}).err, "\r\x1b[Kreading 25 %\r\x1b[K");
}

}  // namespace
}  // namespace kesview
