#include <KesVizCore/scene/AView3DAdapterFactory.h>

namespace KesVizCore {

AView3DAdapterFactory::~AView3DAdapterFactory() = default;

AView3DAdapter* AView3DAdapterFactory::MakeView3DAdapter() {
    return makeView3DAdapterImpl();
}

}  // namespace KesVizCore
