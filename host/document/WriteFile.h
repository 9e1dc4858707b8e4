#pragma once

/// @file
/// Writes files whole or not at all.

#include <string>
#include <string_view>

namespace kesview {

/// Puts @p bytes into the file at @p path, or throws std::runtime_error with the system's reason
/// and leaves what was there. Others see the old content or the new, never a part.
///
/// A new file gets the mode that any new file would get, a replaced one keeps its own. A symbolic
/// link stays and what it leads to is written. A device or a pipe is written directly.
void writeWhole(const std::string& path, std::string_view bytes);

}  // namespace kesview
