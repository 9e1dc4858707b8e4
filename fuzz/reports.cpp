/// @file
/// kesview's reports: what was written comes back from its file, any other file is refused with a
/// reason or read, and two reports differ exactly where what counts in them does.

#include "InMemoryFile.h"
#include "Input.h"
#include "reports/Differences.h"
#include "reports/XmlReport.h"
#include "reports/XmlText.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <pugixml.hpp>
#include <set>
#include <string>
#include <utility>
#include <vector>

using namespace kesview;
using Fuzz::Check;
using Fuzz::InMemoryFile;
using Fuzz::Input;

namespace {

/// What counts in an element: attributes in any order, elements and texts in theirs. Nothing where
/// one name stands twice, which no report holds.
std::optional<std::string> contentOf(const pugi::xml_node& element) {
    std::vector<std::pair<std::string, std::string>> attributes;
    std::set<std::string> names;
    for (const pugi::xml_attribute attribute : element.attributes()) {
        attributes.emplace_back(attribute.name(), attribute.value());
        if (!names.insert(attribute.name()).second) {
            return std::nullopt;
        }
    }
    std::sort(attributes.begin(), attributes.end());
    std::string text = std::string("<") + element.name();
    for (const auto& [name, value] : attributes) {
        text += '\0' + name + '\0' + value;
    }
    for (const pugi::xml_node child : element.children()) {
        if (child.type() == pugi::node_element) {
            const std::optional<std::string> content = contentOf(child);
            if (!content) {
                return std::nullopt;
            }
            text += *content;
        } else if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
            text += std::string("\0t", 2) + child.value();
        }
    }
    return text + std::string("\0>", 2);
}

// --- two reports --------------------------------------------------------------------------------

void compare(const XmlReport& a, const XmlReport& b) {
    const std::vector<Difference> forth = differences(a, b);
    const std::vector<Difference> back = differences(b, a);
    const std::optional<std::string> contentA = contentOf(a.Root());
    const std::optional<std::string> contentB = contentOf(b.Root());
    if (contentA && contentB) {
        Check(forth.empty() == (contentA == contentB), "there is a difference");
        Check(back.empty() == forth.empty(), "there is one in either direction");
    }
    for (const Difference& one : forth) {
        Check(!one.path.empty() && one.path.front() == '/', "a difference has a path");
        Check((one.kind == Difference::Kind::Added) <= one.before.empty() &&
                  (one.kind == Difference::Kind::Removed) <= one.after.empty(),
              "what was not there has no text");
        Check(!sentence(one).empty(), "a difference is a sentence");
    }
    std::wstring difference;
    std::string detail = "before";
    Check(a.Compare(b, difference, detail) == forth.empty(), "Compare");
    Check(detail == (forth.empty() ? "" : forth.front().path), "the first difference");
}

bool restore(XmlReport& report, const std::string& bytes) {
    const InMemoryFile file(bytes);
    const std::string path = file.Path();
    const bool restored = report.Restore(std::wstring(path.begin(), path.end()));
    Check(restored == report.Problem().empty(), "a file that is refused has a problem");
    return restored;
}

/// A restored report and what it writes are the same; so are the two files.
void checkRestored(const XmlReport& report) {
    const std::string written = report.ToUtf8();
    XmlReport again;
    Check(restore(again, written), "what was written is read");
    Check(report.GetName() == again.GetName(), "the name comes back");
    if (contentOf(report.Root())) {
        compare(report, again);
    }
}

// --- written ------------------------------------------------------------------------------------

/// Few names, so that elements are alike.
std::string anyName(Input& input) {
    static const char* const names[] = {"Node", "Name", "ID", "x", "_x5F_", "1st", ""};
    const unsigned choice = input.Below(8);
    if (choice < 7) {
        return names[choice];
    }
    std::string name;
    for (unsigned left = input.Below(6); left > 0; --left) {
        name += static_cast<char>(input.Byte());
    }
    return name;
}

std::wstring anyText(Input& input) {
    static const wchar_t* const texts[] = {L"a", L"b", L" ", L"\\u{41}"};
    const unsigned choice = input.Below(6);
    return choice < 4 ? texts[choice] : input.Text(8);
}

void addAttribute(Input& input, XmlReport& report) {
    const std::string name = anyName(input);
    switch (input.Below(4)) {
        case 0:
            return report.AddAttribute(name, input.Flag());
        case 1:
            return report.AddAttribute(name, input.Any<std::uint64_t>());
        case 2:
            return report.AddAttribute(name, input.Any<double>());
        default:
            return report.AddAttribute(name, anyText(input));
    }
}

/// Any calls; those that make no tree throw and change nothing.
void write(Input& input, XmlReport& report) {
    const std::string name = anyName(input);
    report.StartReport(name);
    unsigned depth = 1;
    for (unsigned left = input.Byte(); left > 0 && !input.IsAtEnd(); --left) {
        try {
            switch (input.Below(6)) {
                case 0:
                    report.OpenElement(anyName(input));
                    ++depth;
                    break;
                case 1:
                    report.CloseElement();
                    Check(depth > 1, "the report's own element is closed by its end alone");
                    --depth;
                    break;
                case 2:
                    report.AddText(anyText(input));
                    break;
                case 3:
                    report.AddComment(anyText(input));
                    break;
                default:
                    addAttribute(input, report);
                    break;
            }
        } catch (const std::runtime_error&) {
        }
    }
    for (; depth > 1; --depth) {
        report.CloseElement();
    }
    report.EndReport();
    Check(report.GetName() == name, "the name of a report");
}

void writeTwo(Input& input) {
    XmlReport first;
    XmlReport second;
    write(input, first);
    write(input, second);
    checkRestored(first);
    compare(first, second);
}

// --- read ---------------------------------------------------------------------------------------

void readAny(Input& input) {
    std::string bytes;
    while (!input.IsAtEnd()) {
        bytes += static_cast<char>(input.Byte());
    }
    const std::size_t half = bytes.size() / 2;
    XmlReport whole;
    XmlReport changed;
    if (!restore(whole, bytes)) {
        return;
    }
    checkRestored(whole);
    bytes[half] = bytes[half] == 'a' ? 'b' : 'a';
    if (restore(changed, bytes)) {
        compare(whole, changed);
    }
}

/// What XML cannot hold comes back all the same, and of anything read something is made.
void checkTexts(Input& input) {
    const std::wstring text = anyText(input);
    Check(fromXmlText(toXmlText(text)) == text, "a text comes back");
    Check(fromXmlText(toXmlValue(text)) == text, "a value comes back");
    Check(fromXmlText(toXmlComment(text)) == text, "a comment comes back");
    const std::string name = anyName(input);
    Check(fromXmlName(toXmlName(name)) == name, "a name comes back");
    const std::string read = fromXmlName(name);
    Check(fromXmlName(toXmlName(read)) == read, "a name that was read comes back");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    switch (input.Below(4)) {
        case 0:
            readAny(input);
            break;
        case 1:
            checkTexts(input);
            break;
        default:
            writeTwo(input);
            break;
    }
    return 0;
}
