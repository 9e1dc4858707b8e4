#pragma once

/// @file
/// Turns an edge into a polyline.

#include "document/Document.h"

class TopoDS_Edge;
class TopoDS_Face;

namespace kesview {

/// How an edge is drawn.
struct LineAccuracy {
    double deflection = 0.1;  ///< millimetres
    double angle = 0.5;       ///< radians
};

/// Fills the edge's points, relative to @p origin: those of the triangles of @p face, if it is not
/// null and meshed, so that line and triangles meet; else those of its own polygon; else sampled
/// from its curve. False where there is none of them.
bool fillLine(const TopoDS_Edge& shape, const TopoDS_Face& face, const Vector& origin,
              const LineAccuracy& accuracy, Edge& edge);

}  // namespace kesview
