/// @file
#include "reports/XmlReport.h"

#include "document/WriteFile.h"
#include "reports/Differences.h"
#include "reports/XmlText.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace kesview {

namespace {

/// Deeper trees are not indented: the blanks alone would grow with the square of the depth.
constexpr std::size_t deepestIndented = 100;

struct StringWriter : pugi::xml_writer {
    void write(const void* data, std::size_t size) override {
        text.append(static_cast<const char*>(data), size);
    }
    std::string text;
};

std::string inQuotes(const std::string& text) {
    return "'" + text + "'";
}

std::string contentOf(const std::string& path) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"),
                                                               std::fclose);
    std::string content;
    std::array<char, 64 * 1024> piece = {};
    std::size_t count = piece.size();
    while (file && count == piece.size()) {
        count = std::fread(piece.data(), 1, piece.size(), file.get());
        content.append(piece.data(), count);
    }
    if (!file || std::ferror(file.get()) != 0) {
        throw std::runtime_error(
            inQuotes(path) + " cannot be read: " + std::generic_category().message(errno) + ".");
    }
    return content;
}

std::size_t lineAt(const std::string& text, std::ptrdiff_t offset) {
    const auto end = text.begin() + std::clamp<std::ptrdiff_t>(
                                        offset, 0, static_cast<std::ptrdiff_t>(text.size()));
    return static_cast<std::size_t>(std::count(text.begin(), end, '\n')) + 1;
}

std::size_t depthOf(const pugi::xml_node& root) {
    struct : pugi::xml_tree_walker {
        bool for_each(pugi::xml_node&) override {
            deepest = std::max(deepest, depth());
            return true;
        }
        int deepest = 0;
    } walker;
    pugi::xml_node start = root;
    start.traverse(walker);
    return static_cast<std::size_t>(walker.deepest) + 1;
}

/// A path that ends at a zero character would name another file.
std::string toPath(const std::wstring& path) {
    if (path.empty() || path.find(L'\0') != std::wstring::npos) {
        throw std::runtime_error("A report needs the name of a file.");
    }
    return pugi::as_utf8(path);
}

}  // namespace

// --- content ------------------------------------------------------------------------------------

void XmlReport::assertOpen(const char* what) const {
    if (!_current) {
        throw std::runtime_error(std::string(what) + " needs a report that was started");
    }
}

void XmlReport::start(std::string name) {
    if (Root()) {
        throw std::runtime_error("The report was started already");
    }
    _current = _document.append_child(toXmlName(name).c_str());
    _depth = _deepest = 1;
}

void XmlReport::end() {
    assertOpen("The end");
    if (_depth > 1) {
        throw std::runtime_error("The report cannot end: element " +
                                 inQuotes(fromXmlName(_current.name())) + " is still open");
    }
    flushText();
    _current = {};
}

void XmlReport::openElement(std::string name) {
    assertOpen("An element");
    flushText();
    _current = _current.append_child(toXmlName(name).c_str());
    _deepest = std::max(_deepest, ++_depth);
}

void XmlReport::closeElement() {
    assertOpen("The end of an element");
    if (_depth == 1) {
        throw std::runtime_error("No element of the report is open");
    }
    flushText();
    _current = _current.parent();
    --_depth;
}

void XmlReport::setAttribute(const std::string& name, const std::string& value) {
    assertOpen("An attribute");
    const std::string written = toXmlName(name);
    if (_current.attribute(written.c_str())) {
        throw std::runtime_error("Element " + inQuotes(fromXmlName(_current.name())) +
                                 " has an attribute " + inQuotes(name) + " already");
    }
    _current.append_attribute(written.c_str()).set_value(value.c_str());
}

void XmlReport::addAttribute(std::string name, bool value) {
    setAttribute(name, value ? "true" : "false");
}

void XmlReport::addAttribute(std::string name, std::uint64_t value) {
    setAttribute(name, std::to_string(value));
}

void XmlReport::addAttribute(std::string name, std::wstring value) {
    setAttribute(name, toXmlValue(value));
}

void XmlReport::addAttribute(std::string name, double value) {
    setAttribute(name, toXmlNumber(value));
}

void XmlReport::addComment(std::wstring comment) {
    assertOpen("A comment");
    flushText();
    _current.append_child(pugi::node_comment).set_value(toXmlComment(comment).c_str());
}

void XmlReport::addText(std::wstring text) {
    assertOpen("A text");
    _text += text;
}

void XmlReport::flushText() {
    if (!_text.empty()) {
        _current.append_child(pugi::node_pcdata).set_value(toXmlText(_text).c_str());
        _text.clear();
    }
}

// --- as a text and as a file --------------------------------------------------------------------

std::string XmlReport::ToUtf8() const {
    StringWriter writer;
    const char* indent = _deepest > deepestIndented ? "" : "  ";
    _document.save(writer, indent, pugi::format_default, pugi::encoding_utf8);
    return std::move(writer.text);
}

std::wstring XmlReport::toText() const {
    return pugi::as_wide(ToUtf8());
}

bool XmlReport::saveTo(std::wstring path) const {
    _problem.clear();
    try {
        writeWhole(toPath(path), ToUtf8());
    } catch (const std::runtime_error& error) {
        _problem = error.what();
    }
    return _problem.empty();
}

bool XmlReport::restore(std::wstring path) {
    constexpr unsigned options = pugi::parse_default | pugi::parse_comments;
    _problem.clear();
    _text.clear();
    _current = {};
    _depth = 0;
    _document.reset();
    try {
        const std::string name = toPath(path);
        const std::string content = contentOf(name);
        const pugi::xml_parse_result result =
            _document.load_buffer(content.data(), content.size(), options);
        if (!result) {
            _problem = inQuotes(name) + " is no report: " + result.description() + ", in line " +
                       std::to_string(lineAt(content, result.offset)) + ".";
        }
    } catch (const std::runtime_error& error) {
        _problem = error.what();
    }
    if (!_problem.empty()) {
        _document.reset();
        _name.clear();
        return false;
    }
    _name = fromXmlName(Root().name());
    _deepest = depthOf(Root());
    return true;
}

// --- compared -----------------------------------------------------------------------------------

bool XmlReport::compare(const viz::AReport& other, std::wstring& difference,
                        std::string& detail) const {
    difference.clear();
    detail.clear();
    const XmlReport* report = dynamic_cast<const XmlReport*>(&other);
    if (report == nullptr || !report->IsDefined()) {
        difference = report == nullptr ? L"The other report is not XML."
                                       : L"The other report is not complete.";
        return false;
    }
    const std::vector<Difference> found = differences(*this, *report);
    if (found.empty()) {
        return true;
    }
    difference = pugi::as_wide(sentence(found.front()));
    detail = found.front().path;
    return false;
}

}  // namespace kesview
