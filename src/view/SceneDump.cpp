/// @file
/// The structure of a scene as text, a line for each node, of which there may be millions.

#include "graph/NodeAccess.h"
#include "platform/Platform.h"

#include <KesVizCore/graph/Attribute.h>
#include <KesVizCore/graph/Node.h>
#include <KesVizCore/report/Utils.h>
#include <KesVizCore/view/AView3DAdapter.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstring>
#include <new>
#include <string>
#include <string_view>
#include <vector>

namespace KesVizCore {

namespace {

// --- growing ------------------------------------------------------------------------------------

/// Gathers the many small pieces of a dump before they are appended to its text.
class Pieces {
public:
    /// What Room is always good for.
    static constexpr std::size_t kLongest = 256;

    // cppcheck-suppress uninitMemberVar ; _gathered is read as far as _size, which is written
    explicit Pieces(std::string& out) : _out(out), _before(out.size()) {}

    /// Where the next kLongest characters may be written, before SetEnd tells how many they are.
    char* Room() {
        if (kCapacity - _size < kLongest) {
            Flush();
        }
        return _gathered + _size;
    }
    void SetEnd(const char* end) { _size = static_cast<std::size_t>(end - _gathered); }

    void Add(std::string_view text) {
        while (!text.empty()) {
            char* const room = Room();
            SetEnd(room + text.copy(room, kLongest));
            text.remove_prefix(std::min(text.size(), kLongest));
        }
    }

    void AddBlanks(std::size_t count) {
        if (count > kLongest) {
            Flush();
            makeRoom(count);
            _out.append(count, ' ');
            return;
        }
        SetEnd(std::fill_n(Room(), count, ' '));
    }

    bool IsHalfFull() const { return _size > kCapacity / 2; }

    void Flush() {
        makeRoom(_size);
        _out.append(_gathered, _size);
        _size = 0;
    }

    /// Which share of all pieces has come, from 0 to 1; 0 or no number where nobody knows.
    void SetShare(double share) { _share = share; }

private:
    static constexpr std::size_t kCapacity = 4096;

    /// In the text, for what the whole of it will take if it goes on as it began; within bounds,
    /// since it may not.
    void makeRoom(std::size_t size) {
        const std::size_t needed = _out.size() + size;
        if (needed <= _out.capacity()) {
            return;
        }
        std::string grown;
        try {
            grown.reserve(wanted(needed));
        } catch (const std::bad_alloc&) {
            grown.reserve(needed);
        }
        platform::preferLargePages(grown.data(), grown.capacity());  // while nothing is there
        grown += _out;
        _out.swap(grown);
    }

    std::size_t wanted(std::size_t needed) const {
        if (!(_share > 0)) {
            return 2 * needed;
        }
        const auto ours = static_cast<double>(needed - _before);
        const double whole = static_cast<double>(_before) + ours / _share * 1.125;
        const double least = 1.5 * static_cast<double>(needed);
        const double most = 4 * static_cast<double>(needed);
        return static_cast<std::size_t>(std::clamp(whole, least, most));
    }

    std::string& _out;
    std::size_t _before;  ///< the length of what was there before
    double _share = 0;
    std::size_t _size = 0;
    char _gathered[kCapacity];
};

/// The children of a group that is being written.
class OpenLevel {
public:
    explicit OpenLevel(const ChildTable& children)
        : _next(children.begin()), _count(children.size()) {}

    bool IsDone() const { return _taken == _count; }
    GeoNode& Next() {
        GeoNode& child = *_next->child;
        ++_next;
        ++_taken;
        return child;
    }
    std::size_t Taken() const { return _taken; }
    std::size_t Count() const { return _count; }

private:
    ChildTable::Iterator _next;
    std::size_t _taken = 0;
    std::size_t _count;
};

/// Which share of the walk is done, as if the groups of each level were all alike. No number where
/// a group of the host's says that it has children and has none.
double shareOf(const std::vector<OpenLevel>& levels) {
    double share = 1;  // of what was written last
    for (auto level = levels.rbegin(); level != levels.rend(); ++level) {
        share += static_cast<double>(level->Taken()) - 1;
        share /= static_cast<double>(level->Count());
    }
    return share;
}

// --- writing ------------------------------------------------------------------------------------

constexpr char kColors[] = " ";

/// Writes a text whose length the compiler knows and answers its end.
template <std::size_t size>
char* put(char* to, const char (&text)[size]) {
    return std::copy_n(text, size - 1, to);
}

template <typename Number>
char* putNumber(char* to, Number number) {
    constexpr std::ptrdiff_t longest = 20;
    return std::to_chars(to, to + longest, number).ptr;
}

/// A name as Utils::WstringToString makes it.
void addName(Pieces& out, const CompactName& name) {
    // Every locale writes these characters as they are.
    const auto isPlain = [](char character) {
        return character >= ' ' && character <= 'z' && character != '\\';
    };
    const char* const text = name.Short();
    if (text == nullptr || !std::all_of(text, text + name.ShortLength(), isPlain)) {
        out.Add(Utils::WstringToString(name.Get()));
        return;
    }
    char* const to = out.Room();
    std::memcpy(to, text, CompactName::kShortSize);  // faster than the few that count
    out.SetEnd(to + name.ShortLength());
}

void addAttributes(Pieces& out, const GeoNode& node) {
    const PointerList<Attribute>& attributes = NodeAccess::attributes(node);
    if (attributes.empty()) {
        out.SetEnd(put(out.Room(), " "));
        return;
    }
    out.SetEnd(put(out.Room(), " , Attr:"));
    for (Attribute* attribute : attributes) {
        char* to = out.Room();
        switch (attribute != nullptr ? attribute->GetType() : AttributeType()) {
            case AttributeType::Color:
                to = put(to, " Co");
                break;
            case AttributeType::Highlight:
                to = put(to, " Hi");
                break;
            case AttributeType::Transform:
                to = put(to, " Tx");
                break;
            case AttributeType::Visibility:
                to = put(to, " Vi");
                break;
            default:
                to = put(to, " Unknown attribute");  // line styles are among these
        }
        out.SetEnd(to);
    }
}

/// The line of a node, which is one of a group with children where @p children is not null.
void addLine(Pieces& out, std::ptrdiff_t indentation, const GeoNode& node,
             const ChildTable* children) {
    out.AddBlanks(static_cast<std::size_t>(std::max(indentation, std::ptrdiff_t{0})));
    char* to = put(out.Room(), "Node [");
    to = putNumber(to, static_cast<int>(node.Id()));
    out.SetEnd(put(to, "] '"));
    addName(out, NodeAccess::name(node));
    to = put(out.Room(), "', parents: ");
    to = putNumber(to, NodeAccess::parents(node).size());
    if (children == nullptr) {
        to = put(to, "    geometry objects: ");
        to = putNumber(to, NodeAccess::geometry(node).size());
        to = put(to, kColors);
    } else {
        to = put(to, " , children: ");
        to = putNumber(to, children->size());
    }
    out.SetEnd(to);
    addAttributes(out, node);
    out.SetEnd(put(out.Room(), "\n"));
}

}  // namespace

void AView3DAdapter::GetSceneStructure(std::string& out, bool flag) {
    nodeToString(_rootNode, out, 0, flag);
}

// The children still to write of each open level stand on a stack of our own, so that the depth
// of the graph is not limited by that of the thread.
void AView3DAdapter::nodeToString(GeoNode* node, std::string& out, int indentation, bool /*flag*/) {
    Pieces pieces(out);
    std::vector<OpenLevel> levels;
    const auto write = [&](GeoNode& written) {
        const Node* const group = written.HasChildren() ? NodeAccess::asGroup(&written) : nullptr;
        const ChildTable* const children =
            group != nullptr ? &NodeAccess::children(*group) : nullptr;
        const auto depth = static_cast<std::ptrdiff_t>(levels.size());
        addLine(pieces, indentation + 2 * depth, written, children);
        if (children != nullptr) {
            levels.emplace_back(*children);
        }
    };
    if (node != nullptr) {
        write(*node);
    }
    while (!levels.empty()) {
        if (levels.back().IsDone()) {
            levels.pop_back();
            continue;
        }
        write(levels.back().Next());
        if (pieces.IsHalfFull()) {
            pieces.SetShare(shareOf(levels));
            pieces.Flush();
        }
    }
    pieces.Flush();
}

std::string AView3DAdapter::getAttributeString(GeoNode* node) {
    if (node == nullptr) {
        return " ";
    }
    std::string text;
    Pieces pieces(text);
    addAttributes(pieces, *node);
    pieces.Flush();
    return text;
}

std::string AView3DAdapter::getColorString(GeoNode* /*node*/) {
    return kColors;
}

}  // namespace KesVizCore
