#pragma once

/// @file
/// Geometry items with what the library's item classes leave to the host: where they lie.

#include "document/Document.h"
#include "view/Vectors.h"

#include <KesVizCore/core/FontAttr.h>
#include <KesVizCore/graph/AGeometryItemFilledPolyline.h>
#include <KesVizCore/graph/AGeometryItemPointCloud.h>
#include <KesVizCore/graph/AGeometryItemPolyline.h>
#include <KesVizCore/graph/AGeometryItemText.h>
#include <KesVizCore/graph/AGeometryItemTriangleSet.h>
#include <KesVizCore/graph/AGeometryItemVertex.h>

#include <array>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace kesview {

namespace viz = KesVizCore;

/// What an item shows, in the coordinates of its node. It points into the item's data and is good
/// as long as that is.
struct Shape {
    enum class Form { Triangles, Lines, Points, Text };

    Form form = Form::Points;
    viz::TriangleType triangleType = viz::TriangleList;
    const float* points = nullptr;   ///< triples
    const float* normals = nullptr;  ///< triples, one for each point, or null
    const int* corners = nullptr;    ///< of triangles; null where the points are used in turn
    int pointCount = 0;
    int cornerCount = 0;  ///< with null corners the number of points

    int CornerAt(int place) const { return corners != nullptr ? corners[place] : place; }
    int TriangleCount() const;
    /// Three indices of points, wound alike for every triangle of a strip. Indices that lie
    /// outside are answered as they are: see IsInside.
    std::array<int, 3> Triangle(int number) const;
    bool IsInside(const std::array<int, 3>& triangle) const;
};

/// The shape of an item that this host made; of another's an empty shape without points.
Shape shapeOf(const viz::AGeometryItem& item);

/// Whether SetColor was ever called on an item of this host's; only then its colour counts.
bool hasOwnColor(const viz::AGeometryItem& item);

/// Widens @p box by the points of @p shape where @p world puts them.
void addToBox(const Shape& shape, const Matrix& world, Box& box);

/// What all kinds have in common. The base class of the kind keeps colour and id.
template <typename Kind>
class Item : public Kind {
public:
    using Kind::GetColor;
    using Kind::Kind;

    bool GetExtents(float* extrema) const override;
    void SetVisible(const bool& visible) override { _visible = visible; }
    bool IsVisible() const override { return _visible; }
    void SetColor(float* const color) override {
        Kind::SetColor(color);
        _hasColor = true;
    }
    void SetColor(const viz::RGBAColor& color) override {
        Kind::SetColor(color);
        _hasColor = true;
    }
    bool HasColor() const { return _hasColor; }

private:
    bool _visible = true;
    bool _hasColor = false;
};

/// Borrows all its arrays, but for corners that it was given to keep.
class TriangleSetItem final : public Item<viz::AGeometryItemTriangleSet> {
public:
    /// @p shape borrows; where @p kept is not null its corners point there.
    TriangleSetItem(std::uint64_t id, const Shape& shape, std::unique_ptr<int[]> kept);
    Shape GetShape() const;

private:
    const float* _points;
    const float* _normals;
    const int* _corners;
    std::unique_ptr<int[]> _kept;
    int _cornerCount;
};

/// Borrows its points.
class PolylineItem final : public Item<viz::AGeometryItemPolyline> {
public:
    PolylineItem(std::uint64_t id, float* points, int count);
    Shape GetShape() const;

private:
    const float* _points;
    int _count;
};

/// Borrows its points; the triangles that fill it are its own.
class FilledPolylineItem final : public Item<viz::AGeometryItemFilledPolyline> {
public:
    FilledPolylineItem(std::uint64_t id, float* points, int count);
    Shape GetShape() const;

private:
    const float* _points;
    int _count;
    std::vector<int> _corners;
};

/// Borrows its points.
class PointCloudItem final : public Item<viz::AGeometryItemPointCloud> {
public:
    PointCloudItem(std::uint64_t id, int count, float* points);
    Shape GetShape() const;

private:
    const float* _points;
    int _count;
};

/// Keeps its point.
class VertexItem final : public Item<viz::AGeometryItemVertex> {
public:
    VertexItem(std::uint64_t id, const float* position);
    Shape GetShape() const;

private:
    std::array<float, 3> _point;
};

/// Keeps its place. The first text is what it says, and runs along x of its node with y up the
/// letters: the node's transform lays it into its plane. The font's size is the height of a capital
/// letter. The shape is the rectangle that the letters take up, guessed from their number: nobody
/// has a font here.
class TextItem final : public Item<viz::AGeometryItemText> {
public:
    TextItem(std::uint64_t id, const std::wstring& firstText, const std::wstring& secondText,
             const float* position, const viz::FontAttr& font, float number);
    Shape GetShape() const;

    /// Lines are separated by a line feed.
    const std::wstring& Text() const { return _firstText; }
    float Height() const { return _font.FontSize; }
    /// The lower left corner of the first line.
    const Vector& Position() const { return _position; }

private:
    std::array<float, 12> _corners{};
    Vector _position;
};

template <typename Kind>
bool Item<Kind>::GetExtents(float* extrema) const {
    const Shape shape = shapeOf(*this);
    for (int at = 0; at < 3 * shape.pointCount; ++at) {
        const int axis = at % 3;
        const float value = shape.points[at];
        extrema[axis] = at < 3 || value < extrema[axis] ? value : extrema[axis];
        extrema[axis + 3] = at < 3 || value > extrema[axis + 3] ? value : extrema[axis + 3];
    }
    return shape.pointCount > 0;
}

}  // namespace kesview
