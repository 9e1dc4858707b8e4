#include "report/TestSystem.h"

#include <KesVizCore/report/Utils.h>

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cwchar>
#include <fstream>
#include <limits>
#include <locale>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace KesVizCore {
namespace {

/// Groups digits in pairs by '.' and writes decimals with ','.
class ForeignPunctuation : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\2"; }
};

class ForeignWidePunctuation : public std::numpunct<wchar_t> {
    wchar_t do_decimal_point() const override { return L','; }
    wchar_t do_thousands_sep() const override { return L'.'; }
    std::string do_grouping() const override { return "\2"; }
};

/// Both kinds of locale are foreign for as long as it lives.
class ForeignLocales {
public:
    ForeignLocales() {
        setForeignLocale();
        const std::locale narrow(std::locale::classic(), new ForeignPunctuation);
        std::locale::global(std::locale(narrow, new ForeignWidePunctuation));
    }
    ~ForeignLocales() {
        std::locale::global(std::locale::classic());
        std::setlocale(LC_ALL, "C");
    }
    ForeignLocales(const ForeignLocales&) = delete;
    ForeignLocales& operator=(const ForeignLocales&) = delete;
};

// cppcheck-suppress passedByValue ; the interface wants text that it may write to
std::wstring doubleToWstring(double value, std::string format) {
    return Utils::DoubleToWstring(value, format.data());
}

std::string allBytes() {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes.push_back(static_cast<char>(byte));
    }
    return bytes;
}

TEST(UtilsTest, WstringToStringKeepsAscii) {
    EXPECT_EQ(Utils::WstringToString(L"Face 12 ~"), "Face 12 ~");
}

TEST(UtilsTest, WstringToStringOfAnEmptyTextIsEmpty) {
    EXPECT_EQ(Utils::WstringToString(L""), "");
}

TEST(UtilsTest, WstringToStringLeavesZerosFromWhatTheLocaleDoesNotHave) {
    EXPECT_EQ(Utils::WstringToString(L"ab\x20AC"
                                     L"cd"),
              std::string("ab\0\0\0", 5));
}

TEST(UtilsTest, WstringToStringLeavesZerosAfterAZeroCharacter) {
    EXPECT_EQ(Utils::WstringToString(std::wstring(L"ab\0cd", 5)), std::string("ab\0\0\0", 5));
}

TEST(UtilsTest, StringToWstringWidensEveryByteToItsNumber) {
    const std::wstring wide = Utils::StringToWstring(allBytes());
    ASSERT_EQ(wide.size(), 256U);
    for (std::size_t byte = 0; byte < wide.size(); ++byte) {
        EXPECT_EQ(static_cast<std::uint64_t>(wide[byte]), byte);
    }
}

TEST(UtilsTest, StringToWstringKnowsNoCodePage) {
    const ForeignLocales foreign;
    EXPECT_EQ(Utils::StringToWstring("\xC3\xA4"), L"\x00C3\x00A4");  // not one a umlaut
}

TEST(UtilsTest, StringToWstringOfAnEmptyTextIsEmpty) {
    EXPECT_EQ(Utils::StringToWstring(""), L"");
}

TEST(UtilsTest, Char2WcharWidensEveryByteToItsNumber) {
    const std::string bytes = allBytes().substr(1);
    EXPECT_EQ(Utils::Char2Wchar(bytes.c_str()), Utils::StringToWstring(bytes));
}

TEST(UtilsTest, Char2WcharTakesNullForAnEmptyText) {
    EXPECT_STREQ(Utils::Char2Wchar(nullptr), L"");
}

TEST(UtilsTest, Char2WcharKeepsOneTextForAllCallers) {
    const wchar_t* const first = Utils::Char2Wchar("ab");
    const wchar_t* const second = Utils::Char2Wchar("cd");
    EXPECT_EQ(first, second);
    EXPECT_STREQ(second, L"cd");
}

TEST(UtilsTest, IntToStringIsDecimal) {
    EXPECT_EQ(Utils::IntToString(0), "0");
    EXPECT_EQ(Utils::IntToString(1234567), "1234567");
    EXPECT_EQ(Utils::IntToString(std::numeric_limits<int>::max()), "2147483647");
    EXPECT_EQ(Utils::IntToString(std::numeric_limits<int>::min()), "-2147483648");
}

TEST(UtilsTest, IntToHexStringIsLowerCaseWithoutLeadingZeros) {
    EXPECT_EQ(Utils::IntToHexString(255), "0xff");
    EXPECT_EQ(Utils::IntToHexString(0), "0x0");
    EXPECT_EQ(Utils::IntToHexString(std::numeric_limits<int>::max()), "0x7fffffff");
}

TEST(UtilsTest, IntToHexStringWidensTheSignTo64Bits) {
    EXPECT_EQ(Utils::IntToHexString(-1), "0xffffffffffffffff");
    EXPECT_EQ(Utils::IntToHexString(std::numeric_limits<int>::min()), "0xffffffff80000000");
}

TEST(UtilsTest, PointerToHexStringIsTheAddress) {
    EXPECT_EQ(Utils::PointerToHexString(nullptr), "0x0");
    EXPECT_EQ(Utils::PointerToHexString(reinterpret_cast<void*>(std::uintptr_t{0x1A2B})), "0x1a2b");
    EXPECT_EQ(Utils::PointerToHexString(reinterpret_cast<void*>(~std::uintptr_t{0})),
              "0xffffffffffffffff");
}

TEST(UtilsTest, IntToWstringIsDecimal) {
    EXPECT_EQ(Utils::IntToWstring(0), L"0");
    EXPECT_EQ(Utils::IntToWstring(1234567), L"1234567");
    EXPECT_EQ(Utils::IntToWstring(std::numeric_limits<int>::max()), L"2147483647");
    EXPECT_EQ(Utils::IntToWstring(std::numeric_limits<int>::min()), L"-2147483648");
}

TEST(UtilsTest, UKesPtrIntToWstringIsDecimalWithoutSign) {
    EXPECT_EQ(Utils::uKesPtrIntToWstring(0), L"0");
    EXPECT_EQ(Utils::uKesPtrIntToWstring(10002), L"10002");
    EXPECT_EQ(Utils::uKesPtrIntToWstring(std::numeric_limits<std::uint64_t>::max()),
              L"18446744073709551615");
}

TEST(UtilsTest, WholeNumbersAreIndependentOfTheLocale) {
    const ForeignLocales foreign;
    EXPECT_EQ(Utils::IntToString(-1234567), "-1234567");
    EXPECT_EQ(Utils::IntToHexString(-1), "0xffffffffffffffff");
    EXPECT_EQ(Utils::PointerToHexString(reinterpret_cast<void*>(std::uintptr_t{0x123456})),
              "0x123456");
    EXPECT_EQ(Utils::IntToWstring(-1234567), L"-1234567");
    EXPECT_EQ(Utils::uKesPtrIntToWstring(1234567), L"1234567");
}

TEST(UtilsTest, DoubleToWstringFollowsTheFormat) {
    EXPECT_EQ(doubleToWstring(1.5, "%.3f"), L"1.500");
    EXPECT_EQ(doubleToWstring(-2.25, "[%+8.2f mm]"), L"[   -2.25 mm]");
    EXPECT_EQ(doubleToWstring(0.5, "%g %%"), L"0.5 %");
    EXPECT_EQ(doubleToWstring(0.5, ""), L"");
}

TEST(UtilsTest, DoubleToWstringWidensTheBytesOfTheFormat) {
    EXPECT_EQ(doubleToWstring(1.5, "%.1f\xB0"), L"1.5\x00B0");
}

TEST(UtilsTest, DoubleToWstringIsNotCut) {
    const std::wstring text = doubleToWstring(1.0, "%.3000f");
    EXPECT_EQ(text, L"1." + std::wstring(3000, L'0'));
}

TEST(UtilsTest, DoubleToWstringIsIndependentOfTheLocale) {
    const ForeignLocales foreign;
    EXPECT_EQ(doubleToWstring(1234.5, "%.2f"), L"1234.50");
}

TEST(UtilsTest, DoubleToWstringWithSeventeenDigitsLeadsBackToTheValue) {
    std::mt19937_64 random(20240814);
    std::uniform_real_distribution<double> mantissa(-1.0, 1.0);
    std::uniform_int_distribution<int> exponent(-300, 300);
    for (int round = 0; round < 1000; ++round) {
        const double value = std::ldexp(mantissa(random), exponent(random));
        const std::wstring text = doubleToWstring(value, "%.17g");
        SCOPED_TRACE(std::to_string(round) + ": " + Utils::WstringToString(text));
        EXPECT_EQ(std::wcstod(text.c_str(), nullptr), value);
    }
}

TEST(UtilsTest, SprintfLFormatsAllItsArguments) {
    EXPECT_EQ(Utils::SprintfL("%d %s %.2f %c%%", -7, "seven", 0.25, 'x'), "-7 seven 0.25 x%");
    EXPECT_EQ(Utils::SprintfL("%llx", 0xFFFFFFFFFFFFFFFFULL), "ffffffffffffffff");
    EXPECT_EQ(Utils::SprintfL("plain"), "plain");
    EXPECT_EQ(Utils::SprintfL("%s", ""), "");
}

TEST(UtilsTest, SprintfLKeeps1023CharactersAndCutsTheRest) {
    const std::string longest(1023, 'a');
    EXPECT_EQ(Utils::SprintfL("%s", longest.substr(1).c_str()), longest.substr(1));
    EXPECT_EQ(Utils::SprintfL("%s", longest.c_str()), longest);
    EXPECT_EQ(Utils::SprintfL("%sbc", longest.c_str()), longest);
    EXPECT_EQ(Utils::SprintfL("%s%5000d", longest.substr(2).c_str(), 1), longest.substr(2) + "  ");
}

TEST(UtilsTest, SprintfLIsIndependentOfTheLocale) {
    const ForeignLocales foreign;
    EXPECT_EQ(Utils::SprintfL("%.2f %d", 1234.5, 1234567), "1234.50 1234567");
}

TEST(UtilsTest, SprintfLLeavesTheLocaleInForce) {
    const ForeignLocales foreign;
    const std::string before = std::setlocale(LC_ALL, nullptr);
    char expected[32];
    std::snprintf(expected, sizeof expected, "%.1f", 2.5);
    Utils::SprintfL("%.1f", 2.5);
    char text[32];
    std::snprintf(text, sizeof text, "%.1f", 2.5);
    EXPECT_STREQ(text, expected);
    EXPECT_EQ(std::setlocale(LC_ALL, nullptr), before);
}

TEST(UtilsTest, SWprintfLFormatsAllItsArguments) {
    EXPECT_EQ(Utils::SWprintfL(L"%d %ls %hs %.2f%%", -7, L"seven", "narrow", 0.25),
              L"-7 seven narrow 0.25%");
    EXPECT_EQ(Utils::SWprintfL(L"plain"), L"plain");
    EXPECT_EQ(Utils::SWprintfL(L"%ls", L""), L"");
}

TEST(UtilsTest, SWprintfLKeepsEveryWideCharacter) {
    EXPECT_EQ(Utils::SWprintfL(L"\x2300 %ls", L"\x00E4\x20AC"), L"\x2300 \x00E4\x20AC");
}

TEST(UtilsTest, SWprintfLKeeps1023CharactersAndCutsTheRest) {
    const std::wstring longest(1023, L'a');
    EXPECT_EQ(Utils::SWprintfL(L"%ls", longest.substr(1).c_str()), longest.substr(1));
    EXPECT_EQ(Utils::SWprintfL(L"%ls", longest.c_str()), longest);
    EXPECT_EQ(Utils::SWprintfL(L"%lsbc", longest.c_str()), longest);
    EXPECT_EQ(Utils::SWprintfL(L"%ls%5000d", longest.substr(2).c_str(), 1),
              longest.substr(2) + L"  ");
}

TEST(UtilsTest, SWprintfLIsIndependentOfTheLocale) {
    const ForeignLocales foreign;
    EXPECT_EQ(Utils::SWprintfL(L"%.2f %d", 1234.5, 1234567), L"1234.50 1234567");
}

TEST(UtilsTest, SWprintfLLeavesTheLocaleInForce) {
    const ForeignLocales foreign;
    const std::string before = std::setlocale(LC_ALL, nullptr);
    wchar_t expected[32];
    std::swprintf(expected, 32, L"%.1f", 2.5);
    Utils::SWprintfL(L"%.1f", 2.5);
    wchar_t text[32];
    std::swprintf(text, 32, L"%.1f", 2.5);
    EXPECT_STREQ(text, expected);
    EXPECT_EQ(std::setlocale(LC_ALL, nullptr), before);
}

TEST(UtilsTest, FormattingRunsOnManyThreadsAtOnce) {
    std::vector<std::thread> threads;
    std::vector<int> failures(4, 0);
    for (int& failed : failures) {
        threads.emplace_back([&failed] {
            for (int round = 0; round < 500; ++round) {
                const bool isGood = Utils::SprintfL("%d %.1f", round, 0.5) ==
                                    Utils::WstringToString(Utils::SWprintfL(L"%d 0.5", round));
                failed += isGood ? 0 : 1;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(failures, std::vector<int>(4, 0));
}

/// With an empty folder of its own, in the form that the system writes paths in.
class UtilsFileTest : public testing::Test {
protected:
    std::wstring in(const std::wstring& name) const {
        return (_folder.Path() / name).make_preferred().wstring();
    }
    std::wstring folder() const {
        return std::filesystem::path(_folder.Path()).make_preferred().wstring();
    }
    static std::wstring root() {
        return std::filesystem::current_path().root_path().make_preferred().wstring();
    }

    TemporaryFolder _folder;
};

TEST_F(UtilsFileTest, FileExistsForAFile) {
    _folder.Write("part.stp", "");
    EXPECT_TRUE(Utils::FileExists(in(L"part.stp")));
}

TEST_F(UtilsFileTest, FileExistsForAFolder) {
    EXPECT_TRUE(Utils::FileExists(folder()));
    EXPECT_TRUE(Utils::FileExists(in(L"")));
    EXPECT_TRUE(Utils::FileExists(root()));
}

TEST_F(UtilsFileTest, FileMissingFromAnExistingFolderDoesNotExist) {
    EXPECT_FALSE(Utils::FileExists(in(L"missing.stp")));
}

TEST_F(UtilsFileTest, FileMissingFromTheCurrentFolderDoesNotExist) {
    _folder.Write("part.stp", "");
    const CurrentFolder current(_folder.Path());
    EXPECT_TRUE(Utils::FileExists(L"part.stp"));
    EXPECT_FALSE(Utils::FileExists(L"missing.stp"));
}

TEST_F(UtilsFileTest, FileInAMissingFolderCountsAsExisting) {
    // Any error but that for a missing file is taken for a file that is there.
    EXPECT_TRUE(Utils::FileExists(in(L"missing/part.stp")));
    EXPECT_TRUE(Utils::FileExists(L"missing/p"));  // its last piece is one character
}

TEST_F(UtilsFileTest, FileBelowAFileCountsAsExisting) {
    _folder.Write("part.stp", "");
    EXPECT_TRUE(Utils::FileExists(in(L"part.stp/part.stp")));
}

TEST_F(UtilsFileTest, PathThatNamesNoFileCountsAsExisting) {
    EXPECT_TRUE(Utils::FileExists(L""));
    EXPECT_TRUE(Utils::FileExists(in(L"missing") + std::wstring(1, L'\0')));
}

TEST_F(UtilsFileTest, GetAbsolutePathIsTheFolder) {
    EXPECT_EQ(Utils::GetAbsolutePath(in(L"part.stp")), folder());
}

TEST_F(UtilsFileTest, GetAbsolutePathOfARelativePathBeginsAtTheCurrentFolder) {
    const CurrentFolder current(_folder.Path());
    EXPECT_EQ(Utils::GetAbsolutePath(L"part.stp"), folder());
    EXPECT_EQ(Utils::GetAbsolutePath(L"parts/part.stp"), in(L"parts"));
    EXPECT_EQ(Utils::GetAbsolutePath(L"../part.stp"),
              std::filesystem::path(folder()).parent_path().wstring());
}

TEST_F(UtilsFileTest, GetAbsolutePathResolvesDotsAndRepeatedSeparators) {
    EXPECT_EQ(Utils::GetAbsolutePath(in(L"./a//b/../part.stp")), in(L"a"));
}

TEST_F(UtilsFileTest, GetAbsolutePathOfATrailingSeparatorIsAllBeforeIt) {
    EXPECT_EQ(Utils::GetAbsolutePath(in(L"parts/")), in(L"parts"));
}

TEST_F(UtilsFileTest, GetAbsolutePathOfAnEntryOfTheRootIsTheRootWithoutSeparator) {
    const std::wstring withoutSeparator = root().substr(0, root().size() - 1);
    EXPECT_EQ(Utils::GetAbsolutePath(root() + L"part.stp"), withoutSeparator);
    EXPECT_EQ(Utils::GetAbsolutePath(root()), withoutSeparator);
    EXPECT_EQ(Utils::GetAbsolutePath(root() + L"../../part.stp"), withoutSeparator);
}

TEST_F(UtilsFileTest, GetAbsolutePathFormsUpTo255Characters) {
    const std::wstring parts = root() + std::wstring(100, L'd');
    const std::size_t rest = 255 - parts.size() - 1;
    EXPECT_EQ(
        Utils::GetAbsolutePath((std::filesystem::path(parts) / std::wstring(rest, L'n')).wstring()),
        parts);
    EXPECT_EQ(Utils::GetAbsolutePath(
                  (std::filesystem::path(parts) / std::wstring(rest + 1, L'n')).wstring()),
              L"");
}

TEST_F(UtilsFileTest, GetAbsolutePathOfWhatNamesNoFileIsEmpty) {
    EXPECT_EQ(Utils::GetAbsolutePath(L""), L"");
    EXPECT_EQ(Utils::GetAbsolutePath(in(L"part") + std::wstring(1, L'\0')), L"");
}

TEST_F(UtilsFileTest, GetFileNameOnlyIsTheLastPiece) {
    EXPECT_EQ(Utils::GetFileNameOnly(in(L"parts/archive.tar.gz")), L"archive.tar.gz");
    EXPECT_EQ(Utils::GetFileNameOnly(L"part.stp"), L"part.stp");
}

TEST_F(UtilsFileTest, GetFileNameOnlyLooksAtTheFullPath) {
    EXPECT_EQ(Utils::GetFileNameOnly(in(L"parts/sub/..")), L"parts");
    EXPECT_EQ(Utils::GetFileNameOnly(in(L"parts/.")), L"parts");
    const CurrentFolder current(_folder.Path());
    EXPECT_EQ(Utils::GetFileNameOnly(L"."), _folder.Path().filename().wstring());
}

TEST_F(UtilsFileTest, GetFileNameOnlyOfATrailingSeparatorIsEmpty) {
    EXPECT_EQ(Utils::GetFileNameOnly(in(L"parts/")), L"");
    EXPECT_EQ(Utils::GetFileNameOnly(root()), L"");
}

TEST_F(UtilsFileTest, GetFileNameOnlyFormsUpTo255Characters) {
    const std::wstring longest(255 - root().size(), L'n');
    EXPECT_EQ(Utils::GetFileNameOnly(root() + longest), longest);
    EXPECT_EQ(Utils::GetFileNameOnly(root() + longest + L"n"), L"");
}

TEST_F(UtilsFileTest, GetFileNameOnlyOfWhatNamesNoFileIsEmpty) {
    EXPECT_EQ(Utils::GetFileNameOnly(L""), L"");
    EXPECT_EQ(Utils::GetFileNameOnly(in(L"part") + std::wstring(1, L'\0')), L"");
}

TEST(UtilsTest, GetFileExtensionFollowsTheLastDot) {
    EXPECT_EQ(Utils::GetFileExtension(L"part.stp"), L"stp");
    EXPECT_EQ(Utils::GetFileExtension(L"archive.tar.gz"), L"gz");
    EXPECT_EQ(Utils::GetFileExtension(L".hidden"), L"hidden");
}

TEST(UtilsTest, GetFileExtensionWithoutADotIsEmpty) {
    EXPECT_EQ(Utils::GetFileExtension(L"part"), L"");
    EXPECT_EQ(Utils::GetFileExtension(L""), L"");
}

TEST(UtilsTest, GetFileExtensionOfATrailingDotIsEmpty) {
    EXPECT_EQ(Utils::GetFileExtension(L"part."), L"");
}

TEST(UtilsTest, GetFileExtensionTakesTheDotOfAFolderToo) {
    EXPECT_EQ(Utils::GetFileExtension(L"parts.v2/part"), L"v2/part");
}

TEST_F(UtilsFileTest, GetFileContentsIsTheWholeFile) {
    _folder.Write("note.txt", "first\nsecond\n");
    EXPECT_EQ(Utils::GetFileContents(in(L"note.txt")), L"first\nsecond\n");
}

TEST_F(UtilsFileTest, GetFileContentsOfAnEmptyFileIsEmpty) {
    _folder.Write("empty.txt", "");
    EXPECT_EQ(Utils::GetFileContents(in(L"empty.txt")), L"");
}

TEST_F(UtilsFileTest, GetFileContentsWidensEachByte) {
    _folder.Write("note.txt", std::string("\xEF\xBB\xBF\xC3\xA4\0\xFFz", 8));
    EXPECT_EQ(Utils::GetFileContents(in(L"note.txt")),
              std::wstring(L"\x00EF\x00BB\x00BF\x00C3\x00A4\0\x00FFz", 8));
}

TEST_F(UtilsFileTest, GetFileContentsReadsFilesOfAnyLength) {
    for (const std::size_t length : {4095U, 4096U, 4097U, 1000000U}) {
        SCOPED_TRACE(length);
        std::string bytes;
        std::wstring expected;
        for (std::size_t place = 0; place < length; ++place) {
            const auto letter = static_cast<unsigned char>('a' + place % 23);
            bytes.push_back(static_cast<char>(letter));
            expected.push_back(letter);
        }
        _folder.Write("long.txt", bytes);
        EXPECT_TRUE(Utils::GetFileContents(in(L"long.txt")) == expected);
    }
}

TEST_F(UtilsFileTest, GetFileContentsSharesTheFile) {
    std::ofstream writer(_folder.Path() / "note.txt", std::ios::binary);
    writer << "still open" << std::flush;
    EXPECT_EQ(Utils::GetFileContents(in(L"note.txt")), L"still open");
    writer << " and written" << std::flush;
    EXPECT_EQ(Utils::GetFileContents(in(L"note.txt")), L"still open and written");
}

TEST_F(UtilsFileTest, GetFileContentsOfAMissingFileIsEmpty) {
    EXPECT_EQ(Utils::GetFileContents(in(L"missing.txt")), L"");
}

TEST_F(UtilsFileTest, GetFileContentsOfAFolderIsEmpty) {
    EXPECT_EQ(Utils::GetFileContents(folder()), L"");
}

TEST_F(UtilsFileTest, GetFileContentsOfWhatNamesNoFileIsEmpty) {
    _folder.Write("note.txt", "text");
    EXPECT_EQ(Utils::GetFileContents(L""), L"");
    EXPECT_EQ(Utils::GetFileContents(in(L"note.txt") + std::wstring(1, L'\0')), L"");
}

TEST(UtilsTest, GetExePathIsAnExistingFolderWithoutTrailingSeparator) {
    const std::filesystem::path folder = Utils::GetExePath();
    EXPECT_TRUE(std::filesystem::is_directory(folder));
    EXPECT_TRUE(folder.is_absolute());
    EXPECT_TRUE(folder.has_filename());
}

}  // namespace
}  // namespace KesVizCore
