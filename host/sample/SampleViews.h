#pragma once

/// @file
/// What the writer of Open CASCADE leaves out of the sample: a note and the saved views.

#include "sample/ExchangeText.h"

namespace kesview {

/// Expects the sample with its other annotations.
void addNote(ExchangeText& text);

/// "Bore", which shows the annotations of the bore alone, and "Section A-A", cut along the axis
/// of the bore. Expects the note.
void addViews(ExchangeText& text);

}  // namespace kesview
