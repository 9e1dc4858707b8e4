/// @file
#include "reading/FileFormat.h"

#include "reading/InputFile.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace kesview {

namespace {

/// Enough for any first comment or header that was met in practice.
constexpr std::size_t headSize = 64 * 1024;

constexpr std::size_t stlHeaderSize = 84;
constexpr std::size_t stlRecordSize = 50;

bool startsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

bool isBlank(char character) {
    return std::isspace(static_cast<unsigned char>(character)) != 0;
}

std::string_view withoutBlanks(std::string_view text) {
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    return text;
}

std::string_view withoutByteOrderMark(std::string_view text) {
    return startsWith(text, "\xEF\xBB\xBF") ? text.substr(3) : text;
}

std::string_view withoutBlanksAndComments(std::string_view text) {
    text = withoutBlanks(text);
    while (startsWith(text, "/*")) {
        const std::size_t end = text.find("*/", 2);
        text = end == std::string_view::npos ? "" : withoutBlanks(text.substr(end + 2));
    }
    return text;
}

bool isStep(std::string_view head) {
    constexpr std::string_view keyword = "ISO-10303-21";
    head = withoutBlanksAndComments(withoutByteOrderMark(head));
    return startsWith(head, keyword) &&
           startsWith(withoutBlanksAndComments(head.substr(keyword.size())), ";");
}

/// Lines of 80 columns: the first belongs to the start section, with a number in its last seven.
bool isIges(std::string_view head) {
    constexpr std::size_t sectionColumn = 72;
    if (head.size() <= sectionColumn + 1 || head[sectionColumn] != 'S' ||
        head.substr(0, sectionColumn).find_first_of("\n\r\0") != std::string_view::npos) {
        return false;
    }
    std::string_view number = head.substr(sectionColumn + 1, 7);
    number = number.substr(0, number.find_first_of("\r\n"));
    return number.find_first_not_of(" 0123456789") == std::string_view::npos &&
           number.find_first_of("0123456789") != std::string_view::npos;
}

bool isBrep(std::string_view head) {
    head = withoutBlanks(head);
    return startsWith(head, "DBRep_DrawableShape") || startsWith(head, "CASCADE Topology V") ||
           startsWith(head, "Open CASCADE Topology V");
}

std::string lowered(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char character) {
        return static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
    });
    return lower;
}

/// The first word alone proves nothing: headers of binary files begin with it, too.
bool isAsciiStl(std::string_view head) {
    const std::string text = lowered(withoutBlanks(withoutByteOrderMark(head)));
    if (!startsWith(text, "solid") || text.find('\0') != std::string::npos) {
        return false;
    }
    return text.find("facet", 5) != std::string::npos ||
           text.find("endsolid", 5) != std::string::npos;
}

/// Whether a record could be a triangle: every number of a size that models have, and a normal
/// that is one or was left out. Text, read as numbers, hardly ever passes.
bool isLikelyTriangle(std::string_view record) {
    std::array<float, 12> numbers = {};
    std::memcpy(numbers.data(), record.data(), sizeof numbers);
    const bool likely = std::all_of(numbers.begin(), numbers.end(), [](float number) {
        const float size = std::abs(number);
        return number == 0.0F || (size > 1e-20F && size < 1e12F);
    });
    const bool placed = std::any_of(numbers.begin() + 3, numbers.end(),
                                    [](float number) { return number != 0.0F; });
    const double length = std::hypot(numbers[0], numbers[1], numbers[2]);
    return likely && placed && (length == 0.0 || std::abs(length - 1.0) < 0.1);
}

/// The size proves it. Where size and count disagree, as in a file that was cut, the first
/// triangles decide: the reader says what is wrong with it better than we could.
bool isBinaryStl(std::string_view head, std::uint64_t size) {
    if (head.size() < stlHeaderSize) {
        return false;
    }
    std::uint32_t count = 0;
    std::memcpy(&count, head.data() + stlHeaderSize - sizeof count, sizeof count);
    if (size == stlHeaderSize + std::uint64_t{count} * stlRecordSize) {
        return true;
    }
    const std::size_t records =
        std::min<std::size_t>((head.size() - stlHeaderSize) / stlRecordSize, 4);
    for (std::size_t i = 0; i < records; ++i) {
        if (!isLikelyTriangle(head.substr(stlHeaderSize + i * stlRecordSize, stlRecordSize))) {
            return false;
        }
    }
    return records > 0;
}

}  // namespace

FileFormat detectFormat(const std::string& path) {
    const InputFile file(path);
    const std::string head = file.Head(headSize);
    if (isStep(head)) {
        return FileFormat::Step;
    }
    if (isBrep(head)) {
        return FileFormat::Brep;
    }
    if (isIges(head)) {
        return FileFormat::Iges;
    }
    if (isAsciiStl(head) || isBinaryStl(head, file.Size())) {
        return FileFormat::Stl;
    }
    return FileFormat::Unknown;
}

std::string nameOf(FileFormat format) {
    switch (format) {
        case FileFormat::Step:
            return "STEP";
        case FileFormat::Iges:
            return "IGES";
        case FileFormat::Brep:
            return "BREP";
        case FileFormat::Stl:
            return "STL";
        case FileFormat::Unknown:
            break;
    }
    return "unknown";
}

}  // namespace kesview
