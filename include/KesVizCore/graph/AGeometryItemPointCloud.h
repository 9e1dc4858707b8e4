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
    /// Note the order: the count first. @p points are @p count triples x, y, z.
    AGeometryItemPointCloud(const std::uint64_t& id, const int& count, float* points);

    std::string ToString() override;

    double GetPointSize() const;
    virtual void SetPointSize(const double& size);
    virtual void SetHighlighted(const bool& highlighted);

protected:
    explicit AGeometryItemPointCloud(const std::uint64_t& id);

    double _pointSize;
    bool _highlighted;
};

}  // namespace KesVizCore
