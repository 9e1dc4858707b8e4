#include "TriangleSearch.h"

#include "view/Vectors.h"

#include <KesVizCore/math/HitTests.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace kesview::support {

namespace viz = KesVizCore;

namespace {

constexpr double kAsNear = 0.01;  // millimetres; single precision tells no less here
constexpr const char* kEdges = "/10001/";
constexpr const char* kFaces = "/10002/";

using Hits = std::vector<std::pair<double, std::string>>;

std::array<float, 3> floats(const Vector& vector) {
    return {static_cast<float>(vector[0]), static_cast<float>(vector[1]),
            static_cast<float>(vector[2])};
}

std::vector<float> placed(const std::vector<float>& points, const Body& body, const Matrix& world) {
    std::vector<float> result;
    for (std::size_t at = 0; at + 2 < points.size(); at += 3) {
        const Vector local = body.origin + Vector{points[at], points[at + 1], points[at + 2]};
        const std::array<float, 3> point = floats(transformPoint(world, local));
        result.insert(result.end(), point.begin(), point.end());
    }
    return result;
}

Vector pointAt(const std::vector<float>& points, std::size_t at) {
    return {points[at], points[at + 1], points[at + 2]};
}

/// From the ray's line to the point, as it is seen along the ray.
Vector across(const SearchRay& ray, const Vector& point) {
    const Vector from = point - ray.root;
    return from - dot(from, ray.direction) * ray.direction;
}

/// Of a segment, where its line is seen nearest to the ray, unless that is beyond its ends. One
/// that runs along the ray is looked at where it begins.
std::optional<Vector> nearestPoint(const SearchRay& ray, const Vector& a, const Vector& b) {
    const Vector seenA = across(ray, a);
    const Vector seen = across(ray, b) - seenA;
    const double square = dot(seen, seen);
    const bool isEndOn = square < 1e-4 * dot(b - a, b - a);
    const double share = isEndOn ? 0 : -dot(seenA, seen) / square;
    const bool isBetween = share >= 0 && share <= 1 && (ray.hitsEndOn || !isEndOn);
    return isBetween ? std::optional<Vector>(a + share * (b - a)) : std::nullopt;
}

SearchHit nearestOf(const Hits& hits, bool isEdge) {
    SearchHit answer;
    answer.isEdge = isEdge;
    answer.distance = HUGE_VAL;
    for (const auto& [distance, id] : hits) {
        answer.distance = std::min(answer.distance, distance);
    }
    for (const auto& [distance, id] : hits) {
        if (distance <= answer.distance + kAsNear) {
            answer.renderIds.insert(id);
        }
    }
    return answer;
}

}  // namespace

TriangleSearch::TriangleSearch(const Document& document,
                               const std::optional<SavedView::Plane>& clipping)
    : _clipping(clipping) {
    for (const Component& root : document.roots) {
        add(document, root, identityMatrix, "1");
    }
}

void TriangleSearch::add(const Document& document, const Component& component,
                         const Matrix& worldFromParent, const std::string& path) {
    const Matrix world = product(worldFromParent, component.parentFromChild);
    const std::string here = path + "/" + std::to_string(component.id);
    const Product& what = document.products.at(component.product);
    for (const Body& body : what.bodies) {
        addBody(body, world, here + "/" + std::to_string(body.id));
    }
    for (const Component& child : what.components) {
        add(document, child, world, here);
    }
}

void TriangleSearch::addBody(const Body& body, const Matrix& world, const std::string& path) {
    for (const Face& face : body.faces) {
        _faces.push_back({path + kFaces + std::to_string(face.id), placed(face.points, body, world),
                          face.triangles});
    }
    for (const Edge& edge : body.edges) {
        _edges.push_back(
            {path + kEdges + std::to_string(edge.id), placed(edge.points, body, world), {}});
    }
}

bool TriangleSearch::isCut(const Vector& point) const {
    return _clipping && dot(point - _clipping->point, _clipping->normal) < 0;
}

Hits TriangleSearch::hitsOfFaces(const SearchRay& ray) const {
    const std::array<float, 3> root = floats(ray.root);
    const std::array<float, 3> direction = floats(ray.direction);
    Hits hits;
    for (const Part& face : _faces) {
        for (std::size_t at = 0; at + 2 < face.corners.size(); at += 3) {
            const auto corner = [&](std::size_t of) {
                return face.points.data() + 3 * std::size_t(face.corners[at + of]);
            };
            std::array<float, 3> point = {};
            float distance = 0;
            if (viz::RayHitsTriangle(corner(0), corner(1), corner(2), root.data(), direction.data(),
                                     point.data(), distance) &&
                !isCut({point[0], point[1], point[2]})) {
                hits.emplace_back(distance, face.renderId);
            }
        }
    }
    return hits;
}

Hits TriangleSearch::hitsOfEdges(const SearchRay& ray, double farthest) const {
    Hits hits;
    for (const Part& edge : _edges) {
        for (std::size_t at = 0; at + 5 < edge.points.size(); at += 3) {
            const std::optional<Vector> point =
                nearestPoint(ray, pointAt(edge.points, at), pointAt(edge.points, at + 3));
            if (!point || !(lengthOf(across(ray, *point)) < ray.aperture) || isCut(*point)) {
                continue;
            }
            const double distance = dot(*point - ray.root, ray.direction);
            if (distance <= farthest) {
                hits.emplace_back(distance, edge.renderId);
            }
        }
    }
    return hits;
}

SearchHit TriangleSearch::Search(const SearchRay& ray) const {
    const SearchHit face = nearestOf(hitsOfFaces(ray), false);
    const SearchHit edge = nearestOf(hitsOfEdges(ray, face.distance + 2 * ray.aperture), true);
    return edge.renderIds.empty() ? face : edge;
}

}  // namespace kesview::support
