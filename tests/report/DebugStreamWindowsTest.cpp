#include "report/ChildProcess.h"

#include <KesVizCore/report/DebugStream.h>

#include <gtest/gtest.h>

#include <string>

namespace KesVizCore {
namespace {

/// The text of an event that tells of text for the debugger.
std::string textOf(HANDLE process, const OUTPUT_DEBUG_STRING_INFO& info) {
    std::string text(info.nDebugStringLength, '\0');
    SIZE_T count = 0;
    ReadProcessMemory(process, info.lpDebugStringData, text.data(), text.size(), &count);
    // cppcheck-suppress stlcstrReturn ; up to the first zero
    return text.c_str();
}

/// Runs @p program under this process as its debugger and gathers what it shows there.
std::string debuggedTextOf(const std::filesystem::path& program) {
    const OwnedHandle process = start(program, DEBUG_ONLY_THIS_PROCESS, nullptr);
    std::string text;
    DEBUG_EVENT event{};
    do {
        if (!WaitForDebugEvent(&event, 60000)) {
            ADD_FAILURE() << "nothing from the program for a minute";
            break;
        }
        if (event.dwDebugEventCode == OUTPUT_DEBUG_STRING_EVENT) {
            text += textOf(process.get(), event.u.DebugString);
        }
        ContinueDebugEvent(event.dwProcessId, event.dwThreadId, DBG_CONTINUE);
    } while (event.dwDebugEventCode != EXIT_PROCESS_DEBUG_EVENT);
    return text;
}

TEST(DebugStreamWindowsTest, ADebuggerSeesEveryCharacterUpToTheLastStaticObject) {
    EXPECT_EQ(debuggedTextOf(KESVIZCORE_DEBUG_TEXT_PROGRAM), "face \"7\": 2.5 mm\nlast words\n");
}

TEST(DebugStreamWindowsTest, StaysGoodWithoutADebugger) {
    ASSERT_FALSE(IsDebuggerPresent());
    dbg << "lost" << std::endl;
    EXPECT_TRUE(dbg.good());
}

}  // namespace
}  // namespace KesVizCore
