#pragma once

/// @file
/// Reads STEP files: AP203, AP214, AP242.

#include "document/Document.h"
#include "reading/ReadFile.h"

#include <string>

namespace kesview {

/// Throws ReadError (Damaged) where the file holds no model.
Document readStepFile(const std::string& path, const ReadOptions& options,
                      const ReadProgress& progress);

}  // namespace kesview
