#pragma once

/// @file
/// Reads STL files, text or binary.

#include "document/Document.h"
#include "reading/ReadFile.h"

#include <string>

namespace kesview {

/// One product with a mesh body of one face, without edges, for each solid of the file. Such files
/// name no unit; lengths are taken as millimetres. Throws ReadError (Damaged) where the file is no
/// STL, or binary and shorter than it says.
Document readStlFile(const std::string& path, const ReadOptions& options,
                     const ReadProgress& progress);

}  // namespace kesview
