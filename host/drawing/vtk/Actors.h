#pragma once

/// @file
/// Batches of a picture as actors of VTK: colour, light, widths.

#include "drawing/vtk/Translucent.h"
#include "view/Picture.h"

#include <vtkSmartPointer.h>

class vtkActor;

namespace kesview {

/// Each reads its batch while it is drawn and throws DrawError where the batch is malformed.
vtkSmartPointer<vtkActor> makeModelActor(const TriangleBatch& batch);
vtkSmartPointer<vtkActor> makeAnnotationActor(const TriangleBatch& batch);
vtkSmartPointer<vtkActor> makeActor(const LineBatch& batch);
vtkSmartPointer<vtkActor> makeActor(const PointBatch& batch);
vtkSmartPointer<vtkActor> makeActor(const TranslucentTriangles& triangles);

}  // namespace kesview
