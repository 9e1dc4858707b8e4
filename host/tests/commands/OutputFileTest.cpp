#include "commands/OutputFile.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <string>
#include <sys/stat.h>

namespace kesview {
namespace {

bool isHeld(int signal) {
    sigset_t held;
    ::pthread_sigmask(SIG_BLOCK, nullptr, &held);
    return ::sigismember(&held, signal) == 1;
}

/// Whether signals wait while @p output is written.
bool signalsWaitFor(const std::string& output) {
    bool wait = false;
    writeOutput(output, [&wait] { wait = isHeld(SIGINT) && isHeld(SIGTERM) && isHeld(SIGALRM); });
    EXPECT_FALSE(isHeld(SIGTERM));
    return wait;
}

TEST(OutputFileTest, SignalsWaitUntilAFileIsWhole) {
    const support::TemporaryFolder folder;
    EXPECT_TRUE(signalsWaitFor(folder.File("new.png")));
    EXPECT_TRUE(signalsWaitFor(folder.Write("old.png", "old")));
}

TEST(OutputFileTest, APipeThatNobodyReadsCanBeInterrupted) {
    const support::TemporaryFolder folder;
    ASSERT_EQ(::mkfifo(folder.File("pipe").c_str(), 0600), 0);
    EXPECT_FALSE(signalsWaitFor(folder.File("pipe")));
    EXPECT_FALSE(signalsWaitFor("/dev/full"));
}

}  // namespace
}  // namespace kesview
