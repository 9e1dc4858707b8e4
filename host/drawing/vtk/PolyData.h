#pragma once

/// @file
/// Batches of a picture as data of VTK. Coordinates and indices are not copied: a batch must stay
/// as it is as long as what was made of it.

#include "drawing/vtk/Translucent.h"
#include "view/Picture.h"

#include <vtkSmartPointer.h>

class vtkPolyData;

namespace kesview {

/// Throws DrawError where the batch does not fit together: coordinates that are no triples, a
/// normal too many or too few, an index of no point.
void checkTriangles(const TriangleBatch& batch);

/// These throw DrawError likewise.
vtkSmartPointer<vtkPolyData> toPolyData(const TriangleBatch& batch);
vtkSmartPointer<vtkPolyData> toPolyData(const LineBatch& batch);
vtkSmartPointer<vtkPolyData> toPolyData(const PointBatch& batch);
vtkSmartPointer<vtkPolyData> toPolyData(const TranslucentTriangles& triangles);

}  // namespace kesview
