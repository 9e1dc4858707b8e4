#include "commands/NearNames.h"

#include "commands/Text.h"

#include <algorithm>
#include <cctype>
#include <numeric>
#include <utility>

namespace kesview {

namespace {

constexpr std::size_t kLongestName = 64;  // comparing takes the product of both lengths
constexpr std::size_t kMostSuggestions = 3;

std::string lowered(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char letter) {
        return static_cast<char>(letter < 0x80 ? std::tolower(letter) : letter);
    });
    return text;
}

/// Letters to add, drop or replace.
std::size_t distance(const std::string& a, const std::string& b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({replaced, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row[b.size()];
}

}  // namespace

std::vector<std::string> nearNames(const std::string& name, const std::set<std::string>& names) {
    const std::string wanted = lowered(name);
    if (wanted.empty() || wanted.size() > kLongestName) {
        return {};
    }
    const std::size_t most = std::max<std::size_t>(1, wanted.size() / 3);
    std::vector<std::pair<std::size_t, std::string>> near;
    for (const std::string& candidate : names) {
        if (candidate.empty() || candidate.size() > kLongestName) {
            continue;
        }
        const std::string other = lowered(candidate);
        const std::size_t far = distance(wanted, other);
        if (far <= most || (wanted.size() > 2 && other.find(wanted) != std::string::npos)) {
            near.emplace_back(far, candidate);
        }
    }
    std::sort(near.begin(), near.end());
    std::vector<std::string> nearest;
    for (std::size_t i = 0; i < near.size() && i < kMostSuggestions; ++i) {
        nearest.push_back(near[i].second);
    }
    return nearest;
}

std::string didYouMean(const std::vector<std::string>& names) {
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const char* const glue = i == 0 ? " Did you mean " : i + 1 == names.size() ? " or " : ", ";
        text += glue + ("\"" + plainText(names[i]) + "\"");
    }
    return text.empty() ? text : text + "?";
}

}  // namespace kesview
