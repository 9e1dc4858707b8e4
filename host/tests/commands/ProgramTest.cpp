#include "ProgramKit.h"
#include "support/FileContent.h"
#include "support/RealFiles.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <sys/stat.h>
#include <utility>

namespace kesview {
namespace {

using support::ProgramAnswer;
using support::ProgramRun;
using support::runProgram;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

/// A file with an STL body of one triangle.
class StlFile {
public:
    std::string Path() const { return _path; }

private:
    support::TemporaryFolder _folder;
    std::string _path = _folder.Write(
        "one.stl",
        "solid one\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 10 0 0\nvertex 0 20 0\n"
        "endloop\nendfacet\nendsolid one\n");
};

TEST(ProgramTest, SaysItsVersion) {
    const ProgramAnswer answer = runProgram({"--version"});
    EXPECT_EQ(answer.code, 0);
    EXPECT_THAT(answer.out, StartsWith("kesview "));
}

TEST(ProgramTest, ReadsAFileFromEndToEnd) {
    const StlFile file;
    const ProgramAnswer answer = runProgram({"info", file.Path()});
    EXPECT_EQ(answer.code, 0) << answer.err;
    EXPECT_THAT(answer.out, HasSubstr("10 x 20 x 0 mm"));
    EXPECT_THAT(answer.err, IsEmpty());
}

TEST(ProgramTest, AFileThatIsNotThereIsUnreadable) {
    const ProgramAnswer answer = runProgram({"info", "/no/such/file.stp"});
    EXPECT_EQ(answer.code, 3);
    EXPECT_THAT(answer.out, IsEmpty());
    EXPECT_THAT(answer.err, StartsWith("kesview: error: "));
}

TEST(ProgramTest, AFullDiskIsSaid) {
    if (!std::filesystem::exists("/dev/full")) {
        GTEST_SKIP() << "there is no /dev/full here";
    }
    ProgramRun run;
    run.arguments = {"--help"};
    run.output = "/dev/full";
    const ProgramAnswer answer = runProgram(run);
    EXPECT_EQ(answer.code, 3);
    EXPECT_THAT(answer.err, StartsWith("kesview: error: the output cannot be written: "));
}

TEST(ProgramTest, WithoutADriverOneLineSaysSo) {
    const StlFile file;
    ::setenv("__EGL_VENDOR_LIBRARY_DIRS", "/nonexistent", 1);
    const ProgramAnswer answer = runProgram({"render", file.Path(), "-o", file.Path() + ".png"});
    ::unsetenv("__EGL_VENDOR_LIBRARY_DIRS");
    EXPECT_EQ(answer.code, 6);
    EXPECT_THAT(answer.err, StartsWith("kesview: error: Nothing can be drawn here"));
    EXPECT_EQ(answer.err.find('\n'), answer.err.size() - 1) << answer.err;
    EXPECT_FALSE(std::filesystem::exists(file.Path() + ".png"));
}

TEST(ProgramTest, AFileThatMayNotGrowIsSaid) {
    const StlFile file;
    const std::string report = file.Path() + ".xml";
    const std::string command = "ulimit -f 0; " + std::string(KESVIEW_PROGRAM) + " report '" +
                                file.Path() + "' -o '" + report + "' 2>/dev/null";
    const int status = std::system(command.c_str());
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 3);
    EXPECT_FALSE(std::filesystem::exists(report));
}

TEST(ProgramTest, ADiffDoesNotWaitForAPipe) {
    const StlFile file;
    const std::string pipe = file.Path() + ".pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    for (const auto& [before, after] : {std::pair(pipe, file.Path()), {file.Path(), pipe}}) {
        const ProgramAnswer answer = runProgram({"diff", before, after, "--time-limit", "30"});
        EXPECT_EQ(answer.code, 3) << answer.err;
        EXPECT_THAT(answer.err, HasSubstr("it is not a regular file"));
    }
}

TEST(ProgramTest, AReaderThatHasEnoughIsNoError) {
    // The shell's own code for the pipe is that of its first part.
    const support::TemporaryFolder folder;
    const std::string said = folder.File("said.txt");
    const std::string command =
        "{ " + std::string(KESVIEW_PROGRAM) + " --help; echo $? >&2; } 2>" + said + " | true";
    ASSERT_EQ(std::system(command.c_str()), 0);
    EXPECT_EQ(support::contentOfFile(said), "0\n");
}

TEST(ProgramTest, InterruptsEndWith130AndLeaveNoOutput) {
    KESVIEW_NEEDS_DATA();
    const support::TemporaryFolder folder;
    ProgramRun run;
    run.arguments = {"render", support::realFile("gen_big_40x25.stp"), "-o",
                     folder.File("out.png")};
    run.signal = SIGINT;
    // While it reads, builds, draws and writes, until it is done before the signal comes.
    for (int milliseconds = 20; milliseconds < 60'000; milliseconds = milliseconds * 3 / 2) {
        run.signalAfter = std::chrono::milliseconds(milliseconds);
        const ProgramAnswer answer = runProgram(run);
        if (answer.code == 0 && milliseconds > 20) {
            break;
        }
        EXPECT_EQ(answer.code, 130) << milliseconds << " ms: " << answer.err;
        EXPECT_TRUE(std::filesystem::is_empty(folder.Path())) << milliseconds << " ms";
    }
}

TEST(ProgramTest, TheTimeLimitEndsWithSeven) {
    KESVIEW_NEEDS_DATA();
    const ProgramAnswer answer =
        runProgram({"info", support::realFile("gen_big_40x25.stp"), "--time-limit", "0.2"});
    EXPECT_EQ(answer.code, 7) << answer.err;
    EXPECT_THAT(answer.out, IsEmpty());
}

}  // namespace
}  // namespace kesview
