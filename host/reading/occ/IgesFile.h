#pragma once

/// @file
/// Reads IGES files.

#include "document/Document.h"
#include "reading/ReadFile.h"

#include <string>

namespace kesview {

/// Throws ReadError (Damaged) where the file holds no model.
Document readIgesFile(const std::string& path, const ReadOptions& options,
                      const ReadProgress& progress);

}  // namespace kesview
