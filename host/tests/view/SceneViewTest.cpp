#include "view/SceneKit.h"

#include <KesVizCore/math/Ray.h>
#include <KesVizCore/model/VizCapture.h>
#include <KesVizCore/view/IRayPickListener.h>

#include <gtest/gtest.h>

#include <stdexcept>

namespace kesview::testing {
namespace {

/// A body far below the eye, seen from the top.
struct SceneViewTest : public ::testing::Test {
    SceneViewTest() {
        kit.Body(kit.Root(), 5);
        view.SetViewport(200, 100);
        view.SetStandardView("top");
    }
    void expectMiddle(const Vector& middle) const {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            EXPECT_NEAR(view.GetCamera().target[axis], middle[axis], 1e-6);
        }
    }

    SceneKit kit;
    SceneView& view = kit.view;
};

TEST_F(SceneViewTest, FitAllLooksAtTheMiddleOfAllThatIsShown) {
    expectMiddle({5, 5, 0});
    kit.Place(kit.scene.GetNode(path({1, 5})), moved(1e7, 0, 0));
    view.FitAll();
    expectMiddle({1e7 + 5, 5, 0});
    EXPECT_FLOAT_EQ(view.GetGeometryCenter()[0], 1e7F + 5);
    kit.scene.Hide(path({1}));
    view.FitAll();
    expectMiddle({1e7 + 5, 5, 0});
}

TEST_F(SceneViewTest, TheExtentHasTheShapeOfTheViewport) {
    float width = 0;
    float height = 0;
    view.GetViewExtent(width, height);
    EXPECT_FLOAT_EQ(width, 2 * height);
    EXPECT_GT(height, 10);
    EXPECT_LT(height, 11);
    EXPECT_FALSE(view.SetStandardView("somewhere"));
}

TEST_F(SceneViewTest, TheRayOfTheMiddleHitsTheTarget) {
    viz::Ray ray;
    view.SetViewport(101, 51);
    ASSERT_TRUE(view.GetRay(50, 25, ray));
    EXPECT_NEAR(ray.Root[0], 5, 1e-5);
    EXPECT_NEAR(ray.Root[1], 5, 1e-5);
    EXPECT_LT(ray.Direction[2], 0);
    EXPECT_NEAR(ray.Aperture, 3 * view.GetCamera().height / 51, 1e-9);
    EXPECT_FALSE(view.GetRay(101, 25, ray));
    EXPECT_FALSE(view.GetRay(-1, 25, ray));
    EXPECT_FALSE(view.GetRay(0, 51, ray));
}

TEST_F(SceneViewTest, TheRayOfTheLibraryIsThatOfTheExactCamera) {
    view.SetStandardView("iso");
    for (const bool perspective : {false, true}) {
        view.SetPerspective(perspective);
        for (const auto& [x, y] : {std::pair(0, 0), std::pair(199, 99), std::pair(10, 80)}) {
            viz::Ray ray;
            ASSERT_TRUE(view.GetRay(x, y, ray));
            const PickRay exact = rayThrough(view.GetCamera(), 200, 100, x, y);
            const Vector direction = unit({ray.Direction[0], ray.Direction[1], ray.Direction[2]});
            for (std::size_t axis = 0; axis < 3; ++axis) {
                EXPECT_NEAR(ray.Root[axis], exact.root[axis], 1e-4);
                EXPECT_NEAR(direction[axis], exact.direction[axis], 1e-6);
            }
        }
    }
}

TEST_F(SceneViewTest, KeepsACameraAndTurnsItUpright) {
    const float eye[3] = {10, 0, 0};
    const float target[3] = {0, 0, 0};
    const float up[3] = {1, 0, 2};
    view.SetCamera(eye, target, up);
    float gotEye[3];
    float gotTarget[3];
    float gotUp[3];
    view.GetCamera(gotEye, gotTarget, gotUp);
    EXPECT_EQ(gotEye[0], 10);
    EXPECT_EQ(gotTarget[0], 0);
    EXPECT_EQ(gotUp[0], 0);
    EXPECT_EQ(gotUp[2], 1);
}

TEST_F(SceneViewTest, ACaptureGivesCameraAndClippingPlane) {
    viz::VizCapture capture;
    EXPECT_FALSE(view.SetCapture(capture));
    float eye[3] = {0, -50, 0};
    float target[3] = {0, 0, 0};
    float up[3] = {0, 0, 1};
    const float origin[3] = {1, 2, 3};
    const float u[3] = {0, 1, 0};
    const float v[3] = {0, 0, 1};
    capture.SetOrientation(eye, target, up);
    capture.SetCameraType(viz::VizCapture::Orthographic);
    capture.SetOrthographicZoomFactor(75);
    capture.SetClippingPlane(origin, u, v);
    ASSERT_TRUE(view.SetCapture(capture));
    EXPECT_EQ(view.GetCamera().height, 75);
    const Picture picture = view.MakePicture();
    ASSERT_TRUE(picture.clipping);
    EXPECT_EQ(picture.clipping->point, (Vector{1, 2, 3}));
    EXPECT_EQ(picture.clipping->normal, (Vector{1, 0, 0}));

    viz::VizCapture other;
    other.SetOrientation(eye, target, up);
    ASSERT_TRUE(view.SetCapture(other));
    EXPECT_FALSE(view.MakePicture().clipping) << "it has none";
    EXPECT_NEAR(view.GetCamera().target[0], 5, 1e-9) << "all is seen where it does not say";
}

TEST_F(SceneViewTest, TheClipPlaneIsOneOfLengthOne) {
    float point[3] = {1, 2, 3};
    float normal[3] = {0, 0, -4};
    float none[3] = {0, 0, 0};
    EXPECT_TRUE(view.SetClipPlane(point, normal));
    EXPECT_EQ(view.MakePicture().clipping->normal, (Vector{0, 0, -1}));
    EXPECT_FALSE(view.SetClipPlane(point, none));
    view.UnSetClipPlane();
    EXPECT_FALSE(view.MakePicture().clipping);
    SceneView alone;
    EXPECT_FALSE(alone.SetClipPlane(point, normal));
}

TEST_F(SceneViewTest, ThePictureHasWhatTheViewIsSetTo) {
    view.SetBackground({1, 2, 3, 255}, Color{4, 5, 6, 255});
    view.SetAntialiasLevel(16);
    Picture picture = view.MakePicture();
    EXPECT_EQ(picture.width, 200);
    EXPECT_EQ(picture.background, (Color{1, 2, 3, 255}));
    EXPECT_EQ(picture.backgroundTop, (Color{4, 5, 6, 255}));
    EXPECT_EQ(picture.samples, 16);
    EXPECT_EQ(picture.camera.target, view.GetCamera().target);
    view.SetBackground(viz::RGBAColor(7, 8, 9, 255));
    picture = view.MakePicture();
    EXPECT_FALSE(picture.backgroundTop);
    viz::RGBAColor background;
    view.GetBackground(background);
    EXPECT_EQ(background, viz::RGBAColor(7, 8, 9, 255));
}

TEST_F(SceneViewTest, DrawsOnceUntilSomethingChanges) {
    int drawings = 0;
    SceneView drawn(
        [&](const Picture& picture) {
            ++drawings;
            return Image{picture.width, picture.height, {}};
        },
        {});
    kit.scene.SetView3D(&drawn);
    drawn.SetViewport(7, 5);
    EXPECT_EQ(drawn.GetImage().width, 7);
    drawn.GetImage();
    EXPECT_EQ(drawings, 1);
    kit.scene.GetRenderingOptions()->SetDisplayEdges(false);
    drawn.GetImage();
    EXPECT_EQ(drawings, 2);
}

TEST_F(SceneViewTest, SavesWhatIsDrawnOrSaysWhyNot) {
    std::string saved;
    SceneView drawn(
        [](const Picture&) {
            return Image{1, 1, {1, 2, 3}};
        },
        [&](const Image& image, const std::string& path) {
            saved = path + std::to_string(image.pixels.size());
        });
    EXPECT_TRUE(drawn.SaveImage(L"b\u00fcrste.png"));
    EXPECT_EQ(saved, "bürste.png3");

    SceneView failing([](const Picture&) -> Image { throw std::runtime_error("no context"); },
                      [](const Image&, const std::string&) {});
    EXPECT_FALSE(failing.SaveImage(L"a.png"));
    EXPECT_EQ(failing.GetError(), "no context");
    EXPECT_FALSE(view.SaveImage(L"a.png")) << "nothing draws";
}

TEST_F(SceneViewTest, TellsItsListenerOfEveryRayAndPicksNothingWithoutAPicker) {
    struct Listener : viz::IRayPickListener {
        void OnPick(const viz::Ray&) override { ++count; }
        int count = 0;
    };
    Listener listener;
    view.SetRayPickListener(&listener);
    viz::RenderId id;
    EXPECT_FALSE(view.PickAt(100, 50, id));
    EXPECT_FALSE(view.PickAt(500, 50, id));
    EXPECT_EQ(listener.count, 1);
}

TEST_F(SceneViewTest, TellsWhatItShows) {
    kit.scene.Highlight(path({1, 5, faces}), viz::RGBAColor(255, 140, 0, 255));
    std::string text;
    view.GetSceneGraphStructure(text, false);
    EXPECT_EQ(text, "10001 lines #1c2026ff\n10002 triangles #ff8c00ff\n");
    text.clear();
    kit.scene.GetSceneGraphStructure(text, true);
    EXPECT_NE(text.find("[ 1, 5, 10002, 100 View3D ]"), std::string::npos);
}

}  // namespace
}  // namespace kesview::testing
