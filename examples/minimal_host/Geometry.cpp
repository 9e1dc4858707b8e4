#include "Geometry.h"

#include <KesVizCore/core/FontAttr.h>
#include <KesVizCore/graph/AGeometryItemFilledPolyline.h>
#include <KesVizCore/graph/AGeometryItemPointCloud.h>
#include <KesVizCore/graph/AGeometryItemPolyline.h>
#include <KesVizCore/graph/AGeometryItemText.h>
#include <KesVizCore/graph/AGeometryItemTriangleSet.h>
#include <KesVizCore/graph/AGeometryItemVertex.h>
#include <KesVizCore/graph/AttributeTransform.h>
#include <KesVizCore/math/HitTests.h>
#include <KesVizCore/math/VectorMath.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <numeric>

namespace host {

// --- placements ---------------------------------------------------------------------------------

Placement::Placement() : _worldFromLocal{} {
    viz::AttributeTransform::SetIdentity(_worldFromLocal.data());
}

Placement::Placement(const double* matrix) : _worldFromLocal{} {
    std::copy(matrix, matrix + 16, _worldFromLocal.begin());
}

Placement Placement::Around(const Placement& inner) const {
    Placement product;
    for (std::size_t column = 0; column < 4; ++column) {
        for (std::size_t row = 0; row < 4; ++row) {
            double sum = 0;
            for (std::size_t k = 0; k < 4; ++k) {
                sum += _worldFromLocal[4 * k + row] * inner._worldFromLocal[4 * column + k];
            }
            product._worldFromLocal[4 * column + row] = sum;
        }
    }
    return product;
}

std::vector<float> Placement::ToWorld(const std::vector<float>& points) const {
    std::array<double, 16> matrix = _worldFromLocal;
    std::vector<float> placed;
    placed.reserve(points.size());
    for (std::size_t at = 0; at + 3 <= points.size(); at += 3) {
        double point[3] = {points[at], points[at + 1], points[at + 2]};
        viz::MatrixMultiplyPoint(point, matrix.data(), point);  // the point before the matrix
        for (const double value : point) {
            placed.push_back(static_cast<float>(value));
        }
    }
    return placed;
}

// --- boxes --------------------------------------------------------------------------------------

void clearBox(float* extrema) {
    std::fill(extrema, extrema + 3, std::numeric_limits<float>::max());
    std::fill(extrema + 3, extrema + 6, std::numeric_limits<float>::lowest());
}

void addToBox(const std::vector<float>& points, float* extrema) {
    for (std::size_t at = 0; at < points.size(); ++at) {
        const std::size_t axis = at % 3;
        extrema[axis] = std::min(extrema[axis], points[at]);
        extrema[axis + 3] = std::max(extrema[axis + 3], points[at]);
    }
}

// --- what a ray hits ----------------------------------------------------------------------------

namespace {

constexpr double kMissed = std::numeric_limits<double>::infinity();

double distanceToLines(const viz::Ray& ray, const std::vector<float>& points) {
    double nearest = kMissed;
    for (std::size_t at = 0; at + 6 <= points.size(); at += 3) {
        float hitPoint[3];
        float steps = 0;
        if (viz::RayHitsLineSegment(&points[at], &points[at + 3], static_cast<float>(ray.Aperture),
                                    ray.Root, ray.Direction, hitPoint, steps)) {
            // Counted in lengths of the direction, where the triangle test answers model units.
            nearest = std::min(nearest, static_cast<double>(steps * viz::Length(ray.Direction)));
        }
    }
    return nearest;
}

// The library's tests are for lines and triangles: a point is near enough when the foot of its
// perpendicular on the ray is.
double distanceToPoints(const viz::Ray& ray, const std::vector<float>& points) {
    const float length = viz::Length(ray.Direction);
    double nearest = kMissed;
    for (std::size_t at = 0; at + 3 <= points.size() && length > 0; at += 3) {
        float toPoint[3];
        viz::Subtract(&points[at], ray.Root, toPoint);
        const float along = viz::DotProduct(toPoint, ray.Direction) / length;
        float foot[3] = {ray.Direction[0], ray.Direction[1], ray.Direction[2]};
        viz::Multiply(foot, along / length);
        float offset[3];
        viz::Subtract(toPoint, foot, offset);
        if (along >= 0 && viz::Length(offset) < static_cast<float>(ray.Aperture)) {
            nearest = std::min(nearest, static_cast<double>(along));
        }
    }
    return nearest;
}

}  // namespace

Shape::Shape(Form form, std::vector<float> points, std::vector<int> corners)
    : _form(form), _points(std::move(points)), _corners(std::move(corners)) {}

double Shape::distanceToTriangles(const viz::Ray& ray, const std::vector<float>& points) const {
    const auto corner = [&](std::size_t at) {
        return &points[3 * static_cast<std::size_t>(_corners[at])];
    };
    double nearest = kMissed;
    for (std::size_t at = 0; at + 3 <= _corners.size(); at += 3) {
        float hitPoint[3];  // an array of its own: the test does more where it is the root's
        float distance = 0;
        if (viz::RayHitsTriangle(corner(at), corner(at + 1), corner(at + 2), ray.Root,
                                 ray.Direction, hitPoint, distance)) {
            nearest = std::min(nearest, static_cast<double>(distance));
        }
    }
    return nearest;
}

bool Shape::IsHit(const viz::Ray& ray, const Placement& placement, double& distance) const {
    const std::vector<float> placed = placement.ToWorld(_points);
    switch (_form) {
        case Form::Triangles:
            distance = distanceToTriangles(ray, placed);
            break;
        case Form::Lines:
            distance = distanceToLines(ray, placed);
            break;
        case Form::Points:
            distance = distanceToPoints(ray, placed);
            break;
    }
    return distance < kMissed;
}

// --- the factory --------------------------------------------------------------------------------

namespace {

std::vector<float> copied(const float* points, int count) {
    return points != nullptr ? std::vector<float>(points, points + std::ptrdiff_t{3} * count)
                             : std::vector<float>();
}

/// The corners that a strip or a fan of @p count corners leaves to say, three for each triangle.
std::vector<int> spelledOut(viz::TriangleType type, const std::vector<int>& corners) {
    if (type == viz::TriangleList || type == viz::IndexedTriangles) {
        return corners;
    }
    std::vector<int> triangles;
    for (std::size_t at = 2; at < corners.size(); ++at) {
        const std::size_t first = type == viz::TriangleFan ? 0 : at - 2;
        triangles.insert(triangles.end(), {corners[first], corners[at - 1], corners[at]});
    }
    return triangles;
}

/// 0, 1, 2, ... : the corners of points that are used once, in their order.
std::vector<int> inOrder(int count) {
    std::vector<int> corners(static_cast<std::size_t>(std::max(count, 0)));
    std::iota(corners.begin(), corners.end(), 0);
    return corners;
}

}  // namespace

// The normals are for a renderer that shades; characters do not.
viz::AGeometryItem* ItemFactory::CreateTriangleSet(const std::uint64_t& id, float* vertices,
                                                   float* normals, int* indices, int vertexCount,
                                                   int normalCount, int indexCount,
                                                   viz::TriangleType triangleType) {
    std::vector<int> corners = spelledOut(
        triangleType, indices != nullptr ? std::vector<int>(indices, indices + indexCount)
                                         : inOrder(vertexCount));
    // The item stores the last count as its number of triangles, whatever it is given.
    const int triangleCount = static_cast<int>(corners.size() / 3);
    Shape shape(Shape::Form::Triangles, copied(vertices, vertexCount), std::move(corners));
    return new Item<viz::AGeometryItemTriangleSet>(std::move(shape), id, vertices, normals, indices,
                                                   vertexCount, normalCount, triangleCount,
                                                   triangleType);
}

viz::AGeometryItem* ItemFactory::CreatePolyline(const std::uint64_t& id, float* points, int count) {
    return new Item<viz::AGeometryItemPolyline>(
        Shape(Shape::Form::Lines, copied(points, count), {}), id, points, count);
}

viz::AGeometryItem* ItemFactory::CreateFilledPolyline(const std::uint64_t& id, float* points,
                                                      int count) {
    Shape shape(Shape::Form::Triangles, copied(points, count),
                spelledOut(viz::TriangleFan, inOrder(count)));
    return new Item<viz::AGeometryItemFilledPolyline>(std::move(shape), id, points, count);
}

viz::AGeometryItem* ItemFactory::CreatePointCloud(const std::uint64_t& id, const int& count,
                                                  float* points) {
    return new Item<viz::AGeometryItemPointCloud>(
        Shape(Shape::Form::Points, copied(points, count), {}), id, count, points);
}

viz::AGeometryItem* ItemFactory::CreateVertex(const std::uint64_t& id, float* const position) {
    return new Item<viz::AGeometryItemVertex>(Shape(Shape::Form::Points, copied(position, 1), {}),
                                              id, position);
}

viz::AGeometryItem* ItemFactory::CreateText(const std::uint64_t& id, const std::wstring& firstText,
                                            const std::wstring& secondText, float* position,
                                            const viz::FontAttr& font, const float& number) {
    return new Item<viz::AGeometryItemText>(Shape(Shape::Form::Points, copied(position, 1), {}), id,
                                            firstText, secondText, position, font, number);
}

}  // namespace host
