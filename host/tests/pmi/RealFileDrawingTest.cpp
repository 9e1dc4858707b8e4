#include "reading/part21/ExchangePmi.h"
#include "support/RealFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace kesview {
namespace {

using support::realFile;

using testing::IsEmpty;

/// Counted in the files' own text: what the presentation of every annotation occurrence holds.
struct Expected {
    const char* file;
    std::size_t occurrences;
    std::size_t lines;
    std::size_t triangles;
};

class RealFileDrawingTest : public testing::TestWithParam<Expected> {};

TEST_P(RealFileDrawingTest, DrawsEveryPresentationThatTheFileHolds) {
    KESVIEW_NEEDS_DATA();
    const Expected& expected = GetParam();
    const auto file = ExchangeFile::Open(realFile(expected.file));
    ASSERT_TRUE(file);
    EXPECT_EQ(file->SkippedCount(), 0U);
    const ExchangePmi pmi = readExchangePmi(*file, 1);
    std::size_t drawn = 0;
    std::size_t lines = 0;
    std::size_t triangles = 0;
    for (const ExchangeAnnotation& annotation : pmi.annotations) {
        drawn += annotation.drawing.IsEmpty() ? 0U : 1U;
        lines += annotation.drawing.lines.size();
        for (const auto& area : annotation.drawing.areas) {
            triangles += area.triangles.size() / 3;
        }
        EXPECT_TRUE(annotation.annotation.drawnInFile) << annotation.annotation.key;
        EXPECT_TRUE(annotation.drawing.IsEmpty() || annotation.plane) << annotation.annotation.key;
        EXPECT_EQ(annotation.drawing.IsEmpty(),
                  annotation.annotation.attributes.count("DrawnWith") != 0)
            << annotation.annotation.key;
    }
    EXPECT_EQ(drawn, expected.occurrences);
    EXPECT_EQ(lines, expected.lines);
    EXPECT_EQ(triangles, expected.triangles);
    EXPECT_THAT(pmi.findings, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Files, RealFileDrawingTest,
                         testing::Values(Expected{"gen_bracket.stp", 4, 20, 0},
                                         Expected{"nist_ctc_01_asme1_ap242-e1.stp", 23, 146, 2735},
                                         Expected{"nist_ctc_02_asme1_ap203.stp", 46, 1114, 0},
                                         Expected{"nist_ctc_05_asme1_ap242-e1.stp", 22, 650, 0},
                                         Expected{"nist_ftc_07_asme1_ap242-e2.stp", 53, 3102, 0},
                                         Expected{"nist_ftc_11_asme1_ap242-e1.stp", 13, 84, 15459},
                                         Expected{"nist_stc_08_asme1_ap242-e3.stp", 44, 401,
                                                  21064}),
                         [](const auto& test) { return "File" + std::to_string(test.index); });

Vector firstPoint(const ExchangePmi& pmi, const std::string& key) {
    const auto found = std::find_if(pmi.annotations.begin(), pmi.annotations.end(),
                                    [&](const auto& a) { return a.annotation.key == key; });
    return found->drawing.lines.at(0).at(0);
}

TEST(RealFilePlacementTest, InchesBecomeMillimetres) {
    KESVIEW_NEEDS_DATA();
    const auto file = ExchangeFile::Open(realFile("nist_ftc_07_asme1_ap242-e2.stp"));
    // #13698, of datum A, starts with (0.3, 0.700993, 5.714391)
    const Vector point = firstPoint(readExchangePmi(*file, 1), "#13680");
    EXPECT_NEAR(point[0], 7.62, 1e-9);
    EXPECT_NEAR(point[1], 17.8052222, 1e-6);
    EXPECT_NEAR(point[2], 145.1455314, 1e-6);
}

TEST(RealFilePlacementTest, RepositionedDrawingsStandInTheirPlane) {
    KESVIEW_NEEDS_DATA();
    const auto file = ExchangeFile::Open(realFile("nist_ctc_01_asme1_ap242-e1.stp"));
    // #377 starts with (-342.5, -107, 0) in a frame at (0, -175, 0) with y along the model's z
    const Vector point = firstPoint(readExchangePmi(*file, 1), "#120");
    EXPECT_NEAR(point[0], -342.5, 1e-9);
    EXPECT_NEAR(point[1], -175, 1e-9);
    EXPECT_NEAR(std::abs(point[2]), 107, 1e-9);
}

TEST(RealFileDamageTest, ATruncatedFileGivesWhatIsThere) {
    KESVIEW_NEEDS_DATA();
    const auto file = ExchangeFile::Open(realFile("bad/bad_truncated_ftc07.stp"));
    ASSERT_TRUE(file);
    EXPECT_TRUE(file->IsTruncated());
    EXPECT_EQ(file->Size(), 14216U);
    EXPECT_EQ(readExchangePmi(*file, 1).annotations.size(), 13U);
}

TEST(RealFileDamageTest, FilesOfAnotherKindHoldNothing) {
    KESVIEW_NEEDS_DATA();
    for (const char* name : {"bad/wrong_ext_stl.stp", "bad/lfs_pointer.stp", "bad/bad_empty.stp",
                             "occt_propeller.stl", "occt_bearing.iges"}) {
        const auto file = ExchangeFile::Open(realFile(name));
        ASSERT_TRUE(file) << name;
        EXPECT_EQ(file->Size(), 0U) << name;
        EXPECT_THAT(readExchangePmi(*file, 1).annotations, IsEmpty()) << name;
    }
}

}  // namespace
}  // namespace kesview
