#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/graph/AGeometryItem.h>

namespace KesVizCore {

/// A chain of straight lines: how it is drawn, not where.
///
/// @par Units and ranges
/// Thickness in pixels, 2.0 at first; the stipple is a 16-bit pattern, 0 (solid) at first. Both
/// are stored unchecked.
///
/// @par Ownership
/// As for every AGeometryItem. The points of the constructor are neither read nor kept.
///
/// @par Errors
/// No operation fails.
///
/// @par Threads
/// None of its own: items are used on the thread of their graph.
class KESVIZCORE_API AGeometryItemPolyline : public AGeometryItem {
public:
    /// @p points are @p count triples x, y, z; null allowed here.
    AGeometryItemPolyline(const std::uint64_t& id, float* points, int count);

    std::string ToString() override;  ///< "Polyline"

    float GetThickness() const;             ///< pixels
    void SetThickness(float thickness);     ///< pixels
    short GetStipple() const;               ///< 0 for a solid line
    void SetStipple(short stipple);         ///< read by the host alone
    void SetHighlighted(bool highlighted);  ///< stored for the host, which draws

protected:
    /// For a host that takes its points elsewhere.
    explicit AGeometryItemPolyline(const std::uint64_t& id);

    bool _highlighted;  ///< false at first
    float _thickness;   ///< pixels
    short _stipple;     ///< 0 for a solid line
};

}  // namespace KesVizCore
