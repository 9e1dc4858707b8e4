// Emptying a node: which node it is, what it loses, what the host is asked on the way.

#include "support/CapturedDebugText.h"
#include "view/ViewTestKit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace KesVizCore {
namespace {

using support::addEveryAttribute;
using support::addGroup;
using support::addLeaf;
using support::attributeTypes;
using support::CallLog;
using support::CapturedDebugText;
using support::childIds;
using support::EditLoggingAdapter;
using support::itemIds;
using support::newItem;
using support::pathOf;
using testing::ElementsAre;
using testing::IsEmpty;

/// The root with the groups 2 and 3 in a chain. Below 3 the leaf 5 and the leaf 4, added in this
/// order. Group 3 and leaf 5 have two items and every attribute.
struct Graph {
    std::vector<std::uint64_t> destroyedItems;
    std::vector<int> destroyedAttributes;
    EditLoggingAdapter adapter;
    Node* root = adapter._rootNode;
    Node* two = addGroup(root, 2);
    Node* three = addGroup(two, 3);
    GeoNode* five = addLeaf(three, 5);
    GeoNode* four = addLeaf(three, 4);

    Graph() {
        furnish(*three, 31);
        furnish(*five, 51);
    }
    void furnish(GeoNode& node, std::uint64_t firstItem) {
        node.AddGeometry(newItem(firstItem, &destroyedItems));
        node.AddGeometry(newItem(firstItem + 1, &destroyedItems));
        addEveryAttribute(node, destroyedAttributes);
    }
    void expectUntouched() {
        EXPECT_THAT(childIds(*root), ElementsAre(2));
        EXPECT_THAT(childIds(*two), ElementsAre(3));
        EXPECT_THAT(childIds(*three), ElementsAre(4, 5));
        EXPECT_THAT(destroyedItems, IsEmpty());
        EXPECT_THAT(destroyedAttributes, IsEmpty());
        EXPECT_THAT(itemIds(*three), ElementsAre(31, 32));
        EXPECT_THAT(itemIds(*five), ElementsAre(51, 52));
        EXPECT_EQ(three->Attributes()->size(), 5U);
        EXPECT_EQ(five->Attributes()->size(), 5U);
    }
};

// --- which node it is ---------------------------------------------------------------------------

TEST(ClearTest, EmptyPathDoesNothing) {
    Graph graph;
    graph.adapter.Clear(RenderId());
    graph.adapter.openOnly(graph.five);
    graph.adapter.Clear(pathOf({}));
    EXPECT_THAT(graph.adapter.log, IsEmpty());
    EXPECT_EQ(graph.adapter.GetCurrentOpenNode(), graph.five);
    graph.expectUntouched();
}

TEST(ClearTest, OpenNodeIsTheTargetAndStaysOpen) {
    Graph graph;
    graph.adapter.openOnly(graph.five);
    graph.adapter.Clear(pathOf({1, 2, 3, 5}));
    EXPECT_THAT(graph.adapter.log, IsEmpty());
    EXPECT_THAT(graph.destroyedItems, ElementsAre(51, 52));
    EXPECT_EQ(graph.adapter._openNodes.size(), 1U);
    EXPECT_EQ(graph.adapter.GetCurrentOpenNode(), graph.five);
}

TEST(ClearTest, OtherNodeThanTheOpenOneIsNotCleared) {
    Graph graph;
    graph.adapter.openOnly(graph.two);
    graph.adapter.Clear(pathOf({1, 2, 3, 5}));
    EXPECT_THAT(graph.adapter.log, IsEmpty());
    EXPECT_EQ(graph.adapter.GetCurrentOpenNode(), graph.two);
    graph.expectUntouched();
}

TEST(ClearTest, WithNothingOpenThePathIsOpenedAndAllClosedAgain) {
    Graph graph;
    graph.adapter.Clear(pathOf({1, 2, 3, 5}));
    EXPECT_THAT(graph.adapter.log,
                ElementsAre("OpenNode(1, )", "OpenNode(2, )", "OpenNode(3, )", "OpenNode(5, )",
                            "CloseAllNodes", "View.CloseTopNode"));
    EXPECT_THAT(graph.destroyedItems, ElementsAre(51, 52));
    EXPECT_TRUE(graph.adapter._openNodes.empty());
}

TEST(ClearTest, NullOnTheStackIsNoOpenNode) {
    Graph graph;
    graph.adapter.openOnly(nullptr);
    graph.adapter.Clear(pathOf({1, 2, 3, 5}));
    EXPECT_EQ(graph.adapter.log.size(), 6U);
    EXPECT_THAT(graph.destroyedItems, ElementsAre(51, 52));
}

TEST(ClearTest, WalkThatFailsAtAnyDepthClearsNothingAndClosesAll) {
    const std::vector<std::uint64_t> ids = {1, 2, 3, 5};
    for (std::size_t failing = 0; failing < ids.size(); ++failing) {
        SCOPED_TRACE("OpenNode fails for " + std::to_string(ids[failing]));
        Graph graph;
        graph.adapter.refusesToOpen = {ids[failing]};
        graph.adapter.Clear(pathOf({1, 2, 3, 5}));
        CallLog expected;
        for (std::size_t opened = 0; opened <= failing; ++opened) {
            expected.push_back("OpenNode(" + std::to_string(ids[opened]) + ", )");
        }
        expected.insert(expected.end(), {"CloseAllNodes", "View.CloseTopNode"});
        EXPECT_EQ(graph.adapter.log, expected);
        EXPECT_TRUE(graph.adapter._openNodes.empty());
        graph.expectUntouched();
    }
}

TEST(ClearTest, PathOfAnotherOriginIsNotTheOpenNodes) {
    Graph graph;
    graph.adapter.openOnly(graph.five);
    graph.adapter.Clear(RenderId({1, 2, 3, 5}, Unknown));
    graph.adapter.Clear(RenderId({1, 2, 3, 5}, ViewTree));
    EXPECT_THAT(graph.adapter.log, IsEmpty());
    graph.expectUntouched();
}

TEST(ClearTest, PathOfAnotherOriginIsOpenedAndClosedForNothing) {
    Graph graph;
    graph.adapter.Clear(RenderId({1, 2, 3, 5}, Unknown));
    EXPECT_THAT(graph.adapter.log,
                ElementsAre("OpenNode(1, )", "OpenNode(2, )", "OpenNode(3, )", "OpenNode(5, )",
                            "CloseAllNodes", "View.CloseTopNode"));
    graph.expectUntouched();
}

// The render id of a shared node follows its first parent: by the way of another it is not found.
TEST(ClearTest, SharedNodeIsClearedByThePathOfItsFirstParentAlone) {
    Graph graph;
    Node* const nine = addGroup(graph.root, 9);
    ASSERT_TRUE(nine->AddChild(graph.five));
    graph.adapter.Clear(pathOf({1, 9, 5}));
    EXPECT_THAT(graph.destroyedItems, IsEmpty());
    graph.adapter.Clear(pathOf({1, 2, 3, 5}));
    EXPECT_THAT(graph.destroyedItems, ElementsAre(51, 52));
    EXPECT_TRUE(nine->DeleteChildById(5));
}

// --- what it loses ------------------------------------------------------------------------------

TEST(ClearTest, LeafLosesItsGeometryAndThreeAttributes) {
    Graph graph;
    graph.adapter.openOnly(graph.five);
    graph.adapter.Clear(pathOf({1, 2, 3, 5}));
    EXPECT_THAT(itemIds(*graph.five), IsEmpty());
    EXPECT_THAT(graph.destroyedItems, ElementsAre(51, 52));
    EXPECT_THAT(attributeTypes(*graph.five),
                ElementsAre(AttributeType::LineStyle, AttributeType::Visibility));
    EXPECT_THAT(
        graph.destroyedAttributes,
        ElementsAre(AttributeType::Color, AttributeType::Highlight, AttributeType::Transform));
    EXPECT_EQ(graph.three->GetChild(5), graph.five);
}

TEST(ClearTest, NodeWithoutAttributesStaysWithoutAny) {
    Graph graph;
    graph.adapter.openOnly(graph.four);
    graph.adapter.Clear(pathOf({1, 2, 3, 4}));
    EXPECT_THAT(attributeTypes(*graph.four), IsEmpty());
    EXPECT_EQ(graph.three->GetChild(4), graph.four);
}

TEST(ClearTest, EmptyGroupLosesItsGeometryAsALeafDoes) {
    Graph graph;
    Node* const six = addGroup(graph.two, 6);
    graph.furnish(*six, 61);
    graph.adapter.openOnly(six);
    graph.adapter.Clear(pathOf({1, 2, 6}));
    EXPECT_THAT(graph.destroyedItems, ElementsAre(61, 62));
    EXPECT_THAT(attributeTypes(*six),
                ElementsAre(AttributeType::LineStyle, AttributeType::Visibility));
    EXPECT_EQ(graph.two->GetChild(6), six);
}

TEST(ClearTest, GroupLosesItsChildrenAndKeepsItsGeometry) {
    Graph graph;
    graph.adapter.openOnly(graph.three);
    graph.adapter.Clear(pathOf({1, 2, 3}));
    EXPECT_FALSE(graph.three->HasChildren());
    EXPECT_THAT(itemIds(*graph.three), ElementsAre(31, 32));
    EXPECT_THAT(graph.destroyedItems, ElementsAre(51, 52));
    EXPECT_THAT(attributeTypes(*graph.three),
                ElementsAre(AttributeType::LineStyle, AttributeType::Visibility));
}

TEST(ClearTest, GroupsOwnAttributesGoAfterItsChildren) {
    std::vector<int> destroyed;
    EditLoggingAdapter adapter;
    Node* const two = addGroup(adapter._rootNode, 2);
    addEveryAttribute(*two, destroyed);
    addLeaf(two, 3)->SetAttribute(
        new support::TellingAttribute<AttributeVisibility>(destroyed, false));
    adapter.openOnly(two);
    adapter.Clear(pathOf({1, 2}));
    EXPECT_THAT(destroyed, ElementsAre(AttributeType::Visibility, AttributeType::Color,
                                       AttributeType::Highlight, AttributeType::Transform));
}

TEST(ClearTest, DeletesTheChildrenByTheirPathsInTheOrderOfTheirIds) {
    Graph graph;
    graph.adapter.Clear(pathOf({1, 2, 3}));
    EXPECT_THAT(graph.adapter.log,
                ElementsAre("OpenNode(1, )", "OpenNode(2, )", "OpenNode(3, )",  //
                            "DeleteNode([ 1, 2, 3, 4 View3D ])", "OpenNode(1, )", "OpenNode(2, )",
                            "OpenNode(3, )", "DeleteNode(4)", "CloseNode", "CloseNode", "CloseNode",
                            "DeleteNode([ 1, 2, 3, 5 View3D ])", "OpenNode(1, )", "OpenNode(2, )",
                            "OpenNode(3, )", "DeleteNode(5)", "CloseNode", "CloseNode", "CloseNode",
                            "CloseAllNodes", "View.CloseTopNode"));
    EXPECT_FALSE(graph.three->HasChildren());
    EXPECT_TRUE(graph.adapter._openNodes.empty());
}

TEST(ClearTest, RootLosesItsChildrenByPathsOfTwo) {
    Graph graph;
    addLeaf(graph.root, 7);
    graph.adapter.Clear(pathOf({1}));
    EXPECT_THAT(graph.adapter.log,
                ElementsAre("OpenNode(1, )", "DeleteNode([ 1, 2 View3D ])", "DeleteNode(2)",
                            "DeleteNode([ 1, 7 View3D ])", "DeleteNode(7)", "CloseAllNodes",
                            "View.CloseTopNode"));
    EXPECT_FALSE(graph.root->HasChildren());
    EXPECT_THAT(graph.destroyedItems, ElementsAre(51, 52, 31, 32));
}

TEST(ClearTest, WholeSubgraphsBelowGoWithTheirParents) {
    Graph graph;
    graph.adapter.Clear(pathOf({1, 2}));
    EXPECT_FALSE(graph.two->HasChildren());
    EXPECT_THAT(graph.destroyedItems, ElementsAre(51, 52, 31, 32));
    EXPECT_EQ(graph.destroyedAttributes.size(), 10U);
}

TEST(ClearTest, ChildWhoseWayCannotBeOpenedStays) {
    Graph graph;
    graph.adapter.openOnly(graph.three);
    graph.adapter.refusesToOpen = {2};
    graph.adapter.Clear(pathOf({1, 2, 3}));
    EXPECT_THAT(graph.adapter.log,
                ElementsAre("DeleteNode([ 1, 2, 3, 4 View3D ])", "OpenNode(1, )", "OpenNode(2, )",
                            "CloseNode", "DeleteNode([ 1, 2, 3, 5 View3D ])", "OpenNode(1, )",
                            "OpenNode(2, )", "CloseNode"));
    EXPECT_THAT(childIds(*graph.three), ElementsAre(4, 5));
    EXPECT_THAT(attributeTypes(*graph.three),
                ElementsAre(AttributeType::LineStyle, AttributeType::Visibility));
    EXPECT_EQ(graph.adapter.GetCurrentOpenNode(), graph.three);
}

// --- shared children ----------------------------------------------------------------------------

TEST(ClearTest, SharedChildOfWhichItIsTheFirstParentIsUnlinked) {
    Graph graph;
    Node* const nine = addGroup(graph.root, 9);
    ASSERT_TRUE(nine->AddChild(graph.five));
    graph.adapter.Clear(pathOf({1, 2, 3}));
    EXPECT_FALSE(graph.three->HasChildren());
    EXPECT_THAT(graph.destroyedItems, IsEmpty());
    EXPECT_THAT(graph.five->Parents(), ElementsAre(nine));
}

// A child's render id follows its first parent, and there it is deleted: here it stays.
TEST(ClearTest, ChildWhoseFirstParentIsAnotherIsDeletedThere) {
    Graph graph;
    Node* const nine = addGroup(graph.root, 9);
    ASSERT_TRUE(nine->AddChild(graph.five));
    graph.adapter.Clear(pathOf({1, 9}));
    EXPECT_THAT(
        graph.adapter.log,
        ElementsAre("OpenNode(1, )", "OpenNode(9, )", "DeleteNode([ 1, 2, 3, 5 View3D ])",
                    "OpenNode(1, )", "OpenNode(2, )", "OpenNode(3, )", "DeleteNode(5)", "CloseNode",
                    "CloseNode", "CloseNode", "CloseAllNodes", "View.CloseTopNode"));
    EXPECT_THAT(childIds(*nine), ElementsAre(5));
    EXPECT_THAT(childIds(*graph.three), ElementsAre(4));
    EXPECT_THAT(graph.five->Parents(), ElementsAre(nine));
    EXPECT_THAT(graph.destroyedItems, IsEmpty());
}

// A path of two opens nothing, so that a child whose first parent is the root is deleted here.
TEST(ClearTest, ChildWhoseFirstParentIsTheRootIsDeletedHere) {
    Graph graph;
    GeoNode* const shared = addLeaf(graph.root, 8);
    Node* const nine = addGroup(graph.root, 9);
    ASSERT_TRUE(nine->AddChild(shared));
    graph.adapter.Clear(pathOf({1, 9}));
    EXPECT_THAT(graph.adapter.log,
                ElementsAre("OpenNode(1, )", "OpenNode(9, )", "DeleteNode([ 1, 8 View3D ])",
                            "DeleteNode(8)", "CloseAllNodes", "View.CloseTopNode"));
    EXPECT_FALSE(nine->HasChildren());
    EXPECT_EQ(graph.root->GetChild(8), shared);
    EXPECT_THAT(shared->Parents(), ElementsAre(graph.root));
}

// The child 7 is named through the child 6, which dies before it is 7's turn.
TEST(ClearTest, PathsOfTheChildrenAreWorkedOutBeforeTheFirstDies) {
    Graph graph;
    Node* const nine = addGroup(graph.root, 9);
    Node* const six = addGroup(nine, 6);
    GeoNode* const seven = addLeaf(six, 7);
    ASSERT_TRUE(nine->AddChild(seven));
    graph.adapter.Clear(pathOf({1, 9}));
    EXPECT_THAT(
        graph.adapter.log,
        ElementsAre("OpenNode(1, )", "OpenNode(9, )",  //
                    "DeleteNode([ 1, 9, 6 View3D ])", "OpenNode(1, )", "OpenNode(9, )",
                    "DeleteNode(6)", "CloseNode", "CloseNode", "DeleteNode([ 1, 9, 6, 7 View3D ])",
                    "OpenNode(1, )", "OpenNode(9, )", "OpenNode(6, )", "CloseNode", "CloseNode",
                    "CloseAllNodes", "View.CloseTopNode"));
    EXPECT_THAT(childIds(*nine), ElementsAre(7));
    ASSERT_EQ(seven->Parents().size(), 2U);
    seven->RemoveFromParents(seven->Parents().front());  // the parent that is gone
}

TEST(ClearTest, WritesNothingToTheDebugStream) {
    Graph graph;
    const CapturedDebugText text;
    graph.adapter.Clear(pathOf({1, 2, 3}));
    graph.adapter.Clear(pathOf({1, 2}));
    graph.adapter.Clear(pathOf({1, 2}));
    EXPECT_EQ(text.Text(), "");
}

}  // namespace
}  // namespace KesVizCore
