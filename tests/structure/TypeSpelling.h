#pragma once

#include <string>

namespace KesVizCore::Structure {

/// A type or signature as the compilers print it, spelled as our headers spell it: without the
/// namespace KesVizCore, without class keys, default template arguments and inner blanks, with
/// std::uint64_t, std::wstring and their like, and with const in front.
std::string inHouseSpelling(std::string text);

/// The plain text of a mangled name; the name itself when it is none.
std::string demangled(const std::string& name);

}  // namespace KesVizCore::Structure
