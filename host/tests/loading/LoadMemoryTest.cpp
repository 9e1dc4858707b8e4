#include "loading/Load.h"
#include "support/DocumentKit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace {

/// What this program holds by new, counted by the operators below.
struct Held {
    std::size_t now = 0;
    std::size_t most = 0;
};

Held held;

void* take(std::size_t size) noexcept {
    void* const memory = std::malloc(size);
    held.now += memory != nullptr ? malloc_usable_size(memory) : 0;
    held.most = std::max(held.most, held.now);
    return memory;
}

void* takeOrThrow(std::size_t size) {
    void* const memory = take(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void giveBack(void* memory) noexcept {
    held.now -= memory != nullptr ? malloc_usable_size(memory) : 0;
    std::free(memory);
}

}  // namespace

// All of them, since the ones left out need not end in those that are replaced.
void* operator new(std::size_t size) {
    return takeOrThrow(size);
}
void* operator new[](std::size_t size) {
    return takeOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return take(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return take(size);
}
void operator delete(void* memory) noexcept {
    giveBack(memory);
}
void operator delete[](void* memory) noexcept {
    giveBack(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    giveBack(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    giveBack(memory);
}

namespace kesview {
namespace {

constexpr std::size_t kFaces = 100'000;
constexpr std::size_t kPointsOfFace = 100;

/// Bytes of the arrays of the document.
constexpr std::size_t kArrays = kFaces * kPointsOfFace * (3 + 3) * sizeof(float);

Document largeDocument() {
    Document document;
    document.products = {support::product(2, "Large")};
    document.roots = {support::component(3, "Large", 0)};
    Body body;
    body.id = 4;
    body.faces.resize(kFaces);
    Id id = 5;
    for (Face& face : body.faces) {
        face.id = id++;
        face.points.assign(3 * kPointsOfFace, 1.0F);
        face.normals.assign(3 * kPointsOfFace, 0.0F);
        face.triangles = {0, 1, 2};
    }
    document.products[0].bodies.push_back(std::move(body));
    return document;
}

// Elements have names, ids and maps of their own, which weigh less than half of these arrays.
TEST(LoadMemoryTest, AHundredThousandFacesAreNeverHeldTwice) {
    const std::size_t before = held.now;
    Document document = largeDocument();
    const std::size_t withDocument = held.now - before;
    ASSERT_GT(withDocument, kArrays);
    held.most = held.now;
    const auto model = load(document);
    EXPECT_EQ(model->elements.size(), kFaces + 1);
    EXPECT_LT(held.most - before, withDocument + kArrays / 2);
    for (const Face& face : document.products[0].bodies[0].faces) {
        ASSERT_EQ(face.points.capacity(), 0U);
    }
}

}  // namespace
}  // namespace kesview
