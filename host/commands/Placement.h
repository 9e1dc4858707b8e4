#pragma once

/// @file
/// Walks the assembly as it is placed: each product once for each use.

#include "document/Document.h"

#include <cstddef>
#include <functional>

namespace kesview {

/// One use of a product.
struct Placed {
    const Product* product = nullptr;
    std::size_t productIndex = 0;
    std::size_t level = 1;  ///< of the assembly; 1 at the top
    Matrix worldFromProduct = identityMatrix;
};

/// Parents before children, in the order of the file. Throws LimitError beyond a million uses or
/// 1000 levels.
void forEachPlaced(const Document& document, const std::function<void(const Placed&)>& visit);

}  // namespace kesview
