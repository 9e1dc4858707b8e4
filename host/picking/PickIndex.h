#pragma once

/// @file
/// Finds what a ray hits through an index of the whole scene.

#include "view/Picker.h"

#include <memory>
#include <optional>

namespace kesview {

/// Embree finds what may be hit: units of the graph are described once and stand under a top scene
/// wherever they are used. The library's hit tests decide (see RayTests). The answer is that of a
/// search through everything.
///
/// The index is made on the first pick and after every change of the geometry; what is hidden or
/// cut away stays in it and is passed over. Lines are found by boxes that are larger by the
/// aperture, and are made anew for a larger one. What a transform flattens to no volume is not
/// found.
///
/// @par Errors
/// std::runtime_error where Embree cannot be had or runs out of memory.
///
/// @par Threads
/// One; building uses all cores.
class PickIndex final : public Picker {
public:
    /// Borrows the scene.
    explicit PickIndex(SceneAdapter& scene);
    ~PickIndex() override;
    PickIndex(const PickIndex&) = delete;
    PickIndex& operator=(const PickIndex&) = delete;

    std::optional<PickHit> Pick(const PickRay& ray) override;

private:
    class Scenes;

    SceneAdapter& _scene;
    std::unique_ptr<Scenes> _scenes;
    std::uint64_t _revision = 0;
};

/// For SceneAdapter and its factory.
std::unique_ptr<Picker> makePickIndex(SceneAdapter& scene);

}  // namespace kesview
