#pragma once

#include <cstddef>

namespace KesVizCore {

/// While one lives, the heap of this thread fails on demand.
///
/// A program that links OutOfMemory.cpp has the global operators new and delete replaced: the
/// single and the array forms, throwing and nothrow, but not those for over-aligned types. They
/// serve every module of the process, so that allocations inside the library count too; for a DLL
/// OutOfMemoryWindows.cpp sees to that. Slabs of pooled objects are off from the start.
///
/// @code
/// {
///     OutOfMemory outOfMemory(1);
///     made = RenderId::CreateRenderId();
/// }
/// EXPECT_EQ(made, nullptr);
/// @endcode
///
/// Keep the scope as small as that: messages of the test framework allocate as well.
///
/// @par Errors
/// A throwing operator fails by std::bad_alloc, a nothrow one by null.
///
/// @par Threads
/// Each thread has its own; other threads go on allocating. At most one lives on a thread.
class OutOfMemory {
public:
    /// Lets exactly one allocation fail, the @p failing -th from now on, counted from 1; with 0
    /// none fails, and the object only counts.
    explicit OutOfMemory(long failing);
    ~OutOfMemory();
    OutOfMemory(const OutOfMemory&) = delete;
    OutOfMemory& operator=(const OutOfMemory&) = delete;

    /// The allocations asked for since construction, the failing one included.
    long Allocations() const;
    /// True as soon as the allocation that was to fail has been asked for.
    bool HasFailed() const;

    /// The blocks that this thread allocated less those that it freed: what leaked, when it is
    /// compared before and after.
    static long BlocksInUse();

private:
    long _failing;
};

/// @name What the replaced operators stand on
/// @{
/// Null when this is the allocation that is to fail, or when memory really runs out.
void* allocateForTest(std::size_t size);
/// Null is left alone.
void releaseForTest(void* block);
/// @}

/// Calls @p operation again and again, each time with the next of its allocations failing,
/// until one call runs through without a failure; returns how many allocations that one made.
///
/// @p operation takes a `long failing`, makes its own OutOfMemory with it around what is
/// tested, and returns HasFailed().
template <typename Operation>
long FailEachAllocation(Operation&& operation) {
    long failing = 1;
    while (operation(failing)) {
        ++failing;
    }
    return failing - 1;
}

}  // namespace KesVizCore
