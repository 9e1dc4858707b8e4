#pragma once

#include <KesVizCore/Export.h>

namespace KesVizCore {

class RenderId;

/// Something that a host does to nodes and takes back: highlighting, hiding.
///
/// The adapter holds one for highlighting and one for hiding; of their operations the library
/// itself calls IsApplied alone (AView3DAdapter::IsHighlighted).
///
/// @par Ownership
/// The host's own; the adapter keeps a pointer and never destroys it.
///
/// @par Errors
/// Apply and Undo answer false where nothing was done.
///
/// @par Threads
/// Used on the thread of the view.
class KESVIZCORE_API IViewDoUndoStrategy {
public:
    /// Highlights or hides the node at @p id.
    virtual bool Apply(const RenderId& id) = 0;
    /// Takes back what Apply did to the node at @p id.
    virtual bool Undo(const RenderId& id) = 0;
    /// Takes back all that Apply did.
    virtual void UndoAll() = 0;
    /// Whether @p id has been applied and not undone.
    virtual bool IsApplied(const RenderId& id) = 0;
    virtual ~IViewDoUndoStrategy();
};

}  // namespace KesVizCore
