#pragma once

#include <KesVizCore/core/RenderId.h>
#include <KesVizCore/model/VizElement.h>

#include <algorithm>
#include <string>

namespace KesVizCore {

/// What the library reads of elements without copying it.
struct ElementAccess {
    static const std::wstring& visualId(const VizElement& element) { return element._visualId; }

    static const RenderId& renderId3D(const VizElement& element) { return element._renderId3D; }

    /// Whether an element answers to a picked render id: it stands for an entity, and its 3D
    /// render id is the picked one or a leading part of it, of the same origin.
    static bool matchesPick(const VizElement& element, const RenderId& picked) {
        const RenderId& own = element._renderId3D;
        const int length = own.Length();
        return element._entityId.Type != InvalidType && length != 0 && length <= picked.Length() &&
               own.GetOrigin() == picked.GetOrigin() &&
               std::equal(&own[0], &own[0] + length, &picked[0]);
    }

    /// The first element of @p elements that answers to @p picked, or null; null entries are
    /// skipped.
    template <typename Elements>
    static VizElement* firstPicked(const Elements& elements, const RenderId& picked) {
        for (auto* element : elements) {
            if (element != nullptr && matchesPick(*element, picked)) {
                return element;
            }
        }
        return nullptr;
    }
};

}  // namespace KesVizCore
