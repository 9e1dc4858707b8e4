#include "view/SceneKit.h"

#include <gtest/gtest.h>

#include <map>

namespace kesview::testing {
namespace {

class HighlightTest : public ::testing::Test {
protected:
    HighlightTest() {
        viz::Node* const first = kit.Group(kit.Root(), 2);
        kit.Group(kit.Root(), 3)->AddChild(kit.Body(first, 5));
    }

    /// Of all that is highlighted, the paths.
    std::vector<std::string> Highlighted() const {
        std::vector<std::string> paths;
        for (ShownWalk walk = kit.scene.Walk(); walk.Next();) {
            if (walk.IsHighlighted()) {
                EXPECT_EQ(walk.GetColor(), (Color{255, 0, 0, 255}));
                paths.push_back(walk.Path().ToString());
            }
        }
        return paths;
    }

    SceneKit kit;
    SceneAdapter& scene = kit.scene;
    const viz::RGBAColor red{255, 0, 0, 255};
};

TEST_F(HighlightTest, OneOfTwoReferencesIsHighlightedAlone) {
    EXPECT_TRUE(scene.Highlight(path({1, 3, 5}), red));
    EXPECT_EQ(Highlighted(), texts({path({1, 3, 5, edges, 200}), path({1, 3, 5, faces, 100})}));
    EXPECT_TRUE(scene.IsHighlighted(path({1, 3, 5})));
    EXPECT_FALSE(scene.IsHighlighted(path({1, 2, 5})));
    EXPECT_FALSE(scene.IsHighlighted(path({1, 3}))) << "only what was named";
}

TEST_F(HighlightTest, TheColorWinsOverOneOfPriority) {
    SceneKit::Paint(scene.GetNode(path({1, 2, 5, faces, 100})), {0, 0, 255, 255}, true);
    scene.Highlight(path({1, 2, 5, faces, 100}), red);
    EXPECT_EQ(Highlighted(), texts({path({1, 2, 5, faces, 100})}));
}

TEST_F(HighlightTest, PartOfSomethingHighlightedCanBeTakenOut) {
    scene.Highlight(path({1, 2, 5}), red);
    EXPECT_TRUE(scene.Unhighlight(path({1, 2, 5, faces})));
    EXPECT_EQ(Highlighted(), texts({path({1, 2, 5, edges, 200})}));
}

TEST_F(HighlightTest, TakingBackAboveTakesBackAllBelow) {
    scene.Highlight(path({1, 2, 5, faces, 100}), red);
    scene.Highlight(path({1, 3, 5, faces, 100}), red);
    EXPECT_TRUE(scene.Unhighlight(path({1})));
    EXPECT_TRUE(Highlighted().empty());
    EXPECT_FALSE(scene.Unhighlight(path({1}))) << "nothing is highlighted";
}

TEST_F(HighlightTest, AllIsTakenBack) {
    scene.Highlight(path({1, 2}), red);
    scene.Highlight(path({1, 3, 5}), red);
    scene.UnhighlightAll();
    EXPECT_TRUE(Highlighted().empty());
    EXPECT_FALSE(scene.IsHighlighted(path({1, 2})));
}

TEST_F(HighlightTest, WhatIsNotThereIsNotHighlighted) {
    EXPECT_FALSE(scene.Highlight(path({1, 9}), red));
    EXPECT_FALSE(scene.Highlight(viz::RenderId(), red));
    EXPECT_TRUE(Highlighted().empty());
}

}  // namespace
}  // namespace kesview::testing
