/// @file
#include "reports/XmlText.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cstdint>
#include <cwctype>
#include <optional>
#include <pugixml.hpp>

namespace kesview {

namespace {

std::string inHexadecimal(std::uint32_t number) {
    std::array<char, 8> digits = {};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number, 16).ptr;
    std::string text(digits.data(), end);
    std::transform(text.begin(), text.end(), text.begin(), [](char digit) {
        return static_cast<char>(std::toupper(static_cast<unsigned char>(digit)));
    });
    return text;
}

std::wstring numbered(wchar_t character) {
    return L"\\u{" + pugi::as_wide(inHexadecimal(static_cast<std::uint32_t>(character))) + L"}";
}

/// As XML 1.0 has it, and no carriage return: its readers make a line feed of it.
bool isAllowed(wchar_t character) {
    const auto code = static_cast<std::uint32_t>(character);
    if (code < 0x20) {
        return code == '\t' || code == '\n';
    }
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    return !surrogate && code != 0xFFFE && code != 0xFFFF && code <= 0x10FFFF;
}

bool isBlank(wchar_t character) {
    return character == L' ' || character == L'\t' || character == L'\n';
}

std::wstring withNumbers(const std::wstring& text) {
    std::wstring written;
    written.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool misleading = text.compare(i, 3, L"\\u{") == 0;
        if (misleading || !isAllowed(text[i])) {
            written += numbered(text[i]);
        } else {
            written += text[i];
        }
    }
    return written;
}

/// The number between @p start and the next @p end sign, in hexadecimal, and where it ends.
template <typename Text>
std::optional<std::uint32_t> numberAt(const Text& text, std::size_t start,
                                      typename Text::value_type endSign, std::size_t& end) {
    end = text.find(endSign, start);
    if (end == Text::npos || end == start || end > start + 8) {
        return std::nullopt;
    }
    const std::string digits(text.begin() + static_cast<std::ptrdiff_t>(start),
                             text.begin() + static_cast<std::ptrdiff_t>(end));
    std::uint32_t number = 0;
    const char* last = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), last, number, 16);
    return error == std::errc() && stop == last ? std::optional<std::uint32_t>(number)
                                                : std::nullopt;
}

bool isNameByte(unsigned char byte) {
    return std::isalnum(byte) != 0 || byte == '_' || byte == '-' || byte == '.' || byte >= 0x80;
}

bool isNameStart(unsigned char byte) {
    return isNameByte(byte) && std::isdigit(byte) == 0 && byte != '-' && byte != '.';
}

bool isUtf8(const std::string& text) {
    return pugi::as_utf8(pugi::as_wide(text)) == text;
}

}  // namespace

std::string toXmlValue(const std::wstring& text) {
    return pugi::as_utf8(withNumbers(text));
}

std::string toXmlText(const std::wstring& text) {
    std::wstring written = withNumbers(text);
    if (!written.empty() && std::all_of(written.begin(), written.end(), isBlank)) {
        written.replace(0, 1, numbered(written[0]));
    }
    return pugi::as_utf8(written);
}

std::string toXmlComment(const std::wstring& text) {
    std::wstring written;
    for (const wchar_t character : withNumbers(text)) {
        const bool second = !written.empty() && written.back() == L'-';
        written += character == L'-' && second ? numbered(character) : std::wstring(1, character);
    }
    if (!written.empty() && written.back() == L'-') {
        written.replace(written.size() - 1, 1, numbered(L'-'));
    }
    return pugi::as_utf8(written);
}

std::wstring fromXmlText(const std::string& written) {
    const std::wstring wide = pugi::as_wide(written);
    std::wstring text;
    for (std::size_t i = 0; i < wide.size(); ++i) {
        std::size_t end = 0;
        const std::optional<std::uint32_t> number =
            wide.compare(i, 3, L"\\u{") == 0 ? numberAt(wide, i + 3, L'}', end) : std::nullopt;
        text += number ? static_cast<wchar_t>(*number) : wide[i];
        i = number ? end : i;
    }
    return text;
}

std::string toXmlName(const std::string& name) {
    const bool wide = isUtf8(name);
    std::string written;
    for (std::size_t i = 0; i < name.size(); ++i) {
        const auto byte = static_cast<unsigned char>(name[i]);
        const bool allowed = (i == 0 ? isNameStart(byte) : isNameByte(byte)) &&
                             (byte < 0x80 || wide) && name.compare(i, 2, "_x") != 0;
        written += allowed ? std::string(1, name[i]) : "_x" + inHexadecimal(byte) + "_";
    }
    return written.empty() ? "_x_" : written;
}

std::string fromXmlName(const std::string& written) {
    if (written == "_x_") {
        return "";
    }
    std::string name;
    for (std::size_t i = 0; i < written.size(); ++i) {
        std::size_t end = 0;
        const std::optional<std::uint32_t> number =
            written.compare(i, 2, "_x") == 0 ? numberAt(written, i + 2, '_', end) : std::nullopt;
        name += number ? static_cast<char>(*number) : written[i];
        i = number ? end : i;
    }
    return name;
}

std::string toXmlNumber(double value) {
    std::array<char, 32> text = {};
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), value).ptr};
}

}  // namespace kesview
