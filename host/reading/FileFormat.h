#pragma once

/// @file
/// What kind of file it is, told by its content.

#include <string>

namespace kesview {

enum class FileFormat { Unknown, Step, Iges, Brep, Stl };

/// Looks at the first bytes of the file, and its size; the name decides nothing.
/// Throws ReadError (Unreadable) with the reason where it cannot be opened.
FileFormat detectFormat(const std::string& path);

/// "STEP", "IGES", "BREP", "STL"; "unknown".
std::string nameOf(FileFormat format);

}  // namespace kesview
