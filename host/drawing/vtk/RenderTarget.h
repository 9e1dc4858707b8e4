#pragma once

/// @file
/// Where VTK draws: a window of VTK over an off-screen context of our own.

#include "drawing/vtk/EglWindow.h"
#include "view/Picture.h"

#include <vtkNew.h>

class vtkRenderer;

namespace kesview {

class RenderTarget {
public:
    /// Draws what stands in @p renderer, with at most @p samples for each pixel. Throws DrawError
    /// where the driver cannot draw so large or gives no pixels.
    Image Draw(vtkRenderer& renderer, int width, int height, int samples);

private:
    Image readBack();  ///< no pixels where the driver gives none

    vtkNew<EglWindow> _window;
};

}  // namespace kesview
