#include "view/SceneKit.h"
#include "view/ViewState.h"

#include <gtest/gtest.h>

namespace kesview::testing {
namespace {

/// Two references to one body.
void makeScene(SceneKit& kit) {
    viz::Node* const first = kit.Group(kit.Root(), 2);
    kit.Group(kit.Root(), 3)->AddChild(kit.Body(first, 5));
}

TEST(ViewStateTest, CarriesAllFromOneViewToAnother) {
    SceneKit from;
    makeScene(from);
    from.view.SetViewport(320, 200);
    from.view.SetStandardView("left");
    from.view.SetAperture(5);
    from.view.SetBackground({1, 2, 3, 255}, Color{4, 5, 6, 255});
    from.view.SetAntialiasLevel(4);
    from.scene.SetClipping(SavedView::Plane{{1, 2, 3}, {0, 0, 1}}, true);
    from.scene.Hide(path({1, 2, 5, faces}));
    from.scene.Show(path({1, 3}));
    from.scene.Highlight(path({1, 3, 5}), viz::RGBAColor(255, 0, 0, 255));
    from.scene.Unhighlight(path({1, 3, 5, faces}));
    from.scene.Filter().SetVisible(viz::NoteType, false);
    from.scene.GetRenderingOptions()->SetDisplayVertices(true);

    SceneKit to;
    makeScene(to);
    to.scene.Hide(path({1, 3}));  // is not what the state says
    apply(stateOf(from.view), to.view);

    const ViewState state = stateOf(to.view);
    EXPECT_EQ(state.width, 320);
    EXPECT_EQ(state.camera.eye, from.view.GetCamera().eye);
    EXPECT_EQ(state.aperture, 5);
    EXPECT_EQ(state.backgroundTop, (Color{4, 5, 6, 255}));
    EXPECT_EQ(state.samples, 4);
    ASSERT_TRUE(state.clipping);
    EXPECT_EQ(state.clipping->point, (Vector{1, 2, 3}));
    EXPECT_TRUE(state.clipsAnnotations);
    EXPECT_TRUE(state.vertices);
    EXPECT_EQ(state.hiddenTypes, (std::set<int>{viz::NoteType}));
    EXPECT_EQ(texts(state.hidden), texts({path({1, 2, 5, faces})}));
    EXPECT_EQ(texts(state.shown), texts({path({1, 3})}));
    ASSERT_EQ(state.highlighted.size(), 2U);
    EXPECT_EQ(state.highlighted[0].second, (Color{255, 0, 0, 255}));
    EXPECT_FALSE(state.highlighted[1].second);
    EXPECT_EQ(shownPaths(to.scene), shownPaths(from.scene));
}

TEST(ViewStateTest, IsolationIsPartOfIt) {
    SceneKit kit;
    makeScene(kit);
    const ViewState before = stateOf(kit.view);
    kit.scene.Isolate(path({1, 3}));
    const ViewState isolated = stateOf(kit.view);
    EXPECT_EQ(texts(isolated.isolated), texts({path({1, 3})}));
    apply(before, kit.view);
    EXPECT_EQ(shownPaths(kit.scene).size(), 4U);
    apply(isolated, kit.view);
    EXPECT_EQ(shownPaths(kit.scene).size(), 2U);
}

TEST(ViewStateTest, AppliesToAViewWithoutAScene) {
    ViewState state;
    state.width = 12;
    SceneView view;
    apply(state, view);
    EXPECT_EQ(stateOf(view).width, 12);
}

}  // namespace
}  // namespace kesview::testing
