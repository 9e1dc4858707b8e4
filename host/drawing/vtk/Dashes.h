#pragma once

/// @file
/// Dashes for lines: what draws them knows none.

#include "view/Picture.h"

namespace kesview {

/// @p lines cut into dashes that look equally long in the picture whatever the angle of a line.
/// The pattern goes on along each polyline. A segment very much longer than the picture stays
/// whole. Expects a camera that sees something and starts that are in order.
LineBatch cutIntoDashes(const LineBatch& lines, const Picture& picture);

}  // namespace kesview
