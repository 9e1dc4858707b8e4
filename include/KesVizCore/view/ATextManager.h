#pragma once

#include <KesVizCore/Export.h>

namespace KesVizCore {

/// A hook for the host's handling of texts: an empty base that hosts may derive from.
///
/// @par Ownership
/// The host's own; there is no virtual destructor.
///
/// @par Errors
/// None.
///
/// @par Threads
/// None: it holds nothing.
class KESVIZCORE_API ATextManager {
public:
    ATextManager() = default;
    ATextManager(const ATextManager& other) = default;             ///< nothing to copy
    ATextManager(ATextManager&& other) = default;                  ///< nothing to move
    ATextManager& operator=(const ATextManager& other) = default;  ///< nothing to copy
    ATextManager& operator=(ATextManager&& other) = default;       ///< nothing to move
};

}  // namespace KesVizCore
