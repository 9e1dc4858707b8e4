#include "reading/ReadFile.h"
#include "reading/occ/StlBinary.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

namespace kesview {
namespace {

std::string header(const std::string& name, std::uint32_t count) {
    std::string bytes = name;
    bytes.resize(80, '\0');
    for (int shift = 0; shift < 32; shift += 8) {
        bytes.push_back(static_cast<char>(count >> shift & 0xFFU));
    }
    return bytes;
}

/// A triangle of twelve floats 0, 1, 2 and so on, as a little-endian machine stores them.
std::string triangle() {
    std::string bytes;
    for (int i = 0; i < 12; ++i) {
        const auto value = static_cast<float>(i);
        char raw[sizeof value];
        std::memcpy(raw, &value, sizeof value);
        bytes.append(raw, sizeof value);
    }
    return bytes + std::string(2, '\0');
}

TEST(StlBinaryTest, ReadsTrianglesAndName) {
    const StlSolid solid = parseStlBinary(header("gear  ", 2) + triangle() + triangle());
    EXPECT_EQ(solid.name, "gear");
    ASSERT_EQ(solid.triangles.size(), 2U);
    const StlTriangle expected = {{{3, 4, 5}, {6, 7, 8}, {9, 10, 11}}};  // behind the normal
    EXPECT_EQ(solid.triangles[1], expected);
}

TEST(StlBinaryTest, AFileThatStartsLikeTextIsBinaryWhenItsSizeFits) {
    EXPECT_TRUE(isExactStlBinary(header("solid but binary", 1) + triangle()));
    EXPECT_FALSE(isExactStlBinary(header("solid", 2) + triangle()));
    EXPECT_FALSE(isExactStlBinary("solid x\nendsolid x\n"));
}

TEST(StlBinaryTest, TellsHowManyBytesAreMissing) {
    try {
        parseStlBinary(header("", 3) + triangle());
        FAIL() << "nothing was thrown";
    } catch (const ReadError& error) {
        EXPECT_EQ(error.Failure(), ReadFailure::Damaged);
        EXPECT_THAT(error.what(), testing::HasSubstr("3 triangles"));
        EXPECT_THAT(error.what(), testing::HasSubstr("100 bytes"));
    }
}

TEST(StlBinaryTest, ACutHeaderIsDamage) {
    EXPECT_THROW(parseStlBinary("short"), ReadError);
}

TEST(StlBinaryTest, BytesBehindTheLastTriangleAreLeftAlone) {
    EXPECT_EQ(parseStlBinary(header("", 1) + triangle() + "more").triangles.size(), 1U);
}

TEST(StlBinaryTest, AHeaderThatIsNoTextIsNoName) {
    EXPECT_EQ(parseStlBinary(header("\x01\xFF", 0)).name, "");
}

}  // namespace
}  // namespace kesview
