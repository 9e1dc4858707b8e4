#include <KesVizCore/view/AFilterManager.h>

namespace KesVizCore {

AFilterManager::~AFilterManager() = default;

}  // namespace KesVizCore
