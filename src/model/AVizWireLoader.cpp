#include "core/Allocation.h"

#include <KesVizCore/model/AVizWireLoader.h>
#include <KesVizCore/model/VizWire.h>

namespace KesVizCore {

VizElement* AVizWireLoader::makeOne() {
    return nullWhenExhausted([] { return new VizWire(); });
}

}  // namespace KesVizCore
