#include "view/ShownWalk.h"

#include "view/Items.h"
#include "view/Vectors.h"

#include <KesVizCore/graph/AttributeColor.h>
#include <KesVizCore/graph/AttributeLineStyle.h>
#include <KesVizCore/graph/AttributeTransform.h>
#include <KesVizCore/scene/RenderingOptions.h>

#include <algorithm>
#include <cmath>

namespace kesview {

Color toColor(const viz::RGBAColor& color) {
    return {color.GetRed(), color.GetGreen(), color.GetBlue(), color.GetAlpha()};
}

std::optional<Matrix> placementOf(const viz::GeoNode& node) {
    auto* const transform =
        dynamic_cast<viz::AttributeTransform*>(node.GetAttribute(viz::AttributeType::Transform));
    if (transform == nullptr) {
        return std::nullopt;
    }
    Matrix matrix;
    std::copy_n(transform->GetTransform(), 16, matrix.begin());
    return matrix;
}

// --- going down ---------------------------------------------------------------------------------

ShownWalk::ShownWalk(const viz::Node& root, const Showing& showing,
                     const HighlightStrategy::Marks& highlights,
                     const viz::RenderingOptions& options)
    : _showing(showing), _options(options) {
    Level above;
    above.show = showing.Begin();
    above.marks = highlights.IsEmpty() ? nullptr : &highlights.Top();
    _levels.reserve(16);
    enter(root, above);
}

void ShownWalk::LimitTo(const viz::RenderId& top) {
    _top = top;
    if (!top.IsEmpty() && !_levels.empty() && _levels.front().node->Id() != top[0]) {
        _levels.clear();
    }
}

void ShownWalk::enter(const viz::GeoNode& node, const Level& above) {
    // The copy comes first: growing the list moves the level above.
    Level level = above;
    if (!_showing.Enter(node, level.show)) {
        return;
    }
    applyNode(node, level);
    _levels.push_back(level);
}

void ShownWalk::applyNode(const viz::GeoNode& node, Level& level) {
    const auto* const group = dynamic_cast<const viz::Node*>(&node);
    level.node = &node;
    level.nextItem = 0;
    level.nextChild = level.endOfChildren = {};
    if (group != nullptr) {
        level.nextChild = group->EachChild().begin();
        level.endOfChildren = group->EachChild().end();
    }
    level.marks = level.marks != nullptr ? level.marks->Below(node.Id()) : nullptr;
    if (level.marks != nullptr && level.marks->value) {
        level.highlight = *level.marks->value;
    }
    const viz::EntityType type = typeOf(node);
    if (type != viz::InvalidType) {
        level.type = type;
        level.annotation = isAnnotation(type);
    }
    if (type == viz::EdgeType || type == viz::VertexType) {
        level.color.reset();
        level.colorHasPriority = false;
    }
    if (node.GetAttribute(viz::AttributeType::Color) != nullptr) {
        applyColor(node, level);
    }
    if (auto* const style = dynamic_cast<viz::AttributeLineStyle*>(
            node.GetAttribute(viz::AttributeType::LineStyle))) {
        level.lineStyle = style;
    }
    if (const std::optional<Matrix> placement = placementOf(node)) {
        level.world = product(level.world, *placement);
        level.placeNumber = ++_places;
    }
}

void ShownWalk::applyColor(const viz::GeoNode& node, Level& level) const {
    auto* const color =
        dynamic_cast<viz::AttributeColor*>(node.GetAttribute(viz::AttributeType::Color));
    if (color != nullptr && (!level.colorHasPriority || color->HasPriority())) {
        level.color = toColor(color->GetColor());
        level.colorHasPriority = color->HasPriority();
    }
}

// --- going on -----------------------------------------------------------------------------------

bool ShownWalk::nextItem(Level& level) {
    const auto& items = level.node->EachGeometry();
    while (level.nextItem < items.size()) {
        viz::AGeometryItem* const item = items.begin()[level.nextItem++];
        if (item != nullptr && item->IsVisible()) {
            _item = item;
            return true;
        }
    }
    return false;
}

bool ShownWalk::Next() {
    while (!_levels.empty()) {
        Level& level = _levels.back();
        const int depth = static_cast<int>(_levels.size());
        const bool isAbove = depth < _top.Length();
        if (!isAbove && level.show.ShowsItems() && nextItem(level)) {
            return true;
        }
        const viz::GeoNode* const child =
            isAbove ? onlyChild(level, _top[depth]) : nextChild(level);
        if (child != nullptr) {
            enter(*child, level);
        } else {
            _levels.pop_back();
        }
    }
    return false;
}

const viz::GeoNode* ShownWalk::nextChild(Level& level) {
    if (level.nextChild == level.endOfChildren) {
        return nullptr;
    }
    const viz::GeoNode* const child = level.nextChild->child;
    ++level.nextChild;
    return child;
}

const viz::GeoNode* ShownWalk::onlyChild(Level& level, std::uint64_t id) {
    if (level.nextChild == level.endOfChildren) {
        return nullptr;
    }
    level.nextChild = level.endOfChildren;
    return static_cast<const viz::Node*>(level.node)->GetChild(id);
}

viz::RenderId ShownWalk::Path() const {
    viz::RenderId path({}, viz::View3D);
    for (const Level& level : _levels) {
        path.AddValue(level.node->Id());
    }
    return path;
}

// --- colours ------------------------------------------------------------------------------------

Color ShownWalk::defaultColor(viz::EntityType type) const {
    switch (type) {
        case viz::FaceType:
            return toColor(_options.GetDefaultFaceColor());
        case viz::EdgeType:
        case viz::WireType:
            return toColor(_options.GetDefaultEdgeColor());
        case viz::VertexType:
            return toColor(_options.GetDefaultVertexColor());
        case viz::CloudType:
        case viz::PointSetType:
            return toColor(_options.GetDefaultCloudColor());
        default:
            return toColor(isAnnotation(type) ? _options.GetDefaultPMIColor()
                                              : _options.GetDefaultBodyColor());
    }
}

namespace {

Color colorOf(const viz::AGeometryItem& item) {
    Color color;
    for (std::size_t channel = 0; channel < 4; ++channel) {
        const float value = std::clamp(item.GetColor()[channel], 0.0F, 1.0F);
        color[channel] = static_cast<std::uint8_t>(std::lround(255 * value));
    }
    return color;
}

}  // namespace

Color ShownWalk::GetColor() const {
    const Level& level = _levels.back();
    if (level.highlight) {
        return *level.highlight;
    }
    if (!level.colorHasPriority && hasOwnColor(*_item)) {
        return colorOf(*_item);
    }
    return level.color ? *level.color : defaultColor(level.type);
}

}  // namespace kesview
