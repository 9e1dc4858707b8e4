#include "commands/Console.h"

#include <gmock/gmock.h>

#include <cmath>
#include <sstream>

namespace kesview {
namespace {

using testing::HasSubstr;
using testing::MatchesRegex;

class ConsoleTest : public testing::Test {
protected:
    std::ostringstream _out;
    std::ostringstream _err;
    Streams _streams{_out, _err};
    CommonOptions _options;
};

TEST_F(ConsoleTest, NotesAreSaidWithVerboseAlone) {
    Console(_streams, _options).Note("quiet");
    EXPECT_EQ(_err.str(), "");
    _options.verbose = true;
    Console(_streams, _options).Note("loud");
    EXPECT_EQ(_err.str(), "kesview: note: loud\n");
}

TEST_F(ConsoleTest, QuietSaysErrorsAlone) {
    _options.quiet = true;
    Console console(_streams, _options);
    console.Warn("soft");
    console.Error("hard");
    EXPECT_EQ(_err.str(), "kesview: error: hard\n");
}

TEST_F(ConsoleTest, NothingReachesTheDataStream) {
    Console(_streams, _options).Error("lost");
    EXPECT_EQ(_out.str(), "");
}

TEST_F(ConsoleTest, NamesInMessagesAreMadePlain) {
    Console(_streams, _options).Warn("\x1b[2J in \"{}\"");
    EXPECT_EQ(_err.str(), "kesview: warning: \\x1b[2J in \"{}\"\n");
}

TEST_F(ConsoleTest, SeveritiesAreColouredWhereThatIsWanted) {
    _streams.colorsErr = true;
    Console(_streams, _options).Error("red");
    EXPECT_EQ(_err.str(), "kesview: \x1b[31merror\x1b[0m: red\n");
}

TEST_F(ConsoleTest, ProgressIsForTerminals) {
    Console(_streams, _options).Progress("reading", 0.5);
    EXPECT_EQ(_err.str(), "");
}

TEST_F(ConsoleTest, ProgressIsOneLineThatGoes) {
    _streams.errIsTerminal = true;
    {
        Console console(_streams, _options);
        console.Progress("reading", 0.5);
        console.Progress("reading", 0.504);  // the same percentage: nothing to write
        console.Progress("meshing", 2);
        console.Progress("meshing", std::nan(""));
    }
    EXPECT_EQ(_err.str(), "\r\x1b[Kreading 50 %\r\x1b[Kmeshing 100 %\r\x1b[Kmeshing 0 %\r\x1b[K");
}

TEST_F(ConsoleTest, QuietShowsNoProgress) {
    _streams.errIsTerminal = true;
    _options.quiet = true;
    Console(_streams, _options).Progress("reading", 0.5);
    EXPECT_EQ(_err.str(), "");
}

TEST_F(ConsoleTest, AMessageTakesTheProgressLineAway) {
    _streams.errIsTerminal = true;
    Console console(_streams, _options);
    console.Progress("reading", 0);
    console.Warn("odd");
    EXPECT_EQ(_err.str(), "\r\x1b[Kreading 0 %\r\x1b[Kkesview: warning: odd\n");
}

TEST_F(ConsoleTest, TimesAreListedByStageWhereAskedFor) {
    _options.time = true;
    {
        Console console(_streams, _options);
        EXPECT_EQ(console.Timed("reading", [] { return 7; }), 7);
        console.Timed("drawing", [] {});
    }
    EXPECT_THAT(_err.str(), MatchesRegex(" +[0-9.]+ s  reading\n +[0-9.]+ s  drawing\n"
                                         " +[0-9.]+ s  in all\n"));
}

TEST_F(ConsoleTest, AStageThatThrowsIsTimedAsWell) {
    _options.time = true;
    {
        Console console(_streams, _options);
        EXPECT_THROW(console.Timed("reading", [] { throw 1; }), int);
    }
    EXPECT_THAT(_err.str(), HasSubstr("s  reading\n"));
}

}  // namespace
}  // namespace kesview
