#include "model/DeleteAll.h"

#include <KesVizCore/model/VizEdge.h>
#include <KesVizCore/model/VizWire.h>

namespace KesVizCore {

std::string VizWire::TypeID() {
    return "Wire";
}

VizWire::VizWire() = default;

VizWire::VizWire(const VizWire& other) = default;
VizWire& VizWire::operator=(const VizWire& other) = default;

VizWire::~VizWire() {
    deleteAll(_edges);
}

std::string VizWire::GetElementType() const {
    return TypeID();
}

const std::vector<VizEdge*>& VizWire::GetEdges() const {
    return _edges;
}

void VizWire::SetEdgeCountHint(std::size_t count) {
    _edges.reserve(count);
}

void VizWire::AddEdge(VizEdge* edge) {
    _edges.push_back(edge);
}

}  // namespace KesVizCore
