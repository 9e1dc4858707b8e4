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
/// @par Units and ranges
/// Points are triples x, y, z of floats, in model units. No count and no index is checked here.
///
/// @par Ownership
/// The arrays are the caller's and are read during the call only. The host owns the factory; it has
/// no virtual destructor and is not destroyed through this base. Every item made belongs to the
/// caller until a node takes it.
///
/// @par Errors
/// Null where the host cannot make the item; what the host's operations throw passes through.
/// CreateQuadSet throws std::bad_alloc when memory runs out.
///
/// @par Threads
/// Used on the thread of the graph.
class KESVIZCORE_API AGeometryItemFactory {
public:
    /// Makes a triangle set and copies what it needs of the arrays.
    ///
    /// @param id            the id of the new item
    /// @param vertices      @p vertexCount triples x, y, z
    /// @param normals       a second array, of which the host says what it holds
    /// @param indices       @p indexCount indices into the vertices; may be null for none
    /// @param vertexCount   the number of triples
    /// @param normalCount   of @p normals, as the host counts
    /// @param indexCount    the number of indices, not of triangles
    /// @param triangleType  how indices or vertices form triangles
    virtual AGeometryItem* CreateTriangleSet(const std::uint64_t& id, float* vertices,
                                             float* normals, int* indices, int vertexCount,
                                             int normalCount, int indexCount,
                                             TriangleType triangleType) = 0;
    /// Attaches colours by vertex to a triangle set, in an order of the host's own; does nothing
    /// unless the host overrides it. Neither argument is kept here.
    virtual void AddColorMap(AGeometryItemTriangleSet* triangles, const std::vector<float>& colors);

    /// @name The other kinds
    /// Each takes the arguments of its kind's public constructor.
    /// @{

    /// @p count points, joined in their order.
    virtual AGeometryItem* CreatePolyline(const std::uint64_t& id, float* points, int count) = 0;
    /// @p count points around an area; the last is joined with the first.
    virtual AGeometryItem* CreateFilledPolyline(const std::uint64_t& id, float* points,
                                                int count) = 0;
    /// @p count points; mind the order of the arguments.
    virtual AGeometryItem* CreatePointCloud(const std::uint64_t& id, const int& count,
                                            float* points) = 0;
    /// @p position is one triple.
    virtual AGeometryItem* CreateVertex(const std::uint64_t& id, float* const position) = 0;
    /// @p position is one triple; the second text and the number are the host's to give a meaning.
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
    /// @param id              the id of the new item
    /// @param vertices        @p vertexCount triples, handed through untouched
    /// @param quads           @p quadIndexCount indices into the vertices; may be null for less
    ///     than four
    /// @param vertexCount     the number of triples
    /// @param quadIndexCount  the number of indices; a negative one counts as 0
    /// @param normals         handed through untouched, as is @p normalCount
    /// @param normalCount     of @p normals, as the host counts
    virtual AGeometryItem* CreateQuadSet(const std::uint64_t& id, float* vertices, int* quads,
                                         int vertexCount, int quadIndexCount, float* normals,
                                         int normalCount);

protected:
    ~AGeometryItemFactory() = default;
};

}  // namespace KesVizCore
