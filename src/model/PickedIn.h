#pragma once

#include "model/ElementAccess.h"

#include <KesVizCore/core/RenderId.h>
#include <KesVizCore/view/AView3DAdapter.h>

namespace KesVizCore {

/// Has the adapter pick along the ray, and writes the first element of the lists, in their order,
/// that answers to what was hit. False, with @p out as it was, without an adapter, a hit or such
/// an element.
template <typename... Lists>
bool pickedIn(AView3DAdapter* adapter, const Ray& ray, VizElement*& out, const Lists&... lists) {
    RenderId picked;
    if (adapter == nullptr || !adapter->PickVisual(ray, picked)) {
        return false;
    }
    VizElement* found = nullptr;
    const bool any = ((found = ElementAccess::firstPicked(lists, picked)) || ...);
    if (any) {
        out = found;
    }
    return any;
}

}  // namespace KesVizCore
