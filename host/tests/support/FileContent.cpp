/// @file
#include "support/FileContent.h"

#include <fstream>
#include <iterator>

namespace kesview::support {

std::string contentOfFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void writeFile(const std::string& path, std::string_view content) {
    std::ofstream(path, std::ios::binary)
        .write(content.data(), static_cast<std::streamsize>(content.size()));
}

}  // namespace kesview::support
