#pragma once

/// @file
/// Where the system keeps the fonts that texts are drawn with.

#include <string>
#include <vector>

namespace kesview {

/// Paths of those fonts that are installed, in the order in which letters are looked for. Looked
/// for below KESVIEW_FONTS where that is set, otherwise in the folders of the system and the user.
std::vector<std::string> findFontFiles();

}  // namespace kesview
