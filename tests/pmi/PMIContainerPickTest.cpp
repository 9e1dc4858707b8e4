#include "pmi/PMITestKit.h"
#include "support/RecordingHost.h"

#include <KesVizCore/math/Ray.h>
#include <KesVizCore/pmi/VizPMIContainer.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace KesVizCore {
namespace {

using support::idIn3D;

/// An adapter on which every ray hits the same node, or none.
class PickingAdapter : public support::RecordingAdapter {
public:
    bool PickVisual(const Ray& ray, RenderId& id) override {
        asked.push_back(ray.ToString());
        lengthBefore = id.Length();
        id = picked;
        return hits;
    }

    RenderId picked;
    bool hits = true;
    std::vector<std::string> asked;
    int lengthBefore = -1;
};

/// A container, and an element of each kind, made to answer to a render id.
class PMIContainerPickTest : public testing::Test {
protected:
    /// The element for which the container answers to @p picked, or null.
    VizElement* pick(const RenderId& picked) {
        _adapter.picked = picked;
        VizElement* out = _untouched.get();
        const bool found = _container.PickVisual(&_adapter, Ray(), out);
        EXPECT_EQ(found, out != _untouched.get());
        return found ? out : nullptr;
    }
    /// Has the element stand for an entity, at (7, 3) of the 3D scene.
    template <typename Element>
    Element* placed(Element* element, const RenderId& id = idIn3D({7, 3})) {
        element->SetEntityID(EntityId(0, OtherType, 1));
        element->Set3DRenderID(id);
        return element;
    }
    VizPMI* addPMI() {
        VizPMI* const pmi = support::loadPMI().release();
        _container.AddVizPMI(pmi);
        return pmi;
    }

    PickingAdapter _adapter;
    VizPMIContainer _container{1};
    std::unique_ptr<VizMesh> _untouched = support::loadMesh();
};

TEST_F(PMIContainerPickTest, WithoutAnAdapterNothingIsPicked) {
    placed(addPMI());
    VizElement* out = _untouched.get();
    EXPECT_FALSE(_container.PickVisual(nullptr, Ray(), out));
    EXPECT_EQ(out, _untouched.get());
}

TEST_F(PMIContainerPickTest, WithoutAHitNothingIsPicked) {
    placed(addPMI());
    _adapter.hits = false;
    EXPECT_EQ(pick(idIn3D({7, 3})), nullptr);
}

TEST_F(PMIContainerPickTest, TheRayGoesToTheAdapterAsItIs) {
    const float root[3] = {1, 2, 3};
    const float direction[3] = {0, 0, -4};
    const Ray ray(root, direction, 0.5);
    VizElement* out = nullptr;
    EXPECT_FALSE(_container.PickVisual(&_adapter, ray, out));
    EXPECT_EQ(_adapter.asked, std::vector<std::string>{ray.ToString()});
    EXPECT_EQ(_adapter.lengthBefore, 0);
}

TEST_F(PMIContainerPickTest, IsReachedThroughTheBase) {
    VizPMI* const pmi = placed(addPMI());
    _adapter.picked = idIn3D({7, 3});
    AVizContainer& base = _container;
    VizElement* out = nullptr;
    EXPECT_TRUE(base.PickVisual(&_adapter, Ray(), out));
    EXPECT_EQ(out, pmi);
}

TEST_F(PMIContainerPickTest, TheListsAreSearchedInAFixedOrder) {
    VizCapture* const capture = support::loadCapture().release();
    VizView* const view = support::loadView().release();
    VizPointSet* const pointSet = support::loadPointSet().release();
    VizWire* const wire = support::loadWire().release();
    VizMesh* const mesh = support::loadMesh().release();
    _container.AddCapture(capture);
    _container.AddView(view);
    _container.AddVizMarkCGPointSet(pointSet);
    _container.AddVizMarkCGWire(wire);
    _container.AddVizMarkCGMesh(mesh);
    VizPMI* const pmi = addPMI();

    // Each kind that begins to match is found before those that matched already.
    EXPECT_EQ(pick(idIn3D({7, 3})), nullptr);
    EXPECT_EQ(pick(idIn3D({7, 3})), nullptr);
    placed(capture);
    EXPECT_EQ(pick(idIn3D({7, 3})), capture);
    placed(view);
    EXPECT_EQ(pick(idIn3D({7, 3})), view);
    placed(pointSet);
    EXPECT_EQ(pick(idIn3D({7, 3})), pointSet);
    placed(wire);
    EXPECT_EQ(pick(idIn3D({7, 3})), wire);
    placed(mesh);
    EXPECT_EQ(pick(idIn3D({7, 3})), mesh);
    placed(pmi);
    EXPECT_EQ(pick(idIn3D({7, 3})), pmi);
}

TEST_F(PMIContainerPickTest, WithinAListTheFirstAddedWins) {
    VizPMI* const first = addPMI();
    VizPMI* const second = addPMI();
    placed(second);
    EXPECT_EQ(pick(idIn3D({7, 3})), second);
    placed(first);
    EXPECT_EQ(pick(idIn3D({7, 3})), first);
}

TEST_F(PMIContainerPickTest, NullsInTheListsAreSkipped) {
    _container.AddVizMarkCGMesh(nullptr);
    _container.AddVizMarkCGWire(nullptr);
    _container.AddVizMarkCGPointSet(nullptr);
    _container.AddView(nullptr);
    _container.AddCapture(nullptr);
    VizCapture* const capture = support::loadCapture().release();
    _container.AddCapture(placed(capture));
    EXPECT_EQ(pick(idIn3D({7, 3})), capture);
}

TEST_F(PMIContainerPickTest, AnElementWithoutAnEntityIsNeverPicked) {
    VizPMI* const pmi = placed(addPMI());
    pmi->SetEntityID(EntityId());
    EXPECT_EQ(pick(idIn3D({7, 3})), nullptr);
    pmi->SetEntityID(EntityId(4, InvalidType, 5));  // without a type it is none
    EXPECT_EQ(pick(idIn3D({7, 3})), nullptr);
    pmi->SetEntityID(EntityId(0, NoteType, 0));
    EXPECT_EQ(pick(idIn3D({7, 3})), pmi);
}

TEST_F(PMIContainerPickTest, AnElementWithoutARenderIdIsNeverPicked) {
    placed(addPMI(), RenderId());
    EXPECT_EQ(pick(idIn3D({7, 3})), nullptr);
    EXPECT_EQ(pick(RenderId()), nullptr);
}

TEST_F(PMIContainerPickTest, AHitBelowAnElementPicksTheElement) {
    VizPMI* const pmi = placed(addPMI());
    EXPECT_EQ(pick(idIn3D({7, 3, 12})), pmi);
    EXPECT_EQ(pick(idIn3D({7, 3, 12, 1, 2})), pmi);
}

TEST_F(PMIContainerPickTest, AHitAboveOrBesideAnElementDoesNotPickIt) {
    placed(addPMI());
    EXPECT_EQ(pick(idIn3D({7})), nullptr);
    EXPECT_EQ(pick(idIn3D({})), nullptr);
    EXPECT_EQ(pick(idIn3D({7, 4})), nullptr);
    EXPECT_EQ(pick(idIn3D({6, 3, 12})), nullptr);
}

TEST_F(PMIContainerPickTest, AnotherOriginDoesNotMatch) {
    placed(addPMI());
    EXPECT_EQ(pick(RenderId({7, 3}, ViewTree)), nullptr);
    EXPECT_EQ(pick(RenderId({7, 3, 12}, Unknown)), nullptr);
}

TEST_F(PMIContainerPickTest, WhatAnAnnotationHoldsIsNotTried) {
    VizPMI* const pmi = addPMI();
    auto edge = support::loadEdge();
    pmi->AddEdge(placed(edge.release()));
    EXPECT_EQ(pick(idIn3D({7, 3})), nullptr);
}

TEST_F(PMIContainerPickTest, ClearedAnnotationsAreNotPicked) {
    VizPMI* const pmi = placed(addPMI());
    _container.ClearPMIWithoutDeletingIt();
    EXPECT_EQ(pick(idIn3D({7, 3})), nullptr);
    EXPECT_TRUE(_container.DeletePMI(pmi->GetMechanicalID()));
}

}  // namespace
}  // namespace KesVizCore
