/// @file
/// See Bodies.h.

#include "reading/occ/Bodies.h"

#include "reading/occ/BodyOrigin.h"
#include "reading/occ/EdgeLines.h"
#include "reading/occ/FaceTriangles.h"
#include "reading/occ/Findings.h"
#include "reading/occ/Mesher.h"
#include "reading/occ/SoundShape.h"

#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <Bnd_Box.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedDataMapOfShapeListOfShape.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Vertex.hxx>
#include <map>
#include <tuple>
#include <utility>

namespace kesview {

namespace {

/// Loose parts of the same key lie in one body.
struct LooseKey {
    std::vector<std::string> layers;
    bool hidden = false;
    std::optional<Color> color;  ///< of points, which have none of their own in a document

    bool operator<(const LooseKey& other) const {
        return std::tie(layers, hidden, color) < std::tie(other.layers, other.hidden, other.color);
    }
};

LooseKey looseKey(BodyKind kind, const Traits& traits) {
    if (kind != BodyKind::Points) {
        return {traits.layers, traits.hidden, std::nullopt};
    }
    return {traits.layers, traits.hidden, traits.color ? traits.color : traits.curveColor};
}

TopoDS_Compound emptyCompound() {
    TopoDS_Compound compound;
    BRep_Builder().MakeCompound(compound);
    return compound;
}

}  // namespace

BodyBuilder::BodyBuilder(const BodyContext& context, const Traits& product, const TraitsMap& traits)
    : _context(context), _traits(traits), _product(product) {}

std::vector<Body> BodyBuilder::Build(const TopoDS_Shape& shape) {
    _absurd = findAbsurd(shape);
    if (_context.options.withTessellation) {
        _deflection = meshShape(shape, _absurd, _context.options);
    }

    std::vector<Body> bodies;
    for (TopExp_Explorer solids(shape, TopAbs_SOLID); solids.More(); solids.Next()) {
        bodies.push_back(makeBody(BodyKind::Solid, solids.Current()));
    }
    for (TopExp_Explorer shells(shape, TopAbs_SHELL, TopAbs_SOLID); shells.More(); shells.Next()) {
        bodies.push_back(makeBody(BodyKind::Sheet, shells.Current()));
    }
    addLoose(BodyKind::Sheet, shape, TopAbs_FACE, TopAbs_SHELL, bodies);
    addLoose(BodyKind::Wire, shape, TopAbs_EDGE, TopAbs_FACE, bodies);
    addLoose(BodyKind::Points, shape, TopAbs_VERTEX, TopAbs_EDGE, bodies);
    return bodies;
}

Body BodyBuilder::makeBody(BodyKind kind, const TopoDS_Shape& shape) {
    Body body;
    body.id = _context.ids.Next();
    body.kind = kind;
    const Traits traits = traitsOf(shape);
    body.name = traits.name;
    body.color = traits.color;
    body.hidden = traits.hidden;
    body.layers = traits.layers;
    _curveColor = traits.curveColor ? traits.curveColor : _product.curveColor;
    body.origin = originOf(shape);
    _context.index.Add(shape, {EntityLink::Kind::Body, 0, body.id});
    addFaces(shape, body);
    addEdges(shape, body);
    if (kind == BodyKind::Points) {
        addPoints(shape, body);
    }
    return body;
}

void BodyBuilder::addLoose(BodyKind kind, const TopoDS_Shape& shape, TopAbs_ShapeEnum wanted,
                           TopAbs_ShapeEnum inside, std::vector<Body>& bodies) {
    std::map<LooseKey, TopoDS_Compound> groups;
    for (TopExp_Explorer parts(shape, wanted, inside); parts.More(); parts.Next()) {
        const LooseKey key = looseKey(kind, traitsOf(parts.Current()));
        const auto group = groups.try_emplace(key, emptyCompound());
        BRep_Builder().Add(group.first->second, parts.Current());
    }
    for (const auto& [key, group] : groups) {
        Body body = makeBody(kind, group);
        body.layers = key.layers;
        body.hidden = key.hidden;
        body.color = key.color;
        bodies.push_back(std::move(body));
    }
}

void BodyBuilder::addFaces(const TopoDS_Shape& shape, Body& body) {
    TopTools_IndexedMapOfShape faces;
    TopExp::MapShapes(shape, TopAbs_FACE, faces);
    body.faces.reserve(static_cast<std::size_t>(faces.Extent()));
    std::uint64_t hidden = 0;
    for (int i = 1; i <= faces.Extent(); ++i) {
        const TopoDS_Face& part = TopoDS::Face(faces.FindKey(i));
        const Traits traits = traitsOf(part);
        hidden += traits.hidden ? 1U : 0U;
        Face face;
        face.id = _context.ids.Next();
        face.name = traits.name;
        face.color = traits.color;
        _context.index.Add(part, {EntityLink::Kind::Face, body.id, face.id});
        if (_context.options.withTessellation) {
            fillPoints(part, body, face);
        }
        body.faces.push_back(std::move(face));
    }
    body.hidden = body.hidden || (hidden > 0 && hidden == body.faces.size());
    if (hidden > 0 && !body.hidden) {
        tell(Finding::Severity::Note, "face.hidden",
             "The file hides single faces of bodies that it shows; they are shown too.", hidden);
    }
}

void BodyBuilder::fillPoints(const TopoDS_Face& shape, const Body& body, Face& face) {
    if (_absurd.Contains(shape)) {
        tellAbsurd();
    } else if (!fillTriangles(shape, body.origin, face)) {
        tell(Finding::Severity::Warning, "shape.no-triangles",
             "Faces could not be turned into triangles; they are listed but cannot be drawn.");
    }
}

void BodyBuilder::addEdges(const TopoDS_Shape& shape, Body& body) {
    TopTools_IndexedDataMapOfShapeListOfShape facesOfEdges;
    TopExp::MapShapesAndAncestors(shape, TopAbs_EDGE, TopAbs_FACE, facesOfEdges);
    for (int i = 1; i <= facesOfEdges.Extent(); ++i) {
        const TopoDS_Edge& part = TopoDS::Edge(facesOfEdges.FindKey(i));

        const TopTools_ListOfShape& faces = facesOfEdges.FindFromIndex(i);
        const TopoDS_Face face = faces.IsEmpty() ? TopoDS_Face() : TopoDS::Face(faces.First());
        Edge edge = makeEdge(part, face, body);
        _context.index.Add(part, {EntityLink::Kind::Edge, body.id, edge.id});
        body.edges.push_back(std::move(edge));
    }
}

Edge BodyBuilder::makeEdge(const TopoDS_Edge& shape, const TopoDS_Face& face, const Body& body) {
    Edge edge;
    edge.id = _context.ids.Next();
    const Traits traits = traitsOf(shape);
    edge.name = traits.name;
    for (const auto& color : {traits.curveColor, traits.color, _curveColor}) {
        edge.color = edge.color ? edge.color : color;
    }
    if (_context.options.withTessellation && !BRep_Tool::Degenerated(shape)) {
        fillPoints(shape, face, body, edge);
    }
    return edge;
}

void BodyBuilder::fillPoints(const TopoDS_Edge& shape, const TopoDS_Face& face, const Body& body,
                             Edge& edge) {
    if (_absurd.Contains(shape)) {
        tellAbsurd();
        return;
    }
    const TopoDS_Face meshed = _absurd.Contains(face) ? TopoDS_Face() : face;
    const LineAccuracy accuracy = {_deflection, _context.options.angle};
    if (!fillLine(shape, meshed, body.origin, accuracy, edge)) {
        tell(Finding::Severity::Warning, "shape.no-line",
             "Edges could not be turned into lines; they are listed but cannot be drawn.");
    }
}

void BodyBuilder::addPoints(const TopoDS_Shape& shape, Body& body) {
    TopTools_IndexedMapOfShape vertices;
    TopExp::MapShapes(shape, TopAbs_VERTEX, vertices);
    for (int i = 1; i <= vertices.Extent(); ++i) {
        const gp_Pnt point = BRep_Tool::Pnt(TopoDS::Vertex(vertices.FindKey(i)));
        for (int axis = 1; axis <= 3; ++axis) {
            const double shift = body.origin[static_cast<std::size_t>(axis) - 1];
            body.points.push_back(static_cast<float>(point.Coord(axis) - shift));
        }
    }
}

Vector BodyBuilder::originOf(const TopoDS_Shape& shape) const {
    return bodyOrigin(soundBox(shape, _absurd));
}

Traits BodyBuilder::traitsOf(const TopoDS_Shape& shape) const {
    const Traits* known = _traits.Seek(shape);
    Traits traits = known == nullptr ? Traits() : *known;
    if (traits.name.empty()) {
        traits.name = nameOfShape(_context.names, shape);
    }
    return traits;
}

void BodyBuilder::tellAbsurd() {
    tell(Finding::Severity::Error, "shape.absurd",
         "Faces or edges have coordinates that are no numbers or absurdly large; they are listed "
         "but cannot be drawn.");
}

void BodyBuilder::tell(Finding::Severity severity, const std::string& code,
                       const std::string& message, std::uint64_t count) {
    addFinding(_context.document, {severity, code, message, _product.name}, count);
}

}  // namespace kesview
