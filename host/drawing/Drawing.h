#pragma once

/// @file
/// Draws pictures without a display. What does it is a module that is loaded on first use: a
/// command that draws nothing loads no graphics.

#include "view/Picture.h"

#include <memory>
#include <stdexcept>
#include <string>

namespace kesview {

/// Why nothing can be drawn here, and the remedy, in one line.
class DrawError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class Drawing {
public:
    virtual ~Drawing() = default;
    /// Throws DrawError; the drawing can be used again after that.
    virtual Image Draw(const Picture& picture) = 0;
};

/// Loads the module beside the program, or from where it is installed, and makes its drawing.
/// Throws DrawError where the module or an off-screen context cannot be had.
std::unique_ptr<Drawing> makeDrawing();

/// Writes a PNG, whole or not at all. Throws std::runtime_error with the reason.
void writePng(const Image& image, const std::string& path);

}  // namespace kesview
