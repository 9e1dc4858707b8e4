/// @file
/// See StlBinary.h.

#include "reading/occ/StlBinary.h"

#include "reading/ReadFile.h"

#include <algorithm>
#include <cstring>

namespace kesview {

namespace {

std::uint32_t littleEndian(const std::string& content, std::size_t offset) {
    std::uint32_t value = 0;
    for (std::size_t i = 4; i-- > 0;) {
        value = value << 8U | static_cast<unsigned char>(content[offset + i]);
    }
    return value;
}

float floatAt(const std::string& content, std::size_t offset) {
    const std::uint32_t bits = littleEndian(content, offset);
    float value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

StlTriangle triangleAt(const std::string& content, std::size_t offset) {
    StlTriangle triangle{};
    offset += 12;  // the normal, which the corners tell as well
    for (StlCorner& corner : triangle) {
        for (float& length : corner) {
            length = floatAt(content, offset);
            offset += 4;
        }
    }
    return triangle;
}

std::uint64_t expectedSize(const std::string& content) {
    return stlHeaderSize + stlTriangleSize * littleEndian(content, stlHeaderSize - 4);
}

std::string headerName(const std::string& content) {
    const std::string header = content.substr(0, std::min(content.find('\0'), stlHeaderSize - 4));
    const bool isText =
        std::all_of(header.begin(), header.end(), [](char c) { return c >= ' ' && c <= '~'; });
    const auto end = header.find_last_not_of(' ');
    return isText && end != std::string::npos ? header.substr(0, end + 1) : std::string();
}

}  // namespace

bool isExactStlBinary(const std::string& content) {
    return content.size() >= stlHeaderSize && content.size() == expectedSize(content);
}

StlSolid parseStlBinary(const std::string& content) {
    if (content.size() < stlHeaderSize) {
        throw ReadError(
            ReadFailure::Damaged,
            "The STL file is damaged: " + std::to_string(stlHeaderSize - content.size()) +
                " bytes of its header are missing; write or copy it anew.");
    }
    const std::uint64_t count = littleEndian(content, stlHeaderSize - 4);
    if (content.size() < expectedSize(content)) {
        throw ReadError(ReadFailure::Damaged,
                        "The STL file is damaged: it announces " + std::to_string(count) +
                            " triangles, and " +
                            std::to_string(expectedSize(content) - content.size()) +
                            " bytes of them are missing; write or copy it anew.");
    }
    StlSolid solid;
    solid.name = headerName(content);
    solid.triangles.reserve(count);
    for (std::uint64_t i = 0; i < count; ++i) {
        solid.triangles.push_back(triangleAt(content, stlHeaderSize + i * stlTriangleSize));
    }
    return solid;
}

}  // namespace kesview
