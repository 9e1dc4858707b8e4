#include "drawing/vtk/Translucent.h"

#include "document/Vectors.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace kesview {
namespace {

struct Triangle {
    bool showsFront;
    double depth;
    std::uint32_t batch;
    std::uint32_t first;  ///< index of its first corner in the triangles of the batch
};

/// Corners of a triangle in space.
struct Corners {
    Corners(const TriangleBatch& batch, std::size_t first) {
        for (std::size_t i = 0; i < 3; ++i) {
            const std::size_t index = batch.triangles[first + i];
            for (std::size_t j = 0; j < 3; ++j)
                points[i][j] = double(batch.points[3 * index + j]);
        }
    }

    Vector Normal() const {
        const Vector u = points[1] - points[0];
        const Vector v = points[2] - points[0];
        return cross(u, v);
    }

    Vector Middle() const {
        Vector middle = {};
        for (const Vector& point : points) {
            for (std::size_t j = 0; j < 3; ++j)
                middle[j] += point[j] / 3;
        }
        return middle;
    }

    std::array<Vector, 3> points = {};
};

/// Where a picture is seen from, relative to its origin.
class Sight {
public:
    explicit Sight(const Picture& picture)
        : _eye(picture.camera.eye - picture.origin),
          _direction(picture.camera.target - picture.camera.eye),
          _perspective(picture.camera.perspective) {}

    bool ShowsFront(const Corners& corners) const {
        const Vector along = _perspective ? corners.Middle() - _eye : _direction;
        return dot(corners.Normal(), along) < 0;
    }

    double Depth(const Corners& corners) const {
        const double depth = dot(corners.Middle(), _direction);
        return std::isfinite(depth) ? depth : 0;
    }

private:
    Vector _eye;
    Vector _direction;
    bool _perspective;
};

std::array<float, 3> flatNormal(const Corners& corners) {
    const Vector normal = corners.Normal();
    const double length = std::sqrt(dot(normal, normal));
    if (!(length > 0))
        return {0, 0, 1};
    return {float(normal[0] / length), float(normal[1] / length), float(normal[2] / length)};
}

const float* at(const std::vector<float>& triples, std::uint32_t index) {
    return &triples[3 * std::size_t(index)];
}

void append(TranslucentTriangles& result, const TriangleBatch& batch, std::uint32_t first) {
    const std::array<float, 3> flat = flatNormal(Corners(batch, first));
    for (std::uint32_t i = first; i < first + 3; ++i) {
        const std::uint32_t index = batch.triangles[i];
        const float* point = at(batch.points, index);
        const float* normal = batch.normals.empty() ? flat.data() : at(batch.normals, index);
        result.points.insert(result.points.end(), point, point + 3);
        result.normals.insert(result.normals.end(), normal, normal + 3);
        result.colors.insert(result.colors.end(), batch.color.begin(), batch.color.end());
    }
}

bool isDrawnBefore(const Triangle& a, const Triangle& b) {
    return std::tie(a.showsFront, b.depth, a.batch, a.first) <
           std::tie(b.showsFront, a.depth, b.batch, b.first);
}

}  // namespace

TranslucentTriangles sortTranslucent(const std::vector<TriangleBatch>& batches, bool lit,
                                     const Picture& picture) {
    const Sight sight(picture);
    std::vector<Triangle> order;
    for (std::size_t b = 0; b < batches.size(); ++b) {
        const TriangleBatch& batch = batches[b];
        if (!isTranslucent(batch.color) || batch.lit != lit)
            continue;
        for (std::size_t first = 0; first < batch.triangles.size(); first += 3) {
            const Corners corners(batch, first);
            order.push_back({sight.ShowsFront(corners), sight.Depth(corners), std::uint32_t(b),
                             std::uint32_t(first)});
        }
    }
    std::sort(order.begin(), order.end(), isDrawnBefore);

    TranslucentTriangles result;
    result.lit = lit;
    for (const Triangle& triangle : order)
        append(result, batches[triangle.batch], triangle.first);
    return result;
}

}  // namespace kesview
