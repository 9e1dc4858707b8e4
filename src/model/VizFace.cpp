#include "model/DeleteAll.h"
#include "model/Triples.h"

#include <KesVizCore/model/VizFace.h>
#include <KesVizCore/model/VizPolygon.h>

namespace KesVizCore {

std::string VizFace::TypeID() {
    return "Face";
}

VizFace::VizFace() = default;

VizFace::VizFace(const VizFace& other) = default;
VizFace& VizFace::operator=(const VizFace& other) = default;

VizFace::~VizFace() {
    deleteAll(_polygons);
}

std::string VizFace::GetElementType() const {
    return TypeID();
}

void VizFace::ApplyTransform(float targetFromSource[4][4]) {
    transformPoints(_vertices, asArray(targetFromSource));
    ApplyTransformToNormals(targetFromSource);
}

void VizFace::ApplyTransformToNormals(float targetFromSource[4][4]) {
    transformVectors(_normals, asArray(targetFromSource));
}

const std::vector<float>& VizFace::GetVertices() const {
    return _vertices;
}

void VizFace::SetVertices(std::size_t count, const float* data) {
    appendTriples(_vertices, count, data);
}

const std::vector<float>& VizFace::GetNormals() const {
    return _normals;
}

void VizFace::SetNormals(std::size_t count, const float* data) {
    appendTriples(_normals, count, data);
}

const std::vector<VizPolygon*>& VizFace::GetPolygons() const {
    return _polygons;
}

void VizFace::SetPolygonSizeHint(std::size_t count) {
    _polygons.reserve(count);
}

void VizFace::AddPolygon(VizPolygon* polygon) {
    _polygons.push_back(polygon);
}

std::wstring VizFace::GetMechanicalID() const {
    return _mechanicalId;
}

void VizFace::SetMechanicalID(const std::wstring& mechanicalId) {
    _mechanicalId = mechanicalId;
}

void VizFace::RemoveTransparency() {
    makeColorOpaque();
}

}  // namespace KesVizCore
