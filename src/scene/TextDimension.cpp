#include <KesVizCore/scene/TextDimension.h>

namespace KesVizCore {

TextDimension::TextDimension() : TextDimension(Dimension3D) {}

TextDimension::TextDimension(int dimension)
    : _dimension(dimension == Dimension2D || dimension == DimensionPMI ? dimension : Dimension3D) {}

TextDimension::operator int() const {
    return _dimension;
}

}  // namespace KesVizCore
