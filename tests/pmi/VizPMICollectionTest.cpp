#include "pmi/PMITestKit.h"

#include <KesVizCore/pmi/VizPMICollection.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace KesVizCore {
namespace {

using support::idIn3D;
using support::loadMesh;
using support::Model;
using support::OpenCollection;
using support::Triple;

using Names = std::vector<std::wstring>;

static_assert(std::is_abstract_v<VizPMICollection>);

TEST(VizPMICollectionTest, IsUnnamedShownInactiveAndWithoutIdsAtFirst) {
    const OpenCollection collection;
    EXPECT_EQ(collection.GetName(), L"unnamed");
    EXPECT_EQ(collection.GetMechanicalID(), L"");
    EXPECT_EQ(collection.GetVisualID(), L"");
    EXPECT_FALSE(collection.GetHidden());
    EXPECT_FALSE(collection.GetActive());
    EXPECT_TRUE(collection.GetMemberList().empty());
    EXPECT_EQ(collection.GetMemberCount(), 0);
}

TEST(VizPMICollectionTest, LiesInThePlaneOfXAndYAtFirstWithoutBeingOriented) {
    const OpenCollection collection;
    EXPECT_FALSE(collection.IsViewOriented());
    EXPECT_EQ(collection.Origin(), (Triple{0, 0, 0}));
    EXPECT_EQ(collection.U(), (Triple{1, 0, 0}));
    EXPECT_EQ(collection.V(), (Triple{0, 1, 0}));
}

TEST(VizPMICollectionTest, HasNoExtremaExtentsOrRectangleAtFirst) {
    OpenCollection collection;
    const float some = 0.0F;
    const float* extents = &some;
    EXPECT_FALSE(collection.GetExtents(extents));
    EXPECT_EQ(extents, nullptr);
    EXPECT_EQ(collection.GetRectangle(), nullptr);
    EXPECT_TRUE(support::grownExtremaOf(collection).empty());
}

TEST(VizPMICollectionTest, NamesAndIdsAreKeptApart) {
    OpenCollection collection;
    collection.SetName(L"name");
    collection.SetMechanicalID(L"mech");
    collection.SetVisualID(L"visual");
    EXPECT_EQ(collection.GetName(), L"name");
    EXPECT_EQ(collection.GetMechanicalID(), L"mech");
    EXPECT_EQ(collection.GetVisualID(), L"visual");
}

TEST(VizPMICollectionTest, ItsVisualIdIsApartFromThatOfElements) {
    OpenCollection collection;
    collection.SetVisualID(L"of the collection");
    collection.VizElement::SetVisualID(L"of the element");
    EXPECT_EQ(collection.GetVisualID(), L"of the collection");
    EXPECT_EQ(collection.VizElement::GetVisualID(), L"of the element");
}

TEST(VizPMICollectionTest, ItsHiddenFlagIsApartFromThatOfElements) {
    OpenCollection collection;
    collection.SetHidden(true);
    bool hidden = true;
    EXPECT_TRUE(collection.GetHidden());
    EXPECT_FALSE(collection.VizElement::GetHidden(hidden));
    EXPECT_FALSE(hidden);
    collection.SetHidden(false);
    EXPECT_FALSE(collection.GetHidden());
}

TEST(VizPMICollectionTest, TheActiveFlagIsStored) {
    OpenCollection collection;
    collection.SetActive(true);
    EXPECT_TRUE(collection.GetActive());
    EXPECT_FALSE(collection.GetHidden());
    collection.SetActive(false);
    EXPECT_FALSE(collection.GetActive());
}

TEST(VizPMICollectionTest, EntityAndRenderIdsAreThoseOfTheElement) {
    OpenCollection collection;
    collection.SetEntityID(EntityId(0, ViewType, 5));
    collection.Set3DRenderID(idIn3D({1, 2}));
    collection.SetTreeRenderID(RenderId({3}, ViewTree));
    const VizElement& element = collection;
    EntityId entity;
    RenderId in3D;
    RenderId inTree;
    EXPECT_TRUE(element.GetEntityID(entity) && collection.GetEntityID(entity));
    EXPECT_TRUE(element.Get3DRenderID(in3D) && collection.Get3DRenderID(in3D));
    EXPECT_TRUE(element.GetTreeRenderID(inTree) && collection.GetTreeRenderID(inTree));
    EXPECT_EQ(entity, EntityId(0, ViewType, 5));
    EXPECT_EQ(in3D, idIn3D({1, 2}));
    EXPECT_EQ(inTree, RenderId({3}, ViewTree));
}

// --- members ------------------------------------------------------------------------------------

TEST(VizPMICollectionTest, MembersStandInTheOrderOfAddingAndDuplicatesCount) {
    OpenCollection collection;
    for (const wchar_t* name : {L"b", L"a", L"b", L""}) {
        collection.AddMember(name);
    }
    EXPECT_EQ(collection.GetMemberList(), (Names{L"b", L"a", L"b", L""}));
    EXPECT_EQ(collection.GetMemberCount(), 4);
}

TEST(VizPMICollectionTest, ACountHintReservesRoomAndNothingElse) {
    OpenCollection collection;
    collection.SetMemberCountHint(17);
    EXPECT_GE(collection.GetMemberList().capacity(), 17U);
    EXPECT_EQ(collection.GetMemberCount(), 0);
}

TEST(VizPMICollectionTest, ACountHintOfOneReservesRoom) {
    OpenCollection collection;
    collection.SetMemberCountHint(1);
    EXPECT_GE(collection.GetMemberList().capacity(), 1U);
}

TEST(VizPMICollectionTest, ACountHintBelowOneDoesNothing) {
    OpenCollection collection;
    collection.SetMemberCountHint(0);
    collection.SetMemberCountHint(-5);
    EXPECT_EQ(collection.GetMemberList().capacity(), 0U);
}

TEST(VizPMICollectionTest, AnElementIsAMemberByItsVisualIdAlone) {
    OpenCollection collection;
    collection.AddMember(L"a");
    collection.AddMember(L"b");
    const auto mesh = loadMesh();  // of any kind, and in no map
    EXPECT_FALSE(collection.IsMember(*mesh));
    mesh->SetVisualID(L"b");
    EXPECT_TRUE(collection.IsMember(*mesh));
    mesh->SetVisualID(L"B");
    EXPECT_FALSE(collection.IsMember(*mesh));
    mesh->SetVisualID(L"ab");
    EXPECT_FALSE(collection.IsMember(*mesh));
}

TEST(VizPMICollectionTest, TheEmptyNameMakesElementsWithoutVisualIdMembers) {
    OpenCollection collection;
    const auto mesh = loadMesh();
    EXPECT_FALSE(collection.IsMember(*mesh));
    collection.AddMember(L"");
    EXPECT_TRUE(collection.IsMember(*mesh));
}

TEST(VizPMICollectionTest, ACollectionIsAMemberByTheVisualIdOfTheElement) {
    OpenCollection collection;
    collection.AddMember(L"a");
    OpenCollection other;
    other.SetVisualID(L"a");
    EXPECT_FALSE(collection.IsMember(other));
    other.VizElement::SetVisualID(L"a");
    EXPECT_TRUE(collection.IsMember(other));
}

// --- copies -------------------------------------------------------------------------------------

/// A collection that has everything, extents and rectangle included.
OpenCollection fullCollection(const Model& model) {
    OpenCollection full(model, {L"a", L"gone"});
    full.SetName(L"name");
    full.SetMechanicalID(L"mech");
    full.SetVisualID(L"visual");
    full.SetHidden(true);
    full.SetActive(true);
    full.SetEntityID(EntityId(0, ViewType, 5));
    full.Set3DRenderID(idIn3D({9}));
    full.SetFrame({0, 0, 0}, {0, 1, 0}, {0, 0, 1});
    const float box[6] = {0, 1, 2, 3, 4, 5};
    full.MergeExtrema(box);
    full.GetRectangle();
    return full;
}

std::vector<float> extentsOf(OpenCollection& collection) {
    const float* extents = nullptr;
    return collection.GetExtents(extents) ? std::vector<float>(extents, extents + 4)
                                          : std::vector<float>();
}

std::vector<float> rectangleOf(OpenCollection& collection) {
    const float* const rectangle = collection.GetRectangle();
    return rectangle != nullptr ? std::vector<float>(rectangle, rectangle + 15)
                                : std::vector<float>();
}

void expectAlike(OpenCollection& copy, OpenCollection& original) {
    EXPECT_EQ(copy.GetName(), original.GetName());
    EXPECT_EQ(copy.GetMechanicalID(), original.GetMechanicalID());
    EXPECT_EQ(copy.GetVisualID(), original.GetVisualID());
    EXPECT_EQ(copy.GetHidden(), original.GetHidden());
    EXPECT_EQ(copy.GetActive(), original.GetActive());
    EntityId entity;
    EXPECT_TRUE(copy.GetEntityID(entity));
    EXPECT_EQ(entity, EntityId(0, ViewType, 5));
    EXPECT_EQ(copy.IsViewOriented(), original.IsViewOriented());
    EXPECT_EQ(copy.Origin(), original.Origin());
    EXPECT_EQ(copy.U(), original.U());
    EXPECT_EQ(copy.V(), original.V());
    EXPECT_EQ(copy.GetMemberList(), original.GetMemberList());
    EXPECT_EQ(extentsOf(copy), extentsOf(original));
    EXPECT_EQ(rectangleOf(copy), rectangleOf(original));
    RenderId* ids = nullptr;
    int count = 0;
    EXPECT_TRUE(copy.GetMemberRenderIds(ids, count, true));  // by the same map
    EXPECT_EQ(count, 2);
    RenderId::DeleteRenderIdArr(ids);
}

TEST(VizPMICollectionTest, ACopyHasEveryField) {
    Model model;
    VizMesh& mesh = model.AddMesh(1, L"a", idIn3D({7}));
    OpenCollection original = fullCollection(model);
    OpenCollection copy(original);
    expectAlike(copy, original);
    EXPECT_TRUE(copy.IsMember(mesh));
}

TEST(VizPMICollectionTest, AssignmentReplacesEveryField) {
    Model model;
    VizMesh& mesh = model.AddMesh(1, L"a", idIn3D({7}));
    OpenCollection original = fullCollection(model);
    OpenCollection assigned = fullCollection(model);
    assigned.AddMember(L"b");
    assigned.SetName(L"other");
    assigned.SetMechanicalID(L"other");
    assigned.SetVisualID(L"other");
    assigned.SetHidden(false);
    assigned.SetActive(false);
    assigned.SetEntityID(EntityId(9, ViewType, 9));
    assigned.SetFrame({9, 9, 9}, {9, 9, 9}, {9, 9, 9});
    assigned = original;
    expectAlike(assigned, original);
    EXPECT_TRUE(assigned.IsMember(mesh));
    mesh.SetVisualID(L"b");
    EXPECT_FALSE(assigned.IsMember(mesh));
}

TEST(VizPMICollectionTest, AssigningAFreshCollectionDropsExtremaExtentsAndRectangle) {
    const Model model;
    OpenCollection assigned = fullCollection(model);
    assigned = OpenCollection();
    const float* extents = nullptr;
    EXPECT_FALSE(assigned.IsViewOriented());
    EXPECT_FALSE(assigned.GetExtents(extents));
    EXPECT_EQ(assigned.GetRectangle(), nullptr);
    EXPECT_FALSE(assigned.Recenter());
}

TEST(VizPMICollectionTest, AssignmentToItselfChangesNothing) {
    Model model;
    model.AddMesh(1, L"a", idIn3D({7}));
    OpenCollection original = fullCollection(model);
    OpenCollection collection = fullCollection(model);
    const float* const rectangle = collection.GetRectangle();
    const OpenCollection& same = collection;
    collection = same;
    EXPECT_EQ(collection.GetRectangle(), rectangle);
    expectAlike(collection, original);
}

// So that both can be destroyed, and live on without the other.
TEST(VizPMICollectionTest, ACopyHasExtremaExtentsAndRectangleOfItsOwn) {
    const Model model;
    auto original = std::make_unique<OpenCollection>(fullCollection(model));
    OpenCollection copy(*original);
    const float* ofOriginal = nullptr;
    const float* ofCopy = nullptr;
    original->GetExtents(ofOriginal);
    copy.GetExtents(ofCopy);
    EXPECT_NE(ofCopy, ofOriginal);
    EXPECT_NE(copy.GetRectangle(), original->GetRectangle());
    const std::vector<float> rectangle = rectangleOf(*original);
    original->GetRectangle()[0] = 1000.0F;
    const float far[6] = {-900, -900, -900, -900, -900, -900};
    original->MergeExtrema(far);
    original.reset();
    EXPECT_EQ(rectangleOf(copy), rectangle);
    EXPECT_TRUE(copy.Recenter());
    EXPECT_EQ(copy.Origin(), (Triple{1.5F, 2.5F, 3.5F}));
}

}  // namespace
}  // namespace KesVizCore
