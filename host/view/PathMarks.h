#pragma once

/// @file
/// Marks on paths of the scene graph, in a tree of their own that a walk descends beside the graph:
/// where nothing is marked below, it costs the walk nothing.

#include <KesVizCore/core/RenderId.h>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace kesview {

namespace viz = KesVizCore;

template <typename Value>
class PathMarks {
public:
    struct Place {
        std::optional<Value> value;
        std::map<std::uint64_t, std::unique_ptr<Place>> below;

        /// The place of a child of that id; null where nothing is marked there or below.
        const Place* Below(std::uint64_t id) const {
            const auto found = below.find(id);
            return found != below.end() ? found->second.get() : nullptr;
        }
    };

    /// The place above the root, which itself is never marked.
    const Place& Top() const { return *_top; }
    bool IsEmpty() const { return _top->below.empty(); }

    /// Marks just this path. An empty path is ignored.
    void Set(const viz::RenderId& path, const Value& value) {
        Place* place = _top.get();
        for (int at = 0; at < path.Length(); ++at) {
            std::unique_ptr<Place>& below = place->below[path[at]];
            if (below == nullptr) {
                below = std::make_unique<Place>();
            }
            place = below.get();
        }
        if (place != _top.get()) {
            place->value = value;
        }
    }

    /// The mark of just this path.
    std::optional<Value> At(const viz::RenderId& path) const {
        const Place* place = _top.get();
        for (int at = 0; at < path.Length() && place != nullptr; ++at) {
            place = place->Below(path[at]);
        }
        return place != nullptr ? place->value : std::nullopt;
    }

    /// The mark of this path or of the nearest above it that has one.
    std::optional<Value> Nearest(const viz::RenderId& path) const {
        const Place* place = _top.get();
        std::optional<Value> nearest;
        for (int at = 0; at < path.Length() && place != nullptr; ++at) {
            place = place->Below(path[at]);
            nearest = place != nullptr && place->value ? place->value : nearest;
        }
        return nearest;
    }

    /// Takes away the marks of this path and of all below; whether there was any.
    bool Erase(const viz::RenderId& path) { return path.Length() > 0 && erase(*_top, path, 0); }

    void Clear() { _top = std::make_unique<Place>(); }

    /// All marks, those above first, siblings by ascending id.
    std::vector<std::pair<viz::RenderId, Value>> List() const {
        std::vector<std::pair<viz::RenderId, Value>> marks;
        list(*_top, viz::RenderId({}, viz::View3D), marks);
        return marks;
    }

private:
    static bool erase(Place& above, const viz::RenderId& path, int at) {
        const auto found = above.below.find(path[at]);
        if (found == above.below.end()) {
            return false;
        }
        if (at + 1 == path.Length()) {
            above.below.erase(found);
            return true;
        }
        const bool erased = erase(*found->second, path, at + 1);
        if (found->second->below.empty() && !found->second->value) {
            above.below.erase(found);
        }
        return erased;
    }

    static void list(const Place& place, const viz::RenderId& path,
                     std::vector<std::pair<viz::RenderId, Value>>& marks) {
        if (place.value) {
            marks.emplace_back(path, *place.value);
        }
        for (const auto& [id, below] : place.below) {
            viz::RenderId longer = path;
            longer.AddValue(id);
            list(*below, longer, marks);
        }
    }

    std::unique_ptr<Place> _top = std::make_unique<Place>();
};

}  // namespace kesview
