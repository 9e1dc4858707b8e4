#pragma once

/// @file
/// Open CASCADE's strings as UTF-8.

#include <TCollection_AsciiString.hxx>
#include <TCollection_ExtendedString.hxx>
#include <TCollection_HAsciiString.hxx>
#include <string>

namespace kesview {

inline std::string textOf(const TCollection_ExtendedString& text) {
    const TCollection_AsciiString utf8(text);  // with no replacement character it keeps all
    return std::string(utf8.ToCString(), static_cast<std::size_t>(utf8.Length()));
}

/// Empty for a null handle.
inline std::string textOf(const Handle(TCollection_HAsciiString) & text) {
    return text.IsNull() ? std::string() : std::string(text->ToCString());
}

}  // namespace kesview
