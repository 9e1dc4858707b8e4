#include "core/Allocation.h"

#include <KesVizCore/model/AVizPolygonLoopLoader.h>
#include <KesVizCore/model/VizPolygonLoop.h>

namespace KesVizCore {

VizElement* AVizPolygonLoopLoader::makeOne() {
    return nullWhenExhausted([] { return new VizPolygonLoop(); });
}

}  // namespace KesVizCore
