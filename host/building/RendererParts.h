#pragma once

/// @file
/// What both renderers need in one place.

#include "document/Document.h"

#include <KesVizCore/core/EntityId.h>
#include <KesVizCore/core/RGBAColor.h>
#include <KesVizCore/model/VizElement.h>

#include <cstddef>
#include <vector>

namespace kesview {

namespace viz = KesVizCore;

inline viz::EntityId entityIdOf(const viz::VizElement& element) {
    viz::EntityId entity;
    element.GetEntityID(entity);
    return entity;
}

/// The maker of items takes arrays that it may write to; this host's only reads them, and keeps the
/// pointers: what it is given must be the model's own array, not a copy.
template <typename Value>
Value* arrayOf(const std::vector<Value>& values) {
    return values.empty() ? nullptr : const_cast<Value*>(values.data());
}

inline int countOf(std::size_t size) {
    return static_cast<int>(size);
}

/// Of triples.
inline int pointCountOf(const std::vector<float>& triples) {
    return countOf(triples.size() / 3);
}

}  // namespace kesview
