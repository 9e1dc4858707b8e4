#include "model/Triples.h"

#include <KesVizCore/model/VizEdge.h>

#include <algorithm>

namespace KesVizCore {

std::string VizEdge::TypeID() {
    return "Edge";
}

VizEdge::VizEdge() : _lineType(static_cast<EdgeType>(0)), _extrema{} {}

VizEdge::VizEdge(const VizEdge& other) = default;
VizEdge& VizEdge::operator=(const VizEdge& other) = default;
VizEdge::~VizEdge() = default;

std::string VizEdge::GetElementType() const {
    return TypeID();
}

void VizEdge::ApplyTransform(float targetFromSource[4][4]) {
    transformPoints(_vertices, asArray(targetFromSource));
}

const std::vector<float>& VizEdge::GetVertices() const {
    return _vertices;
}

void VizEdge::SetVertices(const std::vector<float>& vertices) {
    appendVertices(_vertices, _extrema, vertices);
}

const std::vector<int>& VizEdge::GetIndices() const {
    return _indices;
}

void VizEdge::GetExtrema(float out[6]) const {
    std::copy(_extrema, _extrema + 6, out);
}

VizEdge::EdgeType VizEdge::GetLineType() const {
    return _lineType;
}

void VizEdge::SetLineType(EdgeType type) {
    _lineType = type;
}

std::wstring VizEdge::GetMechanicalID() const {
    return _mechanicalId;
}

void VizEdge::SetMechanicalID(const std::wstring& mechanicalId) {
    _mechanicalId = mechanicalId;
}

void VizEdge::RemoveTransparency() {
    makeColorOpaque();
}

}  // namespace KesVizCore
