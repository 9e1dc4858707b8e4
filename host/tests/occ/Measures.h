#pragma once

/// @file
/// Measures documents by walking their arrays, without Open CASCADE.

#include "document/Document.h"

#include <array>
#include <cstddef>
#include <string>

namespace kesview {

/// Everything counted as often as it is used.
struct Counts {
    std::size_t leaves = 0;  ///< uses of products without components
    std::size_t solids = 0;
    std::size_t faces = 0;
    std::size_t edges = 0;
    std::size_t triangles = 0;
};

struct Extent {
    Vector low = {1e300, 1e300, 1e300};
    Vector high = {-1e300, -1e300, -1e300};

    void Add(const Vector& point);
    double Diagonal() const;
};

Counts countsOf(const Document& document);

/// Of all points of faces and edges, in the world.
Extent extentOf(const Document& document);

/// By the divergence theorem: positive when all triangles are wound outwards.
double volumeOf(const Body& body);

/// The smallest cosine between a triangle's own normal and those of its corners: 1 when all agree,
/// negative when one looks to the other side.
double worstNormalAgreement(const Face& face);

/// Distinct colours of products, bodies, faces, edges and components.
std::size_t distinctColors(const Document& document);

/// How often the findings tell this code; 0 where they do not.
std::uint64_t findingCount(const Document& document, const std::string& code);

}  // namespace kesview
