/// @file
/// See ShortLists.h.

#include "reading/occ/ShortLists.h"

#include "reading/part21/ExchangeScanner.h"

#include <fstream>
#include <string_view>

namespace kesview {

namespace {

constexpr std::string_view triangles = "TRIANGULATED_";
constexpr std::string_view coordinates = "COORDINATES_LIST";

bool isLongList(const ScannedInstance& instance) {
    return instance.types.size() == 1 &&
           (instance.types.front().find(triangles) != std::string::npos ||
            instance.types.front() == coordinates);
}

/// @p record with the first element alone of each list that is a parameter; unchanged where its
/// parentheses or apostrophes do not pair, and where it may hold a comment.
std::string shortened(std::string_view record) {
    if (record.find("/*") != std::string_view::npos) {
        return std::string(record);
    }
    constexpr int inList = 2;  // in a parameter, within the parentheses around all of them
    int depth = 0;
    bool inText = false;  // pairs of apostrophes within a text change nothing
    bool skips = false;
    std::string out;
    for (const char character : record) {
        inText = inText != (character == '\'');
        depth += !inText && character == '(' ? 1 : 0;
        depth -= !inText && character == ')' ? 1 : 0;
        skips = depth >= inList && (skips || (depth == inList && character == ',' && !inText));
        if (!skips) {
            out += character;
        }
    }
    return depth == 0 && !inText ? out : std::string(record);
}

std::string contentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    const std::streamoff size = file.tellg();
    std::string content(size > 0 ? static_cast<std::size_t>(size) : 0, '\0');
    file.seekg(0);
    file.read(content.data(), static_cast<std::streamsize>(content.size()));
    content.resize(static_cast<std::size_t>(file.gcount()));
    return content;
}

}  // namespace

std::string withShortLists(std::string text) {
    std::string out;
    std::size_t copied = 0;
    ExchangeScanner scanner(text);
    for (ScannedInstance instance; scanner.Next(instance);) {
        if (isLongList(instance)) {
            out.append(text, copied, instance.begin - copied);
            out += shortened(
                std::string_view(text).substr(instance.begin, instance.end - instance.begin));
            copied = instance.end;
        }
    }
    if (copied == 0) {
        return text;
    }
    out.append(text, copied, std::string::npos);
    return out;
}

std::optional<std::string> textWithShortLists(const std::string& path) {
    std::string text = contentOf(path);
    if (text.find(coordinates) == std::string::npos && text.find(triangles) == std::string::npos) {
        return std::nullopt;
    }
    return withShortLists(std::move(text));
}

}  // namespace kesview
