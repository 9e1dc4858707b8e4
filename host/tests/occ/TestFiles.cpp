/// @file
/// See TestFiles.h.

#include "occ/TestFiles.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <stdlib.h>

namespace kesview {

TestFolder::TestFolder()
    : _folder((std::filesystem::temp_directory_path() / "kesview_occ_XXXXXX").string()) {
    if (mkdtemp(_folder.data()) == nullptr) {
        throw std::runtime_error("no temporary folder");
    }
}

TestFolder::~TestFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(_folder, ignored);
}

std::string TestFolder::Path(const std::string& name) const {
    return _folder + "/" + name;
}

std::string TestFolder::Write(const std::string& name, const std::string& content) const {
    std::ofstream(Path(name), std::ios::binary) << content;
    return Path(name);
}

std::string realFolder() {
    const char* folder = std::getenv("KESVIEW_DATA");
    return folder == nullptr ? std::string() : std::string(folder);
}

std::string contentOfFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace kesview
