/// @file
#include "document/Utf8.h"

namespace kesview {

namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kHighest = 0x10FFFF;

/// Bytes of the sequence that @p lead begins; 0 where none begins so.
std::size_t sequenceLength(unsigned char lead) {
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

bool isSurrogate(char32_t character) {
    return character >= 0xD800 && character < 0xE000;
}

bool isOverlong(char32_t character, std::size_t length) {
    return (length == 3 && character < 0x800) || (length == 4 && character < 0x10000);
}

}  // namespace

DecodedCharacter decodeUtf8(const std::string& text, std::size_t at) {
    const auto lead = static_cast<unsigned char>(text[at]);
    const std::size_t length = sequenceLength(lead);
    if (length == 0 || at + length > text.size()) {
        return {};
    }
    char32_t character = length == 1 ? lead : lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(text[at + i]);
        if ((next & 0xC0U) != 0x80U) {
            return {};
        }
        character = (character << 6U) | (next & 0x3FU);
    }
    if (isOverlong(character, length) || isSurrogate(character) || character > kHighest) {
        return {};
    }
    return {character, length};
}

void appendUtf8(std::string& text, char32_t character) {
    if (character > kHighest || isSurrogate(character)) {
        character = kReplacement;
    }
    const auto append = [&text](char32_t byte) { text += static_cast<char>(byte); };
    if (character < 0x80) {
        append(character);
        return;
    }
    if (character < 0x800) {
        append(0xC0U | (character >> 6U));
    } else {
        if (character < 0x10000) {
            append(0xE0U | (character >> 12U));
        } else {
            append(0xF0U | (character >> 18U));
            append(0x80U | ((character >> 12U) & 0x3FU));
        }
        append(0x80U | ((character >> 6U) & 0x3FU));
    }
    append(0x80U | (character & 0x3FU));
}

}  // namespace kesview
