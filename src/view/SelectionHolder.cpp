#include <KesVizCore/view/SelectionHolder.h>

#include <algorithm>
#include <cstddef>

namespace KesVizCore {

SelectionHolder::SelectionHolder() = default;
SelectionHolder::SelectionHolder(const SelectionHolder& other) = default;
SelectionHolder& SelectionHolder::operator=(const SelectionHolder& other) = default;
SelectionHolder::~SelectionHolder() = default;

void SelectionHolder::Add(const RenderId& id) {
    _ids.push_back(id);
}

void SelectionHolder::Remove(const RenderId& id) {
    const auto place = std::find(_ids.begin(), _ids.end(), id);
    if (place != _ids.end()) {
        _ids.erase(place);
    }
}

bool SelectionHolder::Contains(const RenderId& id) const {
    return std::find(_ids.begin(), _ids.end(), id) != _ids.end();
}

int SelectionHolder::Count() const {
    return static_cast<int>(_ids.size());
}

bool SelectionHolder::IsEmpty() const {
    return _ids.empty();
}

void SelectionHolder::Clear() {
    _ids.clear();
}

// A negative index turns into one far beyond the end, which at() refuses.
RenderId SelectionHolder::At(const int& index) const {
    return _ids.at(static_cast<std::size_t>(index));
}

RenderId& SelectionHolder::operator[](int index) {
    return _ids[static_cast<std::size_t>(index)];
}

const RenderId& SelectionHolder::operator[](int index) const {
    return _ids[static_cast<std::size_t>(index)];
}

}  // namespace KesVizCore
