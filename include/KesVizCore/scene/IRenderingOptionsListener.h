#pragma once

#include <KesVizCore/Export.h>

namespace KesVizCore {

class RenderingOptions;

/// One who is told when rendering options change; completed by the host.
///
/// @par Ownership
/// The host owns its listeners and removes them from the options before it destroys them.
///
/// @par Errors
/// What OnOptionsChange throws passes through the setter that told it.
///
/// @par Threads
/// Called on the thread that changes the options.
class KESVIZCORE_API IRenderingOptionsListener {
public:
    virtual ~IRenderingOptionsListener() = default;

    /// The options become what @p changed holds.
    ///
    /// @p changed is never null, is a copy, and is gone when the change is done; what is done to
    /// it does not reach the options. The listener may add and remove listeners of the options,
    /// itself included, and set other options. An option that it sets each time it is told tells
    /// it again without end, because the old value is still in place; but for an antialias
    /// level that is allowed, which is stored first.
    virtual void OnOptionsChange(RenderingOptions* changed) = 0;
};

}  // namespace KesVizCore
