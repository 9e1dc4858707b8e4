#pragma once

namespace KesVizCore {

/// Destroys what the pointers of @p owned point to, in their order, and empties the list.
template <typename List>
void deleteAll(List& owned) {
    for (auto* element : owned) {
        delete element;
    }
    owned.clear();
}

}  // namespace KesVizCore
