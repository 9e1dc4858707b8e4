/// @file
/// See ExchangeParser.h.

#include "reading/part21/ExchangeParser.h"

#include "reading/part21/ExchangeText.h"

#include <cctype>
#include <charconv>
#include <cmath>

namespace kesview {
namespace {

constexpr int deepestNesting = 64;

bool isNameStart(char c) {
    return std::isalpha(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '!';
}

bool isNamePart(char c) {
    return isNameStart(c) || (c >= '0' && c <= '9') || c == '-';
}

class Parser {
public:
    explicit Parser(std::string_view text) : _text(text) {}

    std::vector<ExchangeInstance::Part> Parts() {
        std::vector<ExchangeInstance::Part> parts;
        SkipBlanks();
        if (Peek() == '(') {
            ++_at;
        }
        for (SkipBlanks(); isNameStart(Peek()); SkipBlanks()) {
            ExchangeInstance::Part part;
            part.type = Name();
            SkipBlanks();
            if (Peek() == '(') {
                part.parameters = List(0);
            }
            part.parameters.kind = ExchangeValue::Kind::List;
            parts.push_back(std::move(part));
        }
        return parts;
    }

private:
    char Peek() const { return _at < _text.size() ? _text[_at] : '\0'; }

    void SkipBlanks() {
        while (_at < _text.size()) {
            if (std::isspace(static_cast<unsigned char>(_text[_at])) != 0) {
                ++_at;
            } else if (_text.substr(_at, 2) == "/*") {
                const std::size_t end = _text.find("*/", _at + 2);
                _at = end == std::string_view::npos ? _text.size() : end + 2;
            } else {
                return;
            }
        }
    }

    std::string Name() {
        std::string name;
        for (; isNamePart(Peek()); ++_at) {
            name += static_cast<char>(std::toupper(static_cast<unsigned char>(Peek())));
        }
        return name;
    }

    ExchangeValue List(int depth) {
        ExchangeValue list;
        list.kind = ExchangeValue::Kind::List;
        ++_at;
        SkipBlanks();
        while (_at < _text.size() && Peek() != ')') {
            list.items.push_back(Value(depth + 1));
            SkipToNextItem();
        }
        ++_at;
        return list;
    }

    /// Past the comma; what should not stand before it is left out.
    void SkipToNextItem() {
        SkipBlanks();
        while (_at < _text.size() && Peek() != ',' && Peek() != ')') {
            ++_at;
        }
        if (Peek() == ',') {
            ++_at;
            SkipBlanks();
        }
    }

    ExchangeValue Value(int depth) {
        const char c = Peek();
        if (c == '(') {
            return depth < deepestNesting ? List(depth) : TooDeep();
        }
        if (c == '\'') {
            return Text();
        }
        if (c == '#') {
            return Reference();
        }
        if (c == '.' && _at + 1 < _text.size() && isNameStart(_text[_at + 1])) {
            return Enumeration();
        }
        if (isNameStart(c)) {
            return Typed(depth);
        }
        if (c == '"') {
            return Binary();
        }
        if (c == '*') {
            ExchangeValue derived;
            derived.kind = ExchangeValue::Kind::Derived;
            ++_at;
            return derived;
        }
        return Number();
    }

    ExchangeValue TooDeep() {
        _at = _text.size();
        return {};
    }

    ExchangeValue Text() {
        const std::size_t start = ++_at;
        while (_at < _text.size()) {
            if (_text[_at] == '\'') {
                if (_at + 1 >= _text.size() || _text[_at + 1] != '\'') {
                    break;
                }
                ++_at;
            }
            ++_at;
        }
        ExchangeValue value;
        value.kind = ExchangeValue::Kind::Text;
        value.text = decodeExchangeText(_text.substr(start, _at - start));
        ++_at;
        return value;
    }

    ExchangeValue Binary() {
        const std::size_t start = ++_at;
        const std::size_t end = _text.find('"', start);
        ExchangeValue value;
        value.kind = ExchangeValue::Kind::Text;
        value.text = std::string(_text.substr(start, end - start));
        _at = end == std::string_view::npos ? _text.size() : end + 1;
        return value;
    }

    ExchangeValue Reference() {
        ++_at;
        ExchangeValue value;
        const auto [end, error] =
            std::from_chars(_text.data() + _at, _text.data() + _text.size(), value.reference);
        if (error == std::errc()) {
            value.kind = ExchangeValue::Kind::Reference;
            _at = static_cast<std::size_t>(end - _text.data());
        }
        return value;
    }

    ExchangeValue Enumeration() {
        ++_at;
        ExchangeValue value;
        value.kind = ExchangeValue::Kind::Enumeration;
        value.text = Name();
        if (Peek() == '.') {
            ++_at;
        }
        return value;
    }

    ExchangeValue Typed(int depth) {
        ExchangeValue value;
        value.kind = ExchangeValue::Kind::Typed;
        value.text = Name();
        SkipBlanks();
        if (Peek() == '(' && depth < deepestNesting) {
            value.items = List(depth).items;
        }
        return value;
    }

    ExchangeValue Number() {
        if (Peek() == '+') {
            ++_at;
        }
        ExchangeValue value;
        const auto [end, error] =
            std::from_chars(_text.data() + _at, _text.data() + _text.size(), value.number);
        if (error == std::errc() && std::isfinite(value.number)) {
            value.kind = ExchangeValue::Kind::Number;
            _at = static_cast<std::size_t>(end - _text.data());
        } else {
            value.number = 0;
        }
        return value;
    }

    std::string_view _text;
    std::size_t _at = 0;
};

}  // namespace

std::vector<ExchangeInstance::Part> parseInstance(std::string_view text) {
    return Parser(text).Parts();
}

}  // namespace kesview
