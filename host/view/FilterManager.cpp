#include "view/FilterManager.h"

#include <utility>

namespace kesview {

FilterManager::FilterManager(std::function<void()> onChange) : _onChange(std::move(onChange)) {}

void FilterManager::SetVisible(int filterId, bool visible) {
    if (visible) {
        _hidden.erase(filterId);
    } else {
        _hidden.insert(filterId);
    }
    _onChange();
}

void FilterManager::Reset() {
    _hidden.clear();
    _onChange();
}

}  // namespace kesview
