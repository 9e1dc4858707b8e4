#pragma once

/// @file
/// Colours and text heights of presentation styles in an exchange file.

#include "document/Document.h"
#include "reading/part21/ExchangeFile.h"

#include <optional>

namespace kesview {

/// The colour that is nearest to the styles, counted in references; none where they lead to none.
std::optional<Color> findStyleColor(const ExchangeFile& file, const ExchangeValue& styles);

/// The height of a character box, in the unit of the file.
std::optional<double> findTextHeight(const ExchangeFile& file, const ExchangeValue& styles);

}  // namespace kesview
