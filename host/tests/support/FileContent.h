#pragma once

/// @file
/// Whole files, byte by byte.

#include <string>
#include <string_view>

namespace kesview::support {

/// Empty where there is no such file.
std::string contentOfFile(const std::string& path);
void writeFile(const std::string& path, std::string_view content);

}  // namespace kesview::support
