#include "core/Allocation.h"
#include "platform/Platform.h"

#include <KesVizCore/core/Pooled.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <thread>

namespace KesVizCore {

namespace {

constexpr std::size_t kStep = 16;
constexpr std::size_t kSizes = 8;  ///< of places: the multiples of kStep up to this many
constexpr std::size_t kSmallestSlab = std::size_t{16} << 10;
constexpr std::size_t kLargestSlab = std::size_t{8} << 20;

// Debug builds and sanitizers are there to watch every object. g++ and clang tell differently
// that they instrument.
#ifndef __has_feature
#define __has_feature(feature) 0
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || \
    __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || !defined(NDEBUG)
constexpr bool kUsesSlabsAtFirst = false;
#else
constexpr bool kUsesSlabsAtFirst = true;
#endif
std::atomic<bool> usesSlabs{kUsesSlabsAtFirst};

struct Slab;

/// What precedes an object, and the first bytes of one that is gone.
struct Place {
    Slab* slab;   ///< null where the object has its memory for itself
    Place* next;  ///< the next free place, where no object is
};
constexpr std::size_t kObjectOffset = offsetof(Place, next);

/// The slabs of places of one size that have a free one.
struct Slabs {
    std::atomic_flag isLocked = ATOMIC_FLAG_INIT;
    Slab* first = nullptr;
    std::size_t bytes = 0;  ///< of full slabs too
};

Slabs slabsOfSizes[kSizes];

/// The head of a block of memory that is divided into places.
struct Slab {
    Slabs* owner;
    Slab* previous;
    Slab* next;
    Place* freed;
    char* untouched;  ///< what follows has never been used
    char* end;
    std::size_t used;
    std::size_t bytes;

    bool IsFull() const { return freed == nullptr && untouched == end; }
};

/// Held for a few instructions, of which its own are the dearest: without other threads there is
/// none.
class Lock {
public:
    explicit Lock(Slabs& slabs) : _held(platform::hasOneThread() ? nullptr : &slabs.isLocked) {
        while (_held != nullptr && _held->test_and_set(std::memory_order_acquire)) {
            std::this_thread::yield();
        }
    }
    ~Lock() {
        if (_held != nullptr) {
            _held->clear(std::memory_order_release);
        }
    }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

private:
    std::atomic_flag* _held;
};

void enlist(Slab* slab) {
    Slabs& slabs = *slab->owner;
    slab->previous = nullptr;
    slab->next = slabs.first;
    if (slab->next != nullptr) {
        slab->next->previous = slab;
    }
    slabs.first = slab;
}

void unlist(Slab* slab) {
    (slab->previous != nullptr ? slab->previous->next : slab->owner->first) = slab->next;
    if (slab->next != nullptr) {
        slab->next->previous = slab->previous;
    }
}

// As large as all others of its size together, so that few are needed and most of each is used.
void addSlab(Slabs& slabs, std::size_t placeSize) {
    const std::size_t bytes = std::clamp(slabs.bytes, kSmallestSlab, kLargestSlab);
    char* const memory = static_cast<char*>(::operator new(bytes));
    platform::preferLargePages(memory, bytes);
    // The objects, not the places, are aligned as operator new aligns.
    char* const first = memory + sizeof(Slab) + kStep - kObjectOffset;
    const auto count = static_cast<std::size_t>(memory + bytes - first) / placeSize;
    enlist(new (memory)
               Slab{&slabs, nullptr, nullptr, nullptr, first, first + count * placeSize, 0, bytes});
    slabs.bytes += bytes;
}

void removeSlab(Slab* slab) {
    unlist(slab);
    slab->owner->bytes -= slab->bytes;
    ::operator delete(slab);
}

Place* takePlace(Slabs& slabs, std::size_t placeSize) {
    const Lock lock(slabs);
    if (slabs.first == nullptr) {
        addSlab(slabs, placeSize);
    }
    Slab* const slab = slabs.first;
    Place* place = slab->freed;
    if (place != nullptr) {
        slab->freed = place->next;
    } else {
        place = new (slab->untouched) Place{slab, nullptr};
        slab->untouched += placeSize;
    }
    ++slab->used;
    if (slab->IsFull()) {
        unlist(slab);
    }
    return place;
}

void givePlaceBack(Place* place) {
    Slab* const slab = place->slab;
    const Lock lock(*slab->owner);
    if (slab->IsFull()) {
        enlist(slab);
    }
    place->next = slab->freed;
    slab->freed = place;
    if (--slab->used == 0) {
        removeSlab(slab);
    }
}

/// A place of the object's own.
Place* makePlace(std::size_t objectSize) {
    const std::size_t bytes = std::max(objectSize, sizeof(Place) - kObjectOffset);
    char* const memory = static_cast<char*>(::operator new(kStep + bytes));
    return new (memory + kStep - kObjectOffset) Place{nullptr, nullptr};
}

void destroyPlace(Place* place) {
    ::operator delete(reinterpret_cast<char*>(place) + kObjectOffset - kStep);
}

}  // namespace

void Pooled::UseSlabs(bool use) {
    usesSlabs.store(use, std::memory_order_relaxed);
}

void* Pooled::operator new(std::size_t size) {
    const std::size_t number = (size + kObjectOffset - 1) / kStep;
    const bool isPooled = usesSlabs.load(std::memory_order_relaxed) && number < kSizes;
    Place* const place =
        isPooled ? takePlace(slabsOfSizes[number], (number + 1) * kStep) : makePlace(size);
    return reinterpret_cast<char*>(place) + kObjectOffset;
}

void Pooled::operator delete(void* object) noexcept {
    if (object == nullptr) {
        return;
    }
    auto* const place = reinterpret_cast<Place*>(static_cast<char*>(object) - kObjectOffset);
    if (place->slab != nullptr) {
        givePlaceBack(place);
    } else {
        destroyPlace(place);
    }
}

void* Pooled::operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return nullWhenExhausted([size] { return Pooled::operator new(size); });
}

void Pooled::operator delete(void* object, const std::nothrow_t& /*tag*/) noexcept {
    Pooled::operator delete(object);
}

void* Pooled::operator new(std::size_t size, std::align_val_t alignment) {
    return ::operator new(size, alignment);
}

void Pooled::operator delete(void* object, std::align_val_t alignment) noexcept {
    ::operator delete(object, alignment);
}

void* Pooled::operator new(std::size_t /*size*/, void* place) noexcept {
    return place;
}

void Pooled::operator delete(void* /*object*/, void* /*place*/) noexcept {}

}  // namespace KesVizCore
