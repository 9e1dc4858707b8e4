#include "ProgramKit.h"
#include "SampleKit.h"
#include "TriangleSearch.h"
#include "commands/CommandLine.h"
#include "picking/PickIndex.h"
#include "reading/ReadFile.h"
#include "view/Vectors.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <random>
#include <sstream>

namespace kesview {
namespace {

using Json = nlohmann::json;
using support::sampleFile;
using support::SearchHit;
using support::SearchRay;

constexpr int kWidth = 480;
constexpr int kHeight = 300;
constexpr double kAperturePixels = 3;

/// A parallel view of the sample, with numbers from its description, that fills the picture.
struct Shot {
    std::string view;
    Vector eye;
    Vector target;
    double height;
    std::optional<SavedView::Plane> clipping;
};

const Shot kBore = {"Bore", {285, -126, 185}, {45, 54, 25}, 150, std::nullopt};
const Shot kSection = {
    "Section A-A", {45, -300, 15}, {45, 30, 15}, 130, SavedView::Plane{{45, 30, 15}, {0, 1, 0}}};

SearchRay rayAt(const Shot& shot, int x, int y, double aperturePixels) {
    const double pixel = shot.height / kHeight;
    const Vector line = shot.target - shot.eye;
    const Vector right = unit(cross(line, Vector{0, 0, 1}));
    const Vector up = unit(cross(right, line));
    const Vector root = shot.eye + (pixel * (x + 0.5 - kWidth / 2.0)) * right +
                        (pixel * (kHeight / 2.0 - y - 0.5)) * up;
    return {root, unit(line), aperturePixels * pixel};
}

std::vector<std::string> pickWords(const Shot& shot, int x, int y) {
    return {"pick",
            sampleFile(),
            "--quiet",
            "--format",
            "json",
            "--pmi",
            "none",
            "--view",
            shot.view,
            "--size",
            std::to_string(kWidth) + "x" + std::to_string(kHeight),
            "--at",
            std::to_string(x) + "," + std::to_string(y)};
}

/// The verb in this process, over what was read once.
Json pickHere(const Document& document, const Shot& shot, int x, int y) {
    Tools tools;
    tools.read = [&document](const std::string&, const ReadOptions&, const ReadProgress&) {
        return document;
    };
    tools.makePicker = makePickIndex;
    std::ostringstream out;
    std::ostringstream err;
    Streams streams{out, err};
    EXPECT_EQ(runKesview(pickWords(shot, x, y), tools, streams), ExitCode::Done) << err.str();
    return Json::parse(out.str());
}

void expectHit(const Json& answer, const SearchHit& expected, const SearchRay& ray) {
    ASSERT_EQ(answer.at("hit").get<bool>(), !expected.renderIds.empty()) << answer;
    if (expected.renderIds.empty()) {
        return;
    }
    const Json& what = answer.at("what");
    EXPECT_EQ(expected.renderIds.count(what.at("renderId").get<std::string>()), 1U)
        << what << testing::PrintToString(expected.renderIds);
    EXPECT_EQ(what.at("type").get<std::string>(), expected.isEdge ? "edge" : "face");
    const auto point = what.at("point").get<Vector>();
    EXPECT_NEAR(dot(point - ray.root, ray.direction), expected.distance, 0.02);
}

/// Where edges win by a hair, single precision may decide otherwise.
bool isClear(const support::TriangleSearch& search, const Shot& shot, int x, int y) {
    const SearchHit less = search.Search(rayAt(shot, x, y, kAperturePixels - 0.05));
    const SearchHit more = search.Search(rayAt(shot, x, y, kAperturePixels + 0.05));
    return less.renderIds == more.renderIds;
}

struct Tally {
    int faces = 0;
    int edges = 0;
    int nothing = 0;
};

Tally comparePicks(const Shot& shot, int count) {
    const Document document = readFile(sampleFile(), {});
    const support::TriangleSearch search(document, shot.clipping);
    std::mt19937 random(7);
    Tally tally;
    for (int trial = 0; trial < count && !testing::Test::HasFailure(); ++trial) {
        const int x = static_cast<int>(random() % kWidth);
        const int y = static_cast<int>(random() % kHeight);
        SCOPED_TRACE(std::to_string(x) + "," + std::to_string(y));
        if (!isClear(search, shot, x, y)) {
            continue;
        }
        const SearchRay ray = rayAt(shot, x, y, kAperturePixels);
        const SearchHit expected = search.Search(ray);
        expectHit(pickHere(document, shot, x, y), expected, ray);
        ++(expected.renderIds.empty() ? tally.nothing
           : expected.isEdge          ? tally.edges
                                      : tally.faces);
    }
    return tally;
}

TEST(SamplePicksTest, AnswerAsASearchThroughAllTriangles) {
    const Tally tally = comparePicks(kBore, 120);
    EXPECT_GT(tally.faces, 20);
    EXPECT_GT(tally.edges, 5);
    EXPECT_GT(tally.nothing, 20);
}

TEST(SamplePicksTest, AnswerSoInTheSection) {
    const Tally tally = comparePicks(kSection, 120);
    EXPECT_GT(tally.faces, 20);
    EXPECT_GT(tally.edges, 5);
    EXPECT_GT(tally.nothing, 20);
}

TEST(SamplePicksTest, TheProgramAnswersAsTheVerbInThisProcess) {
    const Document document = readFile(sampleFile(), {});
    for (const int x : {150, 240, 300}) {
        const support::ProgramAnswer answer = support::runProgram(pickWords(kBore, x, 160));
        EXPECT_EQ(answer.code, 0) << answer.err;
        EXPECT_EQ(Json::parse(answer.out), pickHere(document, kBore, x, 160));
    }
}

}  // namespace
}  // namespace kesview
