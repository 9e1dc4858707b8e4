#include "report/ChildProcess.h"
#include "report/TestSystem.h"

#include <KesVizCore/report/Utils.h>

#include <gtest/gtest.h>

#include <atomic>
#include <clocale>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace KesVizCore {
namespace {

/// The process is in a locale of that name.
class LocaleScope {
public:
    explicit LocaleScope(const char* name) {
        if (std::setlocale(LC_ALL, name) == nullptr) {
            throw std::runtime_error(std::string("no locale ") + name);
        }
    }
    ~LocaleScope() { std::setlocale(LC_ALL, "C"); }
    LocaleScope(const LocaleScope&) = delete;
    LocaleScope& operator=(const LocaleScope&) = delete;
};

/// One byte for a character; characters of one or two bytes.
constexpr const char* kWestern = "German_Germany.1252";
constexpr const char* kJapanese = "Japanese_Japan.932";

/// Characters of one and of two 16-bit units.
const std::vector<std::wstring>& names() {
    static const std::vector<std::wstring> samples = {
        L"\x00E4", L"\x07FF",       L"\x20AC",       L"\x4E2D",      L"\xD7FF",
        L"\xE000", L"\xD800\xDC00", L"\xD83D\xDE00", L"\xDBFF\xDFFD"};
    return samples;
}

// ---- Conversions and formatting

TEST(UtilsWindowsTest, WideCharactersHave16Bits) {
    static_assert(sizeof(wchar_t) == 2);
    EXPECT_EQ(Utils::SWprintfL(L"%ls", L"\U0001F600").size(), 2U);
    EXPECT_EQ(Utils::SWprintfL(L"%ls", L"\U0001F600"), L"\xD83D\xDE00");
}

TEST(UtilsWindowsTest, SWprintfLCutsAfter1023UnitsAlsoWithinACharacter) {
    const std::wstring longest(1022, L'a');
    EXPECT_EQ(Utils::SWprintfL(L"%ls\U0001F600", longest.c_str()), longest + L"\xD83D");
}

TEST(UtilsWindowsTest, WstringToStringFollowsTheLocale) {
    EXPECT_EQ(Utils::WstringToString(L"\x00E4"
                                     L"bc"),
              "\xE4"
              "bc");
    const LocaleScope japanese(kJapanese);
    EXPECT_EQ(Utils::WstringToString(L"\x3042"
                                     L"b"),
              "\x82\xA0");  // two bytes for two characters: the last one is cut
}

TEST(UtilsWindowsTest, WstringToStringLeavesZerosWhereACharacterDoesNotFit) {
    const LocaleScope japanese(kJapanese);
    EXPECT_EQ(Utils::WstringToString(L"ab\x3042"), std::string("ab\0", 3));
}

TEST(UtilsWindowsTest, SprintfLThatTheCLibraryRefusesIsEmpty) {
    const LocaleScope japanese(kJapanese);  // which has the character, and the "C" locale has not
    EXPECT_EQ(Utils::SprintfL("text %ls", L"\x3042"), "");
    EXPECT_EQ(Utils::SprintfL("text %ls", L"ascii"), "text ascii");
}

TEST(UtilsWindowsTest, SWprintfLWidensNarrowTextByteByByte) {
    const LocaleScope japanese(kJapanese);  // where these bytes are one character
    EXPECT_EQ(Utils::SWprintfL(L"text %hs", "\x82\xA0"), L"text \x0082\x00A0");
}

TEST(UtilsWindowsTest, SWprintfLTakesTextWithoutASizeForWide) {
    EXPECT_EQ(Utils::SWprintfL(L"%s", L"wide"), L"wide");
}

TEST(UtilsWindowsTest, ExponentsHaveThreeDigits) {
    EXPECT_EQ(Utils::SprintfL("%g %.1e", 1e10, 0.5), "1e+010 5.0e-001");
    EXPECT_EQ(Utils::SWprintfL(L"%g", 1e10), L"1e+010");
}

TEST(UtilsWindowsTest, LongHas32Bits) {
    static_assert(sizeof(long) == 4);
    static_assert(sizeof(std::size_t) == 8);
    EXPECT_EQ(Utils::SprintfL("%ld %zu", 2147483647L, sizeof(void*)), "2147483647 8");
}

// msvcrt has one locale for all threads: another thread would see it change.
TEST(UtilsWindowsTest, FormattingNeverTouchesTheLocaleOfTheProcess) {
    const LocaleScope german(kWestern);
    std::atomic<bool> isDone{false};
    std::atomic<int> commas{0};
    std::atomic<int> others{0};
    std::thread observer([&] {
        while (!isDone) {
            char text[8];
            std::snprintf(text, sizeof text, "%.1f", 2.5);
            ++(std::string(text) == "2,5" ? commas : others);
        }
    });
    while (commas + others == 0) {
        std::this_thread::yield();
    }
    char format[] = "%g";
    for (int round = 0; round < 2000; ++round) {
        EXPECT_EQ(Utils::SprintfL("%.1f", 2.5), "2.5");
        EXPECT_EQ(Utils::SWprintfL(L"%.1f", 2.5), L"2.5");
        EXPECT_EQ(Utils::DoubleToWstring(2.5, format), L"2.5");
    }
    isDone = true;
    observer.join();
    EXPECT_EQ(others.load(), 0);
}

// ---- Paths as texts

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

TEST(UtilsWindowsTest, PathsWithoutADriveBeginAtTheOneOfTheCurrentFolder) {
    const CurrentFolder current(L"C:\\windows");
    EXPECT_EQ(Utils::GetAbsolutePath(L"\\parts\\part.stp"), L"C:\\parts");
}

TEST(UtilsWindowsTest, PathsWithADriveAloneBeginAtItsCurrentFolder) {
    const CurrentFolder current(L"C:\\windows");
    EXPECT_EQ(Utils::GetAbsolutePath(L"C:parts\\part.stp"), L"C:\\windows\\parts");
    EXPECT_EQ(Utils::GetFileNameOnly(L"C:part.stp"), L"part.stp");
}

TEST(UtilsWindowsTest, FullPathsLoseDotsAndBlanksAtTheirEnd) {
    EXPECT_EQ(Utils::GetFileNameOnly(L"C:\\parts\\part. ."), L"part");
}

TEST(UtilsWindowsTest, DeviceNamesAreFullPathsInAnyFolder) {
    EXPECT_EQ(Utils::GetAbsolutePath(L"nul"), L"\\\\.");
    EXPECT_EQ(Utils::GetFileNameOnly(L"nul"), L"nul");
}

TEST(UtilsWindowsTest, FullPathsTakeEvery16BitCharacter) {
    for (const wchar_t* name : {L"\xD800", L"\xDFFF", L"\xFFFF", L"a?b", L"a<b"}) {
        EXPECT_EQ(Utils::GetFileNameOnly(std::wstring(L"C:\\parts\\") + name), name);
    }
}

TEST(UtilsWindowsTest, FullPathsAgreeWithTheStandardLibrary) {
    const std::vector<std::wstring> pieces = {L"a", L"bc", L"d.e", L"..", L"..", L".", L""};
    const std::vector<std::wstring> separators = {L"/", L"\\"};
    const CurrentFolder current(L"C:\\windows");
    std::mt19937 random(8801);
    for (int round = 0; round < 2000; ++round) {
        std::wstring path = random() % 2 == 0 ? L"C:\\" : L"";
        for (std::size_t left = random() % 8; left > 0; --left) {
            // Two separators in front name a server.
            const std::wstring& piece = pieces[random() % pieces.size()];
            path += (path.empty() && piece.empty() ? L"a" : piece) + separators[random() % 2];
        }
        path += pieces[random() % pieces.size()];
        if (path.empty()) {
            continue;
        }
        SCOPED_TRACE(std::filesystem::path(path).string());
        auto full = (std::filesystem::path(L"C:\\windows") / path).lexically_normal();
        std::wstring text = full.make_preferred().wstring();
        // The standard library keeps a separator where "." or ".." stood.
        const bool keeps = path.back() == L'/' || path.back() == L'\\';
        if (text.back() == L'\\' && !keeps && text.size() > 3) {
            text.pop_back();
        }
        const std::size_t cut = text.rfind(L'\\');
        EXPECT_EQ(Utils::GetAbsolutePath(path), text.substr(0, cut));
        EXPECT_EQ(Utils::GetFileNameOnly(path), text.substr(cut + 1));
    }
}

// ---- Files

class UtilsWindowsFileTest : public testing::Test {
protected:
    std::wstring in(const std::wstring& name) const { return folder() + L"\\" + name; }
    std::wstring folder() const { return _folder.Path().wstring(); }

    TemporaryFolder _folder;
};

DWORD errorOf(const std::wstring& path) {
    const bool isThere = GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
    return isThere ? ERROR_SUCCESS : GetLastError();
}

TEST_F(UtilsWindowsFileTest, MissingFilesAndMissingFoldersAreDifferentErrors) {
    EXPECT_EQ(errorOf(in(L"missing")), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_FALSE(Utils::FileExists(in(L"missing")));
    EXPECT_EQ(errorOf(in(L"missing\\part.stp")), DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_TRUE(Utils::FileExists(in(L"missing\\part.stp")));
}

TEST_F(UtilsWindowsFileTest, ForbiddenNamesCountAsExisting) {
    for (const wchar_t* name : {L"a?b", L"a*b", L"a<b", L"a>b", L"a|b", L"a\"b"}) {
        EXPECT_EQ(errorOf(in(name)), DWORD{ERROR_INVALID_NAME});
        EXPECT_TRUE(Utils::FileExists(in(name)));
        EXPECT_EQ(Utils::GetFileContents(in(name)), L"");
    }
}

TEST_F(UtilsWindowsFileTest, MissingFolderWithTrailingSeparatorsDoesNotExist) {
    EXPECT_FALSE(Utils::FileExists(in(L"missing\\")));
    EXPECT_FALSE(Utils::FileExists(in(L"missing\\\\")));
    EXPECT_FALSE(Utils::FileExists(in(L"missing/")));
    EXPECT_FALSE(Utils::FileExists(L"C:\\kesvizcore-missing"));
}

TEST_F(UtilsWindowsFileTest, DevicesExist) {
    EXPECT_TRUE(Utils::FileExists(L"nul"));
}

TEST_F(UtilsWindowsFileTest, FileThatAnotherHoldsAloneExistsAndHasNoContents) {
    const OwnedHandle held(CreateFileW(in(L"held").c_str(), GENERIC_WRITE, 0, nullptr,
                                       CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    EXPECT_TRUE(Utils::FileExists(in(L"held")));
    EXPECT_EQ(Utils::GetFileContents(in(L"held")), L"");
}

TEST_F(UtilsWindowsFileTest, NamesOfAnyScriptAreTakenAsTheyAre) {
    for (const std::wstring& name : names()) {
        SCOPED_TRACE(static_cast<int>(name.front()));
        EXPECT_FALSE(Utils::FileExists(in(L"x" + name)));
        _folder.Write(L"x" + name, "text");
        EXPECT_TRUE(Utils::FileExists(in(L"x" + name)));
        EXPECT_EQ(Utils::GetFileContents(in(L"x" + name)), L"text");
    }
}

TEST_F(UtilsWindowsFileTest, CapitalsMakeNoDifference) {
    _folder.Write("Part.stp", "text");
    EXPECT_TRUE(Utils::FileExists(in(L"pART.STP")));
    EXPECT_EQ(Utils::GetFileNameOnly(in(L"pART.STP")), L"pART.STP");
}

TEST_F(UtilsWindowsFileTest, FullPathsReadTheCurrentFolderAsItIs) {
    for (const std::wstring& name : names()) {
        SCOPED_TRACE(static_cast<int>(name.front()));
        std::filesystem::create_directory(in(name));
        const CurrentFolder current(in(name));
        EXPECT_EQ(Utils::GetAbsolutePath(L"part.stp"), in(name));
    }
}

TEST_F(UtilsWindowsFileTest, FullPathsBelowTheRootAsTheCurrentFolder) {
    const CurrentFolder current(L"C:\\");
    EXPECT_EQ(Utils::GetAbsolutePath(L"part.stp"), L"C:");
    EXPECT_EQ(Utils::GetFileNameOnly(L"part.stp"), L"part.stp");
    EXPECT_EQ(Utils::GetAbsolutePath(L"parts/part.stp"), L"C:\\parts");
}

TEST_F(UtilsWindowsFileTest, TheCurrentFolderCannotGo) {
    std::filesystem::create_directory(in(L"current"));
    const CurrentFolder current(in(L"current"));
    EXPECT_FALSE(RemoveDirectoryW(in(L"current").c_str()));
    EXPECT_EQ(Utils::GetAbsolutePath(L"part.stp"), in(L"current"));
}

TEST_F(UtilsWindowsFileTest, GetFileContentsReadsLinesAsText) {
    _folder.Write("note.txt", "first\r\nsecond\r\nlone \r end");
    EXPECT_EQ(Utils::GetFileContents(in(L"note.txt")), L"first\nsecond\nlone \r end");
}

TEST_F(UtilsWindowsFileTest, GetFileContentsEndsAtControlZ) {
    _folder.Write("note.txt", "text\x1A and more");
    EXPECT_EQ(Utils::GetFileContents(in(L"note.txt")), L"text");
}

TEST_F(UtilsWindowsFileTest, GetFileContentsKeepsEveryOtherByte) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes += byte == 0x1A ? std::string() : std::string(1, static_cast<char>(byte));
    }
    _folder.Write("bytes", bytes);
    EXPECT_EQ(Utils::GetFileContents(in(L"bytes")), Utils::StringToWstring(bytes));
}

TEST_F(UtilsWindowsFileTest, GetFileContentsTakesPathsOfAnyLength) {
    std::wstring deep = L"\\\\?\\" + folder();
    for (int level = 0; level < 5; ++level) {
        deep += L"\\" + std::wstring(200, L'd');
        ASSERT_TRUE(CreateDirectoryW(deep.c_str(), nullptr));
    }
    const std::wstring note = deep + L"\\note.txt";
    const OwnedHandle file(CreateFileW(note.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                       CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD count = 0;
    ASSERT_TRUE(WriteFile(file.get(), "deep", 4, &count, nullptr));
    EXPECT_EQ(Utils::GetFileContents(note), L"deep");
    EXPECT_EQ(Utils::GetFileContents(note.substr(4)), L"deep");  // the same without \\?\ before it
}

// ---- The running program

/// Runs a copy of a small program and reads what GetExePath answers there.
class GetExePathTest : public UtilsWindowsFileTest {
protected:
    std::wstring exePathOfCopy(const std::wstring& copy) const {
        std::filesystem::create_directories(std::filesystem::path(copy).parent_path());
        std::filesystem::copy_file(KESVIZCORE_EXE_PATH_PROGRAM, copy);
        SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
        const std::wstring answers = in(L"answers");
        {
            const OwnedHandle output(CreateFileW(answers.c_str(), GENERIC_WRITE, FILE_SHARE_READ,
                                                 &inherited, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL,
                                                 nullptr));
            WaitForSingleObject(start(copy, 0, output.get()).get(), 60000);
        }
        std::wistringstream numbers(Utils::GetFileContents(answers));
        std::wstring answer;
        unsigned long character = 0;
        while (numbers >> character) {
            answer.push_back(static_cast<wchar_t>(character));
        }
        return answer;
    }
};

TEST_F(GetExePathTest, IsTheFolderOfTheRunningProgram) {
    EXPECT_EQ(Utils::GetExePath(), testProgram().parent_path().wstring());
}

TEST_F(GetExePathTest, IsTheFolderOfTheProgramAndNotOfTheLibrary) {
    EXPECT_EQ(exePathOfCopy(in(L"program.exe")), folder());
}

TEST_F(GetExePathTest, TakesTheFolderAsItIs) {
    EXPECT_EQ(exePathOfCopy(in(L"\x00E4 \x20AC \xD83D\xDE00\\program.exe")),
              in(L"\x00E4 \x20AC \xD83D\xDE00"));
}

TEST_F(GetExePathTest, TakesTheLongestPathThatAProgramStartsFrom) {
    // 259 characters; the system starts none from a longer one, so nothing is ever cut.
    const std::size_t rest = 259 - in(L"\\\\program.exe").size();
    const std::wstring outer(rest / 2, L'o');
    const std::wstring inner(rest - outer.size(), L'i');
    EXPECT_EQ(exePathOfCopy(in(outer + L"\\" + inner + L"\\program.exe")),
              in(outer + L"\\" + inner));
    EXPECT_THROW(exePathOfCopy(in(outer + L"\\" + inner + L"\\longprogram.exe")),
                 std::runtime_error);
}

}  // namespace
}  // namespace KesVizCore
