/// @file
#include "building/PathPattern.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

namespace kesview {

namespace {

constexpr const char* kAnyNames = "**";

/// The names between slashes that no '\' leads; the names keep their '\'.
std::vector<std::string> split(const std::string& path) {
    std::vector<std::string> names(1);
    for (std::size_t at = 0; at < path.size(); ++at) {
        if (path[at] == '/') {
            names.emplace_back();
            continue;
        }
        names.back() += path[at];
        if (path[at] == '\\' && at + 1 < path.size()) {
            names.back() += path[++at];
        }
    }
    return names;
}

std::string unescaped(const std::string& name) {
    std::string plain;
    for (std::size_t at = 0; at < name.size(); ++at) {
        const bool leads = name[at] == '\\' && at + 1 < name.size();
        plain += leads ? name[++at] : name[at];
    }
    return plain;
}

/// Bytes of the letter that begins there.
std::size_t letterSize(std::string_view text, std::size_t at) {
    std::size_t end = at + 1;
    while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) {
        ++end;
    }
    return end - at;
}

/// How far one step of the pattern, which is no '*', takes both; false where it does not fit.
bool step(std::string_view pattern, std::size_t& at, std::string_view name, std::size_t& nameAt) {
    if (at >= pattern.size()) {
        return false;
    }
    if (pattern[at] == '?') {
        ++at;
        nameAt += letterSize(name, nameAt);
        return true;
    }
    const bool leads = pattern[at] == '\\' && at + 1 < pattern.size();
    if (pattern[at + (leads ? 1 : 0)] != name[nameAt]) {
        return false;
    }
    at += leads ? 2 : 1;
    ++nameAt;
    return true;
}

// On a mismatch the last '*' takes one letter more: that is enough, since an earlier one cannot
// reach further than what the last one is tried with anyway.
bool matchesName(std::string_view pattern, std::string_view name) {
    std::size_t at = 0;
    std::size_t nameAt = 0;
    std::size_t starAt = std::string_view::npos;
    std::size_t starNameAt = 0;
    while (nameAt < name.size()) {
        if (at < pattern.size() && pattern[at] == '*') {
            starAt = at++;
            starNameAt = nameAt;
        } else if (!step(pattern, at, name, nameAt)) {
            if (starAt == std::string_view::npos) {
                return false;
            }
            at = starAt + 1;
            starNameAt += letterSize(name, starNameAt);
            nameAt = starNameAt;
        }
    }
    return pattern.find_first_not_of('*', at) == std::string_view::npos;
}

}  // namespace

PathPattern::PathPattern(const std::string& pattern) {
    const bool fromTop = !pattern.empty() && pattern.front() == '/';
    _names = split(fromTop ? pattern.substr(1) : pattern);
    if (!fromTop) {
        _names.insert(_names.begin(), kAnyNames);
    }
}

// Which numbers of names of the pattern may have been used up when all of the path is.
std::vector<bool> PathPattern::after(const std::string& path) const {
    const std::size_t count = _names.size();
    const auto skipAnyNames = [&](std::vector<bool>& used) {
        for (std::size_t i = 0; i < count; ++i) {
            if (used[i] && _names[i] == kAnyNames) {
                used[i + 1] = true;
            }
        }
    };
    std::vector<bool> used(count + 1, false);
    used[0] = true;
    skipAnyNames(used);
    for (const std::string& name : namesOfPath(path)) {
        std::vector<bool> next(count + 1, false);
        for (std::size_t i = 0; i < count; ++i) {
            if (used[i] && _names[i] == kAnyNames) {
                next[i] = true;
            } else if (used[i] && matchesName(_names[i], name)) {
                next[i + 1] = true;
            }
        }
        used = std::move(next);
        skipAnyNames(used);
    }
    return used;
}

bool PathPattern::Matches(const std::string& path) const {
    return !path.empty() && after(path).back();
}

bool PathPattern::CanMatchBelow(const std::string& path) const {
    const std::vector<bool> used = after(path);
    return std::find(used.begin(), used.end() - 1, true) != used.end() - 1;
}

std::vector<std::string> namesOfPath(const std::string& path) {
    std::vector<std::string> names = split(path);
    std::transform(names.begin(), names.end(), names.begin(), unescaped);
    return names;
}

std::string escapedForPath(const std::string& name) {
    std::string escaped;
    for (const char letter : name) {
        if (letter == '/' || letter == '\\') {
            escaped += '\\';
        }
        escaped += letter;
    }
    return escaped;
}

}  // namespace kesview
