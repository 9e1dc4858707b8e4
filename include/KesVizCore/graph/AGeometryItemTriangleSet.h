#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/core/TriangleType.h>
#include <KesVizCore/graph/AGeometryItem.h>

namespace KesVizCore {

/// A set of triangles: the counts and the type, not the coordinates.
///
/// @par Ownership
/// As for every AGeometryItem. The arrays of the constructor are neither read nor kept.
///
/// @par Errors
/// No operation fails; counts are stored unchecked.
///
/// @par Threads
/// None of its own: items are used on the thread of their graph.
class KESVIZCORE_API AGeometryItemTriangleSet : public AGeometryItem {
public:
    /// The arguments of AGeometryItemFactory::CreateTriangleSet.
    ///
    /// @param id            what ID answers
    /// @param vertices      triples x, y, z; null allowed here
    /// @param normals       null allowed here
    /// @param indices       null allowed here
    /// @param vertexCount   stored for the derived class
    /// @param normalCount   not kept
    /// @param triangleCount what GetNumberOfTriangles answers. The factory operation of the same
    ///     arguments calls this place the index count, and whatever is given is stored.
    /// @param triangleType  stored for the derived class
    AGeometryItemTriangleSet(const std::uint64_t& id, float* vertices, float* normals, int* indices,
                             int vertexCount, int normalCount, int triangleCount,
                             TriangleType triangleType);

    std::string ToString() override;  ///< "TriangleSet"

    /// The number given as the constructor's third count.
    int GetNumberOfTriangles() const;

protected:
    /// All counts 0, TriangleList: for a host that sets them itself.
    explicit AGeometryItemTriangleSet(const std::uint64_t& id);

    int _vertexCount;            ///< the constructor's first count
    int _triangleCount;          ///< the constructor's third count
    TriangleType _triangleType;  ///< how indices or vertices form triangles
};

}  // namespace KesVizCore
