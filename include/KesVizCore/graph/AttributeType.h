#pragma once

#include <KesVizCore/Export.h>

#include <cstdint>

namespace KesVizCore {

/// The kind of a node's attribute: a number with names.
///
/// The numbering has a gap, no kind is 3. Comparisons go through the conversion to int.
///
/// @par Units and ranges
/// Any 32-bit number is stored unchecked; those without a name are a host's own.
///
/// @par Errors
/// No operation fails.
///
/// @par Threads
/// A plain value: many threads may read one, a writer needs it to itself.
struct KESVIZCORE_API AttributeType {
    static constexpr int Invalid = -1;    ///< no kind
    static constexpr int Color = 0;       ///< that of AttributeColor
    static constexpr int Highlight = 1;   ///< that of AttributeHighlight
    static constexpr int Transform = 2;   ///< that of AttributeTransform
    static constexpr int Visibility = 4;  ///< that of AttributeVisibility
    static constexpr int LineStyle = 5;   ///< that of AttributeLineStyle

    /// Invalid.
    AttributeType();
    /// Implicit, so that `node.GetAttribute(AttributeType::Color)` reads well.
    AttributeType(int value);

    operator int() const;  ///< the number

private:
    std::int32_t _value;
};

}  // namespace KesVizCore
