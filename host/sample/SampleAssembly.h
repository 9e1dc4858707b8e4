#pragma once

/// @file
/// The sample as a document of Open CASCADE: structure, names, layers.

#include "sample/SampleParts.h"

#include <TDF_Label.hxx>
#include <TDocStd_Document.hxx>

namespace kesview {

struct SampleAssembly {
    Handle(TDocStd_Document) document;
    TDF_Label bracketLabel;
    SamplePart bracket;

    /// Makes the label where the document does not have it yet.
    TDF_Label FaceLabel(const std::string& name) const;
};

/// The bracket, and twice a set of a bolt and a washer.
SampleAssembly makeSampleAssembly();

}  // namespace kesview
