#pragma once

/// @file
/// Where products stand in the world.

#include "document/Document.h"

#include <vector>

namespace kesview {

/// For each product, where its first instance (in the order of the tree) stands; the identity for
/// products that are not used.
std::vector<Matrix> firstPlaces(const Document& document);

}  // namespace kesview
