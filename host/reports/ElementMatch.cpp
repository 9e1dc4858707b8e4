/// @file
#include "reports/ElementMatch.h"

#include <algorithm>
#include <functional>
#include <queue>

namespace kesview {

namespace {

bool isText(pugi::xml_node node) {
    return node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata;
}

std::uint64_t numberOf(const char* text) {
    return std::hash<std::string>{}(text);
}

/// Depends on the order of its operands, unlike a sum.
std::uint64_t mixed(std::uint64_t first, std::uint64_t second) {
    std::uint64_t number = first ^ (second + 0x9E3779B97F4A7C15ULL + (first << 6) + (first >> 2));
    number ^= number >> 31;
    number *= 0xBF58476D1CE4E5B9ULL;
    return number ^ (number >> 29);
}

/// Of a node without its children; the order of attributes means nothing.
std::uint64_t ownNumber(pugi::xml_node node) {
    if (isText(node)) {
        return mixed(1, numberOf(node.value()));
    }
    std::uint64_t attributes = 0;
    for (const pugi::xml_attribute attribute : node.attributes()) {
        attributes += mixed(numberOf(attribute.name()), numberOf(attribute.value()));
    }
    return mixed(mixed(2, numberOf(node.name())), attributes);
}

std::string inXPathQuotes(const std::string& text) {
    const char* quote = text.find('\'') == std::string::npos ? "'" : "\"";
    return quote + text + quote;
}

bool hasIdentity(pugi::xml_node node) {
    return node.attribute("Name") || node.attribute("ID");
}

/// Pairs two lists in passes, each less strict than the one before.
class Matcher {
public:
    using Key = std::function<std::string(pugi::xml_node, std::size_t index)>;

    Matcher(const std::vector<pugi::xml_node>& before, const std::vector<pugi::xml_node>& after)
        : _before(before),
          _after(after),
          _partnerOfBefore(before.size(), Match::none),
          _partnerOfAfter(after.size(), Match::none) {}

    /// Pairs those without a partner whose keys are the same, in order; an empty key is no key.
    void Pair(const Key& beforeKey, const Key& afterKey) {
        std::unordered_map<std::string, std::queue<std::size_t>> waiting;
        for (std::size_t i = 0; i < _before.size(); ++i) {
            if (_partnerOfBefore[i] == Match::none) {
                waiting[beforeKey(_before[i], i)].push(i);
            }
        }
        for (std::size_t i = 0; i < _after.size(); ++i) {
            const std::string key =
                _partnerOfAfter[i] == Match::none ? afterKey(_after[i], i) : std::string();
            const auto found = key.empty() ? waiting.end() : waiting.find(key);
            if (found != waiting.end() && !found->second.empty()) {
                _partnerOfAfter[i] = found->second.front();
                _partnerOfBefore[found->second.front()] = i;
                found->second.pop();
            }
        }
    }

    /// For each of the newer list, whether it and its partner belong to the longest run of pairs
    /// whose order is the same in both lists.
    std::vector<bool> InOrder() const {
        std::vector<std::size_t> lastOfLength;  // index in _after of the smallest end of each run
        std::vector<std::size_t> previous(_after.size(), Match::none);
        for (std::size_t i = 0; i < _after.size(); ++i) {
            if (_partnerOfAfter[i] == Match::none) {
                continue;
            }
            const auto place =
                std::lower_bound(lastOfLength.begin(), lastOfLength.end(), _partnerOfAfter[i],
                                 [this](std::size_t end, std::size_t value) {
                                     return _partnerOfAfter[end] < value;
                                 });
            previous[i] = place == lastOfLength.begin() ? Match::none : *(place - 1);
            if (place == lastOfLength.end()) {
                lastOfLength.push_back(i);
            } else {
                *place = i;
            }
        }
        std::vector<bool> inOrder(_after.size(), false);
        std::size_t next = lastOfLength.empty() ? Match::none : lastOfLength.back();
        for (; next != Match::none; next = previous[next]) {
            inOrder[next] = true;
        }
        return inOrder;
    }

    const std::vector<std::size_t>& PartnerOfBefore() const { return _partnerOfBefore; }
    const std::vector<std::size_t>& PartnerOfAfter() const { return _partnerOfAfter; }

private:
    const std::vector<pugi::xml_node>& _before;
    const std::vector<pugi::xml_node>& _after;
    std::vector<std::size_t> _partnerOfBefore;
    std::vector<std::size_t> _partnerOfAfter;
};

/// For each place of both lists, how many pairs of equal content stand before it. What has neither
/// Name nor ID is paired only between the same two of these.
struct Gaps {
    explicit Gaps(const Matcher& matcher) {
        const std::vector<bool> anchors = matcher.InOrder();
        std::size_t count = 0;
        for (const bool anchor : anchors) {
            after.push_back(count);
            count += anchor ? 1U : 0U;
        }
        count = 0;
        for (const std::size_t partner : matcher.PartnerOfBefore()) {
            before.push_back(count);
            count += partner != Match::none && anchors[partner] ? 1U : 0U;
        }
    }

    std::vector<std::size_t> before;
    std::vector<std::size_t> after;
};

void pairBySameContent(Matcher& matcher, const ContentNumbers& beforeNumbers,
                       const ContentNumbers& afterNumbers) {
    const auto keyBy = [](const ContentNumbers& numbers) {
        return [&numbers](pugi::xml_node node, std::size_t) {
            return std::to_string(numbers.Of(node));
        };
    };
    matcher.Pair(keyBy(beforeNumbers), keyBy(afterNumbers));
}

void pairByKey(Matcher& matcher) {
    const Gaps gaps(matcher);
    const auto keyWith = [](const std::vector<std::size_t>& gapOf) {
        return [&gapOf](pugi::xml_node node, std::size_t index) {
            return hasIdentity(node) ? keyOf(node)
                                     : keyOf(node) + "|" + std::to_string(gapOf[index]);
        };
    };
    matcher.Pair(keyWith(gaps.before), keyWith(gaps.after));
}

void pairById(Matcher& matcher) {
    const Matcher::Key key = [](pugi::xml_node node, std::size_t) {
        const pugi::xml_attribute id = node.attribute("ID");
        return id ? node.name() + std::string("|") + id.value() : std::string();
    };
    matcher.Pair(key, key);
}

}  // namespace

std::vector<pugi::xml_node> contentOf(pugi::xml_node element) {
    std::vector<pugi::xml_node> content;
    for (const pugi::xml_node child : element.children()) {
        if (isText(child) || child.type() == pugi::node_element) {
            content.push_back(child);
        }
    }
    return content;
}

ContentNumbers::ContentNumbers(pugi::xml_node root) {
    if (!root) {
        return;
    }
    std::vector<pugi::xml_node> all = {root};
    for (std::size_t next = 0; next < all.size(); ++next) {
        const std::vector<pugi::xml_node> content = contentOf(all[next]);
        all.insert(all.end(), content.begin(), content.end());
    }
    // Backwards, children come before their parents.
    std::for_each(all.rbegin(), all.rend(), [this](pugi::xml_node node) {
        std::uint64_t number = ownNumber(node);
        for (const pugi::xml_node child : contentOf(node)) {
            number = mixed(number, Of(child));
        }
        _numbers[node.internal_object()] = number;
    });
}

std::string keyOf(pugi::xml_node node) {
    if (isText(node)) {
        return "text()";
    }
    for (const char* name : {"Name", "ID"}) {
        const pugi::xml_attribute attribute = node.attribute(name);
        if (attribute) {
            return std::string(node.name()) + "[@" + name + "=" + inXPathQuotes(attribute.value()) +
                   "]";
        }
    }
    return node.name();
}

std::vector<Match> matchContent(const std::vector<pugi::xml_node>& before,
                                const ContentNumbers& beforeNumbers,
                                const std::vector<pugi::xml_node>& after,
                                const ContentNumbers& afterNumbers) {
    Matcher matcher(before, after);
    pairBySameContent(matcher, beforeNumbers, afterNumbers);
    pairByKey(matcher);
    pairById(matcher);

    const std::vector<bool> inOrder = matcher.InOrder();
    std::vector<Match> matches;
    const auto addRemovedFrom = [&](std::size_t i) {
        for (; i < before.size() && matcher.PartnerOfBefore()[i] == Match::none; ++i) {
            matches.push_back({i, Match::none, false});
        }
    };
    addRemovedFrom(0);
    for (std::size_t i = 0; i < after.size(); ++i) {
        const std::size_t partner = matcher.PartnerOfAfter()[i];
        matches.push_back({partner, i, partner != Match::none && !inOrder[i]});
        if (partner != Match::none) {
            addRemovedFrom(partner + 1);
        }
    }
    return matches;
}

}  // namespace kesview
