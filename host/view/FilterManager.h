#pragma once

/// @file
/// Shows and hides by kind of entity.

#include <KesVizCore/view/AFilterManager.h>

#include <functional>
#include <set>

namespace kesview {

namespace viz = KesVizCore;

/// A filter id is the number of an entity type: nodes that stand for a type carry it. All are
/// visible at first.
class FilterManager final : public viz::AFilterManager {
public:
    /// @p onChange is called after every change.
    explicit FilterManager(std::function<void()> onChange);

    void SetVisible(int filterId, bool visible) override;
    bool IsVisible(int filterId) const override { return _hidden.count(filterId) == 0; }
    void Reset() override;

    const std::set<int>& Hidden() const { return _hidden; }

private:
    std::function<void()> _onChange;
    std::set<int> _hidden;
};

}  // namespace kesview
