#include "drawing/vtk/PictureActor.h"

#include <GL/gl.h>
#include <vtkObjectFactory.h>

namespace kesview {

vtkStandardNewMacro(PictureActor)

    PictureActor::PictureActor() {
    ForceOpaqueOn();
}

void PictureActor::Render(vtkRenderer* renderer, vtkMapper* mapper) {
    // A wide line reaches two pixels or so over a face that may fall away steeply.
    constexpr float slopes = 2;
    constexpr float units = 2;
    if (_givesWay) {
        glEnable(GL_POLYGON_OFFSET_FILL);
        glPolygonOffset(slopes, units);
    }
    SetIsRenderingTranslucentPolygonalGeometry(_translucent);  // else it writes depths
    vtkOpenGLActor::Render(renderer, mapper);
    SetIsRenderingTranslucentPolygonalGeometry(false);
    if (_givesWay)
        glDisable(GL_POLYGON_OFFSET_FILL);
}

}  // namespace kesview
