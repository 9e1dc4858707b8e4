#include "core/Allocation.h"

#include <KesVizCore/model/AVizViewLoader.h>
#include <KesVizCore/model/VizView.h>

namespace KesVizCore {

VizElement* AVizViewLoader::makeOne() {
    return nullWhenExhausted([] { return new VizView(); });
}

}  // namespace KesVizCore
