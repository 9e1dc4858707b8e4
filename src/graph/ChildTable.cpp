#include <KesVizCore/graph/ChildTable.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <new>
#include <utility>
#include <vector>

// The analyzer does not know that a marked address stays marked, and takes a run for a directory.
// NOLINTBEGIN(clang-analyzer-core.CallAndMessage, clang-analyzer-cplusplus.NewDelete)

namespace KesVizCore {

namespace {

constexpr std::uint32_t kShortestRun = 4;
constexpr std::uint32_t kLongestRun = 512;

}  // namespace

// --- runs ---------------------------------------------------------------------------------------

void ChildTable::Run::Release::operator()(Run* run) const {
    ::operator delete(run);
}

ChildTable::RunOwner ChildTable::Run::Make(std::uint32_t capacity, const Entry* first,
                                           const Entry* last) {
    void* const memory = ::operator new(sizeof(Run) + capacity * sizeof(Entry));
    RunOwner run(new (memory) Run{static_cast<std::uint32_t>(last - first), capacity});
    std::copy(first, last, run->begin());
    return run;
}

/// The entry of that id, or else the one before which it belongs.
ChildTable::Entry* ChildTable::Run::PlaceOf(std::uint64_t id) {
    const std::uint64_t guess = id - begin()->id;
    if (guess < size && begin()[guess].id == id) {
        return begin() + guess;
    }
    if (end()[-1].id < id) {
        return end();
    }
    return std::lower_bound(begin(), end(), id, [](const Entry& entry, std::uint64_t wanted) {
        return entry.id < wanted;
    });
}

ChildTable::Entry* ChildTable::Run::Find(std::uint64_t id) {
    Entry* const place = PlaceOf(id);
    return place != end() && place->id == id ? place : nullptr;
}

void ChildTable::Run::Insert(Entry* place, const Entry& entry) {
    std::copy_backward(place, end(), end() + 1);
    *place = entry;
    ++size;
}

void ChildTable::Run::Erase(Entry* place) {
    std::copy(place + 1, end(), place);
    --size;
}

ChildTable::Directory::~Directory() {
    std::for_each(runs.begin(), runs.end(), Run::Release());
}

// --- the two forms ------------------------------------------------------------------------------

ChildTable::Directory* ChildTable::directory() const {
    const bool isMarked = (reinterpret_cast<std::uintptr_t>(_only) & 1) != 0;
    return isMarked ? reinterpret_cast<Directory*>(reinterpret_cast<char*>(_only) - 1) : nullptr;
}

ChildTable::Directory& ChildTable::asDirectory() const {
    if (directory() == nullptr) {
        auto made = std::make_unique<Directory>();
        if (_only != nullptr) {
            made->runs.push_back(_only);
            made->size = _only->size;
        }
        _only = reinterpret_cast<Run*>(reinterpret_cast<char*>(made.release()) + 1);
    }
    return *directory();
}

ChildTable::RunPlace ChildTable::beginOfRuns() const {
    Directory* const many = directory();
    return many != nullptr ? many->runs.data() : &_only;
}

ChildTable::RunPlace ChildTable::endOfRuns() const {
    const Directory* const many = directory();
    return beginOfRuns() + (many != nullptr ? many->runs.size() : _only != nullptr ? 1 : 0);
}

ChildTable::~ChildTable() {
    delete directory();
    if (directory() == nullptr) {
        Run::Release()(_only);
    }
}

ChildTable& ChildTable::operator=(const ChildTable& other) {
    if (this == &other) {
        return *this;
    }
    ChildTable copy;
    for (const Entry& entry : other) {
        copy.insertEntry(entry);
    }
    if (directory() != nullptr && directory()->map != nullptr) {
        Map entries = copy.AsMap();
        copy.asDirectory().map.swap(directory()->map);  // whoever holds the map keeps it
        copy.asDirectory().map->swap(entries);
    }
    std::swap(_only, copy._only);
    return *this;
}

// --- looking ------------------------------------------------------------------------------------

std::size_t ChildTable::size() const {
    const Directory* const many = directory();
    return many != nullptr ? many->size : _only != nullptr ? _only->size : 0;
}

/// The run that holds the id or where it belongs, of a table that is not empty.
ChildTable::RunPlace ChildTable::runFor(std::uint64_t id) const {
    const RunPlace first = beginOfRuns();
    if (directory() == nullptr) {
        return first;
    }
    return std::prev(std::upper_bound(
        first + 1, endOfRuns(), id,
        [](std::uint64_t wanted, Run* const run) { return wanted < run->begin()->id; }));
}

ChildTable::Iterator ChildTable::begin() const {
    return empty() ? end() : Iterator(beginOfRuns(), endOfRuns(), (*beginOfRuns())->begin());
}

ChildTable::Iterator ChildTable::end() const {
    return {};
}

ChildTable::Iterator ChildTable::Find(std::uint64_t id) const {
    if (empty()) {
        return end();
    }
    const RunPlace run = runFor(id);
    return {run, endOfRuns(), (*run)->Find(id)};
}

ChildTable::Iterator ChildTable::After(std::uint64_t id) const {
    if (empty()) {
        return end();
    }
    const RunPlace run = runFor(id);
    Entry* place = (*run)->PlaceOf(id);
    if (place != (*run)->end() && place->id == id) {
        ++place;
    }
    if (place != (*run)->end()) {
        return {run, endOfRuns(), place};
    }
    return run + 1 != endOfRuns() ? Iterator(run + 1, endOfRuns(), (*(run + 1))->begin()) : end();
}

GeoNode* ChildTable::ChildOf(std::uint64_t id) const {
    if (empty()) {
        return nullptr;
    }
    const Entry* const entry = (*runFor(id))->Find(id);
    return entry != nullptr ? entry->child : nullptr;
}

const ChildTable::Map& ChildTable::AsMap() const {
    std::unique_ptr<Map>& map = asDirectory().map;
    if (map == nullptr) {
        auto entries = std::make_unique<Map>();
        for (const Entry& entry : *this) {
            entries->emplace_hint(entries->end(), entry.id, entry.child);
        }
        map = std::move(entries);
    }
    return *map;
}

// --- changing -----------------------------------------------------------------------------------

bool ChildTable::Insert(std::uint64_t id, GeoNode* child) {
    if (!insertEntry({id, child})) {
        return false;
    }
    if (directory() != nullptr && directory()->map != nullptr) {
        try {
            directory()->map->emplace(id, child);
        } catch (...) {
            eraseEntry(id);
            throw;
        }
    }
    return true;
}

bool ChildTable::Erase(std::uint64_t id) {
    if (!eraseEntry(id)) {
        return false;
    }
    if (directory() != nullptr && directory()->map != nullptr) {
        directory()->map->erase(id);
    }
    return true;
}

void ChildTable::Clear() {
    std::for_each(beginOfRuns(), endOfRuns(), Run::Release());
    if (Directory* const many = directory()) {
        many->runs.clear();
        many->size = 0;
        if (many->map != nullptr) {
            many->map->clear();
        }
    } else {
        _only = nullptr;
    }
}

bool ChildTable::insertEntry(const Entry& entry) {
    if (empty()) {
        RunOwner first = Run::Make(kShortestRun, &entry, &entry + 1);
        if (Directory* const many = directory()) {
            many->runs.push_back(first.get());
            many->size = 1;
            static_cast<void>(first.release());
        } else {
            _only = first.release();
        }
        return true;
    }
    const RunPlace run = runFor(entry.id);
    Entry* const place = (*run)->PlaceOf(entry.id);
    if (place != (*run)->end() && place->id == entry.id) {
        return false;
    }
    if ((*run)->size < (*run)->capacity) {
        (*run)->Insert(place, entry);
    } else if ((*run)->capacity < kLongestRun) {
        RunOwner longer = Run::Make(2 * (*run)->capacity, (*run)->begin(), (*run)->end());
        longer->Insert(longer->PlaceOf(entry.id), entry);
        const RunOwner shorter(std::exchange(*run, longer.release()));
    } else {
        insertInFullRun(run, entry);
    }
    if (Directory* const many = directory()) {
        ++many->size;
    }
    return true;
}

// The run is followed by a new one where the entry comes last of all, so that rising ids fill
// every run, and halved otherwise.
void ChildTable::insertInFullRun(RunPlace run, const Entry& entry) {
    const auto number = run - beginOfRuns();
    std::vector<Run*>& runs = asDirectory().runs;
    runs.reserve(runs.size() + 1);
    Run& full = *runs[static_cast<std::size_t>(number)];
    const bool comesLast = full.end()[-1].id < entry.id && &full == runs.back();
    Entry* const middle = comesLast ? full.end() : full.begin() + full.size / 2;
    RunOwner upper = Run::Make(kLongestRun, middle, full.end());
    full.size = static_cast<std::uint32_t>(middle - full.begin());
    Run& target = comesLast || upper->begin()->id < entry.id ? *upper : full;
    target.Insert(target.size == 0 ? target.begin() : target.PlaceOf(entry.id), entry);
    runs.insert(runs.begin() + number + 1, upper.release());
}

bool ChildTable::eraseEntry(std::uint64_t id) {
    if (empty()) {
        return false;
    }
    const RunPlace run = runFor(id);
    Entry* const entry = (*run)->Find(id);
    if (entry == nullptr) {
        return false;
    }
    (*run)->Erase(entry);
    Directory* const many = directory();
    if (many != nullptr) {
        --many->size;
    }
    if ((*run)->size == 0) {
        const RunOwner emptied(std::exchange(*run, nullptr));
        if (many != nullptr) {
            many->runs.erase(many->runs.begin() + (run - many->runs.data()));
        }
    }
    return true;
}

}  // namespace KesVizCore

// NOLINTEND(clang-analyzer-core.CallAndMessage, clang-analyzer-cplusplus.NewDelete)
