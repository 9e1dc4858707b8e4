#include "view/Cameras.h"

#include <KesVizCore/model/VizCapture.h>

#include <gtest/gtest.h>

#include <cmath>

namespace kesview {
namespace {

void expectNear(const Vector& actual, const Vector& expected, double tolerance = 1e-9) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        EXPECT_NEAR(actual[axis], expected[axis], tolerance) << "axis " << axis;
    }
}

/// Where a point of the world is seen, in pixels from the upper left corner.
std::array<double, 2> project(const Camera& camera, int width, int height, const Vector& point) {
    const Vector back = unit(camera.eye - camera.target);
    const Vector offset = point - camera.target;
    const double distance = lengthOf(camera.eye - camera.target);
    const double nearer = camera.perspective ? distance / (distance - dot(offset, back)) : 1;
    const double pixels = height / camera.height * nearer;
    return {width / 2.0 + pixels * dot(offset, rightOf(camera)),
            height / 2.0 - pixels * dot(offset, camera.up)};
}

TEST(StandardCameraTest, LooksWhereItsNameSays) {
    struct Expected {
        const char* name;
        Vector eye;
        Vector up;
        Vector right;
    };
    const Expected all[] = {
        {"front", {0, -1, 0}, {0, 0, 1}, {1, 0, 0}}, {"back", {0, 1, 0}, {0, 0, 1}, {-1, 0, 0}},
        {"left", {-1, 0, 0}, {0, 0, 1}, {0, -1, 0}}, {"right", {1, 0, 0}, {0, 0, 1}, {0, 1, 0}},
        {"top", {0, 0, 1}, {0, 1, 0}, {1, 0, 0}},    {"bottom", {0, 0, -1}, {0, -1, 0}, {1, 0, 0}}};
    for (const Expected& expected : all) {
        SCOPED_TRACE(expected.name);
        const std::optional<Camera> camera = standardCamera(expected.name);
        ASSERT_TRUE(camera);
        expectNear(camera->eye, expected.eye);
        expectNear(camera->up, expected.up);
        expectNear(rightOf(*camera), expected.right);
    }
    const Camera iso = *standardCamera("iso");
    expectNear(iso.eye, std::sqrt(1.0 / 3) * Vector{1, -1, 1});
    EXPECT_GT(iso.up[2], 0.8);
    EXPECT_FALSE(standardCamera("Front"));
    EXPECT_EQ(standardViewNames().size(), 7U);
    for (const std::string& name : standardViewNames()) {
        EXPECT_TRUE(standardCamera(name)) << name;
    }
}

TEST(UprightTest, TurnsUpOntoTheLineOfSight) {
    Camera camera;
    camera.eye = {0, -10, 0};
    camera.up = {0, 5, 5};
    expectNear(upright(camera).up, {0, 0, 1});
    camera.up = {0, 3, 0};
    const Camera along = upright(camera);
    EXPECT_NEAR(lengthOf(along.up), 1, 1e-12);
    EXPECT_NEAR(along.up[1], 0, 1e-12);
    camera.eye = camera.target;
    EXPECT_GT(lengthOf(upright(camera).eye - camera.target), 0);
}

TEST(FittedTest, EveryCornerIsSeenAndOneNearTheEdge) {
    Box box;
    box.Add({-10, 20, 1000});
    box.Add({200, 25, 1030});
    for (const std::string& name : standardViewNames()) {
        for (const bool perspective : {false, true}) {
            SCOPED_TRACE(name + (perspective ? " in perspective" : ""));
            const Camera camera =
                fitted(withPerspective(*standardCamera(name), perspective), box, 800, 400);
            double margin = HUGE_VAL;
            for (unsigned corner = 0; corner < 8; ++corner) {
                const Vector point = {(corner & 1U) != 0 ? box.high[0] : box.low[0],
                                      (corner & 2U) != 0 ? box.high[1] : box.low[1],
                                      (corner & 4U) != 0 ? box.high[2] : box.low[2]};
                const std::array<double, 2> pixel = project(camera, 800, 400, point);
                margin = std::min({margin, pixel[0], 800 - pixel[0], pixel[1], 400 - pixel[1]});
            }
            EXPECT_GT(margin, 0);
            EXPECT_LT(margin, 45) << "no larger than need be";
            expectNear(camera.target, {95, 22.5, 1015});
        }
    }
}

TEST(FittedTest, APointHasASizeAndNothingChangesNothing) {
    Box point;
    point.Add({3, 4, 5});
    const Camera camera = fitted(*standardCamera("front"), point, 100, 100);
    EXPECT_GT(camera.height, 0);
    EXPECT_GT(lengthOf(camera.eye - camera.target), 0);
    EXPECT_EQ(fitted(*standardCamera("front"), Box(), 100, 100).height, 1);
}

TEST(WithPerspectiveTest, KeepsWhatIsSeenOfThePlaneThroughTheTarget) {
    Camera camera = *standardCamera("front");
    camera.height = 100;
    const Camera seen = withPerspective(camera, true);
    EXPECT_EQ(seen.height, 100);
    const double angle = 2 * std::atan(50 / lengthOf(seen.eye - seen.target));
    EXPECT_NEAR(angle, defaultViewAngle * 3.14159265358979 / 180, 1e-9);
    EXPECT_FALSE(withPerspective(seen, false).perspective);
}

TEST(CameraOfTest, TakesWhatACaptureSays) {
    viz::VizCapture capture;
    EXPECT_FALSE(cameraOf(capture)) << "never set";
    float eye[3] = {0, -50, 0};
    float target[3] = {0, 0, 0};
    float up[3] = {0, 0, 1};
    capture.SetOrientation(eye, target, up);
    capture.SetCameraType(viz::VizCapture::Orthographic);
    EXPECT_EQ(cameraOf(capture)->height, 0) << "it does not say how much is seen";
    capture.SetOrthographicZoomFactor(75);
    EXPECT_EQ(cameraOf(capture)->height, 75);
    EXPECT_FALSE(cameraOf(capture)->perspective);
    capture.SetCameraType(viz::VizCapture::Perspective);
    capture.SetPerspectiveViewAngle(90);
    EXPECT_NEAR(cameraOf(capture)->height, 100, 1e-9);
    EXPECT_TRUE(cameraOf(capture)->perspective);
}

TEST(RayThroughTest, MeetsThePointThatIsSeenAtThePixel) {
    Camera camera = *standardCamera("iso");
    camera.target = {5, 6, 7};
    camera.eye = camera.target + 80 * camera.eye;
    camera.height = 40;
    for (const bool perspective : {false, true}) {
        camera.perspective = perspective;
        for (const auto& [x, y] : {std::pair(0, 0), std::pair(319, 199), std::pair(160, 100)}) {
            const PickRay ray = rayThrough(camera, 320, 200, x, y);
            for (const double along : {30.0, 80.0, 300.0}) {
                const std::array<double, 2> pixel =
                    project(camera, 320, 200, ray.root + along * ray.direction);
                EXPECT_NEAR(pixel[0], x + 0.5, 1e-6);
                EXPECT_NEAR(pixel[1], y + 0.5, 1e-6);
            }
        }
    }
}

}  // namespace
}  // namespace kesview
