/// @file
#include "reports/Differences.h"

#include "reports/ElementMatch.h"
#include "reports/XmlReport.h"

#include <algorithm>
#include <map>
#include <pugixml.hpp>
#include <utility>

namespace kesview {

namespace {

/// An element's start tag, cut where it is long.
std::string briefOf(pugi::xml_node node) {
    constexpr std::size_t longest = 200;
    if (node.type() != pugi::node_element) {
        return node.value();
    }
    std::string tag = std::string("<") + node.name();
    for (const pugi::xml_attribute attribute : node.attributes()) {
        tag += std::string(" ") + attribute.name() + "=\"" + attribute.value() + "\"";
    }
    return tag.size() > longest ? tag.substr(0, longest) + "…" : tag + ">";
}

/// The keys of neighbours, numbered from 1 where one key occurs more than once.
std::vector<std::string> segmentsOf(const std::vector<pugi::xml_node>& nodes) {
    std::map<std::string, std::size_t> total;
    for (const pugi::xml_node node : nodes) {
        ++total[keyOf(node)];
    }
    std::map<std::string, std::size_t> met;
    std::vector<std::string> segments;
    for (const pugi::xml_node node : nodes) {
        const std::string key = keyOf(node);
        const std::size_t number = ++met[key];
        segments.push_back(total[key] > 1 ? key + "[" + std::to_string(number) + "]" : key);
    }
    return segments;
}

/// Walks two trees at once, with a stack of its own: reports may be deep.
class Comparison {
public:
    Comparison(pugi::xml_node before, pugi::xml_node after)
        : _beforeNumbers(before), _afterNumbers(after) {
        const bool paired = before && after && std::string(before.name()) == after.name();
        if (after && !paired) {
            push({}, after, after.name(), noParent, false);
        }
        if (before) {
            push(before, paired ? after : pugi::xml_node(), before.name(), noParent, false);
        }
    }

    std::vector<Difference> Run() {
        while (!_open.empty()) {
            const Pair pair = std::move(_open.back());
            _open.pop_back();
            visit(pair);
        }
        return std::move(_found);
    }

private:
    static constexpr std::size_t noParent = static_cast<std::size_t>(-1);

    struct Pair {
        pugi::xml_node before;
        pugi::xml_node after;
        std::string segment;
        std::size_t parent;  ///< index into _steps
        bool moved;
    };
    struct Step {
        std::string segment;
        std::size_t parent;
    };

    void push(pugi::xml_node before, pugi::xml_node after, std::string segment, std::size_t parent,
              bool moved) {
        _open.push_back({before, after, std::move(segment), parent, moved});
    }

    std::string pathTo(const std::string& segment, std::size_t parent) const {
        std::vector<const std::string*> segments = {&segment};
        for (; parent != noParent; parent = _steps[parent].parent) {
            segments.push_back(&_steps[parent].segment);
        }
        std::string path;
        std::for_each(segments.rbegin(), segments.rend(),
                      [&path](const std::string* step) { path += "/" + *step; });
        return path;
    }

    void visit(const Pair& pair) {
        using Kind = Difference::Kind;
        if (!pair.before || !pair.after) {
            const pugi::xml_node node = pair.before ? pair.before : pair.after;
            add(pair, pair.before ? Kind::Removed : Kind::Added, node, node);
            return;
        }
        if (pair.moved) {
            add(pair, Kind::Moved, pair.before, pair.after);
        }
        if (_beforeNumbers.Of(pair.before) == _afterNumbers.Of(pair.after)) {
            return;
        }
        if (pair.before.type() != pugi::node_element) {
            add(pair, Kind::Changed, pair.before, pair.after);
            return;
        }
        _steps.push_back({pair.segment, pair.parent});
        compareAttributes(pair);
        pushContent(pair);
    }

    void add(const Pair& pair, Difference::Kind kind, pugi::xml_node before, pugi::xml_node after) {
        using Kind = Difference::Kind;
        _found.push_back({kind, pathTo(pair.segment, pair.parent),
                          kind == Kind::Added ? "" : briefOf(before),
                          kind == Kind::Removed ? "" : briefOf(after)});
    }

    void compareAttributes(const Pair& pair) {
        using Kind = Difference::Kind;
        const auto add = [this](Kind kind, const char* name, const char* before,
                                const char* after) {
            _found.push_back(
                {kind, pathTo(std::string("@") + name, _steps.size() - 1), before, after});
        };
        for (const pugi::xml_attribute old : pair.before.attributes()) {
            const pugi::xml_attribute now = pair.after.attribute(old.name());
            if (!now) {
                add(Kind::Removed, old.name(), old.value(), "");
            } else if (std::string(old.value()) != now.value()) {
                add(Kind::Changed, old.name(), old.value(), now.value());
            }
        }
        for (const pugi::xml_attribute now : pair.after.attributes()) {
            if (!pair.before.attribute(now.name())) {
                add(Kind::Added, now.name(), "", now.value());
            }
        }
    }

    /// Backwards, as the last that is pushed is the next that is visited.
    void pushContent(const Pair& pair) {
        const std::vector<pugi::xml_node> before = contentOf(pair.before);
        const std::vector<pugi::xml_node> after = contentOf(pair.after);
        const std::vector<std::string> beforeSegments = segmentsOf(before);
        const std::vector<std::string> afterSegments = segmentsOf(after);
        const std::vector<Match> matches =
            matchContent(before, _beforeNumbers, after, _afterNumbers);
        const std::size_t parent = _steps.size() - 1;
        std::for_each(matches.rbegin(), matches.rend(), [&](const Match& match) {
            const bool removed = match.after == Match::none;
            push(match.before == Match::none ? pugi::xml_node() : before[match.before],
                 removed ? pugi::xml_node() : after[match.after],
                 removed ? beforeSegments[match.before] : afterSegments[match.after], parent,
                 match.moved);
        });
    }

    ContentNumbers _beforeNumbers;
    ContentNumbers _afterNumbers;
    std::vector<Pair> _open;
    std::vector<Step> _steps;
    std::vector<Difference> _found;
};

/// "Attribute", "Text" or "Element".
std::string subjectOf(const std::string& path) {
    const std::string last = path.substr(path.rfind('/') + 1);
    if (last.find_first_of("'\"") != std::string::npos) {
        return "Element";  // the stroke stood in its name
    }
    if (last.rfind('@', 0) == 0) {
        return "Attribute";
    }
    return last.rfind("text()", 0) == 0 ? "Text" : "Element";
}

}  // namespace

std::vector<Difference> differences(const XmlReport& before, const XmlReport& after) {
    return Comparison(before.Root(), after.Root()).Run();
}

std::string sentence(const Difference& difference) {
    const std::string subject = subjectOf(difference.path) + " " + difference.path;
    switch (difference.kind) {
        case Difference::Kind::Added:
            return subject + " was added: '" + difference.after + "'.";
        case Difference::Kind::Removed:
            return subject + " was removed: '" + difference.before + "'.";
        case Difference::Kind::Moved:
            return subject + " moved to another place.";
        case Difference::Kind::Changed:
            break;
    }
    return subject + " changed from '" + difference.before + "' to '" + difference.after + "'.";
}

}  // namespace kesview
