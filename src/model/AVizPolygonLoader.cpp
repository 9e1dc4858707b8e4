#include "core/Allocation.h"

#include <KesVizCore/model/AVizPolygonLoader.h>
#include <KesVizCore/model/VizPolygon.h>

namespace KesVizCore {

VizElement* AVizPolygonLoader::makeOne() {
    return nullWhenExhausted([] { return new VizPolygon(); });
}

}  // namespace KesVizCore
