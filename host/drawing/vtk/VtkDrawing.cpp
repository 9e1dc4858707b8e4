#include "drawing/vtk/VtkDrawing.h"

#include "drawing/vtk/CameraSetup.h"
#include "drawing/vtk/Lights.h"
#include "drawing/vtk/MessageLog.h"
#include "drawing/vtk/Stage.h"
#include "drawing/vtk/Texts.h"

#include <vtkCullerCollection.h>
#include <vtkNew.h>
#include <vtkRenderer.h>

namespace kesview {
namespace {

Vector toUnit(const Color& color) {
    return {color[0] / 255.0, color[1] / 255.0, color[2] / 255.0};
}

void setBackground(vtkRenderer& renderer, const Picture& picture) {
    renderer.SetBackground(toUnit(picture.background).data());
    if (!picture.backgroundTop)
        return;
    renderer.GradientBackgroundOn();
    renderer.SetBackground2(toUnit(*picture.backgroundTop).data());
}

}  // namespace

Image VtkDrawing::Draw(const Picture& picture) {
    vtkNew<MessageLog> log;
    const CatchMessages catching(*log);
    vtkNew<vtkRenderer> renderer;
    setBackground(*renderer, picture);
    setUpCamera(*renderer->GetActiveCamera(), picture);
    addLights(*renderer);
    // Without cullers all is drawn, in the order in which it was added.
    renderer->GetCullers()->RemoveAllItems();

    std::vector<TriangleBatch> texts;
    if (!picture.texts.empty())
        texts = makeTextTriangles(picture.texts, fonts());
    Stage stage(picture, texts);
    stage.PutInto(*renderer);
    Image image = _target.Draw(*renderer, picture.width, picture.height, picture.samples);
    if (!log->FirstError().empty())
        throw DrawError("The picture could not be drawn: " + log->FirstError());
    return image;
}

Fonts& VtkDrawing::fonts() {
    if (!_fonts)
        _fonts.emplace();
    return *_fonts;
}

}  // namespace kesview
