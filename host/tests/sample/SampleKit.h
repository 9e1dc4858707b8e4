#pragma once

/// @file
/// What the tests of the bundled sample share.

#include <filesystem>
#include <string>

namespace kesview::support {

/// The sample's path.
std::string sampleFile();

/// A folder of the running test, empty at first, that goes with this.
class TestFolder {
public:
    TestFolder();
    ~TestFolder();
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    std::string File(const std::string& name) const { return (_path / name).string(); }
    const std::filesystem::path& Path() const { return _path; }

private:
    std::filesystem::path _path;
};

std::string bytesOf(const std::string& path);
void writeBytes(const std::string& path, const std::string& bytes);

/// Whether what is expected is to be written anew instead of compared: where the environment
/// variable KESVIEW_WRITE_GOLDEN is set. Look at the change before it is kept.
bool writesGolden();

}  // namespace kesview::support
