#pragma once

/// @file
/// Makes the items of this host.

#include "view/Items.h"

#include <KesVizCore/graph/AGeometryItemFactory.h>

namespace kesview {

/// Items borrow the arrays that they are made of: points, normals and indices must outlive the
/// item, as a data model outlives its scene. What is copied: the position of a vertex or a text,
/// and the indices of a quad set, which the library splits into an array of its own.
///
/// @p normalCount is the number of normals; unless there is one for each point they are ignored.
/// Null is answered for triangles without points or with an index that no point has, and for a
/// vertex or a text without a position.
///
/// A text is laid out as TextItem says; its second text and number are kept and mean nothing here.
class ItemFactory final : public viz::AGeometryItemFactory {
public:
    viz::AGeometryItem* CreateTriangleSet(const std::uint64_t& id, float* vertices, float* normals,
                                          int* indices, int vertexCount, int normalCount,
                                          int indexCount, viz::TriangleType triangleType) override;
    viz::AGeometryItem* CreatePolyline(const std::uint64_t& id, float* points, int count) override;
    viz::AGeometryItem* CreateFilledPolyline(const std::uint64_t& id, float* points,
                                             int count) override;
    viz::AGeometryItem* CreatePointCloud(const std::uint64_t& id, const int& count,
                                         float* points) override;
    viz::AGeometryItem* CreateVertex(const std::uint64_t& id, float* const position) override;
    viz::AGeometryItem* CreateText(const std::uint64_t& id, const std::wstring& firstText,
                                   const std::wstring& secondText, float* position,
                                   const viz::FontAttr& font, const float& number) override;
    viz::AGeometryItem* CreateQuadSet(const std::uint64_t& id, float* vertices, int* quads,
                                      int vertexCount, int quadIndexCount, float* normals,
                                      int normalCount) override;

private:
    bool _keepsIndices = false;  ///< while the library hands over indices of its own
};

}  // namespace kesview
