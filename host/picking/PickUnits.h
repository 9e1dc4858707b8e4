#pragma once

/// @file
/// Divides a scene graph into units: the largest parts in which nothing moves against the rest and
/// nothing is shared, so that a unit can be described once and placed where it is used.

#include "document/Document.h"
#include "view/Items.h"
#include "view/Vectors.h"

#include <KesVizCore/core/EntityId.h>
#include <KesVizCore/graph/Node.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kesview {

/// A triangle, a line or a point of a unit's item.
struct Primitive {
    std::uint32_t item = 0;
    std::uint32_t number = 0;  ///< among those of the item
};

struct UnitNode {
    const viz::GeoNode* node = nullptr;
    std::int32_t above = -1;  ///< index; -1 for the top of the unit
    viz::EntityType type = viz::InvalidType;
};

struct UnitItem {
    const viz::AGeometryItem* item = nullptr;
    Shape shape;
    std::uint32_t node = 0;
};

/// Items and primitives stand in the order of the walk. What is not finite is left out.
struct Unit {
    std::vector<UnitNode> nodes;
    std::vector<UnitItem> items;
    std::vector<Primitive> surfaces;  ///< triangles, those of texts' rectangles as well
    std::vector<Primitive> thin;      ///< lines and points
    Box box;                          ///< of all these, in the coordinates of the top
};

struct PlacedUnit {
    std::size_t unit = 0;
    std::vector<const viz::GeoNode*> above;  ///< from the root to the parent of the unit's top
    Matrix world = identityMatrix;
    viz::EntityType type = viz::InvalidType;  ///< of a type node above
};

/// The places in the order of the walk. Borrows the graph.
struct PickUnits {
    std::vector<Unit> units;
    std::vector<PlacedUnit> places;
};

PickUnits divideIntoUnits(const viz::Node& root);

/// How many points of a shape a primitive of it has, and which: indices of points.
struct Corners {
    int count = 0;
    int at[3] = {0, 0, 0};
};
Corners cornersOf(const Shape& shape, std::uint32_t number);

}  // namespace kesview
