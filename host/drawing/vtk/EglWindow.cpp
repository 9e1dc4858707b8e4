#include "drawing/vtk/EglWindow.h"

#include <utility>

namespace kesview {

/// The context comes first: VTK complains of an object that is given up while it is made.
EglWindow* EglWindow::New() {
    auto context = std::make_unique<EglContext>();
    auto* window = new EglWindow(std::move(context));
    window->InitializeObjectBase();
    return window;
}

EglWindow::EglWindow(std::unique_ptr<EglContext> context) : _context(std::move(context)) {
    SetOwnContext(0);
    SetReadyForRendering(true);
    SetFrameBlitModeToNoBlit();  // there is no screen to bring the picture to
    SwapBuffersOff();
}

EglWindow::~EglWindow() {
    Finalize();
}

/// VTK says that it found no screen of X, after it found all functions of the context; unless told
/// so it would look again for each picture.
void EglWindow::OpenGLInitContext() {
    if (Initialized)
        return;
    vtkGenericOpenGLRenderWindow::OpenGLInitContext();
    Initialized = true;
    GlewInitValid = true;
}

}  // namespace kesview
