/// @file
/// See StlAscii.h.

#include "reading/occ/StlAscii.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <optional>
#include <string_view>
#include <utility>

namespace kesview {

namespace {

bool isBlank(char c) {
    return std::isspace(static_cast<unsigned char>(c)) != 0;
}

bool isWord(std::string_view text, std::string_view lowerCase) {
    if (text.size() != lowerCase.size()) {
        return false;
    }
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (std::tolower(static_cast<unsigned char>(text[i])) != lowerCase[i]) {
            return false;
        }
    }
    return true;
}

std::optional<float> numberOf(std::string_view word) {
    if (!word.empty() && word.front() == '+') {
        word.remove_prefix(1);
    }
    double number = 0;
    const char* end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data(), end, number);
    if (error != std::errc() || stop != end) {
        return std::nullopt;
    }
    return static_cast<float>(number);
}

class Parser {
public:
    explicit Parser(const std::string& text) : _text(text) {}

    StlText Parse() {
        for (std::string_view word = nextWord(); !word.empty(); word = nextWord()) {
            take(word);
        }
        _result.isTruncated = _result.isTruncated || _isOpen;
        return std::move(_result);
    }

private:
    void take(std::string_view word) {
        if (isWord(word, "solid")) {
            _isOpen = true;
            _result.solids.push_back({restOfLine(), {}});
        } else if (isWord(word, "endsolid")) {
            _isOpen = false;
            restOfLine();
        } else if (isWord(word, "facet") && _isOpen) {
            readFacet();
        }
    }

    /// From behind "facet" to behind "endfacet".
    void readFacet() {
        StlTriangle triangle{};
        std::size_t corners = 0;
        bool isSound = true;
        std::string_view word = nextWord();
        for (; !word.empty() && !isWord(word, "endfacet"); word = nextWord()) {
            if (isWord(word, "endsolid")) {
                _isOpen = false;
                break;
            }
            if (!isWord(word, "vertex")) {
                continue;
            }
            const auto corner = readCorner();
            isSound = isSound && corner && corners < triangle.size();
            if (isSound) {
                triangle[corners] = *corner;
            }
            ++corners;
        }
        _result.isTruncated = _result.isTruncated || word.empty();
        if (isSound && corners == triangle.size()) {
            _result.solids.back().triangles.push_back(triangle);
        } else {
            ++_result.damagedFacets;
        }
    }

    std::optional<StlCorner> readCorner() {
        StlCorner corner{};
        for (float& length : corner) {
            const std::size_t before = _position;
            const auto number = numberOf(nextWord());
            if (!number) {
                _position = before;  // the word may be the next keyword
                return std::nullopt;
            }
            length = *number;
        }
        return corner;
    }

    std::string_view nextWord() {
        while (_position < _text.size() && isBlank(_text[_position])) {
            ++_position;
        }
        const std::size_t start = _position;
        while (_position < _text.size() && !isBlank(_text[_position])) {
            ++_position;
        }
        return std::string_view(_text).substr(start, _position - start);
    }

    std::string restOfLine() {
        const std::size_t end = std::min(_text.find('\n', _position), _text.size());
        std::size_t first = _position;
        std::size_t last = end;
        while (first < last && isBlank(_text[first])) {
            ++first;
        }
        while (last > first && isBlank(_text[last - 1])) {
            --last;
        }
        _position = end;
        return _text.substr(first, last - first);
    }

    const std::string& _text;
    std::size_t _position = 0;
    bool _isOpen = false;
    StlText _result;
};

}  // namespace

StlText parseStlText(const std::string& text) {
    return Parser(text).Parse();
}

}  // namespace kesview
