#include <KesVizCore/report/DebugStream.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <unistd.h>

namespace KesVizCore {
namespace {

struct LastWords {
    ~LastWords() { dbg << "last words" << std::endl; }
};

[[noreturn]] void exitWithLastWords() {
    static const LastWords speaker;
    std::exit(0);
}

TEST(DebugStreamDeathTest, IsThereWhileStaticObjectsAreDestroyed) {
    EXPECT_EXIT(exitWithLastWords(), testing::ExitedWithCode(0), "^last words\n$");
}

TEST(DebugStreamTest, StaysGoodWhenTheDebuggerTakesNothing) {
    const int standardError = dup(STDERR_FILENO);
    close(STDERR_FILENO);
    dbg << "lost" << std::endl;
    const bool isGood = dbg.good();
    dup2(standardError, STDERR_FILENO);
    close(standardError);
    EXPECT_TRUE(isGood);
}

}  // namespace
}  // namespace KesVizCore
