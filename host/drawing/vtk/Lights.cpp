#include "drawing/vtk/Lights.h"

#include <vtkLight.h>
#include <vtkNew.h>
#include <vtkRenderer.h>

namespace kesview {
namespace {

/// @p x, @p y, @p z: from where it shines; right, up and towards the camera.
void addLight(vtkRenderer& renderer, double x, double y, double z, double intensity) {
    vtkNew<vtkLight> light;
    light->SetLightTypeToCameraLight();
    light->SetPosition(x, y, z);
    light->SetFocalPoint(0, 0, 0);
    light->SetIntensity(intensity);
    renderer.AddLight(light);
}

}  // namespace

void addLights(vtkRenderer& renderer) {
    renderer.AutomaticLightCreationOff();
    addLight(renderer, -0.4, 0.5, 1.0, 0.60);
    addLight(renderer, 0.6, -0.35, 1.0, 0.42);
    addLight(renderer, 0.1, 1.0, 0.15, 0.30);
}

}  // namespace kesview
