#pragma once

/// @file
/// How this host highlights, hides and filters.
///
/// The state stands in the graph: a mark on the node that was named, and the items' own colours
/// and flags. So nothing is left over when a node is deleted, and the marks show in the dumps.

#include <KesVizCore/core/RGBAColor.h>
#include <KesVizCore/view/AFilterManager.h>
#include <KesVizCore/view/IViewDoUndoStrategy.h>

#include <functional>
#include <memory>
#include <set>
#include <utility>

namespace KesVizCore {
class AGeometryItem;
class Attribute;
class AView3DAdapter;
class GeoNode;
struct AttributeType;
}  // namespace KesVizCore

namespace host {

namespace viz = KesVizCore;

/// Does something to a node and takes it back.
class NodeStrategy : public viz::IViewDoUndoStrategy {
public:
    explicit NodeStrategy(viz::AView3DAdapter& adapter) : _adapter(adapter) {}

    bool Apply(const viz::RenderId& id) override;
    /// Also takes back what was done to nodes below. What was done above stays.
    bool Undo(const viz::RenderId& id) override;
    void UndoAll() override;
    /// Whether just this node was named, not one above or below it.
    bool IsApplied(const viz::RenderId& id) override;

private:
    virtual viz::AttributeType markType() const = 0;
    /// Whether an attribute of that type is the mark.
    virtual bool isMark(viz::Attribute& attribute) const;
    virtual std::unique_ptr<viz::Attribute> makeMark(const viz::GeoNode& node) const = 0;
    virtual void applyTo(viz::GeoNode& named) const = 0;
    /// Whether there was something to take back.
    virtual bool undoOnItem(viz::AGeometryItem& item) const = 0;
    bool undoOnNode(viz::GeoNode& node) const;

    viz::AView3DAdapter& _adapter;
};

/// Shows all items at and below a node in another colour; the mark keeps the node's own.
///
/// An item has one colour, so that below a shared node it is highlighted at every reference.
class HighlightStrategy : public NodeStrategy {
public:
    using NodeStrategy::NodeStrategy;

    /// The colour in which Apply highlights from now on.
    void SetColor(const viz::RGBAColor& color) { _color = color; }

private:
    viz::AttributeType markType() const override;
    std::unique_ptr<viz::Attribute> makeMark(const viz::GeoNode& node) const override;
    void applyTo(viz::GeoNode& named) const override;
    bool undoOnItem(viz::AGeometryItem& item) const override;

    viz::RGBAColor _color;
};

/// Hides a node's own items; the mark, an attribute of visibility that says hidden, hides what
/// lies below the node. So one of several references is hidden by the node that holds it.
class HideStrategy : public NodeStrategy {
public:
    using NodeStrategy::NodeStrategy;

private:
    viz::AttributeType markType() const override;
    bool isMark(viz::Attribute& attribute) const override;
    std::unique_ptr<viz::Attribute> makeMark(const viz::GeoNode& node) const override;
    void applyTo(viz::GeoNode& named) const override;
    bool undoOnItem(viz::AGeometryItem& item) const override;
};

/// Which filter ids are not shown; the walk for what is shown asks it for each node.
class FilterManager : public viz::AFilterManager {
public:
    /// @p onChange is called after every change.
    explicit FilterManager(std::function<void()> onChange) : _onChange(std::move(onChange)) {}

    void SetVisible(int filterId, bool visible) override;
    bool IsVisible(int filterId) const override { return _hidden.count(filterId) == 0; }
    void Reset() override;

private:
    std::function<void()> _onChange;
    std::set<int> _hidden;
};

}  // namespace host
