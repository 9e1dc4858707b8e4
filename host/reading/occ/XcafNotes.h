#pragma once

/// @file
/// Notes of an XCAF document.

#include "document/Document.h"
#include "reading/occ/ReadPmi.h"

namespace kesview {

/// Adds every comment and balloon of the document's notes as an annotation; other kinds of notes
/// become a finding.
void readXcafNotes(const Handle(TDocStd_Document) & source, const ShapeLookup& shapes,
                   Document& document);

}  // namespace kesview
