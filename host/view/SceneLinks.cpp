#include "view/SceneLinks.h"

#include <KesVizCore/graph/Node.h>

#include <cstdint>
#include <vector>

namespace kesview {

void unlinkSharedNodes(viz::Node& top) {
    std::vector<viz::Node*> groups = {&top};
    std::vector<std::uint64_t> shared;
    while (!groups.empty()) {
        viz::Node* const group = groups.back();
        groups.pop_back();
        shared.clear();
        for (const auto& [id, child] : group->EachChild()) {
            if (child->EachParent().size() > 1) {
                shared.push_back(id);
            } else if (auto* const below = dynamic_cast<viz::Node*>(child)) {
                groups.push_back(below);
            }
        }
        for (const std::uint64_t id : shared) {
            group->DeleteChildById(id);  // unlinks alone: another parent is left
        }
    }
}

}  // namespace kesview
