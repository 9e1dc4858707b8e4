#pragma once

/// @file
/// Reads a CAD file with Open CASCADE, in this process: only the program kesview-reader does.

#include "document/Document.h"
#include "reading/FileFormat.h"
#include "reading/ReadFile.h"

#include <string>

namespace kesview {

/// Throws ReadError (Damaged, Unreadable) where nothing can be had of the file. What is written to
/// std::cout meanwhile, by progress for one, is lost.
Document readCadFile(const std::string& path, FileFormat format, const ReadOptions& options,
                     const ReadProgress& progress);

}  // namespace kesview
