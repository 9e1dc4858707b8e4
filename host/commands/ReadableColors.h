#pragma once

/// @file
/// Keeps annotations from vanishing into the background.

#include "view/Picture.h"

#include <cstddef>

namespace kesview {

/// Draws annotations whose colour can hardly be told from the background, as white ones on white,
/// in dark blue or in white, whichever is farther from it. Answers how many batches and texts these
/// are. Of a gradient both ends count.
std::size_t makeAnnotationsReadable(Picture& picture);

}  // namespace kesview
