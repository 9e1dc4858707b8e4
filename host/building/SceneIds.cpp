/// @file
#include "building/SceneIds.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

namespace kesview {

namespace {

using Kind = EntityName::Kind;

constexpr std::array<std::pair<std::string_view, Kind>, 6> kWords = {
    {{"instance", Kind::Instance},
     {"product", Kind::Product},
     {"body", Kind::Body},
     {"face", Kind::Face},
     {"edge", Kind::Edge},
     {"annotation", Kind::Annotation}}};

std::optional<Id> parseNumber(std::string_view text) {
    Id number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool whole = error == std::errc() && end == text.data() + text.size();
    return whole ? std::optional<Id>(number) : std::nullopt;
}

const char* wordOf(const viz::EntityId& entity) {
    switch (entity.Type) {
        case viz::FaceType:
            return "face:";
        case viz::EdgeType:
            return "edge:";
        case viz::VertexType:
            return "vertex:";
        case viz::BodyType:
            return "body:";
        case viz::PartType:
        case viz::AssemblyType:
            return entity.OwnerID != 0 ? "instance:" : "product:";
        case viz::ViewType:
            return "view:";
        case viz::CaptureType:
            return "capture:";
        default:
            return "annotation:";
    }
}

}  // namespace

std::string renderIdText(const viz::RenderId& id) {
    std::string text;
    for (int at = 0; at < id.Length(); ++at) {
        text += (at > 0 ? "/" : "") + std::to_string(id[at]);
    }
    return text;
}

std::optional<viz::RenderId> parseRenderId(const std::string& text) {
    std::vector<std::uint64_t> path;
    std::string_view rest = text;
    while (true) {
        const std::size_t slash = rest.find('/');
        const std::optional<Id> number = parseNumber(rest.substr(0, slash));
        if (!number.has_value()) {
            return std::nullopt;
        }
        path.push_back(*number);
        if (slash == std::string_view::npos) {
            return viz::RenderId(path, viz::View3D);
        }
        rest.remove_prefix(slash + 1);
    }
}

std::string entityText(const viz::EntityId& entity) {
    return wordOf(entity) + std::to_string(entity.ID);
}

std::optional<EntityName> parseEntityText(const std::string& text) {
    const std::size_t colon = text.find(':');
    if (colon == std::string::npos) {
        return std::nullopt;
    }
    const std::string_view all = text;
    const std::optional<Id> number = parseNumber(all.substr(colon + 1));
    for (const auto& [word, kind] : kWords) {
        if (number.has_value() && all.substr(0, colon) == word) {
            return EntityName{kind, *number};
        }
    }
    return std::nullopt;
}

}  // namespace kesview
