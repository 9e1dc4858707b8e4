/// @file
/// See TessellatedPmi.h.

#include "reading/part21/TessellatedPmi.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

namespace kesview {
namespace {

constexpr int deepestSet = 8;
constexpr int mostSets = 1000;  // of one item, where sets hold sets at many places

/// Where a tessellated item of one kind keeps what; the index of the first own attribute is 1 in
/// a simple instance, behind the name.
struct SurfaceLayout {
    const char* type;
    std::size_t pointIndices;
    std::size_t triangles;  ///< of the triangles, or the strips, which the fans follow
    bool stripsAndFans;
};

constexpr SurfaceLayout surfaceLayouts[] = {
    {"TRIANGULATED_SURFACE_SET", 0, 1, false},
    {"COMPLEX_TRIANGULATED_SURFACE_SET", 0, 1, true},
    {"TRIANGULATED_FACE", 0, 1, false},
    {"COMPLEX_TRIANGULATED_FACE", 0, 1, true},
};

const SurfaceLayout* findLayout(const ExchangeInstance& item) {
    for (const SurfaceLayout& layout : surfaceLayouts) {
        if (item.Is(layout.type)) {
            return &layout;
        }
    }
    return nullptr;
}

class Tessellation {
public:
    Tessellation(const ExchangeGeometry& geometry, const ExchangeFile& file, PmiDrawing& drawing)
        : _geometry(geometry), _file(file), _drawing(drawing) {}

    void Append(const ExchangeInstance& item, const Placement& outer, int depth) {
        const Placement place = PlaceOf(item, outer);
        if (item.Is("TESSELLATED_GEOMETRIC_SET") && depth < deepestSet && ++_sets <= mostSets) {
            const ExchangeValue& children = item.Attribute("TESSELLATED_GEOMETRIC_SET", 0, 1);
            for (const EntityNumber child : children.References()) {
                Child(child, place, depth + 1);
            }
        } else if (item.Is("TESSELLATED_CURVE_SET")) {
            Curves(item, place);
        } else if (const SurfaceLayout* layout = findLayout(item)) {
            Surface(item, *layout, place);
        } else {
            ++_drawing.unread[item.parts.empty() ? "nothing" : item.parts.front().type];
        }
    }

private:
    /// Each once at one place: sets may hold each other.
    void Child(EntityNumber number, const Placement& outer, int depth) {
        if (_met.insert({number, {outer.origin, outer.x, outer.y, outer.z}}).second) {
            Append(_file.Get(number), outer, depth);
        }
    }

    Placement PlaceOf(const ExchangeInstance& item, const Placement& outer) const {
        const auto* moved = item.Find("REPOSITIONED_TESSELLATED_ITEM");
        if (moved == nullptr) {
            return outer;
        }
        const std::size_t index = item.IsComplex() ? 0 : 1;
        const auto frame = _geometry.Frame(moved->parameters.At(index).reference);
        return frame ? nested(outer, *frame) : outer;
    }

    std::vector<Vector> Points(EntityNumber list, const Placement& place) const {
        const ExchangeInstance coordinates = _file.Get(list);
        std::vector<Vector> points;
        for (const ExchangeValue& item : coordinates.Attribute("COORDINATES_LIST", 1, 2).items) {
            const auto point = _geometry.Coordinates(item);
            points.push_back(place.Point(point.value_or(Vector{0, 0, 0})));
        }
        return points;
    }

    /// Indices count from 1; what is out of range reads as -1.
    static std::int32_t IndexOf(const ExchangeValue& value, std::size_t count) {
        const bool inRange = value.number >= 1 && value.number <= static_cast<double>(count);
        return inRange ? static_cast<std::int32_t>(value.number) - 1 : -1;
    }

    void Curves(const ExchangeInstance& item, const Placement& place) {
        const EntityNumber list = item.Attribute("TESSELLATED_CURVE_SET", 0, 1).reference;
        const std::vector<Vector> points = Points(list, place);
        for (const ExchangeValue& strip : item.Attribute("TESSELLATED_CURVE_SET", 1, 2).items) {
            std::vector<Vector> line;
            for (const ExchangeValue& value : strip.items) {
                const std::int32_t index = IndexOf(value, points.size());
                if (index < 0) {
                    ++_drawing.unread["points out of range"];
                    continue;
                }
                line.push_back(points[static_cast<std::size_t>(index)]);
            }
            if (line.size() > 1) {
                _drawing.lines.push_back(std::move(line));
            }
        }
    }

    void Surface(const ExchangeInstance& item, const SurfaceLayout& layout,
                 const Placement& place) {
        // A simple instance holds name, coordinates, point count and normals first, and a face a
        // link to its geometry after them.
        const bool face = item.HasTypeEnding("_FACE");
        const char* super = face ? "TESSELLATED_FACE" : "TESSELLATED_SURFACE_SET";
        const std::size_t own = face ? 5 : 4;
        PmiDrawing::Area area;
        area.points = Points(item.Attribute(super, 0, 1).reference, place);
        _pointIndices = &item.Attribute(layout.type, layout.pointIndices, own);
        const ExchangeValue& triangles =
            item.Attribute(layout.type, layout.triangles, own + layout.triangles);
        for (const ExchangeValue& row : triangles.items) {
            if (layout.stripsAndFans) {
                Strip(row, area);
            } else {
                Triangle(row.At(0), row.At(1), row.At(2), area);
            }
        }
        if (layout.stripsAndFans) {
            const std::size_t fans = layout.triangles + 1;
            for (const ExchangeValue& row : item.Attribute(layout.type, fans, own + fans).items) {
                Fan(row, area);
            }
        }
        if (!area.triangles.empty()) {
            _drawing.areas.push_back(std::move(area));
        }
    }

    void Strip(const ExchangeValue& row, PmiDrawing::Area& area) {
        for (std::size_t i = 2; i < row.items.size(); ++i) {
            const bool odd = i % 2 != 0;
            Triangle(row.At(odd ? i - 1 : i - 2), row.At(odd ? i - 2 : i - 1), row.At(i), area);
        }
    }

    void Fan(const ExchangeValue& row, PmiDrawing::Area& area) {
        for (std::size_t i = 2; i < row.items.size(); ++i) {
            Triangle(row.At(0), row.At(i - 1), row.At(i), area);
        }
    }

    std::int32_t PointOf(const ExchangeValue& value, const PmiDrawing::Area& area) const {
        if (_pointIndices->items.empty()) {
            return IndexOf(value, area.points.size());
        }
        const std::int32_t place = IndexOf(value, _pointIndices->items.size());
        return place < 0 ? -1
                         : IndexOf(_pointIndices->items[static_cast<std::size_t>(place)],
                                   area.points.size());
    }

    void Triangle(const ExchangeValue& a, const ExchangeValue& b, const ExchangeValue& c,
                  PmiDrawing::Area& area) {
        const std::int32_t corners[] = {PointOf(a, area), PointOf(b, area), PointOf(c, area)};
        if (std::any_of(std::begin(corners), std::end(corners), [](auto i) { return i < 0; })) {
            ++_drawing.unread["triangles out of range"];
            return;
        }
        const bool flat =
            corners[0] == corners[1] || corners[1] == corners[2] || corners[2] == corners[0];
        if (!flat) {
            area.triangles.insert(area.triangles.end(), std::begin(corners), std::end(corners));
        }
    }

    const ExchangeGeometry& _geometry;
    const ExchangeFile& _file;
    PmiDrawing& _drawing;
    const ExchangeValue* _pointIndices = nullptr;
    int _sets = 0;  ///< met so far
    std::set<std::pair<EntityNumber, std::array<Vector, 4>>> _met;
};

}  // namespace

bool isTessellated(const ExchangeInstance& item) {
    return item.Is("TESSELLATED_GEOMETRIC_SET") || item.Is("TESSELLATED_CURVE_SET") ||
           findLayout(item) != nullptr;
}

void appendTessellated(const ExchangeGeometry& geometry, const ExchangeFile& file,
                       const ExchangeInstance& item, PmiDrawing& drawing) {
    Tessellation(geometry, file, drawing).Append(item, Placement(), 0);
}

}  // namespace kesview
