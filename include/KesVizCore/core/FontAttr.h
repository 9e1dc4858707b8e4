#pragma once

#include <KesVizCore/Export.h>

namespace KesVizCore {

/// How a text is set: its size, and two factors on the font's own measures.
///
/// @par Units and ranges
/// FontSize in model units, the factors without unit; any float, stored unchecked.
///
/// @par Errors
/// None.
///
/// @par Threads
/// A plain value: many threads may read one, a writer needs it to itself.
struct KESVIZCORE_API FontAttr {
    float FontSize = 1.0F;       ///< in model units
    float SpacingFactor = 1.0F;  ///< times the font's distance between characters
    float WidthScaling = 1.0F;   ///< times the font's width of characters
};

}  // namespace KesVizCore
