#include "model/ModelTestKit.h"

#include <KesVizCore/model/AVizContainer.h>
#include <KesVizCore/model/VizContainer.h>
#include <KesVizCore/model/VizMesh.h>
#include <KesVizCore/model/VizPointSet.h>
#include <KesVizCore/model/VizWire.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace KesVizCore {
namespace {

using support::Deaths;
using support::EdgeLoader;
using support::FaceLoader;
using support::load;
using support::MeshLoader;
using support::newTelling;
using support::PointSetLoader;
using support::PointsLoader;
using support::PolygonLoader;
using support::WireLoader;

/// A host's container of another kind.
class HostContainer : public AVizContainer {
public:
    explicit HostContainer(int refId) : AVizContainer(refId) {}
    std::string GetTypeName() override { return "Host"; }
};

TEST(AVizContainerTest, IsAbstractWithAVirtualDestructor) {
    static_assert(std::is_abstract_v<AVizContainer>);
    static_assert(std::has_virtual_destructor_v<AVizContainer>);
}

TEST(AVizContainerTest, KeepsItsReferenceId) {
    for (const int refId : {0, 7, -1, std::numeric_limits<int>::max()}) {
        EXPECT_EQ(HostContainer(refId).GetRefID(), refId);
    }
}

TEST(AVizContainerTest, CopiesCopyTheReferenceId) {
    const HostContainer container(7);
    HostContainer copy(container);
    EXPECT_EQ(copy.GetRefID(), 7);
    copy = HostContainer(9);
    EXPECT_EQ(copy.GetRefID(), 9);
}

TEST(VizContainerTest, IsEmptyWithScaleOneAtFirst) {
    VizContainer container(7);
    EXPECT_EQ(container.GetRefID(), 7);
    EXPECT_EQ(container.GetScaleFactor(), 1.0F);
    EXPECT_TRUE(container.GetMeshes().empty());
    EXPECT_TRUE(container.GetWires().empty());
    EXPECT_TRUE(container.GetPointSets().empty());
    EXPECT_TRUE(container.GetCGMeshes().empty());
    EXPECT_TRUE(container.GetCGWires().empty());
    EXPECT_TRUE(container.GetCGPointSets().empty());
}

TEST(VizContainerTest, TypeNameIsGeometryContainer) {
    EXPECT_EQ(VizContainer::TypeID(), "GeometryContainer");
    VizContainer container(7);
    AVizContainer& base = container;
    EXPECT_EQ(base.GetTypeName(), "GeometryContainer");
}

TEST(VizContainerTest, DestroysItsListsInOrder) {
    Deaths deaths;
    auto container = std::make_unique<VizContainer>(7);
    container->AddCGPointSet(newTelling<PointSetLoader>("CG point set", deaths));
    container->AddCGWire(newTelling<WireLoader>("CG wire", deaths));
    container->AddCGMesh(newTelling<MeshLoader>("CG mesh", deaths));
    container->AddPointSet(newTelling<PointSetLoader>("point set", deaths));
    container->AddWire(newTelling<WireLoader>("wire", deaths));
    container->AddMesh(newTelling<MeshLoader>("mesh 1", deaths));
    container->AddMesh(newTelling<MeshLoader>("mesh 2", deaths));
    EXPECT_TRUE(deaths.empty());
    container.reset();
    EXPECT_EQ(deaths, (Deaths{"mesh 1", "mesh 2", "wire", "point set", "CG mesh", "CG wire",
                              "CG point set"}));
}

TEST(VizContainerTest, IsDestroyedThroughItsBase) {
    Deaths deaths;
    auto* const container = new VizContainer(7);
    container->AddMesh(newTelling<MeshLoader>("mesh", deaths));
    std::unique_ptr<AVizContainer> base(container);
    base.reset();
    EXPECT_EQ(deaths, Deaths{"mesh"});
}

TEST(VizContainerTest, DestructionReachesEverythingThatIsOwned) {
    Deaths deaths;
    auto container = std::make_unique<VizContainer>(7);
    VizMesh* const mesh = newTelling<MeshLoader>("mesh", deaths);
    VizFace* const face = newTelling<FaceLoader>("face", deaths);
    VizWire* const wire = newTelling<WireLoader>("wire", deaths);
    VizPointSet* const set = newTelling<PointSetLoader>("point set", deaths);
    face->AddPolygon(newTelling<PolygonLoader>("polygon", deaths));
    mesh->AddFace(face);
    mesh->AddEdge(newTelling<EdgeLoader>("edge of mesh", deaths));
    wire->AddEdge(newTelling<EdgeLoader>("edge of wire", deaths));
    set->AddPoints(newTelling<PointsLoader>("points", deaths));
    container->AddMesh(mesh);
    container->AddCGWire(wire);
    container->AddPointSet(set);
    container.reset();
    // A host's destructor speaks before that of the class that it derives from.
    EXPECT_EQ(deaths, (Deaths{"mesh", "face", "polygon", "edge of mesh", "point set", "points",
                              "wire", "edge of wire"}));
}

TEST(VizContainerTest, DestructionSkipsNull) {
    VizContainer container(7);
    container.AddMesh(nullptr);
    container.AddWire(nullptr);
    container.AddPointSet(nullptr);
    container.AddCGMesh(nullptr);
    container.AddCGWire(nullptr);
    container.AddCGPointSet(nullptr);
    EXPECT_EQ(container.GetCGPointSets().size(), 1U);
}

TEST(VizContainerTest, SetScaleFactorStoresAnyNumber) {
    VizContainer container(7);
    for (const float factor : {2.5F, 0.0F, -1.0F, std::numeric_limits<float>::infinity()}) {
        container.SetScaleFactor(factor);
        EXPECT_EQ(container.GetScaleFactor(), factor);
    }
}

TEST(VizContainerTest, TheScaleFactorIsAppliedToNothing) {
    VizContainer container(7);
    VizWire* const wire = support::loadWire().release();
    wire->AddEdge(support::loadEdge([](VizEdge& edge) { edge.SetVertices({1, 2, 3}); }).release());
    container.AddWire(wire);
    container.SetScaleFactor(10.0F);
    EXPECT_EQ(wire->GetEdges()[0]->GetVertices(), (support::Floats{1, 2, 3}));
}

// --- what holds for each of the six lists --------------------------------------------------------

struct Meshes {
    using Loader = MeshLoader;
    static const std::vector<VizMesh*>& of(const VizContainer& c) { return c.GetMeshes(); }
    static void add(VizContainer& c, VizMesh* added) { c.AddMesh(added); }
    static void hint(VizContainer& c, std::size_t count) { c.SetMeshCountHint(count); }
};
struct Wires {
    using Loader = WireLoader;
    static const std::vector<VizWire*>& of(const VizContainer& c) { return c.GetWires(); }
    static void add(VizContainer& c, VizWire* added) { c.AddWire(added); }
    static void hint(VizContainer& c, std::size_t count) { c.SetWireCountHint(count); }
};
struct PointSets {
    using Loader = PointSetLoader;
    static const std::vector<VizPointSet*>& of(const VizContainer& c) { return c.GetPointSets(); }
    static void add(VizContainer& c, VizPointSet* added) { c.AddPointSet(added); }
    static void hint(VizContainer& c, std::size_t count) { c.SetPointSetCountHint(count); }
};
struct CGMeshes {
    using Loader = MeshLoader;
    static const std::vector<VizMesh*>& of(const VizContainer& c) { return c.GetCGMeshes(); }
    static void add(VizContainer& c, VizMesh* added) { c.AddCGMesh(added); }
    static void hint(VizContainer& c, std::size_t count) { c.SetCGMeshCountHint(count); }
};
struct CGWires {
    using Loader = WireLoader;
    static const std::vector<VizWire*>& of(const VizContainer& c) { return c.GetCGWires(); }
    static void add(VizContainer& c, VizWire* added) { c.AddCGWire(added); }
    static void hint(VizContainer& c, std::size_t count) { c.SetCGWireCountHint(count); }
};
struct CGPointSets {
    using Loader = PointSetLoader;
    static const std::vector<VizPointSet*>& of(const VizContainer& c) { return c.GetCGPointSets(); }
    static void add(VizContainer& c, VizPointSet* added) { c.AddCGPointSet(added); }
    static void hint(VizContainer& c, std::size_t count) { c.SetCGPointSetCountHint(count); }
};

/// The number of entries of all lists.
std::size_t sizeOf(const VizContainer& container) {
    return container.GetMeshes().size() + container.GetWires().size() +
           container.GetPointSets().size() + container.GetCGMeshes().size() +
           container.GetCGWires().size() + container.GetCGPointSets().size();
}

/// The lists that have room for 100 and more.
int roomyListsOf(const VizContainer& container) {
    const auto roomy = [](const auto& list) { return list.capacity() >= 100 ? 1 : 0; };
    return roomy(container.GetMeshes()) + roomy(container.GetWires()) +
           roomy(container.GetPointSets()) + roomy(container.GetCGMeshes()) +
           roomy(container.GetCGWires()) + roomy(container.GetCGPointSets());
}

template <typename List>
class VizContainerListTest : public ::testing::Test {};

using EveryList = ::testing::Types<Meshes, Wires, PointSets, CGMeshes, CGWires, CGPointSets>;
TYPED_TEST_SUITE(VizContainerListTest, EveryList);

TYPED_TEST(VizContainerListTest, AddAppendsToThisListAlone) {
    using Loader = typename TypeParam::Loader;
    VizContainer container(7);
    auto* const one = load<Loader>().release();
    auto* const other = load<Loader>().release();
    TypeParam::add(container, other);
    TypeParam::add(container, one);
    ASSERT_EQ(TypeParam::of(container).size(), 2U);
    EXPECT_EQ(TypeParam::of(container)[0], other);
    EXPECT_EQ(TypeParam::of(container)[1], one);
    EXPECT_EQ(sizeOf(container), 2U);
}

TYPED_TEST(VizContainerListTest, AddStoresNull) {
    VizContainer container(7);
    TypeParam::add(container, nullptr);
    ASSERT_EQ(TypeParam::of(container).size(), 1U);
    EXPECT_EQ(TypeParam::of(container)[0], nullptr);
}

TYPED_TEST(VizContainerListTest, AddStoresDuplicates) {
    // It must not be destroyed twice: at the end the container lets go of it.
    VizContainer container(7);
    const auto element = load<typename TypeParam::Loader>();
    TypeParam::add(container, element.get());
    TypeParam::add(container, element.get());
    EXPECT_EQ(TypeParam::of(container).size(), 2U);
    container = VizContainer(8);
}

TYPED_TEST(VizContainerListTest, TakesOwnership) {
    Deaths deaths;
    auto container = std::make_unique<VizContainer>(7);
    TypeParam::add(*container, newTelling<typename TypeParam::Loader>("it", deaths));
    EXPECT_TRUE(deaths.empty());
    container.reset();
    EXPECT_EQ(deaths, Deaths{"it"});
}

TYPED_TEST(VizContainerListTest, CountHintMakesRoomInThisListAlone) {
    VizContainer container(7);
    TypeParam::hint(container, 100);
    EXPECT_GE(TypeParam::of(container).capacity(), 100U);
    EXPECT_EQ(roomyListsOf(container), 1);
    EXPECT_EQ(sizeOf(container), 0U);
    TypeParam::hint(container, 0);
    EXPECT_GE(TypeParam::of(container).capacity(), 100U);
}

TYPED_TEST(VizContainerListTest, CopiesShareTheElements) {
    Deaths deaths;
    auto container = std::make_unique<VizContainer>(7);
    container->SetScaleFactor(2.0F);
    auto* const element = newTelling<typename TypeParam::Loader>("it", deaths);
    TypeParam::add(*container, element);
    {
        VizContainer copy(*container);
        EXPECT_EQ(copy.GetRefID(), 7);
        EXPECT_EQ(copy.GetScaleFactor(), 2.0F);
        ASSERT_EQ(sizeOf(copy), 1U);
        EXPECT_EQ(TypeParam::of(copy)[0], element);
        copy = VizContainer(8);  // lets go of the element, which the original goes on owning
        EXPECT_EQ(copy.GetRefID(), 8);
        EXPECT_EQ(sizeOf(copy), 0U);
    }
    EXPECT_TRUE(deaths.empty());
    container.reset();
    EXPECT_EQ(deaths, Deaths{"it"});
}

}  // namespace
}  // namespace KesVizCore
