#pragma once

#include <KesVizCore/Export.h>

namespace KesVizCore {

/// A box along the axes, or no box at all.
///
/// @par Units and ranges
/// Corners are 3 doubles x, y, z, in model units, stored unchecked: a low corner above the high
/// one is kept as it is.
///
/// @par Errors
/// No operation fails. Arrays must not be null.
///
/// @par Threads
/// A plain value: many threads may read one, a writer needs it to itself.
class KESVIZCORE_API VizBox {
public:
    /// Empty, with both corners at the origin.
    VizBox();
    /// Not empty, whatever the corners.
    VizBox(const double low[3], const double high[3]);

    /// Writes 3 doubles, also of an empty box.
    void GetLow(double out[3]) const;
    /// Writes 3 doubles, also of an empty box.
    void GetHigh(double out[3]) const;
    /// Writes 3 doubles: halfway between the corners, also of an empty box.
    void GetCenter(double out[3]) const;
    bool IsEmpty() const;  ///< true until something is added

    /// Widens the box to hold a point; an empty box becomes that point.
    ///
    /// An axis is widened only where the point lies below, or above, both corners, which makes a
    /// difference for a box whose low corner is above its high one.
    void Add(const double point[3]);
    /// Widens the box to hold both corners of another; an empty one changes nothing.
    void Add(const VizBox& other);
    /// Multiplies both corners: scales about the origin, not about the centre. A factor that is not
    /// above 0, or a NaN, changes nothing.
    void Scale(const double& factor);

private:
    double _low[3];
    double _high[3];
    bool _empty;
};

}  // namespace KesVizCore
