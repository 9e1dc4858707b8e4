#include "model/Triples.h"

#include <KesVizCore/model/VizPolygon.h>

namespace KesVizCore {

std::string VizPolygon::TypeID() {
    return "Polygon";
}

VizPolygon::VizPolygon() : _polygonType(TriangleList) {}

VizPolygon::VizPolygon(const VizPolygon& other) = default;
VizPolygon& VizPolygon::operator=(const VizPolygon& other) = default;
VizPolygon::~VizPolygon() = default;

std::string VizPolygon::GetElementType() const {
    return TypeID();
}

const std::vector<int>& VizPolygon::GetIndices() const {
    return _indices;
}

void VizPolygon::SetIndices(std::size_t count, const int* data) {
    appendValues(_indices, count, data);
}

const std::vector<VizPolygonLoop*>& VizPolygon::GetPolygonLoopList() const {
    return _loops;
}

void VizPolygon::SetPolygonLoopCountHint(std::size_t count) {
    _loops.reserve(count);
}

void VizPolygon::AddLoop(VizPolygonLoop* loop) {
    if (loop != nullptr) {
        _loops.push_back(loop);
    }
}

TriangleType VizPolygon::GetPolygonType() const {
    return _polygonType;
}

void VizPolygon::SetPolygonType(TriangleType type) {
    _polygonType = type;
}

}  // namespace KesVizCore
