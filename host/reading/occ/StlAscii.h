#pragma once

/// @file
/// Parses STL files of text.

#include "reading/occ/StlSolid.h"

#include <cstdint>
#include <string>
#include <vector>

namespace kesview {

struct StlText {
    std::vector<StlSolid> solids;
    std::uint64_t damagedFacets = 0;  ///< without three vertices of three numbers each
    bool isTruncated = false;         ///< the last solid does not end
};

/// Reads all solids; the case of words and the layout of lines do not matter. What is no STL at
/// all gives no solids.
StlText parseStlText(const std::string& text);

}  // namespace kesview
