#pragma once

/// @file
/// Cameras: the standard ones, those that files save, and where a pixel looks.

#include "view/Picker.h"
#include "view/Picture.h"
#include "view/Vectors.h"

#include <optional>
#include <string>
#include <vector>

namespace KesVizCore {
class VizCapture;
}

namespace kesview {

/// "iso", "front", "back", "left", "right", "top", "bottom".
const std::vector<std::string>& standardViewNames();

/// A camera that looks at zero from the distance 1. z is up: "front" looks along +y and has +x to
/// the right, "right" stands at +x, "top" looks down with +y up, "bottom" looks up with -y up, and
/// "iso" stands at +x, -y, +z. None for any other name.
std::optional<Camera> standardCamera(const std::string& name);

/// The vertical angle of sight in degrees that an orthographic camera gets with perspective.
constexpr double defaultViewAngle = 30;

/// The camera with its up turned upright on the line of sight, and of length 1; where it cannot
/// be, another up is chosen. An eye at the target is moved away from it.
Camera upright(const Camera& camera);

/// Moves the camera along its direction so that the whole box is seen; a perspective camera keeps
/// its angle. An empty box changes nothing.
Camera fitted(const Camera& camera, const Box& box, int width, int height);

/// The axes in which a camera sees: x to the right, y up, z towards the eye, about the origin of
/// the world.
Matrix axesOf(const Camera& camera);

/// As fitted(), for a box in those axes: what fills the picture best.
Camera fittedToSeen(const Camera& camera, const Box& seen, int width, int height);

/// The same picture of the plane through the target, with or without perspective. What gets one
/// looks with defaultViewAngle.
Camera withPerspective(const Camera& camera, bool perspective);

/// The camera of a capture; none where it was never set, or looks nowhere. Its height is 0 where
/// the capture does not say how much is seen.
std::optional<Camera> cameraOf(const viz::VizCapture& capture);

/// To the right in the picture; length 1.
Vector rightOf(const Camera& camera);

/// The ray through the centre of a pixel, its direction of length 1, without the rounding to
/// axes and to single precision of the library's ray helper.
PickRay rayThrough(const Camera& camera, int width, int height, int x, int y);

}  // namespace kesview
