#pragma once

/// @file
/// A walk over all that is shown, in the order of the graph: a node's own items, then its children
/// by ascending id. An item of a shared node is met once for each path that leads to it.

#include "document/Document.h"
#include "view/Showing.h"

#include <KesVizCore/core/RGBAColor.h>
#include <KesVizCore/graph/Node.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace KesVizCore {
class AGeometryItem;
class AttributeLineStyle;
class RenderingOptions;
}  // namespace KesVizCore

namespace kesview {

Color toColor(const viz::RGBAColor& color);

/// The placement of a node in its parent; none where it has no transform.
std::optional<Matrix> placementOf(const viz::GeoNode& node);

/// While it lives the graph and the marks must stay as they are. It makes no memory for a node but
/// where the path grows longer than ever before.
///
/// Colours: a node's own colour wins over what it inherits, unless that has priority and its own
/// has not. Below nodes of edges and vertices nothing is inherited from above these. An item's own
/// colour is that of a node of its own, without priority. What has none is in the default of its
/// type; what is highlighted in the colour of the highlight.
class ShownWalk {
public:
    ShownWalk(const viz::Node& root, const Showing& showing,
              const HighlightStrategy::Marks& highlights, const viz::RenderingOptions& options);
    /// Only what lies at or below @p top; to be said before the first step. Empty is no limit.
    void LimitTo(const viz::RenderId& top);

    /// Moves on to the next item; false when there is none left.
    bool Next();

    /// @name The item that was reached
    /// @{
    viz::AGeometryItem& Item() const { return *_item; }
    const Matrix& WorldFromLocal() const { return _levels.back().world; }
    /// A number that is the same for items in the same place.
    std::size_t PlaceNumber() const { return _levels.back().placeNumber; }
    viz::RenderId Path() const;
    viz::EntityType Type() const { return _levels.back().type; }
    bool IsAnnotation() const { return _levels.back().annotation; }
    bool IsHighlighted() const { return _levels.back().highlight.has_value(); }
    Color GetColor() const;
    /// Null where no node on the path has one.
    viz::AttributeLineStyle* LineStyle() const { return _levels.back().lineStyle; }
    /// @}

private:
    struct Level {
        const viz::GeoNode* node = nullptr;
        std::size_t nextItem = 0;
        viz::ChildRange::Iterator nextChild;
        viz::ChildRange::Iterator endOfChildren;
        ShowState show;
        const HighlightStrategy::Marks::Place* marks = nullptr;
        std::optional<Color> highlight;
        std::optional<Color> color;
        bool colorHasPriority = false;
        bool annotation = false;
        viz::EntityType type = viz::InvalidType;
        viz::AttributeLineStyle* lineStyle = nullptr;
        std::size_t placeNumber = 0;
        Matrix world = identityMatrix;
    };

    void enter(const viz::GeoNode& node, const Level& above);
    void applyNode(const viz::GeoNode& node, Level& level);
    void applyColor(const viz::GeoNode& node, Level& level) const;
    bool nextItem(Level& level);
    static const viz::GeoNode* nextChild(Level& level);
    static const viz::GeoNode* onlyChild(Level& level, std::uint64_t id);
    Color defaultColor(viz::EntityType type) const;

    const Showing& _showing;
    const viz::RenderingOptions& _options;
    viz::RenderId _top;
    std::vector<Level> _levels;
    std::size_t _places = 0;
    viz::AGeometryItem* _item = nullptr;
};

}  // namespace kesview
