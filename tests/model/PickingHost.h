#pragma once

/// @file
/// A host whose adapter picks what a test says.

#include "support/RecordingHost.h"
#include "support/TestLoaders.h"

#include <KesVizCore/core/RenderId.h>
#include <KesVizCore/math/Ray.h>
#include <KesVizCore/view/AView3DAdapter.h>

#include <cstdint>
#include <utility>
#include <vector>

namespace KesVizCore::support {

using Path = std::vector<std::uint64_t>;

/// Answers every pick by one render id, or by a miss, and keeps what it was asked.
class PickingAdapter : public RecordingAdapter {
public:
    PickingAdapter() = default;
    explicit PickingAdapter(const Path& path, OriginEnum origin = View3D)
        : hits(true), picked(path, origin) {}

    bool PickVisual(const Ray& ray, RenderId& id) override {
        ++asked;
        askedRay = &ray;
        askedWithEmptyId = id == RenderId();
        id = picked;
        return hits;
    }

    bool hits = false;
    RenderId picked;  ///< written by a miss, too
    int asked = 0;
    const Ray* askedRay = nullptr;
    bool askedWithEmptyId = false;
};

/// Makes an element fit to be picked: with an entity, and with a 3D render id.
template <typename Element>
Element* pickable(Element* element, const Path& path, OriginEnum origin = View3D) {
    element->SetEntityID(EntityId(1, BodyType, 2));
    element->Set3DRenderID(RenderId(path, origin));
    return element;
}

/// A new element of the loader's kind, fit to be picked; the caller owns it.
template <typename Loader>
typename Loader::Made* newPickable(const Path& path, OriginEnum origin = View3D) {
    return pickable(load<Loader>().release(), path, origin);
}

}  // namespace KesVizCore::support
