/// @file
/// UTF-8 to wide text and back.

#include "loading/Load.h"

#include <cstddef>

namespace kesview {

namespace {

static_assert(sizeof(wchar_t) == 4, "a wide character holds a whole code point");

constexpr char32_t kReplacement = 0xFFFD;

/// A code point and how many bytes it took; 0 bytes where there is no good one.
struct Decoded {
    char32_t point = 0;
    std::size_t size = 0;
};

std::size_t sizeByLead(unsigned char lead) {
    if (lead < 0x80) {
        return 1;
    }
    if (lead >= 0xC2 && lead < 0xE0) {
        return 2;
    }
    if (lead >= 0xE0 && lead < 0xF0) {
        return 3;
    }
    return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

bool isSurrogate(char32_t point) {
    return point >= 0xD800 && point < 0xE000;
}

// Overlong forms are refused along with surrogates and what lies above the last code point, so
// that two different texts of bytes never become one.
Decoded decode(const std::string& utf8, std::size_t at) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(utf8[i]); };
    const std::size_t size = sizeByLead(byte(at));
    if (size == 0 || at + size > utf8.size()) {
        return {};
    }
    if (size == 1) {
        return {byte(at), 1};
    }
    char32_t point = byte(at) & (0xFFU >> (size + 1));
    for (std::size_t i = at + 1; i < at + size; ++i) {
        if ((byte(i) & 0xC0U) != 0x80U) {
            return {};
        }
        point = (point << 6U) | (byte(i) & 0x3FU);
    }
    const char32_t least = size == 2 ? 0x80 : size == 3 ? 0x800 : 0x10000;
    const bool good = point >= least && point <= 0x10FFFF && !isSurrogate(point);
    return good ? Decoded{point, size} : Decoded{};
}

void encode(char32_t point, std::string& utf8) {
    const auto put = [&](char32_t value) { utf8 += static_cast<char>(value); };
    if (point < 0x80) {
        put(point);
        return;
    }
    if (point < 0x800) {
        put(0xC0 | (point >> 6U));
    } else {
        if (point < 0x10000) {
            put(0xE0 | (point >> 12U));
        } else {
            put(0xF0 | (point >> 18U));
            put(0x80 | ((point >> 12U) & 0x3FU));
        }
        put(0x80 | ((point >> 6U) & 0x3FU));
    }
    put(0x80 | (point & 0x3FU));
}

}  // namespace

std::wstring widen(const std::string& utf8) {
    std::wstring text;
    text.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();) {
        const Decoded decoded = decode(utf8, at);
        const char32_t point =
            decoded.size > 0 ? decoded.point : static_cast<unsigned char>(utf8[at]);
        text += static_cast<wchar_t>(point);
        at += decoded.size > 0 ? decoded.size : 1;
    }
    return text;
}

std::string narrow(const std::wstring& text) {
    std::string utf8;
    utf8.reserve(text.size());
    for (const wchar_t letter : text) {
        const auto point = static_cast<char32_t>(letter);
        encode(point > 0x10FFFF || isSurrogate(point) ? kReplacement : point, utf8);
    }
    return utf8;
}

}  // namespace kesview
