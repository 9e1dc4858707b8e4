#include "view/SceneKit.h"

#include <gtest/gtest.h>

#include <optional>

namespace kesview::testing {
namespace {

const viz::RGBAColor kRed(255, 0, 0, 255);
const viz::RGBAColor kBlue(0, 0, 255, 255);
const viz::RGBAColor kGreen(0, 255, 0, 255);
const viz::RGBAColor kDefault(1, 2, 3, 255);

Color colorOfFace(const SceneKit& kit) {
    ShownWalk walk = kit.scene.Walk(path({1, 5, faces}));
    return walk.Next() ? walk.GetColor() : Color{0, 0, 0, 0};
}

struct Case {
    std::string name;
    std::optional<bool> body;  ///< red: whether with priority; none: no colour
    std::optional<bool> face;  ///< blue
    bool item;                 ///< green
    Color expected;
};

class ColorPrecedenceTest : public ::testing::TestWithParam<Case> {};

TEST_P(ColorPrecedenceTest, TheColorIs) {
    const Case& given = GetParam();
    SceneKit kit;
    viz::Node* const body = kit.Body(kit.Root(), 5);
    viz::GeoNode* const face = kit.scene.GetNode(path({1, 5, faces, 100}));
    kit.scene.GetRenderingOptions()->SetDefaultFaceColor(kDefault);
    if (given.body) {
        SceneKit::Paint(body, kRed, *given.body);
    }
    if (given.face) {
        SceneKit::Paint(face, kBlue, *given.face);
    }
    if (given.item) {
        face->Geometry().front()->SetColor(kGreen);
    }
    EXPECT_EQ(colorOfFace(kit), given.expected);
}

const Color red = {255, 0, 0, 255};
const Color blue = {0, 0, 255, 255};
const Color green = {0, 255, 0, 255};

INSTANTIATE_TEST_SUITE_P(Table, ColorPrecedenceTest,
                         ::testing::Values(Case{"None", {}, {}, false, {1, 2, 3, 255}},
                                           Case{"Above", false, {}, false, red},
                                           Case{"AbovePriority", true, {}, false, red},
                                           Case{"Own", {}, false, false, blue},
                                           Case{"OwnOverAbove", false, false, false, blue},
                                           Case{"AbovePriorityOverOwn", true, false, false, red},
                                           Case{"OwnPriorityOverAbove", false, true, false, blue},
                                           Case{"BothPriority", true, true, false, blue},
                                           Case{"Item", {}, {}, true, green},
                                           Case{"ItemOverNodes", false, false, true, green},
                                           Case{"PriorityOverItem", {}, true, true, blue}),
                         [](const auto& tested) { return tested.param.name; });

TEST(ColorTest, PriorityReachesThroughNodesOfNoColor) {
    SceneKit kit;
    SceneKit::Paint(kit.Root(), kRed, true);
    SceneKit::Paint(kit.Body(kit.Root(), 5), kBlue);
    EXPECT_EQ(colorOfFace(kit), red);
}

TEST(ColorTest, EdgesDoNotTakeTheColorOfTheirBody) {
    SceneKit kit;
    viz::Node* const body = kit.Body(kit.Root(), 5);
    SceneKit::Paint(body, kRed, true);
    kit.scene.GetRenderingOptions()->SetDefaultEdgeColor(kDefault);
    ShownWalk walk = kit.scene.Walk(path({1, 5, edges}));
    ASSERT_TRUE(walk.Next());
    EXPECT_EQ(walk.GetColor(), (Color{1, 2, 3, 255}));
    SceneKit::Paint(kit.scene.GetNode(path({1, 5, edges})), kBlue);
    ShownWalk again = kit.scene.Walk(path({1, 5, edges}));
    ASSERT_TRUE(again.Next());
    EXPECT_EQ(again.GetColor(), blue) << "but that of the node of all edges";
}

TEST(ColorTest, DefaultsAreThoseOfTheType) {
    SceneKit kit;
    viz::RenderingOptions& options = *kit.scene.GetRenderingOptions();
    const viz::EntityType types[] = {viz::FaceType, viz::EdgeType, viz::CloudType, viz::NoteType,
                                     viz::BodyType};
    options.SetDefaultFaceColor({1, 0, 0, 255});
    options.SetDefaultEdgeColor({2, 0, 0, 255});
    options.SetDefaultCloudColor({3, 0, 0, 255});
    options.SetDefaultPMIColor({4, 0, 0, 255});
    options.SetDefaultBodyColor({5, 0, 0, 255});
    for (const viz::EntityType type : types) {
        kit.Lines(kit.Type(kit.Root(), type), {0, 0, 0, 1, 0, 0});
    }
    for (std::uint8_t at = 0; at < 5; ++at) {
        ShownWalk walk = kit.scene.Walk(path({1, static_cast<std::uint64_t>(types[at])}));
        ASSERT_TRUE(walk.Next());
        EXPECT_EQ(walk.GetColor(), (Color{static_cast<std::uint8_t>(at + 1), 0, 0, 255}));
        EXPECT_EQ(walk.IsAnnotation(), types[at] == viz::NoteType);
    }
}

TEST(ColorTest, TheSameBodyTakesTheColorOfEachReference) {
    SceneKit kit;
    viz::Node* const first = kit.Group(kit.Root(), 2);
    viz::Node* const second = kit.Group(kit.Root(), 3);
    SceneKit::Paint(first, kRed);
    SceneKit::Paint(second, kBlue);
    second->AddChild(kit.Body(first, 5));
    ShownWalk one = kit.scene.Walk(path({1, 2, 5, faces}));
    ShownWalk other = kit.scene.Walk(path({1, 3, 5, faces}));
    ASSERT_TRUE(one.Next() && other.Next());
    EXPECT_EQ(one.GetColor(), red);
    EXPECT_EQ(other.GetColor(), blue);
}

}  // namespace
}  // namespace kesview::testing
