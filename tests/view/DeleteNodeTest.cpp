// Deleting by id below the open node, and by path with the parents opened on the way.

#include "support/CapturedDebugText.h"
#include "view/ViewTestKit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ios>
#include <ostream>
#include <string>
#include <vector>

namespace KesVizCore {
namespace {

using support::addGroup;
using support::addLeaf;
using support::CallLog;
using support::CapturedDebugText;
using support::childIds;
using support::EditLoggingAdapter;
using support::newItem;
using support::pathOf;
using support::RecordingAdapter;
using testing::ElementsAre;
using testing::IsEmpty;

const char* const kNoChildren =
    "Cannot delete child node, no children found.\n"
    "Cannot delete child node 5\n";
const char* const kNothingOpen =
    "Stack is zero, yet is requesting for children\n"
    "Cannot delete child node 5\n";

/// Adds a leaf whose only item tells in @p destroyed when the leaf dies.
GeoNode* addTellingLeaf(Node* parent, std::uint64_t id, std::vector<std::uint64_t>& destroyed) {
    GeoNode* const leaf = addLeaf(parent, id);
    leaf->AddGeometry(newItem(100 + id, &destroyed));
    return leaf;
}

// --- by id --------------------------------------------------------------------------------------

TEST(DeleteNodeByIdTest, DestroysTheChildOfTheOpenNode) {
    std::vector<std::uint64_t> destroyed;
    RecordingAdapter adapter;
    Node* const two = addGroup(adapter._rootNode, 2);
    addTellingLeaf(two, 5, destroyed);
    addTellingLeaf(two, 6, destroyed);
    adapter.openOnly(two);
    const CapturedDebugText text;
    EXPECT_TRUE(adapter.DeleteNode(5));
    EXPECT_THAT(childIds(*two), ElementsAre(6));
    EXPECT_THAT(destroyed, ElementsAre(105));
    EXPECT_EQ(text.Text(), "");
    EXPECT_THAT(adapter.log, IsEmpty());
}

TEST(DeleteNodeByIdTest, OnlyUnlinksAChildThatHasAnotherParent) {
    std::vector<std::uint64_t> destroyed;
    RecordingAdapter adapter;
    Node* const two = addGroup(adapter._rootNode, 2);
    Node* const three = addGroup(adapter._rootNode, 3);
    GeoNode* const shared = addTellingLeaf(two, 5, destroyed);
    three->AddChild(shared);
    adapter.openOnly(two);
    EXPECT_TRUE(adapter.DeleteNode(5));
    EXPECT_THAT(destroyed, IsEmpty());
    EXPECT_FALSE(two->HasChildren());
    EXPECT_THAT(shared->Parents(), ElementsAre(three));
}

TEST(DeleteNodeByIdTest, UnknownChildIsRefusedWithoutAMessage) {
    RecordingAdapter adapter;
    addLeaf(adapter._rootNode, 6);
    adapter.openOnly(adapter._rootNode);
    const CapturedDebugText text;
    EXPECT_FALSE(adapter.DeleteNode(5));
    EXPECT_THAT(childIds(*adapter._rootNode), ElementsAre(6));
    EXPECT_EQ(text.Text(), "");
}

TEST(DeleteNodeByIdTest, OpenLeafHasNoChildren) {
    RecordingAdapter adapter;
    adapter.openOnly(addLeaf(adapter._rootNode, 2));
    const CapturedDebugText text;
    EXPECT_FALSE(adapter.DeleteNode(5));
    EXPECT_EQ(text.Text(), kNoChildren);
}

TEST(DeleteNodeByIdTest, OpenEmptyGroupHasNoChildren) {
    RecordingAdapter adapter;
    adapter.openOnly(addGroup(adapter._rootNode, 2));
    const CapturedDebugText text;
    EXPECT_FALSE(adapter.DeleteNode(5));
    EXPECT_EQ(text.Text(), kNoChildren);
}

TEST(DeleteNodeByIdTest, NullOnTheStackHasNoChildren) {
    RecordingAdapter adapter;
    addLeaf(adapter._rootNode, 5);
    adapter.openOnly(nullptr);
    const CapturedDebugText text;
    EXPECT_FALSE(adapter.DeleteNode(5));
    EXPECT_EQ(text.Text(), kNoChildren);
    EXPECT_THAT(childIds(*adapter._rootNode), ElementsAre(5));
}

/// A host's own leaf that claims children.
class BoastingLeaf : public GeoNode {
public:
    BoastingLeaf() : GeoNode(5) {}
    bool HasChildren() const override { return true; }
};

TEST(DeleteNodeByIdTest, OpenLeafThatClaimsChildrenIsNoParent) {
    RecordingAdapter adapter;
    BoastingLeaf leaf;
    adapter.openOnly(&leaf);
    const CapturedDebugText text;
    EXPECT_FALSE(adapter.DeleteNode(5));
    EXPECT_EQ(text.Text(), "Cannot delete child node 5\n");
}

TEST(DeleteNodeByIdTest, WithNothingOpenOtherIdsAreRefused) {
    RecordingAdapter adapter;
    addLeaf(adapter._rootNode, 5);
    const CapturedDebugText text;
    EXPECT_FALSE(adapter.DeleteNode(5));
    EXPECT_EQ(text.Text(), kNothingOpen);
    EXPECT_THAT(childIds(*adapter._rootNode), ElementsAre(5));
    EXPECT_THAT(adapter.log, IsEmpty());
}

// The root's id is looked for among the children of the root: there it is rarely found.
TEST(DeleteNodeByIdTest, WithNothingOpenTheRootsIdIsNoChildOfTheRoot) {
    RecordingAdapter adapter;
    addLeaf(adapter._rootNode, 5);
    const CapturedDebugText text;
    EXPECT_FALSE(adapter.DeleteNode(1));
    EXPECT_EQ(text.Text(), "");
    EXPECT_EQ(adapter._rootNode->Name(), L"ROOT");
    EXPECT_THAT(childIds(*adapter._rootNode), ElementsAre(5));
}

TEST(DeleteNodeByIdTest, WithNothingOpenAChildOfTheRootsIdIsDeleted) {
    RecordingAdapter adapter;
    addLeaf(adapter._rootNode, 1);
    addLeaf(adapter._rootNode, 5);
    EXPECT_TRUE(adapter.DeleteNode(1));
    EXPECT_THAT(childIds(*adapter._rootNode), ElementsAre(5));
}

TEST(DeleteNodeByIdTest, RootsIdBelowAnOpenNodeIsAnIdLikeAnyOther) {
    RecordingAdapter adapter;
    Node* const two = addGroup(adapter._rootNode, 2);
    addLeaf(two, 1);
    addLeaf(adapter._rootNode, 1);
    adapter.openOnly(two);
    EXPECT_TRUE(adapter.DeleteNode(1));
    EXPECT_FALSE(two->HasChildren());
    EXPECT_THAT(childIds(*adapter._rootNode), ElementsAre(1, 2));
}

TEST(DeleteNodeByIdTest, WithoutARootTheRootsIdHasNoParent) {
    RecordingAdapter adapter(false);
    const CapturedDebugText text;
    EXPECT_FALSE(adapter.DeleteNode(1));
    EXPECT_EQ(text.Text(), "Cannot delete child node 1\n");
}

TEST(DeleteNodeByIdTest, MessageNamesTheWholeIdInDecimal) {
    RecordingAdapter adapter;
    const CapturedDebugText text;
    const std::ios_base::fmtflags before = dbg.setf(std::ios_base::hex, std::ios_base::basefield);
    EXPECT_FALSE(adapter.DeleteNode(18446744073709551615ULL));
    dbg.flags(before);
    EXPECT_EQ(text.Text(),
              "Stack is zero, yet is requesting for children\n"
              "Cannot delete child node 18446744073709551615\n");
}

// --- by path ------------------------------------------------------------------------------------

/// The root with the chain 2, 3, 4 and the leaf 5 at its end.
struct DeepGraph {
    std::vector<std::uint64_t> destroyed;
    EditLoggingAdapter adapter;
    Node* root = adapter._rootNode;
    Node* two = addGroup(root, 2);
    Node* three = addGroup(two, 3);
    Node* four = addGroup(three, 4);
    GeoNode* five = addTellingLeaf(four, 5, destroyed);

    /// The overload by path, whose own call is not part of the log.
    bool deletePath(const RenderId& path) {
        const bool deleted = adapter.DeleteNode(path);
        EXPECT_EQ(adapter.log.front(), "DeleteNode(" + path.ToString() + ")");
        adapter.log.erase(adapter.log.begin());
        return deleted;
    }
};

TEST(DeleteNodeByPathTest, EmptyPathDeletesNothing) {
    DeepGraph graph;
    graph.adapter.openOnly(graph.four);
    const CapturedDebugText text;
    EXPECT_FALSE(graph.deletePath(RenderId()));
    EXPECT_THAT(graph.adapter.log, IsEmpty());
    EXPECT_EQ(text.Text(), "");
    EXPECT_THAT(graph.destroyed, IsEmpty());
}

TEST(DeleteNodeByPathTest, PathOfOneDeletesBelowTheOpenNode) {
    DeepGraph graph;
    graph.adapter.openOnly(graph.four);
    EXPECT_TRUE(graph.deletePath(pathOf({5})));
    EXPECT_THAT(graph.adapter.log, ElementsAre("DeleteNode(5)"));
    EXPECT_THAT(graph.destroyed, ElementsAre(105));
    EXPECT_EQ(graph.adapter.GetCurrentOpenNode(), graph.four);
}

TEST(DeleteNodeByPathTest, PathOfOneOpensNothing) {
    DeepGraph graph;
    const CapturedDebugText text;
    EXPECT_FALSE(graph.deletePath(pathOf({5})));
    EXPECT_THAT(graph.adapter.log, ElementsAre("DeleteNode(5)"));
    EXPECT_EQ(text.Text(), kNothingOpen);
}

TEST(DeleteNodeByPathTest, PathOfTheRootAloneDeletesNoRoot) {
    DeepGraph graph;
    const CapturedDebugText text;
    EXPECT_FALSE(graph.deletePath(pathOf({1})));
    EXPECT_THAT(graph.adapter.log, ElementsAre("DeleteNode(1)"));
    EXPECT_EQ(text.Text(), "");
    EXPECT_EQ(graph.adapter.GetNode(pathOf({1, 2, 3, 4, 5})), graph.five);
}

// A path of two names a child of the root, yet nothing opens the root: whatever node is open is
// taken for it.
TEST(DeleteNodeByPathTest, PathOfTwoDeletesBelowTheOpenNodeWhicheverItIs) {
    DeepGraph graph;
    graph.adapter.openOnly(graph.four);
    EXPECT_TRUE(graph.deletePath(pathOf({1, 5})));
    EXPECT_THAT(graph.adapter.log, ElementsAre("DeleteNode(5)"));
    EXPECT_THAT(graph.destroyed, ElementsAre(105));
}

TEST(DeleteNodeByPathTest, PathOfTwoBelowTheOpenRootDeletesItsChild) {
    DeepGraph graph;
    graph.adapter.openOnly(graph.root);
    EXPECT_TRUE(graph.deletePath(pathOf({1, 2})));
    EXPECT_THAT(graph.adapter.log, ElementsAre("DeleteNode(2)"));
    EXPECT_FALSE(graph.root->HasChildren());
    EXPECT_THAT(graph.destroyed, ElementsAre(105));
}

TEST(DeleteNodeByPathTest, PathOfTwoFailsWithNothingOpen) {
    DeepGraph graph;
    const CapturedDebugText text;
    EXPECT_FALSE(graph.deletePath(pathOf({1, 2})));
    EXPECT_THAT(graph.adapter.log, ElementsAre("DeleteNode(2)"));
    EXPECT_EQ(text.Text(),
              "Stack is zero, yet is requesting for children\n"
              "Cannot delete child node 2\n");
    EXPECT_THAT(childIds(*graph.root), ElementsAre(2));
}

TEST(DeleteNodeByPathTest, PathOfTwoFailsWhereTheOpenNodeHasNoSuchChild) {
    DeepGraph graph;
    graph.adapter.openOnly(graph.two);
    const CapturedDebugText text;
    EXPECT_FALSE(graph.deletePath(pathOf({1, 2})));
    EXPECT_EQ(text.Text(), "");
    EXPECT_THAT(childIds(*graph.root), ElementsAre(2));
}

TEST(DeleteNodeByPathTest, PathOfThreeOpensItsTwoParents) {
    DeepGraph graph;
    EXPECT_TRUE(graph.deletePath(pathOf({1, 2, 3})));
    EXPECT_THAT(graph.adapter.log, ElementsAre("View.OpenTopNode", "OpenNode(1, )", "OpenNode(2, )",
                                               "DeleteNode(3)", "CloseAllNodes"));
    EXPECT_THAT(graph.destroyed, ElementsAre(105));
    EXPECT_FALSE(graph.two->HasChildren());
    EXPECT_TRUE(graph.adapter._openNodes.empty());
}

TEST(DeleteNodeByPathTest, LongPathOpensEveryParent) {
    DeepGraph graph;
    EXPECT_TRUE(graph.deletePath(pathOf({1, 2, 3, 4, 5})));
    EXPECT_THAT(graph.adapter.log,
                ElementsAre("View.OpenTopNode", "OpenNode(1, )", "OpenNode(2, )", "OpenNode(3, )",
                            "OpenNode(4, )", "DeleteNode(5)", "CloseAllNodes"));
    EXPECT_THAT(graph.destroyed, ElementsAre(105));
    EXPECT_EQ(graph.adapter.GetNode(pathOf({1, 2, 3, 4})), graph.four);
}

TEST(DeleteNodeByPathTest, BelowAnOpenNodeItClosesWhatItOpenedOneByOne) {
    DeepGraph graph;
    graph.adapter.openOnly(graph.three);
    EXPECT_TRUE(graph.deletePath(pathOf({1, 2, 3, 4, 5})));
    EXPECT_THAT(graph.adapter.log,
                ElementsAre("OpenNode(1, )", "OpenNode(2, )", "OpenNode(3, )", "OpenNode(4, )",
                            "DeleteNode(5)", "CloseNode", "CloseNode", "CloseNode", "CloseNode"));
    EXPECT_EQ(graph.adapter._openNodes.size(), 1U);
    EXPECT_EQ(graph.adapter.GetCurrentOpenNode(), graph.three);
}

TEST(DeleteNodeByPathTest, NullOnTheStackIsNoOpenNode) {
    DeepGraph graph;
    graph.adapter.openOnly(nullptr);
    EXPECT_TRUE(graph.deletePath(pathOf({1, 2, 3})));
    EXPECT_THAT(graph.adapter.log, ElementsAre("View.OpenTopNode", "OpenNode(1, )", "OpenNode(2, )",
                                               "DeleteNode(3)", "CloseAllNodes"));
}

/// The calls of a deletion of 1, 2, 3, 4, 5 whose walk fails at the @p failing -th parent.
CallLog failedWalk(int failing, bool nothingOpen) {
    CallLog log;
    if (nothingOpen) {
        log.push_back("View.OpenTopNode");
    }
    for (int id = 1; id <= failing; ++id) {
        log.push_back("OpenNode(" + std::to_string(id) + ", )");
    }
    if (nothingOpen) {
        log.push_back("CloseAllNodes");
        return log;
    }
    log.insert(log.end(), static_cast<std::size_t>(failing - 1), "CloseNode");
    return log;
}

TEST(DeleteNodeByPathTest, WalkThatFailsAtAnyDepthClosesAllAndDeletesNothing) {
    for (int failing = 1; failing <= 4; ++failing) {
        SCOPED_TRACE("OpenNode fails for " + std::to_string(failing));
        DeepGraph graph;
        graph.adapter.refusesToOpen = {static_cast<std::uint64_t>(failing)};
        const CapturedDebugText text;
        EXPECT_FALSE(graph.deletePath(pathOf({1, 2, 3, 4, 5})));
        EXPECT_EQ(graph.adapter.log, failedWalk(failing, true));
        EXPECT_TRUE(graph.adapter._openNodes.empty());
        EXPECT_EQ(text.Text(), "");
        EXPECT_THAT(graph.destroyed, IsEmpty());
    }
}

TEST(DeleteNodeByPathTest, WalkThatFailsBelowAnOpenNodeClosesAsManyAsItOpened) {
    for (int failing = 1; failing <= 4; ++failing) {
        SCOPED_TRACE("OpenNode fails for " + std::to_string(failing));
        DeepGraph graph;
        graph.adapter.openOnly(graph.four);
        graph.adapter.refusesToOpen = {static_cast<std::uint64_t>(failing)};
        EXPECT_FALSE(graph.deletePath(pathOf({1, 2, 3, 4, 5})));
        EXPECT_EQ(graph.adapter.log, failedWalk(failing, false));
        EXPECT_EQ(graph.adapter._openNodes.size(), 1U);
        EXPECT_EQ(graph.adapter.GetCurrentOpenNode(), graph.four);
        EXPECT_THAT(graph.destroyed, IsEmpty());
    }
}

TEST(DeleteNodeByPathTest, ClosesAlsoWhereTheLastIsNoChild) {
    DeepGraph graph;
    EXPECT_FALSE(graph.deletePath(pathOf({1, 2, 9})));
    EXPECT_THAT(graph.adapter.log, ElementsAre("View.OpenTopNode", "OpenNode(1, )", "OpenNode(2, )",
                                               "DeleteNode(9)", "CloseAllNodes"));
    graph.adapter.openOnly(graph.root);
    graph.adapter.log.clear();
    EXPECT_FALSE(graph.deletePath(pathOf({1, 2, 9})));
    EXPECT_THAT(graph.adapter.log, ElementsAre("OpenNode(1, )", "OpenNode(2, )", "DeleteNode(9)",
                                               "CloseNode", "CloseNode"));
    EXPECT_EQ(graph.adapter.GetCurrentOpenNode(), graph.root);
}

TEST(DeleteNodeByPathTest, ParentThatIsALeafHasNoChildren) {
    DeepGraph graph;
    addLeaf(graph.root, 7);
    const CapturedDebugText text;
    EXPECT_FALSE(graph.deletePath(pathOf({1, 7, 5})));
    EXPECT_EQ(text.Text(), kNoChildren);
    EXPECT_TRUE(graph.adapter._openNodes.empty());
}

TEST(DeleteNodeByPathTest, OriginOfThePathPlaysNoPart) {
    DeepGraph graph;
    EXPECT_TRUE(graph.deletePath(RenderId({1, 2, 3}, Unknown)));
    EXPECT_FALSE(graph.two->HasChildren());
}

}  // namespace
}  // namespace KesVizCore
