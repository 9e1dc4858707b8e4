#pragma once

/// @file
/// Files for tests: temporary ones, and real ones where there are any.

#include <string>

namespace kesview {

/// A folder of its own, deleted with all in it at the end of the test.
class TestFolder {
public:
    TestFolder();
    ~TestFolder();
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    std::string Path(const std::string& name) const;
    /// Writes a file of this content and returns its path.
    std::string Write(const std::string& name, const std::string& content) const;

private:
    std::string _folder;
};

/// The folder of real files that KESVIEW_DATA names; empty where it is not set.
std::string realFolder();

std::string contentOfFile(const std::string& path);

}  // namespace kesview
