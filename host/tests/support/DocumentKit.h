#pragma once

/// @file
/// Small documents for tests, with ids that are easy to follow.

#include "document/Document.h"

#include <string>
#include <utility>

namespace kesview::support {

/// A square of side 1 at height z, in two triangles.
inline Face square(Id id, float z) {
    Face face;
    face.id = id;
    face.points = {0, 0, z, 1, 0, z, 1, 1, z, 0, 1, z};
    face.normals = {0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 0, 1};
    face.triangles = {0, 1, 2, 0, 2, 3};
    return face;
}

/// From 0, 0, 0 straight to @p x, 0, 0.
inline Edge line(Id id, float x) {
    Edge edge;
    edge.id = id;
    edge.points = {0, 0, 0, x, 0, 0};
    return edge;
}

inline Matrix movedBy(double x, double y, double z) {
    Matrix matrix = identityMatrix;
    matrix[12] = x;
    matrix[13] = y;
    matrix[14] = z;
    return matrix;
}

inline Component component(Id id, std::string name, std::uint32_t product) {
    Component made;
    made.id = id;
    made.name = std::move(name);
    made.product = product;
    return made;
}

inline Product product(Id id, std::string name) {
    Product made;
    made.id = id;
    made.name = std::move(name);
    return made;
}

/// A part with a body of two squares and an edge: ids from @p id on. The second face has a name and
/// a colour of its own, the body is red.
inline Product boltProduct(Id id) {
    Product bolt = product(id, "Bolt");
    Body body;
    body.id = id + 1;
    body.name = "Shank";
    body.color = Color{255, 0, 0, 255};
    body.faces = {square(id + 2, 0), square(id + 3, 5)};
    body.faces[1].name = "Head top";
    body.faces[1].color = Color{0, 0, 255, 255};
    body.edges = {line(id + 4, 1)};
    bolt.bodies.push_back(std::move(body));
    return bolt;
}

/// A machine of two pairs of bolts and a plate:
///
///     50 Machine (30)
///         31 Pair (20)    21 Bolt (10)    body 11, faces 12 and 13, edge 14
///                         22 Bolt (10)    10 to the right, green
///         32 Pair (20)    20 further on
///         33 Plate (40)   body 41 without a name, a million away, face 42, two loose points
///         30 itself       body 34, a wire of edge 35
///
/// Numbers are ids, those in parentheses of products.
inline Document machine() {
    Document document;
    document.format = "STEP";
    Product pair = product(20, "Pair");
    pair.components = {component(21, "Bolt", 0), component(22, "Bolt", 0)};
    pair.components[1].parentFromChild = movedBy(10, 0, 0);
    pair.components[1].color = Color{0, 255, 0, 255};
    Product whole = product(30, "Machine");
    whole.components = {component(31, "Pair", 1), component(32, "Pair", 1),
                        component(33, "Plate", 3)};
    whole.components[1].parentFromChild = movedBy(0, 20, 0);
    Body seam;
    seam.id = 34;
    seam.name = "Seam";
    seam.kind = BodyKind::Wire;
    seam.edges = {line(35, 3)};
    whole.bodies.push_back(std::move(seam));
    Product plate = product(40, "Plate");
    plate.color = Color{200, 200, 0, 255};
    Body sheet;
    sheet.id = 41;
    sheet.kind = BodyKind::Sheet;
    sheet.origin = {1e6, 0, 0};
    sheet.hidden = true;
    sheet.faces = {square(42, 0)};
    sheet.points = {0, 0, 0, 1, 1, 1};
    plate.bodies.push_back(std::move(sheet));
    document.products = {boltProduct(10), std::move(pair), std::move(whole), std::move(plate)};
    document.roots = {component(50, "Machine", 2)};
    return document;
}

inline Annotation annotation(Id id, std::string key, AnnotationKind kind) {
    Annotation made;
    made.id = id;
    made.key = std::move(key);
    made.kind = kind;
    return made;
}

/// Three annotations: a dimension 60 "#600" of faces 12 and 13 of the bolt, drawn with a line and
/// an area; a datum 61 "#610" of the bolt's body, drawn with a text; a tolerance 62 "#620" that
/// refers to the datum and is not drawn, but has a text and a plane.
inline void addAnnotations(Document& document) {
    Annotation dimension = annotation(60, "#600", AnnotationKind::Dimension);
    dimension.type = "linear distance";
    dimension.typeCode = 7;
    dimension.name = "Length";
    dimension.semantic = true;
    dimension.drawnInFile = true;
    dimension.attributes = {{"Value", "5"}};
    dimension.links = {{EntityLink::Kind::Face, 11, 12}, {EntityLink::Kind::Face, 11, 13}};
    dimension.lines = {{0, 0, 0, 0, 0, 5, 0, 2, 5}};
    dimension.areas = {{{0, 0, 5, 1, 0, 5, 0, 1, 5}, {0, 1, 2}}};
    dimension.color = Color{1, 2, 3, 255};
    Annotation datum = annotation(61, "#610", AnnotationKind::Datum);
    datum.type = "datum";
    datum.label = "A";
    datum.semantic = true;
    datum.links = {{EntityLink::Kind::Body, 0, 11}};
    datum.texts = {{"A", {1, 2, 3}, {0, 1, 0}, {0, 0, 1}, 2.5}};
    Annotation tolerance = annotation(62, "#620", AnnotationKind::Tolerance);
    tolerance.type = "position";
    tolerance.name = "Bore";
    tolerance.text = "\xE2\x8C\x96 0.2 | A";
    tolerance.semantic = true;
    tolerance.hidden = true;
    tolerance.attributes = {{"Tolerance Value", "0.2"}};
    tolerance.datums = {"#610"};
    tolerance.links = {{EntityLink::Kind::Face, 11, 13}};
    tolerance.plane = {{Vector{0, 0, 9}, Vector{1, 0, 0}, Vector{0, 1, 0}}};
    document.annotations = {std::move(dimension), std::move(datum), std::move(tolerance)};
}

/// An orthographic view 70 "#700" named "Front", from -y with z up, that shows the dimension.
inline SavedView frontView() {
    SavedView view;
    view.id = 70;
    view.key = "#700";
    view.name = "Front";
    view.eye = {1, -100, 2};
    view.target = {1, 0, 2};
    view.up = {0, 0, 1};
    view.width = 160;
    view.height = 100;
    view.members = {"#600"};
    return view;
}

}  // namespace kesview::support
