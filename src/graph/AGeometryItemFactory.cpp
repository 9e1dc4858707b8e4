#include <KesVizCore/graph/AGeometryItemFactory.h>

#include <cstddef>

namespace KesVizCore {

void AGeometryItemFactory::AddColorMap(AGeometryItemTriangleSet* /*triangles*/,
                                       const std::vector<float>& /*colors*/) {}

AGeometryItem* AGeometryItemFactory::CreateQuadSet(const std::uint64_t& id, float* vertices,
                                                   int* quads, int vertexCount, int quadIndexCount,
                                                   float* normals, int normalCount) {
    const std::size_t quadCount =
        quadIndexCount > 0 ? static_cast<std::size_t>(quadIndexCount / 4) : 0;
    std::vector<int> triangles;
    triangles.reserve(6 * quadCount);
    for (std::size_t number = 0; number < quadCount; ++number) {
        const int* quad = quads + 4 * number;
        triangles.insert(triangles.end(), {quad[0], quad[1], quad[2], quad[0], quad[2], quad[3]});
    }
    return CreateTriangleSet(id, vertices, normals, triangles.data(), vertexCount, normalCount,
                             static_cast<int>(triangles.size()), IndexedTriangles);
}

}  // namespace KesVizCore
