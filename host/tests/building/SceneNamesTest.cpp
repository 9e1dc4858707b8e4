#include "building/SceneNames.h"
#include "support/DocumentKit.h"

#include <gtest/gtest.h>

namespace kesview {
namespace {

TEST(SceneNamesTest, RepeatedNamesAreNumberedFromTheSecondOn) {
    const SceneNames names(support::machine());
    EXPECT_EQ(names.Root(0), "Machine");
    EXPECT_EQ(names.Component(1, 0), "Bolt");
    EXPECT_EQ(names.Component(1, 1), "Bolt:2");
    EXPECT_EQ(names.Component(2, 0), "Pair");
    EXPECT_EQ(names.Component(2, 1), "Pair:2");
}

TEST(SceneNamesTest, ANumberThatTheFileUsesIsNotTaken) {
    Document document;
    document.products = {support::product(2, "Bolt")};
    document.roots = {support::component(3, "Bolt", 0), support::component(4, "Bolt", 0),
                      support::component(5, "Bolt:2", 0), support::component(6, "Bolt", 0)};
    const SceneNames names(document);
    EXPECT_EQ(names.Root(0), "Bolt");
    EXPECT_EQ(names.Root(1), "Bolt:3");
    EXPECT_EQ(names.Root(2), "Bolt:2");
    EXPECT_EQ(names.Root(3), "Bolt:4");
}

TEST(SceneNamesTest, WhatHasNoNameIsCalledAfterItsProductOrItsKind) {
    Document document;
    document.products = {support::product(2, "Bolt"), support::product(3, "")};
    document.products[0].bodies.resize(2);
    document.roots = {support::component(4, "", 0), support::component(5, "", 1)};
    const SceneNames names(document);
    EXPECT_EQ(names.Root(0), "Bolt");
    EXPECT_EQ(names.Root(1), "Instance");
    EXPECT_EQ(names.Body(0, 0), "Body");
    EXPECT_EQ(names.Body(0, 1), "Body:2");
}

TEST(SceneNamesTest, FacesAndEdgesAreCalledByNameOrNumber) {
    Face face;
    face.id = 12;
    EXPECT_EQ(sceneNameOf(face), "face 12");
    face.name = "Seat";
    EXPECT_EQ(sceneNameOf(face), "Seat");
    Edge edge;
    edge.id = 13;
    EXPECT_EQ(sceneNameOf(edge), "edge 13");
}

TEST(SceneNamesTest, AnAnnotationIsCalledByTheFirstTextThatItHas) {
    Annotation annotation = support::annotation(60, "#600", AnnotationKind::Note);
    EXPECT_EQ(sceneNameOf(annotation), "#600");
    annotation.text = "5.5";
    EXPECT_EQ(sceneNameOf(annotation), "5.5");
    annotation.label = "A";
    EXPECT_EQ(sceneNameOf(annotation), "A");
    annotation.name = "Datum A";
    EXPECT_EQ(sceneNameOf(annotation), "Datum A");
}

}  // namespace
}  // namespace kesview
