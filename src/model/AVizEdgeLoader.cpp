#include "core/Allocation.h"

#include <KesVizCore/model/AVizEdgeLoader.h>
#include <KesVizCore/model/VizEdge.h>

namespace KesVizCore {

VizElement* AVizEdgeLoader::makeOne() {
    return nullWhenExhausted([] { return new VizEdge(); });
}

void AVizEdgeLoader::setIndices(VizEdge& edge, const std::vector<int>& indices) {
    edge._indices = indices;
}

}  // namespace KesVizCore
