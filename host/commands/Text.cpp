#include "commands/Text.h"

#include "document/Utf8.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace kesview {

namespace {

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
        const DecodedCharacter decoded = decodeUtf8(utf8, at);
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
