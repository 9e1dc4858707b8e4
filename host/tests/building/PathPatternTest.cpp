#include "building/PathPattern.h"

#include <gmock/gmock.h>

#include <random>
#include <string>
#include <vector>

namespace kesview {
namespace {

using testing::ElementsAre;

bool matches(const std::string& pattern, const std::string& path) {
    return PathPattern(pattern).Matches(path);
}

TEST(PathPatternTest, APatternWithoutWildcardsIsMatchedLetterByLetter) {
    EXPECT_TRUE(matches("/Gearbox/Bolt:2", "Gearbox/Bolt:2"));
    EXPECT_FALSE(matches("/Gearbox/Bolt:2", "Gearbox/Bolt:21"));
    EXPECT_FALSE(matches("/Gearbox/Bolt:2", "Gearbox"));
    EXPECT_FALSE(matches("/gearbox", "Gearbox"));
}

TEST(PathPatternTest, WithoutALeadingSlashItIsMatchedAtEveryDepth) {
    EXPECT_TRUE(matches("Bolt", "Bolt"));
    EXPECT_TRUE(matches("Bolt", "Gearbox/Shaft/Bolt"));
    EXPECT_TRUE(matches("Shaft/Bolt", "Gearbox/Shaft/Bolt"));
    EXPECT_FALSE(matches("Shaft/Bolt", "Shaft/Ring/Bolt"));
    EXPECT_FALSE(matches("/Bolt", "Gearbox/Bolt"));
}

TEST(PathPatternTest, AStarStandsForLettersOfOneName) {
    EXPECT_TRUE(matches("/Gear*/B*t", "Gearbox/Bolt"));
    EXPECT_TRUE(matches("/*", "Gearbox"));
    EXPECT_TRUE(matches("/Bolt*", "Bolt"));
    EXPECT_FALSE(matches("/*", "Gearbox/Bolt"));
    EXPECT_TRUE(matches("/*a*b*", "xxaxxabx"));
    EXPECT_FALSE(matches("/*a*b", "xxaxxabx"));
}

TEST(PathPatternTest, AQuestionMarkStandsForOneLetterOfAnyLength) {
    EXPECT_TRUE(matches("/M?", "M6"));
    EXPECT_TRUE(matches("/M?", "M\xC3\xA4"));
    EXPECT_TRUE(matches("/?", "\xF0\x9F\x94\xA9"));
    EXPECT_FALSE(matches("/M?", "M"));
    EXPECT_FALSE(matches("/M?", "M10"));
}

TEST(PathPatternTest, TwoStarsStandForAnyNumberOfNames) {
    EXPECT_TRUE(matches("/Gearbox/**/Bolt", "Gearbox/Bolt"));
    EXPECT_TRUE(matches("/Gearbox/**/Bolt", "Gearbox/Shaft/Ring/Bolt"));
    EXPECT_TRUE(matches("/Gearbox/**", "Gearbox"));
    EXPECT_TRUE(matches("/Gearbox/**", "Gearbox/Shaft/Bolt"));
    EXPECT_TRUE(matches("**", "Gearbox/Shaft"));
    EXPECT_FALSE(matches("/Gearbox/**/Bolt", "Shaft/Bolt"));
}

TEST(PathPatternTest, ABackslashTakesTheNextLetterAsItIs) {
    EXPECT_TRUE(matches("/R\\*", "R*"));
    EXPECT_FALSE(matches("/R\\*", "R2"));
    EXPECT_TRUE(matches("/SMD\\/R", "SMD\\/R"));  // one name that holds a slash
    EXPECT_FALSE(matches("/SMD/R", "SMD\\/R"));
    EXPECT_TRUE(matches("/*", "SMD\\/R"));
    EXPECT_TRUE(matches("/a\\\\b", "a\\\\b"));
}

TEST(PathPatternTest, NothingMatchesTheEmptyPattern) {
    EXPECT_FALSE(matches("", "Gearbox"));
    EXPECT_FALSE(matches("/", "Gearbox"));
    EXPECT_FALSE(matches("**", ""));
}

TEST(PathPatternTest, TellsWhetherToLookDeeper) {
    const PathPattern fromTop("/Gearbox/*/Bolt");
    EXPECT_TRUE(fromTop.CanMatchBelow("Gearbox"));
    EXPECT_TRUE(fromTop.CanMatchBelow("Gearbox/Shaft"));
    EXPECT_FALSE(fromTop.CanMatchBelow("Gearbox/Shaft/Bolt"));
    EXPECT_FALSE(fromTop.CanMatchBelow("Motor"));
    EXPECT_TRUE(PathPattern("Bolt").CanMatchBelow("Motor/Cover"));
    EXPECT_TRUE(PathPattern("/Motor/**").CanMatchBelow("Motor/Cover"));
    EXPECT_FALSE(PathPattern("/Motor/**").CanMatchBelow("Gearbox"));
}

TEST(PathPatternTest, NamesOfAPathAreWithoutBackslashes) {
    EXPECT_THAT(namesOfPath("A\\/B/C\\\\D/E"), ElementsAre("A/B", "C\\D", "E"));
    EXPECT_EQ(escapedForPath("A/B\\C"), "A\\/B\\\\C");
}

/// The same question answered by trying everything.
bool triedMatch(const std::string& pattern, const std::string& text) {
    if (pattern.empty() || text.empty()) {
        return text.empty() && pattern.find_first_not_of('*') == std::string::npos;
    }
    if (pattern[0] == '*') {
        return triedMatch(pattern.substr(1), text) || triedMatch(pattern, text.substr(1));
    }
    return (pattern[0] == '?' || pattern[0] == text[0]) &&
           triedMatch(pattern.substr(1), text.substr(1));
}

TEST(PathPatternTest, AgreesWithTryingEverything) {
    std::mt19937 random(7);
    const auto word = [&](const std::string& letters) {
        std::string made(1 + random() % 6, ' ');
        for (char& letter : made) {
            letter = letters[random() % letters.size()];
        }
        return made;
    };
    for (int trial = 0; trial < 20000; ++trial) {
        const std::string pattern = word("ab*?");
        const std::string text = word("ab");
        if (pattern != "**") {
            ASSERT_EQ(matches("/" + pattern, text), triedMatch(pattern, text))
                << pattern << " and " << text;
        }
    }
}

TEST(PathPatternTest, ManyStarsDoNotTakeForever) {
    std::string pattern = "/";
    for (int i = 0; i < 50; ++i) {
        pattern += "*a";
    }
    EXPECT_FALSE(matches(pattern + "b", std::string(5000, 'a')));
}

}  // namespace
}  // namespace kesview
