/// @file
/// An adapter that answers a pick as it is told, and sees that the ray is handed on.
#pragma once

#include "Input.h"
#include "support/RecordingHost.h"

#include <KesVizCore/KesVizCore.h>

namespace Fuzz {

class PickingAdapter : public KesVizCore::support::RecordingAdapter {
public:
    bool PickVisual(const KesVizCore::Ray& ray, KesVizCore::RenderId& id) override {
        Check(&ray == asked && id == KesVizCore::RenderId(), "the same ray, with an empty id");
        id = picked;
        return hits;
    }

    const KesVizCore::Ray* asked = nullptr;
    KesVizCore::RenderId picked;
    bool hits = false;
};

}  // namespace Fuzz
