#pragma once

#include <cstdint>

namespace KesVizCore {

/// How a list of vertices or indices forms triangles.
enum TriangleType : std::int32_t {
    TriangleList = 0,      ///< no indices: every three vertices are a triangle
    IndexedTriangles = 1,  ///< every three indices are a triangle
    TriangleStrip = 2,     ///< each further index forms a triangle with the two before it
    TriangleFan = 3        ///< each further index forms a triangle with the first and the last
};

}  // namespace KesVizCore
