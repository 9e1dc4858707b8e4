#pragma once

#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

/// What the library asks of the operating system, with one source for each family of systems.
///
/// Paths are wide texts. Where file names are bytes, they are UTF-8 in every locale; a wide text
/// that has no UTF-8 form names no file there, and one with a zero character nowhere.
namespace KesVizCore::platform {

/// The characters that part the pieces of a path.
extern const wchar_t* const kPathSeparators;

/// The current value of a counter that never runs backwards.
std::int64_t counterNow();
/// By how much the counter grows in a second.
std::int64_t counterFrequency();

/// Shows the zero-terminated @p text in the debugger, unbuffered and in one call.
void writeToDebugger(const char* text);

/// True when @p path names nothing, but in a folder that exists.
bool isMissing(const std::wstring& path);

/// @p path from the root on, formed from the text and the current folder alone; empty when that
/// cannot be done or the result and a terminating zero exceed @p capacity characters.
std::wstring fullPath(const std::wstring& path, std::size_t capacity);

/// The path of the running program, cut so that it and a terminating zero fit @p capacity
/// characters.
std::wstring executablePath(std::size_t capacity);

/// Opens a file for reading as text, while others may have it open. The caller closes it; null
/// when it cannot be opened.
std::FILE* openForReading(const std::wstring& path);

/// True where it is known that no other thread runs.
bool hasOneThread();

/// Advises the system to back this memory, or what is aligned of it, with large pages.
void preferLargePages(void* memory, std::size_t bytes);

/// Formats as printf in the "C" locale, whatever locale the process or the thread has set, and
/// cuts the result after @p longest characters. Empty when the C library refuses.
std::string formatInCLocale(const char* format, std::va_list arguments, std::size_t longest);
std::wstring formatInCLocale(const wchar_t* format, std::va_list arguments, std::size_t longest);

}  // namespace KesVizCore::platform
