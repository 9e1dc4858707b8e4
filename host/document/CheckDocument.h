#pragma once

/// @file
/// Tells whether a document holds together.

#include "document/Document.h"

namespace kesview {

/// Throws std::runtime_error, naming the place, where an index leads nowhere, a product contains
/// itself at any depth, or an array has not the shape that Document.h tells: what would lead those
/// who walk the document astray.
void checkDocument(const Document& document);

}  // namespace kesview
