#include "commands/Placement.h"

#include "commands/Errors.h"
#include "view/Vectors.h"

#include <cstdint>

namespace kesview {

namespace {

constexpr std::uint64_t kMostUses = 1'000'000;
constexpr std::size_t kMostLevels = 1000;

class PlacedWalk {
public:
    PlacedWalk(const Document& document, const std::function<void(const Placed&)>& visit)
        : _document(document), _visit(visit) {}

    void Into(const Component& component, std::size_t level, const Matrix& worldFromParent) {
        if (++_uses > kMostUses || level > kMostLevels) {
            throw LimitError(
                "the assembly is too large: more than a million uses of products, or more than "
                "1000 levels.");
        }
        Placed placed;
        placed.product = &_document.products.at(component.product);
        placed.productIndex = component.product;
        placed.level = level;
        placed.worldFromProduct = kesview::product(worldFromParent, component.parentFromChild);
        _visit(placed);
        for (const Component& child : placed.product->components) {
            Into(child, level + 1, placed.worldFromProduct);
        }
    }

private:
    const Document& _document;
    const std::function<void(const Placed&)>& _visit;
    std::uint64_t _uses = 0;
};

}  // namespace

void forEachPlaced(const Document& document, const std::function<void(const Placed&)>& visit) {
    PlacedWalk walk(document, visit);
    for (const Component& root : document.roots) {
        walk.Into(root, 1, identityMatrix);
    }
}

}  // namespace kesview
