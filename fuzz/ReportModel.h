/// @file
/// Reports as plain structs, one change to a report, and the differences that follow from it.
#pragma once

#include "Input.h"
#include "reports/Differences.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace Fuzz {

/// An element of a report. Its neighbours have another tag, Name or ID.
struct PlainElement {
    std::string tag;
    std::vector<std::pair<std::string, std::string>> attributes;
    std::string text;  ///< before the elements in it; none where empty
    std::vector<PlainElement> children;

    const std::string* Find(const std::string& attribute) const {
        for (const auto& [name, value] : attributes) {
            if (name == attribute) {
                return &value;
            }
        }
        return nullptr;
    }
};

/// How the path of a difference names an element among its neighbours.
inline std::string KeyOf(const PlainElement& element) {
    for (const char* name : {"Name", "ID"}) {
        if (const std::string* const value = element.Find(name)) {
            const char* const quote = value->find('\'') == std::string::npos ? "'" : "\"";
            return element.tag + "[@" + name + "=" + quote + *value + quote + "]";
        }
    }
    return element.tag;
}

/// How a difference shows an element.
inline std::string StartTagOf(const PlainElement& element) {
    std::string tag = "<" + element.tag;
    for (const auto& [name, value] : element.attributes) {
        tag.append(" ").append(name).append("=\"").append(value).append("\"");
    }
    return tag.size() > 200 ? tag.substr(0, 200) + "…" : tag + ">";
}

/// Makes elements. Each has a number of its own in its tag, its Name, its ID or both of these.
class ElementMaker {
public:
    explicit ElementMaker(Input& input) : _input(input) {}

    PlainElement Next(unsigned depth = 0) {
        static const char* const tags[] = {"Node", "x-", "a--b"};
        PlainElement element;
        const std::string number = NextNumber();
        const unsigned identity = _input.Below(4);
        element.tag = identity == 0 ? "t" + number : tags[_input.Below(3)];
        if ((identity & 1) != 0) {
            element.attributes.emplace_back("Name", Word() + number);
        }
        if ((identity & 2) != 0) {
            element.attributes.emplace_back("ID", number);
        }
        for (const char* const name : {"a", "b-", "c--d"}) {
            if (_input.Flag()) {
                element.attributes.emplace_back(name, Word());
            }
        }
        element.text = _input.Flag() ? "t" + Word() : "";
        for (unsigned left = depth < 4 ? _input.Below(5) : 0; left > 0 && _count < 40; --left) {
            element.children.push_back(Next(depth + 1));
        }
        return element;
    }

    /// Short or long, at times empty, of what has a meaning in XML or in a path, without digits.
    std::string Word() {
        static const char letters[] = "ab-'\"<>&/@[]=.";
        const unsigned length = _input.Below(8);
        std::string word(length == 7 ? 90 : 0, '-');
        for (unsigned left = length % 7; left > 0; --left) {
            word += letters[_input.Below(sizeof letters - 1)];
        }
        return word;
    }

    std::string NextNumber() { return std::to_string(++_count); }

private:
    Input& _input;
    unsigned _count = 0;
};

/// A report, the same with one change, and what differs: nothing where the change found no place.
/// The order of attributes, which means nothing, may have changed everywhere.
class OneChange {
public:
    explicit OneChange(Input& input) : _input(input), _maker(input) {
        _before = _after = _maker.Next();
        if (input.Flag()) {
            ReverseAttributes(_after);
        }
        Walk();
    }

    const PlainElement& Before() const { return _before; }
    const PlainElement& After() const { return _after; }
    const std::vector<kesview::Difference>& Differences() const { return _differences; }
    /// What each difference is, in words.
    const std::vector<std::string>& Sentences() const { return _sentences; }

private:
    using Kind = kesview::Difference::Kind;

    static void ReverseAttributes(PlainElement& element) {
        std::reverse(element.attributes.begin(), element.attributes.end());
        for (PlainElement& child : element.children) {
            ReverseAttributes(child);
        }
    }

    /// Down to any element, and changes it there.
    void Walk() {
        const PlainElement* old = &_before;
        PlainElement* now = &_after;
        std::string parent;
        std::string path = "/" + old->tag;
        while (!old->children.empty() && _input.Below(4) != 0) {
            const unsigned place = _input.Byte() % old->children.size();
            old = &old->children[place];
            now = &now->children[place];
            parent = path;
            path = parent + "/" + KeyOf(*old);
        }
        switch (_input.Below(4)) {
            case 0:
                return ChangeTag(*old, *now, parent);
            case 1:
                return ChangeAttribute(*old, *now, parent);
            case 2:
                return ChangeText(*now, path);
            default:
                return ChangeChildren(*old, *now, path);
        }
    }

    void Expect(const char* subject, Kind kind, const std::string& path, const std::string& before,
                const std::string& after) {
        std::string sentence = std::string(subject) + " " + path;
        switch (kind) {
            case Kind::Added:
                sentence += " was added: '" + after + "'.";
                break;
            case Kind::Removed:
                sentence += " was removed: '" + before + "'.";
                break;
            case Kind::Changed:
                sentence += " changed from '" + before + "' to '" + after + "'.";
                break;
            case Kind::Moved:
                sentence += " moved to another place.";
                break;
        }
        _sentences.push_back(sentence);
        _differences.push_back({kind, path, before, after});
    }

    void ExpectAnother(const PlainElement& old, const PlainElement& now,
                       const std::string& parent) {
        const bool root = &old == &_before;
        Expect("Element", Kind::Removed, parent + "/" + (root ? old.tag : KeyOf(old)),
               StartTagOf(old), "");
        Expect("Element", Kind::Added, parent + "/" + (root ? now.tag : KeyOf(now)), "",
               StartTagOf(now));
    }

    void ChangeTag(const PlainElement& old, PlainElement& now, const std::string& parent) {
        now.tag = "T" + _maker.NextNumber();
        ExpectAnother(old, now, parent);
    }

    /// It stays the same element by its Name or, if that changes, by its ID.
    bool IsSame(const PlainElement& old, const PlainElement& now) const {
        const std::string* const id = old.Find("ID");
        const std::string* const newId = now.Find("ID");
        return &old == &_before || KeyOf(old) == KeyOf(now) ||
               (id != nullptr && newId != nullptr && *id == *newId);
    }

    void ChangeAttribute(const PlainElement& old, PlainElement& now, const std::string& parent) {
        static const char* const names[] = {"Name", "ID", "a", "b-", "c--d"};
        const std::string name = names[_input.Below(5)];
        const std::string* const before = old.Find(name);
        const auto place =
            std::find_if(now.attributes.begin(), now.attributes.end(),
                         [&name](const auto& attribute) { return attribute.first == name; });
        Kind kind = Kind::Changed;
        if (before == nullptr) {
            kind = Kind::Added;
            const bool unique = name == "Name" || name == "ID";
            now.attributes.emplace_back(name, unique ? _maker.NextNumber() : _maker.Word());
        } else if (_input.Flag()) {
            kind = Kind::Removed;
            now.attributes.erase(place);
        } else {
            place->second += "-";
        }
        if (!IsSame(old, now)) {
            return ExpectAnother(old, now, parent);
        }
        const std::string* const after = now.Find(name);
        Expect("Attribute", kind,
               parent + "/" + (&old == &_before ? now.tag : KeyOf(now)) + "/@" + name,
               before != nullptr ? *before : "", after != nullptr ? *after : "");
    }

    void ChangeText(PlainElement& now, const std::string& path) {
        const std::string before = now.text;
        now.text = !before.empty() && _input.Flag() ? "" : before + "-t";
        const Kind kind = before.empty()     ? Kind::Added
                          : now.text.empty() ? Kind::Removed
                                             : Kind::Changed;
        Expect("Text", kind, path + "/text()", before, now.text);
    }

    void ChangeChildren(const PlainElement& old, PlainElement& now, const std::string& path) {
        std::vector<PlainElement>& children = now.children;
        const unsigned choice = _input.Below(4);
        if (choice == 0 || children.empty()) {
            const std::size_t place = _input.Byte() % (children.size() + 1);
            const auto made = children.insert(At(children, place), _maker.Next(4));
            return Expect("Element", Kind::Added, path + "/" + KeyOf(*made), "", StartTagOf(*made));
        }
        const std::size_t place = choice == 3 ? 0 : _input.Byte() % children.size();
        const std::string childPath = path + "/" + KeyOf(children[place]);
        const std::string before = StartTagOf(old.children[place]);
        const std::string after = StartTagOf(children[place]);
        if (choice == 1) {
            children.erase(At(children, place));
            Expect("Element", Kind::Removed, childPath, before, "");
        } else if (choice == 2) {  // a twin: the second of the two is new
            const PlainElement twin = children[place];
            children.insert(At(children, place), twin);
            Expect("Element", Kind::Added, childPath + "[2]", "", after);
        } else if (children.size() > 2) {  // the one that passes at least two others
            std::rotate(children.begin(), At(children, 1), children.end());
            Expect("Element", Kind::Moved, childPath, before, after);
        }
    }

    static std::vector<PlainElement>::iterator At(std::vector<PlainElement>& children,
                                                  std::size_t place) {
        return children.begin() + static_cast<std::ptrdiff_t>(place);
    }

    Input& _input;
    ElementMaker _maker;
    PlainElement _before;
    PlainElement _after;
    std::vector<kesview::Difference> _differences;
    std::vector<std::string> _sentences;
};

}  // namespace Fuzz
