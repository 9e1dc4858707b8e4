#include "model/DeleteAll.h"

#include <KesVizCore/model/VizEdge.h>
#include <KesVizCore/model/VizFace.h>
#include <KesVizCore/model/VizMesh.h>

namespace KesVizCore {

std::string VizMesh::TypeID() {
    return "Mesh";
}

VizMesh::VizMesh() = default;

VizMesh::VizMesh(const VizMesh& other) = default;
VizMesh& VizMesh::operator=(const VizMesh& other) = default;

VizMesh::~VizMesh() {
    deleteAll(_faces);
    deleteAll(_edges);
}

std::string VizMesh::GetElementType() const {
    return TypeID();
}

const std::vector<VizFace*>& VizMesh::GetFaces() const {
    return _faces;
}

void VizMesh::SetFaceCountHint(std::size_t count) {
    _faces.reserve(count);
}

void VizMesh::AddFace(VizFace* face) {
    _faces.push_back(face);
}

const std::vector<VizEdge*>& VizMesh::GetEdges() const {
    return _edges;
}

void VizMesh::SetEdgeCountHint(std::size_t count) {
    _edges.reserve(count);
}

void VizMesh::AddEdge(VizEdge* edge) {
    _edges.push_back(edge);
}

std::wstring VizMesh::GetMechanicalID() const {
    return _mechanicalId;
}

void VizMesh::SetMechanicalID(const std::wstring& mechanicalId) {
    _mechanicalId = mechanicalId;
}

namespace {

/// Hands each element of the list that is not null to @p enter.
template <typename Elements, typename Enter>
void forEach(const Elements& elements, const Enter& enter) {
    for (auto* element : elements) {
        if (element != nullptr) {
            enter(*element);
        }
    }
}

}  // namespace

void VizMesh::FillVisuIdMap(std::map<std::wstring, VizElement*>& elements) {
    const auto enter = [&](VizElement& element) { elements[element.GetVisualID()] = &element; };
    enter(*this);
    forEach(_faces, enter);
    forEach(_edges, enter);
}

void VizMesh::FillVisuIdMap(std::map<std::wstring, std::wstring>& mechanicalIds) {
    const auto enter = [&](const auto& element) {
        mechanicalIds[element.GetVisualID()] = element.GetMechanicalID();
    };
    enter(*this);
    forEach(_faces, enter);
    forEach(_edges, enter);
}

}  // namespace KesVizCore
