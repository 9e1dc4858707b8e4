#include "picking/BruteForce.h"

#include "picking/RayTests.h"

#include <cmath>

namespace kesview::testing {

namespace {

/// Keeps the nearest of what it is offered.
class Nearest {
public:
    explicit Nearest(const std::optional<SavedView::Plane>& clipping) : _clipping(clipping) {}

    void Offer(const std::optional<RayHit>& found, const PickHit& what, bool isCuttable) {
        if (!found || (_hit && found->distance >= _hit->distance)) {
            return;
        }
        if (isCuttable && _clipping &&
            dot(found->point - _clipping->point, _clipping->normal) < 0) {
            return;
        }
        _hit = what;
        _hit->point = found->point;
        _hit->distance = found->distance;
    }
    const std::optional<PickHit>& Hit() const { return _hit; }

private:
    const std::optional<SavedView::Plane>& _clipping;
    std::optional<PickHit> _hit;
};

std::vector<Vector> pointsOf(const Shape& shape, const Matrix& world) {
    std::vector<Vector> points;
    for (int at = 0; at < shape.pointCount; ++at) {
        points.push_back(transformPoint(world, shape.points + 3 * at));
    }
    return points;
}

PickKind kindOf(Shape::Form form) {
    switch (form) {
        case Shape::Form::Text:
            return PickKind::Text;
        case Shape::Form::Lines:
            return PickKind::Line;
        case Shape::Form::Points:
            return PickKind::Point;
        default:
            return PickKind::Surface;
    }
}

std::optional<RayHit> within(double farthest, const std::optional<RayHit>& hit) {
    return hit && hit->distance <= farthest ? hit : std::nullopt;
}

}  // namespace

Everything::Everything(const SceneAdapter& scene) : _clipping(scene.GetClipping()) {
    for (ShownWalk walk = scene.Walk(); walk.Next();) {
        const Shape shape = shapeOf(walk.Item());
        const PickHit what{walk.Path(),        {},          0,
                           kindOf(shape.form), walk.Type(), walk.IsAnnotation(),
                           walk.Item().ID()};
        _shown.push_back({shape, pointsOf(shape, walk.WorldFromLocal()), what,
                          scene.ClipsAnnotations() || !walk.IsAnnotation()});
    }
}

std::optional<PickHit> Everything::Search(const PickRay& asked) const {
    const TestRay ray(asked);
    Nearest surface(_clipping);
    for (const Shown& shown : _shown) {
        for (int triangle = 0; triangle < shown.shape.TriangleCount(); ++triangle) {
            const std::array<int, 3> corners = shown.shape.Triangle(triangle);
            const auto corner = [&](std::size_t at) {
                return shown.points[static_cast<std::size_t>(corners[at])];
            };
            surface.Offer(hitTriangle(ray, corner(0), corner(1), corner(2)), shown.what,
                          shown.isCuttable);
        }
    }
    const double farthest = surface.Hit() ? surface.Hit()->distance + 2 * asked.aperture : HUGE_VAL;
    Nearest thin(_clipping);
    for (const Shown& shown : _shown) {
        const std::vector<Vector>& points = shown.points;
        const bool isLine = shown.what.kind == PickKind::Line;
        for (std::size_t at = 0; at + 1 < points.size() && isLine; ++at) {
            thin.Offer(within(farthest, hitSegment(ray, points[at], points[at + 1])), shown.what,
                       shown.isCuttable);
        }
        for (std::size_t at = 0; at < points.size() && shown.what.kind == PickKind::Point; ++at) {
            thin.Offer(within(farthest, hitPoint(ray, points[at])), shown.what, shown.isCuttable);
        }
    }
    return thin.Hit() ? thin.Hit() : surface.Hit();
}

}  // namespace kesview::testing
