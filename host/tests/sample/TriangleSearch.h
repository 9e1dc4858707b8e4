#pragma once

/// @file
/// What a ray hits in a document, by the library's hit test on every triangle, and the plain
/// distance from every edge: slow, without a scene, an index or a view.

#include "document/Document.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace kesview::support {

/// A ray of length 1, for a parallel view.
struct SearchRay {
    Vector root = {0, 0, 0};
    Vector direction = {0, 0, -1};
    double aperture = 0;    ///< within which edges win, in millimetres
    bool hitsEndOn = true;  ///< segments that run along the ray as well, where they begin
};

/// The render ids of what may be answered: more than one where they are as near.
struct SearchHit {
    std::set<std::string> renderIds;
    double distance = 0;
    bool isEdge = false;
};

class TriangleSearch {
public:
    /// Cuts away what lies against the normal of @p clipping. Keeps none of the document.
    TriangleSearch(const Document& document, const std::optional<SavedView::Plane>& clipping);

    /// No ids where nothing is hit.
    SearchHit Search(const SearchRay& ray) const;

private:
    struct Part {
        std::string renderId;
        std::vector<float> points;          ///< triples in the world
        decltype(Face::triangles) corners;  ///< of triangles; empty for an edge
    };

    void add(const Document& document, const Component& component, const Matrix& worldFromParent,
             const std::string& path);
    void addBody(const Body& body, const Matrix& world, const std::string& path);
    bool isCut(const Vector& point) const;
    std::vector<std::pair<double, std::string>> hitsOfFaces(const SearchRay& ray) const;
    std::vector<std::pair<double, std::string>> hitsOfEdges(const SearchRay& ray,
                                                            double farthest) const;

    std::vector<Part> _faces;
    std::vector<Part> _edges;
    std::optional<SavedView::Plane> _clipping;
};

}  // namespace kesview::support
