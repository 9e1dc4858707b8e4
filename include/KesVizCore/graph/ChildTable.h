#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <map>
#include <memory>
#include <vector>

namespace KesVizCore {

/// @cond The inside of nodes, which hosts do not use.

class GeoNode;

/// The children inside a group, ascending by id: one word where there are none.
///
/// Ids and children stand side by side in a run of at most a few hundred; more children have more
/// runs and a directory of them. Where the ids of a run have no gap, as numbered faces and edges
/// have not, a look-up goes to its place at once; otherwise it halves. A std::map is made when
/// somebody asks for one, and kept in step from then on. Only std::bad_alloc is thrown, and then
/// nothing has changed.
class ChildTable {
public:
    using Map = std::map<std::uint64_t, GeoNode*>;

    /// A child and the id that it was linked under.
    struct Entry {
        std::uint64_t id;
        GeoNode* child;
    };

    class Iterator;

    ChildTable() = default;
    ChildTable(const ChildTable& other) { *this = other; }
    ChildTable& operator=(const ChildTable& other);
    ~ChildTable();

    bool empty() const { return _only == nullptr || size() == 0; }
    std::size_t size() const;
    Iterator begin() const;
    Iterator end() const;

    Iterator Find(std::uint64_t id) const;          ///< end() without such an entry
    Iterator After(std::uint64_t id) const;         ///< the first entry of a greater id
    GeoNode* ChildOf(std::uint64_t id) const;       ///< null without such an entry
    bool Insert(std::uint64_t id, GeoNode* child);  ///< false for an id that is taken
    bool Erase(std::uint64_t id);                   ///< false without such an entry
    void Clear();

    /// The entries as a map, for as long as the table lives.
    const Map& AsMap() const;

private:
    /// The head of a block of memory in which the entries follow. In a table none is empty.
    struct Run {
        std::uint32_t size;
        std::uint32_t capacity;

        /// Gives the block back.
        struct Release {
            void operator()(Run* run) const;
        };
        static std::unique_ptr<Run, Release> Make(std::uint32_t capacity, const Entry* first,
                                                  const Entry* last);
        Entry* begin() { return reinterpret_cast<Entry*>(this + 1); }
        Entry* end() { return begin() + size; }
        Entry* PlaceOf(std::uint64_t id);
        Entry* Find(std::uint64_t id);
        void Insert(Entry* place, const Entry& entry);
        void Erase(Entry* place);
    };
    using RunOwner = std::unique_ptr<Run, Run::Release>;
    using RunPlace = Run**;

    /// What a table has that is large or has been asked for a map.
    struct Directory {
        std::vector<Run*> runs;
        std::size_t size = 0;
        std::unique_ptr<Map> map;

        ~Directory();
    };

    Directory* directory() const;
    Directory& asDirectory() const;
    RunPlace beginOfRuns() const;
    RunPlace endOfRuns() const;
    RunPlace runFor(std::uint64_t id) const;
    bool insertEntry(const Entry& entry);
    void insertInFullRun(RunPlace run, const Entry& entry);
    bool eraseEntry(std::uint64_t id);

    /// The only run, null, or the address of the directory with the lowest bit set.
    mutable Run* _only = nullptr;
};

/// Walks the entries; any change of the table ends its life, but not the map that is made.
class ChildTable::Iterator {
public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = Entry;
    using difference_type = std::ptrdiff_t;
    using pointer = const Entry*;
    using reference = const Entry&;

    Iterator() = default;  ///< behind the last
    const Entry& operator*() const { return *_entry; }
    const Entry* operator->() const { return _entry; }
    Iterator& operator++() {
        ++_entry;
        if (_entry == _endOfRun) {
            ++_run;
            const bool isEnd = _run == _endOfRuns;
            _entry = isEnd ? nullptr : (*_run)->begin();
            _endOfRun = isEnd ? nullptr : (*_run)->end();
        }
        return *this;
    }
    Iterator operator++(int) {
        const Iterator before = *this;
        ++*this;
        return before;
    }
    bool operator==(const Iterator& other) const { return _entry == other._entry; }
    bool operator!=(const Iterator& other) const { return _entry != other._entry; }

private:
    friend class ChildTable;
    Iterator(RunPlace run, RunPlace endOfRuns, const Entry* entry)
        : _run(run),
          _endOfRuns(endOfRuns),
          _entry(entry),
          _endOfRun(entry != nullptr ? (*run)->end() : nullptr) {}

    RunPlace _run = nullptr;
    RunPlace _endOfRuns = nullptr;
    const Entry* _entry = nullptr;     ///< null behind the last
    const Entry* _endOfRun = nullptr;  ///< the run stays where it is when a map is made
};

/// @endcond

}  // namespace KesVizCore
