#pragma once

/// @file
/// What is hit by a ray: the question and the answer, apart from how it is found.

#include "document/Document.h"

#include <KesVizCore/core/EntityId.h>
#include <KesVizCore/core/RenderId.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace kesview {

namespace viz = KesVizCore;

class SceneAdapter;

/// A ray in the world, in double precision: viz::Ray blurs what lies far from zero.
struct PickRay {
    Vector root = {0, 0, 0};
    Vector direction = {0, 0, -1};  ///< of any length but 0
    double aperture = 0;            ///< lines and points count up to this far from the ray
    bool isLine = false;            ///< also hits what lies behind the root, at distances below 0
};

enum class PickKind { Surface, Line, Point, Text };

struct PickHit {
    viz::RenderId path;        ///< of the node, by the way that was hit
    Vector point = {0, 0, 0};  ///< in the world, on what was hit
    double distance = 0;       ///< from the root of the ray along it, in millimetres
    PickKind kind = PickKind::Surface;
    viz::EntityType type = viz::InvalidType;  ///< of the type node above it, if any
    bool annotation = false;
    std::uint64_t itemId = 0;
};

/// Finds what a ray hits among all that a scene shows and its clipping plane leaves.
///
/// The nearest surface or text is what is hit, unless a line or a point lies within the aperture
/// and at most two apertures farther: lines lie on their faces, and would never be hit otherwise.
/// Of several the nearest, and of those as near the first in the order of the walk.
class Picker {
public:
    virtual ~Picker() = default;
    virtual std::optional<PickHit> Pick(const PickRay& ray) = 0;
};

/// Makes a picker for a scene that outlives it.
using MakePicker = std::function<std::unique_ptr<Picker>(SceneAdapter&)>;

}  // namespace kesview
