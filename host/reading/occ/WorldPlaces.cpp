/// @file
/// See WorldPlaces.h.

#include "reading/occ/WorldPlaces.h"

namespace kesview {

namespace {

Matrix multiply(const Matrix& a, const Matrix& b) {
    Matrix product{};
    for (std::size_t column = 0; column < 4; ++column) {
        for (std::size_t row = 0; row < 4; ++row) {
            for (std::size_t k = 0; k < 4; ++k) {
                product[column * 4 + row] += a[k * 4 + row] * b[column * 4 + k];
            }
        }
    }
    return product;
}

/// Once a product has been met, all below it have their first place too: it is walked once only.
void place(const Document& document, const Component& component, const Matrix& worldFromParent,
           std::vector<bool>& known, std::vector<Matrix>& places) {
    if (known[component.product]) {
        return;
    }
    known[component.product] = true;
    const Matrix world = multiply(worldFromParent, component.parentFromChild);
    places[component.product] = world;
    for (const Component& child : document.products[component.product].components) {
        place(document, child, world, known, places);
    }
}

}  // namespace

std::vector<Matrix> firstPlaces(const Document& document) {
    std::vector<Matrix> places(document.products.size(), identityMatrix);
    std::vector<bool> known(document.products.size(), false);
    for (const Component& root : document.roots) {
        place(document, root, identityMatrix, known, places);
    }
    return places;
}

}  // namespace kesview
