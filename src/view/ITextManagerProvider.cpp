#include <KesVizCore/view/ITextManagerProvider.h>

namespace KesVizCore {

ITextManagerProvider::~ITextManagerProvider() = default;

}  // namespace KesVizCore
