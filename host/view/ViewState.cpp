#include "view/ViewState.h"

#include "view/SceneAdapter.h"
#include "view/SceneView.h"

namespace kesview {

namespace {

void readScene(SceneAdapter& scene, ViewState& state) {
    const viz::RenderingOptions& options = *scene.GetRenderingOptions();
    state.clipping = scene.GetClipping();
    state.clipsAnnotations = scene.ClipsAnnotations();
    state.faces = options.GetDisplayFaces();
    state.edges = options.GetDisplayEdges();
    state.vertices = options.GetDisplayVertices();
    state.clouds = options.GetDisplayClouds();
    state.annotations = options.GetDisplayPMI();
    state.hiddenTypes = scene.Filter().Hidden();
    for (const auto& [path, mark] : scene.Hiding().GetMarks().List()) {
        (mark == Shownness::Hidden ? state.hidden : state.shown).push_back(path);
    }
    state.isolated = scene.GetIsolated();
    state.highlighted = scene.Highlighting().GetMarks().List();
}

void applyToOptions(const ViewState& state, viz::RenderingOptions& options) {
    options.SetDisplayFaces(state.faces);
    options.SetDisplayEdges(state.edges);
    options.SetDisplayVertices(state.vertices);
    options.SetDisplayClouds(state.clouds);
    options.SetDisplayPMI(state.annotations);
    options.SetAntialiasLevel(state.samples);
}

void applyToScene(const ViewState& state, SceneAdapter& scene) {
    applyToOptions(state, *scene.GetRenderingOptions());
    scene.Filter().Reset();
    for (const int type : state.hiddenTypes) {
        scene.Filter().SetVisible(type, false);
    }
    scene.ShowAll();
    for (const viz::RenderId& path : state.hidden) {
        scene.Hiding().GetMarks().Set(path, Shownness::Hidden);
    }
    for (const viz::RenderId& path : state.shown) {
        scene.Hiding().GetMarks().Set(path, Shownness::Shown);
    }
    scene.SetIsolated(state.isolated);
    scene.UnhighlightAll();
    for (const auto& [path, color] : state.highlighted) {
        scene.Highlighting().GetMarks().Set(path, color);
    }
    scene.SetClipping(state.clipping, state.clipsAnnotations);
}

}  // namespace

ViewState stateOf(const SceneView& view) {
    ViewState state;
    state.width = view.Width();
    state.height = view.Height();
    state.camera = view.GetCamera();
    state.background = view.BackgroundColor();
    state.backgroundTop = view.BackgroundTop();
    state.samples = view.Samples();
    state.aperture = view.GetAperture();
    if (view.GetScene() != nullptr) {
        readScene(*view.GetScene(), state);
    }
    return state;
}

void apply(const ViewState& state, SceneView& view) {
    view.SetViewport(state.width, state.height);
    view.SetCamera(state.camera);
    view.SetBackground(state.background, state.backgroundTop);
    view.SetAperture(state.aperture);
    if (SceneAdapter* const scene = view.GetScene()) {
        scene->BeginUpdate();
        applyToScene(state, *scene);
        scene->EndUpdate();
    }
}

}  // namespace kesview
