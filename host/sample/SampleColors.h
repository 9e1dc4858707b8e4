#pragma once

/// @file
/// The colours of the sample. The writer of Open CASCADE puts colours in the order of addresses
/// in memory, another one each time; these keep theirs.

#include "sample/ExchangeText.h"

namespace kesview {

/// Colours the parts and two faces of the bracket, one of them translucent.
void addColors(ExchangeText& text);

}  // namespace kesview
