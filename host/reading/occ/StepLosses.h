#pragma once

/// @file
/// Compares what a STEP file lists with what came out of it.

#include "document/Document.h"

#include <Standard_Handle.hxx>

class STEPCAFControl_Reader;

namespace kesview {

/// Adds findings on records that could not be read (before the transfer is enough).
void tellUnreadRecords(const STEPCAFControl_Reader& reader, Document& document);

/// Adds findings on solids that lost their volume or are missing, faces that are missing, and
/// files that were referred to and not found. After the transfer.
void tellLostShapes(const STEPCAFControl_Reader& reader, Document& document);

}  // namespace kesview
