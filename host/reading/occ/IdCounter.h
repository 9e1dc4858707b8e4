#pragma once

/// @file
/// Numbers everything of a document.

#include "document/Document.h"

namespace kesview {

/// Gives ids in one running numbering from 2, so that a file read twice gets the same ones.
class IdCounter {
public:
    Id Next() { return _next++; }

private:
    Id _next = 2;
};

}  // namespace kesview
