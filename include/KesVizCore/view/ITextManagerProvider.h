#pragma once

#include <KesVizCore/Export.h>

namespace KesVizCore {

/// A hook for what hands out the host's text managers: an empty base that hosts may derive from.
///
/// @par Ownership
/// The host's own; it may be destroyed through this base.
///
/// @par Errors
/// None.
///
/// @par Threads
/// None: it holds nothing.
class KESVIZCORE_API ITextManagerProvider {
public:
    ITextManagerProvider() = default;
    ITextManagerProvider(const ITextManagerProvider& other) = default;  ///< nothing to copy
    ITextManagerProvider(ITextManagerProvider&& other) = default;       ///< nothing to move
    /// Nothing to copy.
    ITextManagerProvider& operator=(const ITextManagerProvider& other) = default;
    ITextManagerProvider& operator=(ITextManagerProvider&& other) = default;  ///< nothing to move
    virtual ~ITextManagerProvider();
};

}  // namespace KesVizCore
