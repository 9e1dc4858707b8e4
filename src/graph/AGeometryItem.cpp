#include <KesVizCore/graph/AGeometryItem.h>

#include <algorithm>
#include <typeinfo>

namespace KesVizCore {

AGeometryItem::AGeometryItem(const std::uint64_t& id)
    : _id(id), _colorSaved(false), _color{0.0F, 0.0F, 0.0F, 255.0F}, _savedColor{} {}

AGeometryItem::~AGeometryItem() = default;

std::uint64_t AGeometryItem::ID() const {
    return _id;
}

void AGeometryItem::SetColor(float* const color) {
    std::copy(color, color + 4, _color);
}

void AGeometryItem::SetColor(const RGBAColor& color) {
    color.ToFloatArray(_color);
}

const float* AGeometryItem::GetColor() const {
    return _color;
}

void AGeometryItem::GetColor(RGBAColor& color) {
    color = RGBAColor(_color);
}

void AGeometryItem::SaveColor() {
    std::copy(_color, _color + 4, _savedColor);
    _colorSaved = true;
}

void AGeometryItem::RestoreColor() {
    if (!_colorSaved) {
        return;
    }
    std::copy(_savedColor, _savedColor + 4, _color);
    _colorSaved = false;
}

std::string AGeometryItem::ToString() {
    return "[" + std::to_string(_id) + "] \"" + typeid(AGeometryItem).name() + "\"";
}

}  // namespace KesVizCore
