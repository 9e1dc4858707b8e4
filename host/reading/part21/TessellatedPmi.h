#pragma once

/// @file
/// Tessellated presentations: curve sets and triangulated surface sets over coordinate lists.

#include "reading/part21/PmiDrawing.h"

namespace kesview {

/// True of tessellated geometric sets and what stands in them.
bool isTessellated(const ExchangeInstance& item);

/// Adds the item, with all that stands in it, moved where it is repositioned. Triangles and lines
/// with an index out of range are left out and counted as unread.
void appendTessellated(const ExchangeGeometry& geometry, const ExchangeFile& file,
                       const ExchangeInstance& item, PmiDrawing& drawing);

}  // namespace kesview
