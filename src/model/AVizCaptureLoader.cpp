#include "core/Allocation.h"

#include <KesVizCore/model/AVizCaptureLoader.h>

namespace KesVizCore {

VizCapture* AVizCaptureLoader::makeOne() {
    return nullWhenExhausted([] { return new VizCapture(); });
}

}  // namespace KesVizCore
