#pragma once

/// @file
/// Drawings made of strokes in a plane, as annotations of a drawing are.

#include <array>
#include <string>
#include <vector>

namespace kesview {

using PlanePoint = std::array<double, 2>;
using Polyline = std::vector<PlanePoint>;

/// Lines, frames, arrows and letters in a plane, in millimetres. Letters are those that
/// strokesOf knows: most capitals, digits, "+-.±" and the symbols "⌀", "⌖" and "Ⓜ".
class Strokes {
public:
    explicit Strokes(double textHeight) : _height(textHeight) {}

    void AddLine(PlanePoint from, PlanePoint to) { _lines.push_back({from, to}); }
    void AddPolyline(Polyline line) { _lines.push_back(std::move(line)); }

    /// A line whose end has an arrow head.
    void AddArrow(PlanePoint from, PlanePoint to);

    void AddFrame(PlanePoint lower, PlanePoint upper);

    /// @p start is the lower left corner; gives the width. Throws std::invalid_argument at a
    /// letter that it does not know.
    double AddText(const std::u32string& text, PlanePoint start);

    /// Cells side by side, each around its text and two heights high; gives the width.
    double AddCells(const std::vector<std::u32string>& cells, PlanePoint start);

    const std::vector<Polyline>& Lines() const { return _lines; }

private:
    double addLetter(char32_t letter, PlanePoint start, double height);

    double _height;
    std::vector<Polyline> _lines;
};

}  // namespace kesview
