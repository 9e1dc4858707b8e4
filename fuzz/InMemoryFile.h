/// @file
/// A file that lives in memory, for readers that take a path.
#pragma once

#include "Input.h"

#include <string>
#include <sys/mman.h>
#include <unistd.h>

namespace Fuzz {

class InMemoryFile {
public:
    explicit InMemoryFile(const std::string& content) : _file(memfd_create("fuzz", MFD_CLOEXEC)) {
        Check(_file >= 0, "a file in memory");
        const auto written = write(_file, content.data(), content.size());
        Check(written == static_cast<ssize_t>(content.size()), "the whole content is written");
    }
    InMemoryFile(const InMemoryFile&) = delete;
    InMemoryFile& operator=(const InMemoryFile&) = delete;
    ~InMemoryFile() { close(_file); }

    std::string Path() const { return "/proc/self/fd/" + std::to_string(_file); }

private:
    int _file;
};

}  // namespace Fuzz
