/// @file
/// Texts in an encoding of several bytes for a character: code page 932.
///
/// They are cut to as many bytes as the text has characters; a character that does not fit whole
/// is left out.

#include "scene/LocaleScope.h"
#include "scene/SceneHost.h"

#include <gtest/gtest.h>

#include <string>

namespace KesVizCore {
namespace {

using support::LocaleScope;
using support::OpenBuilder;

TEST(SceneBuilderTextWindowsTest, LongerEncodingsAreCutByTheNumberOfCharacters) {
    const LocaleScope locale("Japanese_Japan.932");
    EXPECT_EQ(OpenBuilder::convertToString(L"\u3042"), "");
    EXPECT_EQ(OpenBuilder::convertToString(L"\u3042x"), "\x82\xa0");
    EXPECT_EQ(OpenBuilder::convertToString(L"a\u3042b"), "a\x82\xa0");
    EXPECT_EQ(OpenBuilder::convertToString(L"a\u3042"), "a");
}

TEST(SceneBuilderTextWindowsTest, LongerEncodingsAreCutAt255BytesToo) {
    const LocaleScope locale("Japanese_Japan.932");
    std::string expected;
    for (int count = 0; count < 127; ++count) {
        expected += "\x82\xa0";
    }
    EXPECT_EQ(OpenBuilder::convertToString(std::wstring(300, L'\u3042')), expected);
    EXPECT_EQ(OpenBuilder::convertToString(L"a" + std::wstring(300, L'\u3042')), "a" + expected);
}

}  // namespace
}  // namespace KesVizCore
