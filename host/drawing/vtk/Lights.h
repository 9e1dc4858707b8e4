#pragma once

/// @file
/// The light in which a model is drawn.

class vtkRenderer;

namespace kesview {

/// Three soft lights that move with the camera: the main one over the left shoulder, a weak one
/// from the right that opens the shadows, one from above that sets off upper faces.
void addLights(vtkRenderer& renderer);

}  // namespace kesview
