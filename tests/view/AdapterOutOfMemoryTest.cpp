// What the adapter does where memory runs out in the middle of an edit.

#include "core/OutOfMemory.h"
#include "view/ViewTestKit.h"

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace KesVizCore
