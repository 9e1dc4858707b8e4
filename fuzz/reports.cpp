/// @file
/// kesview's reports: what was written comes back from its file, any other file is refused with a
/// reason or read, and two reports differ exactly where what counts in them does; where they are
/// the same but for one change, in exactly that.

#include "InMemoryFile.h"
#include "Input.h"
#include "ReportModel.h"
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
using Fuzz::OneChange;
using Fuzz::PlainElement;

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
    Check(difference == (forth.empty() ? L"" : pugi::as_wide(sentence(forth.front()))),
          "the first difference in words");
}

bool restore(XmlReport& report, const std::string& bytes) {
    const InMemoryFile file(bytes);
    const std::string path = file.Path();
    const bool restored = report.Restore(std::wstring(path.begin(), path.end()));
    Check(restored == report.Problem().empty(), "a file that is refused has a problem");
    return restored;
}

/// A restored report and what it writes are the same; so are the two files.
void checkRestored(const XmlReport& report, XmlReport& again) {
    Check(restore(again, report.ToUtf8()), "what was written is read");
    Check(report.GetName() == again.GetName(), "the name comes back");
    if (contentOf(report.Root())) {
        compare(report, again);
    }
}

/// As XML has it: no two hyphens in a row, none before the end.
void checkComment(const std::string& written) {
    Check(written.find("--") == std::string::npos && (written.empty() || written.back() != '-'),
          "hyphens of a comment");
}

std::vector<std::wstring> commentsOf(const pugi::xml_node& element) {
    std::vector<std::wstring> comments;
    for (const pugi::xml_node child : element.children()) {
        if (child.type() == pugi::node_comment) {
            checkComment(child.value());
            comments.push_back(fromXmlText(child.value()));
        }
        const std::vector<std::wstring> inner = commentsOf(child);
        comments.insert(comments.end(), inner.begin(), inner.end());
    }
    return comments;
}

// --- written ------------------------------------------------------------------------------------

/// Few names, so that elements are alike.
std::string anyName(Input& input) {
    static const char* const names[] = {"Node",  "Name", "ID", "x-", "a--b",
                                        "_x5F_", "1st",  "-",  ""};
    const unsigned choice = input.Below(10);
    if (choice < 9) {
        return names[choice];
    }
    std::string name;
    for (unsigned left = input.Below(6); left > 0; --left) {
        name += static_cast<char>(input.Byte());
    }
    return name;
}

std::wstring anyText(Input& input) {
    static const wchar_t* const pieces[] = {L"a", L"-", L"--", L" ", L"\\u{41}"};
    std::wstring text;
    do {
        const unsigned choice = input.Below(7);
        text += choice < 5 ? pieces[choice] : input.Text(8);
    } while (input.Below(3) == 2);
    return text;
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

/// Any calls; those that make no tree throw and change nothing. Answers the comments.
std::vector<std::wstring> write(Input& input, XmlReport& report) {
    std::vector<std::wstring> comments;
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
                    comments.push_back(anyText(input));
                    report.AddComment(comments.back());
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
    return comments;
}

void writeTwo(Input& input) {
    XmlReport first;
    XmlReport restored;
    XmlReport second;
    const std::vector<std::wstring> comments = write(input, first);
    write(input, second);
    checkRestored(first, restored);
    Check(commentsOf(first.Root()) == comments, "comments are written");
    Check(commentsOf(restored.Root()) == comments, "comments come back");
    compare(first, second);
}

// --- one change ---------------------------------------------------------------------------------

/// Comments, which mean nothing, stand anywhere.
void write(Input& input, XmlReport& report, const PlainElement& element) {
    for (const auto& [name, value] : element.attributes) {
        report.AddAttribute(name, std::wstring(value.begin(), value.end()));
    }
    if (input.Below(4) == 3) {
        report.AddComment(anyText(input));
    }
    report.AddText(std::wstring(element.text.begin(), element.text.end()));
    for (const PlainElement& child : element.children) {
        report.OpenElement(child.tag);
        write(input, report, child);
        report.CloseElement();
    }
}

void changeOne(Input& input) {
    const OneChange change(input);
    XmlReport before;
    XmlReport after;
    before.StartReport(change.Before().tag);
    write(input, before, change.Before());
    before.EndReport();
    after.StartReport(change.After().tag);
    write(input, after, change.After());
    after.EndReport();

    const std::vector<Difference> found = differences(before, after);
    Check(found.size() == change.Differences().size(), "as many differences as one change makes");
    for (std::size_t i = 0; i < found.size(); ++i) {
        const Difference& expected = change.Differences()[i];
        Check(found[i].kind == expected.kind, "what one change does");
        Check(found[i].path == expected.path, "where one change is");
        Check(found[i].before == expected.before && found[i].after == expected.after,
              "what one change shows");
        Check(sentence(found[i]) == change.Sentences()[i], "one change in words");
    }
    compare(before, after);
}

// --- read ---------------------------------------------------------------------------------------

void readAny(Input& input) {
    std::string bytes;
    while (!input.IsAtEnd()) {
        bytes += static_cast<char>(input.Byte());
    }
    const std::size_t half = bytes.size() / 2;
    XmlReport whole;
    XmlReport again;
    XmlReport changed;
    if (!restore(whole, bytes)) {
        return;
    }
    checkRestored(whole, again);
    bytes[half] = bytes[half] == 'a' ? 'b' : 'a';
    if (restore(changed, bytes)) {
        compare(whole, changed);
    }
}

/// As XML has it: letters, digits and few signs, not every one of them first.
void checkName(const std::string& written) {
    const auto isStart = [](char byte) {
        return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || byte == '_' ||
               (byte & 0x80) != 0;
    };
    const auto isFurther = [isStart](char byte) {
        return isStart(byte) || (byte >= '0' && byte <= '9') || byte == '-' || byte == '.';
    };
    Check(!written.empty() && isStart(written.front()), "the first letter of a name");
    Check(std::all_of(written.begin(), written.end(), isFurther), "the letters of a name");
}

/// What XML cannot hold comes back all the same, and of anything read something is made.
void checkTexts(Input& input) {
    const std::wstring text = anyText(input);
    Check(fromXmlText(toXmlText(text)) == text, "a text comes back");
    Check(fromXmlText(toXmlValue(text)) == text, "a value comes back");
    Check(fromXmlText(toXmlComment(text)) == text, "a comment comes back");
    checkComment(toXmlComment(text));
    const std::string name = anyName(input);
    Check(fromXmlName(toXmlName(name)) == name, "a name comes back");
    checkName(toXmlName(name));
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
        case 2:
            writeTwo(input);
            break;
        default:
            changeOne(input);
            break;
    }
    return 0;
}
