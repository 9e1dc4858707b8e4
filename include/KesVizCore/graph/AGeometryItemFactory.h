#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/core/FontAttr.h>
#include <KesVizCore/core/TriangleType.h>

#include <cstdint>
#include <string>
#include <vector>

namespace KesVizCore {

class AGeometryItem;
class AGeometryItemTriangleSet;

/// The host's maker of geometry items.
///
/// The host completes it, so that its own item classes are made wherever the library or a
/// renderer needs one. The adapter hands it out (AView3DAdapter::GetGeometryItemFactory).
///
/// @par Ownership
/// The host owns the factory; it has no virtual destructor and is not destroyed through this
/// base. Every item made belongs to the caller until a node takes it.
///
/// @par Errors
/// Null where the host cannot make the item.
///
/// @par Threads
/// Used on the thread of the graph.
class KESVIZCORE_API AGeometryItemFactory {
public:
    /// Makes a triangle set and copies what it needs of the arrays.
    ///
    /// @param vertices    @p vertexCount triples x, y, z
    /// @param normals     the second array, @p normalCount entries as the host reads them
    /// @param indices     @p indexCount indices into the vertices; null when there are none
    virtual AGeometryItem* CreateTriangleSet(const std::uint64_t& id, float* vertices,
                                             float* normals, int* indices, int vertexCount,
                                             int normalCount, int indexCount,
                                             TriangleType triangleType) = 0;
    /// Attaches colours by vertex to a triangle set; does nothing unless the host overrides it.
    virtual void AddColorMap(AGeometryItemTriangleSet* triangles, const std::vector<float>& colors);

    /// @name The other kinds
    /// Each takes the arguments of its kind's public constructor.
    /// @{
    virtual AGeometryItem* CreatePolyline(const std::uint64_t& id, float* points, int count) = 0;
    virtual AGeometryItem* CreateFilledPolyline(const std::uint64_t& id, float* points,
                                                int count) = 0;
    virtual AGeometryItem* CreatePointCloud(const std::uint64_t& id, const int& count,
                                            float* points) = 0;
    virtual AGeometryItem* CreateVertex(const std::uint64_t& id, float* const position) = 0;
    virtual AGeometryItem* CreateText(const std::uint64_t& id, const std::wstring& firstText,
                                      const std::wstring& secondText, float* position,
                                      const FontAttr& font, const float& number) = 0;
    /// @}

    /// Splits quads into triangles and makes one triangle set of them by CreateTriangleSet.
    ///
    /// Each quad a, b, c, d gives the triangles a, b, c and a, c, d, which keep its winding.
    /// Indices beyond the last whole quad are ignored; with fewer than four the set is made with
    /// no index at all. The split indices live for the call only.
    ///
    /// @param quads        @p quadIndexCount indices into the vertices
    /// @param normals      handed through untouched with @p normalCount, as are the vertices
    virtual AGeometryItem* CreateQuadSet(const std::uint64_t& id, float* vertices, int* quads,
                                         int vertexCount, int quadIndexCount, float* normals,
                                         int normalCount);

protected:
    ~AGeometryItemFactory() = default;
};

}  // namespace KesVizCore
