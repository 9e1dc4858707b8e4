#pragma once

/// @file
/// A folder that goes away with everything in it.

#include <filesystem>
#include <string>
#include <string_view>

namespace kesview::support {

/// Empty at first. Goes also where the test failed or took the rights to write into it away; not
/// where the process ends before the destructor.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return _path; }
    /// The path of a file in it, which need not be there.
    std::string File(const std::string& name) const { return (_path / name).string(); }
    /// Makes a file of @p content in it and answers its path.
    std::string Write(const std::string& name, std::string_view content) const;

private:
    std::filesystem::path _path;
};

}  // namespace kesview::support
