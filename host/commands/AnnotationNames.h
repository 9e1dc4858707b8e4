#pragma once

/// @file
/// Annotations by key, and what people call them.

#include "document/Document.h"

#include <map>
#include <string>

namespace kesview {

/// Borrows the document's annotations.
class AnnotationNames {
public:
    explicit AnnotationNames(const Document& document);

    /// What its drawing reads, or else its name, its label, its type; empty for an unknown key.
    std::string Of(const std::string& key) const;

private:
    std::map<std::string, const Annotation*> _byKey;
};

}  // namespace kesview
