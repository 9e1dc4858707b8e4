#pragma once

/// @file
/// What the STEP reader could not read of annotations.

#include "document/Document.h"
#include "reading/part21/ExchangeFile.h"

class STEPCAFControl_Reader;

namespace kesview {

/// Adds a finding on records of annotations and views that the reader found faulty.
void tellPmiFaults(const STEPCAFControl_Reader& reader, const ExchangeFile& file,
                   Document& document);

}  // namespace kesview
