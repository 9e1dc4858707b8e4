#pragma once

/// @file
/// The fields of every struct of a Document, listed once for all who must walk them: each
/// visitFields() hands them, in order, to a visitor. The bindings name every field, so that a
/// struct that gains one no longer compiles here until it is listed.

#include "document/Document.h"

#include <type_traits>

namespace kesview {

/// Allows @p Struct itself and, for those who only read, its const twin.
template <typename Struct, typename Given>
using IfFieldsOf = std::enable_if_t<std::is_same_v<std::remove_const_t<Given>, Struct>>;

template <typename Given, typename Visitor, typename = IfFieldsOf<Face, Given>>
void visitFields(Given& face, Visitor&& visit, Face* = nullptr) {
    auto& [id, name, color, points, normals, triangles] = face;
    visit(id, name, color, points, normals, triangles);
}

template <typename Given, typename Visitor, typename = IfFieldsOf<Edge, Given>>
void visitFields(Given& edge, Visitor&& visit, Edge* = nullptr) {
    auto& [id, name, color, points] = edge;
    visit(id, name, color, points);
}

template <typename Given, typename Visitor, typename = IfFieldsOf<Body, Given>>
void visitFields(Given& body, Visitor&& visit, Body* = nullptr) {
    auto& [id, name, kind, color, hidden, origin, faces, edges, points, layers] = body;
    visit(id, name, kind, color, hidden, origin, faces, edges, points, layers);
}

template <typename Given, typename Visitor, typename = IfFieldsOf<Component, Given>>
void visitFields(Given& component, Visitor&& visit, Component* = nullptr) {
    auto& [id, name, product, parentFromChild, color, hidden, layers] = component;
    visit(id, name, product, parentFromChild, color, hidden, layers);
}

template <typename Given, typename Visitor, typename = IfFieldsOf<Product, Given>>
void visitFields(Given& product, Visitor&& visit, Product* = nullptr) {
    auto& [id, name, color, layers, bodies, components] = product;
    visit(id, name, color, layers, bodies, components);
}

template <typename Given, typename Visitor, typename = IfFieldsOf<EntityLink, Given>>
void visitFields(Given& link, Visitor&& visit, EntityLink* = nullptr) {
    auto& [kind, owner, id] = link;
    visit(kind, owner, id);
}

template <typename Given, typename Visitor, typename = IfFieldsOf<FilledArea, Given>>
void visitFields(Given& area, Visitor&& visit, FilledArea* = nullptr) {
    auto& [points, triangles] = area;
    visit(points, triangles);
}

template <typename Given, typename Visitor, typename = IfFieldsOf<PlacedText, Given>>
void visitFields(Given& placed, Visitor&& visit, PlacedText* = nullptr) {
    auto& [text, position, u, v, height] = placed;
    visit(text, position, u, v, height);
}

template <typename Given, typename Visitor, typename = IfFieldsOf<Annotation, Given>>
void visitFields(Given& annotation, Visitor&& visit, Annotation* = nullptr) {
    auto& [id, key, kind, type, typeCode, name, label, text, attributes, links, datums, lines,
           areas, texts, plane, color, hidden, semantic, drawnInFile] = annotation;
    visit(id, key, kind, type, typeCode, name, label, text, attributes, links, datums, lines, areas,
          texts, plane, color, hidden, semantic, drawnInFile);
}

template <typename Given, typename Visitor, typename = IfFieldsOf<SavedView::Plane, Given>>
void visitFields(Given& plane, Visitor&& visit, SavedView::Plane* = nullptr) {
    auto& [point, normal] = plane;
    visit(point, normal);
}

template <typename Given, typename Visitor, typename = IfFieldsOf<SavedView, Given>>
void visitFields(Given& view, Visitor&& visit, SavedView* = nullptr) {
    auto& [id, key, name, eye, target, up, perspective, viewAngle, width, height, clipping, members,
           showsAll] = view;
    visit(id, key, name, eye, target, up, perspective, viewAngle, width, height, clipping, members,
          showsAll);
}

template <typename Given, typename Visitor, typename = IfFieldsOf<Finding, Given>>
void visitFields(Given& finding, Visitor&& visit, Finding* = nullptr) {
    auto& [severity, code, message, where, count] = finding;
    visit(severity, code, message, where, count);
}

template <typename Given, typename Visitor, typename = IfFieldsOf<Document, Given>>
void visitFields(Given& document, Visitor&& visit, Document* = nullptr) {
    auto& [format, schema, unit, millimetresPerUnit, author, originatingSystem, timeStamp, products,
           roots, annotations, views, findings] = document;
    visit(format, schema, unit, millimetresPerUnit, author, originatingSystem, timeStamp, products,
          roots, annotations, views, findings);
}

/// The last enumerator of each enumeration of a document; the first is 0 and none is left out.
constexpr BodyKind lastOf(BodyKind) {
    return BodyKind::Mesh;
}
constexpr EntityLink::Kind lastOf(EntityLink::Kind) {
    return EntityLink::Kind::Vertex;
}
constexpr AnnotationKind lastOf(AnnotationKind) {
    return AnnotationKind::Other;
}
constexpr Finding::Severity lastOf(Finding::Severity) {
    return Finding::Severity::Note;
}

}  // namespace kesview
