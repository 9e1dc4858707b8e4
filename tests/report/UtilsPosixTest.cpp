#include "report/TestSystem.h"

#include <KesVizCore/report/Utils.h>

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <filesystem>
#include <locale.h>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace KesVizCore {
namespace {

/// The process is in a locale whose texts are UTF-8.
class Utf8Locale {
public:
    Utf8Locale() {
        if (std::setlocale(LC_ALL, "C.UTF-8") == nullptr) {
            throw std::runtime_error("no locale C.UTF-8");
        }
    }
    ~Utf8Locale() { std::setlocale(LC_ALL, "C"); }
    Utf8Locale(const Utf8Locale&) = delete;
    Utf8Locale& operator=(const Utf8Locale&) = delete;
};

/// Characters at both ends of each length of UTF-8, and beside the surrogates, with their bytes.
const std::vector<std::pair<std::wstring, std::string>>& utf8Samples() {
    static const std::vector<std::pair<std::wstring, std::string>> samples = {
        {L"\x01", "\x01"},
        {L"\x7F", "\x7F"},
        {L"\x80", "\xC2\x80"},
        {L"\x7FF", "\xDF\xBF"},
        {L"\x800", "\xE0\xA0\x80"},
        {L"\x20AC", "\xE2\x82\xAC"},
        {L"\xD7FF", "\xED\x9F\xBF"},
        {L"\xE000", "\xEE\x80\x80"},
        {L"\xFFFF", "\xEF\xBF\xBF"},
        {L"\x10000", "\xF0\x90\x80\x80"},
        {L"\x1F600", "\xF0\x9F\x98\x80"},
        {L"\x40000", "\xF1\x80\x80\x80"},
        {L"\xFFFFF", "\xF3\xBF\xBF\xBF"},
        {L"\x10FFFF", "\xF4\x8F\xBF\xBF"},
    };
    return samples;
}

/// One character each that has no UTF-8 form.
std::vector<std::wstring> impossibleNames() {
    std::vector<std::wstring> names;
    for (const long code : {0xD800L, 0xDABCL, 0xDFFFL, 0x110000L, 0x7FFFFFFFL, -1L}) {
        names.emplace_back(1, static_cast<wchar_t>(code));
    }
    return names;
}

TEST(UtilsPosixTest, WideCharactersHave32Bits) {
    static_assert(sizeof(wchar_t) == 4);
    EXPECT_EQ(Utils::SWprintfL(L"%ls", L"\U0001F600"), std::wstring(1, L'\x1F600'));
}

TEST(UtilsPosixTest, ExponentsHaveTwoDigits) {
    EXPECT_EQ(Utils::SprintfL("%g %.1e", 1e10, 0.5), "1e+10 5.0e-01");
    EXPECT_EQ(Utils::SWprintfL(L"%g", 1e10), L"1e+10");
}

TEST(UtilsPosixTest, LongHas64Bits) {
    static_assert(sizeof(long) == 8);
    EXPECT_EQ(Utils::SprintfL("%ld %zu", 9007199254740993L, sizeof(void*)), "9007199254740993 8");
}

TEST(UtilsPosixTest, SWprintfLTakesTextWithoutASizeForNarrow) {
    EXPECT_EQ(Utils::SWprintfL(L"%s", "narrow"), L"narrow");
}

TEST(UtilsPosixTest, WstringToStringFollowsTheLocale) {
    const Utf8Locale locale;
    EXPECT_EQ(Utils::WstringToString(L"\x00E4"
                                     L"bc"),
              "\xC3\xA4"
              "b");  // three bytes for three characters: the last one is cut
}

TEST(UtilsPosixTest, WstringToStringLeavesZerosWhereACharacterDoesNotFit) {
    const Utf8Locale locale;
    EXPECT_EQ(Utils::WstringToString(L"a\x20AC"
                                     L"b"),
              std::string("a\0\0", 3));
}

TEST(UtilsPosixTest, SprintfLThatTheCLibraryRefusesIsEmpty) {
    const Utf8Locale locale;  // which has the character, and the "C" locale has not
    EXPECT_EQ(Utils::SprintfL("text %ls", L"\x20AC"), "");
    EXPECT_EQ(Utils::SprintfL("text %ls", L"ascii"), "text ascii");
}

TEST(UtilsPosixTest, SWprintfLThatTheCLibraryRefusesIsEmpty) {
    const Utf8Locale locale;  // where these bytes are a character, which they are not in "C"
    EXPECT_EQ(Utils::SWprintfL(L"text %s", "\xE2\x82\xAC"), L"");
    EXPECT_EQ(Utils::SWprintfL(L"text %s", "ascii"), L"text ascii");
}

TEST(UtilsPosixTest, FormattingLeavesTheLocaleOfTheThreadInForce) {
    const locale_t own = newlocale(LC_ALL_MASK, "C.UTF-8", nullptr);
    ASSERT_NE(own, nullptr);
    const locale_t before = uselocale(own);
    char format[] = "%g";
    Utils::SprintfL("%d", 1);
    EXPECT_EQ(uselocale(nullptr), own);
    Utils::SprintfL("%ls", L"\x20AC");
    EXPECT_EQ(uselocale(nullptr), own);
    Utils::SWprintfL(L"%d", 1);
    EXPECT_EQ(uselocale(nullptr), own);
    Utils::SWprintfL(L"%s", "\xE2\x82\xAC");
    EXPECT_EQ(uselocale(nullptr), own);
    Utils::DoubleToWstring(1.0, format);
    EXPECT_EQ(uselocale(nullptr), own);
    uselocale(before);
    freelocale(own);
}

class UtilsPosixFileTest : public testing::Test {
protected:
    std::wstring in(const std::wstring& name) const { return folder() + L"/" + name; }
    std::wstring folder() const { return Utils::StringToWstring(_folder.Path().string()); }

    TemporaryFolder _folder;
};

TEST_F(UtilsPosixFileTest, FileExistsTakesNamesForUtf8InEveryLocale) {
    for (const auto& [name, bytes] : utf8Samples()) {
        SCOPED_TRACE(bytes);
        EXPECT_FALSE(Utils::FileExists(in(L"x" + name)));
        _folder.Write("x" + bytes, "");
        EXPECT_TRUE(Utils::FileExists(in(L"x" + name)));
    }
}

TEST_F(UtilsPosixFileTest, FileExistsForNamesWithoutUtf8Form) {
    for (const std::wstring& name : impossibleNames()) {
        SCOPED_TRACE(static_cast<long>(name.front()));
        EXPECT_TRUE(Utils::FileExists(in(name)));
    }
}

TEST_F(UtilsPosixFileTest, MissingFolderWithTrailingSeparatorsDoesNotExist) {
    EXPECT_FALSE(Utils::FileExists(in(L"missing/")));
    EXPECT_FALSE(Utils::FileExists(in(L"missing//")));
    EXPECT_FALSE(Utils::FileExists(L"/kesvizcore-missing"));
    EXPECT_FALSE(Utils::FileExists(L"m"));
    EXPECT_FALSE(Utils::FileExists(L"m//"));
}

TEST_F(UtilsPosixFileTest, FileExistsWhereItsNameIsTooLong) {
    EXPECT_TRUE(Utils::FileExists(in(std::wstring(300, L'n'))));
}

TEST_F(UtilsPosixFileTest, LinkToNowhereDoesNotExist) {
    std::filesystem::create_symlink("nowhere", _folder.Path() / "link");
    EXPECT_FALSE(Utils::FileExists(in(L"link")));
}

TEST_F(UtilsPosixFileTest, LinkToItselfCountsAsExisting) {
    std::filesystem::create_symlink("link", _folder.Path() / "link");
    EXPECT_TRUE(Utils::FileExists(in(L"link")));
}

TEST_F(UtilsPosixFileTest, CapitalsMakeADifference) {
    _folder.Write("Part.stp", "text");
    EXPECT_TRUE(Utils::FileExists(in(L"Part.stp")));
    EXPECT_FALSE(Utils::FileExists(in(L"pART.STP")));
}

TEST_F(UtilsPosixFileTest, BackslashIsAnOrdinaryCharacter) {
    _folder.Write("a\\b.txt", "text");
    EXPECT_EQ(Utils::GetFileNameOnly(in(L"a\\b.txt")), L"a\\b.txt");
    EXPECT_EQ(Utils::GetAbsolutePath(in(L"a\\b.txt")), folder());
    EXPECT_EQ(Utils::GetFileContents(in(L"a\\b.txt")), L"text");
}

TEST_F(UtilsPosixFileTest, FullPathsAgreeWithTheStandardLibrary) {
    const std::vector<std::string> pieces = {"a", "bc", "d.e", "..", "..", ".", "", "..."};
    std::mt19937 random(8801);
    for (int round = 0; round < 2000; ++round) {
        std::string path = random() % 2 == 0 ? "/" : "";
        for (std::size_t left = random() % 8; left > 0; --left) {
            path += pieces[random() % pieces.size()] + "/";
        }
        path += pieces[random() % pieces.size()];
        if (path.empty()) {
            continue;
        }
        SCOPED_TRACE(path);
        std::string full = std::filesystem::absolute(path).lexically_normal().string();
        // The standard library keeps a separator where "." or ".." stood, and two at the root.
        if (full.back() == '/' && (path.back() != '/' || full == "//") && full != "/") {
            full.pop_back();
        }
        const std::size_t cut = full.rfind('/');
        const std::wstring wide = Utils::StringToWstring(path);
        EXPECT_EQ(Utils::GetAbsolutePath(wide), Utils::StringToWstring(full.substr(0, cut)));
        EXPECT_EQ(Utils::GetFileNameOnly(wide), Utils::StringToWstring(full.substr(cut + 1)));
    }
}

TEST_F(UtilsPosixFileTest, FullPathsBelowTheRootAsTheCurrentFolder) {
    const CurrentFolder current("/");
    EXPECT_EQ(Utils::GetAbsolutePath(L"part.stp"), L"");
    EXPECT_EQ(Utils::GetFileNameOnly(L"part.stp"), L"part.stp");
    EXPECT_EQ(Utils::GetAbsolutePath(L"parts/part.stp"), L"/parts");
}

TEST_F(UtilsPosixFileTest, FullPathsReadTheCurrentFolderAsUtf8) {
    for (const auto& [name, bytes] : utf8Samples()) {
        SCOPED_TRACE(bytes);
        std::filesystem::create_directory(_folder.Path() / bytes);
        const CurrentFolder current(_folder.Path() / bytes);
        EXPECT_EQ(Utils::GetAbsolutePath(L"part.stp"), in(name));
    }
}

TEST_F(UtilsPosixFileTest, FullPathsCannotBeFormedInAFolderThatIsNotUtf8) {
    for (const char* bytes : {"\x80", "a\xFF", "\xC3", "\xC3\xA4\x80", "\xC0\xAF", "\xE0\x80\xAF",
                              "\xED\xA0\x80", "\xF0\x80\x80\xAF", "\xF4\x90\x80\x80",
                              "\xF8\x88\x80\x80\x80", "\xE2\x82", "\xBF\xBF\xBF\xBF\xBF\xBF\xBF"}) {
        SCOPED_TRACE(testing::PrintToString(bytes));
        std::filesystem::create_directory(_folder.Path() / bytes);
        const CurrentFolder current(_folder.Path() / bytes);
        EXPECT_EQ(Utils::GetAbsolutePath(L"parts/part.stp"), L"");
        EXPECT_EQ(Utils::GetFileNameOnly(L"part.stp"), L"");
        EXPECT_EQ(Utils::GetFileNameOnly(L"/part.stp"), L"part.stp");
    }
}

TEST_F(UtilsPosixFileTest, FullPathsCannotBeFormedInAFolderThatIsGone) {
    const auto gone = _folder.Path() / "gone";
    std::filesystem::create_directory(gone);
    const CurrentFolder current(gone);
    std::filesystem::remove(gone);
    EXPECT_EQ(Utils::GetAbsolutePath(L"part.stp"), L"");
    EXPECT_EQ(Utils::GetFileNameOnly(L"part.stp"), L"");
    EXPECT_EQ(Utils::GetFileNameOnly(L"/part.stp"), L"part.stp");
}

TEST_F(UtilsPosixFileTest, TextsOfNamesWithoutUtf8FormAreEmpty) {
    for (const std::wstring& name : impossibleNames()) {
        SCOPED_TRACE(static_cast<long>(name.front()));
        EXPECT_EQ(Utils::GetAbsolutePath(in(name)), L"");
        EXPECT_EQ(Utils::GetFileNameOnly(in(name)), L"");
        EXPECT_EQ(Utils::GetFileContents(in(name)), L"");
    }
}

TEST_F(UtilsPosixFileTest, GetFileContentsTakesNamesForUtf8InEveryLocale) {
    for (const auto& [name, bytes] : utf8Samples()) {
        SCOPED_TRACE(bytes);
        _folder.Write("x" + bytes, bytes);
        EXPECT_EQ(Utils::GetFileContents(in(L"x" + name)), Utils::StringToWstring(bytes));
    }
}

TEST_F(UtilsPosixFileTest, GetFileContentsKeepsEveryByte) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
    }
    _folder.Write("bytes", bytes + "\r\n\x1A end");
    EXPECT_EQ(Utils::GetFileContents(in(L"bytes")), Utils::StringToWstring(bytes + "\r\n\x1A end"));
}

TEST_F(UtilsPosixFileTest, GetFileContentsTakesPathsOfAnyLength) {
    std::filesystem::path deep = _folder.Path();
    for (int level = 0; level < 5; ++level) {
        deep /= std::string(200, 'd');
    }
    std::filesystem::create_directories(deep);
    _folder.Write(deep / "note.txt", "deep");
    EXPECT_EQ(Utils::GetFileContents(Utils::StringToWstring(deep.string()) + L"/note.txt"),
              L"deep");
}

/// Runs a copy of a small program and reads what GetExePath answers there.
class GetExePathTest : public UtilsPosixFileTest {
protected:
    static std::wstring exePathOfCopy(const std::filesystem::path& copy) {
        std::filesystem::create_directories(copy.parent_path());
        std::filesystem::copy_file(KESVIZCORE_EXE_PATH_PROGRAM, copy);
        const std::string command = "'" + copy.string() + "'";
        const std::unique_ptr<std::FILE, int (*)(std::FILE*)> output(popen(command.c_str(), "r"),
                                                                     &pclose);
        std::wstring answer;
        unsigned long character = 0;
        while (std::fscanf(output.get(), "%lu", &character) == 1) {
            answer.push_back(static_cast<wchar_t>(character));
        }
        return answer;
    }
};

TEST_F(GetExePathTest, IsTheFolderOfTheRunningProgram) {
    const auto program = std::filesystem::read_symlink("/proc/self/exe");
    EXPECT_EQ(Utils::GetExePath(), program.parent_path().wstring());
}

TEST_F(GetExePathTest, IsTheFolderOfTheProgramAndNotOfTheLibrary) {
    EXPECT_EQ(exePathOfCopy(_folder.Path() / "program"), folder());
}

TEST_F(GetExePathTest, TakesTheFolderForUtf8) {
    EXPECT_EQ(exePathOfCopy(_folder.Path() / "\xC3\xA4 \xE2\x82\xAC" / "program"),
              in(L"\x00E4 \x20AC"));
}

TEST_F(GetExePathTest, IsEmptyInAFolderThatIsNotUtf8) {
    EXPECT_EQ(exePathOfCopy(_folder.Path() / "\xFF" / "program"), L"");
}

TEST_F(GetExePathTest, CutsThePathOfTheProgramAfter259Characters) {
    // The folder with its separator has just 259 characters: its name survives, the program's
    // does not. One character more, and the name of the folder is the last piece and dropped.
    const std::size_t rest = 259 - folder().size() - 2;
    const std::wstring outer(rest / 2, L'o');
    const std::wstring fitting(rest - outer.size() - 1, L'i');
    const auto copyIn = [&](const std::wstring& inner) {
        return exePathOfCopy(_folder.Path() / outer / inner / "program");
    };
    EXPECT_EQ(copyIn(fitting), in(outer + L"/" + fitting));
    EXPECT_EQ(copyIn(fitting + L"i"), in(outer));
}

}  // namespace
}  // namespace KesVizCore
