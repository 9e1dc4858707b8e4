#include <KesVizCore/view/IViewDoUndoStrategy.h>

namespace KesVizCore {

IViewDoUndoStrategy::~IViewDoUndoStrategy() = default;

}  // namespace KesVizCore
