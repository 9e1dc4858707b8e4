#include <KesVizCore/view/IRayPickListener.h>

namespace KesVizCore {

IRayPickListener::~IRayPickListener() = default;

}  // namespace KesVizCore
