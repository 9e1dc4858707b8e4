/// @file
/// See PresentationStyle.h.

#include "reading/part21/PresentationStyle.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <utility>

namespace kesview {
namespace {

constexpr std::size_t mostStyles = 64;

/// The first answer of @p read among what the styles lead to, nearest first.
template <typename Read>
auto findNearest(const ExchangeFile& file, const ExchangeValue& styles, const Read& read)
    -> decltype(read(ExchangeInstance())) {
    std::vector<EntityNumber> queue = styles.References();
    std::set<EntityNumber> seen;
    for (std::size_t i = 0; i < queue.size() && i < mostStyles; ++i) {
        if (!seen.insert(queue[i]).second) {
            continue;
        }
        const ExchangeInstance instance = file.Get(queue[i]);
        if (const auto answer = read(instance)) {
            return answer;
        }
        const auto further = instance.References();
        queue.insert(queue.end(), further.begin(), further.end());
    }
    return std::nullopt;
}

std::uint8_t channel(const ExchangeValue& share) {
    return static_cast<std::uint8_t>(std::lround(std::clamp(share.number, 0.0, 1.0) * 255));
}

std::optional<Color> namedColor(const std::string& name) {
    static const std::array<std::pair<const char*, Color>, 8> names = {{
        {"black", {0, 0, 0, 255}},
        {"white", {255, 255, 255, 255}},
        {"red", {255, 0, 0, 255}},
        {"green", {0, 255, 0, 255}},
        {"blue", {0, 0, 255, 255}},
        {"yellow", {255, 255, 0, 255}},
        {"magenta", {255, 0, 255, 255}},
        {"cyan", {0, 255, 255, 255}},
    }};
    for (const auto& [known, color] : names) {
        if (name == known) {
            return color;
        }
    }
    return std::nullopt;
}

std::optional<Color> readColor(const ExchangeInstance& instance) {
    if (instance.Is("COLOUR_RGB")) {
        return Color{channel(instance.Attribute("COLOUR_RGB", 0, 1)),
                     channel(instance.Attribute("COLOUR_RGB", 1, 2)),
                     channel(instance.Attribute("COLOUR_RGB", 2, 3)), 255};
    }
    if (instance.HasTypeEnding("PRE_DEFINED_COLOUR")) {
        return namedColor(instance.Attribute("PRE_DEFINED_ITEM", 0, 0).text);
    }
    return std::nullopt;
}

std::optional<double> readBoxHeight(const ExchangeInstance& instance) {
    const auto& list = instance.Attribute("TEXT_STYLE_WITH_BOX_CHARACTERISTICS", 0, 2);
    for (const ExchangeValue& item : list.items) {
        if (item.text == "BOX_HEIGHT" && item.Unwrapped().number > 0) {
            return item.Unwrapped().number;
        }
    }
    return std::nullopt;
}

}  // namespace

std::optional<Color> findStyleColor(const ExchangeFile& file, const ExchangeValue& styles) {
    return findNearest(file, styles, readColor);
}

std::optional<double> findTextHeight(const ExchangeFile& file, const ExchangeValue& styles) {
    return findNearest(file, styles, readBoxHeight);
}

}  // namespace kesview
