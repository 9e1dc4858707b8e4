#include "view/Cameras.h"

#include <KesVizCore/model/VizCapture.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace kesview {

namespace {

constexpr double kMargin = 1.05;
constexpr double kRadiansPerDegree = 3.14159265358979323846 / 180;

struct Standard {
    Vector towardsEye;
    Vector up;
};

const std::vector<std::pair<std::string, Standard>>& standards() {
    static const std::vector<std::pair<std::string, Standard>> all = {
        {"iso", {{1, -1, 1}, {0, 0, 1}}},    {"front", {{0, -1, 0}, {0, 0, 1}}},
        {"back", {{0, 1, 0}, {0, 0, 1}}},    {"left", {{-1, 0, 0}, {0, 0, 1}}},
        {"right", {{1, 0, 0}, {0, 0, 1}}},   {"top", {{0, 0, 1}, {0, 1, 0}}},
        {"bottom", {{0, 0, -1}, {0, -1, 0}}}};
    return all;
}

}  // namespace

const std::vector<std::string>& standardViewNames() {
    static const std::vector<std::string> names = [] {
        std::vector<std::string> list;
        for (const auto& [name, standard] : standards()) {
            list.push_back(name);
        }
        return list;
    }();
    return names;
}

std::optional<Camera> standardCamera(const std::string& name) {
    for (const auto& [known, standard] : standards()) {
        if (known == name) {
            Camera camera;
            camera.eye = unit(standard.towardsEye);
            camera.up = standard.up;
            return upright(camera);
        }
    }
    return std::nullopt;
}

Camera upright(const Camera& camera) {
    Camera turned = camera;
    if (lengthOf(camera.eye - camera.target) <= 0) {
        turned.eye = camera.target + Vector{0, 0, 1};
    }
    const Vector back = unit(turned.eye - turned.target);
    Vector right = cross(unit(camera.up), back);
    if (lengthOf(right) < 1e-9) {
        right = cross(std::abs(back[2]) < 0.9 ? Vector{0, 0, 1} : Vector{0, 1, 0}, back);
    }
    turned.up = unit(cross(back, right));
    return turned;
}

Vector rightOf(const Camera& camera) {
    return unit(cross(camera.up, camera.eye - camera.target));
}

Camera withPerspective(const Camera& camera, bool perspective) {
    Camera changed = camera;
    if (perspective && !camera.perspective) {
        const Vector back = unit(camera.eye - camera.target);
        const double distance =
            camera.height / 2 / std::tan(defaultViewAngle / 2 * kRadiansPerDegree);
        changed.eye = camera.target + distance * back;
    }
    changed.perspective = perspective;
    return changed;
}

// --- fitting ------------------------------------------------------------------------------------

namespace {

std::vector<Vector> cornersOf(const Box& box) {
    std::vector<Vector> corners;
    for (unsigned corner = 0; corner < 8; ++corner) {
        corners.push_back({(corner & 1U) != 0 ? box.high[0] : box.low[0],
                           (corner & 2U) != 0 ? box.high[1] : box.low[1],
                           (corner & 4U) != 0 ? box.high[2] : box.low[2]});
    }
    return corners;
}

}  // namespace

Matrix axesOf(const Camera& camera) {
    const Camera from = upright(camera);
    const Vector right = rightOf(from);
    const Vector back = unit(from.eye - from.target);
    return {right[0], from.up[0], back[0], 0, right[1], from.up[1], back[1], 0,
            right[2], from.up[2], back[2], 0, 0,        0,          0,       1};
}

Camera fitted(const Camera& camera, const Box& box, int width, int height) {
    const Matrix axes = axesOf(camera);
    Box seen;
    for (const Vector& corner : box.IsEmpty() ? std::vector<Vector>() : cornersOf(box)) {
        seen.Add(transformPoint(axes, corner));
    }
    return fittedToSeen(camera, seen, width, height);
}

Camera fittedToSeen(const Camera& camera, const Box& seen, int width, int height) {
    if (seen.IsEmpty()) {
        return camera;
    }
    Camera fit = upright(camera);
    const Vector right = rightOf(fit);
    const Vector back = unit(fit.eye - fit.target);
    const double slope = fit.height / 2 / lengthOf(fit.eye - fit.target);
    const Vector center = seen.Center();
    const Vector half = 0.5 * (seen.high - seen.low);
    const double aspect = static_cast<double>(std::max(1, width)) / std::max(1, height);
    // What has no extent at all is seen as if it were a millimetre.
    const double radius = std::max(seen.Diagonal() / 2, 0.5);
    const double halfHeight = kMargin * std::max({half[1], half[0] / aspect, radius * 1e-3});

    fit.target = center[0] * right + center[1] * fit.up + center[2] * back;
    fit.height = 2 * halfHeight;
    fit.eye = fit.target + (3 * radius) * back;
    if (fit.perspective) {
        // The nearest side of the box is the widest.
        const double distance = half[2] + halfHeight / slope;
        fit.height = 2 * distance * slope;
        fit.eye = fit.target + distance * back;
    }
    return fit;
}

// --- saved cameras ------------------------------------------------------------------------------

namespace {

/// The host's loaders keep what is seen as the zoom factor, which is 1 where that is not known.
double seenHeight(const viz::VizCapture& capture) {
    const double zoom = static_cast<double>(capture.GetOrthographicZoomFactor());
    return zoom > 0 && zoom != 1 ? zoom : 0;
}

}  // namespace

std::optional<Camera> cameraOf(const viz::VizCapture& capture) {
    float eye[3];
    float target[3];
    float up[3];
    if (!capture.GetOrientation(eye, target, up)) {
        return std::nullopt;
    }
    Camera camera;
    std::copy_n(eye, 3, camera.eye.begin());
    std::copy_n(target, 3, camera.target.begin());
    std::copy_n(up, 3, camera.up.begin());
    const double distance = lengthOf(camera.eye - camera.target);
    if (!(distance > 0)) {
        return std::nullopt;
    }
    camera.perspective = capture.GetCameraType() == viz::VizCapture::Perspective;
    const double angle = static_cast<double>(capture.GetPerspectiveViewAngle());
    camera.height = camera.perspective ? 2 * distance * std::tan(angle / 2 * kRadiansPerDegree)
                                       : seenHeight(capture);
    return upright(camera);
}

// --- rays ---------------------------------------------------------------------------------------

PickRay rayThrough(const Camera& camera, int width, int height, int x, int y) {
    const double pixel = camera.height / height;
    const double across = (x + 0.5 - width / 2.0) * pixel;
    const double upward = (height / 2.0 - y - 0.5) * pixel;
    const Vector offset = across * rightOf(camera) + upward * camera.up;
    PickRay ray;
    if (camera.perspective) {
        ray.root = camera.eye;
        ray.direction = unit(camera.target + offset - camera.eye);
    } else {
        ray.root = camera.eye + offset;
        ray.direction = unit(camera.target - camera.eye);
    }
    return ray;
}

}  // namespace kesview
