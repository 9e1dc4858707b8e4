#include "model/Triples.h"

#include <KesVizCore/model/VizPoints.h>

#include <algorithm>

namespace KesVizCore {

std::string VizPoints::TypeID() {
    return "Points";
}

VizPoints::VizPoints() : _extrema{} {}

VizPoints::VizPoints(const VizPoints& other) = default;
VizPoints& VizPoints::operator=(const VizPoints& other) = default;
VizPoints::~VizPoints() = default;

std::string VizPoints::GetElementType() const {
    return TypeID();
}

void VizPoints::ApplyTransform(float targetFromSource[4][4]) {
    transformPoints(_vertices, asArray(targetFromSource));
}

const std::vector<float>& VizPoints::GetVertices() const {
    return _vertices;
}

void VizPoints::SetVertices(const std::vector<float>& vertices) {
    appendVertices(_vertices, _extrema, vertices);
}

const std::vector<int>& VizPoints::GetIndices() const {
    return _indices;
}

void VizPoints::SetIndices(const std::vector<int>& /*indices*/) {}

void VizPoints::GetExtrema(float out[6]) const {
    std::copy(_extrema, _extrema + 6, out);
}

void VizPoints::RemoveTransparency() {
    makeColorOpaque();
}

}  // namespace KesVizCore
