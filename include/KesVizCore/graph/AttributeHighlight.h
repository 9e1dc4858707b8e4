#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/core/RGBAColor.h>
#include <KesVizCore/graph/Attribute.h>

namespace KesVizCore {

/// The record that a node is highlighted: the colour that it had before.
///
/// @par Ownership
/// As for every Attribute.
///
/// @par Errors
/// No operation fails.
///
/// @par Threads
/// None of its own: attributes are used on the thread of their graph.
class KESVIZCORE_API AttributeHighlight : public Attribute {
public:
    /// @p original is the colour to go back to; there is no way to change it later.
    explicit AttributeHighlight(const RGBAColor& original);

    RGBAColor GetOriginalColor() const;  ///< as given to the constructor

private:
    RGBAColor _originalColor;
};

}  // namespace KesVizCore
