#pragma once

/// @file
/// What a loader loads, as what it is.

#include "document/Document.h"

#include <KesVizCore/core/RGBAColor.h>

#include <memory>
#include <new>
#include <utility>
#include <vector>

namespace kesview {

/// Throws std::bad_alloc where there is nothing.
template <typename Element, typename Loader>
std::unique_ptr<Element> loadOne(Loader&& loader) {
    std::unique_ptr<Element> element(static_cast<Element*>(loader.Load()));
    if (element == nullptr) {
        throw std::bad_alloc();
    }
    return element;
}

inline KesVizCore::RGBAColor colorOf(const Color& color) {
    return {color[0], color[1], color[2], color[3]};
}

/// Gives the memory back, which clear() would keep.
template <typename Value>
void release(std::vector<Value>& values) {
    std::vector<Value>().swap(values);
}

}  // namespace kesview
