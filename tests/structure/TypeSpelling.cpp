#include "structure/TypeSpelling.h"

#include <cstdlib>
#include <cxxabi.h>
#include <memory>
#include <regex>
#include <utility>
#include <vector>

namespace KesVizCore::Structure {

std::string inHouseSpelling(std::string text) {
    static const std::vector<std::pair<std::regex, const char*>> replacements = {
        {std::regex("\\b(class|struct|union|enum) "), ""},
        {std::regex("\\bKesVizCore::"), ""},
        {std::regex("\\bstd::__cxx11::"), "std::"},
        {std::regex("\\[abi:cxx11\\]"), ""},
        {std::regex("\\b_Bool\\b"), "bool"},
        {std::regex(", std::(char_traits|allocator)<[^<>]*>"), ""},
        {std::regex(" +([*&>])"), "$1"},
        {std::regex("\\bunsigned long( long)?\\b"), "std::uint64_t"},
        {std::regex("\\blong( long)?\\b"), "std::int64_t"},
        {std::regex("\\bunsigned char\\b"), "std::uint8_t"},
        {std::regex("\\bstd::basic_string<char>"), "std::string"},
        {std::regex("\\bstd::basic_string<wchar_t>"), "std::wstring"},
        {std::regex("([\\w:]+(?:<[^<>]*>)?) const([*&])"), "const $1$2"},
    };
    for (const auto& [pattern, replacement] : replacements) {
        text = std::regex_replace(text, pattern, replacement);
    }
    return text;
}

std::string demangled(const std::string& name) {
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> text(
        abi::__cxa_demangle(name.c_str(), nullptr, nullptr, &status), &std::free);
    return status == 0 ? text.get() : name;
}

}  // namespace KesVizCore::Structure
