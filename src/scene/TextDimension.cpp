#include <KesVizCore/scene/TextDimension.h>

namespace KesVizCore {

// Constants that are defined in their class are exported where a source repeats them.
// NOLINTBEGIN(readability-redundant-declaration)
constexpr int TextDimension::Dimension2D;
constexpr int TextDimension::Dimension3D;
constexpr int TextDimension::DimensionPMI;
// NOLINTEND(readability-redundant-declaration)

TextDimension::TextDimension() : TextDimension(Dimension3D) {}

TextDimension::TextDimension(int dimension)
    : _dimension(dimension == Dimension2D || dimension == DimensionPMI ? dimension : Dimension3D) {}

TextDimension::operator int() const {
    return _dimension;
}

}  // namespace KesVizCore
