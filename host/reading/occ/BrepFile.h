#pragma once

/// @file
/// Reads Open CASCADE's own shapes, as text or binary.

#include "document/Document.h"
#include "reading/ReadFile.h"

#include <string>

namespace kesview {

/// One product with all bodies. Such files name no unit; lengths are taken as millimetres.
/// Throws ReadError (Damaged) where the file holds no shape.
Document readBrepFile(const std::string& path, const ReadOptions& options,
                      const ReadProgress& progress);

}  // namespace kesview
