#pragma once

#include <KesVizCore/Export.h>

namespace KesVizCore {

/// The dimensionality of a text: 2D, 3D or that of an annotation.
///
/// @par Errors
/// No operation fails; a number that is no dimension becomes 3.
///
/// @par Threads
/// A plain value: many threads may read one, a writer needs it to itself.
class KESVIZCORE_API TextDimension {
public:
    static constexpr int Dimension2D = 2;   ///< a text that lies on the screen
    static constexpr int Dimension3D = 3;   ///< a text in the model
    static constexpr int DimensionPMI = 4;  ///< the text of an annotation

    /// Three dimensions.
    TextDimension();
    /// Keeps 2 and 4; every other number becomes 3.
    TextDimension(int dimension);

    /// 2, 3 or 4.
    operator int() const;

private:
    int _dimension;
};

}  // namespace KesVizCore
