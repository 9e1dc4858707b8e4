#pragma once

#include <KesVizCore/Export.h>

namespace KesVizCore {

class AView3DAdapter;

/// The host's maker of view adapters.
///
/// @par Ownership
/// VizFactories owns the installed factory and destroys it. The caller of MakeView3DAdapter owns
/// the adapter.
///
/// @par Errors
/// Null where the host cannot make one; what its operation throws passes through.
///
/// @par Threads
/// Those of the host's adapter.
class KESVIZCORE_API AView3DAdapterFactory {
public:
    AView3DAdapterFactory() = default;
    AView3DAdapterFactory(const AView3DAdapterFactory& other) = default;  ///< nothing to copy
    /// Nothing to copy.
    AView3DAdapterFactory& operator=(const AView3DAdapterFactory& other) = default;

    /// What makeView3DAdapterImpl makes, owned by the caller, or null.
    AView3DAdapter* MakeView3DAdapter();

protected:
    /// A new adapter of the host's class, owned by the caller, or null.
    virtual AView3DAdapter* makeView3DAdapterImpl() = 0;

public:
    virtual ~AView3DAdapterFactory();
};

}  // namespace KesVizCore
