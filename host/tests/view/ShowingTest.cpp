#include "view/SceneKit.h"

#include <gtest/gtest.h>

namespace kesview::testing {
namespace {

/// Two references to one body, 1/2/5 and 1/3/5, the second 100 to the right; each shows an edge and
/// a face.
class ShowingTest : public ::testing::Test {
protected:
    ShowingTest() {
        viz::Node* const first = kit.Group(kit.Root(), 2);
        viz::Node* const second = kit.Group(kit.Root(), 3);
        kit.Place(second, moved(100, 0, 0));
        body = kit.Body(first, 5);
        second->AddChild(body);
    }

    std::vector<std::string> Shown() const { return shownPaths(scene); }

    SceneKit kit;
    SceneAdapter& scene = kit.scene;
    viz::Node* body = nullptr;
    const viz::RenderId edge1 = path({1, 2, 5, edges, 200});
    const viz::RenderId face1 = path({1, 2, 5, faces, 100});
    const viz::RenderId edge2 = path({1, 3, 5, edges, 200});
    const viz::RenderId face2 = path({1, 3, 5, faces, 100});
};

TEST_F(ShowingTest, AllIsShownInTheOrderOfIds) {
    EXPECT_EQ(Shown(), texts({edge1, face1, edge2, face2}));
}

TEST_F(ShowingTest, OneReferenceIsHiddenAlone) {
    EXPECT_TRUE(scene.Hide(path({1, 2, 5})));
    EXPECT_EQ(Shown(), texts({edge2, face2}));
    EXPECT_FALSE(scene.IsVisible(path({1, 2})));
    EXPECT_TRUE(scene.IsVisible(path({1, 3, 5})));
    EXPECT_FALSE(scene.Hide(path({1, 2, 5}))) << "hidden already";
    EXPECT_TRUE(scene.Show(path({1, 2, 5})));
    EXPECT_EQ(Shown().size(), 4U);
}

TEST_F(ShowingTest, AFaceOfOneReferenceIsHiddenAlone) {
    EXPECT_TRUE(scene.Hide(face2));
    EXPECT_EQ(Shown(), texts({edge1, face1, edge2}));
}

TEST_F(ShowingTest, HidingWhatIsNotThereIsRefused) {
    EXPECT_FALSE(scene.Hide(path({1, 9})));
    EXPECT_FALSE(scene.Show(path({1, 9})));
    EXPECT_FALSE(scene.Isolate(path({1, 9})));
    EXPECT_FALSE(scene.IsVisible(path({1, 9})));
    EXPECT_FALSE(scene.IsVisible(path({2})));
    EXPECT_FALSE(scene.IsVisible(viz::RenderId()));
}

TEST_F(ShowingTest, WhatLiesBelowSomethingHiddenCanBeShownAlone) {
    scene.Hide(path({1}));
    EXPECT_TRUE(Shown().empty());
    scene.Show(face2);
    EXPECT_EQ(Shown(), texts({face2}));
    scene.Hide(path({1, 3}));
    EXPECT_TRUE(Shown().empty()) << "hiding above is said last";
}

TEST_F(ShowingTest, WhatTheFileHidesIsShownOnlyWhenNamed) {
    SceneKit::HideInFile(kit.scene.GetNode(path({1, 3})));
    EXPECT_EQ(Shown(), texts({edge1, face1}));
    scene.ShowAll();
    EXPECT_EQ(Shown(), texts({edge1, face1})) << "all that the file shows";
    scene.Show(path({1}));
    EXPECT_EQ(Shown().size(), 4U);
    scene.ShowAll();
    scene.Show(face2);
    EXPECT_EQ(Shown(), texts({edge1, face1, face2}));
}

TEST_F(ShowingTest, AnItemThatSaysItIsInvisibleIsNotShown) {
    body->GetChild(faces);
    scene.GetNode(face1)->Geometry().front()->SetVisible(false);
    EXPECT_EQ(Shown(), texts({edge1, edge2})) << "items of shared nodes are shared";
}

TEST_F(ShowingTest, IsolatingShowsOnePathAlone) {
    EXPECT_TRUE(scene.Isolate(path({1, 3, 5})));
    EXPECT_EQ(Shown(), texts({edge2, face2}));
    EXPECT_TRUE(scene.Isolate(face1));
    EXPECT_EQ(Shown(), texts({face1})) << "the last one alone";
    scene.Show(edge2);
    EXPECT_EQ(Shown(), texts({face1, edge2})) << "shown beside it";
    scene.Hide(face1);
    EXPECT_EQ(Shown(), texts({edge2}));
    scene.ShowAll();
    EXPECT_EQ(Shown().size(), 4U);
}

TEST_F(ShowingTest, IsolatingShowsWhatWasHidden) {
    scene.Hide(path({1, 3}));
    EXPECT_TRUE(scene.Isolate(path({1, 3, 5})));
    EXPECT_EQ(Shown(), texts({edge2, face2}));
}

TEST_F(ShowingTest, SeveralPathsAreIsolatedTogether) {
    scene.SetIsolated({face1, face2});
    EXPECT_EQ(Shown(), texts({face1, face2}));
    EXPECT_EQ(texts(scene.GetIsolated()), texts({face1, face2}));
    scene.SetIsolated({});
    EXPECT_EQ(Shown().size(), 4U);
}

TEST_F(ShowingTest, TheFilterHidesAKindOfEntity) {
    scene.GetFilterManager()->SetVisible(viz::EdgeType, false);
    EXPECT_FALSE(scene.GetFilterManager()->IsVisible(viz::EdgeType));
    EXPECT_EQ(Shown(), texts({face1, face2}));
    scene.Show(edge1);
    EXPECT_EQ(Shown(), texts({face1, face2})) << "no path is shown against the filter";
    scene.GetFilterManager()->Reset();
    EXPECT_EQ(Shown().size(), 4U);
}

TEST_F(ShowingTest, TheOptionsHideKindsOfThings) {
    viz::RenderingOptions& options = *scene.GetRenderingOptions();
    kit.Lines(kit.Group(kit.Type(kit.Root(), viz::NoteType), 7), {0, 0, 0, 1, 0, 0});
    float point[3] = {1, 2, 3};
    viz::Node* const vertex = kit.Group(kit.Type(kit.Root(), viz::VertexType), 8);
    kit.Add(vertex, scene.GetGeometryItemFactory()->CreateVertex(8, point));
    EXPECT_EQ(Shown().size(), 5U) << "vertices are not shown at first";
    options.SetDisplayVertices(true);
    EXPECT_EQ(Shown().size(), 6U);
    options.SetDisplayPMI(false);
    EXPECT_EQ(Shown().size(), 5U);
    options.SetDisplayEdges(false);
    EXPECT_EQ(Shown().size(), 3U);
    options.SetDisplayFaces(false);
    EXPECT_EQ(Shown().size(), 1U);
}

TEST_F(ShowingTest, ExtentsAreOfWhatIsShownInTheWorld) {
    float box[6];
    ASSERT_TRUE(scene.GetExtents(path({1}), box));
    EXPECT_EQ(Values(box, box + 6), (Values{0, 0, 0, 110, 10, 0}));
    ASSERT_TRUE(scene.GetExtents(edge2, box));
    EXPECT_EQ(Values(box, box + 6), (Values{100, 0, 0, 110, 0, 0}));
    scene.Hide(path({1, 3}));
    ASSERT_TRUE(scene.GetExtents(path({1}), box));
    EXPECT_EQ(Values(box, box + 6), (Values{0, 0, 0, 10, 10, 0}));
    EXPECT_FALSE(scene.GetExtents(path({1, 3}), box));
    EXPECT_FALSE(scene.GetExtents(path({1, 9}), box));
}

TEST_F(ShowingTest, ExtentsFollowTransformsThatNest) {
    kit.Place(body, turned());
    float box[6];
    ASSERT_TRUE(scene.GetExtents(edge2, box));
    EXPECT_EQ(Values(box, box + 6), (Values{100, 0, 0, 100, 10, 0})) << "turned, then moved";
}

TEST_F(ShowingTest, MarksOutliveTheNodesThatTheyAreFor) {
    scene.Hide(face1);
    scene.DeleteAllNodes();
    kit.Body(kit.Group(kit.Root(), 2), 5);
    EXPECT_EQ(Shown(), texts({edge1}));
}

TEST_F(ShowingTest, AWalkCanBeLimitedToAPath) {
    std::vector<std::string> met;
    for (ShownWalk walk = scene.Walk(path({1, 3, 5, faces})); walk.Next();) {
        met.push_back(walk.Path().ToString());
    }
    EXPECT_EQ(met, texts({face2}));
}

TEST(ShowingDepthTest, AChainOfManyNodesIsWalkedAndDestroyed) {
    SceneKit kit;
    viz::Node* node = kit.Root();
    for (std::uint64_t id = 2; id < 100000; ++id) {
        node = node->CreateChild(id);
    }
    kit.Lines(node, {0, 0, 0, 1, 0, 0});
    ShownWalk walk = kit.scene.Walk();
    ASSERT_TRUE(walk.Next());
    EXPECT_EQ(walk.Path().Length(), 99999);
}

}  // namespace
}  // namespace kesview::testing
