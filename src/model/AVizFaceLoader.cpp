#include "core/Allocation.h"

#include <KesVizCore/model/AVizFaceLoader.h>
#include <KesVizCore/model/VizFace.h>

namespace KesVizCore {

VizElement* AVizFaceLoader::makeOne() {
    return nullWhenExhausted([] { return new VizFace(); });
}

}  // namespace KesVizCore
