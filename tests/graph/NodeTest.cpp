#include "graph/RecordingReport.h"
#include "graph/TellingGraph.h"
#include "support/RecordingHost.h"

#include <KesVizCore/graph/Node.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace KesVizCore {
namespace {

using support::ActingAttribute;
using support::AnyAttribute;
using support::Deaths;
using support::HostLeaf;
using support::HostNode;
using Ids = std::vector<std::uint64_t>;

/// As it was before any root was made.
const std::uint64_t counterAtLoad = GeoNode::NodeCounter;

/// A root, and what died of its graph.
class NodeTest : public testing::Test {
protected:
    /// Lets @p node tell its name when it is destroyed, by an attribute.
    template <typename Kind>
    Kind* telling(Kind* node, const std::string& name) {
        node->SetAttribute(new AnyAttribute(deaths, name, AttributeType(99)));
        return node;
    }
    Node* tellingGroup(Node* parent, std::uint64_t id, const std::string& name) {
        return telling(parent->CreateChild(id), name);
    }
    GeoNode* tellingLeaf(Node* parent, std::uint64_t id, const std::string& name) {
        return telling(parent->CreateGeoChild(id), name);
    }

    Deaths deaths;
    std::unique_ptr<Node> root = support::newRoot();
};

Ids idsOf(const Node& node) {
    Ids ids;
    for (const auto& entry : node.Children()) {
        ids.push_back(entry.first);
    }
    return ids;
}

// --- identifiers --------------------------------------------------------------------------------

TEST_F(NodeTest, RootNodeIdIsOne) {
    EXPECT_EQ(Node::GetRootNodeId(), 1U);
}

TEST_F(NodeTest, TheCounterBeginsAtZero) {
    EXPECT_EQ(counterAtLoad, 0U);
}

TEST_F(NodeTest, NextIdCountsUpFromTheRootsId) {
    EXPECT_EQ(GeoNode::NodeCounter, 1U);
    EXPECT_EQ(Node::GetNextId(), 2U);
    EXPECT_EQ(Node::GetNextId(), 3U);
    EXPECT_EQ(GeoNode::NodeCounter, 3U);
}

TEST_F(NodeTest, NextIdFollowsTheCounterThatAnyoneMaySet) {
    GeoNode::NodeCounter = 41;
    EXPECT_EQ(Node::GetNextId(), 42U);
    GeoNode::NodeCounter = std::numeric_limits<std::uint64_t>::max();
    EXPECT_EQ(Node::GetNextId(), 0U);
}

TEST_F(NodeTest, ChildrenDoNotDrawIds) {
    root->CreateChild(70);
    root->CreateGeoChild(71);
    EXPECT_EQ(Node::GetNextId(), 2U);
}

TEST_F(NodeTest, CreateRootMakesAnEmptyGroupOfIdOneNamedRoot) {
    EXPECT_EQ(root->Id(), 1U);
    EXPECT_EQ(root->Name(), L"ROOT");
    EXPECT_EQ(root->GetFilterID(), -1);
    EXPECT_FALSE(root->HasParent());
    EXPECT_FALSE(root->HasChildren());
    EXPECT_TRUE(root->Attributes()->empty());
    EXPECT_TRUE(root->Geometry().empty());
}

TEST_F(NodeTest, CreateRootRestartsTheIdsWhateverIdsAnEarlierGraphUses) {
    for (int drawn = 0; drawn < 5; ++drawn) {
        root->CreateChild(Node::GetNextId());
    }
    const std::unique_ptr<Node> second(Node::CreateRoot());
    EXPECT_NE(second, root);
    EXPECT_EQ(second->Id(), 1U);
    EXPECT_EQ(GeoNode::NodeCounter, 1U);
    EXPECT_EQ(Node::GetNextId(), 2U);  // an id that the first graph has already
    EXPECT_EQ(idsOf(*root), (Ids{2, 3, 4, 5, 6}));
}

// --- destruction --------------------------------------------------------------------------------

TEST_F(NodeTest, DestructionGoesThroughChildrenInTheOrderOfTheirIdsAndThenTheNode) {
    telling(root.get(), "root");
    tellingGroup(root.get(), 9, "9");
    Node* const group = tellingGroup(root.get(), 3, "3");
    tellingLeaf(root.get(), 5, "5");
    tellingLeaf(group, 8, "3/8");
    Node* const deeper = tellingGroup(group, 7, "3/7");
    tellingLeaf(deeper, 1, "3/7/1");
    tellingLeaf(group, 6, "3/6");
    root.reset();
    EXPECT_EQ(deaths, (Deaths{"3/6", "3/7/1", "3/7", "3/8", "3", "5", "9", "root"}));
}

TEST_F(NodeTest, DestructionLeavesAChildWithSeveralParentsAlive) {
    Node* const group = tellingGroup(root.get(), 3, "group");
    GeoNode* const shared = tellingLeaf(group, 8, "shared");
    root->AddChild(shared);
    root->DeleteChildById(3);
    EXPECT_EQ(deaths, Deaths{"group"});
    EXPECT_EQ(root->GetChild(8), shared);
    root->RemoveChildById(8);
    delete shared;  // it still lists both, and so would survive the root too
}

TEST_F(NodeTest, DestructionLeavesItsAddressWithAChildThatSurvives) {
    // The address of a dead node, not to be followed: shared children are to be unlinked first.
    Node* const group = root->CreateChild(3);
    GeoNode* const shared = group->CreateGeoChild(8);
    root->AddChild(shared);
    root->DeleteChildById(3);
    EXPECT_EQ(shared->Parents().size(), 2U);
    EXPECT_EQ(shared->Parents()[1], root.get());
    root->DeleteChildById(8);
    EXPECT_EQ(shared->Parents().size(), 1U);  // so it survives this too
    delete shared;
}

TEST_F(NodeTest, ANodeWhoseParentsAllGoTogetherSurvives) {
    Node* const first = tellingGroup(root.get(), 3, "first");
    Node* const second = tellingGroup(root.get(), 4, "second");
    GeoNode* const shared = tellingLeaf(first, 8, "shared");
    second->AddChild(shared);
    root.reset();
    EXPECT_EQ(deaths, (Deaths{"first", "second"}));
    delete shared;
    EXPECT_EQ(deaths.back(), "shared");
}

TEST_F(NodeTest, DestructionLeavesAChildWithoutAnyParentAlive) {
    GeoNode* const child = tellingLeaf(root.get(), 8, "child");
    child->RemoveFromParents(root.get());
    root.reset();
    EXPECT_TRUE(deaths.empty());
    delete child;
}

TEST_F(NodeTest, DestructionDoesNotLookAtWhoTheOneParentIs) {
    // A copy has the children of the original, which name only the original as their parent.
    tellingLeaf(tellingGroup(root.get(), 3, "3"), 8, "3/8");
    tellingGroup(root.get(), 4, "4");
    { const Node copy(*root); }
    EXPECT_EQ(deaths, (Deaths{"3/8", "3", "4"}));
    root->ClearChildren();  // they are gone
}

TEST_F(NodeTest, DestructionOfACopyGoesBackToTheCopy) {
    // Groups between leaves: the walk must find its way back, though the groups name the original.
    for (const std::uint64_t id : Ids{2, 4, 6}) {
        tellingLeaf(tellingGroup(root.get(), id, std::to_string(id)), 1, std::to_string(id) + "/1");
        tellingLeaf(root.get(), id + 1, std::to_string(id + 1));
    }
    { const Node copy(*root); }
    EXPECT_EQ(deaths, (Deaths{"2/1", "2", "3", "4/1", "4", "5", "6/1", "6", "7"}));
    root->ClearChildren();
}

TEST_F(NodeTest, DestructionFollowsTheIdsOfLinkingNotThoseAssignedLater) {
    // Assignment takes the id of another node along; the children are still kept by their old ids.
    Node* const low = tellingGroup(root.get(), 2, "2");
    tellingLeaf(root.get(), 3, "3");
    Node* const high = root->CreateChild(4);
    *high = *low;
    high->Attributes()->clear();
    telling(high, "4");
    tellingLeaf(high, 1, "4/1");
    tellingLeaf(root.get(), 5, "5");
    ASSERT_EQ(high->Id(), 2U);
    root.reset();
    EXPECT_EQ(deaths, (Deaths{"2", "3", "4/1", "4", "5"}));
}

TEST_F(NodeTest, DestructionSkipsNoSiblingBeforeTheOneWhoseIdWasAssigned) {
    Node* const low = root->CreateChild(2);
    tellingLeaf(root.get(), 3, "3");
    *low = *tellingGroup(root.get(), 4, "4");
    low->Attributes()->clear();
    telling(low, "2");
    tellingLeaf(low, 1, "2/1");
    root.reset();
    EXPECT_EQ(deaths, (Deaths{"2/1", "2", "3", "4"}));
}

TEST_F(NodeTest, DestructionFindsAChildWhoseAssignedIdIsNoneOfItsSiblings) {
    Node* const aside = tellingGroup(root.get(), 9, "9");
    Node* const source = tellingGroup(aside, 77, "9/77");
    tellingLeaf(root.get(), 3, "3");
    Node* const group = root->CreateChild(4);
    *group = *source;
    group->Attributes()->clear();
    telling(group, "4");
    tellingLeaf(group, 1, "4/1");
    tellingLeaf(root.get(), 5, "5");
    root.reset();
    EXPECT_EQ(deaths, (Deaths{"3", "4/1", "4", "5", "9/77", "9"}));
}

TEST_F(NodeTest, DestructionTellsNoParent) {
    Node* const group = root->CreateChild(3);
    delete group;
    EXPECT_EQ(idsOf(*root), Ids{3});
    EXPECT_TRUE(root->RemoveChildById(3));
}

TEST_F(NodeTest, DestructionTakesAttributesAndGeometryAfterTheChildren) {
    Ids destroyedItems;
    Node* const group = root->CreateChild(3);
    group->AddGeometry(support::newItem(30, &destroyedItems));
    group->CreateGeoChild(4)->AddGeometry(support::newItem(40, &destroyedItems));
    root->AddGeometry(support::newItem(10, &destroyedItems));
    root.reset();
    EXPECT_EQ(destroyedItems, (Ids{40, 30, 10}));
}

TEST_F(NodeTest, ADestructorOfTheHostSeesTheChildrenAlive) {
    auto* const hosts = new HostNode(deaths, "host's group", 3);
    root->AddChild(hosts);
    tellingLeaf(hosts, 8, "its leaf");
    tellingLeaf(tellingGroup(hosts, 9, "its group"), 1, "a leaf in there");
    root.reset();
    EXPECT_EQ(deaths,
              (Deaths{"host's group with 2 children", "its leaf", "a leaf in there", "its group"}));
}

TEST_F(NodeTest, DestructorsOfTheHostRunAtEveryDepth) {
    Node* const plain = tellingGroup(root.get(), 3, "plain");
    auto* const outer = new HostNode(deaths, "outer", 4);
    auto* const inner = new HostNode(deaths, "inner", 5);
    plain->AddChild(outer);
    tellingGroup(outer, 6, "between")->AddChild(inner);
    inner->AddChild(new HostLeaf(deaths, "leaf", 7));
    root.reset();
    EXPECT_EQ(deaths, (Deaths{"outer with 1 children", "inner with 1 children", "leaf", "between",
                              "plain"}));
}

// --- a group ------------------------------------------------------------------------------------

TEST_F(NodeTest, HasChildrenWithAtLeastOne) {
    EXPECT_FALSE(root->HasChildren());
    root->CreateGeoChild(5);
    EXPECT_TRUE(root->HasChildren());
    root->DeleteChildById(5);
    EXPECT_FALSE(root->HasChildren());
}

TEST_F(NodeTest, ToStringAddsTheNumberOfChildrenToTheTextOfTheLeaf) {
    root->CreateChild(5);
    root->CreateGeoChild(6);
    telling(root.get(), "root");
    EXPECT_EQ(root->ToString(), "[1] \"ROOT\" parents(0) attributes(1) geoEntities(0) children(2)");
}

TEST_F(NodeTest, ToStringCountsTheChildrenBehindACutName) {
    root->SetName(std::wstring(10000, L'x'));
    EXPECT_EQ(root->ToString(), "[1] \"" + std::string(4090, 'x') + " children(0)");
}

// --- making children ----------------------------------------------------------------------------

TEST_F(NodeTest, CreateChildLinksANewGroup) {
    Node* const child = root->CreateChild(5);
    EXPECT_EQ(child->Id(), 5U);
    EXPECT_EQ(child->Name(), L"");
    EXPECT_EQ(root->GetChild(5), child);
    EXPECT_EQ(child->Parents(), std::vector<Node*>{root.get()});
}

TEST_F(NodeTest, CreateGeoChildLinksANewLeaf) {
    GeoNode* const child = root->CreateGeoChild(5);
    EXPECT_EQ(child->Id(), 5U);
    EXPECT_EQ(dynamic_cast<Node*>(child), nullptr);
    EXPECT_EQ(root->GetChild(5), child);
    EXPECT_EQ(child->Parents(), std::vector<Node*>{root.get()});
}

TEST_F(NodeTest, CreateChildOnATakenIdAnswersAnUnlinkedNode) {
    GeoNode* const first = root->CreateGeoChild(5);
    const std::unique_ptr<Node> second(root->CreateChild(5));
    ASSERT_NE(second, nullptr);
    EXPECT_NE(second.get(), first);
    EXPECT_EQ(second->Id(), 5U);
    EXPECT_FALSE(second->HasParent());
    EXPECT_EQ(root->GetChild(5), first);
    EXPECT_EQ(root->Children().size(), 1U);
}

TEST_F(NodeTest, CreateGeoChildOnATakenIdAnswersAnUnlinkedLeaf) {
    Node* const first = root->CreateChild(5);
    const std::unique_ptr<GeoNode> second(root->CreateGeoChild(5));
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(second->Id(), 5U);
    EXPECT_FALSE(second->HasParent());
    EXPECT_EQ(root->GetChild(5), first);
}

TEST_F(NodeTest, MakingChildrenIsTheHostsToOverride) {
    struct Hosts : HostNode {
        using HostNode::HostNode;
        Node* CreateChild(const std::uint64_t&) override { return nullptr; }
        GeoNode* CreateGeoChild(const std::uint64_t&) override { return nullptr; }
    };
    Hosts hosts(deaths, "host's", 3);
    Node& node = hosts;
    EXPECT_EQ(node.CreateChild(4), nullptr);
    EXPECT_EQ(node.CreateGeoChild(4), nullptr);
    EXPECT_FALSE(node.HasChildren());
}

TEST_F(NodeTest, GroupsAreMadeByNodesAlone) {
    EXPECT_FALSE((std::is_constructible_v<Node, std::uint64_t>));
}

// --- copies -------------------------------------------------------------------------------------

TEST_F(NodeTest, CopySharesTheChildren) {
    GeoNode* const child = root->CreateGeoChild(5);
    Node copy(*root);
    EXPECT_EQ(copy.Children(), root->Children());
    EXPECT_EQ(copy.GetChild(5), child);
    EXPECT_EQ(child->Parents(), std::vector<Node*>{root.get()});
    copy.ClearChildren();  // the original's
}

TEST_F(NodeTest, AssignmentTakesTheChildrenAndDestroysNone) {
    Node* const source = root->CreateChild(3);
    GeoNode* const child = source->CreateGeoChild(5);
    Node* const target = root->CreateChild(4);
    GeoNode* const before = tellingLeaf(target, 6, "before");
    Node& assigned = *target = *source;
    EXPECT_EQ(&assigned, target);
    EXPECT_EQ(idsOf(*target), Ids{5});
    EXPECT_EQ(target->GetChild(5), child);
    EXPECT_TRUE(deaths.empty());
    target->ClearChildren();
    delete before;
}

// --- links --------------------------------------------------------------------------------------

TEST_F(NodeTest, AddChildLinksBothWays) {
    auto* const leaf = new HostLeaf(deaths, "leaf", 5);
    EXPECT_TRUE(root->AddChild(leaf));
    EXPECT_EQ(root->GetChild(5), leaf);
    EXPECT_EQ(leaf->Parents(), std::vector<Node*>{root.get()});
}

TEST_F(NodeTest, AddChildRefusesNull) {
    EXPECT_FALSE(root->AddChild(nullptr));
    EXPECT_FALSE(root->HasChildren());
}

TEST_F(NodeTest, AddChildRefusesATakenIdAndChangesNothing) {
    GeoNode* const first = root->CreateGeoChild(5);
    HostLeaf second(deaths, "second", 5);
    EXPECT_FALSE(root->AddChild(&second));
    EXPECT_FALSE(second.HasParent());
    EXPECT_EQ(root->GetChild(5), first);
}

TEST_F(NodeTest, AddChildRefusesTheChildThatIsThereAlready) {
    GeoNode* const child = root->CreateGeoChild(5);
    EXPECT_FALSE(root->AddChild(child));
    EXPECT_EQ(child->Parents().size(), 1U);
}

TEST_F(NodeTest, AddChildSharesAChildBetweenParents) {
    Node* const first = root->CreateChild(3);
    Node* const second = root->CreateChild(4);
    GeoNode* const shared = first->CreateGeoChild(8);
    EXPECT_TRUE(second->AddChild(shared));
    EXPECT_EQ(shared->Parents(), (std::vector<Node*>{first, second}));
    EXPECT_EQ(first->GetChild(8), second->GetChild(8));
    second->DeleteChildById(8);
}

TEST_F(NodeTest, AddChildRecordsNoParentTwice) {
    GeoNode* const child = root->CreateGeoChild(5);
    root->RemoveChildById(5);  // which leaves the parent recorded
    EXPECT_TRUE(root->AddChild(child));
    EXPECT_EQ(child->Parents(), std::vector<Node*>{root.get()});
}

TEST_F(NodeTest, GetChildAnswersNullWithoutSuchAChild) {
    Node* const group = root->CreateChild(3);
    group->CreateChild(4);
    EXPECT_EQ(root->GetChild(4), nullptr);  // a grandchild
    EXPECT_EQ(root->GetChild(1), nullptr);
}

TEST_F(NodeTest, ChildrenAreKeptInTheOrderOfTheirIds) {
    constexpr std::uint64_t largest = std::numeric_limits<std::uint64_t>::max();
    for (const std::uint64_t id : {std::uint64_t{9}, largest, std::uint64_t{0}, std::uint64_t{4}}) {
        root->CreateChild(id);
    }
    EXPECT_EQ(idsOf(*root), (Ids{0, 4, 9, largest}));
}

TEST_F(NodeTest, RemoveChildByIdLeavesTheChildAndItsListOfParents) {
    const std::unique_ptr<GeoNode> child(tellingLeaf(root.get(), 5, "child"));
    EXPECT_TRUE(root->RemoveChildById(5));
    EXPECT_FALSE(root->HasChildren());
    EXPECT_TRUE(deaths.empty());
    EXPECT_TRUE(child->HasParent());
    EXPECT_EQ(child->Parents(), std::vector<Node*>{root.get()});
}

TEST_F(NodeTest, RemoveChildByIdAnswersFalseWithoutSuchAChild) {
    root->CreateChild(5);
    EXPECT_FALSE(root->RemoveChildById(6));
    EXPECT_EQ(root->Children().size(), 1U);
}

TEST_F(NodeTest, RemoveChildByIdAnswersFalseWithoutChildren) {
    EXPECT_FALSE(root->RemoveChildById(5));
    root->CreateGeoChild(5);
    EXPECT_TRUE(root->DeleteChildById(5));
    EXPECT_FALSE(root->RemoveChildById(5));
    EXPECT_TRUE(root->Children().empty());
    EXPECT_FALSE(root->RemoveChildById(5));
}

TEST_F(NodeTest, ThousandsOfSharedChildrenBehindManyOthersSurviveTheirParent) {
    Node* const group = root->CreateChild(2);
    Node* const keeper = root->CreateChild(3);
    std::vector<std::unique_ptr<GeoNode>> survivors;
    Deaths expected;
    for (std::uint64_t id = 10; id < 3010; ++id) {
        GeoNode* const leaf = tellingLeaf(group, id, std::to_string(id));
        if (id >= 10 + 512) {
            keeper->AddChild(leaf);
            survivors.emplace_back(leaf);
        } else {
            expected.push_back(std::to_string(id));
        }
    }
    root->DeleteChildById(2);
    EXPECT_EQ(deaths, expected);
    EXPECT_EQ(keeper->Children().size(), 3000U - 512U);
    root.reset();  // leaves alone what has two parents, one of them dead
    EXPECT_EQ(deaths, expected);
}

// --- destructors that edit -----------------------------------------------------------------------

/// Destroys a root with the leaves 5, 6 and 7, of which @p acting does something to the root.
class NodeEditedWhileDestroyedTest : public NodeTest {
protected:
    Deaths deathsWhen(std::uint64_t acting, const std::function<void(Node&)>& act) {
        Node* const group = root->CreateChild(2);
        for (const std::uint64_t id : {5U, 6U, 7U}) {
            GeoNode* const leaf = tellingLeaf(group, id, std::to_string(id));
            if (id == acting) {
                leaf->SetAttribute(new ActingAttribute(1, [act, group] { act(*group); }));
            }
        }
        tellingLeaf(root.get(), 3, "after the group");
        root.reset();
        return deaths;
    }
};

TEST_F(NodeEditedWhileDestroyedTest, AChildToComeMayBeDeleted) {
    const Deaths all = deathsWhen(5, [](Node& group) { group.DeleteChildById(6); });
    EXPECT_EQ(all, (Deaths{"5", "6", "7", "after the group"}));
}

TEST_F(NodeEditedWhileDestroyedTest, AllChildrenToComeMayBeDeleted) {
    const Deaths all = deathsWhen(5, [](Node& group) {
        group.DeleteChildById(7);
        group.DeleteChildById(6);
    });
    EXPECT_EQ(all, (Deaths{"5", "7", "6", "after the group"}));
}

TEST_F(NodeEditedWhileDestroyedTest, AChildThatIsUnlinkedSurvives) {
    std::unique_ptr<GeoNode> kept;
    const Deaths all = deathsWhen(5, [&kept](Node& group) {
        kept.reset(group.Children().at(6));
        group.RemoveChildById(6);
    });
    EXPECT_EQ(all, (Deaths{"5", "7", "after the group"}));
    kept.reset();
    EXPECT_EQ(deaths.back(), "6");
}

TEST_F(NodeEditedWhileDestroyedTest, AChildMayUnlinkItself) {
    const Deaths all = deathsWhen(6, [](Node& group) { group.RemoveChildById(6); });
    EXPECT_EQ(all, (Deaths{"5", "6", "7", "after the group"}));
}

TEST_F(NodeEditedWhileDestroyedTest, TheLastChildMayUnlinkItself) {
    const Deaths all = deathsWhen(7, [](Node& group) { group.RemoveChildById(7); });
    EXPECT_EQ(all, (Deaths{"5", "6", "7", "after the group"}));
}

TEST_F(NodeEditedWhileDestroyedTest, AChildOfAHigherIdIsDestroyedInItsTurn) {
    const Deaths all = deathsWhen(5, [this](Node& group) { tellingLeaf(&group, 8, "8"); });
    EXPECT_EQ(all, (Deaths{"5", "6", "7", "8", "after the group"}));
}

TEST_F(NodeEditedWhileDestroyedTest, ManyChildrenMayComeFromTheLast) {
    const Deaths all = deathsWhen(7, [this](Node& group) {
        for (std::uint64_t id = 8; id < 2000; ++id) {
            tellingLeaf(&group, id, "more");
        }
    });
    EXPECT_EQ(all.size(), 3 + 1992 + 1U);
    EXPECT_EQ(all.back(), "after the group");
}

TEST_F(NodeEditedWhileDestroyedTest, AChildOfALowerIdIsPassed) {
    GeoNode* late = nullptr;
    const Deaths all = deathsWhen(6, [&](Node& group) { late = tellingLeaf(&group, 4, "4"); });
    EXPECT_EQ(all, (Deaths{"5", "6", "7", "after the group"}));
    delete late;
}

TEST_F(NodeEditedWhileDestroyedTest, TheGroupAboveMayBeEdited) {
    Node& above = *root;
    const Deaths all = deathsWhen(7, [&](Node& /*group*/) {
        above.DeleteChildById(3);
        tellingLeaf(&above, 9, "9");
    });
    EXPECT_EQ(all, (Deaths{"5", "6", "7", "after the group", "9"}));
}

// --- deleting children ---------------------------------------------------------------------------

TEST_F(NodeTest, DeleteChildByIdDestroysAChildWithoutAnotherParent) {
    tellingLeaf(tellingGroup(root.get(), 5, "group"), 6, "leaf");
    EXPECT_TRUE(root->DeleteChildById(5));
    EXPECT_EQ(deaths, (Deaths{"leaf", "group"}));
    EXPECT_FALSE(root->HasChildren());
}

TEST_F(NodeTest, DeleteChildByIdLeavesASharedChildToItsOtherParents) {
    Node* const first = root->CreateChild(3);
    Node* const second = root->CreateChild(4);
    GeoNode* const shared = tellingLeaf(first, 8, "shared");
    second->AddChild(shared);
    EXPECT_TRUE(first->DeleteChildById(8));
    EXPECT_TRUE(deaths.empty());
    EXPECT_EQ(shared->Parents(), std::vector<Node*>{second});
    EXPECT_FALSE(first->HasChildren());
    EXPECT_TRUE(second->DeleteChildById(8));
    EXPECT_EQ(deaths, Deaths{"shared"});
}

TEST_F(NodeTest, DeleteChildByIdAnswersFalseWithoutSuchAChild) {
    tellingLeaf(root.get(), 5, "child");
    EXPECT_FALSE(root->DeleteChildById(6));
    EXPECT_TRUE(deaths.empty());
}

TEST_F(NodeTest, DeleteChildByIdRunsTheHostsDestructor) {
    root->AddChild(new HostNode(deaths, "host's group", 5));
    root->AddChild(new HostLeaf(deaths, "host's leaf", 6));
    EXPECT_TRUE(root->DeleteChildById(5));
    EXPECT_TRUE(root->DeleteChildById(6));
    EXPECT_EQ(deaths, (Deaths{"host's group with 0 children", "host's leaf"}));
}

TEST_F(NodeTest, ClearChildrenForgetsThemAndDoesNothingElse) {
    const std::unique_ptr<GeoNode> leaf(tellingLeaf(root.get(), 5, "leaf"));
    const std::unique_ptr<Node> group(tellingGroup(root.get(), 6, "group"));
    root->ClearChildren();
    EXPECT_FALSE(root->HasChildren());
    EXPECT_TRUE(deaths.empty());
    EXPECT_EQ(leaf->Parents(), std::vector<Node*>{root.get()});
    EXPECT_EQ(group->Parents(), std::vector<Node*>{root.get()});
}

// Nested calls, one for each level, would not fit a usual stack.
TEST_F(NodeTest, FiftyThousandLevelsAreReportedAndDestroyed) {
    constexpr std::uint64_t levels = 50'000;
    Node* lowest = root.get();
    for (std::uint64_t level = 2; level <= levels; ++level) {
        lowest = lowest->CreateChild(level);
    }
    tellingLeaf(lowest, levels + 1, "leaf");
    support::CountingReport report;
    root->GetReport(report);
    EXPECT_EQ(report.deepest, levels + 2);
    root.reset();
    EXPECT_EQ(deaths, Deaths{"leaf"});
}

}  // namespace
}  // namespace KesVizCore
