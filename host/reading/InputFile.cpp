/// @file
#include "reading/InputFile.h"

#include "reading/ReadFile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace kesview {

namespace {

[[noreturn]] void refuse(const std::string& path, const std::string& reason) {
    throw ReadError(ReadFailure::Unreadable, "'" + path + "' cannot be read: " + reason + ".");
}

std::string lastReason() {
    return std::generic_category().message(errno);
}

}  // namespace

InputFile::InputFile(const std::string& path) : _path(path) {
    // Without blocking, as opening a pipe would wait for its writer.
    _file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (_file < 0) {
        refuse(path, lastReason());
    }
    struct stat facts = {};
    if (::fstat(_file, &facts) != 0 || !S_ISREG(facts.st_mode)) {
        ::close(_file);
        refuse(path, S_ISDIR(facts.st_mode) ? "it is a folder"
                                            : "it is not a regular file; save it as one first");
    }
    _size = static_cast<std::uint64_t>(facts.st_size);
}

InputFile::~InputFile() {
    ::close(_file);
}

std::string InputFile::Head(std::size_t size) const {
    std::string head(size, '\0');
    std::size_t filled = 0;
    while (filled < size) {
        const ssize_t count =
            ::pread(_file, head.data() + filled, size - filled, static_cast<off_t>(filled));
        if (count < 0 && errno != EINTR) {
            refuse(_path, lastReason());
        }
        if (count == 0) {
            break;
        }
        filled += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    head.resize(filled);
    return head;
}

}  // namespace kesview
