/// @file
/// See ExchangeGeometry.h.

#include "reading/part21/ExchangeGeometry.h"

#include "reading/part21/SplineCurve.h"

#include <algorithm>
#include <cmath>

namespace kesview {
namespace {

constexpr double pi = 3.14159265358979323846;
constexpr double arcStep = pi / 24;
constexpr int deepestCurve = 16;
constexpr std::size_t mostPoints = 1'000'000;  // of a curve made of curves, which may repeat

/// Any direction across @p z, as a frame without a reference direction takes.
Vector acrossOf(const Vector& z) {
    const Vector axis = std::abs(z[0]) < 0.9 ? Vector{1, 0, 0} : Vector{0, 1, 0};
    return normalized(axis - dot(axis, z) * z, {1, 0, 0});
}

}  // namespace

std::optional<Vector> ExchangeGeometry::Coordinates(const ExchangeValue& list) const {
    if (!list.IsList() || list.items.size() < 2 || list.items.size() > 3) {
        return std::nullopt;
    }
    Vector point = {0, 0, 0};
    for (std::size_t i = 0; i < list.items.size(); ++i) {
        if (!list.items[i].IsNumber()) {
            return std::nullopt;
        }
        point[i] = list.items[i].number * _lengthScale;
    }
    return point;
}

std::optional<Vector> ExchangeGeometry::Point(EntityNumber number) const {
    const ExchangeInstance point = _file.Get(number);
    return Coordinates(point.Attribute("CARTESIAN_POINT", 0, 1));
}

std::optional<Vector> ExchangeGeometry::Direction(EntityNumber number) const {
    const ExchangeInstance direction = _file.Get(number);
    if (!direction.Is("DIRECTION")) {
        return std::nullopt;
    }
    const auto ratios =
        ExchangeGeometry(_file, 1, 1).Coordinates(direction.Attribute("DIRECTION", 0, 1));
    if (!ratios || lengthOf(*ratios) < 1e-12) {
        return std::nullopt;
    }
    return normalized(*ratios, {0, 0, 1});
}

std::optional<Placement> ExchangeGeometry::Frame(EntityNumber number) const {
    const ExchangeInstance instance = _file.Get(number);
    if (!instance.HasTypeEnding("AXIS2_PLACEMENT_3D")) {
        return std::nullopt;
    }
    const auto origin = Point(instance.Attribute("PLACEMENT", 0, 1).reference);
    if (!origin) {
        return std::nullopt;
    }
    Placement frame;
    frame.origin = *origin;
    frame.z = Direction(instance.Attribute("AXIS2_PLACEMENT_3D", 0, 2).reference)
                  .value_or(Vector{0, 0, 1});
    const Vector across = acrossOf(frame.z);
    const Vector reference =
        Direction(instance.Attribute("AXIS2_PLACEMENT_3D", 1, 3).reference).value_or(across);
    frame.x = normalized(reference - dot(reference, frame.z) * frame.z, across);
    frame.y = cross(frame.z, frame.x);
    return frame;
}

std::optional<std::vector<Vector>> ExchangeGeometry::Curve(EntityNumber number) const {
    Walk walk;
    return CurveWithin(number, walk);
}

std::optional<ExchangeGeometry::Polyline> ExchangeGeometry::CurveWithin(EntityNumber number,
                                                                        Walk& walk) const {
    const auto known = walk.known.find(number);
    if (known != walk.known.end()) {
        return known->second;
    }
    if (walk.depth > deepestCurve) {
        return std::nullopt;
    }
    ++walk.depth;
    auto line = CurveOf(_file.Get(number), walk);
    --walk.depth;
    if (line && walk.depth > 0) {
        walk.known.emplace(number, *line);
    }
    return line;
}

std::optional<ExchangeGeometry::Polyline> ExchangeGeometry::CurveOf(const ExchangeInstance& curve,
                                                                    Walk& walk) const {
    if (curve.Is("POLYLINE")) {
        return PointsOf(curve.Attribute("POLYLINE", 0, 1));
    }
    if (curve.Is("CIRCLE") || curve.Is("ELLIPSE")) {
        return Conic(curve, 0, 2 * pi);
    }
    if (curve.Is("TRIMMED_CURVE")) {
        return Trimmed(curve, walk);
    }
    if (curve.HasTypeEnding("COMPOSITE_CURVE")) {
        return Composite(curve, walk);
    }
    if (curve.Is("B_SPLINE_CURVE_WITH_KNOTS")) {
        return Spline(curve);
    }
    return std::nullopt;
}

std::optional<ExchangeGeometry::Polyline> ExchangeGeometry::PointsOf(
    const ExchangeValue& list) const {
    Polyline line;
    for (const ExchangeValue& item : list.items) {
        const auto point = Point(item.reference);
        if (!point) {
            return std::nullopt;
        }
        line.push_back(*point);
    }
    return line.size() < 2 ? std::nullopt : std::make_optional(line);
}

std::optional<ExchangeGeometry::Polyline> ExchangeGeometry::Conic(const ExchangeInstance& curve,
                                                                  double from, double to) const {
    const bool circle = curve.Is("CIRCLE");
    const auto frame = Frame(curve.Attribute("CONIC", 0, 1).reference);
    const ExchangeValue& first = curve.Attribute(circle ? "CIRCLE" : "ELLIPSE", 0, 2);
    const ExchangeValue& second = circle ? first : curve.Attribute("ELLIPSE", 1, 3);
    if (!frame || !first.Unwrapped().IsNumber() || !second.Unwrapped().IsNumber()) {
        return std::nullopt;
    }
    const double a = first.Unwrapped().number * _lengthScale;
    const double b = second.Unwrapped().number * _lengthScale;
    const int steps = std::max(1, static_cast<int>(std::ceil(std::abs(to - from) / arcStep)));
    Polyline line;
    for (int i = 0; i <= steps; ++i) {
        const double angle = from + (to - from) * i / steps;
        line.push_back(frame->Point({a * std::cos(angle), b * std::sin(angle), 0}));
    }
    return line;
}

template <typename ParameterAt>
std::optional<double> ExchangeGeometry::TrimParameter(const ExchangeValue& trim, double scale,
                                                      const ParameterAt& parameterAt) const {
    for (const ExchangeValue& item : trim.items) {
        if (item.kind == ExchangeValue::Kind::Typed && item.Unwrapped().IsNumber()) {
            return item.Unwrapped().number * scale;
        }
    }
    for (const ExchangeValue& item : trim.items) {
        if (const auto point = Point(item.reference)) {
            return parameterAt(*point);
        }
    }
    return std::nullopt;
}

std::optional<ExchangeGeometry::Polyline> ExchangeGeometry::Trimmed(const ExchangeInstance& trimmed,
                                                                    Walk& walk) const {
    const EntityNumber number = trimmed.Attribute("TRIMMED_CURVE", 0, 1).reference;
    const ExchangeInstance basis = _file.Get(number);
    if (basis.Is("CIRCLE") || basis.Is("ELLIPSE")) {
        return TrimmedConic(trimmed, basis);
    }
    if (basis.Is("LINE")) {
        return TrimmedLine(trimmed, basis);
    }
    // Between two points of a curve that is already bounded, the trims of PMI are its own ends.
    return CurveWithin(number, walk);
}

std::optional<ExchangeGeometry::Polyline> ExchangeGeometry::TrimmedConic(
    const ExchangeInstance& trimmed, const ExchangeInstance& basis) const {
    const auto frame = Frame(basis.Attribute("CONIC", 0, 1).reference);
    if (!frame) {
        return std::nullopt;
    }
    const double a =
        basis.Attribute(basis.Is("CIRCLE") ? "CIRCLE" : "ELLIPSE", 0, 2).Unwrapped().number;
    const double b = basis.Is("CIRCLE") ? a : basis.Attribute("ELLIPSE", 1, 3).Unwrapped().number;
    const auto angleAt = [&](const Vector& point) {
        const Vector local = point - frame->origin;
        return std::atan2(dot(local, frame->y) * a, dot(local, frame->x) * b);
    };
    const auto from = TrimParameter(trimmed.Attribute("TRIMMED_CURVE", 1, 2), _angleScale, angleAt);
    auto to = TrimParameter(trimmed.Attribute("TRIMMED_CURVE", 2, 3), _angleScale, angleAt);
    if (!from || !to) {
        return std::nullopt;
    }
    const bool forward = trimmed.Attribute("TRIMMED_CURVE", 3, 4).text != "F";
    const double turn = std::fmod(forward ? *to - *from : *from - *to, 2 * pi);
    if (!std::isfinite(turn)) {
        return std::nullopt;
    }
    const double span = turn <= 1e-12 ? turn + 2 * pi : turn;
    return Conic(basis, *from, forward ? *from + span : *from - span);
}

std::optional<ExchangeGeometry::Polyline> ExchangeGeometry::TrimmedLine(
    const ExchangeInstance& trimmed, const ExchangeInstance& line) const {
    const auto origin = Point(line.Attribute("LINE", 0, 1).reference);
    const ExchangeInstance vector = _file.Get(line.Attribute("LINE", 1, 2).reference);
    const auto direction = Direction(vector.Attribute("VECTOR", 0, 1).reference);
    if (!origin || !direction) {
        return std::nullopt;
    }
    const double magnitude = vector.Attribute("VECTOR", 1, 2).Unwrapped().number * _lengthScale;
    const auto parameterAt = [&](const Vector& point) {
        return magnitude == 0 ? 0 : dot(point - *origin, *direction) / magnitude;
    };
    const auto from = TrimParameter(trimmed.Attribute("TRIMMED_CURVE", 1, 2), 1, parameterAt);
    const auto to = TrimParameter(trimmed.Attribute("TRIMMED_CURVE", 2, 3), 1, parameterAt);
    if (!from || !to) {
        return std::nullopt;
    }
    return Polyline{*origin + (*from * magnitude) * *direction,
                    *origin + (*to * magnitude) * *direction};
}

std::optional<ExchangeGeometry::Polyline> ExchangeGeometry::Composite(const ExchangeInstance& curve,
                                                                      Walk& walk) const {
    Polyline whole;
    for (const ExchangeValue& item : curve.Attribute("COMPOSITE_CURVE", 0, 1).items) {
        const ExchangeInstance segment = _file.Get(item.reference);
        auto part = CurveWithin(segment.Attribute("COMPOSITE_CURVE_SEGMENT", 2, 2).reference, walk);
        if (!part || whole.size() + part->size() > mostPoints) {
            return std::nullopt;
        }
        if (segment.Attribute("COMPOSITE_CURVE_SEGMENT", 1, 1).text == "F") {
            std::reverse(part->begin(), part->end());
        }
        whole.insert(whole.end(), part->begin() + (whole.empty() ? 0 : 1), part->end());
    }
    return whole.size() < 2 ? std::nullopt : std::make_optional(whole);
}

std::optional<ExchangeGeometry::Polyline> ExchangeGeometry::Spline(
    const ExchangeInstance& curve) const {
    SplineCurve spline;
    spline.degree = static_cast<std::size_t>(
        std::clamp(curve.Attribute("B_SPLINE_CURVE", 0, 1).number, 0.0, 64.0));
    if (auto poles = PointsOf(curve.Attribute("B_SPLINE_CURVE", 1, 2))) {
        spline.poles = std::move(*poles);
    }
    const ExchangeValue& counts = curve.Attribute("B_SPLINE_CURVE_WITH_KNOTS", 0, 6);
    const ExchangeValue& knots = curve.Attribute("B_SPLINE_CURVE_WITH_KNOTS", 1, 7);
    for (std::size_t i = 0; i < knots.items.size(); ++i) {
        const double count = std::clamp(counts.At(i).number, 0.0, 64.0);
        spline.knots.insert(spline.knots.end(), static_cast<std::size_t>(count),
                            knots.items[i].Unwrapped().number);
    }
    if (const auto* rational = curve.Find("RATIONAL_B_SPLINE_CURVE")) {
        for (const ExchangeValue& weight : rational->parameters.At(0).items) {
            spline.weights.push_back(weight.Unwrapped().number);
        }
    }
    return isValid(spline) ? std::make_optional(sample(spline)) : std::nullopt;
}

}  // namespace kesview
