#pragma once

#include <KesVizCore/Export.h>

#include <cstdint>

namespace KesVizCore {

/// What a renderer counted while it rendered.
///
/// @par Units and ranges
/// Plain counts; which of them a renderer fills is its own choice.
///
/// @par Errors
/// None.
///
/// @par Threads
/// A plain value: many threads may read one, a writer needs it to itself.
struct KESVIZCORE_API RendererReport {
    std::uint64_t Bodies = 0;       ///< bodies that it rendered
    std::uint64_t Faces = 0;        ///< faces that it rendered
    std::uint64_t Edges = 0;        ///< edges that it rendered
    std::uint64_t Vertices = 0;     ///< vertices that it rendered
    std::uint64_t Annotations = 0;  ///< annotations that it rendered
    std::uint64_t Triangles = 0;    ///< triangles that it rendered
};

/// Something that counts what it renders, when told to.
///
/// @par Ownership
/// It has no virtual destructor and is not destroyed through this interface.
///
/// @par Errors
/// No operation fails.
///
/// @par Threads
/// Those of the renderer.
class KESVIZCORE_API IRendererReportProvider {
public:
    /// Turns counting on or off; the counts stay.
    virtual void SetReportMode(const bool& on) = 0;
    /// Whether counting is on.
    virtual bool GetReportMode() = 0;
    /// Sets all counts to 0.
    virtual void ClearReport() = 0;
    /// The counts, valid as long as the provider.
    virtual RendererReport& GetReport() = 0;

protected:
    ~IRendererReportProvider() = default;
};

}  // namespace KesVizCore
