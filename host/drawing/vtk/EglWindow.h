#pragma once

/// @file
/// A window of VTK that draws into an off-screen context of ours.

#include "drawing/vtk/EglContext.h"

#include <memory>
#include <vtkGenericOpenGLRenderWindow.h>

namespace kesview {

class EglWindow : public vtkGenericOpenGLRenderWindow {
public:
    /// Throws DrawError where no context can be had.
    static EglWindow* New();
    EglWindow(const EglWindow&) = delete;
    EglWindow& operator=(const EglWindow&) = delete;

    void MakeCurrent() override { _context->MakeCurrent(); }
    bool IsCurrent() override { return _context->IsCurrent(); }
    void OpenGLInitContext() override;

protected:
    explicit EglWindow(std::unique_ptr<EglContext> context);
    ~EglWindow() override;

private:
    std::unique_ptr<EglContext> _context;
};

}  // namespace kesview
