/// @file
#include "document/CheckDocument.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>

namespace kesview {

namespace {

[[noreturn]] void refuse(const std::string& owner, Id id, const std::string& fault) {
    throw std::runtime_error(owner + " " + std::to_string(id) + " " + fault + ".");
}

void checkTriples(const std::vector<float>& points, const std::string& owner, Id id) {
    if (points.size() % 3 != 0) {
        refuse(owner, id, "has points that are not whole triples");
    }
}

void checkTriangles(const std::vector<std::int32_t>& triangles, std::size_t pointCount,
                    const std::string& owner, Id id) {
    if (triangles.size() % 3 != 0) {
        refuse(owner, id, "has triangles without three corners");
    }
    if (triangles.empty()) {
        return;
    }
    const auto [low, high] = std::minmax_element(triangles.begin(), triangles.end());
    if (*low < 0 || static_cast<std::size_t>(*high) >= pointCount) {
        refuse(owner, id, "has a triangle on a point that does not exist");
    }
}

void checkFace(const Face& face) {
    checkTriples(face.points, "Face", face.id);
    if (!face.normals.empty() && face.normals.size() != face.points.size()) {
        refuse("Face", face.id, "has not one normal for each point");
    }
    checkTriangles(face.triangles, face.points.size() / 3, "Face", face.id);
}

void checkBody(const Body& body) {
    checkTriples(body.points, "Body", body.id);
    for (const Face& face : body.faces) {
        checkFace(face);
    }
    for (const Edge& edge : body.edges) {
        checkTriples(edge.points, "Edge", edge.id);
    }
}

void checkAnnotation(const Annotation& annotation) {
    for (const std::vector<float>& line : annotation.lines) {
        checkTriples(line, "Annotation", annotation.id);
    }
    for (const FilledArea& area : annotation.areas) {
        checkTriples(area.points, "Annotation", annotation.id);
        checkTriangles(area.triangles, area.points.size() / 3, "Annotation", annotation.id);
    }
}

void checkComponents(const std::vector<Component>& components, std::size_t productCount) {
    for (const Component& component : components) {
        if (component.product >= productCount) {
            refuse("Component", component.id, "is of a product that does not exist");
        }
    }
}

/// Takes away, again and again, products that no remaining one uses; a cycle never goes.
void checkForCycles(const std::vector<Product>& products) {
    std::vector<std::size_t> uses(products.size(), 0);
    for (const Product& product : products) {
        for (const Component& component : product.components) {
            ++uses[component.product];
        }
    }
    std::vector<std::size_t> unused;
    for (std::size_t i = 0; i < products.size(); ++i) {
        if (uses[i] == 0) {
            unused.push_back(i);
        }
    }
    for (std::size_t next = 0; next < unused.size(); ++next) {
        for (const Component& component : products[unused[next]].components) {
            if (--uses[component.product] == 0) {
                unused.push_back(component.product);
            }
        }
    }
    const auto looped =
        std::find_if(uses.begin(), uses.end(), [](std::size_t count) { return count > 0; });
    if (looped != uses.end()) {
        refuse("Product", products[static_cast<std::size_t>(looped - uses.begin())].id,
               "contains itself, or what contains itself");
    }
}

}  // namespace

void checkDocument(const Document& document) {
    checkComponents(document.roots, document.products.size());
    for (const Product& product : document.products) {
        checkComponents(product.components, document.products.size());
        for (const Body& body : product.bodies) {
            checkBody(body);
        }
    }
    checkForCycles(document.products);
    for (const Annotation& annotation : document.annotations) {
        checkAnnotation(annotation);
    }
}

}  // namespace kesview
