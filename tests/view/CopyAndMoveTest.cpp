// Edits of the current open node: attributes copied, geometry moved, colours and filters set.

#include "view/ViewTestKit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace KesVizCore {
namespace {

using support::addEveryAttribute;
using support::addGroup;
using support::addLeaf;
using support::attributeTypes;
using support::CallLog;
using support::itemIds;
using support::newItem;
using support::pathOf;
using support::RecordingAdapter;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

/// Two leaves, of which one may be opened; each may tell of its attributes' deaths.
struct Pair {
    std::vector<int> destroyedOfOpen;
    std::vector<int> destroyedOfSource;
    std::vector<std::uint64_t> destroyedItems;
    RecordingAdapter adapter;
    GeoNode* open = addLeaf(adapter._rootNode, 2);
    GeoNode* source = addLeaf(adapter._rootNode, 3);
};

/// Collects what it is given and leaves the open node as it is.
class CollectingAdapter : public RecordingAdapter {
public:
    ~CollectingAdapter() override {
        for (Attribute* attribute : applied) {
            delete attribute;
        }
    }
    void ApplyAttribute(Attribute* attribute) override {
        log.push_back("ApplyAttribute");
        applied.push_back(attribute);
        typesThen = attributeTypes(*GetCurrentOpenNode());
    }
    std::vector<int> typesThen;  ///< those of the open node at the last call
};

// --- CopyNodeAttributesFrom ---------------------------------------------------------------------

TEST(CopyNodeAttributesFromTest, DoesNothingWithoutAnOpenNode) {
    Pair pair;
    addEveryAttribute(*pair.source, pair.destroyedOfSource);
    pair.adapter.CopyNodeAttributesFrom(*pair.source);
    EXPECT_THAT(pair.adapter.log, IsEmpty());
    EXPECT_EQ(pair.source->Attributes()->size(), 5U);
    EXPECT_THAT(pair.destroyedOfSource, IsEmpty());
}

TEST(CopyNodeAttributesFromTest, HandsOverColourAndTransformInTheOrderOfTheSource) {
    Pair pair;
    addEveryAttribute(*pair.source, pair.destroyedOfSource);
    pair.adapter.openOnly(pair.open);
    pair.adapter.CopyNodeAttributesFrom(*pair.source);
    EXPECT_THAT(pair.adapter.log, ElementsAre("ApplyAttribute(2)", "ApplyAttribute(0)"));
    EXPECT_THAT(attributeTypes(*pair.open),
                ElementsAre(AttributeType::Transform, AttributeType::Color));
}

TEST(CopyNodeAttributesFromTest, ColourBeforeTransformWhereTheSourceHasItSo) {
    Pair pair;
    pair.source->SetAttribute(new AttributeColor(RGBAColor::Red(), false));
    pair.source->SetAttribute(new AttributeTransform());
    pair.adapter.openOnly(pair.open);
    pair.adapter.CopyNodeAttributesFrom(*pair.source);
    EXPECT_THAT(pair.adapter.log, ElementsAre("ApplyAttribute(0)", "ApplyAttribute(2)"));
}

TEST(CopyNodeAttributesFromTest, CopiesAreEqualAndTheirOwn) {
    Pair pair;
    double matrix[16];
    for (int place = 0; place < 16; ++place) {
        matrix[place] = place + 0.25;
    }
    auto* const transform = new AttributeTransform(matrix);
    auto* const color = new AttributeColor(RGBAColor(1, 2, 3, 255), true);
    pair.source->SetAttribute(transform);
    pair.source->SetAttribute(color);
    pair.adapter.openOnly(pair.open);
    pair.adapter.CopyNodeAttributesFrom(*pair.source);
    ASSERT_EQ(pair.adapter.applied.size(), 2U);
    auto* const transformCopy = dynamic_cast<AttributeTransform*>(pair.adapter.applied[0]);
    auto* const colorCopy = dynamic_cast<AttributeColor*>(pair.adapter.applied[1]);
    ASSERT_NE(transformCopy, nullptr);
    ASSERT_NE(colorCopy, nullptr);
    EXPECT_NE(transformCopy, transform);
    EXPECT_NE(colorCopy, color);
    EXPECT_TRUE(std::equal(matrix, matrix + 16, transformCopy->GetTransform()));
    EXPECT_EQ(colorCopy->GetColor(), RGBAColor(1, 2, 3, 255));
    EXPECT_TRUE(colorCopy->GetIsOpaque());
    EXPECT_TRUE(colorCopy->HasPriority());
}

TEST(CopyNodeAttributesFromTest, SourceKeepsAllThatItHas) {
    Pair pair;
    addEveryAttribute(*pair.source, pair.destroyedOfSource);
    const std::vector<Attribute*> before = *pair.source->Attributes();
    pair.adapter.openOnly(pair.open);
    pair.adapter.CopyNodeAttributesFrom(*pair.source);
    EXPECT_EQ(*pair.source->Attributes(), before);
    EXPECT_THAT(pair.destroyedOfSource, IsEmpty());
}

TEST(CopyNodeAttributesFromTest, DestroysColourAndTransformOfTheOpenNodeAndKeepsTheRest) {
    Pair pair;
    addEveryAttribute(*pair.open, pair.destroyedOfOpen);
    pair.adapter.openOnly(pair.open);
    pair.adapter.CopyNodeAttributesFrom(*pair.source);  // which has none
    EXPECT_THAT(pair.adapter.log, IsEmpty());
    EXPECT_THAT(pair.destroyedOfOpen, ElementsAre(AttributeType::Color, AttributeType::Transform));
    EXPECT_THAT(
        attributeTypes(*pair.open),
        ElementsAre(AttributeType::LineStyle, AttributeType::Visibility, AttributeType::Highlight));
}

TEST(CopyNodeAttributesFromTest, OtherAttributesOfTheSourceAreNotCopied) {
    Pair pair;
    pair.source->SetAttribute(new AttributeLineStyle(1.0F, "solid"));
    pair.source->SetAttribute(new AttributeVisibility(false));
    pair.source->SetAttribute(new AttributeHighlight(RGBAColor::Red()));
    pair.adapter.openOnly(pair.open);
    pair.adapter.CopyNodeAttributesFrom(*pair.source);
    EXPECT_THAT(pair.adapter.log, IsEmpty());
    EXPECT_THAT(attributeTypes(*pair.open), IsEmpty());
}

TEST(CopyNodeAttributesFromTest, OpenNodeIsStrippedBeforeTheFirstCopyIsHandedOver) {
    std::vector<int> destroyed;
    CollectingAdapter adapter;
    GeoNode* const open = addLeaf(adapter._rootNode, 2);
    GeoNode* const source = addLeaf(adapter._rootNode, 3);
    addEveryAttribute(*open, destroyed);
    source->SetAttribute(new AttributeColor(RGBAColor::Red(), false));
    adapter.openOnly(open);
    adapter.CopyNodeAttributesFrom(*source);
    EXPECT_THAT(adapter.typesThen, ElementsAre(AttributeType::LineStyle, AttributeType::Visibility,
                                               AttributeType::Highlight));
}

TEST(CopyNodeAttributesFromTest, WhetherTheOpenNodeGetsTheCopiesIsTheHostsChoice) {
    CollectingAdapter adapter;
    GeoNode* const open = addLeaf(adapter._rootNode, 2);
    GeoNode* const source = addLeaf(adapter._rootNode, 3);
    source->SetAttribute(new AttributeTransform());
    source->SetAttribute(new AttributeColor(RGBAColor::Red(), false));
    adapter.openOnly(open);
    adapter.CopyNodeAttributesFrom(*source);
    EXPECT_EQ(adapter.applied.size(), 2U);
    EXPECT_THAT(attributeTypes(*open), IsEmpty());
}

// The open node is stripped before the source is read.
TEST(CopyNodeAttributesFromTest, NodeThatIsItsOwnSourceLosesColourAndTransform) {
    Pair pair;
    addEveryAttribute(*pair.open, pair.destroyedOfOpen);
    pair.adapter.openOnly(pair.open);
    pair.adapter.CopyNodeAttributesFrom(*pair.open);
    EXPECT_THAT(pair.adapter.log, IsEmpty());
    EXPECT_THAT(pair.destroyedOfOpen, ElementsAre(AttributeType::Color, AttributeType::Transform));
    EXPECT_THAT(
        attributeTypes(*pair.open),
        ElementsAre(AttributeType::LineStyle, AttributeType::Visibility, AttributeType::Highlight));
}

// --- TransferNodeGeometryFrom -------------------------------------------------------------------

TEST(TransferNodeGeometryFromTest, DoesNothingWithoutAnOpenNode) {
    Pair pair;
    pair.source->AddGeometry(newItem(31, &pair.destroyedItems));
    pair.adapter.TransferNodeGeometryFrom(*pair.source);
    EXPECT_THAT(itemIds(*pair.source), ElementsAre(31));
    EXPECT_THAT(pair.destroyedItems, IsEmpty());
}

TEST(TransferNodeGeometryFromTest, MovesAllItemsBehindThoseOfTheOpenNode) {
    Pair pair;
    pair.open->AddGeometry(newItem(21, &pair.destroyedItems));
    pair.source->AddGeometry(newItem(32, &pair.destroyedItems));
    pair.source->AddGeometry(newItem(31, &pair.destroyedItems));
    pair.adapter.openOnly(pair.open);
    pair.adapter.TransferNodeGeometryFrom(*pair.source);
    EXPECT_THAT(itemIds(*pair.open), ElementsAre(21, 32, 31));
    EXPECT_THAT(itemIds(*pair.source), IsEmpty());
    EXPECT_THAT(pair.destroyedItems, IsEmpty());
    EXPECT_THAT(pair.adapter.log, IsEmpty());
}

TEST(TransferNodeGeometryFromTest, OwnershipMovesWithTheItems) {
    Pair pair;
    pair.source->AddGeometry(newItem(31, &pair.destroyedItems));
    pair.adapter.openOnly(pair.open);
    pair.adapter.TransferNodeGeometryFrom(*pair.source);
    pair.adapter._rootNode->DeleteChildById(3);
    EXPECT_THAT(pair.destroyedItems, IsEmpty());
    pair.adapter.closeAll();
    pair.adapter._rootNode->DeleteChildById(2);
    EXPECT_THAT(pair.destroyedItems, ElementsAre(31));
}

TEST(TransferNodeGeometryFromTest, FromItselfChangesNothing) {
    Pair pair;
    pair.open->AddGeometry(newItem(21, &pair.destroyedItems));
    pair.open->AddGeometry(newItem(22, &pair.destroyedItems));
    pair.adapter.openOnly(pair.open);
    pair.adapter.TransferNodeGeometryFrom(*pair.open);
    EXPECT_THAT(itemIds(*pair.open), ElementsAre(21, 22));
    EXPECT_THAT(pair.destroyedItems, IsEmpty());
}

// --- SetColor -----------------------------------------------------------------------------------

RGBAColor colorOf(AGeometryItem& item) {
    RGBAColor color;
    item.GetColor(color);
    return color;
}

TEST(SetColorTest, ColoursEveryItemOfTheOpenNode) {
    Pair pair;
    AGeometryItem* const first = newItem(21);
    AGeometryItem* const second = newItem(22);
    pair.open->AddGeometry(first);
    pair.open->AddGeometry(second);
    pair.adapter.openOnly(pair.open);
    pair.adapter.SetColor(RGBAColor(255, 0, 51, 255));
    EXPECT_EQ(colorOf(*first), RGBAColor(255, 0, 51, 255));
    EXPECT_EQ(colorOf(*second), RGBAColor(255, 0, 51, 255));
}

TEST(SetColorTest, PassesOverNullItems) {
    Pair pair;
    AGeometryItem* const item = newItem(21);
    pair.open->AddGeometry(nullptr);
    pair.open->AddGeometry(item);
    pair.adapter.openOnly(pair.open);
    pair.adapter.SetColor(RGBAColor::Red());
    EXPECT_EQ(colorOf(*item), RGBAColor::Red());
}

TEST(SetColorTest, LeavesTheChildrenAlone) {
    RecordingAdapter adapter;
    Node* const group = addGroup(adapter._rootNode, 2);
    AGeometryItem* const own = newItem(21);
    AGeometryItem* const below = newItem(31);
    group->AddGeometry(own);
    addLeaf(group, 3)->AddGeometry(below);
    const RGBAColor before = colorOf(*below);
    adapter.openOnly(group);
    adapter.SetColor(RGBAColor::Red());
    EXPECT_EQ(colorOf(*own), RGBAColor::Red());
    EXPECT_EQ(colorOf(*below), before);
}

TEST(SetColorTest, MakesNoAttribute) {
    Pair pair;
    pair.open->AddGeometry(newItem(21));
    pair.adapter.openOnly(pair.open);
    pair.adapter.SetColor(RGBAColor::Red());
    EXPECT_THAT(attributeTypes(*pair.open), IsEmpty());
    EXPECT_THAT(pair.adapter.log, IsEmpty());
}

TEST(SetColorTest, ChangesNothingWithoutAnOpenNodeOrWithoutGeometry) {
    Pair pair;
    AGeometryItem* const item = newItem(31);
    pair.source->AddGeometry(item);
    const RGBAColor before = colorOf(*item);
    pair.adapter.SetColor(RGBAColor::Red());
    pair.adapter.openOnly(pair.open);
    pair.adapter.SetColor(RGBAColor::Red());
    EXPECT_EQ(colorOf(*item), before);
    EXPECT_THAT(attributeTypes(*pair.open), IsEmpty());
    EXPECT_THAT(itemIds(*pair.open), IsEmpty());
}

// --- SetFilterId --------------------------------------------------------------------------------

TEST(SetFilterIdTest, TagsTheOpenNodeAlone) {
    RecordingAdapter adapter;
    Node* const group = addGroup(adapter._rootNode, 2);
    GeoNode* const below = addLeaf(group, 3);
    adapter.openOnly(group);
    adapter.SetFilterId(10002);
    EXPECT_EQ(group->GetFilterID(), 10002);
    EXPECT_EQ(below->GetFilterID(), -1);
    EXPECT_EQ(adapter._rootNode->GetFilterID(), -1);
    adapter.SetFilterId(-5);
    EXPECT_EQ(group->GetFilterID(), -5);
    EXPECT_THAT(adapter.log, IsEmpty());
}

TEST(SetFilterIdTest, DoesNothingWithoutAnOpenNode) {
    RecordingAdapter adapter;
    adapter.SetFilterId(7);
    EXPECT_EQ(adapter._rootNode->GetFilterID(), -1);
}

}  // namespace
}  // namespace KesVizCore
