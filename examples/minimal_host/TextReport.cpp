#include "TextReport.h"

#include <KesVizCore/report/Utils.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace host {

namespace {

const std::string kFirstWord = "Report ";

std::string inQuotes(const std::wstring& text) {
    std::string out = "\"";
    for (const wchar_t character : text) {
        if (character == L'"' || character == L'\\') {
            out += '\\';
        }
        if (character >= L' ' && character <= L'~') {
            out += static_cast<char>(character);
        } else {
            out += viz::Utils::SprintfL("\\x%x;", static_cast<unsigned>(character));
        }
    }
    return out + "\"";
}

}  // namespace

// --- writing ------------------------------------------------------------------------------------

void TextReport::addLine(const std::string& text) {
    _lines.push_back(std::string(2 * _open.size(), ' ') + text);
}

void TextReport::addToOpenElement(const std::string& name, const std::string& value) {
    if (_open.empty()) {
        throw std::logic_error("An attribute needs a report that was started");
    }
    _lines[_open.back()] += " " + name + "=" + value;
}

void TextReport::start(std::string name) {
    openElement(kFirstWord + name);
}

void TextReport::end() {
    if (_open.size() > 1) {
        throw std::logic_error("An element of the report is still open");
    }
    _open.clear();
}

void TextReport::openElement(std::string name) {
    addLine(name);
    _open.push_back(_lines.size() - 1);
}

void TextReport::closeElement() {
    if (_open.size() < 2) {
        throw std::logic_error("No element of the report is open");
    }
    _open.pop_back();
}

void TextReport::addAttribute(std::string name, bool value) {
    addToOpenElement(name, value ? "true" : "false");
}

void TextReport::addAttribute(std::string name, std::uint64_t value) {
    addToOpenElement(name, std::to_string(value));
}

void TextReport::addAttribute(std::string name, std::wstring value) {
    addToOpenElement(name, inQuotes(value));
}

void TextReport::addAttribute(std::string name, double value) {
    addToOpenElement(name, viz::Utils::SprintfL("%g", value));
}

void TextReport::addComment(std::wstring comment) {
    addLine("comment " + inQuotes(comment));
}

void TextReport::addText(std::wstring text) {
    addLine("text " + inQuotes(text));
}

// --- reading ------------------------------------------------------------------------------------

std::string TextReport::joined() const {
    std::string text;
    for (const std::string& line : _lines) {
        text += line + "\n";
    }
    return text;
}

std::wstring TextReport::toText() const {
    return viz::Utils::StringToWstring(joined());
}

bool TextReport::saveTo(std::wstring path) const {
    std::ofstream file(std::filesystem::path(path), std::ios::binary);
    file << joined();
    file.close();
    return !file.fail();
}

bool TextReport::restore(std::wstring path) {
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
        lines.push_back(line);
    }
    if (lines.empty() || lines.front().compare(0, kFirstWord.size(), kFirstWord) != 0) {
        return false;
    }
    _name = lines.front().substr(kFirstWord.size());
    _lines = std::move(lines);
    return true;
}

bool TextReport::compare(const AReport& other, std::wstring& difference,
                         std::string& detail) const {
    const auto* const text = dynamic_cast<const TextReport*>(&other);
    if (text == nullptr) {
        difference = L"a report of another kind";
        return false;
    }
    const auto [mine, theirs] =
        std::mismatch(_lines.begin(), _lines.end(), text->_lines.begin(), text->_lines.end());
    if (mine == _lines.end() && theirs == text->_lines.end()) {
        return true;
    }
    const auto shown = [](auto line, auto end) {
        return line != end ? line->substr(line->find_first_not_of(' ')) : "the end";
    };
    difference = viz::Utils::StringToWstring(shown(mine, _lines.end()) + " <> " +
                                             shown(theirs, text->_lines.end()));
    detail = "line " + std::to_string(mine - _lines.begin() + 1);
    return false;
}

}  // namespace host
