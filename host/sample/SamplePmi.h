#pragma once

/// @file
/// What is dimensioned and toleranced on the sample's bracket.

#include "sample/SampleAssembly.h"

namespace kesview {

/// Adds a height, a diameter, a position and the datums A and B to the document.
void addSamplePmi(const SampleAssembly& sample);

}  // namespace kesview
