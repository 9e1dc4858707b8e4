#include <KesVizCore/graph/AttributeHighlight.h>

namespace KesVizCore {

AttributeHighlight::AttributeHighlight(const RGBAColor& original)
    : Attribute(AttributeType::Highlight), _originalColor(original) {}

RGBAColor AttributeHighlight::GetOriginalColor() const {
    return _originalColor;
}

}  // namespace KesVizCore
