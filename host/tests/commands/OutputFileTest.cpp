#include "commands/OutputFile.h"
#include "commands/Signals.h"
#include "document/WriteFile.h"
#include "support/FileContent.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

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

/// Writes @p output with another thread about, which the kernel gives the signal that comes.
[[noreturn]] void writeWhileASignalComes(const std::string& output, int signal) {
    endOnSignals();
    std::thread([] { std::this_thread::sleep_for(std::chrono::seconds(60)); }).detach();
    writeOutput(output, [&] {
        ::kill(::getpid(), signal);
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        writeWhole(output, "whole");
    });
    ::_exit(0);
}

TEST(OutputFileTest, ASignalThatAnotherThreadIsGivenWaitsUntilTheFileIsWhole) {
    for (const int signal : {SIGINT, SIGTERM}) {
        const support::TemporaryFolder folder;
        const pid_t child = ::fork();
        if (child == 0) {
            writeWhileASignalComes(folder.File("out"), signal);
        }
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_EQ(WIFEXITED(status) ? WEXITSTATUS(status) : -1, 130);
        EXPECT_EQ(support::contentOfFile(folder.File("out")), "whole");
    }
}

TEST(OutputFileTest, APipeThatNobodyReadsCanBeInterrupted) {
    const support::TemporaryFolder folder;
    ASSERT_EQ(::mkfifo(folder.File("pipe").c_str(), 0600), 0);
    EXPECT_FALSE(signalsWaitFor(folder.File("pipe")));
    EXPECT_FALSE(signalsWaitFor("/dev/full"));
}

}  // namespace
}  // namespace kesview
