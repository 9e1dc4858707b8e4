/// @file
/// See ExchangeText.h.

#include "reading/part21/ExchangeText.h"

#include "document/Utf8.h"

#include <cstdint>
#include <optional>

namespace kesview {
namespace {

bool isUtf8(std::string_view text) {
    for (std::size_t i = 0; i < text.size();) {
        const auto lead = static_cast<unsigned char>(text[i]);
        const std::size_t tail = lead < 0x80                   ? 0
                                 : lead >= 0xC2 && lead < 0xE0 ? 1
                                 : lead >= 0xE0 && lead < 0xF0 ? 2
                                 : lead >= 0xF0 && lead < 0xF5 ? 3
                                                               : 9;
        if (tail == 9 || i + tail >= text.size()) {
            return false;
        }
        for (std::size_t k = 1; k <= tail; ++k) {
            if ((static_cast<unsigned char>(text[i + k]) & 0xC0) != 0x80) {
                return false;
            }
        }
        i += tail + 1;
    }
    return true;
}

std::optional<std::uint32_t> readHex(std::string_view digits) {
    std::uint32_t value = 0;
    for (const char c : digits) {
        const int digit = c >= '0' && c <= '9'   ? c - '0'
                          : c >= 'A' && c <= 'F' ? c - 'A' + 10
                          : c >= 'a' && c <= 'f' ? c - 'a' + 10
                                                 : -1;
        if (digit < 0) {
            return std::nullopt;
        }
        value = value * 16 + static_cast<std::uint32_t>(digit);
    }
    return value;
}

/// Reads groups of hexadecimal digits up to \X0\; the end behind it, or none where it is damaged.
std::optional<std::size_t> decodeWide(std::string_view raw, std::size_t start, std::size_t width,
                                      std::string& text) {
    const std::size_t end = raw.find("\\X0\\", start);
    if (end == std::string_view::npos || (end - start) % width != 0) {
        return std::nullopt;
    }
    std::string decoded;
    std::uint32_t high = 0;
    for (std::size_t i = start; i < end; i += width) {
        const auto unit = readHex(raw.substr(i, width));
        if (!unit) {
            return std::nullopt;
        }
        if (*unit >= 0xD800 && *unit < 0xDC00) {  // \X2\ may hold the halves of a pair
            high = *unit;
            continue;
        }
        const bool low = *unit >= 0xDC00 && *unit < 0xE000 && high != 0;
        appendUtf8(decoded, low ? 0x10000 + ((high - 0xD800) << 10) + (*unit - 0xDC00) : *unit);
        high = 0;
    }
    text += decoded;
    return end + 4;
}

/// Decodes the control at @p at; the place behind it, or none where it is not one.
std::optional<std::size_t> decodeControl(std::string_view raw, std::size_t at, std::string& text) {
    const std::string_view rest = raw.substr(at);
    if (rest.substr(0, 2) == "\\\\") {
        text += '\\';
        return at + 2;
    }
    if (rest.substr(0, 3) == "\\S\\" && rest.size() > 3) {
        appendUtf8(text, 0x80U + (static_cast<unsigned char>(rest[3]) & 0x7FU));
        return at + 4;
    }
    if (rest.substr(0, 3) == "\\N\\") {
        text += '\n';
        return at + 3;
    }
    if (rest.size() > 3 && rest[1] == 'P' && rest[3] == '\\') {
        return at + 4;
    }
    if (rest.substr(0, 4) == "\\X2\\") {
        return decodeWide(raw, at + 4, 4, text);
    }
    if (rest.substr(0, 4) == "\\X4\\") {
        return decodeWide(raw, at + 4, 8, text);
    }
    if (rest.substr(0, 3) == "\\X\\" && rest.size() > 4) {
        if (const auto code = readHex(rest.substr(3, 2))) {
            appendUtf8(text, *code);
            return at + 5;
        }
    }
    return std::nullopt;
}

}  // namespace

std::string decodeExchangeText(std::string_view raw) {
    const bool utf8 = isUtf8(raw);
    std::string text;
    text.reserve(raw.size());
    for (std::size_t i = 0; i < raw.size();) {
        const char c = raw[i];
        if (c == '\\') {
            if (const auto next = decodeControl(raw, i, text)) {
                i = *next;
                continue;
            }
        }
        if (c == '\'' && i + 1 < raw.size() && raw[i + 1] == '\'') {
            ++i;
        }
        if (static_cast<unsigned char>(c) >= 0x80 && !utf8) {
            appendUtf8(text, static_cast<unsigned char>(c));
        } else if (c != '\n' && c != '\r') {
            text += c;
        }
        ++i;
    }
    return text;
}

}  // namespace kesview
