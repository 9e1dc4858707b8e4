#include "core/Allocation.h"

#include <KesVizCore/model/AVizMeshLoader.h>
#include <KesVizCore/model/VizMesh.h>

namespace KesVizCore {

VizElement* AVizMeshLoader::makeOne() {
    return nullWhenExhausted([] { return new VizMesh(); });
}

}  // namespace KesVizCore
