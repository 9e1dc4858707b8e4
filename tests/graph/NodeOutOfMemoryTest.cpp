#include "core/OutOfMemory.h"
#include "graph/RecordingReport.h"
#include "graph/RenderIdOf.h"
#include "graph/TellingGraph.h"
#include "support/RecordingHost.h"

#include <KesVizCore/core/RenderId.h>
#include <KesVizCore/graph/Node.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <memory>
#include <new>
#include <string>
#include <vector>

namespace KesVizCore {
namespace {

using support::newItem;

/// Everything that an operation could change about a node.
struct State {
    explicit State(GeoNode& node)
        : name(node.Name()),
          parents(node.Parents()),
          attributes(*node.Attributes()),
          geometry(node.Geometry()) {
        if (const auto* group = dynamic_cast<const Node*>(&node)) {
            children = group->Children();
        }
    }
    bool operator==(const State& other) const {
        return name == other.name && parents == other.parents && attributes == other.attributes &&
               geometry == other.geometry && children == other.children;
    }

    std::wstring name;
    std::vector<Node*> parents;
    std::vector<Attribute*> attributes;
    std::vector<AGeometryItem*> geometry;
    std::map<std::uint64_t, GeoNode*> children;
};

/// Fails each allocation of @p make in turn: the answer is then null, @p node is as it was and
/// nothing leaks. @p undo takes back what the call that succeeds has made. Answers how many
/// allocations that call makes.
template <typename Make, typename Undo>
long expectNullAndUnchanged(GeoNode& node, Make make, Undo undo) {
    return FailEachAllocation([&](long failing) {
        SCOPED_TRACE(failing);
        const State before(node);
        const long blocksBefore = OutOfMemory::BlocksInUse();
        bool failed = false;
        decltype(make()) made = nullptr;
        {
            OutOfMemory outOfMemory(failing);
            made = make();
            failed = outOfMemory.HasFailed();
        }
        EXPECT_EQ(made == nullptr, failed);
        if (made != nullptr) {
            undo(made);
        }
        EXPECT_TRUE(State(node) == before);
        EXPECT_EQ(OutOfMemory::BlocksInUse(), blocksBefore);
        return failed;
    });
}

/// Runs @p edit once with its first allocation failing: it throws, and no node is changed.
template <typename Edit>
void expectThrowAndUnchanged(const std::vector<GeoNode*>& nodes, Edit edit) {
    std::vector<State> before;
    for (GeoNode* node : nodes) {
        before.emplace_back(*node);
    }
    bool thrown = false;
    {
        OutOfMemory outOfMemory(1);
        try {
            edit();
        } catch (const std::bad_alloc&) {
            thrown = true;
        }
    }
    EXPECT_TRUE(thrown);
    for (std::size_t place = 0; place < nodes.size(); ++place) {
        EXPECT_TRUE(State(*nodes[place]) == before[place]) << "node " << place;
    }
}

// --- null answers -------------------------------------------------------------------------------

TEST(NodeOutOfMemoryTest, CreateRootAnswersNull) {
    const std::unique_ptr<Node> earlier = support::newRoot();
    const auto destroy = [](Node* root) { delete root; };
    EXPECT_GE(expectNullAndUnchanged(*earlier, &Node::CreateRoot, destroy), 1);
}

TEST(NodeOutOfMemoryTest, CreateChildAnswersNullAndLeavesTheGraph) {
    const std::unique_ptr<Node> root = support::newRoot();
    root->CreateChild(4);
    EXPECT_GE(
        expectNullAndUnchanged(
            *root, [&] { return root->CreateChild(5); }, [&](Node*) { root->DeleteChildById(5); }),
        1);
}

TEST(NodeOutOfMemoryTest, CreateGeoChildAnswersNullAndLeavesTheGraph) {
    const std::unique_ptr<Node> root = support::newRoot();
    root->CreateChild(4);
    EXPECT_GE(expectNullAndUnchanged(
                  *root, [&] { return root->CreateGeoChild(5); },
                  [&](GeoNode*) { root->DeleteChildById(5); }),
              1);
}

TEST(NodeOutOfMemoryTest, CreateChildOnATakenIdAnswersNull) {
    const std::unique_ptr<Node> root = support::newRoot();
    root->CreateChild(5);
    EXPECT_GE(expectNullAndUnchanged(
                  *root, [&] { return root->CreateChild(5); }, [](Node* child) { delete child; }),
              1);
}

TEST(NodeOutOfMemoryTest, GetRenderIdAnswersNull) {
    const std::unique_ptr<Node> root = support::newRoot();
    GeoNode* const leaf = root->CreateChild(4)->CreateGeoChild(5);
    EXPECT_EQ(expectNullAndUnchanged(
                  *leaf, [&] { return leaf->GetRenderId(); },
                  [](RenderId* id) { RenderId::DeleteRenderId(id); }),
              2);  // the render id and its array
}

// --- exceptions ---------------------------------------------------------------------------------

TEST(NodeOutOfMemoryTest, WalkingNeedsNone) {
    const std::unique_ptr<Node> root = support::newRoot();
    for (std::uint64_t id = 2; id < 1000; ++id) {
        root->CreateGeoChild(id)->AddGeometry(newItem(id));
    }
    std::size_t items = 0;
    {
        OutOfMemory outOfMemory(1);
        for (const auto& [id, child] : root->EachChild()) {
            items += child->EachGeometry().size() * child->EachParent().size();
            items += child->EachAttribute().size();
        }
        EXPECT_EQ(outOfMemory.Allocations(), 0);
    }
    EXPECT_EQ(items, 998U);
}

TEST(NodeOutOfMemoryTest, AddChildChangesNothingWithoutAPlaceInTheMap) {
    const std::unique_ptr<Node> root = support::newRoot();
    support::Deaths deaths;
    support::HostLeaf leaf(deaths, "leaf", 5);
    expectThrowAndUnchanged({root.get(), &leaf}, [&] { root->AddChild(&leaf); });
}

TEST(NodeOutOfMemoryTest, AddChildChangesNothingWhicheverAllocationFails) {
    const std::unique_ptr<Node> root = support::newRoot();
    support::Deaths deaths;
    support::HostLeaf leaf(deaths, "leaf", 5);
    const long allocations = FailEachAllocation([&](long failing) {
        bool thrown = false;
        bool added = false;
        {
            OutOfMemory outOfMemory(failing);
            try {
                added = root->AddChild(&leaf);
            } catch (const std::bad_alloc&) {
                thrown = true;
            }
        }
        EXPECT_NE(added, thrown) << failing;
        EXPECT_EQ(root->HasChildren(), added) << failing;
        EXPECT_EQ(leaf.HasParent(), added) << failing;
        return thrown;
    });
    EXPECT_GE(allocations, 1);
    root->RemoveChildById(5);
}

TEST(NodeOutOfMemoryTest, AddChildOfAChildOfAnotherGroupChangesNothing) {
    const std::unique_ptr<Node> root = support::newRoot();
    GeoNode* const leaf = root->CreateChild(2)->CreateGeoChild(3);
    const std::string before = leaf->ToString();
    const long allocations = FailEachAllocation([&](long failing) {
        bool thrown = false;
        {
            OutOfMemory outOfMemory(failing);
            try {
                root->AddChild(leaf);
            } catch (const std::bad_alloc&) {
                thrown = true;
            }
        }
        EXPECT_EQ(root->GetChild(3), thrown ? nullptr : leaf) << failing;
        EXPECT_EQ(leaf->ToString() == before, thrown) << failing;
        return thrown;
    });
    EXPECT_GE(allocations, 1);
    EXPECT_EQ(leaf->Parents().size(), 2U);
    root->DeleteChildById(3);
}

// The storage of children grows in steps; here every step fails once, with and without a map that
// has been asked for.
TEST(NodeOutOfMemoryTest, AddChildChangesNothingHoweverManyThereAre) {
    for (const bool asked : {false, true}) {
        const std::unique_ptr<Node> root = support::newRoot();
        if (asked) {
            root->Children();
        }
        long failures = 0;
        std::uint64_t count = 0;
        for (const std::uint64_t step : {std::uint64_t{1}, ~std::uint64_t{0}}) {  // up, then down
            for (std::uint64_t id = 5000 + step; count < 1200; id += step) {
                support::Deaths deaths;
                auto leaf = std::make_unique<support::HostLeaf>(deaths, "leaf", id);
                bool unchanged = true;
                FailEachAllocation([&](long failing) {
                    bool thrown = false;
                    OutOfMemory outOfMemory(failing);
                    try {
                        root->AddChild(leaf.get());
                    } catch (const std::bad_alloc&) {
                        thrown = true;
                        ++failures;
                        unchanged = unchanged && root->GetChild(id) == nullptr;
                    }
                    return thrown;
                });
                ASSERT_TRUE(unchanged);
                ASSERT_EQ(root->GetChild(id), leaf.get());
                root->RemoveChildById(id);
                leaf->RemoveFromParents(root.get());
                ASSERT_EQ(root->GetChild(id), nullptr);
                root->CreateGeoChild(id);
                ++count;
            }
            count = 0;
        }
        EXPECT_GT(failures, 5);
        EXPECT_EQ(root->Children().size(), 2400U);
    }
}

TEST(NodeOutOfMemoryTest, AListChangesNothingWhenItOutgrowsItsForm) {
    const std::unique_ptr<Node> root = support::newRoot();
    Node* const other = root->CreateChild(2);
    GeoNode* const leaf = other->CreateGeoChild(3);
    leaf->AddGeometry(newItem(1));
    leaf->SetAttribute(new support::HostAttribute(AttributeType(8)));
    const std::unique_ptr<AGeometryItem> item(newItem(2));
    const auto attribute = std::make_unique<support::HostAttribute>(AttributeType(9));
    const std::string before = leaf->ToString();
    const auto expectRefused = [&](const auto& operation) {
        for (const long failing : {1L, 2L}) {  // the vector, then its array
            bool thrown = false;
            {
                OutOfMemory outOfMemory(failing);
                try {
                    operation();
                } catch (const std::bad_alloc&) {
                    thrown = true;
                }
            }
            EXPECT_TRUE(thrown) << failing;
            EXPECT_EQ(leaf->ToString(), before) << failing;
        }
    };
    expectRefused([&] { leaf->AddGeometry(item.get()); });
    expectRefused([&] { leaf->SetAttribute(attribute.get()); });
    expectRefused([&] { leaf->AddToParents(root.get()); });
}

TEST(NodeOutOfMemoryTest, AskingForAContainerChangesNothing) {
    const std::unique_ptr<Node> root = support::newRoot();
    root->CreateGeoChild(2);
    const std::string before = root->ToString();
    const auto askedFor = [&root](long failing) {
        OutOfMemory outOfMemory(failing);
        root->Children();
        root->Geometry();
        root->Attributes();
        root->Parents();
        return outOfMemory.HasFailed();
    };
    long refusals = 0;
    FailEachAllocation([&](long failing) {
        try {
            return askedFor(failing);
        } catch (const std::bad_alloc&) {
            EXPECT_EQ(root->ToString(), before);
            ++refusals;
            return true;
        }
    });
    EXPECT_GE(refusals, 4);
    EXPECT_EQ(root->ToString(), before);
}

TEST(NodeOutOfMemoryTest, SetNameChangesNothing) {
    const std::unique_ptr<Node> root = support::newRoot();
    const std::wstring longer(1000, L'x');
    expectThrowAndUnchanged({root.get()}, [&] { root->SetName(longer); });
}

TEST(NodeOutOfMemoryTest, ANameOfUpTo15CharactersNeedsNoMemory) {
    const std::unique_ptr<Node> root = support::newRoot();
    const std::wstring names[] = {std::wstring(1, L'x'), std::wstring(15, L'\u00FF'),
                                  std::wstring(16, L'x')};
    long allocations[3];
    for (std::size_t place = 0; place < 3; ++place) {
        OutOfMemory counting(0);
        root->SetName(names[place]);
        allocations[place] = counting.Allocations();
    }
    EXPECT_EQ(allocations[0], 0);
    EXPECT_EQ(allocations[1], 0);
    EXPECT_GT(allocations[2], 0);
}

TEST(NodeOutOfMemoryTest, ListsOfOneAreCopiedWithoutMemory) {
    const std::unique_ptr<Node> root = support::newRoot();
    GeoNode* const leaf = root->CreateGeoChild(2);
    leaf->AddGeometry(newItem(1));
    long allocations = 0;
    {
        OutOfMemory counting(0);
        root->TransferGeometryFrom(leaf);
        const GeoNode copy(*leaf);
        allocations = counting.Allocations();
    }
    EXPECT_EQ(allocations, 0);
}

TEST(NodeOutOfMemoryTest, SetAttributeLeavesTheAttributeWithTheCaller) {
    const std::unique_ptr<Node> root = support::newRoot();
    support::HostAttribute attribute(AttributeType(9));
    expectThrowAndUnchanged({root.get()}, [&] { root->SetAttribute(&attribute); });
}

TEST(NodeOutOfMemoryTest, SetAttributeReplacesWithoutMemory) {
    const std::unique_ptr<Node> root = support::newRoot();
    root->SetAttribute(new support::HostAttribute(AttributeType(9)));
    auto* const replacing = new support::HostAttribute(AttributeType(9));
    bool set = false;
    {
        OutOfMemory outOfMemory(1);
        set = root->SetAttribute(replacing);
    }
    EXPECT_TRUE(set);
    EXPECT_EQ(root->GetAttribute(9), replacing);
}

TEST(NodeOutOfMemoryTest, AddGeometryLeavesTheItemWithTheCaller) {
    const std::unique_ptr<Node> root = support::newRoot();
    const std::unique_ptr<AGeometryItem> item(newItem(1));
    expectThrowAndUnchanged({root.get()}, [&] { root->AddGeometry(item.get()); });
}

TEST(NodeOutOfMemoryTest, TransferGeometryFromLeavesEveryItemWhereItIs) {
    const std::unique_ptr<Node> root = support::newRoot();
    GeoNode* const source = root->CreateGeoChild(5);
    root->AddGeometry(newItem(1));
    for (std::uint64_t id = 2; id < 10; ++id) {
        source->AddGeometry(newItem(id));
    }
    expectThrowAndUnchanged({root.get(), source}, [&] { root->TransferGeometryFrom(source); });
}

TEST(NodeOutOfMemoryTest, AddToParentsChangesNothing) {
    const std::unique_ptr<Node> root = support::newRoot();
    support::Deaths deaths;
    support::HostLeaf leaf(deaths, "leaf", 5);
    expectThrowAndUnchanged({&leaf}, [&] { leaf.AddToParents(root.get()); });
}

TEST(NodeOutOfMemoryTest, ReportsPassTheExceptionOn) {
    const std::unique_ptr<Node> root = support::newRoot();
    GeoNode* const leaf = root->CreateGeoChild(5);
    leaf->SetName(std::wstring(100, L'x'));
    support::CountingReport report;
    expectThrowAndUnchanged({root.get(), leaf}, [&] { root->GetReport(report); });
    expectThrowAndUnchanged({root.get(), leaf}, [&] { leaf->GetReport(report); });
}

TEST(NodeOutOfMemoryTest, RenderIdByValueThrowsWhereThePathCannotBeMade) {
    const std::unique_ptr<Node> root = support::newRoot();
    GeoNode* const leaf = root->CreateGeoChild(5);
    EXPECT_EQ(renderIdOf(*leaf), RenderId({1, 5}, View3D));
    expectThrowAndUnchanged({leaf}, [&] { renderIdOf(*leaf); });
}

// --- without any memory -------------------------------------------------------------------------

TEST(NodeOutOfMemoryTest, UnlinkingAndDestructionNeedNoMemory) {
    std::unique_ptr<Node> root = support::newRoot();
    Node* group = root.get();
    for (std::uint64_t depth = 2; depth < 100; ++depth) {
        group->CreateGeoChild(1000 + depth)->AddGeometry(newItem(depth));
        group->SetAttribute(new support::HostAttribute(AttributeType(9)));
        group = group->CreateChild(depth);
    }
    root->CreateChild(5000)->CreateGeoChild(5001);
    long allocations = -1;
    {
        OutOfMemory outOfMemory(0);
        root->DeleteChildById(5000);
        root.reset();
        allocations = outOfMemory.Allocations();
    }
    EXPECT_EQ(allocations, 0);
}

TEST(NodeOutOfMemoryTest, DestructionGivesBackAllItsMemory) {
    const long before = OutOfMemory::BlocksInUse();
    {
        const std::unique_ptr<Node> root = support::newRoot();
        for (std::uint64_t id = 2; id < 50; ++id) {
            Node* const group = root->CreateChild(id);
            group->SetName(std::wstring(100, L'x'));
            group->AddGeometry(newItem(id));
            group->CreateGeoChild(id);
        }
    }
    EXPECT_EQ(OutOfMemory::BlocksInUse(), before);
}

}  // namespace
}  // namespace KesVizCore
