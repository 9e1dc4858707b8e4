#include <KesVizCore/core/TriangleType.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <type_traits>

namespace KesVizCore {
namespace {

TEST(TriangleTypeTest, IsASigned32BitEnumerationThatNumbersConvertToOnlyByACast) {
    static_assert(std::is_same_v<std::underlying_type_t<TriangleType>, std::int32_t>);
    static_assert(!std::is_convertible_v<int, TriangleType>);
    EXPECT_EQ(sizeof(TriangleType), 4U);
}

TEST(TriangleTypeTest, NumberOneIsIndexedTriangles) {
    EXPECT_EQ(static_cast<TriangleType>(1), TriangleType::IndexedTriangles);
}

TEST(TriangleTypeTest, TheOtherNumbersStay) {
    EXPECT_EQ(TriangleType::TriangleList, 0);
    EXPECT_EQ(TriangleType::TriangleStrip, 2);
    EXPECT_EQ(TriangleType::TriangleFan, 3);
}

}  // namespace
}  // namespace KesVizCore
