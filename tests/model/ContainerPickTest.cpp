#include "math/Floats.h"
#include "model/PickingHost.h"
#include "support/TestLoaders.h"

#include <KesVizCore/model/VizContainer.h>

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace KesVizCore {
namespace {

using support::EdgeLoader;
using support::FaceLoader;
using support::MeshLoader;
using support::newPickable;
using support::Path;
using support::pickable;
using support::PickingAdapter;
using support::PointSetLoader;
using support::PointsLoader;
using support::WireLoader;

constexpr std::size_t kLists = 6;
const char* const kListNames[kLists] = {"meshes",    "wires",    "point sets",
                                        "CG meshes", "CG wires", "CG point sets"};

/// Adds an element with that path to one of the lists, counted in the order of the search.
VizElement* addTo(VizContainer& container, std::size_t list, const Path& path,
                  OriginEnum origin = View3D) {
    if (list % 3 == 0) {
        auto* const mesh = newPickable<MeshLoader>(path, origin);
        list == 0 ? container.AddMesh(mesh) : container.AddCGMesh(mesh);
        return mesh;
    }
    if (list % 3 == 1) {
        auto* const wire = newPickable<WireLoader>(path, origin);
        list == 1 ? container.AddWire(wire) : container.AddCGWire(wire);
        return wire;
    }
    auto* const set = newPickable<PointSetLoader>(path, origin);
    list == 2 ? container.AddPointSet(set) : container.AddCGPointSet(set);
    return set;
}

/// What the container picks with that adapter, or null for false; also expects that a pick that
/// finds nothing leaves the out argument alone.
VizElement* pickedFrom(VizContainer& container, AView3DAdapter* adapter) {
    const auto before = support::loadEdge();
    VizElement* out = before.get();
    if (container.PickVisual(adapter, Ray(), out)) {
        EXPECT_NE(out, before.get());
        return out;
    }
    EXPECT_EQ(out, before.get());
    return nullptr;
}

/// Whether an element with the one path is picked where the other is hit.
bool matches(const Path& own, const Path& hit, OriginEnum ownOrigin = View3D,
             OriginEnum hitOrigin = View3D) {
    VizContainer container(1);
    addTo(container, 0, own, ownOrigin);
    PickingAdapter adapter(hit, hitOrigin);
    return pickedFrom(container, &adapter) != nullptr;
}

/// A container that does not override the pick of the base.
class HostContainer : public AVizContainer {
public:
    HostContainer() : AVizContainer(1) {}
    std::string GetTypeName() override { return "Host"; }
};

TEST(ContainerPickTest, TheBaseAnswersFalseAndLeavesOutAlone) {
    HostContainer container;
    PickingAdapter adapter({7});
    const auto element = support::loadEdge();
    VizElement* out = element.get();
    EXPECT_FALSE(container.PickVisual(&adapter, Ray(), out));
    EXPECT_FALSE(container.PickVisual(nullptr, Ray(), out));
    EXPECT_EQ(out, element.get());
    EXPECT_EQ(adapter.asked, 0);
}

TEST(ContainerPickTest, WithoutAnAdapterNothingIsPicked) {
    VizContainer container(1);
    addTo(container, 0, {7});
    EXPECT_EQ(pickedFrom(container, nullptr), nullptr);
}

TEST(ContainerPickTest, WithoutAHitNothingIsPicked) {
    VizContainer container(1);
    addTo(container, 0, {7});
    PickingAdapter adapter({7});
    adapter.hits = false;  // although it writes an id that would match
    EXPECT_EQ(pickedFrom(container, &adapter), nullptr);
}

TEST(ContainerPickTest, AnAdapterThatDoesNotPickPicksNothing) {
    VizContainer container(1);
    addTo(container, 0, {7});
    support::RecordingAdapter adapter;
    EXPECT_EQ(pickedFrom(container, &adapter), nullptr);
}

TEST(ContainerPickTest, TheAdapterIsAskedOnceWithTheRayAndAnEmptyId) {
    VizContainer container(1);
    addTo(container, 0, {1});
    addTo(container, 1, {7});
    PickingAdapter adapter({7});
    const Ray ray;
    VizElement* out = nullptr;
    EXPECT_TRUE(container.PickVisual(&adapter, ray, out));
    EXPECT_EQ(adapter.asked, 1);
    EXPECT_EQ(adapter.askedRay, &ray);
    EXPECT_TRUE(adapter.askedWithEmptyId);
}

TEST(ContainerPickTest, AnEmptyContainerPicksNothing) {
    VizContainer container(1);
    PickingAdapter adapter({7});
    EXPECT_EQ(pickedFrom(container, &adapter), nullptr);
    EXPECT_EQ(adapter.asked, 1);
}

TEST(ContainerPickTest, IsCalledThroughTheBase) {
    VizContainer container(1);
    VizElement* const mesh = addTo(container, 0, {7});
    PickingAdapter adapter({7});
    AVizContainer& base = container;
    VizElement* out = nullptr;
    EXPECT_TRUE(base.PickVisual(&adapter, Ray(), out));
    EXPECT_EQ(out, mesh);
}

TEST(ContainerPickTest, PicksFromEveryList) {
    for (std::size_t list = 0; list < kLists; ++list) {
        SCOPED_TRACE(kListNames[list]);
        VizContainer container(1);
        for (std::size_t other = 0; other < kLists; ++other) {
            addTo(container, other, {100 + other});
        }
        VizElement* const element = addTo(container, list, {7, 3});
        PickingAdapter adapter({7, 3});
        EXPECT_EQ(pickedFrom(container, &adapter), element);
    }
}

TEST(ContainerPickTest, TheFirstListOfTwoWins) {
    for (std::size_t first = 0; first < kLists; ++first) {
        for (std::size_t second = first + 1; second < kLists; ++second) {
            SCOPED_TRACE(std::string(kListNames[first]) + " and " + kListNames[second]);
            VizContainer container(1);
            addTo(container, second, {7, 3});  // added before, and a closer match
            VizElement* const element = addTo(container, first, {7});
            PickingAdapter adapter({7, 3});
            EXPECT_EQ(pickedFrom(container, &adapter), element);
        }
    }
}

TEST(ContainerPickTest, TheFirstAddedOfAListWins) {
    for (std::size_t list = 0; list < kLists; ++list) {
        SCOPED_TRACE(kListNames[list]);
        VizContainer container(1);
        addTo(container, list, {8});
        VizElement* const element = addTo(container, list, {7});
        addTo(container, list, {7, 3});
        addTo(container, list, {7});
        PickingAdapter adapter({7, 3});
        EXPECT_EQ(pickedFrom(container, &adapter), element);
    }
}

TEST(ContainerPickTest, NullEntriesAreSkipped) {
    for (std::size_t list = 0; list < kLists; ++list) {
        SCOPED_TRACE(kListNames[list]);
        VizContainer container(1);
        container.AddMesh(nullptr);
        container.AddWire(nullptr);
        container.AddPointSet(nullptr);
        container.AddCGMesh(nullptr);
        container.AddCGWire(nullptr);
        container.AddCGPointSet(nullptr);
        VizElement* const element = addTo(container, list, {7});
        PickingAdapter adapter({7});
        EXPECT_EQ(pickedFrom(container, &adapter), element);
    }
}

TEST(ContainerPickTest, WhatTheElementsHoldIsNeverPicked) {
    VizContainer container(1);
    auto* const mesh = newPickable<MeshLoader>({1});
    mesh->AddFace(newPickable<FaceLoader>({7}));
    mesh->AddEdge(newPickable<EdgeLoader>({7}));
    auto* const wire = newPickable<WireLoader>({2});
    wire->AddEdge(newPickable<EdgeLoader>({7}));
    auto* const set = newPickable<PointSetLoader>({3});
    set->AddPoints(newPickable<PointsLoader>({7}));
    container.AddMesh(mesh);
    container.AddWire(wire);
    container.AddPointSet(set);
    PickingAdapter adapter({7});
    EXPECT_EQ(pickedFrom(container, &adapter), nullptr);
}

TEST(ContainerPickTest, AnElementWithoutAnEntityIsNeverPicked) {
    VizContainer container(1);
    auto* const mesh = support::loadMesh().release();
    mesh->Set3DRenderID(RenderId(Path{7, 3}, View3D));
    container.AddMesh(mesh);
    PickingAdapter adapter({7, 3});
    EXPECT_EQ(pickedFrom(container, &adapter), nullptr);
    mesh->SetEntityID(EntityId(5, InvalidType, 9));  // numbers without a type
    EXPECT_EQ(pickedFrom(container, &adapter), nullptr);
    mesh->SetEntityID(EntityId(0, BodyType, 0));  // a type is enough
    EXPECT_EQ(pickedFrom(container, &adapter), mesh);
}

TEST(ContainerPickTest, AnElementThatCannotBePickedDoesNotHideALaterOne) {
    VizContainer container(1);
    auto* const mesh = support::loadMesh().release();
    mesh->Set3DRenderID(RenderId(Path{7}, View3D));
    container.AddMesh(mesh);
    VizElement* const wire = addTo(container, 1, {7});
    PickingAdapter adapter({7});
    EXPECT_EQ(pickedFrom(container, &adapter), wire);
}

TEST(ContainerPickTest, AnElementWithoutA3DRenderIdIsNeverPicked) {
    EXPECT_FALSE(matches({}, {7}));
    EXPECT_FALSE(matches({}, {}));  // not even by an empty id
}

TEST(ContainerPickTest, TheTreeRenderIdIsNotLookedAt) {
    VizContainer container(1);
    auto* const mesh = newPickable<MeshLoader>({1});
    mesh->SetTreeRenderID(RenderId(Path{7}, View3D));
    container.AddMesh(mesh);
    PickingAdapter adapter({7});
    EXPECT_EQ(pickedFrom(container, &adapter), nullptr);
}

TEST(ContainerPickTest, TheSamePathMatches) {
    EXPECT_TRUE(matches({7, 3}, {7, 3}));
    EXPECT_TRUE(matches({0}, {0}));
}

TEST(ContainerPickTest, AHitBelowTheElementMatches) {
    EXPECT_TRUE(matches({7, 3}, {7, 3, 12}));
    EXPECT_TRUE(matches({7}, {7, 3, 12, 0, 5}));
}

TEST(ContainerPickTest, AHitAboveTheElementDoesNotMatch) {
    EXPECT_FALSE(matches({7, 3}, {7}));
    EXPECT_FALSE(matches({7, 0}, {7}));  // as it would if the hit were filled up with zeros
    EXPECT_FALSE(matches({7, 3}, {}));
}

TEST(ContainerPickTest, EveryValueCounts) {
    const Path own = {1, 2, 3, 4, 5};
    for (std::size_t place = 0; place < own.size(); ++place) {
        SCOPED_TRACE(place);
        Path hit = own;
        hit[place] += std::uint64_t{1} << 40U;  // in the upper half of the value alone
        EXPECT_FALSE(matches(own, hit));
        hit.push_back(6);
        EXPECT_FALSE(matches(own, hit));
    }
}

TEST(ContainerPickTest, OnlyTheSameOriginMatches) {
    const std::array<OriginEnum, 3> origins = {Unknown, View3D, ViewTree};
    for (const OriginEnum own : origins) {
        for (const OriginEnum hit : origins) {
            SCOPED_TRACE(std::to_string(own) + " and " + std::to_string(hit));
            EXPECT_EQ(matches({7, 3}, {7, 3}, own, hit), own == hit);
            EXPECT_EQ(matches({7, 3}, {7, 3, 12}, own, hit), own == hit);
        }
    }
}

/// The rule as it is told: the picked id, cut to the length of the element's own, is equal to it.
bool matchesByCutting(const VizElement& element, const RenderId& picked) {
    EntityId entity;
    RenderId own;
    if (!element.GetEntityID(entity) || !element.Get3DRenderID(own)) {
        return false;
    }
    RenderId cut = picked;
    if (cut.Length() > own.Length()) {
        cut.SetLength(own.Length());
    }
    return cut == own;
}

TEST(ContainerPickTest, RandomPicksFindWhatASearchByCuttingFinds) {
    SeededNumbers numbers(56);
    const auto below = [&numbers](int bound) {
        return static_cast<int>(numbers.Between(0, bound));
    };
    const auto randomPath = [&] {
        Path path;
        for (int length = below(4); length > 0; --length) {
            path.push_back(static_cast<std::uint64_t>(below(2)));
        }
        return path;
    };
    int found = 0;
    for (int round = 0; round < 500; ++round) {
        VizContainer container(1);
        std::array<std::vector<VizElement*>, kLists> lists;
        for (int count = below(8); count > 0; --count) {
            const auto list = static_cast<std::size_t>(below(kLists));
            VizElement* const element =
                addTo(container, list, randomPath(), static_cast<OriginEnum>(below(2)));
            if (below(4) == 0) {
                element->SetEntityID(EntityId());
            }
            lists[list].push_back(element);
        }
        PickingAdapter adapter(randomPath(), static_cast<OriginEnum>(below(2)));
        SCOPED_TRACE("round " + std::to_string(round) + ": " + adapter.picked.ToString());
        VizElement* expected = nullptr;
        for (const auto& list : lists) {
            for (VizElement* const element : list) {
                if (expected == nullptr && matchesByCutting(*element, adapter.picked)) {
                    expected = element;
                }
            }
        }
        EXPECT_EQ(pickedFrom(container, &adapter), expected);
        found += expected != nullptr ? 1 : 0;
    }
    EXPECT_GT(found, 50);
    EXPECT_LT(found, 450);
}

}  // namespace
}  // namespace KesVizCore
