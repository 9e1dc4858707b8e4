/// @file
/// See FaceTriangles.h.

#include "reading/occ/FaceTriangles.h"

#include <BRep_Tool.hxx>
#include <GeomLib.hxx>
#include <Geom_Plane.hxx>
#include <Poly_Triangulation.hxx>
#include <Precision.hxx>
#include <Standard_Failure.hxx>
#include <TopoDS_Face.hxx>
#include <gp_Vec.hxx>
#include <optional>
#include <utility>
#include <vector>

namespace kesview {

namespace {

void append(const gp_XYZ& value, std::vector<float>& values) {
    for (int axis = 1; axis <= 3; ++axis) {
        values.push_back(static_cast<float>(value.Coord(axis)));
    }
}

/// Normals of the surface before the face's location and orientation.
class SurfaceNormals {
public:
    SurfaceNormals(const Handle(Geom_Surface) & surface, const Poly_Triangulation& mesh)
        : _surface(surface), _mesh(mesh) {
        const Handle(Geom_Plane) plane = Handle(Geom_Plane)::DownCast(surface);
        if (!plane.IsNull()) {
            const gp_Ax3& axes = plane->Position();
            _constant = gp_Vec(axes.XDirection()).Crossed(gp_Vec(axes.YDirection()));
        }
    }

    /// None at a singular point of the surface, or where there is no surface.
    std::optional<gp_Vec> At(int node) const {
        if (_constant) {
            return _constant;
        }
        if (_surface.IsNull() || !_mesh.HasUVNodes()) {
            return std::nullopt;
        }
        try {
            gp_Dir normal;
            if (GeomLib::NormEstim(_surface, _mesh.UVNode(node), Precision::Confusion(), normal) >
                1) {
                return std::nullopt;
            }
            return gp_Vec(normal);
        } catch (const Standard_Failure&) {
            return std::nullopt;
        }
    }

private:
    Handle(Geom_Surface) _surface;
    const Poly_Triangulation& _mesh;
    std::optional<gp_Vec> _constant;
};

/// The normal of all triangles around each node, weighted by their area; not normalized.
std::vector<gp_Vec> meanTriangleNormals(const Poly_Triangulation& mesh) {
    std::vector<gp_Vec> normals(static_cast<std::size_t>(mesh.NbNodes()) + 1);
    for (int i = 1; i <= mesh.NbTriangles(); ++i) {
        int a = 0;
        int b = 0;
        int c = 0;
        mesh.Triangle(i).Get(a, b, c);
        const gp_Pnt corner = mesh.Node(a);
        const gp_Vec normal = gp_Vec(corner, mesh.Node(b)).Crossed(gp_Vec(corner, mesh.Node(c)));
        for (const int node : {a, b, c}) {
            normals[static_cast<std::size_t>(node)] += normal;
        }
    }
    return normals;
}

void fillNormals(const Handle(Geom_Surface) & surface, const Poly_Triangulation& mesh,
                 const gp_Trsf& place, bool isReversed, Face& face) {
    const SurfaceNormals normals(surface, mesh);
    std::vector<gp_Vec> fallback;
    face.normals.reserve(static_cast<std::size_t>(mesh.NbNodes()) * 3);
    for (int node = 1; node <= mesh.NbNodes(); ++node) {
        auto normal = normals.At(node);
        if (!normal) {
            if (fallback.empty()) {
                fallback = meanTriangleNormals(mesh);
            }
            normal = fallback[static_cast<std::size_t>(node)];
        }
        gp_XYZ direction = normal->XYZ();
        direction.Multiply(place.VectorialPart());
        const double length = direction.Modulus();
        if (length > 0) {
            direction /= isReversed ? -length : length;
        }
        append(direction, face.normals);
    }
}

void fillIndices(const Poly_Triangulation& mesh, bool isFlipped, Face& face) {
    face.triangles.reserve(static_cast<std::size_t>(mesh.NbTriangles()) * 3);
    for (int i = 1; i <= mesh.NbTriangles(); ++i) {
        int a = 0;
        int b = 0;
        int c = 0;
        mesh.Triangle(i).Get(a, b, c);
        if (isFlipped) {
            std::swap(b, c);
        }
        for (const int node : {a, b, c}) {
            face.triangles.push_back(node - 1);
        }
    }
}

}  // namespace

bool fillTriangles(const TopoDS_Face& shape, const Vector& origin, Face& face) {
    TopLoc_Location location;
    const Handle(Poly_Triangulation) mesh = BRep_Tool::Triangulation(shape, location);
    if (mesh.IsNull() || mesh->NbTriangles() == 0) {
        return false;
    }
    const gp_Trsf place = location.Transformation();
    const gp_XYZ shift(origin[0], origin[1], origin[2]);
    face.points.reserve(static_cast<std::size_t>(mesh->NbNodes()) * 3);
    for (int node = 1; node <= mesh->NbNodes(); ++node) {
        append(mesh->Node(node).Transformed(place).XYZ() - shift, face.points);
    }

    // a mirroring place turns the winding, but not the side that a normal carried along looks to
    const bool isReversed = shape.Orientation() == TopAbs_REVERSED;
    const bool isMirrored = place.VectorialPart().Determinant() < 0;
    TopLoc_Location surfaceLocation;
    const Handle(Geom_Surface) surface = BRep_Tool::Surface(shape, surfaceLocation);
    fillNormals(surface, *mesh, place, isReversed, face);
    fillIndices(*mesh, isReversed != isMirrored, face);
    return true;
}

}  // namespace kesview
