#pragma once

/// @file
/// The size of what is large for its own sake.

#include <cstdlib>

namespace KesVizCore::support {

/// @p full, or a hundredth of it where KESVIZCORE_SMALL_SCALE stands in the environment, as under
/// scripts/memcheck, where everything takes 30 times as long.
template <typename Number>
Number scaled(Number full) {
    return std::getenv("KESVIZCORE_SMALL_SCALE") != nullptr ? full / 100 : full;
}

}  // namespace KesVizCore::support
