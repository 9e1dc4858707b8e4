#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/core/RenderId.h>

#include <vector>

namespace KesVizCore {

/// What is selected: render ids in the order in which they were added.
///
/// It does not look into the graph: an id of a node that is gone stays until it is removed.
///
/// @par Ownership
/// Holds copies. The adapter owns its holder.
///
/// @par Errors
/// At refuses an index outside with std::out_of_range. What copies ids throws std::bad_alloc when
/// memory runs out; Add and the constructors then leave everything as it was.
///
/// @par Threads
/// Used on the thread of the view.
class KESVIZCORE_API SelectionHolder {
public:
    SelectionHolder();
    SelectionHolder(const SelectionHolder& other);             ///< copies all ids
    SelectionHolder& operator=(const SelectionHolder& other);  ///< copies all ids
    virtual ~SelectionHolder();

    /// Appends a copy; what is here already is added again.
    void Add(const RenderId& id);
    /// Removes the first entry equal to @p id, origin included, and only that one; nothing where
    /// there is none.
    void Remove(const RenderId& id);
    bool Contains(const RenderId& id) const;  ///< whether an entry is equal, origin included
    int Count() const;                        ///< the number of entries
    bool IsEmpty() const;                     ///< without entries
    void Clear();                             ///< removes all entries

    /// A copy of the entry at @p index, 0 <= index < Count().
    RenderId At(const int& index) const;
    /// The entry itself, unchecked; valid until an entry is added or removed.
    RenderId& operator[](int index);
    /// As above, to be read only.
    const RenderId& operator[](int index) const;

private:
    std::vector<RenderId> _ids;
};

}  // namespace KesVizCore
