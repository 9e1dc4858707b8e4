#include "scene/SceneHost.h"

#include <KesVizCore/KesVizCore.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>

namespace KesVizCore {
namespace {

using support::OpenBuilder;

// ---- getIdAndNameString

TEST(SceneBuilderTextTest, IdAndNameAreDividedByABlank) {
    EXPECT_EQ(OpenBuilder::getIdAndNameString(7, L"Bracket, left"), "7 Bracket, left");
}

TEST(SceneBuilderTextTest, AnEmptyNameLeavesTheBlank) {
    EXPECT_EQ(OpenBuilder::getIdAndNameString(0, L""), "0 ");
}

TEST(SceneBuilderTextTest, IdsAreUnsigned) {
    EXPECT_EQ(OpenBuilder::getIdAndNameString(std::numeric_limits<std::uint64_t>::max(), L"x"),
              "18446744073709551615 x");
}

TEST(SceneBuilderTextTest, ALongNameIsCutAfterTheId) {
    EXPECT_EQ(OpenBuilder::getIdAndNameString(7, std::wstring(300, L'n')),
              "7 " + std::string(255, 'n'));
}

TEST(SceneBuilderTextTest, ANodeGivesItsIdAndItsName) {
    const std::unique_ptr<Node> root(Node::CreateRoot());
    EXPECT_EQ(OpenBuilder::getIdAndNameString(root.get()), "1 ROOT");
    Node* const child = root->CreateChild(12);
    EXPECT_EQ(OpenBuilder::getIdAndNameString(child), "12 ");
    child->SetName(L"Bracket");
    EXPECT_EQ(OpenBuilder::getIdAndNameString(child), "12 Bracket");
}

TEST(SceneBuilderTextTest, NoNodeIsNULL) {
    EXPECT_EQ(OpenBuilder::getIdAndNameString(nullptr), "NULL");
}

// ---- convertToString

TEST(SceneBuilderTextTest, TextIsConvertedCharacterByCharacter) {
    EXPECT_EQ(OpenBuilder::convertToString(L"Bracket 7/a~"), "Bracket 7/a~");
    EXPECT_EQ(OpenBuilder::convertToString(L""), "");
}

TEST(SceneBuilderTextTest, TextIsCutAfter255Bytes) {
    for (const std::size_t length : {254U, 255U, 256U, 257U, 5000U}) {
        std::wstring text(length, L'a');
        text.back() = L'z';
        std::string expected(length, 'a');
        expected.back() = 'z';
        EXPECT_EQ(OpenBuilder::convertToString(text), expected.substr(0, 255)) << length;
    }
}

TEST(SceneBuilderTextTest, ACharacterThatCannotBeConvertedEndsTheText) {
    EXPECT_EQ(OpenBuilder::convertToString(L"Br\u4e2dcket"), "Br");
    EXPECT_EQ(OpenBuilder::convertToString(L"\u4e2d"), "");
    EXPECT_EQ(OpenBuilder::convertToString(std::wstring(254, L'a') + L"\u4e2d"),
              std::string(254, 'a'));
}

TEST(SceneBuilderTextTest, ACharacterBeyondTheCutDoesNotCount) {
    EXPECT_EQ(OpenBuilder::convertToString(std::wstring(255, L'a') + L"\u4e2d"),
              std::string(255, 'a'));
}

TEST(SceneBuilderTextTest, AZeroEndsTheText) {
    EXPECT_EQ(OpenBuilder::convertToString(std::wstring(L"ab\0cd", 5)), "ab");
}

// ---- getHexPointer

TEST(SceneBuilderTextTest, PointersAreHexadecimal) {
    EXPECT_EQ(OpenBuilder::getHexPointer(nullptr), "0x0");
    EXPECT_EQ(OpenBuilder::getHexPointer(reinterpret_cast<void*>(std::uintptr_t{0x7ffd5e8a1c40})),
              "0x7ffd5e8a1c40");
    EXPECT_EQ(OpenBuilder::getHexPointer(reinterpret_cast<void*>(~std::uintptr_t{0})),
              sizeof(void*) == 8 ? "0xffffffffffffffff" : "0xffffffff");
}

}  // namespace
}  // namespace KesVizCore
