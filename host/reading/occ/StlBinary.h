#pragma once

/// @file
/// Parses binary STL files.

#include "reading/occ/StlSolid.h"

#include <cstdint>
#include <string>

namespace kesview {

/// Header of 80 bytes and count of triangles, then 50 bytes for each triangle.
constexpr std::uint64_t stlHeaderSize = 84;
constexpr std::uint64_t stlTriangleSize = 50;

/// True when the content has exactly the size that its count of triangles asks for: then it is
/// binary, even if it starts with "solid".
bool isExactStlBinary(const std::string& content);

/// The one solid; its name is what the header says, if that is text. Bytes behind the last
/// triangle are left alone. Throws ReadError (Damaged) saying how many bytes are missing.
StlSolid parseStlBinary(const std::string& content);

}  // namespace kesview
