#include "support/Allocations.h"

#include <cerrno>
#include <cstddef>
#include <malloc.h>

// The C library's own, under the names that remain where a program brings a malloc.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);
}

namespace bench {

namespace {

Allocations counted;  // these programs have one thread

std::int64_t sizeOf(void* block) {
    return static_cast<std::int64_t>(malloc_usable_size(block) + sizeof(std::size_t));
}

void* taken(void* block) {
    if (block != nullptr) {
        counted.bytes += sizeOf(block);
        ++counted.blocks;
        ++counted.calls;
    }
    return block;
}

void givenBack(void* block) {
    if (block != nullptr) {
        counted.bytes -= sizeOf(block);
        --counted.blocks;
    }
}

}  // namespace

Allocations allocations() {
    return counted;
}

}  // namespace bench

extern "C" {

void* malloc(std::size_t size) noexcept {
    return bench::taken(__libc_malloc(size));
}

void* calloc(std::size_t count, std::size_t size) noexcept {
    return bench::taken(__libc_calloc(count, size));
}

void* realloc(void* block, std::size_t size) noexcept {
    bench::givenBack(block);
    void* const moved = __libc_realloc(block, size);
    const bool stays = moved == nullptr && size != 0;  // memory ran out
    bench::taken(stays ? block : moved);
    return moved;
}

void* memalign(std::size_t alignment, std::size_t size) noexcept {
    return bench::taken(__libc_memalign(alignment, size));
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
    return memalign(alignment, size);
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size) noexcept {
    *block = memalign(alignment, size);
    return *block != nullptr ? 0 : ENOMEM;
}

void free(void* block) noexcept {
    bench::givenBack(block);
    __libc_free(block);
}

}  // extern "C"
