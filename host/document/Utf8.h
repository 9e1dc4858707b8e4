#pragma once

/// @file
/// UTF-8, one character at a time.

#include <cstddef>
#include <string>

namespace kesview {

/// A character and how many bytes it took; 0 bytes where there is no good one.
struct DecodedCharacter {
    char32_t character = 0;
    std::size_t length = 0;
};

/// What stands at @p at, which is below the size. Overlong forms, surrogates and what lies above
/// the last code point are refused, so that two different texts of bytes never become one.
DecodedCharacter decodeUtf8(const std::string& text, std::size_t at);

/// The replacement character for what is no character.
void appendUtf8(std::string& text, char32_t character);

}  // namespace kesview
