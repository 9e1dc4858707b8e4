#pragma once

/// @file
/// The model: a bracket with three holes and a bolt that is used twice. It stands for what a CAD
/// reader hands to the host, and knows nothing of the library but its colour.

#include <KesVizCore/core/RGBAColor.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace host {

/// One face, tessellated into four-cornered patches.
struct Face {
    std::uint64_t id;
    std::wstring name;
    std::vector<float> points;                   ///< x, y, z triples in millimetres
    std::vector<int> quads;                      ///< four indices into the points for each patch
    std::optional<KesVizCore::RGBAColor> color;  ///< where it differs from the body's
};

/// One edge: a chain of straight lines.
struct Edge {
    std::uint64_t id;
    std::wstring name;
    std::vector<float> points;
};

struct Body {
    std::uint64_t id;
    std::wstring name;
    KesVizCore::RGBAColor color;
    std::vector<Face> faces;
    std::vector<Edge> edges;
};

/// A body put somewhere: its own id and name, and where it stands.
struct Instance {
    std::uint64_t id;
    std::wstring name;
    std::uint64_t bodyId;
    std::array<double, 16> worldFromBody;  ///< column by column, translation at 12..14
};

/// Ids are unique, and none is 1: that is the root of the scene graph.
struct Model {
    std::vector<Body> bodies;
    std::vector<Instance> instances;

    /// The body of that id, or null.
    const Body* FindBody(std::uint64_t id) const;
    /// The instance of that id, or null.
    const Instance* FindInstance(std::uint64_t id) const;
};

Model makeBracketModel();

}  // namespace host
