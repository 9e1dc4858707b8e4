#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/graph/AGeometryItem.h>

namespace KesVizCore {

/// A single point: how it is drawn, not where.
///
/// @par Units and ranges
/// Point size in pixels, 1.0 at first, stored unchecked.
///
/// @par Ownership
/// As for every AGeometryItem. The position of the constructor is neither read nor kept.
///
/// @par Errors
/// No operation fails.
///
/// @par Threads
/// None of its own: items are used on the thread of their graph.
class KESVIZCORE_API AGeometryItemVertex : public AGeometryItem {
public:
    /// @p position is x, y, z; null allowed here.
    AGeometryItemVertex(const std::uint64_t& id, float* const position);

    std::string ToString() override;  ///< "Vertex"

    double GetPointSize() const;            ///< pixels
    void SetPointSize(const double& size);  ///< pixels

protected:
    double _pointSize;  ///< pixels
};

}  // namespace KesVizCore
