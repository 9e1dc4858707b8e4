#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/graph/AGeometryItem.h>

namespace KesVizCore {

/// A closed chain of straight lines with its area filled: how it is drawn, not where.
///
/// @par Units and ranges
/// Thickness in pixels, 2.0 at first, stored unchecked.
///
/// @par Ownership
/// As for every AGeometryItem. The points of the constructor are neither read nor kept.
///
/// @par Errors
/// No operation fails.
///
/// @par Threads
/// None of its own: items are used on the thread of their graph.
class KESVIZCORE_API AGeometryItemFilledPolyline : public AGeometryItem {
public:
    /// @p points are @p count triples x, y, z; null allowed here.
    AGeometryItemFilledPolyline(const std::uint64_t& id, float* points, int count);

    std::string ToString() override;  ///< "FilledPolyline"

    float GetThickness() const;             ///< pixels
    void SetThickness(float thickness);     ///< pixels
    void SetHighlighted(bool highlighted);  ///< stored for the host, which draws

protected:
    /// For a host that takes its points elsewhere.
    explicit AGeometryItemFilledPolyline(const std::uint64_t& id);

    bool _highlighted;  ///< false at first
    float _thickness;   ///< pixels
};

}  // namespace KesVizCore
