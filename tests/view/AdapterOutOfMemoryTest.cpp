// What the adapter does where memory runs out in the middle of an edit.

#include "core/OutOfMemory.h"
#include "view/ViewTestKit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <new>
#include <string>
#include <vector>

namespace KesVizCore {
namespace {

using support::addLeaf;
using support::pathOf;
using support::RecordingAdapter;

/// Takes attributes without needing memory, and owns them.
class FrugalAdapter : public RecordingAdapter {
public:
    FrugalAdapter() { applied.reserve(8); }
    ~FrugalAdapter() override {
        for (Attribute* attribute : applied) {
            delete attribute;
        }
    }
    void ApplyAttribute(Attribute* attribute) override { applied.push_back(attribute); }
};

/// Copies a colour and a transform while the @p failing -th allocation fails; answers which of
/// the two the host was given, 'n' for null.
std::string copiedWhileFailing(long failing, bool& failed) {
    FrugalAdapter adapter;
    GeoNode* const open = addLeaf(adapter._rootNode, 2);
    GeoNode* const source = addLeaf(adapter._rootNode, 3);
    source->SetAttribute(new AttributeColor(RGBAColor::Red(), true));
    source->SetAttribute(new AttributeTransform());
    adapter.openOnly(open);
    bool thrown = false;
    {
        const OutOfMemory outOfMemory(failing);
        try {
            adapter.CopyNodeAttributesFrom(*source);
        } catch (const std::bad_alloc&) {
            thrown = true;
        }
        failed = outOfMemory.HasFailed();
    }
    std::string given = thrown ? "thrown" : "";
    for (Attribute* attribute : adapter.applied) {
        given += attribute == nullptr ? "n" : std::to_string(attribute->GetType());
    }
    return given;
}

TEST(AdapterOutOfMemoryTest, CopyThatCannotBeMadeIsHandedOverAsNull) {
    std::vector<std::string> given;
    bool failed = true;
    const long before = OutOfMemory::BlocksInUse();
    for (long failing = 1; failed; ++failing) {
        given.push_back(copiedWhileFailing(failing, failed));
    }
    // The list of the source first, then each copy; in the end all succeed.
    EXPECT_EQ(given, (std::vector<std::string>{"thrown", "n2", "0n", "02"}));
    given = std::vector<std::string>();
    EXPECT_EQ(OutOfMemory::BlocksInUse(), before);
}

TEST(AdapterOutOfMemoryTest, ClearWithoutTheRenderIdOfItsTargetClearsNothing) {
    RecordingAdapter adapter;
    GeoNode* const leaf = addLeaf(adapter._rootNode, 2);
    leaf->AddGeometry(support::newItem(21));
    adapter.openOnly(leaf);
    const RenderId path = pathOf({1, 2});
    bool thrown = false;
    {
        const OutOfMemory outOfMemory(1);
        try {
            adapter.Clear(path);
        } catch (const std::bad_alloc&) {
            thrown = true;
        }
    }
    EXPECT_TRUE(thrown);
    EXPECT_EQ(leaf->Geometry().size(), 1U);
    EXPECT_EQ(adapter.GetCurrentOpenNode(), leaf);
}

/// An adapter in which memory runs out where a certain node is to be opened.
class ThrowingAdapter : public RecordingAdapter {
public:
    bool OpenNode(const std::uint64_t& id, const std::wstring& name) override {
        if (id == throwsAt) {
            throw std::bad_alloc();
        }
        return RecordingAdapter::OpenNode(id, name);
    }
    std::uint64_t throwsAt = 0;
};

/// The path 1, 2, 3, 4 with an item in its leaf, of which 3 cannot be opened.
class OpeningOutOfMemoryTest : public testing::Test {
protected:
    OpeningOutOfMemoryTest()
        : group(support::addGroup(support::addGroup(adapter._rootNode, 2), 3)),
          leaf(addLeaf(group, 4)) {
        leaf->AddGeometry(support::newItem(21));
        adapter.throwsAt = 3;
    }

    ThrowingAdapter adapter;
    Node* group;
    GeoNode* leaf;
    const RenderId path = pathOf({1, 2, 3, 4});
};

TEST_F(OpeningOutOfMemoryTest, OpenNodesClosesWhatItOpened) {
    adapter.openOnly(adapter._rootNode);
    EXPECT_THROW(adapter.OpenNodes(path), std::bad_alloc);
    EXPECT_EQ(adapter._openNodes.size(), 1U);
}

TEST_F(OpeningOutOfMemoryTest, ClearClosesEverything) {
    EXPECT_THROW(adapter.Clear(path), std::bad_alloc);
    EXPECT_TRUE(adapter._openNodes.empty());
    EXPECT_EQ(adapter.log.back(), "View.CloseTopNode");
    EXPECT_EQ(leaf->Geometry().size(), 1U);
}

TEST_F(OpeningOutOfMemoryTest, ClearOfTheOpenNodeLeavesItOpen) {
    adapter.openOnly(group);
    EXPECT_THROW(adapter.Clear(pathOf({1, 2, 3})), std::bad_alloc);
    EXPECT_EQ(adapter._openNodes.size(), 1U);
    EXPECT_EQ(adapter.GetCurrentOpenNode(), group);
    EXPECT_TRUE(group->HasChildren());
}

TEST_F(OpeningOutOfMemoryTest, DeleteNodeClosesWhatItOpened) {
    EXPECT_THROW(adapter.DeleteNode(path), std::bad_alloc);
    EXPECT_TRUE(adapter._openNodes.empty());
    adapter.openOnly(group);
    EXPECT_THROW(adapter.DeleteNode(path), std::bad_alloc);
    EXPECT_EQ(adapter._openNodes.size(), 1U);
    EXPECT_EQ(group->GetChild(4), leaf);
}

// The stack takes memory for many nodes at a time, so all heights up to a few of these are tried.
// A text that has no room for what is yet to come has room for what there is.
TEST(AdapterOutOfMemoryTest, ADumpIsWholeOrThrows) {
    support::RecordingAdapter adapter;
    for (std::uint64_t id = 2; id < 300; ++id) {
        support::addLeaf(adapter._rootNode, id, L"a leaf whose name has a block of its own");
    }
    std::string expected;
    adapter.GetSceneStructure(expected, false);
    int thrown = 0;
    int whole = 0;
    FailEachAllocation([&](long failing) {
        std::string text;
        OutOfMemory outOfMemory(failing);
        try {
            adapter.GetSceneStructure(text, false);
            whole += text == expected ? 1 : 0;
        } catch (const std::bad_alloc&) {
            ++thrown;
        }
        return outOfMemory.HasFailed();
    });
    EXPECT_GT(thrown, 0);
    EXPECT_GT(whole, 1);
}

TEST(AdapterOutOfMemoryTest, AddReferenceWithoutRoomOnTheStackLinksNothing) {
    RecordingAdapter adapter;
    Node* const open = support::addGroup(adapter._rootNode, 2);
    GeoNode* const leaf = addLeaf(support::addGroup(adapter._rootNode, 3), 4);
    const RenderId path = pathOf({1, 3, 4});
    long mostAllocations = 0;
    for (std::size_t height = 1; height < 200; ++height) {
        adapter._openNodes.push(open);
        const long allocations = FailEachAllocation([&](long failing) {
            bool linked = false;
            {
                const OutOfMemory outOfMemory(failing);
                try {
                    linked = adapter.AddReference(path);
                } catch (const std::bad_alloc&) {
                }
            }
            EXPECT_EQ(open->HasChildren(), linked) << height;
            EXPECT_EQ(leaf->Parents().size(), linked ? 2U : 1U) << height;
            EXPECT_EQ(adapter._openNodes.size(), linked ? height + 1 : height);
            return !linked;
        });
        mostAllocations = std::max(mostAllocations, height > 1 ? allocations : 0);
        adapter._openNodes.pop();
        open->DeleteChildById(4);
    }
    EXPECT_GE(mostAllocations, 2);  // of the stack and the map; the list of parents has its room
}

TEST(AdapterOutOfMemoryTest, CopyWithoutRoomForTheListKeepsTheAttributesOfTheOpenNode) {
    FrugalAdapter adapter;
    GeoNode* const open = addLeaf(adapter._rootNode, 2);
    GeoNode* const source = addLeaf(adapter._rootNode, 3);
    open->SetAttribute(new AttributeColor(RGBAColor::Blue(), true));
    source->SetAttribute(new AttributeColor(RGBAColor::Red(), true));
    adapter.openOnly(open);
    bool thrown = false;
    {
        const OutOfMemory outOfMemory(1);
        try {
            adapter.CopyNodeAttributesFrom(*source);
        } catch (const std::bad_alloc&) {
            thrown = true;
        }
    }
    EXPECT_TRUE(thrown);
    EXPECT_NE(open->GetAttribute(AttributeType::Color), nullptr);
}

}  // namespace
}  // namespace KesVizCore
