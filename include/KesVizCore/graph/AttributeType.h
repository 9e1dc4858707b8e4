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
    static constexpr int Invalid = -1;
    static constexpr int Color = 0;
    static constexpr int Highlight = 1;
    static constexpr int Transform = 2;
    static constexpr int Visibility = 4;
    static constexpr int LineStyle = 5;

    /// Invalid.
    AttributeType();
    /// Implicit, so that `node.GetAttribute(AttributeType::Color)` reads well.
    AttributeType(int value);

    operator int() const;

private:
    std::int32_t _value;
};

}  // namespace KesVizCore
