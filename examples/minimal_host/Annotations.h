#pragma once

/// @file
/// What the file says about the bracket besides its shape: dimensions, a tolerance with its datum,
/// a note, and who sees which of them. As the model, it stands for what a CAD reader hands over.

#include <KesVizCore/core/EntityId.h>

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace host {

/// x, y, z in millimetres.
using Place = std::array<float, 3>;

struct Annotation {
    std::uint64_t id;
    KesVizCore::EntityType type;
    std::wstring mechanicalId;
    std::wstring name;
    std::wstring text;
    Place textAnchor;
    std::vector<std::vector<float>> lines;        ///< x, y, z triples
    std::vector<std::uint64_t> faces;             ///< what it speaks of
    std::map<std::wstring, std::wstring> values;  ///< what it means
};

/// Annotations seen together: a view has a plane or none, a capture a camera.
struct Sight {
    std::uint64_t id;
    std::wstring name;
    std::vector<std::uint64_t> annotations;
    std::optional<std::array<Place, 3>> frame;  ///< origin, U, V; or eye, target, up
};

struct Annotations {
    std::uint64_t id;      ///< of the set, which owns them
    std::uint64_t bodyId;  ///< the body whose faces they speak of
    std::vector<Annotation> annotations;
    std::vector<Sight> views;
    std::vector<Sight> captures;
};

Annotations makeBracketAnnotations();

}  // namespace host
