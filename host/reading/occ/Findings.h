#pragma once

/// @file
/// Notes down what a file lost, changed or leaves in doubt.

#include "document/Document.h"

#include <string>

namespace kesview {

/// What is to be said; @c where names what is concerned, and may be empty.
struct Remark {
    Finding::Severity severity = Finding::Severity::Warning;
    std::string code;
    std::string message;
    std::string where;
};

/// Adds the remark. One of the same code and message counts up instead, and keeps its first
/// @c where. A count of 0 adds nothing.
void addFinding(Document& document, const Remark& remark, std::uint64_t count = 1);

}  // namespace kesview
