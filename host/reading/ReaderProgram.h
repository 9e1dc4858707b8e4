#pragma once

/// @file
/// Where the program is that reads CAD files.

#include <string>

namespace kesview {

/// What the environment variable KESVIEW_READER names; otherwise kesview-reader beside the running
/// program, or in ../libexec/kesview from there. Throws ReadError (Unreadable) where it is not.
std::string findReaderProgram();

/// The same for a program that stands in @p folder, whatever the environment names.
std::string readerProgramNear(const std::string& folder);

}  // namespace kesview
