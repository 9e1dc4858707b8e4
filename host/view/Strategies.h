#pragma once

/// @file
/// Highlighting and hiding, kept by path: one of several references to a shared node can be
/// highlighted or hidden alone.
///
/// A mark holds for its path and all below it, up to the next mark further down. Marks outlive the
/// nodes that they are for: a scene that is built again looks as before.

#include "document/Document.h"
#include "view/PathMarks.h"

#include <KesVizCore/view/IViewDoUndoStrategy.h>

#include <functional>
#include <optional>

namespace KesVizCore {
class GeoNode;
}

namespace kesview {

/// Asks the scene for the node at a path; null where there is none.
using FindNode = std::function<viz::GeoNode*(const viz::RenderId&)>;

/// Marks are a colour, or none where a part of something highlighted is not.
class HighlightStrategy final : public viz::IViewDoUndoStrategy {
public:
    using Marks = PathMarks<std::optional<Color>>;

    explicit HighlightStrategy(FindNode find);

    /// What Apply highlights in from now on.
    void SetColor(const Color& color) { _color = color; }
    /// False where there is no such node.
    bool Apply(const viz::RenderId& id) override;
    /// False where neither the node nor anything below it was highlighted.
    bool Undo(const viz::RenderId& id) override;
    void UndoAll() override { _marks.Clear(); }
    /// Whether just this path was highlighted, and not only one above or below.
    bool IsApplied(const viz::RenderId& id) override;

    const Marks& GetMarks() const { return _marks; }
    Marks& GetMarks() { return _marks; }

private:
    FindNode _find;
    Color _color = {255, 140, 0, 255};
    Marks _marks;
};

enum class Shownness { Shown, Hidden };

/// Hides on Apply and shows on Undo. Shown is a mark as well: it shows also what the file hides,
/// and what lies below something hidden.
class HideStrategy final : public viz::IViewDoUndoStrategy {
public:
    using Marks = PathMarks<Shownness>;

    explicit HideStrategy(FindNode find);

    /// False where there is no such node, or where it is hidden already.
    bool Apply(const viz::RenderId& id) override;
    /// False where there is no such node.
    bool Undo(const viz::RenderId& id) override;
    /// Back to what the file shows.
    void UndoAll() override { _marks.Clear(); }
    /// Whether just this path was hidden.
    bool IsApplied(const viz::RenderId& id) override;

    const Marks& GetMarks() const { return _marks; }
    Marks& GetMarks() { return _marks; }

private:
    FindNode _find;
    Marks _marks;
};

}  // namespace kesview
