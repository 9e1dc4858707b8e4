#include "core/Allocation.h"

#include <KesVizCore/model/AVizPointSetLoader.h>
#include <KesVizCore/model/VizPointSet.h>

namespace KesVizCore {

VizElement* AVizPointSetLoader::makeOne() {
    return nullWhenExhausted([] { return new VizPointSet(); });
}

}  // namespace KesVizCore
