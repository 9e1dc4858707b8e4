#pragma once

/// @file
/// How the annotations of the sample are drawn.

#include "sample/Strokes.h"

#include <gp_Ax2.hxx>
#include <gp_Pnt.hxx>

namespace kesview {

/// Names of the drawings, by which the saved views find them.
namespace SampleDrawing {
constexpr const char* height = "linear dimension";
constexpr const char* diameter = "diameter dimension";
constexpr const char* position = "position";
constexpr const char* datumA = "datum A";
constexpr const char* datumB = "datum B";
constexpr const char* note = "note";
}  // namespace SampleDrawing

/// A drawing in its plane: x of the plane is the direction of writing.
struct PlaneDrawing {
    gp_Ax2 plane;
    Strokes strokes;

    std::vector<std::vector<gp_Pnt>> Lines() const;  ///< in space
};

PlaneDrawing drawHeight();
PlaneDrawing drawDiameter();
PlaneDrawing drawPosition();
PlaneDrawing drawDatumA();
PlaneDrawing drawDatumB();
PlaneDrawing drawNote();

}  // namespace kesview
