#pragma once

/// @file
/// The camera of a picture as a camera of VTK.

#include "view/Picture.h"

class vtkCamera;

namespace kesview {

/// Sets @p camera so that all finite points of @p picture lie before it and between its near and
/// far plane; a parallel camera is moved back along its line of sight for that. Throws DrawError
/// where the picture's camera looks nowhere or has no height.
void setUpCamera(vtkCamera& camera, const Picture& picture);

}  // namespace kesview
