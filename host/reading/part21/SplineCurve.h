#pragma once

/// @file
/// B-spline curves as polylines.

#include "reading/part21/Placement.h"

#include <vector>

namespace kesview {

struct SplineCurve {
    std::size_t degree = 0;
    std::vector<Vector> poles;
    std::vector<double> weights;  ///< one for each pole, or none
    std::vector<double> knots;    ///< with their multiplicities, poles + degree + 1 in all
};

/// True when the counts fit and the knots do not descend.
bool isValid(const SplineCurve& curve);

/// The point at @p parameter, within the knots, of a valid curve.
Vector pointAt(const SplineCurve& curve, double parameter);

/// Eight chords for each span between knots of a valid curve.
std::vector<Vector> sample(const SplineCurve& curve);

}  // namespace kesview
