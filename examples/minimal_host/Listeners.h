#pragma once

/// @file
/// Two listeners: one prints every ray that is picked with, one makes the options take effect.

#include <KesVizCore/core/EntityId.h>
#include <KesVizCore/math/Ray.h>
#include <KesVizCore/scene/IRenderingOptionsListener.h>
#include <KesVizCore/scene/RenderingOptions.h>
#include <KesVizCore/view/AFilterManager.h>
#include <KesVizCore/view/IRayPickListener.h>

#include <cstdio>

namespace host {

namespace viz = KesVizCore;

class PickPrinter : public viz::IRayPickListener {
public:
    void OnPick(const viz::Ray& ray) override {
        std::printf("    listener: a ray from %.1f, %.1f, %.1f\n", ray.Root[0], ray.Root[1],
                    ray.Root[2]);
    }
};

/// Shows and hides faces and edges as the options say.
class OptionsListener : public viz::IRenderingOptionsListener {
public:
    /// Both must outlive the listener.
    OptionsListener(viz::RenderingOptions& options, viz::AFilterManager& filter)
        : _options(options), _filter(filter) {
        _options.AddListener(this);
    }
    ~OptionsListener() override { _options.RemoveListener(this); }
    OptionsListener(const OptionsListener&) = delete;
    OptionsListener& operator=(const OptionsListener&) = delete;

    /// @p changed is what the options become; they themselves still hold what was.
    void OnOptionsChange(viz::RenderingOptions* changed) override {
        show(viz::FaceType, "faces", _options.GetDisplayFaces(), changed->GetDisplayFaces());
        show(viz::EdgeType, "edges", _options.GetDisplayEdges(), changed->GetDisplayEdges());
    }

private:
    void show(viz::EntityType type, const char* what, bool before, bool after) {
        if (before != after) {
            std::printf("  options: %s are %s\n", what, after ? "shown" : "hidden");
            _filter.SetVisible(type, after);  // nodes of entity types carry the type as filter id
        }
    }

    viz::RenderingOptions& _options;
    viz::AFilterManager& _filter;
};

}  // namespace host
