#include <KesVizCore/graph/AGeometryItemTriangleSet.h>

namespace KesVizCore {

AGeometryItemTriangleSet::AGeometryItemTriangleSet(const std::uint64_t& id, float* /*vertices*/,
                                                   float* /*normals*/, int* /*indices*/,
                                                   int vertexCount, int /*normalCount*/,
                                                   int triangleCount, TriangleType triangleType)
    : AGeometryItem(id),
      _vertexCount(vertexCount),
      _triangleCount(triangleCount),
      _triangleType(triangleType) {}

AGeometryItemTriangleSet::AGeometryItemTriangleSet(const std::uint64_t& id)
    : AGeometryItemTriangleSet(id, nullptr, nullptr, nullptr, 0, 0, 0, TriangleList) {}

std::string AGeometryItemTriangleSet::ToString() {
    return "TriangleSet";
}

int AGeometryItemTriangleSet::GetNumberOfTriangles() const {
    return _triangleCount;
}

}  // namespace KesVizCore
