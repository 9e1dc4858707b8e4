#include "sample/SampleParts.h"

#include <BRepAdaptor_Curve.hxx>
#include <BRepAdaptor_Surface.hxx>
#include <BRepAlgoAPI_Cut.hxx>
#include <BRepAlgoAPI_Fuse.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakePolygon.hxx>
#include <BRepFilletAPI_MakeChamfer.hxx>
#include <BRepFilletAPI_MakeFillet.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepPrimAPI_MakePrism.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>
#include <algorithm>
#include <cmath>
#include <functional>
#include <gp_Ax2.hxx>
#include <gp_Cylinder.hxx>
#include <gp_Pln.hxx>
#include <stdexcept>

namespace kesview {
namespace {

TopoDS_Shape extrude(const std::vector<gp_Pnt>& corners, const gp_Vec& along) {
    BRepBuilderAPI_MakePolygon polygon;
    for (const gp_Pnt& corner : corners)
        polygon.Add(corner);
    polygon.Close();
    return BRepPrimAPI_MakePrism(BRepBuilderAPI_MakeFace(polygon.Wire()), along).Shape();
}

TopoDS_Shape cylinder(const gp_Pnt& start, const gp_Dir& along, double radius, double length) {
    return BRepPrimAPI_MakeCylinder(gp_Ax2(start, along), radius, length).Shape();
}

/// The straight edge through @p point that runs along @p direction.
TopoDS_Edge edgeThrough(const TopoDS_Shape& shape, const gp_Pnt& point, const gp_Dir& direction) {
    for (TopExp_Explorer at(shape, TopAbs_EDGE); at.More(); at.Next()) {
        const TopoDS_Edge& edge = TopoDS::Edge(at.Current());
        const BRepAdaptor_Curve curve(edge);
        if (curve.GetType() == GeomAbs_Line && curve.Line().Distance(point) < 1e-6 &&
            curve.Line().Direction().IsParallel(direction, 1e-6))
            return edge;
    }
    throw std::logic_error("The sample has no edge there");
}

TopoDS_Face faceWhere(const TopoDS_Shape& shape,
                      const std::function<bool(const BRepAdaptor_Surface&)>& isIt) {
    for (TopExp_Explorer at(shape, TopAbs_FACE); at.More(); at.Next()) {
        const TopoDS_Face& face = TopoDS::Face(at.Current());
        if (isIt(BRepAdaptor_Surface(face)))
            return face;
    }
    throw std::logic_error("The sample has no face there");
}

TopoDS_Face planeAt(const TopoDS_Shape& shape, const gp_Pnt& point, const gp_Dir& normal) {
    return faceWhere(shape, [&](const BRepAdaptor_Surface& surface) {
        return surface.GetType() == GeomAbs_Plane && surface.Plane().Distance(point) < 1e-6 &&
               surface.Plane().Axis().Direction().IsParallel(normal, 1e-6);
    });
}

TopoDS_Face cylinderAround(const TopoDS_Shape& shape, const gp_Pnt& point, double radius) {
    return faceWhere(shape, [&](const BRepAdaptor_Surface& surface) {
        return surface.GetType() == GeomAbs_Cylinder &&
               std::abs(surface.Cylinder().Radius() - radius) < 1e-6 &&
               gp_Lin(surface.Cylinder().Axis()).Distance(point) < 1e-6;
    });
}

TopoDS_Shape roundBracket(const TopoDS_Shape& angle) {
    BRepFilletAPI_MakeFillet rounded(angle);
    rounded.Add(8, edgeThrough(angle, {10, 0, 10}, gp::DY()));
    rounded.Add(10, edgeThrough(angle, {120, 0, 0}, gp::DZ()));
    rounded.Add(10, edgeThrough(angle, {120, 60, 0}, gp::DZ()));
    return rounded.Shape();
}

}  // namespace

const TopoDS_Face& SamplePart::Face(const std::string& name) const {
    const auto found = std::find_if(faces.begin(), faces.end(),
                                    [&](const NamedFace& face) { return face.name == name; });
    if (found == faces.end())
        throw std::out_of_range("The part has no face " + name);
    return found->face;
}

SamplePart makeBracket() {
    TopoDS_Shape shape = roundBracket(extrude(
        {{0, 0, 0}, {120, 0, 0}, {120, 0, 10}, {10, 0, 10}, {10, 0, 60}, {0, 0, 60}}, {0, 60, 0}));
    shape = BRepAlgoAPI_Cut(shape, cylinder({60, 30, -1}, gp::DZ(), 3.3, 12)).Shape();
    shape = BRepAlgoAPI_Cut(shape, cylinder({100, 30, -1}, gp::DZ(), 3.3, 12)).Shape();
    shape = BRepAlgoAPI_Cut(shape, cylinder({-1, 30, 40}, gp::DX(), 10, 12)).Shape();
    return {shape,
            {{"Bottom", planeAt(shape, {0, 0, 0}, gp::DZ())},
             {"Back", planeAt(shape, {0, 0, 0}, gp::DX())},
             {"Front of the upright", planeAt(shape, {10, 0, 0}, gp::DX())},
             {"Top of the upright", planeAt(shape, {0, 0, 60}, gp::DZ())},
             {"Hole 1", cylinderAround(shape, {60, 30, 0}, 3.3)},
             {"Hole 2", cylinderAround(shape, {100, 30, 0}, 3.3)},
             {"Bore", cylinderAround(shape, {0, 30, 40}, 10)}}};
}

SamplePart makeBolt() {
    constexpr double acrossFlats = 10;
    const double corner = acrossFlats / std::sqrt(3.0);
    std::vector<gp_Pnt> hexagon;
    for (int i = 0; i < 6; ++i)
        hexagon.emplace_back(corner * std::cos(i * M_PI / 3), corner * std::sin(i * M_PI / 3), 0);
    const TopoDS_Shape head = extrude(hexagon, {0, 0, 4});

    const TopoDS_Shape shank = cylinder({0, 0, -20}, gp::DZ(), 3, 20);
    BRepFilletAPI_MakeChamfer chamfered(shank);
    for (TopExp_Explorer at(shank, TopAbs_EDGE); at.More(); at.Next()) {
        const BRepAdaptor_Curve curve(TopoDS::Edge(at.Current()));
        if (curve.GetType() == GeomAbs_Circle && curve.Circle().Location().Z() < -19) {
            chamfered.Add(1, TopoDS::Edge(at.Current()));
            break;
        }
    }
    const TopoDS_Shape shape = BRepAlgoAPI_Fuse(head, chamfered.Shape()).Shape();
    return {shape, {{"Shank", cylinderAround(shape, {0, 0, 0}, 3)}}};
}

SamplePart makeWasher() {
    const TopoDS_Shape disc = cylinder({0, 0, 0}, gp::DZ(), 6.25, 1.6);
    return {BRepAlgoAPI_Cut(disc, cylinder({0, 0, -1}, gp::DZ(), 3.2, 4)).Shape(), {}};
}

}  // namespace kesview
