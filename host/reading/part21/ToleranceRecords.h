#pragma once

/// @file
/// Geometric tolerances of an exchange file.

#include "reading/part21/PmiRecord.h"

namespace kesview {

/// In file order. The text is the feature control frame: "⌖ ⌀0.2 Ⓜ | A | B".
std::vector<PmiRecord> readTolerances(const ExchangeFile& file);

}  // namespace kesview
