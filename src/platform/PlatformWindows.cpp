#include "platform/Platform.h"

#include <algorithm>
#include <locale.h>
#include <share.h>
#include <stdio.h>
#include <wchar.h>
#include <windows.h>

namespace KesVizCore::platform {

namespace {

/// True where a path names no file whatever the file system holds: the system would stop at the
/// zero character and look for another file.
bool namesNoFile(const std::wstring& path) {
    return path.empty() || path.find(L'\0') != std::wstring::npos;
}

std::wstring fullPathOfAnyLength(const std::wstring& path) {
    const DWORD capacity = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    std::wstring full(capacity, L'\0');
    full.resize(GetFullPathNameW(path.c_str(), capacity, full.data(), nullptr));
    return full;
}

/// The form of @p path in which the system opens it whatever its length.
std::wstring openablePath(const std::wstring& path) {
    const std::wstring full = fullPathOfAnyLength(path);
    const bool isDevice =
        full.compare(0, 4, L"\\\\?\\") == 0 || full.compare(0, 4, L"\\\\.\\") == 0;
    if (full.size() < MAX_PATH || isDevice) {
        return full;
    }
    const bool isOnServer = full.compare(0, 2, L"\\\\") == 0;
    return isOnServer ? L"\\\\?\\UNC\\" + full.substr(2) : L"\\\\?\\" + full;
}

_locale_t cLocale() {
    // Kept to the end of the process: static objects may still format while they are destroyed.
    static const _locale_t locale = _create_locale(LC_ALL, "C");
    return locale;
}

}  // namespace

const wchar_t* const kPathSeparators = L"/\\";

std::int64_t counterNow() {
    LARGE_INTEGER now{};
    QueryPerformanceCounter(&now);
    return now.QuadPart;
}

std::int64_t counterFrequency() {
    LARGE_INTEGER frequency{};
    QueryPerformanceFrequency(&frequency);
    return frequency.QuadPart;
}

void writeToDebugger(const char* text) {
    OutputDebugStringA(text);
}

bool isMissing(const std::wstring& path) {
    return !namesNoFile(path) && GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES &&
           GetLastError() == ERROR_FILE_NOT_FOUND;
}

std::wstring fullPath(const std::wstring& path, std::size_t capacity) {
    if (namesNoFile(path)) {
        return {};
    }
    const std::wstring full = fullPathOfAnyLength(path);
    return full.size() < capacity ? full : std::wstring();
}

std::wstring executablePath(std::size_t capacity) {
    std::wstring path(capacity, L'\0');
    const std::size_t length =
        GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(capacity));
    path.resize(std::min(length, capacity - 1));
    return path;
}

std::FILE* openForReading(const std::wstring& path) {
    return namesNoFile(path) ? nullptr : _wfsopen(openablePath(path).c_str(), L"r", _SH_DENYNO);
}

// The functions of this run-time library that measure do not cut, and those that cut do not
// measure and leave out the terminating zero where it does not fit; both answer -1.

std::string formatInCLocale(const char* format, std::va_list arguments, std::size_t longest) {
    std::va_list measured;
    va_copy(measured, arguments);
    const int length = _vscprintf_l(format, cLocale(), measured);
    va_end(measured);
    if (length < 0) {
        return {};
    }
    std::string text(std::min(static_cast<std::size_t>(length), longest), '\0');
    _vsnprintf_l(text.data(), text.size(), format, cLocale(), arguments);
    return text;
}

std::wstring formatInCLocale(const wchar_t* format, std::va_list arguments, std::size_t longest) {
    std::va_list measured;
    va_copy(measured, arguments);
    const int length = _vscwprintf_l(format, cLocale(), measured);
    va_end(measured);
    if (length < 0) {
        return {};
    }
    std::wstring text(std::min(static_cast<std::size_t>(length), longest), L'\0');
    _vsnwprintf_l(text.data(), text.size(), format, cLocale(), arguments);
    return text;
}

// Nobody tells here.
bool hasOneThread() {
    return false;
}

// Large pages need a privilege here that hosts do not have.
void preferLargePages(void* /*memory*/, std::size_t /*bytes*/) {}

}  // namespace KesVizCore::platform
