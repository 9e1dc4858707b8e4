#include <KesVizCore/graph/AttributeType.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <type_traits>
#include <utility>
#include <vector>

namespace KesVizCore {
namespace {

int asInt(const AttributeType& type) {
    return type;
}

TEST(AttributeTypeTest, ConstantsHaveTheirNumbersAndThreeIsNone) {
    // 3 is left out on purpose.
    const std::vector<int> numbers = {AttributeType::Invalid,    AttributeType::Color,
                                      AttributeType::Highlight,  AttributeType::Transform,
                                      AttributeType::Visibility, AttributeType::LineStyle};
    EXPECT_EQ(numbers, (std::vector<int>{-1, 0, 1, 2, 4, 5}));
}

TEST(AttributeTypeTest, ConstantsAreObjectsThatAReferenceCanBind) {
    const std::vector<const int*> addresses = {
        &AttributeType::Invalid,   &AttributeType::Color,      &AttributeType::Highlight,
        &AttributeType::Transform, &AttributeType::Visibility, &AttributeType::LineStyle};
    for (const int* address : addresses) {
        EXPECT_EQ(std::count(addresses.begin(), addresses.end(), address), 1);
    }
    EXPECT_EQ(std::max(AttributeType::Color, AttributeType::LineStyle), 5);
}

TEST(AttributeTypeTest, ConstantsAreKnownToTheCompiler) {
    static_assert(AttributeType::Visibility == 4);
    EXPECT_EQ((std::integral_constant<int, AttributeType::LineStyle>::value), 5);
}

TEST(AttributeTypeTest, IsInvalidByDefault) {
    EXPECT_EQ(asInt(AttributeType()), -1);
}

TEST(AttributeTypeTest, KeepsAnyNumber) {
    for (const int number :
         {3, 6, -2, 1000, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        EXPECT_EQ(asInt(AttributeType(number)), number);
    }
}

TEST(AttributeTypeTest, IsMadeFromANumberWithoutACast) {
    static_assert(std::is_convertible_v<int, AttributeType>);
    EXPECT_EQ(asInt(AttributeType::Highlight), 1);
}

TEST(AttributeTypeTest, CopyAssignmentTakesTheNumber) {
    AttributeType type;
    const AttributeType color(AttributeType::Color);
    AttributeType& assigned = type = color;
    EXPECT_EQ(asInt(type), 0);
    EXPECT_EQ(&assigned, &type);
}

TEST(AttributeTypeTest, MoveAssignmentTakesTheNumber) {
    AttributeType type;
    AttributeType lineStyle(AttributeType::LineStyle);
    type = std::move(lineStyle);
    EXPECT_EQ(asInt(type), 5);
}

TEST(AttributeTypeTest, ComparesAsItsNumber) {
    const AttributeType color(AttributeType::Color);
    EXPECT_TRUE(color == AttributeType::Color);
    EXPECT_TRUE(color == AttributeType(0));
    EXPECT_TRUE(color != AttributeType(AttributeType::Transform));
    EXPECT_TRUE(color < AttributeType(AttributeType::Highlight));
}

TEST(AttributeTypeTest, HoldsOneThirtyTwoBitNumber) {
    EXPECT_EQ(sizeof(AttributeType), 4U);
}

}  // namespace
}  // namespace KesVizCore
