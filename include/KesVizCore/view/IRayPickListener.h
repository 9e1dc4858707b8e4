#pragma once

#include <KesVizCore/Export.h>

namespace KesVizCore {

struct Ray;

/// Told of every ray that a view picks with (IView3D::NotifyPick).
///
/// @par Ownership
/// The host's own; the view keeps a pointer to it and never destroys it.
///
/// @par Errors
/// What it throws passes through to the caller of NotifyPick.
///
/// @par Threads
/// Called on the thread of the view.
class KESVIZCORE_API IRayPickListener {
public:
    /// @p ray is gone when the call returns: copy what is kept.
    virtual void OnPick(const Ray& ray) = 0;
    virtual ~IRayPickListener();
};

}  // namespace KesVizCore
