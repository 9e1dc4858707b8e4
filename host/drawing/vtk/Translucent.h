#pragma once

/// @file
/// Translucent triangles in the order in which they mix right.

#include "view/Picture.h"

#include <vector>

namespace kesview {

/// Triangles of many colours that share no points. Points and normals are triples, colours red,
/// green, blue and alpha, one of each for each point; three points make a triangle.
struct TranslucentTriangles {
    bool lit = true;
    bool model = true;  ///< false for annotations
    std::vector<float> points;
    std::vector<float> normals;
    std::vector<std::uint8_t> colors;
};

/// True where something shines through a batch of that colour.
inline bool isTranslucent(const Color& color) {
    return color[3] < 255;
}

/// The translucent ones of @p batches whose light is @p lit, as seen by the camera of @p picture:
/// first those that show their back, then those that show their front, the farthest first among
/// each. That is the right order for a body, and for bodies in each other; of two bodies one
/// behind the other the front of the farther mixes before the back of the nearer. Expects batches
/// that fit together; a batch without normals gets those of its triangles.
TranslucentTriangles sortTranslucent(const std::vector<TriangleBatch>& batches, bool lit,
                                     const Picture& picture);

}  // namespace kesview
