#pragma once

/// @file
/// Reads annotations and saved views of a STEP file that Open CASCADE has transferred.

#include "document/Document.h"

#include <Standard_Handle.hxx>
#include <TopLoc_Location.hxx>
#include <TopoDS_Shape.hxx>
#include <functional>
#include <optional>
#include <string>

class STEPCAFControl_Reader;
class TDocStd_Document;

namespace kesview {

/// What the structure of the document tells the reader of annotations.
struct ShapeLookup {
    /// The face, edge, body or product that a shape of the document became, looked up without its
    /// location; none where it became nothing.
    std::function<std::optional<EntityLink>(const TopoDS_Shape& shape)> link;
    /// Where the first instance of the product stands that @p entry, an XCAF label entry such as
    /// "0:1:1:2", names; the identity where it is not used.
    std::function<Matrix(const std::string& entry)> worldFromProduct;
    /// The next unused id of the document.
    std::function<Id()> nextId;
};

/// Adds annotations, views and findings to @p document. Loses nothing silently: what it cannot
/// read becomes a finding. Throws nothing but std::bad_alloc.
void readPmi(const Handle(TDocStd_Document) & source, STEPCAFControl_Reader& reader,
             const std::string& path, const ShapeLookup& shapes, Document& document);

}  // namespace kesview
