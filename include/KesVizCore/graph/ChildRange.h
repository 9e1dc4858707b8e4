#pragma once

#include <KesVizCore/graph/ChildTable.h>

#include <cstddef>

namespace KesVizCore {

/// The children of a group, to be walked in the ascending order of their ids.
///
/// What it yields has an `id`, under which the child was linked, and the `child`, which is never
/// null. A child that is linked or unlinked ends the life of the range and of its iterators, as
/// does the end of the group. Nothing is allocated and nothing throws.
///
/// @code
/// for (const auto& [id, child] : group->EachChild()) {
///     draw(*child);
/// }
/// @endcode
class ChildRange {
public:
    /// Forward alone.
    using Iterator = ChildTable::Iterator;

    Iterator begin() const { return _begin; }   ///< at the lowest id
    Iterator end() const { return _end; }       ///< behind the highest
    std::size_t size() const { return _size; }  ///< how many children there are
    bool empty() const { return _size == 0; }   ///< whether there is none

private:
    friend class Node;

    explicit ChildRange(const ChildTable& children)
        : _begin(children.begin()), _end(children.end()), _size(children.size()) {}

    Iterator _begin;
    Iterator _end;
    std::size_t _size;
};

}  // namespace KesVizCore
