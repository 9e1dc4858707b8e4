#pragma once

/// @file
/// Turns the triangles of an STL solid into a face.

#include "document/Document.h"
#include "reading/occ/StlSolid.h"

#include <cstdint>

namespace kesview {

/// Triangles that were left out.
struct StlLosses {
    std::uint64_t degenerate = 0;  ///< two corners are equal, or all on one line
    std::uint64_t absurd = 0;      ///< a coordinate is no number, or absurdly large
};

/// Fills points and triangles; corners at exactly the same place become one point, and there are
/// no normals. Triangles keep their winding.
StlLosses fillFace(const StlSolid& solid, Face& face);

}  // namespace kesview
