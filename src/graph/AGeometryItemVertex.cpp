#include <KesVizCore/graph/AGeometryItemVertex.h>

namespace KesVizCore {

AGeometryItemVertex::AGeometryItemVertex(const std::uint64_t& id, float* const /*position*/)
    : AGeometryItem(id), _pointSize(1.0) {}

std::string AGeometryItemVertex::ToString() {
    return "Vertex";
}

double AGeometryItemVertex::GetPointSize() const {
    return _pointSize;
}

void AGeometryItemVertex::SetPointSize(const double& size) {
    _pointSize = size;
}

}  // namespace KesVizCore
