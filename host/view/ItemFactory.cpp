#include "view/ItemFactory.h"

#include <algorithm>
#include <cstddef>

namespace kesview {

namespace {

bool areCornersInside(const Shape& shape) {
    return shape.corners == nullptr ||
           std::all_of(shape.corners, shape.corners + shape.cornerCount,
                       [&](int corner) { return corner >= 0 && corner < shape.pointCount; });
}

}  // namespace

viz::AGeometryItem* ItemFactory::CreateTriangleSet(const std::uint64_t& id, float* vertices,
                                                   float* normals, int* indices, int vertexCount,
                                                   int normalCount, int indexCount,
                                                   viz::TriangleType triangleType) {
    if (vertices == nullptr || vertexCount <= 0) {
        return nullptr;
    }
    const bool isIndexed = indices != nullptr || triangleType == viz::IndexedTriangles;
    Shape shape;
    shape.form = Shape::Form::Triangles;
    shape.triangleType = triangleType;
    shape.points = vertices;
    shape.pointCount = vertexCount;
    shape.normals = normalCount == vertexCount ? normals : nullptr;
    shape.cornerCount =
        isIndexed ? (indices != nullptr ? std::max(0, indexCount) : 0) : vertexCount;
    std::unique_ptr<int[]> kept;
    if (_keepsIndices) {
        kept = std::make_unique<int[]>(static_cast<std::size_t>(shape.cornerCount));
        std::copy_n(indices, shape.cornerCount, kept.get());
    }
    shape.corners = kept != nullptr ? kept.get() : indices;
    if (!areCornersInside(shape)) {
        return nullptr;
    }
    return new TriangleSetItem(id, shape, std::move(kept));
}

// The library splits quads into an array that is gone after the call, so that its triangle set is
// the one whose indices are copied.
viz::AGeometryItem* ItemFactory::CreateQuadSet(const std::uint64_t& id, float* vertices, int* quads,
                                               int vertexCount, int quadIndexCount, float* normals,
                                               int normalCount) {
    _keepsIndices = true;
    viz::AGeometryItem* const item = AGeometryItemFactory::CreateQuadSet(
        id, vertices, quads, vertexCount, quadIndexCount, normals, normalCount);
    _keepsIndices = false;
    return item;
}

viz::AGeometryItem* ItemFactory::CreatePolyline(const std::uint64_t& id, float* points, int count) {
    return new PolylineItem(id, points, count);
}

viz::AGeometryItem* ItemFactory::CreateFilledPolyline(const std::uint64_t& id, float* points,
                                                      int count) {
    return new FilledPolylineItem(id, points, count);
}

viz::AGeometryItem* ItemFactory::CreatePointCloud(const std::uint64_t& id, const int& count,
                                                  float* points) {
    return new PointCloudItem(id, count, points);
}

viz::AGeometryItem* ItemFactory::CreateVertex(const std::uint64_t& id, float* const position) {
    return position != nullptr ? new VertexItem(id, position) : nullptr;
}

viz::AGeometryItem* ItemFactory::CreateText(const std::uint64_t& id, const std::wstring& firstText,
                                            const std::wstring& secondText, float* position,
                                            const viz::FontAttr& font, const float& number) {
    return position != nullptr ? new TextItem(id, firstText, secondText, position, font, number)
                               : nullptr;
}

}  // namespace kesview
