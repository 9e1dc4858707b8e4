/// @file
/// Texts in an encoding of several bytes for a character: UTF-8.
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

TEST(SceneBuilderTextPosixTest, LongerEncodingsAreCutByTheNumberOfCharacters) {
    const LocaleScope locale("C.UTF-8");
    EXPECT_EQ(OpenBuilder::convertToString(L"\u00fc"), "");
    EXPECT_EQ(OpenBuilder::convertToString(L"\u00fcx"), "\xc3\xbc");
    EXPECT_EQ(OpenBuilder::convertToString(L"a\u00fcb"), "a\xc3\xbc");
    EXPECT_EQ(OpenBuilder::convertToString(L"a\u00fc"), "a");
}

TEST(SceneBuilderTextPosixTest, LongerEncodingsAreCutAt255BytesToo) {
    const LocaleScope locale("C.UTF-8");
    std::string expected;
    for (int count = 0; count < 127; ++count) {
        expected += "\xc3\xbc";
    }
    EXPECT_EQ(OpenBuilder::convertToString(std::wstring(300, L'\u00fc')), expected);
    EXPECT_EQ(OpenBuilder::convertToString(L"a" + std::wstring(300, L'\u00fc')), "a" + expected);
}

}  // namespace
}  // namespace KesVizCore
