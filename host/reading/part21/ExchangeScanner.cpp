/// @file
/// See ExchangeScanner.h.

#include "reading/part21/ExchangeScanner.h"

#include <cctype>
#include <charconv>

namespace kesview {
namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\n' || c == '\r' || c == '\t';
}

bool isLetter(char c) {
    return std::isalpha(static_cast<unsigned char>(c)) != 0 || c == '_';
}

bool isNamePart(char c) {
    return isLetter(c) || (c >= '0' && c <= '9');
}

}  // namespace

ExchangeScanner::ExchangeScanner(std::string_view text) : _text(text) {}

bool ExchangeScanner::Next(ScannedInstance& found) {
    while (_at < _text.size()) {
        const char c = _text[_at];
        if (c == '\'') {
            SkipText();
        } else if (c == '/' && _text.substr(_at, 2) == "/*") {
            SkipComment();
        } else if (c == '#' && ReadHead(found)) {
            const Body body = ReadBody(found);
            if (body == Body::Whole) {
                return true;
            }
            ++_skipped;
            _truncated = body == Body::EndOfText;
        } else {
            ++_at;
        }
    }
    return false;
}

/// "#12 =": on success @c _at stands behind the equals sign, otherwise behind the hash.
bool ExchangeScanner::ReadHead(ScannedInstance& found) {
    const char* last = _text.data() + _text.size();
    const auto [end, error] = std::from_chars(_text.data() + _at + 1, last, found.number);
    ++_at;
    if (error != std::errc()) {
        return false;
    }
    std::size_t next = static_cast<std::size_t>(end - _text.data());
    while (next < _text.size() && isBlank(_text[next])) {
        ++next;
    }
    if (next >= _text.size() || _text[next] != '=') {
        return false;
    }
    _at = next + 1;
    found.begin = _at;
    found.types.clear();
    return true;
}

ExchangeScanner::Body ExchangeScanner::ReadBody(ScannedInstance& found) {
    int depth = 0;
    bool complex = false;
    while (_at < _text.size()) {
        const char c = _text[_at];
        if (c == '\'') {
            if (!SkipText()) {
                return _at < _text.size() ? Body::Damaged : Body::EndOfText;
            }
            continue;
        }
        if (c == '/' && _text.substr(_at, 2) == "/*") {
            SkipComment();
            continue;
        }
        if (c == ';') {
            found.end = _at++;
            return depth == 0 && !found.types.empty() ? Body::Whole : Body::Damaged;
        }
        if (c == '#' && StartsInstance(_at)) {
            return Body::Damaged;
        }
        if (isLetter(c)) {
            ReadType(found, depth, complex);
            continue;
        }
        if (c == '(') {
            complex = complex || (depth == 0 && found.types.empty());
            ++depth;
        } else if (c == ')') {
            --depth;
        }
        ++_at;
    }
    return Body::EndOfText;
}

void ExchangeScanner::ReadType(ScannedInstance& found, int depth, bool complex) {
    const std::size_t start = _at;
    while (_at < _text.size() && isNamePart(_text[_at])) {
        ++_at;
    }
    if (depth != (complex ? 1 : 0)) {
        return;
    }
    std::string type(_text.substr(start, _at - start));
    for (char& c : type) {
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    found.types.push_back(std::move(type));
}

/// False where the string does not end before the next instance starts, or not at all; then
/// @c _at stands there.
bool ExchangeScanner::SkipText() {
    const std::size_t start = _at;
    std::size_t end = start;
    do {
        end = _text.find('\'', end + 1);
        if (end == std::string_view::npos) {
            break;
        }
        ++end;
    } while (end < _text.size() && _text[end] == '\'');
    const std::size_t limit = end == std::string_view::npos ? _text.size() : end;
    _at = NextInstanceLine(start, limit);
    return end != std::string_view::npos && _at == limit;
}

void ExchangeScanner::SkipComment() {
    const std::size_t end = _text.find("*/", _at + 2);
    _at = end == std::string_view::npos ? _text.size() : end + 2;
}

bool ExchangeScanner::StartsInstance(std::size_t at) const {
    std::size_t next = at + 1;
    while (next < _text.size() && _text[next] >= '0' && _text[next] <= '9') {
        ++next;
    }
    while (next < _text.size() && isBlank(_text[next])) {
        ++next;
    }
    return next < _text.size() && next > at + 1 && _text[next] == '=';
}

/// The end of the first line in between that an instance follows; @p end where there is none.
std::size_t ExchangeScanner::NextInstanceLine(std::size_t begin, std::size_t end) const {
    const std::string_view searched = _text.substr(0, end);  // what follows may have no line break
    std::size_t line = searched.find('\n', begin);
    while (line != std::string_view::npos) {
        if (line + 1 < _text.size() && _text[line + 1] == '#' && StartsInstance(line + 1)) {
            return line;
        }
        line = searched.find('\n', line + 1);
    }
    return end;
}

}  // namespace kesview
