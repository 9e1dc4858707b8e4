#pragma once

/// @file
/// A file that is about to be read, opened once to see that it can be.

#include <cstddef>
#include <cstdint>
#include <string>

namespace kesview {

/// Only regular files are taken: what cannot be read twice, such as a pipe, is refused, as the
/// reader opens it again by its name.
///
/// @par Errors
/// Every operation throws ReadError (Unreadable) with the system's reason.
class InputFile {
public:
    explicit InputFile(const std::string& path);
    ~InputFile();
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    std::uint64_t Size() const { return _size; }
    /// The first bytes, at most @p size.
    std::string Head(std::size_t size) const;

private:
    std::string _path;
    int _file = -1;
    std::uint64_t _size = 0;
};

}  // namespace kesview
