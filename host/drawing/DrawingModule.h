#pragma once

/// @file
/// What the module that draws hands to the program that loads it.

namespace kesview {
class Drawing;
}

extern "C" {

/// A drawing that the caller deletes. Throws kesview::DrawError where none can be had.
kesview::Drawing* kesviewMakeDrawing();
}
