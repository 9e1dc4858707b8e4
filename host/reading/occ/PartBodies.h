#pragma once

/// @file
/// Fills the products of a document with their bodies.

#include "reading/ReadFile.h"
#include "reading/occ/Bodies.h"
#include "reading/occ/Structure.h"

#include <Standard_Handle.hxx>

class TDocStd_Document;

namespace kesview {

/// Builds the bodies of all parts, each once, gives names to parts and components that have none
/// of their own, and tells the stage "tessellating". A document
/// without any body gets the finding "shape.none".
void fillBodies(const Handle(TDocStd_Document) & source, const Structure& structure,
                const BodyContext& context, const ReadProgress& progress);

/// Adds "shape.none" where no product of the document has a body.
void tellIfWithoutShape(Document& document);

}  // namespace kesview
