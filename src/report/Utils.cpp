#include "platform/Platform.h"

#include <KesVizCore/report/Utils.h>

#include <cstdarg>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>

namespace KesVizCore {

namespace {

// What fits the buffers of this interface beside a terminating zero, or with it.
constexpr std::size_t kLongestFormatted = 1023;
constexpr std::size_t kFullPathCapacity = 256;
constexpr std::size_t kExecutablePathCapacity = 260;

std::string formatted(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::string text =
        platform::formatInCLocale(format, arguments, std::numeric_limits<std::size_t>::max());
    va_end(arguments);
    return text;
}

std::string hexString(std::uint64_t value) {
    return formatted("0x%llx", static_cast<unsigned long long>(value));
}

std::wstring upToLastSeparator(const std::wstring& path) {
    return path.substr(0, path.find_last_of(platform::kPathSeparators));
}

}  // namespace

std::string Utils::WstringToString(const std::wstring& text) {
    std::string bytes(text.size(), '\0');
    // What could not be converted shows as the zeros that are there already.
    static_cast<void>(std::wcstombs(bytes.data(), text.c_str(), bytes.size()));
    return bytes;
}

std::wstring Utils::StringToWstring(const std::string& text) {
    const auto* const bytes = reinterpret_cast<const unsigned char*>(text.data());
    return std::wstring(bytes, bytes + text.size());
}

const wchar_t* Utils::Char2Wchar(const char* text) {
    static std::wstring shared;
    shared = StringToWstring(text == nullptr ? "" : text);
    return shared.c_str();
}

std::string Utils::IntToString(int value) {
    return std::to_string(value);
}

std::string Utils::IntToHexString(int value) {
    return hexString(static_cast<std::uint64_t>(std::int64_t{value}));
}

std::string Utils::PointerToHexString(void* pointer) {
    return hexString(reinterpret_cast<std::uintptr_t>(pointer));
}

std::wstring Utils::IntToWstring(int value) {
    return std::to_wstring(value);
}

std::wstring Utils::uKesPtrIntToWstring(std::uint64_t value) {
    return std::to_wstring(value);
}

std::wstring Utils::DoubleToWstring(double value, char* format) {
    return StringToWstring(formatted(format, value));
}

std::string Utils::SprintfL(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::string text = platform::formatInCLocale(format, arguments, kLongestFormatted);
    va_end(arguments);
    return text;
}

std::wstring Utils::SWprintfL(const wchar_t* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::wstring text = platform::formatInCLocale(format, arguments, kLongestFormatted);
    va_end(arguments);
    return text;
}

bool Utils::FileExists(const std::wstring& path) {
    return !platform::isMissing(path);
}

std::wstring Utils::GetAbsolutePath(const std::wstring& path) {
    return upToLastSeparator(platform::fullPath(path, kFullPathCapacity));
}

std::wstring Utils::GetFileNameOnly(const std::wstring& path) {
    const std::wstring full = platform::fullPath(path, kFullPathCapacity);
    // Without a separator the search answers npos, and the whole path follows that.
    return full.substr(full.find_last_of(platform::kPathSeparators) + 1);
}

std::wstring Utils::GetFileExtension(const std::wstring& path) {
    const std::size_t dot = path.rfind(L'.');
    return dot == std::wstring::npos ? std::wstring() : path.substr(dot + 1);
}

std::wstring Utils::GetFileContents(const std::wstring& path) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(platform::openForReading(path),
                                                               &std::fclose);
    if (!file) {
        return {};
    }
    std::wstring text;
    unsigned char bytes[4096];
    std::size_t count = 0;
    while ((count = std::fread(bytes, 1, sizeof bytes, file.get())) > 0) {
        text.append(bytes, bytes + count);
    }
    return text;
}

std::wstring Utils::GetExePath() {
    return upToLastSeparator(platform::executablePath(kExecutablePathCapacity));
}

}  // namespace KesVizCore
