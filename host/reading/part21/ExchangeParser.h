#pragma once

/// @file
/// Parses the text of one entity instance.

#include "reading/part21/ExchangeFile.h"

#include <string_view>

namespace kesview {

/// Parses "TYPE(…)" or "(TYPE(…)TYPE(…))". Damaged parameters read as unset, missing brackets as
/// if they closed at the end.
std::vector<ExchangeInstance::Part> parseInstance(std::string_view text);

}  // namespace kesview
