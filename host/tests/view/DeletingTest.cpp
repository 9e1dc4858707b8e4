#include "view/SceneKit.h"

#include <gtest/gtest.h>

namespace kesview::testing {
namespace {

/// A body below container 2, and a reference to it below container 3.
void makeShared(SceneKit& kit) {
    viz::Node* const first = kit.Group(kit.Root(), 2);
    viz::Node* const second = kit.Group(kit.Root(), 3);
    kit.Place(second, moved(100, 0, 0));
    second->AddChild(kit.Body(first, 5));
}

TEST(DeletingTest, ASharedNodeOutlivesTheParentThatDiesFirst) {
    SceneKit kit;
    makeShared(kit);
    kit.scene.OpenTopNode();
    EXPECT_TRUE(kit.scene.DeleteNode(2));
    kit.scene.CloseTopNode();
    const viz::GeoNode* const body = kit.scene.GetNode(path({1, 3, 5}));
    ASSERT_NE(body, nullptr);
    ASSERT_EQ(body->Parents().size(), 1U) << "no pointer to the dead parent is left";
    EXPECT_EQ(body->Parents().front()->Id(), 3U);
    EXPECT_EQ(shownPaths(kit.scene).size(), 2U);
}

TEST(DeletingTest, AReferenceIsDeletedAlone) {
    SceneKit kit;
    makeShared(kit);
    EXPECT_TRUE(kit.scene.DeleteNode(path({1, 3, 5})));
    EXPECT_EQ(kit.scene.GetNode(path({1, 3, 5})), nullptr);
    EXPECT_NE(kit.scene.GetNode(path({1, 2, 5, faces, 100})), nullptr);
}

TEST(DeletingTest, ASceneWithSharedNodesGoesWhole) {
    SceneKit kit;  // the sanitizers watch the end of the kit
    makeShared(kit);
    viz::Node* const above = kit.Group(kit.Root(), 4);
    above->AddChild(kit.scene.GetNode(path({1, 2})));
    kit.scene.DeleteAllNodes();
    EXPECT_TRUE(shownPaths(kit.scene).empty());
    EXPECT_FALSE(kit.scene.Root().HasChildren());
    makeShared(kit);
}

TEST(DeletingTest, ClearingTheRootClearsAllAndClearingASceneThatAlone) {
    SceneKit kit;
    kit.Body(kit.Root(), 5);
    kit.Body(kit.Root(), 6);
    kit.scene.ClearScene(path({6}));
    EXPECT_EQ(shownPaths(kit.scene), texts({path({1, 5, edges, 200}), path({1, 5, faces, 100})}));
    kit.scene.ClearScene(path({9}));
    EXPECT_EQ(shownPaths(kit.scene).size(), 2U);
    kit.scene.ClearScene(path({1}));
    EXPECT_TRUE(shownPaths(kit.scene).empty());
}

TEST(DeletingTest, MovedGeometryIsShownWhereItWent) {
    SceneKit kit;
    kit.Body(kit.Root(), 5);
    kit.Body(kit.Root(), 6);
    kit.scene.OpenNodes(path({1, 5, faces, 100}));
    kit.scene.TransferNodeGeometryFrom(*kit.scene.GetNode(path({1, 6, faces, 100})));
    kit.scene.CloseAllNodes();
    EXPECT_FALSE(kit.scene.IsVisible(path({1, 6, faces})));
    EXPECT_EQ(kit.scene.GetNode(path({1, 5, faces, 100}))->Geometry().size(), 2U);
}

TEST(DeletingTest, EveryChangeOfTheGeometryHasANewRevision) {
    SceneKit kit;
    kit.Body(kit.Root(), 5);
    const std::uint64_t before = kit.scene.GeometryRevision();
    kit.scene.Hide(path({1, 5}));
    EXPECT_EQ(kit.scene.GeometryRevision(), before) << "hiding moves nothing";
    kit.scene.DeleteNode(path({1, 5, faces}));
    EXPECT_NE(kit.scene.GeometryRevision(), before);
}

}  // namespace
}  // namespace kesview::testing
