#pragma once

#include <KesVizCore/core/RenderId.h>
#include <KesVizCore/graph/GeoNode.h>

#include <memory>
#include <new>

namespace KesVizCore {

/// The render id of @p node by value.
///
/// @throws std::bad_alloc where GeoNode::GetRenderId answers null.
inline RenderId renderIdOf(const GeoNode& node) {
    const std::unique_ptr<RenderId> id(node.GetRenderId());
    if (id == nullptr) {
        throw std::bad_alloc();
    }
    return *id;
}

}  // namespace KesVizCore
