// Walking down a path, and hanging a node under a second parent.

#include "view/ViewTestKit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

namespace KesVizCore {
namespace {

using support::addGroup;
using support::addLeaf;
using support::childIds;
using support::pathOf;
using support::RecordingAdapter;
using testing::ElementsAre;
using testing::IsEmpty;

/// A root with the chain 2, 3 and the leaf 4 below, and a group 5 beside.
struct ChainGraph {
    RecordingAdapter adapter;
    Node* root = adapter._rootNode;
    Node* two = addGroup(root, 2);
    Node* three = addGroup(two, 3);
    GeoNode* four = addLeaf(three, 4);
    Node* five = addGroup(root, 5);
};

// --- OpenNodes ----------------------------------------------------------------------------------

TEST(OpenNodesTest, EmptyPathSucceedsAndOpensNothing) {
    ChainGraph graph;
    EXPECT_TRUE(graph.adapter.OpenNodes(RenderId()));
    EXPECT_THAT(graph.adapter.log, IsEmpty());
    EXPECT_TRUE(graph.adapter._openNodes.empty());
}

TEST(OpenNodesTest, OpensEveryNodeFromTheRootOnByIdAlone) {
    ChainGraph graph;
    EXPECT_TRUE(graph.adapter.OpenNodes(pathOf({1, 2, 3, 4})));
    EXPECT_THAT(graph.adapter.log,
                ElementsAre("OpenNode(1, )", "OpenNode(2, )", "OpenNode(3, )", "OpenNode(4, )"));
    EXPECT_EQ(graph.adapter._openNodes.size(), 4U);
    EXPECT_EQ(graph.adapter.GetCurrentOpenNode(), graph.four);
}

TEST(OpenNodesTest, StopsAtTheFirstThatFailsAndLeavesTheOthersOpen) {
    ChainGraph graph;
    graph.adapter.refusesToOpen = {3};
    EXPECT_FALSE(graph.adapter.OpenNodes(pathOf({1, 2, 3, 4})));
    EXPECT_THAT(graph.adapter.log, ElementsAre("OpenNode(1, )", "OpenNode(2, )", "OpenNode(3, )"));
    EXPECT_EQ(graph.adapter.GetCurrentOpenNode(), graph.two);
}

TEST(OpenNodesTest, FailureOfTheFirstOpensNothing) {
    ChainGraph graph;
    graph.adapter.refusesToOpen = {1};
    EXPECT_FALSE(graph.adapter.OpenNodes(pathOf({1, 2})));
    EXPECT_THAT(graph.adapter.log, ElementsAre("OpenNode(1, )"));
    EXPECT_TRUE(graph.adapter._openNodes.empty());
}

TEST(OpenNodesTest, FailureOfTheLastIsAFailure) {
    ChainGraph graph;
    EXPECT_FALSE(graph.adapter.OpenNodes(pathOf({1, 2, 9})));
    EXPECT_THAT(graph.adapter.log, ElementsAre("OpenNode(1, )", "OpenNode(2, )", "OpenNode(9, )"));
    EXPECT_EQ(graph.adapter.GetCurrentOpenNode(), graph.two);
}

TEST(OpenNodesTest, OpensOnTopOfWhatIsOpen) {
    ChainGraph graph;
    graph.adapter.openOnly(graph.five);
    EXPECT_TRUE(graph.adapter.OpenNodes(pathOf({1, 2})));
    EXPECT_EQ(graph.adapter._openNodes.size(), 3U);
    EXPECT_EQ(graph.adapter.GetCurrentOpenNode(), graph.two);
}

TEST(OpenNodesTest, OriginOfThePathPlaysNoPart) {
    ChainGraph graph;
    EXPECT_TRUE(graph.adapter.OpenNodes(RenderId({1, 2}, ViewTree)));
    EXPECT_EQ(graph.adapter.GetCurrentOpenNode(), graph.two);
}

// --- AddReference -------------------------------------------------------------------------------

TEST(AddReferenceTest, HangsTheNodeUnderTheOpenGroupAsWell) {
    ChainGraph graph;
    graph.adapter.openOnly(graph.five);
    EXPECT_TRUE(graph.adapter.AddReference(pathOf({1, 2, 3})));
    EXPECT_EQ(graph.five->GetChild(3), graph.three);
    EXPECT_EQ(graph.two->GetChild(3), graph.three);
    EXPECT_THAT(graph.three->Parents(), ElementsAre(graph.two, graph.five));
    EXPECT_TRUE(graph.five->DeleteChildById(3));
}

TEST(AddReferenceTest, OpensTheReferencedNodeWithoutAskingTheHost) {
    ChainGraph graph;
    graph.adapter.openOnly(graph.five);
    ASSERT_TRUE(graph.adapter.AddReference(pathOf({1, 2, 3})));
    EXPECT_THAT(graph.adapter.log, IsEmpty());
    EXPECT_EQ(graph.adapter._openNodes.size(), 2U);
    EXPECT_EQ(graph.adapter.GetCurrentOpenNode(), graph.three);
    graph.adapter.CloseNode();
    EXPECT_EQ(graph.adapter.GetCurrentOpenNode(), graph.five);
    EXPECT_TRUE(graph.five->DeleteChildById(3));
}

TEST(AddReferenceTest, TakesALeafToo) {
    ChainGraph graph;
    graph.adapter.openOnly(graph.five);
    EXPECT_TRUE(graph.adapter.AddReference(pathOf({1, 2, 3, 4})));
    EXPECT_EQ(graph.adapter.GetCurrentOpenNode(), graph.four);
    EXPECT_THAT(graph.four->Parents(), ElementsAre(graph.three, graph.five));
    EXPECT_TRUE(graph.five->DeleteChildById(4));
}

void expectRefused(ChainGraph& graph, const RenderId& path) {
    const auto open = graph.adapter._openNodes;
    EXPECT_FALSE(graph.adapter.AddReference(path));
    EXPECT_EQ(graph.adapter._openNodes, open);
    EXPECT_THAT(childIds(*graph.root), ElementsAre(2, 5));
    EXPECT_THAT(childIds(*graph.two), ElementsAre(3));
    EXPECT_THAT(childIds(*graph.three), ElementsAre(4));
    EXPECT_THAT(graph.three->Parents(), ElementsAre(graph.two));
    EXPECT_THAT(graph.four->Parents(), ElementsAre(graph.three));
    EXPECT_THAT(graph.adapter.log, IsEmpty());
}

TEST(AddReferenceTest, ALeafMadeFromAGroupIsNoGroup) {
    ChainGraph graph;
    const auto leaf = std::make_unique<GeoNode>(*graph.five);
    graph.adapter.openOnly(leaf.get());
    expectRefused(graph, pathOf({1, 2, 3}));
}

TEST(AddReferenceTest, NeedsAnOpenNode) {
    ChainGraph graph;
    expectRefused(graph, pathOf({1, 2, 3}));
}

TEST(AddReferenceTest, NeedsAnOpenGroup) {
    ChainGraph graph;
    graph.adapter.openOnly(graph.four);
    expectRefused(graph, pathOf({1, 5}));
}

TEST(AddReferenceTest, RefusesAnUnknownPath) {
    ChainGraph graph;
    graph.adapter.openOnly(graph.five);
    expectRefused(graph, pathOf({1, 2, 9}));
    expectRefused(graph, pathOf({2}));
}

TEST(AddReferenceTest, RefusesAnEmptyPath) {
    ChainGraph graph;
    graph.adapter.openOnly(graph.five);
    expectRefused(graph, RenderId());
}

TEST(AddReferenceTest, RefusesAChildOfTheOpenNode) {
    ChainGraph graph;
    graph.adapter.openOnly(graph.two);
    expectRefused(graph, pathOf({1, 2, 3}));
}

TEST(AddReferenceTest, RefusesAnIdThatAnotherChildHas) {
    ChainGraph graph;
    Node* const otherThree = addGroup(graph.five, 3);
    graph.adapter.openOnly(graph.five);
    expectRefused(graph, pathOf({1, 2, 3}));
    EXPECT_EQ(graph.five->GetChild(3), otherThree);
}

TEST(AddReferenceTest, ThrowsWithoutARootAsALookUpDoes) {
    RecordingAdapter adapter(false);
    const std::unique_ptr<Node> open(Node::CreateRoot());
    adapter.openOnly(open.get());
    EXPECT_THROW(adapter.AddReference(pathOf({1})), std::runtime_error);
    EXPECT_EQ(adapter.GetCurrentOpenNode(), open.get());
    EXPECT_FALSE(adapter.AddReference(RenderId()));  // an empty path is answered first
}

}  // namespace
}  // namespace KesVizCore
