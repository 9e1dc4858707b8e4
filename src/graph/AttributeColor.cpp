#include <KesVizCore/graph/AttributeColor.h>

namespace KesVizCore {

AttributeColor::AttributeColor(const RGBAColor& color, const bool& priority)
    : Attribute(AttributeType::Color),
      _color(color),
      _opaque(color.IsOpaque()),
      _priority(priority) {}

const RGBAColor& AttributeColor::GetColor() {
    return _color;
}

void AttributeColor::SetColor(const RGBAColor& color) {
    _color = color;
    _opaque = color.IsOpaque();
}

bool AttributeColor::GetIsOpaque() const {
    return _opaque;
}

bool AttributeColor::HasPriority() const {
    return _priority;
}

}  // namespace KesVizCore
