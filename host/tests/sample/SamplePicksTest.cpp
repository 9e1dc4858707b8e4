#include "ProgramKit.h"
#include "SampleKit.h"
#include "TriangleSearch.h"
#include "commands/CommandLine.h"
#include "picking/PickIndex.h"
#include "reading/ReadFile.h"
#include "view/Vectors.h"

#include <gtest/gtest.h>

#include <cmath>
#include <nlohmann/json.hpp>
#include <optional>
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

/// The shot with its section, if any, a little nearer to the eye or farther.
Shot shifted(Shot shot, double by) {
    if (shot.clipping) {
        shot.clipping->point = shot.clipping->point + by * shot.clipping->normal;
    }
    return shot;
}

/// A search that tells where single precision may decide otherwise: edges that win by a hair, run
/// along the ray or lie in the section's plane.
class ClearSearch {
public:
    ClearSearch(const Document& document, const Shot& shot)
        : _shot(shot),
          _sooner(document, shifted(shot, -0.01).clipping),
          _later(document, shifted(shot, 0.01).clipping) {}

    /// None where it is not clear.
    std::optional<SearchHit> Search(int x, int y) const {
        SearchRay narrow = rayAt(_shot, x, y, kAperturePixels - 0.05);
        narrow.hitsEndOn = false;
        const SearchHit less = _sooner.Search(narrow);
        const SearchHit more = _later.Search(rayAt(_shot, x, y, kAperturePixels + 0.05));
        const bool same =
            less.renderIds == more.renderIds && std::abs(less.distance - more.distance) < 0.001;
        return same || (less.renderIds.empty() && more.renderIds.empty())
                   ? std::optional<SearchHit>(more)
                   : std::nullopt;
    }

private:
    Shot _shot;
    support::TriangleSearch _sooner;
    support::TriangleSearch _later;
};

struct Tally {
    int faces = 0;
    int edges = 0;
    int nothing = 0;
};

Tally comparePicks(const Shot& shot, int count) {
    const Document document = readFile(sampleFile(), {});
    const ClearSearch search(document, shot);
    std::mt19937 random(7);
    Tally tally;
    for (int trial = 0; trial < count && !testing::Test::HasFailure(); ++trial) {
        const int x = 120 + static_cast<int>(random() % 300);  // the middle, where most is
        const int y = 40 + static_cast<int>(random() % 180);
        SCOPED_TRACE(std::to_string(x) + "," + std::to_string(y));
        const std::optional<SearchHit> expected = search.Search(x, y);
        if (!expected) {
            continue;
        }
        expectHit(pickHere(document, shot, x, y), *expected, rayAt(shot, x, y, kAperturePixels));
        ++(expected->renderIds.empty() ? tally.nothing
           : expected->isEdge          ? tally.edges
                                       : tally.faces);
    }
    return tally;
}

TEST(SamplePicksTest, AnswerAsASearchThroughAllTriangles) {
    const Tally tally = comparePicks(kBore, 100);
    EXPECT_GT(tally.faces, 20);
    EXPECT_GT(tally.edges, 5);
    EXPECT_GT(tally.nothing, 20);
}

TEST(SamplePicksTest, AnswerSoInTheSection) {
    const Tally tally = comparePicks(kSection, 100);
    EXPECT_GT(tally.faces, 5);
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
