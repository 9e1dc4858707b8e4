#include "report/TestSystem.h"

#include <KesVizCore/report/Utils.h>

#include <gtest/gtest.h>

#include <string>

namespace KesVizCore {
namespace {

TEST(UtilsWindowsTest, BothSeparatorsCount) {
    EXPECT_EQ(Utils::GetAbsolutePath(L"C:\\parts/sub\\part.stp"), L"C:\\parts\\sub");
    EXPECT_EQ(Utils::GetFileNameOnly(L"C:\\parts/part.stp"), L"part.stp");
    EXPECT_EQ(Utils::GetFileNameOnly(L"C:/parts\\part.stp"), L"part.stp");
}

TEST(UtilsWindowsTest, FullPathsKeepTheServer) {
    EXPECT_EQ(Utils::GetAbsolutePath(L"\\\\server\\share\\a\\..\\part.stp"), L"\\\\server\\share");
}

TEST(UtilsWindowsTest, FullPathsStayAtTheRoot) {
    EXPECT_EQ(Utils::GetAbsolutePath(L"C:\\..\\..\\part.stp"), L"C:");
}

TEST(UtilsWindowsTest, GetFileContentsReadsLinesAsText) {
    const TemporaryFolder folder;
    const auto path = folder.Write("note.txt", "first\r\nsecond\r\n");
    EXPECT_EQ(Utils::GetFileContents(path.wstring()), L"first\nsecond\n");
}

TEST(UtilsWindowsTest, GetFileContentsTakesNamesOfAnyScript) {
    const TemporaryFolder folder;
    const auto path = folder.Write(L"\x00E4\x20AC\x4E2D.txt", "text");
    EXPECT_EQ(Utils::GetFileContents(path.wstring()), L"text");
}

}  // namespace
}  // namespace KesVizCore
