/// @file
/// See Measures.h.

#include "occ/Measures.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <set>

namespace kesview {

namespace {

Vector cornerOf(const Face& face, std::size_t index) {
    const auto node = static_cast<std::size_t>(face.triangles[index]) * 3;
    return {static_cast<double>(face.points[node]), static_cast<double>(face.points[node + 1]),
            static_cast<double>(face.points[node + 2])};
}

Vector minus(const Vector& a, const Vector& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

Vector cross(const Vector& a, const Vector& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

double dot(const Vector& a, const Vector& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

Matrix times(const Matrix& a, const Matrix& b) {
    Matrix result{};
    for (std::size_t i = 0; i < 16; ++i) {
        for (std::size_t k = 0; k < 4; ++k) {
            result[i] += a[k * 4 + i % 4] * b[i / 4 * 4 + k];
        }
    }
    return result;
}

Vector transformed(const Matrix& m, const Vector& p) {
    Vector result{};
    for (std::size_t row = 0; row < 3; ++row) {
        result[row] = m[row] * p[0] + m[4 + row] * p[1] + m[8 + row] * p[2] + m[12 + row];
    }
    return result;
}

using Visitor = std::function<void(const Product&, const Matrix& worldFromProduct)>;

void walk(const Document& document, const Component& use, const Matrix& parent,
          const Visitor& visit) {
    const Product& product = document.products[use.product];
    const Matrix world = times(parent, use.parentFromChild);
    visit(product, world);
    for (const Component& component : product.components) {
        walk(document, component, world, visit);
    }
}

void walk(const Document& document, const Visitor& visit) {
    for (const Component& root : document.roots) {
        walk(document, root, identityMatrix, visit);
    }
}

void addPoints(const std::vector<float>& points, const Body& body, const Matrix& world,
               Extent& extent) {
    for (std::size_t i = 0; i + 2 < points.size(); i += 3) {
        Vector point = body.origin;
        for (std::size_t axis = 0; axis < 3; ++axis) {
            point[axis] += static_cast<double>(points[i + axis]);
        }
        extent.Add(transformed(world, point));
    }
}

}  // namespace

void Extent::Add(const Vector& point) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        low[axis] = std::min(low[axis], point[axis]);
        high[axis] = std::max(high[axis], point[axis]);
    }
}

double Extent::Diagonal() const {
    const Vector size = minus(high, low);
    return std::sqrt(dot(size, size));
}

Counts countsOf(const Document& document) {
    Counts counts;
    walk(document, [&counts](const Product& product, const Matrix& /*world*/) {
        counts.leaves += product.components.empty() ? 1U : 0U;
        for (const Body& body : product.bodies) {
            counts.solids += body.kind == BodyKind::Solid ? 1U : 0U;
            counts.faces += body.faces.size();
            counts.edges += body.edges.size();
            for (const Face& face : body.faces) {
                counts.triangles += face.triangles.size() / 3;
            }
        }
    });
    return counts;
}

Extent extentOf(const Document& document) {
    Extent extent;
    walk(document, [&extent](const Product& product, const Matrix& world) {
        for (const Body& body : product.bodies) {
            for (const Face& face : body.faces) {
                addPoints(face.points, body, world, extent);
            }
            for (const Edge& edge : body.edges) {
                addPoints(edge.points, body, world, extent);
            }
        }
    });
    return extent;
}

double volumeOf(const Body& body) {
    double six = 0;
    for (const Face& face : body.faces) {
        for (std::size_t i = 0; i < face.triangles.size(); i += 3) {
            six += dot(cornerOf(face, i), cross(cornerOf(face, i + 1), cornerOf(face, i + 2)));
        }
    }
    return six / 6;
}

double worstNormalAgreement(const Face& face) {
    double worst = 1;
    for (std::size_t i = 0; i < face.triangles.size(); i += 3) {
        const Vector a = cornerOf(face, i);
        const Vector flat = cross(minus(cornerOf(face, i + 1), a), minus(cornerOf(face, i + 2), a));
        const double length = std::sqrt(dot(flat, flat));
        for (std::size_t k = i; k < i + 3 && length > 0; ++k) {
            const auto node = static_cast<std::size_t>(face.triangles[k]) * 3;
            const Vector normal = {static_cast<double>(face.normals[node]),
                                   static_cast<double>(face.normals[node + 1]),
                                   static_cast<double>(face.normals[node + 2])};
            worst = std::min(worst, dot(flat, normal) / length);
        }
    }
    return worst;
}

std::size_t distinctColors(const Document& document) {
    std::set<Color> colors;
    const auto add = [&colors](const auto& colored) {
        if (colored.color) {
            colors.insert(*colored.color);
        }
    };
    for (const Product& product : document.products) {
        add(product);
        std::for_each(product.components.begin(), product.components.end(), add);
        for (const Body& body : product.bodies) {
            add(body);
            std::for_each(body.faces.begin(), body.faces.end(), add);
            std::for_each(body.edges.begin(), body.edges.end(), add);
        }
    }
    return colors.size();
}

std::uint64_t findingCount(const Document& document, const std::string& code) {
    std::uint64_t count = 0;
    for (const Finding& finding : document.findings) {
        count += finding.code == code ? finding.count : 0;
    }
    return count;
}

}  // namespace kesview
