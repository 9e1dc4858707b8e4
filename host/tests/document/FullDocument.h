#pragma once

/// @file
/// A small document in which no field has the value that it begins with.

#include "document/Document.h"

namespace kesview {

Document fullDocument();

/// Fails the running test on every field that is not the same.
void expectSame(const Document& expected, const Document& found);

}  // namespace kesview
