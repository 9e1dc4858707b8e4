#include <KesVizCore/graph/AGeometryItemFilledPolyline.h>

namespace KesVizCore {

AGeometryItemFilledPolyline::AGeometryItemFilledPolyline(const std::uint64_t& id, float* /*points*/,
                                                         int /*count*/)
    : AGeometryItemFilledPolyline(id) {}

AGeometryItemFilledPolyline::AGeometryItemFilledPolyline(const std::uint64_t& id)
    : AGeometryItem(id), _highlighted(false), _thickness(2.0F) {}

std::string AGeometryItemFilledPolyline::ToString() {
    return "FilledPolyline";
}

float AGeometryItemFilledPolyline::GetThickness() const {
    return _thickness;
}

void AGeometryItemFilledPolyline::SetThickness(float thickness) {
    _thickness = thickness;
}

void AGeometryItemFilledPolyline::SetHighlighted(bool highlighted) {
    _highlighted = highlighted;
}

}  // namespace KesVizCore
