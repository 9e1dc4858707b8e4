#pragma once

/// @file
/// Spares Open CASCADE lists that nobody asks it for and that take it very long.

#include <optional>
#include <string>

namespace kesview {

/// The text of a STEP file with the long lists of triangles and of their coordinates cut to one
/// element each, all else kept; none where the file holds none of them or cannot be opened.
///
/// Open CASCADE 7.6.3 chains the elements of a list, and walks the chain from its start for each,
/// which takes time that grows with the square of their number. Annotations, which alone are made
/// of them, are read from the file itself.
std::optional<std::string> textWithShortLists(const std::string& path);

/// The same of a text at hand.
std::string withShortLists(std::string text);

}  // namespace kesview
