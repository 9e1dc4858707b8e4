#include "commands/NearNames.h"

#include <gmock/gmock.h>

namespace kesview {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(NearNamesTest, NearestFirstWhateverTheCase) {
    EXPECT_THAT(nearNames("bolt", {"Bolts", "Bolt", "Nut"}), ElementsAre("Bolt", "Bolts"));
}

TEST(NearNamesTest, NamesThatHoldItCount) {
    EXPECT_THAT(nearNames("screw", {"Hexagon screw M6", "Nut"}), ElementsAre("Hexagon screw M6"));
}

TEST(NearNamesTest, AtMostThree) {
    EXPECT_EQ(nearNames("part1", {"part2", "part3", "part4", "part5"}).size(), 3U);
}

TEST(NearNamesTest, FarNamesAreNone) {
    EXPECT_THAT(nearNames("gearbox", {"Nut", "Bolt", ""}), IsEmpty());
    EXPECT_THAT(nearNames("", {"Nut"}), IsEmpty());
}

TEST(NearNamesTest, VeryLongNamesCostNothing) {
    EXPECT_THAT(nearNames(std::string(100'000, 'a'), {std::string(100'000, 'a')}), IsEmpty());
}

TEST(DidYouMeanTest, ListsThemInASentence) {
    EXPECT_EQ(didYouMean({}), "");
    EXPECT_EQ(didYouMean({"A"}), " Did you mean \"A\"?");
    EXPECT_EQ(didYouMean({"A", "B", "C"}), " Did you mean \"A\", \"B\" or \"C\"?");
    EXPECT_EQ(didYouMean({"\x1b[2J"}), " Did you mean \"\\x1b[2J\"?");
}

}  // namespace
}  // namespace kesview
