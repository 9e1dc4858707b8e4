#include <KesVizCore/model/VizPolygonLoop.h>

namespace KesVizCore {

std::string VizPolygonLoop::TypeID() {
    return "PolygonLoop";
}

VizPolygonLoop::VizPolygonLoop() = default;

VizPolygonLoop::VizPolygonLoop(const VizPolygonLoop& other) = default;
VizPolygonLoop& VizPolygonLoop::operator=(const VizPolygonLoop& other) = default;
VizPolygonLoop::~VizPolygonLoop() = default;

std::string VizPolygonLoop::GetElementType() const {
    return TypeID();
}

const std::vector<VizEdge*>& VizPolygonLoop::GetEdges() const {
    return _edges;
}

void VizPolygonLoop::SetEdgeCountHint(std::size_t count) {
    _edges.reserve(count);
}

void VizPolygonLoop::AddEdge(VizEdge* edge) {
    if (edge != nullptr) {
        _edges.push_back(edge);
    }
}

}  // namespace KesVizCore
