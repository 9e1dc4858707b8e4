/// @file
/// See PmiViewCheck.h.

#include "reading/occ/PmiViewCheck.h"

#include "reading/occ/Findings.h"
#include "reading/part21/Placement.h"

#include <algorithm>

namespace kesview {
namespace {

/// How far the scene reaches along @p direction, seen from @p origin.
struct Reach {
    double low = 0;
    double high = 0;
};

Reach reachOf(const PmiBox& scene, const Vector& origin, const Vector& direction) {
    Reach reach{1e300, -1e300};
    for (int corner = 0; corner < 8; ++corner) {
        const Vector point = {corner & 1 ? scene.high[0] : scene.low[0],
                              corner & 2 ? scene.high[1] : scene.low[1],
                              corner & 4 ? scene.high[2] : scene.low[2]};
        const double along = dot(point - origin, direction);
        reach = {std::min(reach.low, along), std::max(reach.high, along)};
    }
    return reach;
}

/// The share of a window's width or height that the scene takes up.
double shareOf(const Reach& reach, double size) {
    return std::max(0.0, std::min(reach.high, size / 2) - std::max(reach.low, -size / 2)) / size;
}

bool sticksOut(const Reach& reach, double size) {
    return reach.low < -size / 2 || reach.high > size / 2;
}

/// A window that shows a corner of the scene in a corner of itself was not meant for it.
bool misses(const Reach& across, double width, const Reach& upwards, double height) {
    constexpr double leastShare = 0.25;
    if (width <= 0 || height <= 0) {
        return false;
    }
    const double share = shareOf(across, width) * shareOf(upwards, height);
    return share < leastShare && (sticksOut(across, width) || sticksOut(upwards, height));
}

}  // namespace

void aimAtScene(const PmiBox& scene, SavedView& view, Document& document) {
    if (scene.IsEmpty() || view.perspective) {
        return;
    }
    Vector forward = normalized(view.target - view.eye, {0, 0, -1});
    if (reachOf(scene, view.eye, forward).high < 0) {
        view.target = 2 * view.eye - view.target;
        forward = -1 * forward;
        addFinding(document,
                   {Finding::Severity::Note, "view.reversed",
                    "A saved view looks away from the model and is turned round.", view.key});
    }
    const Vector right = normalized(cross(forward, view.up), {1, 0, 0});
    const bool aside = misses(reachOf(scene, view.eye, right), view.width,
                              reachOf(scene, view.eye, view.up), view.height);
    if (aside) {
        const Vector offset = scene.Centre() - view.target;
        view.target = view.target + offset;
        view.eye = view.eye + offset;
        view.width = 0;
        view.height = 0;
        addFinding(document, {Finding::Severity::Note, "view.recentred",
                              "The window of a saved view misses the model; the view is centred "
                              "on the model in its direction.",
                              view.key});
    }
}

}  // namespace kesview
