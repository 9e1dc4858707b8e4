/// @file
/// UTF-8 to wide text and back.

#include "document/Utf8.h"
#include "loading/Load.h"

#include <cstddef>

namespace kesview {

static_assert(sizeof(wchar_t) == 4, "a wide character holds a whole code point");

std::wstring widen(const std::string& utf8) {
    std::wstring text;
    text.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();) {
        const DecodedCharacter decoded = decodeUtf8(utf8, at);
        const char32_t character =
            decoded.length > 0 ? decoded.character : static_cast<unsigned char>(utf8[at]);
        text += static_cast<wchar_t>(character);
        at += decoded.length > 0 ? decoded.length : 1;
    }
    return text;
}

std::string narrow(const std::wstring& text) {
    std::string utf8;
    utf8.reserve(text.size());
    for (const wchar_t letter : text) {
        appendUtf8(utf8, static_cast<char32_t>(letter));
    }
    return utf8;
}

}  // namespace kesview
