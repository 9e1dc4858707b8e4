/// @file
/// See SplineCurve.h.

#include "reading/part21/SplineCurve.h"

#include <algorithm>
#include <array>

namespace kesview {
namespace {

using Homogeneous = std::array<double, 4>;

Homogeneous blend(const Homogeneous& a, const Homogeneous& b, double share) {
    Homogeneous result{};
    for (std::size_t i = 0; i < 4; ++i) {
        result[i] = a[i] * (1 - share) + b[i] * share;
    }
    return result;
}

}  // namespace

bool isValid(const SplineCurve& curve) {
    return curve.degree >= 1 && curve.degree <= 32 && curve.poles.size() > curve.degree &&
           curve.knots.size() == curve.poles.size() + curve.degree + 1 &&
           (curve.weights.empty() || curve.weights.size() == curve.poles.size()) &&
           std::is_sorted(curve.knots.begin(), curve.knots.end());
}

// de Boor's algorithm on homogeneous poles.
Vector pointAt(const SplineCurve& curve, double parameter) {
    const std::size_t degree = curve.degree;
    const auto& knots = curve.knots;
    std::size_t span = degree;
    while (span + 1 < curve.poles.size() && knots[span + 1] <= parameter) {
        ++span;
    }
    std::vector<Homogeneous> d(degree + 1);
    for (std::size_t i = 0; i <= degree; ++i) {
        const std::size_t pole = span - degree + i;
        const double weight = curve.weights.empty() ? 1 : curve.weights[pole];
        const Vector& p = curve.poles[pole];
        d[i] = {p[0] * weight, p[1] * weight, p[2] * weight, weight};
    }
    for (std::size_t level = 1; level <= degree; ++level) {
        for (std::size_t i = degree; i >= level; --i) {
            const double low = knots[span - degree + i];
            const double width = knots[span + 1 + i - level] - low;
            d[i] = blend(d[i - 1], d[i], width > 0 ? (parameter - low) / width : 0);
        }
    }
    const Homogeneous& end = d[degree];
    const double weight = end[3] == 0 ? 1 : end[3];
    return {end[0] / weight, end[1] / weight, end[2] / weight};
}

std::vector<Vector> sample(const SplineCurve& curve) {
    constexpr int chords = 8;
    std::vector<Vector> line;
    for (std::size_t span = curve.degree; span < curve.poles.size(); ++span) {
        const double from = curve.knots[span];
        const double to = curve.knots[span + 1];
        for (int i = 0; to > from && i < chords; ++i) {
            line.push_back(pointAt(curve, from + (to - from) * i / chords));
        }
    }
    line.push_back(pointAt(curve, curve.knots[curve.poles.size()]));
    return line;
}

}  // namespace kesview
