#include "view/ViewTestKit.h"

#include <KesVizCore/view/IView3D.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <new>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace KesVizCore {
namespace {

using support::CallLog;
using support::RecordingAdapter;
using support::RecordingView;
using testing::ElementsAre;
using testing::IsEmpty;

/// Runs the library's own bodies of what RecordingView overrides.
class PlainView : public RecordingView {
public:
    using IView3D::SetView3DAdapter;
    using RecordingView::RecordingView;
    void OpenTopNode() override { IView3D::OpenTopNode(); }
    void CloseTopNode() override { IView3D::CloseTopNode(); }
};

struct IView3DTest : testing::Test {
    CallLog log;
    PlainView view{log};
};

TEST_F(IView3DTest, HostsAloneMakeOne) {
    EXPECT_TRUE(std::is_abstract_v<IView3D>);
    EXPECT_TRUE(std::has_virtual_destructor_v<IView3D>);
}

TEST_F(IView3DTest, NewViewHasNoAdapterNoExtentsAndDisplayOn) {
    EXPECT_EQ(view.GetView3DAdapter(), nullptr);
    EXPECT_EQ(view.GetGeometryCenter()[0], 0.0F);
    EXPECT_EQ(view.GetGeometryCenter()[1], 0.0F);
    EXPECT_EQ(view.GetGeometryCenter()[2], 0.0F);
    EXPECT_EQ(view.GetGeometryRadius(), 0.0F);
    EXPECT_FALSE(view.IsBackFacesVisible());
    EXPECT_TRUE(view.GetDisplayOn());
}

// Memory full of ones first: every field is set by the constructor, none left to chance.
TEST_F(IView3DTest, NewViewDependsOnNothingThatTheMemoryHeld) {
    alignas(PlainView) unsigned char memory[sizeof(PlainView)];
    std::fill(std::begin(memory), std::end(memory), static_cast<unsigned char>(0xFF));
    auto* const made = new (memory) PlainView(log);
    EXPECT_EQ(made->GetView3DAdapter(), nullptr);
    EXPECT_EQ(made->GetGeometryCenter()[2], 0.0F);
    EXPECT_EQ(made->GetGeometryRadius(), 0.0F);
    EXPECT_FALSE(made->IsBackFacesVisible());
    EXPECT_TRUE(made->GetDisplayOn());
    EXPECT_FALSE(made->NotifyPick(Ray()));
    made->~PlainView();
}

TEST_F(IView3DTest, SetClipPlaneDoesNothingAndAnswersFalse) {
    float point[3] = {1.0F, 2.0F, 3.0F};
    float normal[3] = {0.0F, 0.0F, 1.0F};
    EXPECT_FALSE(view.SetClipPlane(point, normal));
    EXPECT_THAT(point, ElementsAre(1.0F, 2.0F, 3.0F));
    EXPECT_THAT(normal, ElementsAre(0.0F, 0.0F, 1.0F));
    EXPECT_FALSE(view.SetClipPlane(nullptr, nullptr));
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(IView3DTest, UnSetClipPlaneDoesNothing) {
    view.UnSetClipPlane();
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(IView3DTest, OpenAndCloseTopNodeDoNothing) {
    RecordingAdapter adapter;
    view.AttachView3DAdapter(&adapter);
    log.clear();
    view.OpenTopNode();
    EXPECT_TRUE(adapter._openNodes.empty());
    adapter.openOnly(adapter._rootNode);
    view.CloseTopNode();
    EXPECT_EQ(adapter.GetCurrentOpenNode(), adapter._rootNode);
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(IView3DTest, BackFacesAreShownAndHidden) {
    view.SetBackFacesVisible(true);
    EXPECT_TRUE(view.IsBackFacesVisible());
    view.SetBackFacesVisible(false);
    EXPECT_FALSE(view.IsBackFacesVisible());
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(IView3DTest, DisplayRenders) {
    view.Display();
    view.Display();
    EXPECT_THAT(log, ElementsAre("Render", "Render"));
}

TEST_F(IView3DTest, DisplayDoesNothingWhileItIsOff) {
    view.SetDisplayOn(false);
    EXPECT_FALSE(view.GetDisplayOn());
    view.Display();
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(IView3DTest, TurningDisplayOnAgainRendersAtTheNextCallOnly) {
    view.SetDisplayOn(false);
    view.SetDisplayOn(true);
    EXPECT_TRUE(view.GetDisplayOn());
    EXPECT_THAT(log, IsEmpty());
    view.Display();
    EXPECT_THAT(log, ElementsAre("Render"));
}

TEST_F(IView3DTest, GeometryExtentsAreCopied) {
    float center[3] = {1.5F, -2.5F, 3.25F};
    view.SetGeometryExtents(center, 7.75F);
    center[0] = 99.0F;
    EXPECT_EQ(view.GetGeometryCenter()[0], 1.5F);
    EXPECT_EQ(view.GetGeometryCenter()[1], -2.5F);
    EXPECT_EQ(view.GetGeometryCenter()[2], 3.25F);
    EXPECT_EQ(view.GetGeometryRadius(), 7.75F);
}

TEST_F(IView3DTest, GeometryCenterPointsToTheStoredFloats) {
    const float* const stored = view.GetGeometryCenter();
    float center[3] = {1.0F, 2.0F, 3.0F};
    view.SetGeometryExtents(center, 1.0F);
    EXPECT_EQ(view.GetGeometryCenter(), stored);
    EXPECT_EQ(stored[2], 3.0F);
}

// --- picking ------------------------------------------------------------------------------------

/// Keeps the rays that it is told of.
class KeepingListener : public IRayPickListener {
public:
    void OnPick(const Ray& ray) override { rays.push_back(&ray); }
    std::vector<const Ray*> rays;
};

TEST_F(IView3DTest, NotifyPickWithoutAListenerAnswersFalse) {
    EXPECT_FALSE(view.NotifyPick(Ray()));
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(IView3DTest, NotifyPickHandsTheRayItselfToTheListener) {
    KeepingListener listener;
    view.SetRayPickListener(&listener);
    const Ray ray;
    EXPECT_TRUE(view.NotifyPick(ray));
    EXPECT_TRUE(view.NotifyPick(ray));
    EXPECT_THAT(listener.rays, ElementsAre(&ray, &ray));
}

TEST_F(IView3DTest, OneListenerReplacesAnother) {
    KeepingListener first;
    KeepingListener second;
    view.SetRayPickListener(&first);
    view.SetRayPickListener(&second);
    EXPECT_TRUE(view.NotifyPick(Ray()));
    EXPECT_THAT(first.rays, IsEmpty());
    EXPECT_EQ(second.rays.size(), 1U);
}

TEST_F(IView3DTest, NullTakesTheListenerAway) {
    KeepingListener listener;
    view.SetRayPickListener(&listener);
    view.SetRayPickListener(nullptr);
    EXPECT_FALSE(view.NotifyPick(Ray()));
    EXPECT_THAT(listener.rays, IsEmpty());
}

TEST_F(IView3DTest, WhatTheListenerThrowsPassesThrough) {
    struct ThrowingListener : IRayPickListener {
        void OnPick(const Ray&) override { throw std::runtime_error("no pick now"); }
    };
    ThrowingListener listener;
    view.SetRayPickListener(&listener);
    EXPECT_THROW(view.NotifyPick(Ray()), std::runtime_error);
}

TEST_F(IView3DTest, ViewLeavesItsListenerAndItsAdapter) {
    struct TellingListener : KeepingListener {
        explicit TellingListener(int& deaths) : _deaths(deaths) {}
        ~TellingListener() override { ++_deaths; }
        int& _deaths;
    };
    int deaths = 0;
    TellingListener listener(deaths);
    RecordingAdapter adapter;
    {
        PlainView shortLived(log);
        shortLived.SetRayPickListener(&listener);
        adapter.SetView3D(&shortLived);
    }
    EXPECT_EQ(deaths, 0);
    EXPECT_NE(adapter.GetSelectionHolder(), nullptr);
}

// --- the adapter --------------------------------------------------------------------------------

TEST_F(IView3DTest, SetView3DAdapterHandsTheAdapterToTheHostsAttach) {
    RecordingAdapter adapter;
    view.SetView3DAdapter(&adapter);
    EXPECT_THAT(log, ElementsAre("AttachView3DAdapter"));
    EXPECT_EQ(view.GetView3DAdapter(), &adapter);
    view.SetView3DAdapter(nullptr);
    EXPECT_THAT(log, ElementsAre("AttachView3DAdapter", "AttachView3DAdapter"));
    EXPECT_EQ(view.GetView3DAdapter(), nullptr);
}

TEST_F(IView3DTest, StoringTheAdapterIsTheHostsPart) {
    struct ForgetfulView : PlainView {
        using PlainView::PlainView;
        void AttachView3DAdapter(AView3DAdapter*) override {}
    };
    RecordingAdapter adapter;
    ForgetfulView forgetful(log);
    adapter.SetView3D(&forgetful);
    EXPECT_EQ(forgetful.GetView3DAdapter(), nullptr);
}

}  // namespace
}  // namespace KesVizCore
