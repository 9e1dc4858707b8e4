/// @file
/// See EdgeLines.h.

#include "reading/occ/EdgeLines.h"

#include <BRepAdaptor_Curve.hxx>
#include <BRep_Tool.hxx>
#include <GCPnts_TangentialDeflection.hxx>
#include <Poly_Polygon3D.hxx>
#include <Poly_PolygonOnTriangulation.hxx>
#include <Poly_Triangulation.hxx>
#include <Standard_Failure.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <vector>

namespace kesview {

namespace {

std::vector<gp_Pnt> pointsOnTriangles(const TopoDS_Edge& edge, const TopoDS_Face& face) {
    if (face.IsNull()) {
        return {};
    }
    TopLoc_Location location;
    const Handle(Poly_Triangulation) mesh = BRep_Tool::Triangulation(face, location);
    if (mesh.IsNull()) {
        return {};
    }
    const Handle(Poly_PolygonOnTriangulation) polygon =
        BRep_Tool::PolygonOnTriangulation(edge, mesh, location);
    if (polygon.IsNull()) {
        return {};
    }
    const gp_Trsf place = location.Transformation();
    std::vector<gp_Pnt> points;
    for (int i = 1; i <= polygon->NbNodes(); ++i) {
        points.push_back(mesh->Node(polygon->Node(i)).Transformed(place));
    }
    return points;
}

std::vector<gp_Pnt> pointsOfPolygon(const TopoDS_Edge& edge) {
    TopLoc_Location location;
    const Handle(Poly_Polygon3D) polygon = BRep_Tool::Polygon3D(edge, location);
    if (polygon.IsNull()) {
        return {};
    }
    const gp_Trsf place = location.Transformation();
    std::vector<gp_Pnt> points;
    for (const gp_Pnt& node : polygon->Nodes()) {
        points.push_back(node.Transformed(place));
    }
    return points;
}

std::vector<gp_Pnt> pointsOfCurve(const TopoDS_Edge& edge, const LineAccuracy& accuracy) {
    try {
        const BRepAdaptor_Curve curve(edge);
        const GCPnts_TangentialDeflection samples(curve, accuracy.angle, accuracy.deflection);
        std::vector<gp_Pnt> points;
        for (int i = 1; i <= samples.NbPoints(); ++i) {
            points.push_back(samples.Value(i));
        }
        return points;
    } catch (const Standard_Failure&) {
        return {};
    }
}

}  // namespace

bool fillLine(const TopoDS_Edge& shape, const TopoDS_Face& face, const Vector& origin,
              const LineAccuracy& accuracy, Edge& edge) {
    std::vector<gp_Pnt> points = pointsOnTriangles(shape, face);
    if (points.size() < 2) {
        points = pointsOfPolygon(shape);
    }
    if (points.size() < 2) {
        points = pointsOfCurve(shape, accuracy);
    }
    if (points.size() < 2) {
        return false;
    }
    edge.points.reserve(points.size() * 3);
    for (const gp_Pnt& point : points) {
        edge.points.push_back(static_cast<float>(point.X() - origin[0]));
        edge.points.push_back(static_cast<float>(point.Y() - origin[1]));
        edge.points.push_back(static_cast<float>(point.Z() - origin[2]));
    }
    return true;
}

}  // namespace kesview
