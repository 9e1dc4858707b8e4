/// @file
/// See BodyOrigin.h.

#include "reading/occ/BodyOrigin.h"

#include <Bnd_Box.hxx>
#include <algorithm>
#include <cmath>
#include <gp_Pnt.hxx>

namespace kesview {

Vector bodyOrigin(const Bnd_Box& box) {
    constexpr double farAway = 1000;    // in sizes of the body
    constexpr double pointSize = 1e-5;  // millimetres; a lone point has no shape to blur
    if (box.IsVoid()) {
        return {0, 0, 0};
    }
    const gp_XYZ low = box.CornerMin().XYZ();
    const gp_XYZ high = box.CornerMax().XYZ();
    double reach = 0;
    for (int axis = 1; axis <= 3; ++axis) {
        reach = std::max({reach, std::abs(low.Coord(axis)), std::abs(high.Coord(axis))});
    }
    const double size = (high - low).Modulus();
    if (size < pointSize || reach < farAway * size) {
        return {0, 0, 0};
    }
    const gp_XYZ middle = (low + high) / 2;
    return {std::round(middle.X()), std::round(middle.Y()), std::round(middle.Z())};
}

}  // namespace kesview
