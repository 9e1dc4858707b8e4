#pragma once

/// @file
/// Pictures in files, read and compared.

#include "view/Picture.h"

#include <string>

namespace kesview::support {

/// Eight bits for red, green and blue. An image without pixels where there is no PNG.
Image readPng(const std::string& path);

/// The share of pixels, 0 to 1, of which a channel differs by more than @p limit; 1 for pictures
/// of different sizes or without pixels.
double shareThatDiffers(const Image& a, const Image& b, int limit);

}  // namespace kesview::support
