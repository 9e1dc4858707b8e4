#include "PngPixels.h"
#include "ProgramKit.h"
#include "SampleKit.h"
#include "support/Golden.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>

namespace kesview {
namespace {

using support::readPng;
using support::runProgram;
using support::sampleFile;
using support::shareThatDiffers;

// Drivers differ in the antialiasing of lines, and hardly in anything else.
constexpr int kChannelLimit = 48;       // of 255
constexpr double kSharedLimit = 0.005;  // of all pixels

struct Shot {
    std::string name;
    std::vector<std::string> options;
};

void PrintTo(const Shot& shot, std::ostream* out) {
    *out << shot.name;
}

std::string baseline(const std::string& name) {
    return std::string(KESVIEW_SAMPLE_BASELINES) + "/" + name + ".png";
}

int draw(const Shot& shot, const std::string& path) {
    std::vector<std::string> words = {"render", sampleFile(), "-o", path, "--size", "480x300"};
    words.insert(words.end(), shot.options.begin(), shot.options.end());
    return runProgram(words).code;
}

class SamplePicturesTest : public testing::TestWithParam<Shot> {};

TEST_P(SamplePicturesTest, LookAsTheBaselines) {
    const std::string actual = testing::TempDir() + "kesview_actual_" + GetParam().name + ".png";
    ASSERT_EQ(draw(GetParam(), actual), 0);
    if (support::writesGolden()) {
        std::filesystem::copy_file(actual, baseline(GetParam().name),
                                   std::filesystem::copy_options::overwrite_existing);
    }
    const double share =
        shareThatDiffers(readPng(actual), readPng(baseline(GetParam().name)), kChannelLimit);
    EXPECT_LE(share, kSharedLimit) << "compare " << actual << " with " << baseline(GetParam().name);
    if (share <= kSharedLimit) {
        std::filesystem::remove(actual);
    }
}

INSTANTIATE_TEST_SUITE_P(Shots, SamplePicturesTest,
                         testing::Values(Shot{"iso", {}}, Shot{"bore", {"--view", "Bore"}},
                                         Shot{"section_view", {"--view", "Section A-A"}},
                                         Shot{"cut", {"--section", "x=45", "--pmi", "none"}},
                                         Shot{"highlight",
                                              {"--highlight", "Fastener*", "--highlight",
                                               "Front of the upright"}},
                                         Shot{"hide", {"--hide", "Fastener set 1", "--no-edges"}}),
                         [](const auto& test) { return test.param.name; });

TEST(SampleBaselinesTest, EachDiffersFromEveryOtherByMoreThanTheTolerance) {
    const std::vector<std::string> names = {"iso", "bore",      "section_view",
                                            "cut", "highlight", "hide"};
    for (const std::string& one : names) {
        for (const std::string& other : names) {
            const double share =
                shareThatDiffers(readPng(baseline(one)), readPng(baseline(other)), kChannelLimit);
            EXPECT_EQ(share > kSharedLimit, one != other) << one << ", " << other << ": " << share;
        }
    }
}

}  // namespace
}  // namespace kesview
