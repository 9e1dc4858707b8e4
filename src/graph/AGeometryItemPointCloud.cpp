#include <KesVizCore/graph/AGeometryItemPointCloud.h>

namespace KesVizCore {

AGeometryItemPointCloud::AGeometryItemPointCloud(const std::uint64_t& id, const int& /*count*/,
                                                 float* /*points*/)
    : AGeometryItemPointCloud(id) {}

AGeometryItemPointCloud::AGeometryItemPointCloud(const std::uint64_t& id)
    : AGeometryItem(id), _pointSize(1.0), _highlighted(false) {}

std::string AGeometryItemPointCloud::ToString() {
    return "PointCloud";
}

double AGeometryItemPointCloud::GetPointSize() const {
    return _pointSize;
}

void AGeometryItemPointCloud::SetPointSize(const double& size) {
    _pointSize = size;
}

void AGeometryItemPointCloud::SetHighlighted(const bool& highlighted) {
    _highlighted = highlighted;
}

}  // namespace KesVizCore
