#include "model/ModelTestKit.h"

#include <KesVizCore/model/VizElement.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace KesVizCore {
namespace {

using support::Deaths;
using support::EveryLoader;
using support::Floats;
using support::HasPublicTransform;
using support::load;
using support::loadCapture;
using support::loadEdge;
using support::loadMesh;
using support::loadPoints;
using support::loadPointSet;
using support::loadPolygon;
using support::loadPolygonLoop;
using support::loadWire;
using support::Matrix;
using support::newTelling;
using support::tripleAt;
using support::unevenMatrix;

constexpr std::uint64_t kNoId = std::numeric_limits<std::uint64_t>::max();

/// A host's element of a kind of its own, with the base's protected parts open.
class HostElement : public VizElement {
public:
    HostElement() = default;
    HostElement(const HostElement&) = default;
    HostElement& operator=(const HostElement&) = default;
    ~HostElement() override = default;

    std::string GetElementType() const override { return "Host"; }

    using VizElement::ApplyTransform;
    using VizElement::setID;
};

RenderId pathOf(const std::vector<std::uint64_t>& values, OriginEnum origin = View3D) {
    return RenderId(values, origin);
}

/// Gives every field of the base a value that is not the default.
void fillBase(VizElement& element) {
    element.SetVisualID(L"visual");
    element.SetColor(RGBAColor(1, 2, 3, 4));
    element.SetHidden(true);
    element.SetEntityID(EntityId(5, FaceType, 9));
    element.Set3DRenderID(pathOf({1, 2, 3}));
    element.SetTreeRenderID(pathOf({4, 5}, ViewTree));
}

void expectFilledBase(const VizElement& element) {
    EXPECT_EQ(element.GetVisualID(), L"visual");
    EXPECT_TRUE(element.HasColor());
    EXPECT_TRUE(element.GetColor() == RGBAColor(1, 2, 3, 4));
    bool hidden = false;
    EXPECT_TRUE(element.GetHidden(hidden));
    EXPECT_TRUE(hidden);
    EntityId entity;
    EXPECT_TRUE(element.GetEntityID(entity));
    EXPECT_TRUE(entity == EntityId(5, FaceType, 9));
    RenderId id;
    EXPECT_TRUE(element.Get3DRenderID(id));
    EXPECT_TRUE(id == pathOf({1, 2, 3}));
    EXPECT_TRUE(element.GetTreeRenderID(id));
    EXPECT_TRUE(id == pathOf({4, 5}, ViewTree));
}

/// The out arguments hold something else before, so that it shows when they are not written.
void expectFreshBase(const VizElement& element) {
    EXPECT_EQ(element.GetVisualID(), L"");
    EXPECT_FALSE(element.HasColor());
    EXPECT_TRUE(element.GetColor() == RGBAColor());
    bool hidden = true;
    EXPECT_FALSE(element.GetHidden(hidden));
    EXPECT_FALSE(hidden);
    EntityId entity(5, FaceType, 9);
    EXPECT_FALSE(element.GetEntityID(entity));
    EXPECT_TRUE(entity == EntityId());
    RenderId id = pathOf({1});
    EXPECT_FALSE(element.Get3DRenderID(id));
    EXPECT_TRUE(id == RenderId()) << id.ToString();
    id = pathOf({1});
    EXPECT_FALSE(element.GetTreeRenderID(id));
    EXPECT_TRUE(id == RenderId()) << id.ToString();
}

TEST(VizElementTest, IsAbstractAndCannotBeDestroyedThroughTheBase) {
    static_assert(std::is_abstract_v<VizElement>);
    static_assert(!std::is_destructible_v<VizElement>);
    static_assert(std::has_virtual_destructor_v<VizElement>);
    static_assert(!HasPublicTransform<VizElement>::value);
    static_assert(std::is_copy_assignable_v<VizElement>);
}

TEST(VizElementTest, IsFreshAfterConstruction) {
    const HostElement element;
    expectFreshBase(element);
    EXPECT_EQ(element.GetID(), kNoId);
}

TEST(VizElementTest, ApplyTransformOfTheBaseDoesNothing) {
    HostElement element;
    element.setID(7);
    fillBase(element);
    Matrix matrix = unevenMatrix();
    element.ApplyTransform(matrix.Columns);
    expectFilledBase(element);
    EXPECT_EQ(element.GetID(), 7U);
    EXPECT_EQ(matrix.Columns[3][0], 29.0F);
}

TEST(VizElementTest, SetVisualIDReplacesIt) {
    HostElement element;
    element.SetVisualID(L"first");
    element.SetVisualID(L"\u00FCber \U0001D11E");
    EXPECT_EQ(element.GetVisualID(), L"\u00FCber \U0001D11E");
    element.SetVisualID(L"");
    EXPECT_EQ(element.GetVisualID(), L"");
}

TEST(VizElementTest, GetVisualIDAnswersACopy) {
    HostElement element;
    element.SetVisualID(L"visual");
    element.GetVisualID() += L" changed";
    EXPECT_EQ(element.GetVisualID(), L"visual");
}

TEST(VizElementTest, SetIDStampsAnyNumber) {
    HostElement element;
    for (const std::uint64_t id : {std::uint64_t{0}, std::uint64_t{1} << 63U, kNoId - 1}) {
        element.setID(id);
        EXPECT_EQ(element.GetID(), id);
    }
}

TEST(VizElementTest, SetEntityIDWithATypeIsAnswered) {
    HostElement element;
    element.SetEntityID(EntityId(5, FaceType, 9));
    EntityId out;
    EXPECT_TRUE(element.GetEntityID(out));
    EXPECT_TRUE(out == EntityId(5, FaceType, 9));
}

TEST(VizElementTest, AnEntityIdOfZerosWithATypeCountsAsSet) {
    HostElement element;
    element.SetEntityID(EntityId(0, BodyType, 0));  // empty for EntityId, which is not asked
    EntityId out;
    EXPECT_TRUE(element.GetEntityID(out));
    EXPECT_TRUE(out == EntityId(0, BodyType, 0));
}

TEST(VizElementTest, AnEntityIdWithoutATypeCountsAsNotSetButIsWritten) {
    HostElement element;
    element.SetEntityID(EntityId(5, InvalidType, 9));
    EntityId out;
    EXPECT_FALSE(element.GetEntityID(out));
    EXPECT_TRUE(out == EntityId(5, InvalidType, 9));
}

TEST(VizElementTest, TheFlagOfAnEntityIdIsKept) {
    HostElement element;
    EntityId entity(5, FaceType, 9);
    entity.Flag = true;
    element.SetEntityID(entity);
    EntityId out;
    element.GetEntityID(out);
    EXPECT_TRUE(out.Flag);
}

TEST(VizElementTest, RenderIdsAreAnsweredApartFromEachOther) {
    HostElement element;
    element.Set3DRenderID(pathOf({1, 2}));
    RenderId out;
    EXPECT_FALSE(element.GetTreeRenderID(out));
    element.SetTreeRenderID(pathOf({3}, ViewTree));
    EXPECT_TRUE(element.Get3DRenderID(out));
    EXPECT_TRUE(out == pathOf({1, 2})) << out.ToString();
    EXPECT_TRUE(element.GetTreeRenderID(out));
    EXPECT_TRUE(out == pathOf({3}, ViewTree)) << out.ToString();
}

TEST(VizElementTest, A3DRenderIdWithoutValuesCountsAsNotSetButIsWritten) {
    HostElement element;
    element.Set3DRenderID(pathOf({1}));
    element.Set3DRenderID(pathOf({}, View3D));
    RenderId out = pathOf({7}, ViewTree);
    EXPECT_FALSE(element.Get3DRenderID(out));
    EXPECT_TRUE(out == pathOf({}, View3D)) << out.ToString();
}

TEST(VizElementTest, ATreeRenderIdWithoutValuesCountsAsNotSetButIsWritten) {
    HostElement element;
    element.SetTreeRenderID(pathOf({1}));
    element.SetTreeRenderID(pathOf({}, ViewTree));
    RenderId out = pathOf({7}, View3D);
    EXPECT_FALSE(element.GetTreeRenderID(out));
    EXPECT_TRUE(out == pathOf({}, ViewTree)) << out.ToString();
}

TEST(VizElementTest, ARenderIdOfOneZeroCountsAsSet) {
    HostElement element;
    element.Set3DRenderID(pathOf({0}, Unknown));
    RenderId out;
    EXPECT_TRUE(element.Get3DRenderID(out));
    EXPECT_EQ(out.Length(), 1);
}

TEST(VizElementTest, RenderIdsThatWereAnsweredDoNotReachIntoTheElement) {
    HostElement element;
    element.Set3DRenderID(pathOf({1, 2}));
    RenderId out;
    element.Get3DRenderID(out);
    out[0] = 99;  // writable even through a const id
    RenderId again;
    element.Get3DRenderID(again);
    EXPECT_TRUE(again == pathOf({1, 2})) << again.ToString();
}

TEST(VizElementTest, SetColorStoresTheColorForGood) {
    HostElement element;
    element.SetColor(RGBAColor(1, 2, 3, 4));
    EXPECT_TRUE(element.HasColor());
    element.SetColor(RGBAColor(5, 6, 7, 8));
    EXPECT_TRUE(element.HasColor());
    EXPECT_TRUE(element.GetColor() == RGBAColor(5, 6, 7, 8));
}

TEST(VizElementTest, TheDefaultColorCountsAsAColorOnceItIsSet) {
    HostElement element;
    element.SetColor(RGBAColor());
    EXPECT_TRUE(element.HasColor());
}

TEST(VizElementTest, ShownOnPurposeCanBeToldFromNeverSaid) {
    HostElement element;
    element.SetHidden(false);
    bool hidden = true;
    EXPECT_TRUE(element.GetHidden(hidden));
    EXPECT_FALSE(hidden);
}

TEST(VizElementTest, SetHiddenKeepsTheLastValue) {
    HostElement element;
    element.SetHidden(true);
    bool hidden = false;
    EXPECT_TRUE(element.GetHidden(hidden));
    EXPECT_TRUE(hidden);
    element.SetHidden(false);
    EXPECT_TRUE(element.GetHidden(hidden));
    EXPECT_FALSE(hidden);
}

TEST(VizElementTest, CopyConstructionCopiesEveryField) {
    HostElement element;
    element.setID(7);
    fillBase(element);
    const HostElement copy(element);
    expectFilledBase(copy);
    EXPECT_EQ(copy.GetID(), 7U);
}

TEST(VizElementTest, AssignmentCopiesEveryField) {
    HostElement element;
    element.setID(7);
    fillBase(element);
    HostElement copy;
    copy = element;
    expectFilledBase(copy);
    EXPECT_EQ(copy.GetID(), 7U);
    const HostElement fresh;
    copy = fresh;  // the flags of colour and hiding go as well
    expectFreshBase(copy);
    EXPECT_EQ(copy.GetID(), kNoId);
}

TEST(VizElementTest, AssignmentToItselfChangesNothing) {
    HostElement element;
    fillBase(element);
    const HostElement& same = element;
    element = same;
    expectFilledBase(element);
}

TEST(VizElementTest, ACopyHasRenderIdsOfItsOwn) {
    HostElement element;
    fillBase(element);
    HostElement copy(element);
    copy.Set3DRenderID(pathOf({9}));
    copy.SetTreeRenderID(pathOf({9}));
    copy.SetVisualID(L"another");
    expectFilledBase(element);
}

TEST(VizElementTest, ElementTypesAreThoseOfTheClasses) {
    EXPECT_EQ(VizEdge::TypeID(), "Edge");
    EXPECT_EQ(VizFace::TypeID(), "Face");
    EXPECT_EQ(VizPolygon::TypeID(), "Polygon");
    EXPECT_EQ(VizPolygonLoop::TypeID(), "PolygonLoop");
    EXPECT_EQ(VizPoints::TypeID(), "Points");
    EXPECT_EQ(VizMesh::TypeID(), "Mesh");
    EXPECT_EQ(VizWire::TypeID(), "Wire");
    EXPECT_EQ(VizPointSet::TypeID(), "PointSet");
    EXPECT_EQ(VizText::TypeID(), "Text");
    EXPECT_EQ(VizView::TypeID(), "View");
    EXPECT_EQ(VizCapture::TypeID(), "Capture");
    EXPECT_EQ(VizPMI::TypeID(), "PMI");
}

TEST(VizElementTest, OnlyElementsWithCoordinatesOfTheirOwnAreTransformed) {
    static_assert(HasPublicTransform<VizEdge>::value);
    static_assert(HasPublicTransform<VizFace>::value);
    static_assert(HasPublicTransform<VizPoints>::value);
    static_assert(HasPublicTransform<VizText>::value);
    static_assert(!HasPublicTransform<VizPolygon>::value);
    static_assert(!HasPublicTransform<VizPolygonLoop>::value);
    static_assert(!HasPublicTransform<VizMesh>::value);
    static_assert(!HasPublicTransform<VizWire>::value);
    static_assert(!HasPublicTransform<VizPointSet>::value);
    static_assert(!HasPublicTransform<VizView>::value);
    static_assert(!HasPublicTransform<VizCapture>::value);
    static_assert(!HasPublicTransform<VizPMI>::value);
}

// --- what holds for every kind -------------------------------------------------------------------

template <typename Loader>
class EveryElementTest : public ::testing::Test {};

TYPED_TEST_SUITE(EveryElementTest, EveryLoader);

TYPED_TEST(EveryElementTest, IsFreshWhenItIsMade) {
    TypeParam loader;
    auto* const made = static_cast<typename TypeParam::Made*>(loader.makeOne());
    const std::unique_ptr<typename TypeParam::Made> element(made);
    ASSERT_NE(element, nullptr);
    expectFreshBase(*element);
    EXPECT_EQ(element->GetID(), kNoId);
}

TYPED_TEST(EveryElementTest, AnswersTheTypeOfItsClassThroughTheBase) {
    const auto element = load<TypeParam>();
    const VizElement& base = *element;
    EXPECT_EQ(base.GetElementType(), TypeParam::Made::TypeID());
}

TYPED_TEST(EveryElementTest, IsMadeByLoadersAndDestroyedAsWhatItIs) {
    using Kind = typename TypeParam::Made;
    static_assert(std::is_base_of_v<VizElement, Kind>);
    static_assert(std::is_same_v<Kind, VizCapture> || !std::is_default_constructible_v<Kind>);
    static_assert(std::is_destructible_v<Kind> && std::has_virtual_destructor_v<Kind>);
    static_assert(std::is_copy_constructible_v<Kind> && std::is_copy_assignable_v<Kind>);
}

TYPED_TEST(EveryElementTest, CopiesTheFieldsOfTheBase) {
    const auto element = load<TypeParam>([](auto& filled) { fillBase(filled); });
    const typename TypeParam::Made copy(*element);
    expectFilledBase(copy);
    EXPECT_EQ(copy.GetID(), element->GetID());
    const auto assigned = load<TypeParam>();
    *assigned = *element;
    expectFilledBase(*assigned);
    EXPECT_EQ(assigned->GetID(), element->GetID());
}

TYPED_TEST(EveryElementTest, IsDestroyedByTheDestructorOfTheHostsClass) {
    Deaths deaths;
    std::unique_ptr<typename TypeParam::Made> element(newTelling<TypeParam>("it", deaths));
    EXPECT_TRUE(deaths.empty());
    element.reset();
    EXPECT_EQ(deaths, Deaths{"it"});
}

/// A host's class derived from a kind, with its transform open.
template <typename Kind>
class Transformable : public Kind {
public:
    explicit Transformable(const Kind& original) : Kind(original) {}
    using Kind::ApplyTransform;
};

TEST(VizElementTest, ElementsWithoutCoordinatesOfTheirOwnIgnoreTransforms) {
    Matrix matrix = unevenMatrix();
    Transformable<VizPolygon> polygon(*loadPolygon());
    const int indices[3] = {0, 1, 2};
    polygon.SetIndices(3, indices);
    polygon.ApplyTransform(matrix.Columns);
    EXPECT_EQ(polygon.GetIndices(), (std::vector<int>{0, 1, 2}));

    Transformable<VizCapture> capture(*loadCapture());
    float before[3] = {1.0F, 2.0F, 3.0F};
    float target[3] = {0.0F, 0.0F, 0.0F};
    float up[3] = {0.0F, 1.0F, 0.0F};
    capture.SetOrientation(before, target, up);
    capture.ApplyTransform(matrix.Columns);
    float eye[3];
    capture.GetOrientation(eye, target, up);
    EXPECT_EQ(tripleAt(eye), tripleAt(before));
    EXPECT_EQ(tripleAt(target), (Vector{0.0F, 0.0F, 0.0F}));
    EXPECT_EQ(tripleAt(up), (Vector{0.0F, 1.0F, 0.0F}));
}

TEST(VizElementTest, GroupsDoNotTransformWhatTheyHold) {
    Matrix matrix = unevenMatrix();
    const Floats vertices = {1.0F, 2.0F, 3.0F};
    const auto edgeOf = [&] {
        return loadEdge([&](VizEdge& edge) { edge.SetVertices(vertices); }).release();
    };
    Transformable<VizMesh> mesh(*loadMesh());
    mesh.AddEdge(edgeOf());
    mesh.ApplyTransform(matrix.Columns);
    EXPECT_EQ(mesh.GetEdges()[0]->GetVertices(), vertices);

    Transformable<VizWire> wire(*loadWire());
    wire.AddEdge(edgeOf());
    wire.ApplyTransform(matrix.Columns);
    EXPECT_EQ(wire.GetEdges()[0]->GetVertices(), vertices);

    Transformable<VizPointSet> set(*loadPointSet());
    set.AddPoints(loadPoints([&](VizPoints& points) { points.SetVertices(vertices); }).release());
    set.ApplyTransform(matrix.Columns);
    EXPECT_EQ(set.GetPointSets()[0]->GetVertices(), vertices);

    Transformable<VizPolygonLoop> loop(*loadPolygonLoop());
    const std::unique_ptr<VizEdge> edge(edgeOf());
    loop.AddEdge(edge.get());
    loop.ApplyTransform(matrix.Columns);
    EXPECT_EQ(edge->GetVertices(), vertices);
}

}  // namespace
}  // namespace KesVizCore
