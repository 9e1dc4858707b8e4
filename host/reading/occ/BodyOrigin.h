#pragma once

/// @file
/// Decides where a body's coordinates are counted from.

#include "document/Document.h"

class Bnd_Box;

namespace kesview {

/// Zero while the body lies within a thousand times its own size of its product's origin: single
/// precision then keeps its points to a ten-thousandth of that size, well within the distance that
/// triangles may stray. Beyond that, the middle of the body, rounded to whole millimetres so that
/// moving points there loses nothing. Zero for a void box and a lone point.
Vector bodyOrigin(const Bnd_Box& box);

}  // namespace kesview
