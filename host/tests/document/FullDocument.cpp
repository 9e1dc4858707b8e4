/// @file
#include "document/FullDocument.h"

#include <gtest/gtest.h>

namespace kesview {

namespace {

Face fullFace() {
    Face face;
    face.id = 11;
    face.name = "top ⌀";
    face.color = Color{1, 2, 3, 4};
    face.points = {0, 0, 0, 1, 0, 0, 0, 1, 0};
    face.normals = {0, 0, 1, 0, 0, 1, 0, 0, 1};
    face.triangles = {0, 1, 2};
    return face;
}

Edge fullEdge() {
    Edge edge;
    edge.id = 12;
    edge.name = "rim";
    edge.color = Color{5, 6, 7, 8};
    edge.points = {0, 0, 0, 1, 0, 0};
    return edge;
}

Body fullBody() {
    Body body;
    body.id = 10;
    body.name = "solid";
    body.kind = BodyKind::Mesh;
    body.color = Color{9, 10, 11, 12};
    body.hidden = true;
    body.origin = {1e6, -2e6, 3.5};
    body.faces = {fullFace(), fullFace()};
    body.faces[1].id = 13;
    body.edges = {fullEdge()};
    body.points = {7, 8, 9};
    body.layers = {"L1", ""};
    return body;
}

Component fullComponent(Id id, std::uint32_t product) {
    Component component;
    component.id = id;
    component.name = "bolt " + std::to_string(id);
    component.product = product;
    for (std::size_t i = 0; i < 16; ++i) {
        component.parentFromChild[i] = static_cast<double>(i) + 0.1;
    }
    component.color = Color{13, 14, 15, 16};
    component.hidden = true;
    component.layers = {"hardware"};
    return component;
}

Annotation fullAnnotation() {
    Annotation annotation;
    annotation.id = 30;
    annotation.key = "#4711";
    annotation.kind = AnnotationKind::Weld;
    annotation.type = "position";
    annotation.typeCode = -3;
    annotation.name = "name";
    annotation.label = "label";
    annotation.text = "⌖ ⌀0.2 Ⓜ | A | B";
    annotation.attributes = {{"UpperVal", "0.1"}, {"Value", "5.5"}};
    annotation.links = {{EntityLink::Kind::Vertex, 10, 11}, {EntityLink::Kind::Product, 0, 2}};
    annotation.datums = {"#1", "#2"};
    annotation.lines = {{0, 0, 0, 1, 1, 1}, {}};
    annotation.areas = {{{0, 0, 0, 1, 0, 0, 0, 1, 0}, {2, 1, 0}}};
    annotation.texts = {{"5.5\nmm", {1, 2, 3}, {0, 1, 0}, {0, 0, 1}, 3.5}};
    annotation.plane = {{{1, 2, 3}, {0, 0, 1}, {0, 1, 0}}};
    annotation.color = Color{17, 18, 19, 20};
    annotation.hidden = true;
    annotation.semantic = true;
    annotation.drawnInFile = true;
    return annotation;
}

SavedView fullView() {
    SavedView view;
    view.id = 40;
    view.key = "#99";
    view.name = "Fräsen";
    view.eye = {1, 2, 3};
    view.target = {4, 5, 6};
    view.up = {0, 0, 1};
    view.perspective = true;
    view.viewAngle = 30;
    view.width = 210;
    view.height = 297;
    view.clipping = SavedView::Plane{{7, 8, 9}, {1, 0, 0}};
    view.members = {"#4711"};
    view.showsAll = true;
    return view;
}

template <typename T, typename Compare>
void expectSameList(const std::vector<T>& expected, const std::vector<T>& found,
                    Compare expectSameItem) {
    ASSERT_EQ(expected.size(), found.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        SCOPED_TRACE(i);
        expectSameItem(expected[i], found[i]);
    }
}

void expectSameFace(const Face& expected, const Face& found) {
    EXPECT_EQ(expected.id, found.id);
    EXPECT_EQ(expected.name, found.name);
    EXPECT_EQ(expected.color, found.color);
    EXPECT_EQ(expected.points, found.points);
    EXPECT_EQ(expected.normals, found.normals);
    EXPECT_EQ(expected.triangles, found.triangles);
}

void expectSameEdge(const Edge& expected, const Edge& found) {
    EXPECT_EQ(expected.id, found.id);
    EXPECT_EQ(expected.name, found.name);
    EXPECT_EQ(expected.color, found.color);
    EXPECT_EQ(expected.points, found.points);
}

void expectSameBody(const Body& expected, const Body& found) {
    EXPECT_EQ(expected.id, found.id);
    EXPECT_EQ(expected.name, found.name);
    EXPECT_EQ(expected.kind, found.kind);
    EXPECT_EQ(expected.color, found.color);
    EXPECT_EQ(expected.hidden, found.hidden);
    EXPECT_EQ(expected.origin, found.origin);
    expectSameList(expected.faces, found.faces, expectSameFace);
    expectSameList(expected.edges, found.edges, expectSameEdge);
    EXPECT_EQ(expected.points, found.points);
    EXPECT_EQ(expected.layers, found.layers);
}

void expectSameComponent(const Component& expected, const Component& found) {
    EXPECT_EQ(expected.id, found.id);
    EXPECT_EQ(expected.name, found.name);
    EXPECT_EQ(expected.product, found.product);
    EXPECT_EQ(expected.parentFromChild, found.parentFromChild);
    EXPECT_EQ(expected.color, found.color);
    EXPECT_EQ(expected.hidden, found.hidden);
    EXPECT_EQ(expected.layers, found.layers);
}

void expectSameProduct(const Product& expected, const Product& found) {
    EXPECT_EQ(expected.id, found.id);
    EXPECT_EQ(expected.name, found.name);
    EXPECT_EQ(expected.color, found.color);
    EXPECT_EQ(expected.layers, found.layers);
    expectSameList(expected.bodies, found.bodies, expectSameBody);
    expectSameList(expected.components, found.components, expectSameComponent);
}

void expectSameLink(const EntityLink& expected, const EntityLink& found) {
    EXPECT_EQ(expected.kind, found.kind);
    EXPECT_EQ(expected.owner, found.owner);
    EXPECT_EQ(expected.id, found.id);
}

void expectSameArea(const FilledArea& expected, const FilledArea& found) {
    EXPECT_EQ(expected.points, found.points);
    EXPECT_EQ(expected.triangles, found.triangles);
}

void expectSameText(const PlacedText& expected, const PlacedText& found) {
    EXPECT_EQ(expected.text, found.text);
    EXPECT_EQ(expected.position, found.position);
    EXPECT_EQ(expected.u, found.u);
    EXPECT_EQ(expected.v, found.v);
    EXPECT_EQ(expected.height, found.height);
}

void expectSameAnnotation(const Annotation& expected, const Annotation& found) {
    EXPECT_EQ(expected.id, found.id);
    EXPECT_EQ(expected.key, found.key);
    EXPECT_EQ(expected.kind, found.kind);
    EXPECT_EQ(expected.type, found.type);
    EXPECT_EQ(expected.typeCode, found.typeCode);
    EXPECT_EQ(expected.name, found.name);
    EXPECT_EQ(expected.label, found.label);
    EXPECT_EQ(expected.text, found.text);
    EXPECT_EQ(expected.attributes, found.attributes);
    expectSameList(expected.links, found.links, expectSameLink);
    EXPECT_EQ(expected.datums, found.datums);
    EXPECT_EQ(expected.lines, found.lines);
    expectSameList(expected.areas, found.areas, expectSameArea);
    expectSameList(expected.texts, found.texts, expectSameText);
    EXPECT_EQ(expected.plane, found.plane);
    EXPECT_EQ(expected.color, found.color);
    EXPECT_EQ(expected.hidden, found.hidden);
    EXPECT_EQ(expected.semantic, found.semantic);
    EXPECT_EQ(expected.drawnInFile, found.drawnInFile);
}

void expectSameView(const SavedView& expected, const SavedView& found) {
    EXPECT_EQ(expected.id, found.id);
    EXPECT_EQ(expected.key, found.key);
    EXPECT_EQ(expected.name, found.name);
    EXPECT_EQ(expected.eye, found.eye);
    EXPECT_EQ(expected.target, found.target);
    EXPECT_EQ(expected.up, found.up);
    EXPECT_EQ(expected.perspective, found.perspective);
    EXPECT_EQ(expected.viewAngle, found.viewAngle);
    EXPECT_EQ(expected.width, found.width);
    EXPECT_EQ(expected.height, found.height);
    ASSERT_EQ(expected.clipping.has_value(), found.clipping.has_value());
    if (expected.clipping) {
        EXPECT_EQ(expected.clipping->point, found.clipping->point);
        EXPECT_EQ(expected.clipping->normal, found.clipping->normal);
    }
    EXPECT_EQ(expected.members, found.members);
    EXPECT_EQ(expected.showsAll, found.showsAll);
}

void expectSameFinding(const Finding& expected, const Finding& found) {
    EXPECT_EQ(expected.severity, found.severity);
    EXPECT_EQ(expected.code, found.code);
    EXPECT_EQ(expected.message, found.message);
    EXPECT_EQ(expected.where, found.where);
    EXPECT_EQ(expected.count, found.count);
}

}  // namespace

Document fullDocument() {
    Document document;
    document.format = "STEP";
    document.schema = "AP242 edition 1";
    document.unit = "inch";
    document.millimetresPerUnit = 25.4;
    document.author = "A. Uthor";
    document.originatingSystem = "by hand";
    document.timeStamp = "2024-01-01T00:00:00";
    Product assembly;
    assembly.id = 2;
    assembly.name = "assembly";
    assembly.color = Color{21, 22, 23, 24};
    assembly.layers = {"A"};
    assembly.components = {fullComponent(3, 1), fullComponent(4, 1)};
    Product part;
    part.id = 5;
    part.name = "part";
    part.bodies = {fullBody()};
    document.products = {assembly, part};
    document.roots = {fullComponent(6, 0)};
    document.annotations = {fullAnnotation(), Annotation()};
    document.views = {fullView(), SavedView()};
    document.findings = {{Finding::Severity::Note, "pmi.no-drawing", "It is lost.", "#4711", 3}};
    return document;
}

void expectSame(const Document& expected, const Document& found) {
    EXPECT_EQ(expected.format, found.format);
    EXPECT_EQ(expected.schema, found.schema);
    EXPECT_EQ(expected.unit, found.unit);
    EXPECT_EQ(expected.millimetresPerUnit, found.millimetresPerUnit);
    EXPECT_EQ(expected.author, found.author);
    EXPECT_EQ(expected.originatingSystem, found.originatingSystem);
    EXPECT_EQ(expected.timeStamp, found.timeStamp);
    expectSameList(expected.products, found.products, expectSameProduct);
    expectSameList(expected.roots, found.roots, expectSameComponent);
    expectSameList(expected.annotations, found.annotations, expectSameAnnotation);
    expectSameList(expected.views, found.views, expectSameView);
    expectSameList(expected.findings, found.findings, expectSameFinding);
}

}  // namespace kesview
