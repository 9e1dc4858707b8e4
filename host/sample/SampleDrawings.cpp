#include "sample/SampleDrawings.h"

namespace kesview {
namespace {

constexpr double textHeight = 4;

/// Before the front of the bracket, x to the right and z up; starts at @p x, @p z.
gp_Ax2 frontPlane(double x, double z) {
    return {gp_Pnt(x, 0, z), -gp::DY(), gp::DX()};
}

/// On the front of the upright, y to the right and z up; starts at @p y, @p z.
gp_Ax2 uprightPlane(double y, double z) {
    return {gp_Pnt(10, y, z), gp::DX(), gp::DY()};
}

/// A triangle that points down from a surface, a stem and the letter in a frame.
Strokes datumBelow(const std::u32string& letter) {
    Strokes strokes(textHeight);
    strokes.AddPolyline({{-2, 0}, {0, -3.5}, {2, 0}, {-2, 0}});
    strokes.AddLine({0, -3.5}, {0, -9});
    strokes.AddFrame({-4, -17}, {4, -9});
    strokes.AddText(letter, {-1.3, -15});
    return strokes;
}

/// The same to the left.
Strokes datumBeside(const std::u32string& letter) {
    Strokes strokes(textHeight);
    strokes.AddPolyline({{0, 2}, {-3.5, 0}, {0, -2}, {0, 2}});
    strokes.AddLine({-3.5, 0}, {-9, 0});
    strokes.AddFrame({-17, -4}, {-9, 4});
    strokes.AddText(letter, {-14.3, -2});
    return strokes;
}

}  // namespace

std::vector<std::vector<gp_Pnt>> PlaneDrawing::Lines() const {
    const gp_XYZ origin = plane.Location().XYZ();
    const gp_XYZ right = plane.XDirection().XYZ();
    const gp_XYZ up = plane.YDirection().XYZ();
    std::vector<std::vector<gp_Pnt>> lines;
    for (const Polyline& line : strokes.Lines()) {
        lines.emplace_back();
        for (const PlanePoint& point : line)
            lines.back().emplace_back(origin + right * point[0] + up * point[1]);
    }
    return lines;
}

/// Written upwards: x of its plane points up, y to the left.
PlaneDrawing drawHeight() {
    Strokes strokes(textHeight);
    strokes.AddLine({0, 1}, {0, 33});
    strokes.AddLine({60, 1}, {60, 33});
    strokes.AddArrow({30, 30}, {0, 30});
    strokes.AddArrow({30, 30}, {60, 30});
    strokes.AddText(U"60 ±0.2", {17, 32});
    return {gp_Ax2(gp_Pnt(0, 0, 0), -gp::DY(), gp::DZ()), strokes};
}

PlaneDrawing drawDiameter() {
    Strokes strokes(textHeight);
    strokes.AddPolyline({{25, 25}, {37, 25}});
    strokes.AddArrow({25, 25}, {7.0711, 7.0711});
    strokes.AddText(U"⌀20 +0.05", {39, 23});
    return {uprightPlane(30, 40), strokes};
}

PlaneDrawing drawPosition() {
    Strokes strokes(textHeight);
    strokes.AddCells({U"⌖", U"⌀0.2Ⓜ", U"A", U"B"}, {0, 0});
    return {uprightPlane(69, 52), strokes};
}

PlaneDrawing drawDatumA() {
    return {frontPlane(85, 0), datumBelow(U"A")};
}

PlaneDrawing drawDatumB() {
    return {frontPlane(0, 50), datumBeside(U"B")};
}

PlaneDrawing drawNote() {
    Strokes strokes(textHeight);
    strokes.AddText(U"BREAK ALL EDGES 0.5", {0, 0});
    return {frontPlane(0, -26), strokes};
}

}  // namespace kesview
