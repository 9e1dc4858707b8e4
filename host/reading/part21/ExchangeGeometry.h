#pragma once

/// @file
/// Points, frames and curves of an exchange file.

#include "reading/part21/ExchangeFile.h"
#include "reading/part21/Placement.h"

#include <map>
#include <optional>
#include <vector>

namespace kesview {

/// Reads geometry in millimetres.
///
/// @par Errors
/// What is damaged or of an unknown kind answers none.
class ExchangeGeometry {
public:
    /// @p lengthScale millimetres and @p angleScale radians in one unit of the representation.
    /// @p file must outlive this.
    ExchangeGeometry(const ExchangeFile& file, double lengthScale, double angleScale)
        : _file(file), _lengthScale(lengthScale), _angleScale(angleScale) {}

    double LengthScale() const { return _lengthScale; }

    /// Of a coordinate list of two or three numbers.
    std::optional<Vector> Coordinates(const ExchangeValue& list) const;
    std::optional<Vector> Point(EntityNumber number) const;
    std::optional<Vector> Direction(EntityNumber number) const;
    std::optional<Placement> Frame(EntityNumber number) const;

    /// A curve as a polyline: polylines, circles, ellipses, B-splines, trimmed and composite
    /// curves. Arcs are split every 7.5 degrees.
    std::optional<std::vector<Vector>> Curve(EntityNumber number) const;

private:
    using Polyline = std::vector<Vector>;

    /// Of one curve: how deep it is within curves, and those that were read, which may repeat.
    struct Walk {
        int depth = 0;
        std::map<EntityNumber, Polyline> known;
    };

    std::optional<Polyline> CurveWithin(EntityNumber number, Walk& walk) const;
    std::optional<Polyline> CurveOf(const ExchangeInstance& curve, Walk& walk) const;
    std::optional<Polyline> PointsOf(const ExchangeValue& list) const;
    std::optional<Polyline> Conic(const ExchangeInstance& curve, double from, double to) const;
    std::optional<Polyline> Trimmed(const ExchangeInstance& trimmed, Walk& walk) const;
    std::optional<Polyline> TrimmedConic(const ExchangeInstance& trimmed,
                                         const ExchangeInstance& basis) const;
    std::optional<Polyline> TrimmedLine(const ExchangeInstance& trimmed,
                                        const ExchangeInstance& line) const;
    std::optional<Polyline> Composite(const ExchangeInstance& curve, Walk& walk) const;
    std::optional<Polyline> Spline(const ExchangeInstance& curve) const;
    /// The trim's parameter, or that of its point by @p parameterAt.
    template <typename ParameterAt>
    std::optional<double> TrimParameter(const ExchangeValue& trim, double scale,
                                        const ParameterAt& parameterAt) const;

    const ExchangeFile& _file;
    double _lengthScale;
    double _angleScale;
};

}  // namespace kesview
