#include "graph/TellingGraph.h"
#include "support/RecordingHost.h"

#include <KesVizCore/core/RenderId.h>
#include <KesVizCore/graph/GeoNode.h>
#include <KesVizCore/graph/Node.h>
#include <KesVizCore/report/Utils.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace KesVizCore {
namespace {

using support::AnyAttribute;
using support::Deaths;
using support::newItem;
using Ids = std::vector<std::uint64_t>;
using Items = std::vector<AGeometryItem*>;

constexpr std::uint64_t kLargestId = std::numeric_limits<std::uint64_t>::max();

/// A leaf 5 under a root, and what died of its attributes and items.
class GeoNodeTest : public testing::Test {
protected:
    AnyAttribute* newAttribute(const std::string& name, int type) {
        return new AnyAttribute(deaths, name, AttributeType(type));
    }

    std::vector<Attribute*>& attributes() { return *leaf->Attributes(); }

    Deaths deaths;
    Ids destroyedItems;
    std::unique_ptr<Node> root = support::newRoot();
    GeoNode* leaf = root->CreateGeoChild(5);
};

/// The path as text, and the answer of GetRenderId released.
std::string pathOf(const GeoNode& node) {
    RenderId* id = node.GetRenderId();
    const std::string text = id != nullptr ? id->ToString() : "null";
    RenderId::DeleteRenderId(id);
    return text;
}

// --- destruction --------------------------------------------------------------------------------

TEST_F(GeoNodeTest, DestructionDestroysAttributesThenGeometry) {
    struct Item : support::AnyItem {
        Item(Deaths& log, std::uint64_t id) : TellingItem(nullptr, id, nullptr), deaths(log) {}
        ~Item() override { deaths.push_back("item " + std::to_string(ID())); }
        Item(const Item&) = delete;
        Item& operator=(const Item&) = delete;
        Deaths& deaths;
    };
    leaf->AddGeometry(new Item(deaths, 2));
    leaf->AddGeometry(new Item(deaths, 1));
    leaf->SetAttribute(newAttribute("attribute 9", 9));
    leaf->SetAttribute(newAttribute("attribute 8", 8));
    root->DeleteChildById(5);
    EXPECT_EQ(deaths, (Deaths{"attribute 9", "attribute 8", "item 2", "item 1"}));
}

TEST_F(GeoNodeTest, DestructionEmptiesParentsThenAttributesThenGeometry) {
    // What dies with the node may still look at it.
    struct LookingAttribute : support::HostAttribute {
        LookingAttribute(GeoNode& leaf, bool& saw)
            : HostAttribute(AttributeType(9)), node(leaf), sawParents(saw) {}
        ~LookingAttribute() override { sawParents = node.HasParent(); }
        LookingAttribute(const LookingAttribute&) = delete;
        LookingAttribute& operator=(const LookingAttribute&) = delete;
        GeoNode& node;
        bool& sawParents;
    };
    struct LookingItem : support::AnyItem {
        LookingItem(GeoNode& leaf, bool& saw)
            : TellingItem(nullptr, std::uint64_t{1}, nullptr), node(leaf), sawAttributes(saw) {}
        ~LookingItem() override { sawAttributes = !node.Attributes()->empty(); }
        LookingItem(const LookingItem&) = delete;
        LookingItem& operator=(const LookingItem&) = delete;
        GeoNode& node;
        bool& sawAttributes;
    };
    bool sawParents = true;
    bool sawAttributes = true;
    leaf->SetAttribute(new LookingAttribute(*leaf, sawParents));
    leaf->AddGeometry(new LookingItem(*leaf, sawAttributes));
    root->RemoveChildById(5);
    delete leaf;
    EXPECT_FALSE(sawParents);
    EXPECT_FALSE(sawAttributes);
}

TEST_F(GeoNodeTest, DestructionSkipsNullAttributesAndItems) {
    leaf->AddGeometry(nullptr);
    leaf->AddGeometry(newItem(1, &destroyedItems));
    attributes().push_back(nullptr);
    attributes().push_back(newAttribute("behind null", 9));
    root->DeleteChildById(5);
    EXPECT_EQ(deaths, Deaths{"behind null"});
    EXPECT_EQ(destroyedItems, Ids{1});
}

TEST_F(GeoNodeTest, DestructionTellsNoParent) {
    delete leaf;
    EXPECT_EQ(root->Children().count(5), 1U);
    EXPECT_TRUE(root->RemoveChildById(5));  // before the root follows the pointer
}

TEST_F(GeoNodeTest, DestructionRunsTheHostsOwnDestructorFirst) {
    auto* hosts = new support::HostLeaf(deaths, "host's leaf", 6);
    hosts->SetAttribute(newAttribute("its attribute", 9));
    root->AddChild(hosts);
    root->DeleteChildById(6);
    EXPECT_EQ(deaths, (Deaths{"host's leaf", "its attribute"}));
}

// --- a leaf -------------------------------------------------------------------------------------

TEST_F(GeoNodeTest, HasNoChildren) {
    EXPECT_FALSE(leaf->HasChildren());
}

TEST_F(GeoNodeTest, IsMadeByNodesAlone) {
    EXPECT_FALSE((std::is_constructible_v<GeoNode, std::uint64_t>));
    EXPECT_TRUE(std::has_virtual_destructor_v<GeoNode>);
}

// --- geometry -----------------------------------------------------------------------------------

TEST_F(GeoNodeTest, AddGeometryAppendsWhateverTheId) {
    AGeometryItem* const first = newItem(9);
    AGeometryItem* const second = newItem(1);
    AGeometryItem* const third = newItem(9);
    leaf->AddGeometry(first);
    leaf->AddGeometry(second);
    leaf->AddGeometry(third);
    EXPECT_EQ(leaf->Geometry(), (Items{first, second, third}));
}

TEST_F(GeoNodeTest, AddGeometryChecksNeitherForNullNorForTheSameItem) {
    AGeometryItem* const item = newItem(9);
    leaf->AddGeometry(nullptr);
    leaf->AddGeometry(item);
    leaf->AddGeometry(item);
    EXPECT_EQ(leaf->Geometry(), (Items{nullptr, item, item}));
    leaf->DeleteGeometryById(9);  // or it would be destroyed twice
}

TEST_F(GeoNodeTest, DeleteGeometryByIdOnlyDetaches) {
    const std::unique_ptr<AGeometryItem> item(newItem(9, &destroyedItems));
    leaf->AddGeometry(item.get());
    leaf->DeleteGeometryById(9);
    EXPECT_TRUE(leaf->Geometry().empty());
    EXPECT_TRUE(destroyedItems.empty());
    EXPECT_EQ(item->ID(), 9U);
}

TEST_F(GeoNodeTest, DeleteGeometryByIdTakesTheFirstOfThatIdPastNulls) {
    const std::unique_ptr<AGeometryItem> first(newItem(9));
    AGeometryItem* const before = newItem(1);
    AGeometryItem* const second = newItem(9);
    for (AGeometryItem* item :
         {static_cast<AGeometryItem*>(nullptr), before, first.get(), second}) {
        leaf->AddGeometry(item);
    }
    leaf->DeleteGeometryById(9);
    EXPECT_EQ(leaf->Geometry(), (Items{nullptr, before, second}));
}

TEST_F(GeoNodeTest, DeleteGeometryByIdWithoutSuchAnItemChangesNothing) {
    AGeometryItem* const item = newItem(9);
    leaf->DeleteGeometryById(9);
    leaf->AddGeometry(item);
    leaf->AddGeometry(nullptr);
    leaf->DeleteGeometryById(8);
    EXPECT_EQ(leaf->Geometry(), (Items{item, nullptr}));
}

TEST_F(GeoNodeTest, AnItemThatLooksAtItsNodeWhenAskedIsFoundAndDetached) {
    struct Looking : AGeometryItemVertex {
        explicit Looking(const GeoNode& owner) : AGeometryItemVertex(9, nullptr), node(owner) {}
        std::uint64_t ID() const override { return node.Geometry().size() == 1 ? 9 : 8; }
        bool GetExtents(float* /*extents*/) const override { return false; }
        void SetVisible(const bool& /*visible*/) override {}
        bool IsVisible() const override { return true; }
        const GeoNode& node;
    };
    const Looking item(*leaf);
    leaf->AddGeometry(const_cast<Looking*>(&item));
    leaf->DeleteGeometryById(9);
    EXPECT_TRUE(leaf->Geometry().empty());
}

TEST_F(GeoNodeTest, DeleteAllGeometryDestroysEveryItemInOrder) {
    leaf->AddGeometry(newItem(9, &destroyedItems));
    leaf->AddGeometry(nullptr);
    leaf->AddGeometry(newItem(1, &destroyedItems));
    leaf->DeleteAllGeometry();
    EXPECT_EQ(destroyedItems, (Ids{9, 1}));
    EXPECT_TRUE(leaf->Geometry().empty());
    leaf->DeleteAllGeometry();
    EXPECT_EQ(destroyedItems.size(), 2U);
}

TEST_F(GeoNodeTest, GeometryOperationsAreTheHostsToOverride) {
    struct Leaf : support::HostLeaf {
        using HostLeaf::HostLeaf;
        void AddGeometry(AGeometryItem*) override { asked += "add "; }
        void DeleteGeometryById(const std::uint64_t&) override { asked += "by id "; }
        void DeleteAllGeometry() override { asked += "all "; }
        std::string asked;
    };
    Leaf hosts(deaths, "host's leaf", 6);
    GeoNode& node = hosts;
    node.AddGeometry(nullptr);
    node.DeleteGeometryById(1);
    node.DeleteAllGeometry();
    EXPECT_EQ(hosts.asked, "add by id all ");
}

// --- text form ----------------------------------------------------------------------------------

TEST_F(GeoNodeTest, ToStringCountsWhatTheNodeHolds) {
    leaf->SetName(L"Bracket");
    leaf->AddGeometry(newItem(1));
    leaf->AddGeometry(newItem(2));
    leaf->SetAttribute(newAttribute("any", 9));
    EXPECT_EQ(leaf->ToString(), "[5] \"Bracket\" parents(1) attributes(1) geoEntities(2)");
}

TEST_F(GeoNodeTest, ToStringOfAnEmptyLeaf) {
    const support::HostLeaf alone(deaths, "alone", kLargestId);
    EXPECT_EQ(alone.ToString(),
              "[18446744073709551615] \"\" parents(0) attributes(0) geoEntities(0)");
}

TEST_F(GeoNodeTest, ToStringTakesFormatsInTheNameAsTheyAre) {
    leaf->SetName(L"%s %d \"%%\"");
    EXPECT_EQ(leaf->ToString(), "[5] \"%s %d \"%%\"\" parents(1) attributes(0) geoEntities(0)");
}

TEST_F(GeoNodeTest, ToStringEndsANameAtAZero) {
    leaf->SetName(std::wstring(L"a\0b", 3));
    EXPECT_EQ(leaf->ToString(), "[5] \"a\" parents(1) attributes(0) geoEntities(0)");
}

TEST_F(GeoNodeTest, ToStringIsCutAfter4095Characters) {
    const std::string whole = "[5] \"\" parents(1) attributes(0) geoEntities(0)";
    const std::size_t longestName = 4095 - whole.size();
    leaf->SetName(std::wstring(longestName, L'x'));
    EXPECT_EQ(leaf->ToString(), "[5] \"" + std::string(longestName, 'x') + whole.substr(5));
    leaf->SetName(std::wstring(longestName + 1, L'x'));
    EXPECT_EQ(leaf->ToString(),
              "[5] \"" + std::string(longestName + 1, 'x') + whole.substr(5, whole.size() - 6));
    leaf->SetName(std::wstring(10000, L'x'));
    EXPECT_EQ(leaf->ToString(), "[5] \"" + std::string(4090, 'x'));
}

TEST_F(GeoNodeTest, ToStringConvertsTheNameByTheLocale) {
    leaf->SetName(L"Bl\u00E4tter");
    EXPECT_EQ(
        leaf->ToString(),
        Utils::WstringToString(L"[5] \"Bl\u00E4tter\" parents(1) attributes(0) geoEntities(0)"));
}

// --- copies -------------------------------------------------------------------------------------

TEST_F(GeoNodeTest, CopySharesEveryPointerOfTheOriginal) {
    leaf->SetName(L"original");
    leaf->SetFilterID(3);
    leaf->SetAttribute(newAttribute("shared attribute", 9));
    leaf->AddGeometry(newItem(1, &destroyedItems));
    {
        GeoNode copy(*leaf);
        EXPECT_EQ(copy.Id(), 5U);
        EXPECT_EQ(copy.Name(), L"original");
        EXPECT_EQ(copy.GetFilterID(), 3);
        EXPECT_EQ(*copy.Attributes(), attributes());
        EXPECT_EQ(copy.Parents(), leaf->Parents());
        EXPECT_EQ(copy.Geometry(), leaf->Geometry());
        copy.Attributes()->clear();  // the original owns them
        copy.DeleteGeometryById(1);
    }
    EXPECT_TRUE(deaths.empty());
    EXPECT_TRUE(destroyedItems.empty());
    EXPECT_EQ(leaf->Geometry().size(), 1U);
}

TEST_F(GeoNodeTest, CopyLeavesTheParentsChildAlone) {
    GeoNode copy(*leaf);
    EXPECT_EQ(root->GetChild(5), leaf);
}

TEST_F(GeoNodeTest, AssignmentTakesEverythingWithoutDestroyingAnything) {
    GeoNode* const other = root->CreateChild(6)->CreateGeoChild(7);
    const std::unique_ptr<Attribute> before(newAttribute("before", 8));
    other->SetAttribute(before.get());
    leaf->SetName(L"original");
    leaf->SetFilterID(3);
    leaf->SetAttribute(newAttribute("shared attribute", 9));
    leaf->AddGeometry(newItem(1, &destroyedItems));
    GeoNode& assigned = *other = *leaf;
    EXPECT_EQ(&assigned, other);
    EXPECT_EQ(other->Id(), 5U);
    EXPECT_EQ(other->Name(), L"original");
    EXPECT_EQ(other->GetFilterID(), 3);
    EXPECT_EQ(*other->Attributes(), attributes());
    EXPECT_EQ(other->Parents(), std::vector<Node*>{root.get()});
    EXPECT_EQ(other->Geometry(), leaf->Geometry());
    EXPECT_TRUE(deaths.empty());
    other->Attributes()->clear();
    other->DeleteGeometryById(1);
}

// --- identity -----------------------------------------------------------------------------------

TEST_F(GeoNodeTest, IdIsTheOneOfItsMaking) {
    EXPECT_EQ(leaf->Id(), 5U);
    EXPECT_EQ(root->CreateGeoChild(0)->Id(), 0U);
    EXPECT_EQ(root->CreateGeoChild(kLargestId)->Id(), kLargestId);
}

TEST_F(GeoNodeTest, NameIsEmptyUntilItIsSet) {
    EXPECT_EQ(leaf->Name(), L"");
    leaf->SetName(L"\u2300 Bore");
    EXPECT_EQ(leaf->Name(), L"\u2300 Bore");
    leaf->SetName(L"");
    EXPECT_EQ(leaf->Name(), L"");
}

TEST_F(GeoNodeTest, NameIsACopy) {
    leaf->SetName(L"first");
    const auto name = leaf->Name();
    leaf->SetName(L"second");
    EXPECT_EQ(name, L"first");
    EXPECT_FALSE(std::is_reference_v<decltype(leaf->Name())>);
}

TEST_F(GeoNodeTest, FilterIdIsMinusOneUntilItIsSet) {
    EXPECT_EQ(leaf->GetFilterID(), -1);
    for (const int filterId : {7, 0, std::numeric_limits<int>::min()}) {
        leaf->SetFilterID(filterId);
        EXPECT_EQ(leaf->GetFilterID(), filterId);
    }
}

TEST_F(GeoNodeTest, RenderIdOfTheRootIsOne) {
    EXPECT_EQ(pathOf(*root), "[ 1 View3D ]");
}

TEST_F(GeoNodeTest, RenderIdIsThePathFromTheTopmostAncestor) {
    GeoNode* const deep = root->CreateChild(7)->CreateChild(kLargestId)->CreateGeoChild(0);
    EXPECT_EQ(pathOf(*deep), "[ 1, 7, 18446744073709551615, 0 View3D ]");
    EXPECT_EQ(pathOf(*leaf), "[ 1, 5 View3D ]");
}

TEST_F(GeoNodeTest, RenderIdFollowsTheParentThatWasAddedFirst) {
    Node* const first = root->CreateChild(9);
    Node* const second = root->CreateChild(2);
    GeoNode* const shared = first->CreateGeoChild(6);
    second->AddChild(shared);
    EXPECT_EQ(pathOf(*shared), "[ 1, 9, 6 View3D ]");
    first->DeleteChildById(6);
    EXPECT_EQ(pathOf(*shared), "[ 1, 2, 6 View3D ]");
}

TEST_F(GeoNodeTest, RenderIdEndsAtANullParent) {
    support::HostNode top(deaths, "top", 3);
    top.AddToParents(nullptr);
    top.AddToParents(root.get());
    EXPECT_EQ(pathOf(top), "[ 3 View3D ]");
}

TEST_F(GeoNodeTest, RenderIdOfANodeWithoutParentsIsItsOwnId) {
    EXPECT_EQ(pathOf(support::HostLeaf(deaths, "alone", 8)), "[ 8 View3D ]");
}

TEST_F(GeoNodeTest, RenderIdIsANewOneForEveryCall) {
    const std::unique_ptr<RenderId> first(leaf->GetRenderId());
    const std::unique_ptr<RenderId> second(leaf->GetRenderId());
    EXPECT_NE(first, second);
    EXPECT_EQ(*first, *second);
}

// --- parents ------------------------------------------------------------------------------------

TEST_F(GeoNodeTest, HasParentWithAtLeastOne) {
    EXPECT_TRUE(leaf->HasParent());
    EXPECT_FALSE(root->HasParent());
}

TEST_F(GeoNodeTest, ParentsStandInTheOrderOfTheirAdding) {
    Node* const first = root->CreateChild(9);
    Node* const second = root->CreateChild(2);
    first->AddChild(leaf);
    second->AddChild(leaf);
    EXPECT_EQ(leaf->Parents(), (std::vector<Node*>{root.get(), first, second}));
    first->DeleteChildById(5);
    second->DeleteChildById(5);
}

TEST_F(GeoNodeTest, GetParentFindsTheFirstOfThatId) {
    const std::unique_ptr<Node> otherRoot = support::newRoot();
    Node* const group = otherRoot->CreateChild(5);
    otherRoot->AddChild(leaf);  // refused, the group has that id
    group->AddChild(leaf);
    leaf->AddToParents(otherRoot.get());
    EXPECT_EQ(leaf->GetParent(1), root.get());  // both roots have id 1
    EXPECT_EQ(leaf->GetParent(5), group);
    leaf->RemoveFromParents(otherRoot.get());
    leaf->RemoveFromParents(group);
    group->RemoveChildById(5);
}

TEST_F(GeoNodeTest, GetParentAnswersNullWithoutSuchAParent) {
    EXPECT_EQ(leaf->GetParent(5), nullptr);
    EXPECT_EQ(root->GetParent(1), nullptr);
}

TEST_F(GeoNodeTest, GetParentPassesANullParent) {
    support::HostLeaf alone(deaths, "alone", 8);
    alone.AddToParents(nullptr);
    alone.AddToParents(root.get());
    EXPECT_EQ(alone.GetParent(1), root.get());
}

TEST_F(GeoNodeTest, AddToParentsRecordsAParentOnce) {
    support::HostLeaf alone(deaths, "alone", 8);
    Node* const group = root->CreateChild(9);
    alone.AddToParents(root.get());
    alone.AddToParents(group);
    alone.AddToParents(root.get());
    EXPECT_EQ(alone.Parents(), (std::vector<Node*>{root.get(), group}));
}

TEST_F(GeoNodeTest, AddToParentsMakesOnlyThisSideOfTheLink) {
    support::HostLeaf alone(deaths, "alone", 8);
    alone.AddToParents(root.get());
    EXPECT_EQ(root->GetChild(8), nullptr);
}

TEST_F(GeoNodeTest, RemoveFromParentsKeepsTheOrderOfTheOthers) {
    support::HostLeaf alone(deaths, "alone", 8);
    std::vector<Node*> groups;
    for (const std::uint64_t id : Ids{13, 12, 11, 10}) {
        groups.push_back(root->CreateChild(id));
        alone.AddToParents(groups.back());
    }
    alone.RemoveFromParents(groups[1]);
    EXPECT_EQ(alone.Parents(), (std::vector<Node*>{groups[0], groups[2], groups[3]}));
    alone.RemoveFromParents(groups[1]);
    alone.RemoveFromParents(nullptr);
    EXPECT_EQ(alone.Parents().size(), 3U);
}

TEST_F(GeoNodeTest, RemoveFromParentsMakesOnlyThisSideOfTheLink) {
    leaf->RemoveFromParents(root.get());
    EXPECT_FALSE(leaf->HasParent());
    EXPECT_EQ(root->GetChild(5), leaf);
    leaf->AddToParents(root.get());  // so that the root destroys it
}

// --- attributes ---------------------------------------------------------------------------------

TEST_F(GeoNodeTest, AttributesAreTheNodesOwnList) {
    EXPECT_TRUE(attributes().empty());
    attributes().push_back(newAttribute("pushed", 9));
    EXPECT_EQ(leaf->GetAttribute(9), attributes()[0]);
    root->DeleteChildById(5);
    EXPECT_EQ(deaths, Deaths{"pushed"});
}

TEST_F(GeoNodeTest, SetAttributeRefusesNull) {
    EXPECT_FALSE(leaf->SetAttribute(nullptr));
    EXPECT_TRUE(attributes().empty());
}

TEST_F(GeoNodeTest, SetAttributeAppendsANewType) {
    Attribute* const second = newAttribute("type 4", AttributeType::Visibility);
    Attribute* const first = newAttribute("type 0", AttributeType::Color);
    EXPECT_TRUE(leaf->SetAttribute(second));
    EXPECT_TRUE(leaf->SetAttribute(first));
    EXPECT_EQ(attributes(), (std::vector<Attribute*>{second, first}));
}

TEST_F(GeoNodeTest, SetAttributeReplacesTheOneOfItsTypeInPlaceAndDestroysIt) {
    leaf->SetAttribute(newAttribute("old", 8));
    leaf->SetAttribute(newAttribute("other", 9));
    Attribute* const replacing = newAttribute("new", 8);
    EXPECT_TRUE(leaf->SetAttribute(replacing));
    EXPECT_EQ(deaths, Deaths{"old"});
    ASSERT_EQ(attributes().size(), 2U);
    EXPECT_EQ(attributes()[0], replacing);
}

TEST_F(GeoNodeTest, SetAttributeWithTheStoredOneKeepsIt) {
    Attribute* const attribute = newAttribute("kept", 8);
    leaf->SetAttribute(attribute);
    EXPECT_TRUE(leaf->SetAttribute(attribute));
    EXPECT_TRUE(deaths.empty());
    EXPECT_EQ(attributes(), std::vector<Attribute*>{attribute});
}

TEST_F(GeoNodeTest, AnAttributeThatLooksAtItsNodeWhenAskedIsFoundReplacedAndDetached) {
    struct Looking : support::HostAttribute {
        explicit Looking(GeoNode& owner) : HostAttribute(AttributeType(8)), node(owner) {}
        AttributeType GetType() override {
            return AttributeType(node.Attributes()->empty() ? 9 : 8);
        }
        GeoNode& node;
    };
    GeoNode* const found = root->CreateGeoChild(6);
    auto* const foundOne = new Looking(*found);
    found->SetAttribute(foundOne);
    EXPECT_EQ(found->GetAttribute(8), foundOne);
    GeoNode* const replaced = root->CreateGeoChild(7);
    replaced->SetAttribute(new Looking(*replaced));
    Attribute* const replacing = newAttribute("new", 8);
    replaced->SetAttribute(replacing);
    EXPECT_EQ(*replaced->Attributes(), std::vector<Attribute*>{replacing});
    GeoNode* const detached = root->CreateGeoChild(8);
    const std::unique_ptr<Attribute> detachedOne = std::make_unique<Looking>(*detached);
    detached->SetAttribute(detachedOne.get());
    detached->DeleteAttribute(8);
    EXPECT_TRUE(detached->Attributes()->empty());
}

TEST_F(GeoNodeTest, SetAttributeAsksTheAttributeForItsType) {
    struct Changing : support::HostAttribute {
        Changing() : HostAttribute(AttributeType(8)) {}
        AttributeType GetType() override { return 9; }
    };
    Attribute* const stored = newAttribute("type 8", 8);
    leaf->SetAttribute(stored);
    auto* const changing = new Changing;
    leaf->SetAttribute(changing);
    EXPECT_TRUE(deaths.empty());
    EXPECT_EQ(leaf->GetAttribute(8), stored);
    EXPECT_EQ(leaf->GetAttribute(9), changing);
}

TEST_F(GeoNodeTest, GetAttributeFindsTheFirstOfItsType) {
    Attribute* const first = newAttribute("first", 8);
    attributes() = {nullptr, newAttribute("other", 9), first, newAttribute("second", 8)};
    EXPECT_EQ(leaf->GetAttribute(8), first);
}

TEST_F(GeoNodeTest, GetAttributeAnswersNullWithoutSuchAType) {
    leaf->SetAttribute(newAttribute("any", 8));
    EXPECT_EQ(leaf->GetAttribute(AttributeType::Color), nullptr);
    EXPECT_EQ(leaf->GetAttribute(AttributeType()), nullptr);
}

TEST_F(GeoNodeTest, DeleteAttributeOnlyDetaches) {
    const std::unique_ptr<Attribute> attribute(newAttribute("detached", 8));
    Attribute* const other = newAttribute("other", 9);
    leaf->SetAttribute(attribute.get());
    leaf->SetAttribute(other);
    leaf->DeleteAttribute(8);
    EXPECT_EQ(attributes(), std::vector<Attribute*>{other});
    EXPECT_TRUE(deaths.empty());
    EXPECT_TRUE(attribute->GetType() == 8);
}

TEST_F(GeoNodeTest, DeleteAttributeTakesTheFirstOfItsType) {
    const std::unique_ptr<Attribute> first(newAttribute("first", 8));
    Attribute* const second = newAttribute("second", 8);
    attributes() = {first.get(), second};
    leaf->DeleteAttribute(8);
    EXPECT_EQ(attributes(), std::vector<Attribute*>{second});
}

TEST_F(GeoNodeTest, DeleteAttributeWithoutSuchATypeChangesNothing) {
    leaf->DeleteAttribute(8);
    leaf->SetAttribute(newAttribute("any", 9));
    leaf->DeleteAttribute(8);
    EXPECT_EQ(attributes().size(), 1U);
}

// --- transfer of geometry -----------------------------------------------------------------------

TEST_F(GeoNodeTest, TransferGeometryFromAppendsAllItemsInOrder) {
    GeoNode* const source = root->CreateGeoChild(6);
    AGeometryItem* const own = newItem(9);
    AGeometryItem* const second = newItem(2);
    AGeometryItem* const first = newItem(1);
    leaf->AddGeometry(own);
    for (AGeometryItem* item : {second, static_cast<AGeometryItem*>(nullptr), first}) {
        source->AddGeometry(item);
    }
    leaf->TransferGeometryFrom(source);
    EXPECT_EQ(leaf->Geometry(), (Items{own, second, nullptr, first}));
    EXPECT_TRUE(source->Geometry().empty());
}

TEST_F(GeoNodeTest, TransferGeometryFromMovesTheOwnership) {
    GeoNode* const source = root->CreateGeoChild(6);
    source->AddGeometry(newItem(1, &destroyedItems));
    leaf->TransferGeometryFrom(source);
    root->DeleteChildById(6);
    EXPECT_TRUE(destroyedItems.empty());
    root->DeleteChildById(5);
    EXPECT_EQ(destroyedItems, Ids{1});
}

TEST_F(GeoNodeTest, TransferGeometryFromNullOrItselfChangesNothing) {
    AGeometryItem* const item = newItem(1);
    leaf->AddGeometry(item);
    leaf->TransferGeometryFrom(nullptr);
    leaf->TransferGeometryFrom(leaf);
    EXPECT_EQ(leaf->Geometry(), Items{item});
}

}  // namespace
}  // namespace KesVizCore
