#include "picking/PickUnits.h"

#include "view/ShownWalk.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <unordered_set>

namespace kesview {

namespace {

using NodeSet = std::unordered_set<const viz::GeoNode*>;

const viz::Node* asGroup(const viz::GeoNode& node) {
    return dynamic_cast<const viz::Node*>(&node);
}

/// Puts the children on the stack so that the first comes off first.
template <typename Push>
void pushChildren(const viz::GeoNode& node, const Push& push) {
    const viz::Node* const group = asGroup(node);
    if (group == nullptr) {
        return;
    }
    std::vector<const viz::GeoNode*> children;
    children.reserve(group->EachChild().size());
    for (const auto& [id, child] : group->EachChild()) {
        children.push_back(child);
    }
    std::for_each(children.rbegin(), children.rend(),
                  [&push](const viz::GeoNode* child) { push(*child); });
}

void markAncestors(const viz::GeoNode& node, NodeSet& marked) {
    std::vector<const viz::GeoNode*> stack = {&node};
    while (!stack.empty()) {
        const viz::GeoNode* const below = stack.back();
        stack.pop_back();
        for (const viz::Node* parent : below->EachParent()) {
            if (marked.insert(parent).second) {
                stack.push_back(parent);
            }
        }
    }
}

/// The nodes that hold, somewhere below, one that is shared or moved.
NodeSet findDivided(const viz::Node& root) {
    NodeSet divided;
    NodeSet seenShared;
    std::vector<const viz::GeoNode*> stack = {&root};
    while (!stack.empty()) {
        const viz::GeoNode* const node = stack.back();
        stack.pop_back();
        const bool isShared = node->EachParent().size() > 1;
        if (isShared && !seenShared.insert(node).second) {
            continue;
        }
        if (isShared || node->GetAttribute(viz::AttributeType::Transform) != nullptr) {
            markAncestors(*node, divided);
        }
        pushChildren(*node, [&](const viz::GeoNode& child) { stack.push_back(&child); });
    }
    return divided;
}

// --- one unit -----------------------------------------------------------------------------------

std::uint32_t primitivesOf(const Shape& shape) {
    switch (shape.form) {
        case Shape::Form::Lines:
            return static_cast<std::uint32_t>(shape.pointCount > 1 ? shape.pointCount - 1 : 0);
        case Shape::Form::Points:
            return static_cast<std::uint32_t>(shape.pointCount);
        default:
            return static_cast<std::uint32_t>(shape.TriangleCount());
    }
}

bool isFinite(const Shape& shape, const Corners& corners) {
    for (int corner = 0; corner < corners.count; ++corner) {
        const float* const point =
            shape.points + 3 * static_cast<std::ptrdiff_t>(corners.at[corner]);
        if (!std::isfinite(point[0]) || !std::isfinite(point[1]) || !std::isfinite(point[2])) {
            return false;
        }
    }
    return true;
}

void addItem(const viz::AGeometryItem& item, std::uint32_t node, Unit& unit) {
    const Shape shape = shapeOf(item);
    const std::uint32_t count = primitivesOf(shape);
    if (count == 0) {
        return;
    }
    const bool isThin = shape.form == Shape::Form::Lines || shape.form == Shape::Form::Points;
    std::vector<Primitive>& primitives = isThin ? unit.thin : unit.surfaces;
    const auto number = static_cast<std::uint32_t>(unit.items.size());
    unit.items.push_back({&item, shape, node});
    for (std::uint32_t primitive = 0; primitive < count; ++primitive) {
        const Corners corners = cornersOf(shape, primitive);
        if (!isFinite(shape, corners)) {
            continue;
        }
        primitives.push_back({number, primitive});
        for (int corner = 0; corner < corners.count; ++corner) {
            unit.box.Add(
                transformPoint(identityMatrix,
                               shape.points + 3 * static_cast<std::ptrdiff_t>(corners.at[corner])));
        }
    }
}

std::uint32_t addNode(const viz::GeoNode& node, std::int32_t above, Unit& unit) {
    const viz::EntityType own = typeOf(node);
    const viz::EntityType inherited =
        above >= 0 ? unit.nodes[static_cast<std::size_t>(above)].type : viz::InvalidType;
    const auto number = static_cast<std::uint32_t>(unit.nodes.size());
    unit.nodes.push_back({&node, above, own != viz::InvalidType ? own : inherited});
    for (const viz::AGeometryItem* item : node.EachGeometry()) {
        if (item != nullptr) {
            addItem(*item, number, unit);
        }
    }
    return number;
}

Unit makeUnit(const viz::GeoNode& top, bool withChildren) {
    Unit unit;
    std::vector<std::pair<const viz::GeoNode*, std::int32_t>> stack = {{&top, -1}};
    while (!stack.empty()) {
        const auto [node, above] = stack.back();
        stack.pop_back();
        const auto number = static_cast<std::int32_t>(addNode(*node, above, unit));
        if (withChildren) {
            pushChildren(*node,
                         [&](const viz::GeoNode& child) { stack.emplace_back(&child, number); });
        }
    }
    return unit;
}

// --- where they stand ---------------------------------------------------------------------------

class Divider {
public:
    explicit Divider(const viz::Node& root) : _divided(findDivided(root)) {}

    PickUnits Divide(const viz::Node& root);

private:
    struct Step {
        const viz::GeoNode* node;
        std::size_t depth;
        Matrix above;
        viz::EntityType type;
    };
    void visit(const Step& step);
    void place(const Step& step, const Matrix& world, bool withChildren);

    NodeSet _divided;
    PickUnits _result;
    std::unordered_map<const viz::GeoNode*, std::size_t> _unitOf;
    std::vector<const viz::GeoNode*> _path;
    std::vector<Step> _stack;
};

PickUnits Divider::Divide(const viz::Node& root) {
    _stack.push_back({&root, 0, identityMatrix, viz::InvalidType});
    while (!_stack.empty()) {
        const Step step = _stack.back();
        _stack.pop_back();
        visit(step);
    }
    return std::move(_result);
}

void Divider::visit(const Step& step) {
    _path.resize(step.depth);
    const std::optional<Matrix> own = placementOf(*step.node);
    const Matrix world = own ? product(step.above, *own) : step.above;
    if (_divided.count(step.node) == 0) {
        place(step, world, true);
        return;
    }
    if (!step.node->EachGeometry().empty()) {
        place(step, world, false);
    }
    _path.push_back(step.node);
    const viz::EntityType own_type = typeOf(*step.node);
    const viz::EntityType type = own_type != viz::InvalidType ? own_type : step.type;
    pushChildren(*step.node, [&](const viz::GeoNode& child) {
        _stack.push_back({&child, step.depth + 1, world, type});
    });
}

// A node is either divided or not, so that one map serves for both kinds of units.
void Divider::place(const Step& step, const Matrix& world, bool withChildren) {
    const auto [found, isNew] = _unitOf.try_emplace(step.node, _result.units.size());
    if (isNew) {
        _result.units.push_back(makeUnit(*step.node, withChildren));
    }
    _result.places.push_back({found->second, _path, world, step.type});
}

}  // namespace

PickUnits divideIntoUnits(const viz::Node& root) {
    return Divider(root).Divide(root);
}

Corners cornersOf(const Shape& shape, std::uint32_t number) {
    const int first = static_cast<int>(number);
    if (shape.form == Shape::Form::Points) {
        return {1, {first, 0, 0}};
    }
    if (shape.form == Shape::Form::Lines) {
        return {2, {first, first + 1, 0}};
    }
    const std::array<int, 3> triangle = shape.Triangle(first);
    return {3, {triangle[0], triangle[1], triangle[2]}};
}

}  // namespace kesview
