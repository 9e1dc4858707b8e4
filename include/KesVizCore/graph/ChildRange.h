#pragma once

#include <KesVizCore/graph/ChildTable.h>

#include <cstddef>

namespace KesVizCore {

/// The children of a group, to be walked in the ascending order of their ids.
///
/// It has begin, end and size; what it yields has an `id`, under which the child was linked, and
/// the `child`, which is never null. A child that is linked or unlinked ends the life of the range
/// and of its iterators, as does the group's end. Nothing is allocated and nothing throws.
///
/// @code
/// for (const auto& [id, child] : group->EachChild()) {
///     draw(*child);
/// }
/// @endcode
class ChildRange {
public:
    using Iterator = ChildTable::Iterator;

    Iterator begin() const { return _begin; }
    Iterator end() const { return _end; }
    std::size_t size() const { return _size; }
    bool empty() const { return _size == 0; }

private:
    friend class Node;

    explicit ChildRange(const ChildTable& children)
        : _begin(children.begin()), _end(children.end()), _size(children.size()) {}

    Iterator _begin;
    Iterator _end;
    std::size_t _size;
};

}  // namespace KesVizCore
