#pragma once

/// @file
/// Short names of the schemas of STEP files.

#include <string>

namespace kesview {

/// "AP203", "AP203 edition 2", "AP214", "AP242 edition 1" and so on, from what stands in a
/// FILE_SCHEMA record; any other schema by its own name, without the numbers in braces.
std::string schemaName(const std::string& fileSchema);

}  // namespace kesview
