/// @file
#include "reading/InterruptWatch.h"
#include "reading/ReadFile.h"
#include "reading/ReaderProgram.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace kesview {
namespace {

using std::chrono::milliseconds;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* stepStart = "ISO-10303-21;\nHEADER;\n";

std::size_t openDescriptors() {
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        count += entry.path().empty() ? 0U : 1U;
    }
    return count;
}

bool hasChildren() {
    return ::waitpid(-1, nullptr, WNOHANG) >= 0;
}

/// Whether the process is there and no zombie.
bool isRunning(pid_t id) {
    std::ifstream file("/proc/" + std::to_string(id) + "/stat");
    std::string word;
    return file >> word >> word >> word && word != "Z";
}

/// The number in a file that another process will write.
pid_t awaitId(const std::string& path) {
    for (int trial = 0; trial < 5000; ++trial) {
        pid_t id = 0;
        if (std::ifstream(path) >> id) {
            return id;
        }
        std::this_thread::sleep_for(milliseconds(2));
    }
    ADD_FAILURE() << path << " never came";
    return 0;
}

bool endsSoon(pid_t id) {
    for (int trial = 0; trial < 2000 && isRunning(id); ++trial) {
        std::this_thread::sleep_for(milliseconds(2));
    }
    return !isRunning(id);
}

class ReadFileTest : public testing::Test {
protected:
    ReadFileTest() {
        ::setenv("KESVIEW_READER", KESVIEW_FAKE_READER, 1);
        options.timeLimit = milliseconds(20'000);
        options.memoryLimit = 512U << 20;
    }
    ~ReadFileTest() override {
        ::unsetenv("KESVIEW_READER");
        EXPECT_EQ(openDescriptors(), descriptors);
        EXPECT_FALSE(hasChildren());
    }

    std::string fileFor(const std::string& behaviour) const {
        return folder.Write(behaviour + ".stp", stepStart);
    }

    Document read(const std::string& behaviour) const {
        return readFile(fileFor(behaviour), options);
    }

    ReadError failureOfPath(const std::string& path) const {
        try {
            readFile(path, options);
        } catch (const ReadError& error) {
            return error;
        }
        ADD_FAILURE() << path << " was read";
        return {ReadFailure::Unreadable, ""};
    }

    ReadError failureOf(const std::string& behaviour) const {
        return failureOfPath(fileFor(behaviour));
    }

    std::string quoted(const std::string& name) const { return "'" + folder.File(name) + "'"; }

    std::size_t descriptors = openDescriptors();
    support::TemporaryFolder folder;
    ReadOptions options;
};

// --- before a reader is started -----------------------------------------------------------------

TEST_F(ReadFileTest, AMissingFileIsUnreadable) {
    const ReadError error = failureOfPath(folder.File("none.stp"));
    EXPECT_EQ(error.Failure(), ReadFailure::Unreadable);
    EXPECT_EQ(error.what(), quoted("none.stp") + " cannot be read: No such file or directory.");
}

TEST_F(ReadFileTest, AFolderIsUnreadable) {
    const ReadError error = failureOfPath(folder.Path().string());
    EXPECT_EQ(error.Failure(), ReadFailure::Unreadable);
    EXPECT_THAT(error.what(), EndsWith("' cannot be read: it is a folder."));
}

TEST_F(ReadFileTest, APipeIsUnreadableAndNotWaitedFor) {
    const std::string path = folder.File("pipe.stp");
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    const ReadError error = failureOfPath(path);
    EXPECT_EQ(error.Failure(), ReadFailure::Unreadable);
    EXPECT_THAT(error.what(), EndsWith("it is not a regular file; save it as one first."));
}

TEST_F(ReadFileTest, AFileWithoutPermissionIsUnreadable) {
    const std::string path = fileFor("good");
    ::chmod(path.c_str(), 0);
    ::chmod(folder.Path().c_str(), 0755);
    const pid_t child = ::fork();
    if (child == 0) {
        constexpr uid_t nobody = 65534;
        if (::getuid() == 0 && ::setuid(nobody) != 0) {
            ::_exit(3);
        }
        const ReadError error = failureOfPath(path);
        const bool denied =
            std::string(error.what()).find("Permission denied") != std::string::npos;
        ::_exit(denied && error.Failure() == ReadFailure::Unreadable ? 7 : 1);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(WEXITSTATUS(status), 7);
}

TEST_F(ReadFileTest, ContentOfNoKindIsUnknown) {
    const ReadError error = failureOfPath(folder.Write("text.stp", "version 1\n"));
    EXPECT_EQ(error.Failure(), ReadFailure::UnknownFormat);
    EXPECT_EQ(error.what(),
              quoted("text.stp") + " is neither STEP, IGES, BREP nor STL by its content.");
}

TEST_F(ReadFileTest, AnEmptyFileIsDamagedWhereItsNameTellsTheKindAndUnknownElsewhere) {
    for (const char* name : {"a.stp", "a.STEP", "a.igs", "a.iges", "a.brep", "a.stl"}) {
        const ReadError error = failureOfPath(folder.Write(name, ""));
        EXPECT_EQ(error.Failure(), ReadFailure::Damaged) << name;
        EXPECT_EQ(error.what(), quoted(name) + " is empty.");
    }
    const ReadError error = failureOfPath(folder.Write("a.txt", ""));
    EXPECT_EQ(error.Failure(), ReadFailure::UnknownFormat);
    EXPECT_EQ(error.what(), quoted("a.txt") + " is empty.");
}

TEST_F(ReadFileTest, AReaderThatIsNotThereIsSaid) {
    ::setenv("KESVIEW_READER", "/nowhere/reader", 1);
    const ReadError error = failureOf("good");
    EXPECT_EQ(error.Failure(), ReadFailure::Unreadable);
    EXPECT_STREQ(error.what(),
                 "KESVIEW_READER names '/nowhere/reader', which is not a program; correct or "
                 "unset it.");
}

TEST_F(ReadFileTest, TheReaderStandsBesideTheProgramOrWhereItIsInstalled) {
    const std::string bin = folder.File("bin");
    std::filesystem::create_directories(bin);
    try {
        readerProgramNear(bin);
        ADD_FAILURE() << "there is none";
    } catch (const ReadError& error) {
        EXPECT_EQ(error.Failure(), ReadFailure::Unreadable);
        EXPECT_THAT(error.what(), StartsWith("The program kesview-reader is not beside this one"));
    }
    std::filesystem::create_directories(folder.Path() / "libexec/kesview");
    const std::string installed = folder.Write("libexec/kesview/kesview-reader", "");
    ::chmod(installed.c_str(), 0755);
    EXPECT_TRUE(std::filesystem::equivalent(readerProgramNear(bin), installed));
    const std::string beside = folder.Write("bin/kesview-reader", "");
    EXPECT_TRUE(std::filesystem::equivalent(readerProgramNear(bin), installed))
        << "what cannot be run is no reader";
    ::chmod(beside.c_str(), 0755);
    EXPECT_TRUE(std::filesystem::equivalent(readerProgramNear(bin), beside));
}

TEST_F(ReadFileTest, AReaderThatCannotBeStartedIsSaid) {
    const std::string program = folder.Write("reader",
                                             "\x7F"
                                             "ELF, but no more");
    ::chmod(program.c_str(), 0755);
    ::setenv("KESVIEW_READER", program.c_str(), 1);
    const ReadError error = failureOf("good");
    EXPECT_EQ(error.Failure(), ReadFailure::Unreadable);
    EXPECT_STREQ(error.what(), "The program kesview-reader cannot be started; install it again.");
}

// --- answers ------------------------------------------------------------------------------------

TEST_F(ReadFileTest, TheDocumentOfTheReaderIsTheAnswer) {
    EXPECT_EQ(read("good").author, "good");
}

TEST_F(ReadFileTest, ProgressIsPassedOnInOrderAndInRange) {
    std::vector<std::pair<std::string, double>> told;
    readFile(fileFor("good"), options, [&told](const std::string& stage, double fraction) {
        told.emplace_back(stage, fraction);
    });
    const std::vector<std::pair<std::string, double>> expected = {
        {"reading", 0}, {"reading", 0.5}, {"meshing", 1}};
    EXPECT_EQ(told, expected);
}

TEST_F(ReadFileTest, WhatTheListenerThrowsPassesThroughAndEndsTheReader) {
    const std::string path = fileFor("sleep");
    const auto refuse = [](const std::string&, double) { throw std::length_error("enough"); };
    EXPECT_THROW(readFile(path, options, refuse), std::length_error);
}

TEST_F(ReadFileTest, WhatTheReaderPrintsDoesNotDisturbItsAnswer) {
    EXPECT_EQ(read("noise").author, "noisy");
}

TEST_F(ReadFileTest, ALargeDocumentPasses) {
    options.memoryLimit = 2ULL << 30;
    const Document document = read("large");
    ASSERT_EQ(document.products.size(), 1U);
    EXPECT_EQ(document.products[0].bodies[0].points.size(), 25'000'002U);
    EXPECT_EQ(document.products[0].bodies[0].points.back(), 1.5F);
}

TEST_F(ReadFileTest, AReaderThatCrashesAfterItsAnswerHasAnswered) {
    EXPECT_EQ(read("late").author, "late");
}

TEST_F(ReadFileTest, TheReaderRunsUnderItsLimitsAndInheritsNothing) {
    const int inherited = ::dup(STDOUT_FILENO);
    ::fcntl(inherited, F_SETFD, FD_CLOEXEC);
    const std::vector<Finding> facts = read("facts").findings;
    ::close(inherited);
    ASSERT_EQ(facts.size(), 5U);
    EXPECT_EQ(facts[0].message, "0");
#if !defined(__SANITIZE_ADDRESS__)
    EXPECT_EQ(facts[1].message, std::to_string(512U << 20));
#endif
    EXPECT_EQ(facts[2].message, "own");
    EXPECT_EQ(facts[3].message, "nothing");
    EXPECT_THAT(facts[4].message, StartsWith("0 1 2 3 "));
}

TEST_F(ReadFileTest, TheReadersOwnErrorIsPassedOnAsItIs) {
    const ReadError error = failureOf("damaged");
    EXPECT_EQ(error.Failure(), ReadFailure::Damaged);
    EXPECT_STREQ(error.what(), "No solid in 'x'.");
}

// --- readers that fail --------------------------------------------------------------------------

TEST_F(ReadFileTest, ACrashIsDamageWithTheSignalAndTheLastWords) {
    const ReadError error = failureOf("crash");
    EXPECT_EQ(error.Failure(), ReadFailure::Damaged);
    EXPECT_EQ(error.what(), "The reader crashed (signal 11) on " + quoted("crash.stp") +
                                ". It last said: about to follow a wild pointer");
}

TEST_F(ReadFileTest, AnAbortIsDamageWithItsSignal) {
    const ReadError error = failureOf("abort");
    EXPECT_EQ(error.Failure(), ReadFailure::Damaged);
    EXPECT_EQ(error.what(), "The reader crashed (signal 6) on " + quoted("abort.stp") + ".");
}

TEST_F(ReadFileTest, AReaderKilledByTheSystemRanOutOfMemory) {
    EXPECT_EQ(failureOf("killed").Failure(), ReadFailure::LimitReached);
}

TEST_F(ReadFileTest, HalfADocumentIsNone) {
    for (const char* behaviour : {"half", "halfheader", "silent"}) {
        const ReadError error = failureOf(behaviour);
        EXPECT_EQ(error.Failure(), ReadFailure::Damaged) << behaviour;
        EXPECT_THAT(error.what(),
                    AllOf(HasSubstr("with status 0"), EndsWith("before its answer was complete.")));
    }
}

TEST_F(ReadFileTest, ACrashInTheMiddleOfTheAnswerIsACrash) {
    EXPECT_THAT(failureOf("halfcrash").what(), HasSubstr("crashed (signal 11)"));
}

TEST_F(ReadFileTest, AnExitStatusIsTold) {
    EXPECT_THAT(failureOf("status").what(), HasSubstr("with status 3"));
}

TEST_F(ReadFileTest, GarbageIsDamage) {
    const ReadError error = failureOf("garbage");
    EXPECT_EQ(error.Failure(), ReadFailure::Damaged);
    EXPECT_EQ(error.what(), "The reader failed on " + quoted("garbage.stp") +
                                ": The reader's answer makes no sense.");
}

TEST_F(ReadFileTest, ADocumentThatDoesNotHoldTogetherIsDamage) {
    const ReadError error = failureOf("unsound");
    EXPECT_EQ(error.Failure(), ReadFailure::Damaged);
    EXPECT_THAT(error.what(), EndsWith("Component 0 is of a product that does not exist."));
}

TEST_F(ReadFileTest, WhatAReaderStartedEndsWithIt) {
    options.timeLimit = milliseconds(500);
    EXPECT_EQ(failureOf("helper").Failure(), ReadFailure::LimitReached);
    EXPECT_TRUE(endsSoon(awaitId(folder.File("helper.stp.id"))));
}

// --- limits -------------------------------------------------------------------------------------

TEST_F(ReadFileTest, AReaderThatNeverAnswersMeetsTheTimeLimit) {
    options.timeLimit = milliseconds(150);
    for (const char* behaviour : {"hang", "spin", "chatter", "closed"}) {
        const auto start = std::chrono::steady_clock::now();
        const ReadError error = failureOf(behaviour);
        EXPECT_EQ(error.Failure(), ReadFailure::LimitReached) << behaviour;
        EXPECT_EQ(error.what(), "Reading " + quoted(std::string(behaviour) + ".stp") +
                                    " took longer than the limit of 0.15 s; raise the limit.");
        EXPECT_GE(std::chrono::steady_clock::now() - start, milliseconds(150));
        EXPECT_LT(std::chrono::steady_clock::now() - start, milliseconds(5000));
    }
}

TEST_F(ReadFileTest, AReaderThatEatsMemoryMeetsTheMemoryLimit) {
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "a memory checker needs all address space for itself";
#endif
    options.memoryLimit = 256U << 20;
    for (const char* behaviour : {"eat", "eatcrash"}) {
        const ReadError error = failureOf(behaviour);
        EXPECT_EQ(error.Failure(), ReadFailure::LimitReached) << behaviour;
        EXPECT_THAT(error.what(),
                    EndsWith("needs more memory than the limit allows; raise the limit."));
    }
    const ReadError error = failureOf("eattell");
    EXPECT_EQ(error.Failure(), ReadFailure::LimitReached);
    EXPECT_STREQ(error.what(), "No memory is left, said the reader.");
}

// --- interrupted --------------------------------------------------------------------------------

/// A process that reads @p path and ends with 7 when that was interrupted as it should.
pid_t startParent(const std::string& path, const ReadOptions& options) {
    const pid_t parent = ::fork();
    if (parent == 0) {
        const std::size_t before = openDescriptors();
        try {
            readFile(path, options);
            ::_exit(1);
        } catch (const ReadError& error) {
            const bool clean = openDescriptors() == before && !hasChildren();
            ::_exit(error.Failure() == ReadFailure::Interrupted && clean ? 7 : 2);
        }
    }
    return parent;
}

TEST_F(ReadFileTest, CtrlCAndTerminationEndTheReaderAndAreToldAsInterruption) {
    for (const int signal : {SIGINT, SIGTERM}) {
        const std::string path = fileFor("sleep");
        const pid_t parent = startParent(path, options);
        const pid_t reader = awaitId(path + ".id");
        EXPECT_TRUE(isRunning(reader));
        ::kill(parent, signal);
        int status = 0;
        ASSERT_EQ(::waitpid(parent, &status, 0), parent);
        EXPECT_TRUE(WIFEXITED(status));
        EXPECT_EQ(WEXITSTATUS(status), 7);
        EXPECT_FALSE(isRunning(reader));
        std::filesystem::remove(path + ".id");
    }
}

TEST_F(ReadFileTest, AnInterruptionIsNotLostWhileTheDocumentIsTakenApart) {
    options.memoryLimit = 2ULL << 30;
    options.timeLimit = milliseconds(120'000);
    const std::string path = fileFor("interrupting");
    bool interrupted = false;
    for (int trial = 0; trial < 5 && !interrupted; ++trial) {
        const InterruptWatch late;  // takes the signal where it comes too late
        try {
            readFile(path, options);
        } catch (const ReadError& error) {
            interrupted = error.Failure() == ReadFailure::Interrupted;
        }
    }
    EXPECT_TRUE(interrupted);
}

TEST_F(ReadFileTest, TheReaderDiesWithTheProcessThatWaitsForIt) {
    const std::string path = fileFor("sleep");
    const pid_t parent = startParent(path, options);
    const pid_t reader = awaitId(path + ".id");
    ::kill(parent, SIGKILL);
    int status = 0;
    ASSERT_EQ(::waitpid(parent, &status, 0), parent);
    EXPECT_TRUE(endsSoon(reader));
}

TEST_F(ReadFileTest, TwoThreadsReadAtOnce) {
    std::vector<std::string> authors(2);
    const std::string good = fileFor("good");
    const std::string noise = fileFor("noise");
    std::thread first([&] { authors[0] = readFile(good, options).author; });
    std::thread second([&] { authors[1] = readFile(noise, options).author; });
    first.join();
    second.join();
    EXPECT_EQ(authors, (std::vector<std::string>{"good", "noisy"}));
}

}  // namespace
}  // namespace kesview
