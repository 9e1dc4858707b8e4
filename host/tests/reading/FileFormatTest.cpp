/// @file
#include "reading/FileFormat.h"
#include "reading/ReadFile.h"
#include "support/RealFiles.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <vector>

namespace kesview {
namespace {

std::string littleEndian(std::uint32_t number) {
    std::string bytes(sizeof number, '\0');
    std::memcpy(bytes.data(), &number, sizeof number);
    return bytes;
}

/// One triangle of a binary file, with its normal.
std::string triangle() {
    const std::vector<float> numbers = {0, 0, 1, 0, 0, 0, 10.5F, 0, 0, 0, 20.25F, 0};
    std::string record(50, '\0');
    std::memcpy(record.data(), numbers.data(), numbers.size() * sizeof(float));
    return record;
}

std::string repeated(const std::string& text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i) {
        all += text;
    }
    return all;
}

std::string binaryStl(const std::string& header, std::uint32_t count, int held) {
    std::string padded = header;
    padded.resize(80, ' ');
    return padded + littleEndian(count) + repeated(triangle(), held);
}

std::string igesLine(const std::string& text, const std::string& tail) {
    std::string line = text;
    line.resize(72, ' ');
    return line + tail;
}

class FileFormatTest : public testing::Test {
protected:
    FileFormat formatOf(std::string_view content) const {
        return detectFormat(folder.Write("file.dat", content));
    }

    support::TemporaryFolder folder;
};

TEST_F(FileFormatTest, StepIsToldByItsFirstWord) {
    EXPECT_EQ(formatOf("ISO-10303-21;\nHEADER;"), FileFormat::Step);
    EXPECT_EQ(formatOf("ISO-10303-21;"), FileFormat::Step);
    EXPECT_EQ(formatOf("ISO-10303-21 ;"), FileFormat::Step);
}

TEST_F(FileFormatTest, StepMayBeginWithAMarkBlanksAndComments) {
    EXPECT_EQ(formatOf("\xEF\xBB\xBFISO-10303-21;"), FileFormat::Step);
    EXPECT_EQ(formatOf("\r\n \tISO-10303-21;"), FileFormat::Step);
    EXPECT_EQ(formatOf("/* one */ /* two **/\nISO-10303-21;"), FileFormat::Step);
    EXPECT_EQ(formatOf("/*" + std::string(10'000, '-') + "*/ISO-10303-21;"), FileFormat::Step);
}

TEST_F(FileFormatTest, WhatOnlyResemblesStepIsUnknown) {
    EXPECT_EQ(formatOf("ISO-10303-28;"), FileFormat::Unknown);
    EXPECT_EQ(formatOf("ISO-10303-21"), FileFormat::Unknown);
    EXPECT_EQ(formatOf("about ISO-10303-21;"), FileFormat::Unknown);
    EXPECT_EQ(formatOf("/* ISO-10303-21;"), FileFormat::Unknown);
}

TEST_F(FileFormatTest, IgesIsToldByItsStartSection) {
    EXPECT_EQ(formatOf(igesLine("", "S0000001\n")), FileFormat::Iges);
    EXPECT_EQ(formatOf(igesLine("made by hand", "S      1\r\n")), FileFormat::Iges);
    EXPECT_EQ(formatOf(igesLine("", "S0000001") + igesLine("1H,,", "G0000001")), FileFormat::Iges);
    EXPECT_EQ(formatOf(igesLine("solid as a facet", "S      1\n")), FileFormat::Iges);
}

TEST_F(FileFormatTest, WhatOnlyResemblesIgesIsUnknown) {
    EXPECT_EQ(formatOf(igesLine("", "S")), FileFormat::Unknown);
    EXPECT_EQ(formatOf(igesLine("", "S       \n")), FileFormat::Unknown);
    EXPECT_EQ(formatOf(igesLine("", "Sixteen.\n")), FileFormat::Unknown);
    EXPECT_EQ(formatOf(igesLine("", "G0000001\n")), FileFormat::Unknown);
    EXPECT_EQ(formatOf(igesLine("two\nlines", "S0000001\n")), FileFormat::Unknown);
}

TEST_F(FileFormatTest, BrepIsToldByEachOfItsHeads) {
    EXPECT_EQ(formatOf("DBRep_DrawableShape\n\nCASCADE Topology V1"), FileFormat::Brep);
    EXPECT_EQ(formatOf("\nCASCADE Topology V3, (c) Open Cascade\n"), FileFormat::Brep);
    EXPECT_EQ(formatOf(std::string_view("\nOpen CASCADE Topology V4, (c)\n\0\1", 33)),
              FileFormat::Brep);
    EXPECT_EQ(formatOf("CASCADE Geometry"), FileFormat::Unknown);
}

TEST_F(FileFormatTest, AsciiStlNeedsMoreThanItsFirstWord) {
    EXPECT_EQ(formatOf("solid x\n facet normal 0 0 1\n"), FileFormat::Stl);
    EXPECT_EQ(formatOf("  SOLID\nFACET NORMAL 0 0 1\n"), FileFormat::Stl);
    EXPECT_EQ(formatOf("solid nothing\nendsolid nothing\n"), FileFormat::Stl);
    EXPECT_EQ(formatOf("solid advice for everyone\n"), FileFormat::Unknown);
    EXPECT_EQ(formatOf("solid"), FileFormat::Unknown);
}

TEST_F(FileFormatTest, BinaryStlIsToldByItsSize) {
    EXPECT_EQ(formatOf(binaryStl("made by hand", 2, 2)), FileFormat::Stl);
    EXPECT_EQ(formatOf(binaryStl("none", 0, 0)), FileFormat::Stl);
    EXPECT_EQ(formatOf(binaryStl("solid and binary", 3, 3)), FileFormat::Stl);
    EXPECT_EQ(formatOf(binaryStl("solid with a facet in its name", 3, 3)), FileFormat::Stl);
}

TEST_F(FileFormatTest, BinaryStlOfAWrongCountIsToldByItsTriangles) {
    EXPECT_EQ(formatOf(binaryStl("promises more", 1'000'000, 12)), FileFormat::Stl);
    EXPECT_EQ(formatOf(binaryStl("promises less", 1, 12)), FileFormat::Stl);
    EXPECT_EQ(formatOf(binaryStl("cut", 12, 11) + triangle().substr(0, 20)), FileFormat::Stl);
    EXPECT_EQ(formatOf(binaryStl("holds none", 12, 0)), FileFormat::Unknown);
}

TEST_F(FileFormatTest, OtherContentIsUnknown) {
    EXPECT_EQ(formatOf(""), FileFormat::Unknown);
    EXPECT_EQ(formatOf(std::string(5000, '\0')), FileFormat::Unknown);
    EXPECT_EQ(formatOf(std::string(5000, '\xFF')), FileFormat::Unknown);
    EXPECT_EQ(formatOf(repeated("A plain text of many words. ", 100)), FileFormat::Unknown);
    EXPECT_EQ(formatOf(repeated("BBBB", 100)), FileFormat::Unknown);
    EXPECT_EQ(formatOf("PK\3\4" + std::string(200, 'z')), FileFormat::Unknown);
}

TEST_F(FileFormatTest, AFileThatCannotBeOpenedIsUnreadable) {
    try {
        detectFormat(folder.File("none"));
        FAIL() << "no error came";
    } catch (const ReadError& error) {
        EXPECT_EQ(error.Failure(), ReadFailure::Unreadable);
    }
}

TEST_F(FileFormatTest, EveryFormatHasItsName) {
    EXPECT_EQ(nameOf(FileFormat::Step), "STEP");
    EXPECT_EQ(nameOf(FileFormat::Iges), "IGES");
    EXPECT_EQ(nameOf(FileFormat::Brep), "BREP");
    EXPECT_EQ(nameOf(FileFormat::Stl), "STL");
    EXPECT_EQ(nameOf(FileFormat::Unknown), "unknown");
}

TEST_F(FileFormatTest, RealFilesAreWhatTheyAreWhateverTheirNames) {
    KESVIEW_NEEDS_DATA();
    const std::map<std::string, FileFormat> odd = {
        {"lfs_pointer.stp", FileFormat::Unknown},
        {"bad_empty.stp", FileFormat::Unknown},
        {"bad_empty.stl", FileFormat::Unknown},
        {"wrong_ext_stl.stp", FileFormat::Stl},
    };
    const std::map<std::string, FileFormat> byExtension = {{".stp", FileFormat::Step},
                                                           {".step", FileFormat::Step},
                                                           {".iges", FileFormat::Iges},
                                                           {".brep", FileFormat::Brep},
                                                           {".stl", FileFormat::Stl}};
    int seen = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(support::realFolder())) {
        const auto expected = byExtension.find(entry.path().extension().string());
        if (expected == byExtension.end()) {
            continue;
        }
        const auto exception = odd.find(entry.path().filename().string());
        EXPECT_EQ(nameOf(detectFormat(entry.path().string())),
                  nameOf(exception == odd.end() ? expected->second : exception->second))
            << entry.path();
        ++seen;
    }
    EXPECT_GE(seen, 29);
}

}  // namespace
}  // namespace kesview
