#pragma once

/// @file
/// What kesview-reader is told on its command line.

#include "reading/FileFormat.h"
#include "reading/ReadFile.h"

#include <string>
#include <vector>

namespace kesview {

struct ReaderArguments {
    std::string path;
    FileFormat format = FileFormat::Unknown;
    ReadOptions options;  ///< the limits are not passed: they are kept from outside
};

/// The arguments after the program's name.
std::vector<std::string> toCommandLine(const ReaderArguments& arguments);

/// The opposite. Throws std::runtime_error on what toCommandLine() does not make.
ReaderArguments fromCommandLine(const std::vector<std::string>& words);

}  // namespace kesview
