/// @file
#include "document/WriteFile.h"
#include "support/FileContent.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace kesview {
namespace {

namespace fs = std::filesystem;
using support::contentOfFile;

class WriteFileTest : public testing::Test {
protected:
    static std::string whyNot(const fs::path& path) {
        try {
            writeWhole(path.string(), "new");
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return "it was written";
    }

    std::vector<std::string> names() const {
        std::vector<std::string> found;
        for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
            found.push_back(entry.path().filename().string());
        }
        std::sort(found.begin(), found.end());
        return found;
    }

    static mode_t modeOf(const fs::path& path) {
        struct stat facts = {};
        EXPECT_EQ(::stat(path.c_str(), &facts), 0);
        return facts.st_mode & 07777;
    }

    const support::TemporaryFolder temporary;
    const fs::path folder = temporary.Path();
};

TEST_F(WriteFileTest, AllBytesAreWritten) {
    std::string bytes(3'000'000, 'x');
    bytes[1'234'567] = '\0';
    writeWhole((folder / "a").string(), bytes);
    EXPECT_EQ(contentOfFile(folder / "a"), bytes);
    writeWhole((folder / "empty").string(), "");
    EXPECT_EQ(contentOfFile(folder / "empty"), "");
}

TEST_F(WriteFileTest, WhatWasThereIsReplacedAndNothingElseIsLeft) {
    std::ofstream(folder / "a") << "an older and longer content";
    writeWhole((folder / "a").string(), "new");
    EXPECT_EQ(contentOfFile(folder / "a"), "new");
    EXPECT_EQ(names(), std::vector<std::string>{"a"});
}

TEST_F(WriteFileTest, ANewFileGetsTheModeOfAnyNewFile) {
    const mode_t previous = ::umask(0027);
    writeWhole((folder / "a").string(), "x");
    ::umask(previous);
    EXPECT_EQ(modeOf(folder / "a"), 0640U);
}

TEST_F(WriteFileTest, AReplacedFileKeepsItsMode) {
    std::ofstream(folder / "a") << "old";
    ::chmod((folder / "a").c_str(), 0751);
    writeWhole((folder / "a").string(), "x");
    EXPECT_EQ(modeOf(folder / "a"), 0751U);
}

TEST_F(WriteFileTest, ALinkStaysAndItsTargetIsWritten) {
    fs::create_directory(folder / "deep");
    std::ofstream(folder / "deep" / "target") << "old";
    fs::create_symlink("deep/target", folder / "link");
    writeWhole((folder / "link").string(), "new");
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(contentOfFile(folder / "deep" / "target"), "new");
}

TEST_F(WriteFileTest, ALinkToNothingMakesItsTarget) {
    fs::create_symlink("target", folder / "link");
    writeWhole((folder / "link").string(), "new");
    EXPECT_EQ(contentOfFile(folder / "target"), "new");
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
}

TEST_F(WriteFileTest, LinksInACircleAreRefused) {
    fs::create_symlink("b", folder / "a");
    fs::create_symlink("a", folder / "b");
    EXPECT_EQ(whyNot(folder / "a"), "'" + (folder / "a").string() +
                                        "' cannot be written: Too many levels of symbolic links.");
}

TEST_F(WriteFileTest, AMissingFolderIsToldWithTheSystemsReason) {
    const fs::path path = folder / "missing" / "a";
    EXPECT_EQ(whyNot(path),
              "'" + path.string() + "' cannot be written: No such file or directory.");
}

TEST_F(WriteFileTest, AFolderIsNotReplaced) {
    EXPECT_EQ(whyNot(folder), "'" + folder.string() + "' cannot be written: Is a directory.");
    EXPECT_EQ(whyNot(""), "'' cannot be written: No such file or directory.");
}

TEST_F(WriteFileTest, ADeviceIsWrittenDirectly) {
    EXPECT_EQ(whyNot("/dev/null"), "it was written");
    EXPECT_EQ(whyNot("/dev/full"), "'/dev/full' cannot be written: No space left on device.");
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST_F(WriteFileTest, APathWithoutAFolderMeansTheCurrentOne) {
    const fs::path previous = fs::current_path();
    fs::current_path(folder);
    writeWhole("plain", "x");
    fs::current_path(previous);
    EXPECT_EQ(names(), std::vector<std::string>{"plain"});
}

/// In a process of its own, as both the limit and the user id are for good.
template <typename Action>
int statusOf(Action action) {
    const pid_t child = ::fork();
    if (child == 0) {
        ::_exit(action());
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST_F(WriteFileTest, AFailureInTheMiddleLeavesTheOldContentAndNoTemporary) {
    std::ofstream(folder / "a") << "old";
    const int status = statusOf([this] {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit = {1000, 1000};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        try {
            writeWhole((folder / "a").string(), std::string(100'000, 'x'));
        } catch (const std::runtime_error& error) {
            return std::string(error.what()).find("File too large") != std::string::npos ? 7 : 1;
        }
        return 2;
    });
    EXPECT_EQ(status, 7);
    EXPECT_EQ(contentOfFile(folder / "a"), "old");
    EXPECT_EQ(names(), std::vector<std::string>{"a"});
}

TEST_F(WriteFileTest, AFileThatMayNotBeWrittenIsNotReplacedByAnother) {
    std::ofstream(folder / "a") << "old";
    ::chmod((folder / "a").c_str(), 0444);
    ::chmod(folder.c_str(), 0777);
    const int status = statusOf([this] {
        constexpr uid_t nobody = 65534;
        if (::getuid() == 0 && ::setuid(nobody) != 0) {
            return 3;
        }
        return whyNot(folder / "a").find("Permission denied") != std::string::npos ? 7 : 1;
    });
    EXPECT_EQ(status, 7);
    EXPECT_EQ(contentOfFile(folder / "a"), "old");
}

}  // namespace
}  // namespace kesview
