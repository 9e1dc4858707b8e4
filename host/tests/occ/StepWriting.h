#pragma once

/// @file
/// Writes STEP files for tests.

#include "support/TemporaryFolder.h"

#include <Standard_Handle.hxx>
#include <TDocStd_Document.hxx>
#include <string>

namespace kesview {

/// Writes an XCAF document in the unit ("MM", "INCH") and schema ("AP214IS", "AP242DIS", "AP203").
void writeStep(const Handle(TDocStd_Document) & source, const std::string& path,
               const std::string& unit = "MM", const std::string& schema = "AP242DIS");

/// Writes "machine.stp" into the folder and each part to a file of its own beside it,
/// "part_NAME.stp"; returns the path of the first.
std::string writeStepWithParts(const Handle(TDocStd_Document) & source,
                               const support::TemporaryFolder& folder);

/// An assembly "machine" of two bolts (a grey cylinder of radius 5 and height 20, the second one
/// red, 100 mm along x and turned about y by a right angle) and a plate (a box of 10 x 20 x 30 on
/// the layer "plates", blue, its first face green and half transparent). Umlauts in the names.
Handle(TDocStd_Document) machine();

}  // namespace kesview
