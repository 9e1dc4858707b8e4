#include <KesVizCore/graph/AttributeVisibility.h>

namespace KesVizCore {

AttributeVisibility::AttributeVisibility(const bool& visible)
    : Attribute(AttributeType::Visibility), _visible(visible) {}

const bool& AttributeVisibility::GetIsVisible() {
    return _visible;
}

void AttributeVisibility::SetIsVisible(const bool& visible) {
    _visible = visible;
}

}  // namespace KesVizCore
