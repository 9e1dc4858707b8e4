// What the rooms of kesview promise of threads, each promise by threads that do it at the same
// time. The thread sanitizer, under which scripts/thread-check runs this, sees a race also where
// the answers are right.

#include "building/PathPattern.h"
#include "building/SceneIndex.h"
#include "document/WriteFile.h"
#include "reading/InterruptWatch.h"
#include "reading/ReadFile.h"
#include "reading/part21/ExchangeFile.h"
#include "support/DocumentKit.h"
#include "support/FileContent.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <atomic>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <poll.h>
#include <string>
#include <thread>
#include <vector>

namespace kesview {
namespace {

constexpr int threadCount = 4;
constexpr int roundCount = 50;

/// Runs @p work with the numbers from 0 on, each on a thread of its own, many times.
void onThreads(const std::function<void(int)>& work) {
    std::vector<std::thread> threads;
    for (int number = 0; number < threadCount; ++number) {
        threads.emplace_back([&work, number] {
            for (int round = 0; round < roundCount; ++round) {
                work(number);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST(ThreadsTest, ManyReadOneExchangeFile) {
    const ExchangeFile file = ExchangeFile::FromText(
        "ISO-10303-21;\nHEADER;\nENDSEC;\nDATA;\n#1=POINT('a',1.);\n#2=(LINE(#1)CURVE());\n"
        "#3=POINT('b',(1,(2,#1)));\nENDSEC;\nEND-ISO-10303-21;\n");
    onThreads([&file](int) {
        EXPECT_EQ(file.Size(), 3U);
        EXPECT_EQ(file.OfType("POINT"), (std::vector<EntityNumber>{1, 3}));
        EXPECT_EQ(file.OfTypeEnding("URVE"), std::vector<EntityNumber>{2});
        EXPECT_EQ(file.Get(3).Name(), "b");
        EXPECT_EQ(file.Get(3).References(), std::vector<EntityNumber>{1});
        EXPECT_FALSE(file.Has(4));
    });
}

/// The paths of all nodes, and those that selectors name.
std::vector<std::string> pathsOf(const SceneIndex& index) {
    std::vector<std::string> paths;
    const auto note = [&paths](const SceneNode& node) {
        paths.push_back(node.path);
        return NextStep::Into;
    };
    index.ForEachNode(note);
    index.ForEachMatch("Bolt/**", note);
    index.ForEachMatch("face:12", note);
    return paths;
}

TEST(ThreadsTest, ManyAskOneSceneIndex) {
    Document document = support::machine();
    support::addAnnotations(document);
    const SceneIndex index(document);
    const std::vector<std::string> expected = pathsOf(index);
    EXPECT_GT(expected.size(), 30U);
    onThreads([&](int) {
        EXPECT_EQ(pathsOf(index), expected);
        EXPECT_TRUE(index.Find(viz::RenderId({1, 50, 31}, viz::View3D)));
    });
}

TEST(ThreadsTest, ManyReadOnePathPattern) {
    const PathPattern pattern("/Gear*/**/B?lt");
    onThreads([&pattern](int) {
        EXPECT_TRUE(pattern.Matches("Gearbox/Shaft/Bolt"));
        EXPECT_FALSE(pattern.Matches("Gearbox/Shaft"));
        EXPECT_TRUE(pattern.CanMatchBelow("Gearbox"));
    });
}

TEST(ThreadsTest, FilesAreWrittenByManyIntoOneFolder) {
    const support::TemporaryFolder folder;
    const std::string shared = folder.File("shared");
    onThreads([&](int number) {
        const std::string content(1000, static_cast<char>('a' + number));
        const std::string own = folder.File(std::to_string(number));
        writeWhole(own, content);
        EXPECT_EQ(support::contentOfFile(own), content);
        writeWhole(shared, content);
        const std::string seen = support::contentOfFile(shared);
        EXPECT_EQ(seen, std::string(1000, seen.front()));
    });
    const std::filesystem::directory_iterator files(folder.Path());
    EXPECT_EQ(std::distance(begin(files), end(files)), threadCount + 1);
}

TEST(ThreadsTest, DocumentsAreReadByMany) {
    ::setenv("KESVIEW_READER", KESVIEW_FAKE_READER, 1);
    const support::TemporaryFolder folder;
    const std::string path = folder.Write("good.stp", "ISO-10303-21;\nHEADER;\n");
    ReadOptions options;
    options.memoryLimit = 0;  // the sanitizer takes all addresses there are
    std::vector<std::thread> threads;
    for (int number = 0; number < threadCount; ++number) {
        threads.emplace_back([&] { EXPECT_EQ(readFile(path, options).author, "good"); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    ::unsetenv("KESVIEW_READER");
}

TEST(ThreadsTest, WatchesComeAndGoOnManyThreadsWhileSignalsCome) {
    const InterruptWatch lasting;
    std::atomic<bool> done{false};
    std::thread sender([&done] {
        while (!done) {
            ::kill(::getpid(), SIGINT);
            std::this_thread::yield();
        }
    });
    onThreads([](int) {
        const InterruptWatch watch;
        EXPECT_GE(watch.Descriptor(), 0);
    });
    done = true;
    sender.join();
    pollfd waiting = {lasting.Descriptor(), POLLIN, 0};
    EXPECT_EQ(::poll(&waiting, 1, 0), 1);
}

/// The last of the watches closes what the handler writes to.
TEST(ThreadsTest, AWatchEndsWhileAnotherThreadAnswersASignal) {
    struct sigaction previous = {};
    struct sigaction unwatched = {};
    unwatched.sa_handler = [](int) {};
    ::sigaction(SIGINT, &unwatched, &previous);
    std::atomic<bool> done{false};
    std::thread answering([&done] {
        while (!done) {
            ::raise(SIGINT);
        }
    });
    for (int round = 0; round < roundCount; ++round) {
        const InterruptWatch watch;
        pollfd waiting = {watch.Descriptor(), POLLIN, 0};
        EXPECT_EQ(::poll(&waiting, 1, 60'000), 1);
    }
    done = true;
    answering.join();
    ::sigaction(SIGINT, &previous, nullptr);
}

}  // namespace
}  // namespace kesview
