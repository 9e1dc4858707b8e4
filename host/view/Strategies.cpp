#include "view/Strategies.h"

#include <utility>

namespace kesview {

// --- highlighting -------------------------------------------------------------------------------

HighlightStrategy::HighlightStrategy(FindNode find) : _find(std::move(find)) {}

bool HighlightStrategy::Apply(const viz::RenderId& id) {
    if (_find(id) == nullptr) {
        return false;
    }
    _marks.Erase(id);
    _marks.Set(id, std::optional<Color>(_color));
    return true;
}

bool HighlightStrategy::Undo(const viz::RenderId& id) {
    const bool erased = _marks.Erase(id);
    const bool isBelowHighlighted = _marks.Nearest(id).value_or(std::nullopt).has_value();
    if (isBelowHighlighted) {
        _marks.Set(id, std::nullopt);
    }
    return erased || isBelowHighlighted;
}

bool HighlightStrategy::IsApplied(const viz::RenderId& id) {
    return _marks.At(id).value_or(std::nullopt).has_value();
}

// --- hiding -------------------------------------------------------------------------------------

HideStrategy::HideStrategy(FindNode find) : _find(std::move(find)) {}

bool HideStrategy::Apply(const viz::RenderId& id) {
    if (_find(id) == nullptr || IsApplied(id)) {
        return false;
    }
    _marks.Erase(id);
    _marks.Set(id, Shownness::Hidden);
    return true;
}

bool HideStrategy::Undo(const viz::RenderId& id) {
    if (_find(id) == nullptr) {
        return false;
    }
    _marks.Erase(id);
    _marks.Set(id, Shownness::Shown);
    return true;
}

bool HideStrategy::IsApplied(const viz::RenderId& id) {
    return _marks.At(id) == Shownness::Hidden;
}

}  // namespace kesview
