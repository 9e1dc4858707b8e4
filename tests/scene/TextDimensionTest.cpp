#include <KesVizCore/scene/TextDimension.h>

#include <gtest/gtest.h>

#include <limits>
#include <type_traits>

namespace KesVizCore {
namespace {

TEST(TextDimensionTest, HoldsOneInt) {
    EXPECT_EQ(sizeof(TextDimension), sizeof(int));
}

TEST(TextDimensionTest, TheNamedDimensionsAreTwoThreeAndFour) {
    const int& named = TextDimension::Dimension2D;  // they can be referred to
    EXPECT_EQ(named, 2);
    EXPECT_EQ(TextDimension::Dimension3D, 3);
    EXPECT_EQ(TextDimension::DimensionPMI, 4);
}

TEST(TextDimensionTest, IsThreeByDefault) {
    EXPECT_EQ(TextDimension(), 3);
}

TEST(TextDimensionTest, KeepsTwoAndFour) {
    EXPECT_EQ(TextDimension(2), 2);
    EXPECT_EQ(TextDimension(4), 4);
}

TEST(TextDimensionTest, TurnsEveryOtherNumberIntoThree) {
    for (int number = -1000; number <= 1000; ++number) {
        const int expected = number == 2 || number == 4 ? number : 3;
        EXPECT_EQ(TextDimension(number), expected) << "for " << number;
    }
    for (const int number : {std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        EXPECT_EQ(TextDimension(number), 3) << "for " << number;
    }
}

TEST(TextDimensionTest, OneAndFiveBecomeThree) {
    EXPECT_EQ(TextDimension(1), 3);
    EXPECT_EQ(TextDimension(5), 3);
}

TEST(TextDimensionTest, AnIntConvertsByItself) {
    static_assert(std::is_convertible_v<int, TextDimension>);
    const TextDimension dimension = 2;
    EXPECT_EQ(dimension, 2);
}

TEST(TextDimensionTest, CopiesTheDimension) {
    const TextDimension dimension(4);
    TextDimension copy;
    copy = dimension;
    EXPECT_EQ(copy, 4);
}

}  // namespace
}  // namespace KesVizCore
