#pragma once

#include <KesVizCore/Export.h>

#include <cstdint>
#include <string>

namespace KesVizCore {

/// Conversions between numbers and texts, and questions about files.
///
/// @par Units and ranges
/// Path separators are '\' and '/' on Windows and '/' elsewhere. Paths are wide texts; where
/// file names are bytes they are taken as UTF-8, whatever the locale. A path that is empty, has a
/// zero character in it, or on such a platform has no UTF-8 form, names no file.
///
/// @par Errors
/// No operation throws (but for std::bad_alloc): a question about a file answers as it says, and
/// a format that the C library refuses gives an empty text.
///
/// @par Threads
/// Char2Wchar shares one text between all callers and WstringToString reads the process's
/// locale; all others may run on many threads at once.
class KESVIZCORE_API Utils {
public:
    /// @name Texts
    /// @{

    /// Converts by the current C locale into exactly as many bytes as @p text has characters.
    ///
    /// The answer always has @p text's length. From the first character that has no form in the
    /// locale, or no longer fits because others needed more than one byte, and after a zero
    /// character, all bytes are zero.
    static std::string WstringToString(const std::wstring& text);
    /// Each byte becomes the wide character of the same number, 0 to 255, whatever its encoding;
    /// zero characters too.
    static std::wstring StringToWstring(const std::string& text);
    /// As StringToWstring, up to the terminating zero; null counts as an empty text. The answer is
    /// never null; it is a text of the library's own, valid until the next call.
    static const wchar_t* Char2Wchar(const char* text);
    /// @}

    /// @name Numbers
    /// Independent of any locale.
    /// @{
    static std::string IntToString(int value);  ///< decimal
    /// "0xff" for 255. The value is widened to 64 bits with its sign: -1 is "0xffffffffffffffff".
    static std::string IntToHexString(int value);
    /// The address, as "0x7ffe12a0"; null is "0x0".
    static std::string PointerToHexString(void* pointer);
    static std::wstring IntToWstring(int value);                   ///< decimal
    static std::wstring uKesPtrIntToWstring(std::uint64_t value);  ///< decimal
    /// @p value by @p format, a zero-terminated printf format for one double, not null. The result
    /// may have any length.
    static std::wstring DoubleToWstring(double value, char* format);
    /// As printf, in the "C" locale whatever locale is set. A result of more than 1023 characters
    /// is cut there. @p format is not null, and the arguments are those that it asks for.
    static std::string SprintfL(const char* format, ...);
    /// The wide SprintfL. Ask for a wide text by %ls: a bare %s is one on Windows only.
    static std::wstring SWprintfL(const wchar_t* format, ...);
    /// @}

    /// @name Files
    /// The full path, of which some of these answer a part, is formed from the text alone:
    /// relative paths begin at the current folder, "." and ".." are resolved, separators in a row
    /// count as one and a trailing one is kept. One that has more than 255 characters cannot be
    /// formed.
    /// @{

    /// False only when the file is missing from a folder that exists. Whatever else stands against
    /// reading the file's attributes, such as a missing folder or denied access, answers true.
    static bool FileExists(const std::wstring& path);
    /// The folder: the full path up to its last separator, without it, so that it is empty for an
    /// entry of the root "/". Empty when the full path cannot be formed.
    static std::wstring GetAbsolutePath(const std::wstring& path);
    /// The full path after its last separator. Empty when the full path cannot be formed.
    static std::wstring GetFileNameOnly(const std::wstring& path);
    /// What stands after the last "." of @p path, wherever in it that is: "gz" for
    /// "archive.tar.gz", and empty without one.
    static std::wstring GetFileExtension(const std::wstring& path);
    /// The whole file, read as text, one wide character of 0 to 255 for each byte. Others may have
    /// the file open. Empty when it cannot be opened or read.
    static std::wstring GetFileContents(const std::wstring& path);
    /// The folder of the running program (not of this library), without a trailing separator. The
    /// program's own path is cut after 259 characters before its last piece is dropped.
    static std::wstring GetExePath();
    /// @}
};

}  // namespace KesVizCore
