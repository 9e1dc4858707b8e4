/// @file
#include "reading/TemporaryFolder.h"

#include <cstdlib>
#include <fstream>

namespace kesview {

TemporaryFolder::TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "kesview-reading-XXXXXX").string();
    _path = ::mkdtemp(name.data());
}

TemporaryFolder::~TemporaryFolder() {
    std::filesystem::remove_all(_path);
}

std::string TemporaryFolder::Write(const std::string& name, std::string_view content) const {
    const std::filesystem::path path = _path / name;
    std::ofstream(path, std::ios::binary)
        .write(content.data(), static_cast<std::streamsize>(content.size()));
    return path.string();
}

}  // namespace kesview
