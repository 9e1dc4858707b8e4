#include "core/Allocation.h"

#include <KesVizCore/pmi/AVizPMILoader.h>
#include <KesVizCore/pmi/VizPMI.h>

namespace KesVizCore {

AVizPMILoader::AVizPMILoader() = default;
AVizPMILoader::AVizPMILoader(const AVizPMILoader& other) = default;
AVizPMILoader& AVizPMILoader::operator=(const AVizPMILoader& other) = default;

// Moving copies by intent, and copying types may throw.
// NOLINTBEGIN(performance-noexcept-move-constructor, performance-move-constructor-init)
AVizPMILoader::AVizPMILoader(AVizPMILoader&& other)
    : AVizPMILoader(static_cast<const AVizPMILoader&>(other)) {}
AVizPMILoader& AVizPMILoader::operator=(AVizPMILoader&& other) {
    return *this = static_cast<const AVizPMILoader&>(other);
}
// NOLINTEND(performance-noexcept-move-constructor, performance-move-constructor-init)

AVizPMILoader::~AVizPMILoader() = default;

VizElement* AVizPMILoader::makeOne() {
    return nullWhenExhausted([this] { return new VizPMI(_groupType, _type); });
}

void AVizPMILoader::setGroupAndType(const VizPMIType& group, const VizPMIType& type) {
    _groupType = group;
    _type = type;
}

}  // namespace KesVizCore
