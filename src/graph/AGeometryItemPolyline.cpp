#include <KesVizCore/graph/AGeometryItemPolyline.h>

namespace KesVizCore {

AGeometryItemPolyline::AGeometryItemPolyline(const std::uint64_t& id, float* /*points*/,
                                             int /*count*/)
    : AGeometryItemPolyline(id) {}

AGeometryItemPolyline::AGeometryItemPolyline(const std::uint64_t& id)
    : AGeometryItem(id), _highlighted(false), _thickness(2.0F), _stipple(0) {}

std::string AGeometryItemPolyline::ToString() {
    return "Polyline";
}

float AGeometryItemPolyline::GetThickness() const {
    return _thickness;
}

void AGeometryItemPolyline::SetThickness(float thickness) {
    _thickness = thickness;
}

short AGeometryItemPolyline::GetStipple() const {
    return _stipple;
}

void AGeometryItemPolyline::SetStipple(short stipple) {
    _stipple = stipple;
}

void AGeometryItemPolyline::SetHighlighted(bool highlighted) {
    _highlighted = highlighted;
}

}  // namespace KesVizCore
