#include "view/Items.h"

#include "view/FillPolygon.h"

#include <algorithm>
#include <cstddef>
#include <typeinfo>

namespace kesview {

namespace {

constexpr float kPointSize = 4;          // pixels
constexpr float kLineThickness = 1.25F;  // pixels; strokes of letters stay legible
constexpr double kLetterWidth = 0.75;    // in heights of a capital, of a letter and its gap
constexpr double kLineDistance = 1.6;    // in heights of a capital

constexpr std::array<int, 6> kRectangle = {0, 1, 2, 0, 2, 3};

/// Calls @p use with the item as what it is, where it is one of ours; each class is final, so that
/// comparing type ids is enough, and cheap.
template <typename Answer, typename Use>
Answer withItem(const viz::AGeometryItem& item, const Answer& otherwise, const Use& use) {
    const std::type_info& type = typeid(item);
    if (type == typeid(TriangleSetItem)) {
        return use(static_cast<const TriangleSetItem&>(item));
    }
    if (type == typeid(PolylineItem)) {
        return use(static_cast<const PolylineItem&>(item));
    }
    if (type == typeid(FilledPolylineItem)) {
        return use(static_cast<const FilledPolylineItem&>(item));
    }
    if (type == typeid(PointCloudItem)) {
        return use(static_cast<const PointCloudItem&>(item));
    }
    if (type == typeid(VertexItem)) {
        return use(static_cast<const VertexItem&>(item));
    }
    if (type == typeid(TextItem)) {
        return use(static_cast<const TextItem&>(item));
    }
    return otherwise;
}

int countOf(int count, const void* array) {
    return array != nullptr ? std::max(0, count) : 0;
}

}  // namespace

Shape shapeOf(const viz::AGeometryItem& item) {
    return withItem(item, Shape(), [](const auto& ours) { return ours.GetShape(); });
}

bool hasOwnColor(const viz::AGeometryItem& item) {
    return withItem(item, false, [](const auto& ours) { return ours.HasColor(); });
}

void addToBox(const Shape& shape, const Matrix& world, Box& box) {
    const float* const end = shape.points + 3 * static_cast<std::ptrdiff_t>(shape.pointCount);
    for (const float* point = shape.points; point != end; point += 3) {
        box.Add(transformPoint(world, point));
    }
}

// --- triangles ----------------------------------------------------------------------------------

int Shape::TriangleCount() const {
    if (form != Form::Triangles && form != Form::Text) {
        return 0;
    }
    const bool inThrees =
        triangleType == viz::TriangleList || triangleType == viz::IndexedTriangles;
    return inThrees ? cornerCount / 3 : std::max(0, cornerCount - 2);
}

std::array<int, 3> Shape::Triangle(int number) const {
    if (triangleType == viz::TriangleFan) {
        return {CornerAt(0), CornerAt(number + 1), CornerAt(number + 2)};
    }
    if (triangleType == viz::TriangleStrip) {
        const int odd = number % 2;
        return {CornerAt(number), CornerAt(number + 1 + odd), CornerAt(number + 2 - odd)};
    }
    return {CornerAt(3 * number), CornerAt(3 * number + 1), CornerAt(3 * number + 2)};
}

bool Shape::IsInside(const std::array<int, 3>& triangle) const {
    return std::all_of(triangle.begin(), triangle.end(),
                       [this](int corner) { return corner >= 0 && corner < pointCount; });
}

TriangleSetItem::TriangleSetItem(std::uint64_t id, const Shape& shape, std::unique_ptr<int[]> kept)
    : Item(id),
      _points(shape.points),
      _normals(shape.normals),
      _corners(shape.corners),
      _kept(std::move(kept)),
      _cornerCount(shape.cornerCount) {
    _vertexCount = countOf(shape.pointCount, shape.points);
    _triangleCount = shape.TriangleCount();
    _triangleType = shape.triangleType;
}

Shape TriangleSetItem::GetShape() const {
    return {Shape::Form::Triangles, _triangleType, _points, _normals, _corners,
            _vertexCount,           _cornerCount};
}

// --- the other kinds ----------------------------------------------------------------------------

PolylineItem::PolylineItem(std::uint64_t id, float* points, int count)
    : Item(id, points, count), _points(points), _count(countOf(count, points)) {
    _thickness = kLineThickness;
}

Shape PolylineItem::GetShape() const {
    return {Shape::Form::Lines, viz::TriangleList, _points, nullptr, nullptr, _count, 0};
}

FilledPolylineItem::FilledPolylineItem(std::uint64_t id, float* points, int count)
    : Item(id, points, count),
      _points(points),
      _count(countOf(count, points)),
      _corners(fillPolygon(points, _count)) {}

Shape FilledPolylineItem::GetShape() const {
    return {Shape::Form::Triangles,
            viz::IndexedTriangles,
            _points,
            nullptr,
            _corners.data(),
            _count,
            static_cast<int>(_corners.size())};
}

PointCloudItem::PointCloudItem(std::uint64_t id, int count, float* points)
    : Item(id, count, points), _points(points), _count(countOf(count, points)) {
    _pointSize = kPointSize;
}

Shape PointCloudItem::GetShape() const {
    return {Shape::Form::Points, viz::TriangleList, _points, nullptr, nullptr, _count, 0};
}

VertexItem::VertexItem(std::uint64_t id, const float* position)
    : Item(id, nullptr), _point{position[0], position[1], position[2]} {
    _pointSize = kPointSize;
}

Shape VertexItem::GetShape() const {
    return {Shape::Form::Points, viz::TriangleList, _point.data(), nullptr, nullptr, 1, 0};
}

namespace {

struct TextSize {
    std::size_t lines = 1;
    std::size_t longest = 0;  ///< characters of the longest line
};

TextSize sizeOf(const std::wstring& text) {
    TextSize size;
    std::size_t begin = 0;
    for (std::size_t end = text.find(L'\n'); end != std::wstring::npos;
         end = text.find(L'\n', begin), ++size.lines) {
        size.longest = std::max(size.longest, end - begin);
        begin = end + 1;
    }
    size.longest = std::max(size.longest, text.size() - begin);
    return size;
}

}  // namespace

TextItem::TextItem(std::uint64_t id, const std::wstring& firstText, const std::wstring& secondText,
                   const float* position, const viz::FontAttr& font, float number)
    : Item(id, firstText, secondText, nullptr, font, number),
      _position{position[0], position[1], position[2]} {
    const TextSize size = sizeOf(_firstText);
    const double height = static_cast<double>(font.FontSize);
    const double width = static_cast<double>(size.longest) * kLetterWidth * height *
                         static_cast<double>(font.WidthScaling * font.SpacingFactor);
    const double drop = static_cast<double>(size.lines - 1) * kLineDistance * height;
    const Vector across = Vector{width, 0, 0};
    const Vector foot = _position - Vector{0, drop, 0};
    const Vector head = _position + Vector{0, height, 0};
    const Vector corners[4] = {foot, foot + across, head + across, head};
    for (std::size_t corner = 0; corner < 4; ++corner) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            // cppcheck-suppress containerOutOfBounds ; four corners of three numbers, not three
            _corners[3 * corner + axis] = static_cast<float>(corners[corner][axis]);
        }
    }
}

Shape TextItem::GetShape() const {
    return {Shape::Form::Text,
            viz::IndexedTriangles,
            _corners.data(),
            nullptr,
            kRectangle.data(),
            4,
            static_cast<int>(kRectangle.size())};
}

}  // namespace kesview
