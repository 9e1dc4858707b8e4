#include "platform/Platform.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <filesystem>
#include <locale.h>
#include <memory>
#include <new>
#include <optional>
#if __has_include(<sys/single_threaded.h>)
#include <sys/single_threaded.h>
#endif
#include <sys/mman.h>
#include <sys/stat.h>
#include <system_error>
#include <time.h>
#include <unistd.h>

namespace KesVizCore::platform {

namespace {

constexpr std::int64_t kNanosecondsInASecond = 1'000'000'000;

bool hasUtf8Form(char32_t code) {
    const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    return code <= 0x10FFFF && !isSurrogate;
}

void appendUtf8(std::string& bytes, char32_t code) {
    const auto append = [&bytes](char32_t byte) { bytes.push_back(static_cast<char>(byte)); };
    if (code < 0x80) {
        append(code);
        return;
    }
    if (code < 0x800) {
        append(0xC0 | code >> 6);
    } else if (code < 0x10000) {
        append(0xE0 | code >> 12);
        append(0x80 | (code >> 6 & 0x3F));
    } else {
        append(0xF0 | code >> 18);
        append(0x80 | (code >> 12 & 0x3F));
        append(0x80 | (code >> 6 & 0x3F));
    }
    append(0x80 | (code & 0x3F));
}

/// The file name that @p path stands for; nothing when it can stand for none.
std::optional<std::string> fileName(const std::wstring& path) {
    std::string bytes;
    for (const wchar_t character : path) {
        const auto code = static_cast<char32_t>(character);
        if (code == 0 || !hasUtf8Form(code)) {
            return std::nullopt;
        }
        appendUtf8(bytes, code);
    }
    return bytes.empty() ? std::nullopt : std::optional(bytes);
}

/// The bits of its character that a byte of UTF-8 carries when it is the first.
std::uint32_t bitsOfFirstByte(std::uint32_t byte) {
    if (byte < 0x80) {
        return byte;
    }
    if (byte < 0xE0) {
        return byte & 0x1F;
    }
    return byte < 0xF0 ? byte & 0x0F : byte & 0x07;
}

/// The text of which @p name is the file name; empty when there is none.
std::wstring textOf(const std::string& name) {
    std::wstring text;
    for (const char character : name) {
        const std::uint32_t byte = static_cast<unsigned char>(character);
        const bool follows = byte >> 6 == 2 && !text.empty();
        if (follows) {
            const auto before = static_cast<char32_t>(text.back());
            text.back() = static_cast<wchar_t>(before << 6 | (byte & 0x3F));
        } else {
            text.push_back(static_cast<wchar_t>(bitsOfFirstByte(byte)));
        }
    }
    // The bits were gathered without a look at their order: only what was UTF-8 leads back.
    return fileName(text) == name ? text : std::wstring();
}

/// Appends the pieces of @p path to @p root as a walk from there would: ".." leaves the last piece.
void appendPieces(std::wstring& root, const std::wstring& path) {
    std::size_t begin = 0;
    while (begin < path.size()) {
        const std::size_t end = std::min(path.find(L'/', begin), path.size());
        const std::wstring piece = path.substr(begin, end - begin);
        begin = end + 1;
        if (piece == L"..") {
            root.resize(root.empty() ? 0 : root.rfind(L'/'));
        } else if (!piece.empty() && piece != L".") {
            root += L'/' + piece;
        }
    }
}

/// Puts the calling thread into the "C" locale for as long as it lives.
class ThreadInCLocale {
public:
    ThreadInCLocale() : _before(uselocale(cLocale())) {}
    ~ThreadInCLocale() { uselocale(_before); }
    ThreadInCLocale(const ThreadInCLocale&) = delete;
    ThreadInCLocale& operator=(const ThreadInCLocale&) = delete;

private:
    static locale_t cLocale() {
        static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
        return locale;
    }

    locale_t _before;
};

}  // namespace

const wchar_t* const kPathSeparators = L"/";

std::int64_t counterNow() {
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return std::int64_t{now.tv_sec} * kNanosecondsInASecond + now.tv_nsec;
}

std::int64_t counterFrequency() {
    return kNanosecondsInASecond;
}

void writeToDebugger(const char* text) {
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, text, std::strlen(text));
}

bool isMissing(const std::wstring& path) {
    const std::optional<std::string> name = fileName(path);
    struct stat status = {};
    if (!name || stat(name->c_str(), &status) == 0 || errno != ENOENT) {
        return false;
    }
    // The same error tells of a folder that is missing on the way.
    const std::size_t end = name->find_last_not_of('/') + 1;
    const std::size_t begin = name->find_last_of('/', end - 1) + 1;
    const std::string folder = begin == 0 ? "." : name->substr(0, begin);
    return stat(folder.c_str(), &status) == 0;
}

std::wstring fullPath(const std::wstring& path, std::size_t capacity) {
    if (!fileName(path)) {
        return {};
    }
    std::wstring full;
    if (path.front() != L'/') {
        std::error_code error;
        const std::wstring folder = textOf(std::filesystem::current_path(error).string());
        if (folder.empty()) {
            return {};
        }
        appendPieces(full, folder);
    }
    appendPieces(full, path);
    if (full.empty() || path.back() == L'/') {
        full += L'/';
    }
    return full.size() < capacity ? full : std::wstring();
}

std::wstring executablePath(std::size_t capacity) {
    std::error_code error;
    const auto path = std::filesystem::read_symlink("/proc/self/exe", error);
    return textOf(path.string()).substr(0, capacity - 1);
}

std::FILE* openForReading(const std::wstring& path) {
    const std::optional<std::string> name = fileName(path);
    return name ? std::fopen(name->c_str(), "re") : nullptr;
}

std::string formatInCLocale(const char* format, std::va_list arguments, std::size_t longest) {
    const ThreadInCLocale scope;
    std::va_list measured;
    va_copy(measured, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, measured);
    va_end(measured);
    if (length < 0) {
        return {};
    }
    std::string text(std::min(static_cast<std::size_t>(length), longest), '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, arguments);
    return text;
}

std::wstring formatInCLocale(const wchar_t* format, std::va_list arguments, std::size_t longest) {
    const ThreadInCLocale scope;
    // A stream in memory, as it tells a refused format from a text that is merely long, which
    // std::vswprintf does not.
    wchar_t* characters = nullptr;
    std::size_t length = 0;
    std::FILE* const stream = open_wmemstream(&characters, &length);
    if (stream == nullptr) {
        throw std::bad_alloc();
    }
    const int count = std::vfwprintf(stream, format, arguments);
    std::fclose(stream);
    const std::unique_ptr<wchar_t, void (*)(void*)> owner(characters, &std::free);
    return count < 0 ? std::wstring() : std::wstring(characters, std::min(length, longest));
}

bool hasOneThread() {
#if __has_include(<sys/single_threaded.h>)
    return __libc_single_threaded != 0;
#else
    return false;
#endif
}

void preferLargePages([[maybe_unused]] void* memory, [[maybe_unused]] std::size_t bytes) {
#ifdef MADV_HUGEPAGE
    constexpr std::size_t largePage = std::size_t{2} << 20;
    void* first = memory;
    std::size_t left = bytes;
    if (std::align(largePage, largePage, first, left) != nullptr) {
        // A mere wish: where it is refused, small pages do.
        static_cast<void>(madvise(first, left - left % largePage, MADV_HUGEPAGE));
    }
#endif
}

}  // namespace KesVizCore::platform
