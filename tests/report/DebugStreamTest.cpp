#include "report/TestSystem.h"

#include <KesVizCore/report/DebugStream.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace KesVizCore {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string arrivedAtLoad = [] {
    DebuggerCapture debugger;
    dbg << "early" << 1 << std::endl;
    return debugger.TakeText();
}();

/// Lets a test call what only the stream itself calls.
class OpenStreambuf : public debugger_streambuf {
public:
    using debugger_streambuf::overflow;
    using debugger_streambuf::sync;
};

TEST(DebuggerStreambufTest, HoldsTheFirstCharacterBack) {
    DebuggerCapture debugger;
    OpenStreambuf buffer;
    buffer.overflow('a');
    EXPECT_THAT(debugger.TakeCalls(), IsEmpty());
}

TEST(DebuggerStreambufTest, EachCharacterSendsTheOneBefore) {
    DebuggerCapture debugger;
    OpenStreambuf buffer;
    buffer.overflow('a');
    buffer.overflow('b');
    EXPECT_THAT(debugger.TakeCalls(), ElementsAre("a"));
    buffer.overflow('c');
    EXPECT_THAT(debugger.TakeCalls(), ElementsAre("b"));
}

TEST(DebuggerStreambufTest, OverflowReturnsZero) {
    DebuggerCapture debugger;
    OpenStreambuf buffer;
    EXPECT_EQ(buffer.overflow('a'), 0);
    EXPECT_EQ(buffer.overflow('b'), 0);
    EXPECT_EQ(buffer.overflow(std::char_traits<char>::eof()), 0);
}

TEST(DebuggerStreambufTest, OverflowKeepsTheEndOfFileValueAsANarrowCharacter) {
    DebuggerCapture debugger;
    OpenStreambuf buffer;
    buffer.overflow(std::char_traits<char>::eof());  // -1: nothing is special about it here
    buffer.sync();
    EXPECT_THAT(debugger.TakeCalls(), ElementsAre("\xFF"));
}

TEST(DebuggerStreambufTest, ZeroCharacterShowsNothing) {
    DebuggerCapture debugger;
    OpenStreambuf buffer;
    buffer.overflow('a');
    buffer.overflow('\0');  // as pending text it is an empty one
    buffer.overflow('b');
    buffer.sync();
    EXPECT_THAT(debugger.TakeCalls(), ElementsAre("a", "b"));
}

TEST(DebuggerStreambufTest, SyncSendsThePendingCharacterOnce) {
    DebuggerCapture debugger;
    OpenStreambuf buffer;
    buffer.overflow('a');
    buffer.sync();
    EXPECT_THAT(debugger.TakeCalls(), ElementsAre("a"));
    buffer.sync();
    EXPECT_THAT(debugger.TakeCalls(), IsEmpty());
}

TEST(DebuggerStreambufTest, CharacterAfterASyncIsHeldBackAgain) {
    DebuggerCapture debugger;
    OpenStreambuf buffer;
    buffer.overflow('a');
    buffer.sync();
    buffer.overflow('b');
    EXPECT_THAT(debugger.TakeCalls(), ElementsAre("a"));
}

TEST(DebuggerStreambufTest, SyncReturnsZero) {
    DebuggerCapture debugger;
    OpenStreambuf buffer;
    EXPECT_EQ(buffer.sync(), 0);
    buffer.overflow('a');
    EXPECT_EQ(buffer.sync(), 0);
}

TEST(DebuggerStreambufTest, PendingCharacterIsLostAtTheEnd) {
    DebuggerCapture debugger;
    {
        OpenStreambuf buffer;
        buffer.overflow('a');
    }
    EXPECT_THAT(debugger.TakeCalls(), IsEmpty());
}

TEST(DebuggerStreambufTest, BuffersDoNotShareThePendingCharacter) {
    DebuggerCapture debugger;
    OpenStreambuf one;
    OpenStreambuf other;
    one.overflow('a');
    other.overflow('b');
    one.sync();
    EXPECT_THAT(debugger.TakeCalls(), ElementsAre("a"));
}

TEST(DebugStreamTest, WritesThroughADebuggerStreambuf) {
    EXPECT_NE(dynamic_cast<debugger_streambuf*>(dbg.rdbuf()), nullptr);
}

TEST(DebugStreamTest, IsReadyWhileStaticObjectsAreConstructed) {
    EXPECT_EQ(arrivedAtLoad, "early1\n");
}

TEST(DebugStreamTest, TextArrivesOneCharacterBehindInOneCallACharacter) {
    DebuggerCapture debugger;
    dbg << "abc";
    EXPECT_THAT(debugger.TakeCalls(), ElementsAre("a", "b"));
    dbg << "de";
    EXPECT_THAT(debugger.TakeCalls(), ElementsAre("c", "d"));
    dbg.flush();
    EXPECT_THAT(debugger.TakeCalls(), ElementsAre("e"));
}

TEST(DebugStreamTest, EndOfLineShowsTheWholeLine) {
    DebuggerCapture debugger;
    dbg << "node " << 42 << ' ' << 2.5 << std::endl;
    EXPECT_EQ(debugger.TakeText(), "node 42 2.5\n");
}

TEST(DebugStreamTest, NewLineCharacterAloneIsHeldBack) {
    DebuggerCapture debugger;
    dbg << "a\n";
    EXPECT_EQ(debugger.TakeText(), "a");
    dbg.flush();
    EXPECT_EQ(debugger.TakeText(), "\n");
}

TEST(DebugStreamTest, EveryByteButZeroArrivesAsItIs) {
    DebuggerCapture debugger;
    std::string bytes;
    for (int byte = 1; byte < 128; ++byte) {
        bytes.push_back(static_cast<char>(byte));
    }
    dbg << bytes << std::flush;
    EXPECT_EQ(debugger.TakeText(), bytes);
    bytes.clear();
    for (int byte = 128; byte < 256; ++byte) {
        bytes.push_back(static_cast<char>(byte));
    }
    dbg << bytes << std::flush;
    EXPECT_EQ(debugger.TakeText(), bytes);
}

TEST(DebugStreamTest, StaysGood) {
    DebuggerCapture debugger;
    dbg << '\0' << '\xFF' << "text" << std::endl;
    EXPECT_TRUE(dbg.good());
}

}  // namespace
}  // namespace KesVizCore
