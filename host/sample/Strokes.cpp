#include "sample/Strokes.h"

#include "sample/StrokeFont.h"

#include <cmath>
#include <stdexcept>

namespace kesview {
namespace {

constexpr double gridHeight = 6;
constexpr double pitch = 6;  ///< from a letter to the next, on the grid

}  // namespace

void Strokes::AddArrow(PlanePoint from, PlanePoint to) {
    AddLine(from, to);
    const double length = std::hypot(to[0] - from[0], to[1] - from[1]);
    const PlanePoint along = {(to[0] - from[0]) / length, (to[1] - from[1]) / length};
    const double head = 0.9 * _height;
    const double half = 0.15 * _height;
    const PlanePoint base = {to[0] - head * along[0], to[1] - head * along[1]};
    AddPolyline({{base[0] - half * along[1], base[1] + half * along[0]},
                 to,
                 {base[0] + half * along[1], base[1] - half * along[0]}});
}

void Strokes::AddFrame(PlanePoint lower, PlanePoint upper) {
    AddPolyline({lower, {upper[0], lower[1]}, upper, {lower[0], upper[1]}, lower});
}

double Strokes::AddText(const std::u32string& text, PlanePoint start) {
    double width = 0;
    for (const char32_t letter : text)
        width += addLetter(letter, {start[0] + width, start[1]}, _height);
    return width;
}

double Strokes::AddCells(const std::vector<std::u32string>& cells, PlanePoint start) {
    double left = start[0];
    for (const std::u32string& cell : cells) {
        const double text = left + 0.5 * _height;
        const double right = text + AddText(cell, {text, start[1] + 0.5 * _height}) + 0.2 * _height;
        AddFrame({left, start[1]}, {right, start[1] + 2 * _height});
        left = right;
    }
    return left - start[0];
}

double Strokes::addLetter(char32_t letter, PlanePoint start, double height) {
    const char* strokes = strokesOf(letter);
    if (!strokes)
        throw std::invalid_argument("A letter has no strokes");
    const double scale = height / gridHeight;
    Polyline line;
    for (const char* at = strokes; *at != '\0'; at += at[2] == '\0' ? 2 : 3) {
        line.push_back({start[0] + scale * (at[0] - '0'), start[1] + scale * (at[1] - '0')});
        if (at[2] != '-') {
            _lines.push_back(line);
            line.clear();
        }
    }
    return scale * pitch;
}

}  // namespace kesview
