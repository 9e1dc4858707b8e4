/// @file
#include "document/WriteFile.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace kesview {

namespace {

[[noreturn]] void fail(const std::string& path, int reason) {
    throw std::runtime_error(
        "'" + path + "' cannot be written: " + std::generic_category().message(reason) + ".");
}

/// The file that @p path means after all links, which need not exist.
std::string followLinks(const std::string& path) {
    std::filesystem::path target = path;
    for (int links = 0; links < 40; ++links) {
        std::error_code ignored;
        if (!std::filesystem::is_symlink(target, ignored)) {
            return target.string();
        }
        const std::filesystem::path next = std::filesystem::read_symlink(target, ignored);
        target = next.is_absolute() ? next : target.parent_path() / next;
    }
    fail(path, ELOOP);
}

/// Closes the file at the end, whatever happens.
class Descriptor {
public:
    explicit Descriptor(int number) : _number(number) {}
    ~Descriptor() { Close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int Number() const { return _number; }
    bool Close() {
        const int number = _number;
        _number = -1;
        return number < 0 || ::close(number) == 0;
    }

private:
    int _number;
};

/// False with the reason in errno.
bool writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(file, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR) {
            return false;
        }
        if (written > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
        }
    }
    return true;
}

/// A file beside @p target that goes away unless it is moved there.
class Temporary {
public:
    explicit Temporary(const std::string& target) {
        static std::atomic<unsigned> counter{0};
        const std::string folder = std::filesystem::path(target).parent_path().string();
        const std::string stem = (folder.empty()  ? ""
                                  : folder == "/" ? "/"
                                                  : folder + "/") +
                                 ".kesview-" + std::to_string(::getpid()) + "-";
        do {
            _path = stem + std::to_string(counter++) + ".tmp";
            _file = ::open(_path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        } while (_file < 0 && errno == EEXIST);
    }
    ~Temporary() {
        if (!_moved && _file >= 0) {
            ::unlink(_path.c_str());
        }
    }
    Temporary(const Temporary&) = delete;
    Temporary& operator=(const Temporary&) = delete;

    int File() const { return _file; }
    bool MoveTo(const std::string& target) {
        _moved = std::rename(_path.c_str(), target.c_str()) == 0;
        return _moved;
    }

private:
    std::string _path;
    int _file = -1;
    bool _moved = false;
};

void writeDirectly(const std::string& path, std::string_view bytes) {
    Descriptor file(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
    if (file.Number() < 0 || !writeAll(file.Number(), bytes) || !file.Close()) {
        fail(path, errno);
    }
}

}  // namespace

void writeWhole(const std::string& path, std::string_view bytes) {
    const std::string target = followLinks(path);
    struct stat present = {};
    const bool replaces = ::stat(target.c_str(), &present) == 0;
    if (replaces && S_ISDIR(present.st_mode)) {
        fail(path, EISDIR);
    }
    if (replaces && !S_ISREG(present.st_mode)) {
        return writeDirectly(path, bytes);
    }
    // Renaming over a file asks nothing of the file itself; writing to it would.
    if (replaces && ::access(target.c_str(), W_OK) != 0) {
        fail(path, errno);
    }

    Temporary temporary(target);
    Descriptor file(temporary.File());
    const bool written = file.Number() >= 0 &&
                         (!replaces || ::fchmod(file.Number(), present.st_mode & 07777) == 0) &&
                         writeAll(file.Number(), bytes) && ::fsync(file.Number()) == 0 &&
                         file.Close() && temporary.MoveTo(target);
    if (!written) {
        fail(path, errno);
    }
}

}  // namespace kesview
