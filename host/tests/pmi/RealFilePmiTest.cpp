#include "reading/occ/ReadCadFile.h"
#include "reading/part21/Placement.h"
#include "support/RealFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

namespace kesview {
namespace {

using support::realFile;

using testing::ElementsAre;
using testing::Pair;

Document readReal(const char* name) {
    return readCadFile(realFile(name), FileFormat::Step, ReadOptions(), {});
}

const Annotation& annotationOf(const Document& document, const std::string& key) {
    const auto found = std::find_if(document.annotations.begin(), document.annotations.end(),
                                    [&](const Annotation& a) { return a.key == key; });
    if (found == document.annotations.end()) {
        throw std::runtime_error("no annotation " + key);
    }
    return *found;
}

std::uint64_t findingCount(const Document& document, const std::string& code) {
    std::uint64_t count = 0;
    for (const Finding& finding : document.findings) {
        count += finding.code == code ? finding.count : 0;
    }
    return count;
}

/// How many annotations of each kind there are, and of how many views with how many members.
struct Expected {
    const char* file;
    std::map<AnnotationKind, std::size_t> kinds;
    std::map<std::string, std::size_t> members;
    std::size_t unlinked;  ///< annotations that the file ties to no face, edge or product
};

class RealFilePmiTest : public testing::TestWithParam<Expected> {};

TEST_P(RealFilePmiTest, HasEveryAnnotationAndView) {
    KESVIEW_NEEDS_DATA();
    const Expected& expected = GetParam();
    const Document document = readReal(expected.file);
    std::map<AnnotationKind, std::size_t> kinds;
    std::set<std::string> keys;
    std::set<Id> ids;
    std::size_t unlinked = 0;
    for (const Annotation& annotation : document.annotations) {
        ++kinds[annotation.kind];
        keys.insert(annotation.key);
        ids.insert(annotation.id);
        unlinked += annotation.links.empty() ? 1U : 0U;
        EXPECT_TRUE(annotation.drawnInFile) << annotation.key;
        EXPECT_TRUE(annotation.texts.empty()) << annotation.key;
        for (const std::string& datum : annotation.datums) {
            EXPECT_EQ(annotationOf(document, datum).kind, AnnotationKind::Datum) << annotation.key;
        }
    }
    EXPECT_EQ(kinds, expected.kinds);
    EXPECT_EQ(keys.size(), document.annotations.size());
    EXPECT_EQ(ids.size(), document.annotations.size());
    EXPECT_EQ(unlinked, expected.unlinked);
    std::map<std::string, std::size_t> members;
    for (const SavedView& view : document.views) {
        members[view.name] = view.members.size();
        EXPECT_EQ(view.showsAll, view.members.empty()) << view.name;
        for (const std::string& member : view.members) {
            EXPECT_EQ(keys.count(member), 1U) << view.name << " " << member;
        }
    }
    EXPECT_EQ(members, expected.members);
    EXPECT_EQ(members.size(), document.views.size());
    EXPECT_EQ(findingCount(document, "pmi.no-drawing"), 0U);
    EXPECT_EQ(findingCount(document, "pmi.drawing-incomplete"), 0U);
    EXPECT_EQ(findingCount(document, "pmi.link-unresolved"), 0U);
}

using Kind = AnnotationKind;

INSTANTIATE_TEST_SUITE_P(
    Files, RealFilePmiTest,
    testing::Values(
        Expected{"gen_bracket.stp",
                 {{Kind::Dimension, 2}, {Kind::Tolerance, 1}, {Kind::Datum, 1}},
                 {{"MBD_FRONT", 4}, {"MBD_ISO", 4}},
                 0},
        Expected{"nist_ctc_01_asme1_ap242-e1.stp",
                 {{Kind::Dimension, 12}, {Kind::Tolerance, 6}, {Kind::Datum, 3}, {Kind::Note, 2}},
                 {{"MBD_0", 23}},
                 0},
        Expected{"nist_ctc_02_asme1_ap203.stp",
                 {{Kind::Dimension, 7},
                  {Kind::Tolerance, 22},
                  {Kind::Datum, 6},
                  {Kind::DatumTarget, 9},
                  {Kind::Note, 1},
                  {Kind::Other, 1}},
                 {{"MBD_A", 14}, {"MBD_B", 16}, {"MBD_C", 24}},
                 1},
        Expected{
            "nist_ctc_05_asme1_ap242-e1.stp",
            {{Kind::Dimension, 8}, {Kind::Tolerance, 10}, {Kind::Datum, 4}, {Kind::DatumTarget, 2}},
            {{"MBD_A", 14}, {"MBD_B", 11}},
            2},
        Expected{"nist_ftc_07_asme1_ap242-e2.stp",
                 {{Kind::Dimension, 17}, {Kind::Tolerance, 27}, {Kind::Datum, 5}, {Kind::Note, 10}},
                 {{"MBD_A", 21},
                  {"MBD_B", 24},
                  {"MBD_C", 7},
                  {"MBD_D", 7},
                  {"* Document Default Camera", 0},
                  {"* front", 0},
                  {"* back", 0},
                  {"* left", 0},
                  {"* right", 0},
                  {"* top", 0},
                  {"* bottom", 0},
                  {"* iso", 0}},
                 0},
        Expected{"nist_ftc_11_asme1_ap242-e1.stp",
                 {{Kind::Dimension, 6}, {Kind::Tolerance, 4}, {Kind::Datum, 2}, {Kind::Note, 1}},
                 {{"MBD_A", 8}, {"MBD_B", 5}},
                 0},
        Expected{"nist_stc_08_asme1_ap242-e3.stp",
                 {{Kind::Dimension, 7}, {Kind::Tolerance, 30}, {Kind::Datum, 8}, {Kind::Note, 3}},
                 {{"MBD_A", 15}, {"MBD_B", 17}, {"MBD_C", 6}, {"MBD_D", 10}},
                 2}),
    [](const auto& test) { return "File" + std::to_string(test.index); });

/// The points of a linked face, in the world of a document with one product at its origin.
std::vector<Vector> pointsOf(const Document& document, const EntityLink& link) {
    std::vector<Vector> points;
    for (const Product& product : document.products) {
        for (const Body& body : product.bodies) {
            for (const Face& face : body.faces) {
                for (std::size_t i = 0; face.id == link.id && i + 2 < face.points.size(); i += 3) {
                    points.push_back(body.origin + Vector{static_cast<double>(face.points[i]),
                                                          static_cast<double>(face.points[i + 1]),
                                                          static_cast<double>(face.points[i + 2])});
                }
            }
        }
    }
    return points;
}

TEST(RealFileLinkTest, ADiameterLeadsToTheTwoHalvesOfItsHole) {
    KESVIEW_NEEDS_DATA();
    const Document document = readReal("nist_ctc_01_asme1_ap242-e1.stp");
    const Annotation& diameter = annotationOf(document, "#120");  // #219: faces #853, #854
    EXPECT_EQ(diameter.text, "⌀ 35 0 -0.2");
    ASSERT_EQ(diameter.links.size(), 2U);
    for (const EntityLink& link : diameter.links) {
        EXPECT_EQ(link.kind, EntityLink::Kind::Face);
        const auto points = pointsOf(document, link);
        ASSERT_GT(points.size(), 2U);
        for (const Vector& point : points) {  // #3552 is about z at (-325, -175)
            EXPECT_NEAR(std::hypot(point[0] + 325, point[1] + 175), 17.5, 0.05);
        }
    }
}

TEST(RealFileLinkTest, AFlatnessAndItsDatumLeadToOneFlatFace) {
    KESVIEW_NEEDS_DATA();
    const Document document = readReal("nist_ctc_01_asme1_ap242-e1.stp");
    const Annotation& flatness = annotationOf(document, "#57");
    const Annotation& datum = annotationOf(document, "#37");
    ASSERT_EQ(flatness.links.size(), 1U);
    ASSERT_EQ(datum.links.size(), 1U);
    EXPECT_EQ(flatness.links[0].id, datum.links[0].id);  // both say #861
    EXPECT_THAT(annotationOf(document, "#21").datums, ElementsAre("#37", "#38", "#39"));
    EXPECT_EQ(annotationOf(document, "#21").attributes.at("DatumRefDatas"), "#37, #38, #39");
}

TEST(RealFileLinkTest, AToleranceAllOverLeadsToTheSolidOfTheProduct) {
    KESVIEW_NEEDS_DATA();
    const Document document = readReal("nist_ftc_07_asme1_ap242-e2.stp");
    const auto& links =
        annotationOf(document, "#13917").links;  // it applies to the product's shape
    std::size_t solids = 0;
    for (const Product& product : document.products) {
        for (const Body& body : product.bodies) {
            const bool linked =
                std::any_of(links.begin(), links.end(), [&](const EntityLink& link) {
                    return link.kind == EntityLink::Kind::Body && link.id == body.id;
                });
            solids += linked && body.kind == BodyKind::Solid ? 1U : 0U;
        }
    }
    EXPECT_EQ(solids, 1U);
}

TEST(RealFileLinkTest, FacesThatTheFileLacksAreToldOf) {
    KESVIEW_NEEDS_DATA();
    EXPECT_EQ(findingCount(readReal("bad/bad_dangling_faces.stp"), "pmi.link-unresolved"), 47U);
}

TEST(RealFileAttributeTest, AProjectedToleranceTellsEverythingInMillimetres) {
    KESVIEW_NEEDS_DATA();
    const Document document = readReal("nist_ftc_07_asme1_ap242-e2.stp");
    const Annotation& position = annotationOf(document, "#14025");
    EXPECT_EQ(position.text, "⌖ ⌀0.02 in Ⓟ 0.425 | A | B");
    EXPECT_THAT(position.attributes,
                ElementsAre(Pair("DatumRefDatas", "#13680, #13725"), Pair("MainType", "Tolerance"),
                            Pair("ProjTolZoneLength", "10.795"), Pair("SubType", "position"),
                            Pair("Tolerance Type", "position"), Pair("Tolerance Value", "0.508"),
                            Pair("Value Type", "diameter")));
}

/// The eight corners' distances ahead of the eye, of everything that the view shows.
double leastDepth(const Document& document, const SavedView& view) {
    const Vector forward = normalized(view.target - view.eye, {0, 0, 1});
    double least = 1e300;
    for (const Annotation& annotation : document.annotations) {
        const bool shown = std::find(view.members.begin(), view.members.end(), annotation.key) !=
                           view.members.end();
        for (const auto& line : annotation.lines) {
            for (std::size_t i = 0; shown && i + 2 < line.size(); i += 3) {
                const Vector point = {static_cast<double>(line[i]),
                                      static_cast<double>(line[i + 1]),
                                      static_cast<double>(line[i + 2])};
                least = std::min(least, dot(point - view.eye, forward));
            }
        }
    }
    return least;
}

TEST(RealFileViewTest, CamerasStandInFrontOfWhatTheyShow) {
    KESVIEW_NEEDS_DATA();
    for (const char* name :
         {"gen_bracket.stp", "nist_ctc_01_asme1_ap242-e1.stp", "nist_ctc_02_asme1_ap203.stp",
          "nist_ctc_05_asme1_ap242-e1.stp", "nist_ftc_07_asme1_ap242-e2.stp",
          "nist_ftc_11_asme1_ap242-e1.stp", "nist_stc_08_asme1_ap242-e3.stp"}) {
        const Document document = readReal(name);
        for (const SavedView& view : document.views) {
            EXPECT_GT(leastDepth(document, view), 0) << name << " " << view.name;
            EXPECT_NEAR(dot(view.up, view.target - view.eye), 0, 1e-6) << view.name;
        }
    }
}

/// Of the members with a plane, how many lie with their readable side towards the eye.
std::size_t facing(const Document& document, const SavedView& view) {
    std::size_t count = 0;
    for (const std::string& key : view.members) {
        const Annotation& annotation = annotationOf(document, key);
        if (annotation.plane) {
            const Vector normal = cross((*annotation.plane)[1], (*annotation.plane)[2]);
            count += dot(normal, view.eye - view.target) > 0 ? 1U : 0U;
        }
    }
    return count;
}

TEST(RealFileViewTest, AnAxisMayPointIntoTheSceneOrTowardsTheEye) {
    KESVIEW_NEEDS_DATA();
    const Document into = readReal("nist_ctc_01_asme1_ap242-e1.stp");
    EXPECT_EQ(facing(into, into.views.at(0)), 23U);
    EXPECT_NEAR(into.views[0].eye[0], 963.43359375, 1e-6);
    EXPECT_LT(into.views[0].target[0], into.views[0].eye[0]);  // the axis is (-0.59, 0.57, -0.58)
    EXPECT_GT(into.views[0].up[2], 0.8);
    EXPECT_NEAR(into.views[0].height, 789.860376816842, 1e-9);

    const Document towards = readReal("nist_ctc_02_asme1_ap203.stp");
    EXPECT_EQ(facing(towards, towards.views.at(0)), 14U);
    EXPECT_NEAR(towards.views[0].eye[0], 1615.47578513586, 1e-6);
    EXPECT_LT(towards.views[0].target[0], towards.views[0].eye[0]);  // the axis is (0.72, …)
    EXPECT_NEAR(towards.views[0].target[0], 185.418977875949, 1e-6);
}

TEST(RealFileViewTest, CamerasInInchesStandInMillimetres) {
    KESVIEW_NEEDS_DATA();
    const Document document = readReal("nist_ftc_07_asme1_ap242-e2.stp");
    const auto view = std::find_if(document.views.begin(), document.views.end(),
                                   [](const SavedView& v) { return v.name == "MBD_A"; });
    ASSERT_NE(view, document.views.end());
    EXPECT_NEAR(view->eye[0], -27.7151609406 * 25.4, 1e-6);
    EXPECT_NEAR(view->width, 17.4855982 * 25.4, 1e-6);
    EXPECT_EQ(facing(document, *view), view->members.size());
}

TEST(RealFileViewTest, DefaultCamerasThatMissTheModelAreCentredOnIt) {
    KESVIEW_NEEDS_DATA();
    const Document document = readReal("nist_ftc_07_asme1_ap242-e2.stp");
    std::vector<std::string> centred;
    for (const SavedView& view : document.views) {
        if (view.width == 0) {
            centred.push_back(view.name);
        }
    }
    EXPECT_THAT(centred, ElementsAre("* front", "* back", "* left", "* right", "* top", "* bottom",
                                     "* iso"));
    EXPECT_EQ(findingCount(document, "view.recentred"), 7U);
}

}  // namespace
}  // namespace kesview
