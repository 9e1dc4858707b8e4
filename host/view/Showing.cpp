#include "view/Showing.h"

#include <KesVizCore/graph/AttributeVisibility.h>
#include <KesVizCore/graph/GeoNode.h>
#include <KesVizCore/scene/RenderingOptions.h>

#include <cstdint>

namespace kesview {

viz::EntityType typeOf(const viz::GeoNode& node) {
    const int filterId = node.GetFilterID();
    return filterId < 0 ? viz::InvalidType
                        : viz::EntityId::GetTypeFromInt(static_cast<std::uint64_t>(filterId));
}

bool isAnnotation(viz::EntityType type) {
    return viz::EntityId(0, type, 0).IsAnnotation();
}

Showing::Showing(const HideStrategy::Marks& marks, const PathMarks<bool>& isolation,
                 const FilterManager& filter, const viz::RenderingOptions& options)
    : _marks(marks), _isolation(isolation), _filter(filter), _options(options) {}

ShowState Showing::Begin() const {
    ShowState state;
    state.marks = _marks.IsEmpty() ? nullptr : &_marks.Top();
    state.isolated = _isolation.IsEmpty();
    state.isolation = state.isolated ? nullptr : &_isolation.Top();
    return state;
}

bool Showing::showsType(int filterId) const {
    if (!_filter.IsVisible(filterId)) {
        return false;
    }
    switch (filterId) {
        case viz::FaceType:
            return _options.GetDisplayFaces();
        case viz::EdgeType:
            return _options.GetDisplayEdges();
        case viz::VertexType:
            return _options.GetDisplayVertices();
        case viz::CloudType:
        case viz::PointSetType:
            return _options.GetDisplayClouds();
        default:
            return _options.GetDisplayPMI() ||
                   !isAnnotation(viz::EntityId::GetTypeFromInt(
                       static_cast<std::uint64_t>(static_cast<std::int64_t>(filterId))));
    }
}

namespace {

bool saysHidden(const viz::GeoNode& node) {
    auto* const visibility =
        dynamic_cast<viz::AttributeVisibility*>(node.GetAttribute(viz::AttributeType::Visibility));
    return visibility != nullptr && !visibility->GetIsVisible();
}

}  // namespace

bool Showing::Enter(const viz::GeoNode& node, ShowState& state) const {
    const int filterId = node.GetFilterID();
    if (filterId != -1 && !showsType(filterId)) {
        return false;
    }
    state.marks = state.marks != nullptr ? state.marks->Below(node.Id()) : nullptr;
    if (state.marks != nullptr && state.marks->value) {
        state.hidden = *state.marks->value == Shownness::Hidden;
        state.forced = !state.hidden;
    } else if (!state.forced && saysHidden(node)) {
        state.hidden = true;
    }
    if (!state.isolated) {
        state.isolation = state.isolation != nullptr ? state.isolation->Below(node.Id()) : nullptr;
        state.isolated = state.isolation != nullptr && state.isolation->value.has_value();
    }
    const bool canBeIsolated = state.isolated || state.isolation != nullptr;
    const bool canBeShown =
        !state.hidden || (state.marks != nullptr && !state.marks->below.empty());
    return canBeIsolated && canBeShown;
}

}  // namespace kesview
