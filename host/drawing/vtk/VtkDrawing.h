#pragma once

/// @file
/// Draws pictures with VTK.

#include "drawing/Drawing.h"
#include "drawing/vtk/Fonts.h"
#include "drawing/vtk/RenderTarget.h"

#include <optional>

namespace kesview {

/// Keeps the off-screen context and the fonts from one picture to the next, and nothing of a
/// picture that is drawn.
class VtkDrawing : public Drawing {
public:
    /// Throws DrawError where no context can be had.
    VtkDrawing() = default;

    Image Draw(const Picture& picture) override;

private:
    Fonts& fonts();

    RenderTarget _target;
    std::optional<Fonts> _fonts;  ///< opened for the first text
};

}  // namespace kesview
