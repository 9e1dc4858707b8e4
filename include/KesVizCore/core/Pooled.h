#pragma once

#include <KesVizCore/Export.h>

#include <cstddef>
#include <new>

namespace KesVizCore {

/// Storage for the small objects of a scene, of which there are millions.
///
/// What derives from it is made and destroyed by new and delete in every form, but not by those of
/// the global scope: who destroys an object does not know how it was made. Objects of one size
/// stand side by side in slabs. A slab goes back to the heap with its last object. Large and
/// over-aligned objects come from the heap one by one.
///
/// @par Errors
/// std::bad_alloc when memory runs out, after the new-handler; the form with std::nothrow answers
/// null instead. A new-handler must neither make nor destroy such objects: a lock may be held.
///
/// @par Threads
/// Any thread may make objects, and destroy those that another has made.
class KESVIZCORE_API Pooled {
public:
    /// Whether new objects are put into slabs, which tools that watch the heap cannot look into.
    /// True at first, but not in debug builds nor under sanitizers. Objects that live already
    /// stay where they are.
    static void UseSlabs(bool use);

    /// Memory for an object of @p size bytes, aligned as that of the global operator.
    static void* operator new(std::size_t size);
    /// The same, but null where memory runs out.
    static void* operator new(std::size_t size, const std::nothrow_t& tag) noexcept;
    /// Memory from the heap for an object that is aligned more strictly.
    static void* operator new(std::size_t size, std::align_val_t alignment);
    /// @p place itself, which is the caller's.
    static void* operator new(std::size_t size, void* place) noexcept;

    /// Takes back the memory of an object that is gone; null is left alone.
    static void operator delete(void* object) noexcept;
    /// The same, for an object whose constructor has thrown.
    static void operator delete(void* object, const std::nothrow_t& tag) noexcept;
    /// The same, for an object that is aligned more strictly.
    static void operator delete(void* object, std::align_val_t alignment) noexcept;
    /// Does nothing, for an object whose constructor has thrown: the place is the caller's.
    static void operator delete(void* object, void* place) noexcept;
};

}  // namespace KesVizCore
