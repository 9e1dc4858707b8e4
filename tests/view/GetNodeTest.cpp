#include "view/ViewTestKit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace KesVizCore {
namespace {

using support::addGroup;
using support::addLeaf;
using support::pathOf;
using support::RecordingAdapter;
using testing::IsEmpty;

TEST(GetNodeTest, EmptyPathFindsNothing) {
    RecordingAdapter adapter;
    EXPECT_EQ(adapter.GetNode(RenderId()), nullptr);
    EXPECT_EQ(adapter.GetNode(pathOf({})), nullptr);
}

TEST(GetNodeTest, EmptyPathIsAnsweredEvenWithoutARoot) {
    RecordingAdapter adapter(false);
    EXPECT_EQ(adapter.GetNode(RenderId()), nullptr);
}

TEST(GetNodeTest, ThrowsWithoutARoot) {
    RecordingAdapter adapter(false);
    try {
        adapter.GetNode(pathOf({1}));
        FAIL() << "nothing thrown";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "Unexpected NULL value of _rootNode encountered");
    }
}

TEST(GetNodeTest, ThrowsWithoutARootWhateverThePathBeginsWith) {
    RecordingAdapter adapter(false);
    EXPECT_THROW(adapter.GetNode(pathOf({7, 8})), std::runtime_error);
}

TEST(GetNodeTest, PathOfTheRootFindsTheRoot) {
    RecordingAdapter adapter;
    EXPECT_EQ(adapter.GetNode(pathOf({1})), adapter._rootNode);
}

TEST(GetNodeTest, PathBeginsWithTheRoot) {
    RecordingAdapter adapter;
    addGroup(adapter._rootNode, 2);
    EXPECT_EQ(adapter.GetNode(pathOf({2})), nullptr);
    EXPECT_EQ(adapter.GetNode(pathOf({0, 2})), nullptr);
}

TEST(GetNodeTest, FollowsThePathThroughGroupsToALeaf) {
    RecordingAdapter adapter;
    Node* const two = addGroup(adapter._rootNode, 2);
    Node* const three = addGroup(two, 3);
    GeoNode* const four = addLeaf(three, 4);
    EXPECT_EQ(adapter.GetNode(pathOf({1, 2})), two);
    EXPECT_EQ(adapter.GetNode(pathOf({1, 2, 3})), three);
    EXPECT_EQ(adapter.GetNode(pathOf({1, 2, 3, 4})), four);
}

TEST(GetNodeTest, TellsNodesOfTheSameIdApartByTheirPaths) {
    RecordingAdapter adapter;
    GeoNode* const first = addLeaf(addGroup(adapter._rootNode, 2), 7);
    GeoNode* const second = addLeaf(addGroup(adapter._rootNode, 3), 7);
    EXPECT_EQ(adapter.GetNode(pathOf({1, 2, 7})), first);
    EXPECT_EQ(adapter.GetNode(pathOf({1, 3, 7})), second);
}

TEST(GetNodeTest, ReachesASharedNodeThroughEachOfItsParents) {
    RecordingAdapter adapter;
    Node* const two = addGroup(adapter._rootNode, 2);
    Node* const three = addGroup(adapter._rootNode, 3);
    GeoNode* const shared = addLeaf(two, 7);
    ASSERT_TRUE(three->AddChild(shared));
    EXPECT_EQ(adapter.GetNode(pathOf({1, 2, 7})), shared);
    EXPECT_EQ(adapter.GetNode(pathOf({1, 3, 7})), shared);
    EXPECT_TRUE(three->DeleteChildById(7));
}

TEST(GetNodeTest, MissingChildFindsNothing) {
    RecordingAdapter adapter;
    addGroup(addGroup(adapter._rootNode, 2), 3);
    EXPECT_EQ(adapter.GetNode(pathOf({1, 9})), nullptr);
    EXPECT_EQ(adapter.GetNode(pathOf({1, 9, 3})), nullptr);
    EXPECT_EQ(adapter.GetNode(pathOf({1, 2, 3, 9})), nullptr);
}

TEST(GetNodeTest, PathThatGoesOnBehindALeafFindsNothing) {
    RecordingAdapter adapter;
    addLeaf(adapter._rootNode, 2);
    EXPECT_EQ(adapter.GetNode(pathOf({1, 2, 3})), nullptr);
    EXPECT_EQ(adapter.GetNode(pathOf({1, 2, 3, 4})), nullptr);
}

TEST(GetNodeTest, OriginOfThePathPlaysNoPart) {
    RecordingAdapter adapter;
    GeoNode* const leaf = addLeaf(adapter._rootNode, 2);
    EXPECT_EQ(adapter.GetNode(RenderId({1, 2}, ViewTree)), leaf);
    EXPECT_EQ(adapter.GetNode(RenderId({1, 2}, Unknown)), leaf);
}

TEST(GetNodeTest, TakesTheIdThatTheHostsRootHas) {
    RecordingAdapter adapter;
    const std::unique_ptr<Node> otherRoot(Node::CreateRoot());
    Node* const two = addGroup(otherRoot.get(), 2);
    Node* const ownRoot = adapter._rootNode;
    adapter._rootNode = two;
    EXPECT_EQ(adapter.GetNode(pathOf({2})), two);
    EXPECT_EQ(adapter.GetNode(pathOf({1, 2})), nullptr);
    adapter._rootNode = ownRoot;
}

TEST(GetNodeTest, OpensNothing) {
    RecordingAdapter adapter;
    addLeaf(adapter._rootNode, 2);
    adapter.GetNode(pathOf({1, 2}));
    EXPECT_THAT(adapter.log, IsEmpty());
    EXPECT_TRUE(adapter._openNodes.empty());
}

}  // namespace
}  // namespace KesVizCore
