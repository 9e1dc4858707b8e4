#include "commands/Text.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace kesview {

namespace {

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

struct Decoded {
    char32_t character = 0;
    std::size_t length = 0;  ///< 0 where there is no UTF-8
};

bool isOverlongOrSurrogate(char32_t character, std::size_t length) {
    return (length == 3 && character < 0x800) || (length == 4 && character < 0x10000) ||
           (character >= 0xD800 && character < 0xE000) || character > 0x10FFFF;
}

Decoded decode(const std::string& text, std::size_t at) {
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
    return isOverlongOrSurrogate(character, length) ? Decoded{} : Decoded{character, length};
}

/// Controls, and what turns the direction of writing or breaks the line without being seen.
bool isUnsafe(char32_t character) {
    return character < 0x20 || (character >= 0x7F && character < 0xA0) || character == 0x061C ||
           (character >= 0x200B && character <= 0x200F) ||
           (character >= 0x2028 && character <= 0x202E) ||
           (character >= 0x2060 && character <= 0x2069) || character == 0xFEFF ||
           (character >= 0xE0000 && character <= 0xE0FFF);
}

std::string spelledOut(char32_t character) {
    switch (character) {
        case U'\n':
            return "\\n";
        case U'\r':
            return "\\r";
        case U'\t':
            return "\\t";
        default:
            break;
    }
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, character < 0x80 ? "\\x%02x" : "\\u{%x}",
                  static_cast<unsigned>(character));
    return buffer;
}

std::string formatted(const char* format, double number) {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, format, number);
    return buffer;
}

std::string withoutTrailingZeros(std::string number) {
    number.erase(number.find_last_not_of('0') + 1);
    if (number.back() == '.') {
        number.pop_back();
    }
    return number == "-0" ? "0" : number;
}

}  // namespace

std::string plainText(const std::string& utf8) {
    std::string plain;
    for (std::size_t at = 0; at < utf8.size();) {
        const Decoded decoded = decode(utf8, at);
        if (decoded.length == 0) {
            char buffer[8];
            std::snprintf(buffer, sizeof buffer, "\\x%02x",
                          static_cast<unsigned>(static_cast<unsigned char>(utf8[at])));
            plain += buffer;
            ++at;
            continue;
        }
        plain += isUnsafe(decoded.character) ? spelledOut(decoded.character)
                                             : utf8.substr(at, decoded.length);
        at += decoded.length;
    }
    return plain;
}

std::string lengthText(double millimetres) {
    const double size = std::abs(millimetres);
    if (!std::isfinite(millimetres)) {
        return "unknown";
    }
    if (size != 0 && (size < 0.001 || size >= 1e9)) {
        return formatted("%.4g", millimetres);
    }
    return withoutTrailingZeros(formatted("%.3f", millimetres));
}

std::string vectorText(const Vector& vector) {
    return lengthText(vector[0]) + ", " + lengthText(vector[1]) + ", " + lengthText(vector[2]);
}

std::string colorText(const Color& color) {
    char buffer[16];
    if (color[3] == 255) {
        std::snprintf(buffer, sizeof buffer, "#%02x%02x%02x", color[0], color[1], color[2]);
    } else {
        std::snprintf(buffer, sizeof buffer, "#%02x%02x%02x%02x", color[0], color[1], color[2],
                      color[3]);
    }
    return buffer;
}

std::string countText(std::uint64_t count, const std::string& singular, const std::string& plural) {
    return std::to_string(count) + " " + (count == 1 ? singular : plural);
}

std::size_t textWidth(const std::string& utf8) {
    return static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
    }));
}

std::string padRight(const std::string& text, std::size_t width) {
    const std::size_t used = textWidth(text);
    return used < width ? text + std::string(width - used, ' ') : text;
}

std::string padLeft(const std::string& text, std::size_t width) {
    const std::size_t used = textWidth(text);
    return used < width ? std::string(width - used, ' ') + text : text;
}

std::string join(const std::vector<std::string>& texts, const std::string& separator) {
    std::string joined;
    for (const std::string& text : texts) {
        joined += (&text == texts.data() ? "" : separator) + text;
    }
    return joined;
}

std::string nameOf(BodyKind kind) {
    switch (kind) {
        case BodyKind::Solid:
            return "solid";
        case BodyKind::Sheet:
            return "sheet";
        case BodyKind::Wire:
            return "wire";
        case BodyKind::Points:
            return "points";
        case BodyKind::Mesh:
            break;
    }
    return "mesh";
}

std::string nameOf(AnnotationKind kind) {
    switch (kind) {
        case AnnotationKind::Dimension:
            return "dimension";
        case AnnotationKind::Tolerance:
            return "tolerance";
        case AnnotationKind::Datum:
            return "datum";
        case AnnotationKind::DatumTarget:
            return "datum target";
        case AnnotationKind::Note:
            return "note";
        case AnnotationKind::SurfaceFinish:
            return "surface finish";
        case AnnotationKind::Weld:
            return "weld";
        case AnnotationKind::Other:
            break;
    }
    return "other";
}

std::string nameOf(EntityLink::Kind kind) {
    switch (kind) {
        case EntityLink::Kind::Product:
            return "product";
        case EntityLink::Kind::Body:
            return "body";
        case EntityLink::Kind::Face:
            return "face";
        case EntityLink::Kind::Edge:
            return "edge";
        case EntityLink::Kind::Vertex:
            break;
    }
    return "vertex";
}

std::string nameOf(Finding::Severity severity) {
    switch (severity) {
        case Finding::Severity::Error:
            return "error";
        case Finding::Severity::Warning:
            return "warning";
        case Finding::Severity::Note:
            break;
    }
    return "note";
}

}  // namespace kesview
