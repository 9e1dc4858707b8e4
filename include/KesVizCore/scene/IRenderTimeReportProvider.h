#pragma once

#include <KesVizCore/Export.h>

namespace KesVizCore {

/// Something that adds up the time it spends rendering.
///
/// @par Units and ranges
/// Seconds.
///
/// @par Ownership
/// It has no virtual destructor and is not destroyed through this interface.
///
/// @par Errors
/// Those of the host; the library calls nothing here.
///
/// @par Threads
/// Those of the renderer.
class KESVIZCORE_API IRenderTimeReportProvider {
public:
    /// The sum since the last ClearRenderTime.
    virtual double GetRenderTime() const = 0;
    /// Adds to the sum.
    virtual void AddRenderTime(double seconds) = 0;
    /// Sets the sum to 0.
    virtual void ClearRenderTime() = 0;

protected:
    ~IRenderTimeReportProvider() = default;
};

}  // namespace KesVizCore
