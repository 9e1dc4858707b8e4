#include "drawing/vtk/CameraSetup.h"

#include "document/Vectors.h"
#include "drawing/Drawing.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vtkCamera.h>
#include <vtkMath.h>

namespace kesview {
namespace {

/// How far points lie along a line of sight, nearest and farthest. Points that are no numbers
/// do not count.
class DepthRange {
public:
    DepthRange(const Vector& eye, const Vector& direction) : _eye(eye), _direction(direction) {}

    void Add(const std::vector<float>& points) {
        for (std::size_t i = 0; i + 2 < points.size(); i += 3)
            add({double(points[i]), double(points[i + 1]), double(points[i + 2])});
    }

    void Add(const PlacedText& placed) {
        const double reach = placed.height * (2 + 2 * double(placed.text.size()));
        const double middle = dot(placed.position - _eye, _direction);
        addDepth(middle - reach);
        addDepth(middle + reach);
    }

    bool IsEmpty() const { return _near > _far; }
    double Near() const { return _near; }
    double Far() const { return _far; }

private:
    void add(const Vector& point) { addDepth(dot(point - _eye, _direction)); }

    void addDepth(double depth) {
        if (!std::isfinite(depth))
            return;
        _near = std::min(_near, depth);
        _far = std::max(_far, depth);
    }

    Vector _eye;
    Vector _direction;
    double _near = std::numeric_limits<double>::infinity();
    double _far = -std::numeric_limits<double>::infinity();
};

template <class Batch>
void addAll(DepthRange& range, const std::vector<Batch>& batches) {
    for (const Batch& batch : batches)
        range.Add(batch.points);
}

DepthRange depthRange(const Picture& picture, const Vector& eye, const Vector& direction) {
    DepthRange range(eye, direction);
    addAll(range, picture.triangles);
    addAll(range, picture.lines);
    addAll(range, picture.points);
    addAll(range, picture.annotationTriangles);
    addAll(range, picture.annotationLines);
    for (const PictureText& text : picture.texts)
        range.Add(text.placed);
    return range;
}

void check(const Camera& camera) {
    const Vector sight = camera.target - camera.eye;
    if (!std::isfinite(dot(sight, sight)) || !(lengthOf(sight) > 0))
        throw DrawError("The picture cannot be drawn: the camera's eye and target are one point");
    const double along = std::abs(dot(sight, camera.up)) / lengthOf(sight);
    if (!std::isfinite(along) || !(lengthOf(camera.up) > 0) ||
        along > 0.999999 * lengthOf(camera.up))
        throw DrawError("The picture cannot be drawn: the camera's up is its line of sight");
    if (!std::isfinite(camera.height) || !(camera.height > 0))
        throw DrawError("The picture cannot be drawn: the camera sees no height");
}

void setParallel(vtkCamera& camera, Vector eye, const Vector& direction, double distance,
                 const DepthRange& range) {
    const double margin = std::max(1e-3 * (range.Far() - range.Near()), 1e-6 * distance);
    const double back = std::max(0.0, 2 * margin - range.Near());
    for (std::size_t i = 0; i < 3; ++i)
        eye[i] -= back * direction[i];
    camera.SetPosition(eye.data());
    camera.SetClippingRange(range.Near() + back - margin, range.Far() + back + margin);
}

void setPerspective(vtkCamera& camera, const DepthRange& range, double distance, double height) {
    camera.SetViewAngle(vtkMath::DegreesFromRadians(2 * std::atan(height / 2 / distance)));
    const double farthest = std::max(1.001 * range.Far(), 1e-3 * distance);
    const double nearest = std::max(0.999 * range.Near(), 1e-4 * farthest);
    camera.SetClippingRange(nearest, farthest);
}

}  // namespace

void setUpCamera(vtkCamera& camera, const Picture& picture) {
    check(picture.camera);
    const Vector eye = picture.camera.eye - picture.origin;
    const Vector target = picture.camera.target - picture.origin;
    const double distance = lengthOf(target - eye);
    Vector direction = target - eye;
    for (double& coordinate : direction)
        coordinate /= distance;

    camera.SetFocalPoint(target.data());
    camera.SetPosition(eye.data());
    camera.SetViewUp(picture.camera.up.data());
    camera.SetParallelProjection(!picture.camera.perspective);
    camera.SetParallelScale(picture.camera.height / 2);
    const DepthRange range = depthRange(picture, eye, direction);
    if (range.IsEmpty())
        return;
    if (picture.camera.perspective)
        setPerspective(camera, range, distance, picture.camera.height);
    else
        setParallel(camera, eye, direction, distance, range);
}

}  // namespace kesview
