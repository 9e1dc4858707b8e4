#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/graph/AGeometryItem.h>

namespace KesVizCore {

/// A cloud of points: how it is drawn, not where.
///
/// @par Units and ranges
/// Point size in pixels, 1.0 at first, stored unchecked.
///
/// @par Ownership
/// As for every AGeometryItem. The points of the constructor are neither read nor kept.
///
/// @par Errors
/// No operation fails.
///
/// @par Threads
/// None of its own: items are used on the thread of their graph.
class KESVIZCORE_API AGeometryItemPointCloud : public AGeometryItem {
public:
    /// Note the order: the count first. @p points are @p count triples x, y, z; null allowed here.
    AGeometryItemPointCloud(const std::uint64_t& id, const int& count, float* points);

    std::string ToString() override;  ///< "PointCloud"

    double GetPointSize() const;                           ///< pixels
    virtual void SetPointSize(const double& size);         ///< pixels
    virtual void SetHighlighted(const bool& highlighted);  ///< stored for the host, which draws

protected:
    /// For a host that takes its points elsewhere.
    explicit AGeometryItemPointCloud(const std::uint64_t& id);

    double _pointSize;  ///< pixels
    bool _highlighted;  ///< false at first
};

}  // namespace KesVizCore
