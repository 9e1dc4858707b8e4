#pragma once

/// @file
/// A picture before it is drawn: what the view hands to whatever draws. It knows no library of
/// drawing, so that views can be tested, and picks made, without one.

#include "document/Document.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kesview {

/// Triangles of one colour, merged over all that is shown in it. Points and normals are triples
/// relative to Picture::origin, one normal for each point or none at all.
struct TriangleBatch {
    Color color = {255, 255, 255, 255};
    bool lit = true;  ///< false for annotations, which keep their colour at every angle
    std::vector<float> points;
    std::vector<float> normals;
    std::vector<std::uint32_t> triangles;
};

/// Polylines of one colour, width and pattern.
struct LineBatch {
    Color color = {0, 0, 0, 255};
    float width = 1;  ///< in pixels
    bool dashed = false;
    std::vector<float> points;
    std::vector<std::uint32_t> starts;  ///< index of the first point of each polyline
};

struct PointBatch {
    Color color = {0, 0, 0, 255};
    float size = 4;  ///< in pixels
    std::vector<float> points;
};

/// A text in space, its position relative to Picture::origin.
struct PictureText {
    Color color = {0, 0, 0, 255};
    PlacedText placed;
};

/// Pixels count from the upper left corner. The plane through the target is seen @c height high.
struct Camera {
    Vector eye = {0, 0, 1};
    Vector target = {0, 0, 0};
    Vector up = {0, 1, 0};  ///< length 1, at a right angle to the line of sight
    bool perspective = false;
    double height = 1;  ///< millimetres, in the plane through the target
};

struct Picture {
    int width = 1600;  ///< pixels
    int height = 1000;
    Color background = {255, 255, 255, 255};
    std::optional<Color> backgroundTop;        ///< a gradient from background up to this
    int samples = 8;                           ///< for each pixel
    Vector origin = {0, 0, 0};                 ///< in the world: what all points are relative to
    Camera camera;                             ///< in the world
    std::optional<SavedView::Plane> clipping;  ///< in the world; cuts the model
    bool clipsAnnotations = false;
    std::vector<TriangleBatch> triangles;
    std::vector<LineBatch> lines;
    std::vector<PointBatch> points;
    std::vector<PictureText> texts;
    /// Annotations, which no clipping plane cuts unless clipsAnnotations is true.
    std::vector<TriangleBatch> annotationTriangles;
    std::vector<LineBatch> annotationLines;
};

/// 3 bytes red, green, blue for each pixel, row by row from the top.
struct Image {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;
};

}  // namespace kesview
