#pragma once

/// @file
/// Expected texts and pictures that are kept in files.

#include <string>

namespace kesview::support {

/// Whether what is expected is to be written anew instead of compared: where the environment
/// variable KESVIEW_WRITE_GOLDEN is set. Look at the change before it is kept.
bool writesGolden();

/// The text of the file at @p path, into which @p actual is written first where writesGolden.
std::string goldenText(const std::string& path, const std::string& actual);

}  // namespace kesview::support
