/// @file
#include "support/TemporaryFolder.h"

#include "support/FileContent.h"

#include <cstdlib>
#include <stdexcept>
#include <system_error>

namespace kesview::support {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
    std::string name = (fs::temp_directory_path() / "kesview-test-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("no folder can be made: " + name);
    }
    _path = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::permissions(_path, fs::perms::owner_all, fs::perm_options::add, ignored);
    fs::remove_all(_path, ignored);
}

std::string TemporaryFolder::Write(const std::string& name, std::string_view content) const {
    const std::string path = File(name);
    writeFile(path, content);
    return path;
}

}  // namespace kesview::support
