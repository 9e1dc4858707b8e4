#pragma once

/// @file
/// A folder that goes away with everything in it.

#include <filesystem>
#include <string>
#include <string_view>

namespace kesview {

class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return _path; }
    /// Makes a file of @p content in the folder and answers its path.
    std::string Write(const std::string& name, std::string_view content) const;

private:
    std::filesystem::path _path;
};

}  // namespace kesview
