#pragma once

/// @file
/// An actor that stands well with others: surfaces under their edges, glass over what is behind.

#include <vtkOpenGLActor.h>

namespace kesview {

/// Drawn in the order in which actors are added, translucent or not, so that all keep their
/// samples; what is translucent must be added last and have its triangles in order itself.
class PictureActor : public vtkOpenGLActor {
public:
    static PictureActor* New();
    PictureActor(const PictureActor&) = delete;
    PictureActor& operator=(const PictureActor&) = delete;

    /// Moves its surfaces a little away from the eye in depth alone, so that the edges of a face,
    /// and annotations that lie on it, are drawn whole. Done by the driver: unlike the way that
    /// VTK does the same in its shaders, each sample of a pixel keeps its own depth.
    void GiveWayToLines() { _givesWay = true; }

    /// Mixes with what is drawn before, and hides nothing of what is drawn after.
    void BeTranslucent() { _translucent = true; }

    void Render(vtkRenderer* renderer, vtkMapper* mapper) override;

protected:
    PictureActor();
    ~PictureActor() override = default;

private:
    bool _givesWay = false;
    bool _translucent = false;
};

}  // namespace kesview
