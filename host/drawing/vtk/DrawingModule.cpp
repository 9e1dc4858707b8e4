#include "drawing/DrawingModule.h"

#include "drawing/vtk/VtkDrawing.h"

extern "C" __attribute__((visibility("default"))) kesview::Drawing* kesviewMakeDrawing() {
    return new kesview::VtkDrawing;
}
