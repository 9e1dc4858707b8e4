#pragma once

/// @file
/// What a program has taken from malloc. A program that links Allocations.cpp has a malloc of its
/// own in the place of the C library's, which counts and hands on; operator new goes through it
/// too.

#include <cstdint>

namespace bench {

struct Allocations {
    std::int64_t bytes = 0;   ///< in use, with what malloc keeps beside each block
    std::int64_t blocks = 0;  ///< in use
    std::int64_t calls = 0;   ///< that took a block, since the program began

    Allocations operator-(const Allocations& before) const {
        return {bytes - before.bytes, blocks - before.blocks, calls - before.calls};
    }
};

Allocations allocations();

}  // namespace bench
