#pragma once

/// @file
/// All actors of a picture.

#include "drawing/vtk/Translucent.h"
#include "view/Picture.h"

#include <deque>
#include <vector>
#include <vtkNew.h>
#include <vtkPlane.h>
#include <vtkSmartPointer.h>

class vtkActor;
class vtkRenderer;

namespace kesview {

/// Holds the actors of a picture and what was made for them. The actors read the picture and the
/// texts while they are drawn: all three must live until then.
class Stage {
public:
    /// @p texts are the triangles of Picture::texts. Throws DrawError where the picture is
    /// malformed.
    Stage(const Picture& picture, const std::vector<TriangleBatch>& texts);
    ~Stage();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    /// First what is opaque, then what is translucent, each in the order of the picture.
    void PutInto(vtkRenderer& renderer) const;

private:
    void addModel();
    void addAnnotations(const std::vector<TriangleBatch>& triangles);
    void addLines(const std::vector<LineBatch>& batches, bool clipped);
    void addTranslucent(const std::vector<TriangleBatch>& batches, bool model, bool clipped);
    void add(const vtkSmartPointer<vtkActor>& actor, const Color& color, bool clipped);

    const Picture& _picture;
    vtkNew<vtkPlane> _plane;
    std::vector<vtkSmartPointer<vtkActor>> _opaque;
    std::vector<vtkSmartPointer<vtkActor>> _translucent;
    std::deque<LineBatch> _dashed;
    std::deque<TranslucentTriangles> _sorted;
};

}  // namespace kesview
