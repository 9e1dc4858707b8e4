#pragma once

#include <new>
#include <utility>

namespace KesVizCore {

/// What @p make returns, or null where memory runs out on the way.
///
/// The one place that turns an exhausted heap into the null answer which some operations
/// promise; @p make is a callable that returns a pointer to what it has just allocated.
template <typename Make>
auto nullWhenExhausted(Make&& make) -> decltype(std::forward<Make>(make)()) {
    try {
        return std::forward<Make>(make)();
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

}  // namespace KesVizCore
