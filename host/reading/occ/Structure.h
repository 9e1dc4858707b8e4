#pragma once

/// @file
/// Turns the tree of an XCAF document into products and components.

#include "document/Document.h"
#include "reading/occ/IdCounter.h"

#include <Standard_Handle.hxx>
#include <TDF_Label.hxx>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

class TDocStd_Document;

namespace kesview {

/// What became of the labels.
struct Structure {
    /// A product that has a shape of its own, and no components.
    struct Part {
        std::uint32_t product = 0;  ///< index into Document::products
        TDF_Label label;
    };
    std::vector<Part> parts;
    std::map<std::string, std::uint32_t> productOfEntry;  ///< by label entry, "0:1:1:2"
};

/// Adds a product for each shape or assembly, however often it is used, and the components and
/// roots. Bodies, and the names of components that have none of their own, are left
/// to be filled in. Roots without a name get @p rootName.
Structure readStructure(const Handle(TDocStd_Document) & source, const std::string& rootName,
                        IdCounter& ids, Document& document);

}  // namespace kesview
