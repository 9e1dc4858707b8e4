#pragma once

/// @file
/// Strings of an exchange file (ISO 10303-21) as UTF-8.

#include <string>
#include <string_view>

namespace kesview {

/// Decodes what stands between the outer apostrophes: doubled apostrophes and backslashes, the
/// controls \S\, \X\, \X2\, \X4\, \N\ and \P?\ (pages other than Latin-1 read as Latin-1), line
/// breaks of folded text. Bytes that are no UTF-8 are taken as Latin-1; a damaged control stays
/// as it is written.
std::string decodeExchangeText(std::string_view raw);

}  // namespace kesview
