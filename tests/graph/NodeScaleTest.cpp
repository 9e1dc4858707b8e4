/// @file
/// Graphs as deep, as wide and as large as they come.

#include "graph/RecordingReport.h"
#include "graph/TellingGraph.h"
#include "support/Scale.h"

#include <KesVizCore/core/RenderId.h>
#include <KesVizCore/graph/AttributeVisibility.h>
#include <KesVizCore/graph/Node.h>

#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <pthread.h>
#include <string>

namespace KesVizCore {
namespace {

constexpr std::size_t kSmallStack = 256 * 1024;  // bytes
const std::uint64_t kLevels = support::scaled(1'000'000U);

// Each allocation costs several times as much under the address sanitizer.
#if defined(__SANITIZE_ADDRESS__)
const std::uint64_t kNodes = support::scaled(1'000'000U);
#else
const std::uint64_t kNodes = support::scaled(4'000'000U);
#endif

void* runFunction(void* function) {
    (*static_cast<std::function<void()>*>(function))();
    return nullptr;
}

/// Runs @p work to its end on a thread of that stack.
void runOnSmallStack(std::function<void()> work) {
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, kSmallStack), 0);
    pthread_t thread;
    ASSERT_EQ(pthread_create(&thread, &attributes, &runFunction, &work), 0);
    EXPECT_EQ(pthread_join(thread, nullptr), 0);
    EXPECT_EQ(pthread_attr_destroy(&attributes), 0);
}

/// A chain of kLevels groups from the root down, each linked under the one above by an id of its
/// own; @p furnish may add to each of them. Answers the lowest.
template <typename Furnish>
Node* growChain(Node& root, Furnish furnish) {
    Node* lowest = &root;
    furnish(*lowest);
    for (std::uint64_t level = 2; level <= kLevels; ++level) {
        lowest = lowest->CreateChild(level);
        furnish(*lowest);
    }
    return lowest;
}

Node* growChain(Node& root) {
    return growChain(root, [](Node&) {});
}

/// True when @p id is 1, 2, 3, ... @p length.
bool countsUp(const RenderId& id, std::uint64_t length) {
    if (static_cast<std::uint64_t>(id.Length()) != length) {
        return false;
    }
    for (int place = 0; place < id.Length(); ++place) {
        if (id[place] != static_cast<std::uint64_t>(place) + 1) {
            return false;
        }
    }
    return true;
}

// --- depth --------------------------------------------------------------------------------------

TEST(NodeScaleTest, AChainOfAMillionLevelsIsBuiltAndDestroyedOnASmallStack) {
    bool built = false;
    runOnSmallStack([&] {
        const std::unique_ptr<Node> root = support::newRoot();
        built = growChain(*root)->Id() == kLevels;
    });
    EXPECT_TRUE(built);
}

TEST(NodeScaleTest, AChainOfAMillionLevelsGoesWithTheChildThatIsDeleted) {
    support::Deaths deaths;
    runOnSmallStack([&] {
        const std::unique_ptr<Node> root = support::newRoot();
        growChain(*root)->SetAttribute(
            new support::AnyAttribute(deaths, "the lowest", AttributeType(9)));
        root->DeleteChildById(2);
        deaths.push_back("the root is left");
    });
    EXPECT_EQ(deaths, (support::Deaths{"the lowest", "the root is left"}));
}

TEST(NodeScaleTest, TheRenderIdOfTheMillionthLevelIsTheWholePath) {
    bool whole = false;
    runOnSmallStack([&] {
        const std::unique_ptr<Node> root = support::newRoot();
        const std::unique_ptr<RenderId> id(growChain(*root)->GetRenderId());
        whole = id != nullptr && countsUp(*id, kLevels);
    });
    EXPECT_TRUE(whole);
}

TEST(NodeScaleTest, AChainOfAMillionLevelsIsReportedOnASmallStack) {
    support::CountingReport report;
    runOnSmallStack([&] {
        const std::unique_ptr<Node> root = support::newRoot();
        growChain(*root);
        root->GetReport(report);
    });
    EXPECT_EQ(report.opened, 2 * kLevels - 1);  // each but the root reports its parent
    EXPECT_EQ(report.closed, report.opened);
    EXPECT_EQ(report.attributes, 2 * report.opened);
    EXPECT_EQ(report.deepest, kLevels + 1);
}

TEST(NodeScaleTest, AMillionLevelsOfGroupsWithLeavesAreReportedAndDestroyedOnASmallStack) {
    support::Deaths deaths;
    support::CountingReport report;
    runOnSmallStack([&] {
        const std::unique_ptr<Node> root = support::newRoot();
        growChain(*root, [](Node& group) {
            group.CreateGeoChild(0)->SetName(L"before");  // the group below has an id between
            group.CreateGeoChild(2 * kLevels)->SetName(L"behind");
        });
        root->SetAttribute(new support::AnyAttribute(deaths, "the root", AttributeType(9)));
        root->GetReport(report);
    });
    EXPECT_EQ(report.opened, 2 * 3 * kLevels);  // the nodes, their parents, the attribute
    EXPECT_EQ(report.closed, report.opened);
    EXPECT_EQ(report.deepest, kLevels + 2);
    EXPECT_EQ(deaths, support::Deaths{"the root"});
}

// --- number -------------------------------------------------------------------------------------

/// A root with a tenth of kNodes as leaves of its own and the rest in groups of a thousand nodes.
class LargeGraph {
public:
    static constexpr std::uint64_t kGroupSize = 1000;
    const std::uint64_t kGroups = kNodes / 10 * 9 / kGroupSize;

    LargeGraph() : _root(support::newRoot()) {
        for (std::uint64_t group = 0; group < kGroups; ++group) {
            Node* const parent = _root->CreateChild(Node::GetNextId());
            for (std::uint64_t leaf = 1; leaf < kGroupSize; ++leaf) {
                parent->CreateGeoChild(Node::GetNextId());
            }
        }
        while (Node::GetNextId() <= kNodes) {
            _root->CreateGeoChild(GeoNode::NodeCounter);
        }
    }

    Node& Root() { return *_root; }

    /// The node of that id, found as the graph was built; null when it is not there.
    GeoNode* Find(std::uint64_t id) const {
        const std::uint64_t inGroups = id - 2;
        if (id == 1) {
            return _root.get();
        }
        if (inGroups >= kGroups * kGroupSize || inGroups % kGroupSize == 0) {
            return _root->GetChild(id);
        }
        const auto* const group =
            static_cast<const Node*>(_root->GetChild(id - inGroups % kGroupSize));
        return group != nullptr ? group->GetChild(id) : nullptr;
    }

    std::uint64_t Count() const {
        std::uint64_t count = 1 + _root->Children().size();
        for (const auto& entry : _root->Children()) {
            if (entry.second->HasChildren()) {
                count += static_cast<const Node*>(entry.second)->Children().size();
            }
        }
        return count;
    }

private:
    std::unique_ptr<Node> _root;
};

TEST(NodeScaleTest, MillionsOfNodesAreBuiltCountedFoundAndDestroyed) {
    const LargeGraph graph;
    EXPECT_EQ(graph.Count(), kNodes);
    std::uint64_t found = 0;
    for (std::uint64_t id = 1; id <= kNodes; id += 7) {
        const GeoNode* const node = graph.Find(id);
        found += node != nullptr && node->Id() == id ? 1U : 0U;
    }
    EXPECT_EQ(found, (kNodes + 6) / 7);
    EXPECT_EQ(graph.Find(kNodes + 1), nullptr);
}

// --- names --------------------------------------------------------------------------------------

TEST(NodeScaleTest, ANameOfAMillionCharactersIsKeptAndReportedWhole) {
    constexpr std::size_t length = 1'000'000;
    const std::unique_ptr<Node> root = support::newRoot();
    GeoNode* const leaf = root->CreateGeoChild(5);
    root->SetName(std::wstring(length, L'r'));
    leaf->SetName(std::wstring(length, L'x'));
    EXPECT_EQ(leaf->Name(), std::wstring(length, L'x'));
    EXPECT_EQ(leaf->ToString(), "[5] \"" + std::string(4090, 'x'));
    support::CountingReport report;
    root->GetReport(report);
    EXPECT_EQ(report.characters, 3 * length);  // the root, the leaf and the leaf's parent
}

TEST(NodeScaleTest, LongNamesThatDifferAtTheEndAreStillTwoNames) {
    const std::unique_ptr<Node> root = support::newRoot();
    const std::wstring name(1'000'000, L'x');
    root->CreateGeoChild(5)->SetName(name + L"b");
    root->CreateGeoChild(6)->SetName(name + L"a");
    root->CreateGeoChild(7)->SetName(name + L"b");
    support::CountingReport report;
    root->GetReport(report);
    EXPECT_EQ(report.opened, 1U + 2 * 2);
}

// --- width --------------------------------------------------------------------------------------

const std::uint64_t kWidth = support::scaled(100'000U);

/// Reports a group of kWidth leaves, which must not take a time that grows with their square.
support::CountingReport reportOfWideGroup(const std::function<std::wstring(std::uint64_t)>& name) {
    const std::unique_ptr<Node> root = support::newRoot();
    for (std::uint64_t id = 2; id < 2 + kWidth; ++id) {
        root->CreateGeoChild(id)->SetName(name(id));
    }
    support::CountingReport report;
    const auto begin = std::chrono::steady_clock::now();
    root->GetReport(report);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));
    return report;
}

TEST(NodeScaleTest, AHundredThousandChildrenOfOneNameAreReportedAsOne) {
    const auto report = reportOfWideGroup([](std::uint64_t) { return L"Same name for everyone"; });
    EXPECT_EQ(report.opened, 3U);  // the group, the one leaf and its parent
    EXPECT_EQ(report.closed, 3U);
}

TEST(NodeScaleTest, AHundredThousandChildrenOfDistinctNamesAreAllReported) {
    const auto report = reportOfWideGroup([](std::uint64_t id) {
        return L"A name that begins alike " + std::to_wstring(id * 7919 % 1'000'003);
    });
    EXPECT_EQ(report.opened, 1 + 2 * kWidth);
    EXPECT_EQ(report.closed, report.opened);
}

}  // namespace
}  // namespace KesVizCore
