#include "drawing/vtk/Dashes.h"

#include "document/Vectors.h"

#include <algorithm>
#include <cmath>

namespace kesview {
namespace {

constexpr double mostDashesOfSegment = 10000;

Vector pointAt(const std::vector<float>& points, std::size_t index) {
    return {double(points[3 * index]), double(points[3 * index + 1]),
            double(points[3 * index + 2])};
}

Vector between(const Vector& a, const Vector& b, double part) {
    return {a[0] + part * (b[0] - a[0]), a[1] + part * (b[1] - a[1]), a[2] + part * (b[2] - a[2])};
}

/// Tells how many pixels long a segment is drawn.
class PixelLength {
public:
    explicit PixelLength(const Picture& picture) {
        const Camera& camera = picture.camera;
        for (std::size_t i = 0; i < 3; ++i) {
            _eye[i] = camera.eye[i] - picture.origin[i];
            _sight[i] = camera.target[i] - camera.eye[i];
        }
        _distance = std::sqrt(dot(_sight, _sight));
        for (double& coordinate : _sight)
            coordinate /= _distance;
        _pixelsPerMillimetre = picture.height / camera.height;
        _perspective = camera.perspective;
    }

    double operator()(const Vector& from, const Vector& to) const {
        Vector along = {to[0] - from[0], to[1] - from[1], to[2] - from[2]};
        const double deep = dot(along, _sight);
        for (std::size_t i = 0; i < 3; ++i)
            along[i] -= deep * _sight[i];
        return std::sqrt(dot(along, along)) * scaleAt(between(from, to, 0.5));
    }

private:
    double scaleAt(const Vector& point) const {
        if (!_perspective)
            return _pixelsPerMillimetre;
        const Vector fromEye = {point[0] - _eye[0], point[1] - _eye[1], point[2] - _eye[2]};
        return _pixelsPerMillimetre * _distance / std::max(dot(fromEye, _sight), 1e-3 * _distance);
    }

    Vector _eye = {};
    Vector _sight = {};
    double _distance = 1;
    double _pixelsPerMillimetre = 1;
    bool _perspective = false;
};

/// Writes dashes one segment after the other; remembers how far the pattern has come.
class DashWriter {
public:
    explicit DashWriter(LineBatch& result)
        : _dash(std::max(6.0, 4.0 * double(result.width))),
          _gap(std::max(4.0, 2.5 * double(result.width))),
          _result(result) {}

    void StartPolyline() { _phase = 0; }

    void Add(const Vector& from, const Vector& to, double pixels) {
        const double period = _dash + _gap;
        if (!(pixels / period < mostDashesOfSegment)) {
            write(from, to);
            return;
        }
        for (double at = -_phase; at < pixels; at += period) {
            const double first = std::max(at, 0.0);
            const double last = std::min(at + _dash, pixels);
            if (first < last)
                write(between(from, to, first / pixels), between(from, to, last / pixels));
        }
        _phase = std::fmod(_phase + pixels, period);
    }

private:
    void write(const Vector& from, const Vector& to) {
        _result.starts.push_back(std::uint32_t(_result.points.size() / 3));
        for (const Vector& end : {from, to}) {
            for (const double coordinate : end)
                _result.points.push_back(float(coordinate));
        }
    }

    double _dash;
    double _gap;
    double _phase = 0;
    LineBatch& _result;
};

}  // namespace

LineBatch cutIntoDashes(const LineBatch& lines, const Picture& picture) {
    LineBatch result;
    result.color = lines.color;
    result.width = lines.width;
    const PixelLength pixelLength(picture);
    DashWriter writer(result);
    for (std::size_t line = 0; line < lines.starts.size(); ++line) {
        const bool isLast = line + 1 == lines.starts.size();
        const std::size_t end = isLast ? lines.points.size() / 3 : lines.starts[line + 1];
        writer.StartPolyline();
        for (std::size_t i = lines.starts[line]; i + 1 < end; ++i) {
            const Vector from = pointAt(lines.points, i);
            const Vector to = pointAt(lines.points, i + 1);
            writer.Add(from, to, pixelLength(from, to));
        }
    }
    return result;
}

}  // namespace kesview
