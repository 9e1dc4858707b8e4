#pragma once

#include <KesVizCore/Export.h>

namespace KesVizCore {

/// What a host shows by filter id: the tags that entity-type nodes carry (GeoNode::GetFilterID).
///
/// @par Ownership
/// The adapter owns its filter manager and destroys it with itself.
///
/// @par Errors
/// The library calls nothing here but the destructor; the rest is between host and host.
///
/// @par Threads
/// Used on the thread of the view.
class KESVIZCORE_API AFilterManager {
public:
    virtual ~AFilterManager();

    /// Shows or hides every node of @p filterId.
    virtual void SetVisible(int filterId, bool visible) = 0;
    /// Whether nodes of @p filterId are shown.
    virtual bool IsVisible(int filterId) const = 0;
    /// Shows everything again.
    virtual void Reset() = 0;
};

}  // namespace KesVizCore
