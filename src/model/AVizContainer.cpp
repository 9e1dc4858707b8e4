#include <KesVizCore/model/AVizContainer.h>

namespace KesVizCore {

AVizContainer::AVizContainer(const int& refId) : _refId(refId) {}

AVizContainer::AVizContainer(const AVizContainer& other) = default;
AVizContainer& AVizContainer::operator=(const AVizContainer& other) = default;
AVizContainer::~AVizContainer() = default;

bool AVizContainer::PickVisual(AView3DAdapter* /*adapter*/, const Ray& /*ray*/,
                               VizElement*& /*out*/) {
    return false;
}

int AVizContainer::GetRefID() const {
    return _refId;
}

}  // namespace KesVizCore
