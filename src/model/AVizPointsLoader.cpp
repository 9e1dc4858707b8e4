#include "core/Allocation.h"

#include <KesVizCore/model/AVizPointsLoader.h>
#include <KesVizCore/model/VizPoints.h>

namespace KesVizCore {

VizElement* AVizPointsLoader::makeOne() {
    return nullWhenExhausted([] { return new VizPoints(); });
}

void AVizPointsLoader::setIndices(VizPoints& points, const std::vector<int>& indices) {
    points._indices = indices;
}

}  // namespace KesVizCore
