#include "core/OutOfMemory.h"

#include <KesVizCore/core/Pooled.h>

#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

/// The heap as one thread sees it.
struct Heap {
    long asked = 0;
    long failing = 0;
    long blocksInUse = 0;
};

thread_local Heap heap;

/// What programs with a failing heap count are the allocations of single objects.
[[maybe_unused]] const bool slabsAreOff = (KesVizCore::Pooled::UseSlabs(false), true);

}  // namespace

namespace KesVizCore {

void* allocateForTest(std::size_t size) {
    ++heap.asked;
    if (heap.asked == heap.failing) {
        return nullptr;
    }
    void* const block = std::malloc(size != 0 ? size : 1);
    if (block != nullptr) {
        ++heap.blocksInUse;
    }
    return block;
}

void releaseForTest(void* block) {
    if (block != nullptr) {
        --heap.blocksInUse;
        std::free(block);
    }
}

}  // namespace KesVizCore

namespace {

using KesVizCore::allocateForTest;
using KesVizCore::releaseForTest;

void* allocateOrThrow(std::size_t size) {
    void* const block = allocateForTest(size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

}  // namespace

void* operator new(std::size_t size) {
    return allocateOrThrow(size);
}
void* operator new[](std::size_t size) {
    return allocateOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return allocateForTest(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return allocateForTest(size);
}
void operator delete(void* block) noexcept {
    releaseForTest(block);
}
void operator delete[](void* block) noexcept {
    releaseForTest(block);
}
void operator delete(void* block, std::size_t) noexcept {
    releaseForTest(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    releaseForTest(block);
}
void operator delete(void* block, const std::nothrow_t&) noexcept {
    releaseForTest(block);
}
void operator delete[](void* block, const std::nothrow_t&) noexcept {
    releaseForTest(block);
}

namespace KesVizCore {

OutOfMemory::OutOfMemory(long failing) : _failing(failing) {
    heap.asked = 0;
    heap.failing = failing;
}

OutOfMemory::~OutOfMemory() {
    heap.failing = 0;
}

long OutOfMemory::Allocations() const {
    return heap.asked;
}

bool OutOfMemory::HasFailed() const {
    return _failing > 0 && heap.asked >= _failing;
}

long OutOfMemory::BlocksInUse() {
    return heap.blocksInUse;
}

}  // namespace KesVizCore
