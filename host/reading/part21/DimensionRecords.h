#pragma once

/// @file
/// Dimensions of an exchange file.

#include "reading/part21/PmiRecord.h"

namespace kesview {

/// Sizes and locations, linear and angular, in file order. LowerVal and UpperVal are the limits
/// of what is permitted, deviations added to the value.
std::vector<PmiRecord> readDimensions(const ExchangeFile& file);

}  // namespace kesview
