#include "loading/Links.h"
#include "loading/Load.h"
#include "support/DocumentKit.h"

#include <gmock/gmock.h>

namespace kesview {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(LinksTest, AFaceAnswersItsAnnotationsInTheirOrder) {
    Document document = support::machine();
    support::addAnnotations(document);
    const AnnotationsByFace links = annotationsByFace(document);
    EXPECT_THAT(annotationsOf(links, {11, viz::FaceType, 12}), ElementsAre("#600"));
    EXPECT_THAT(annotationsOf(links, {11, viz::FaceType, 13}), ElementsAre("#600", "#620"));
    EXPECT_THAT(annotationsOf(links, {41, viz::FaceType, 42}), IsEmpty());
}

TEST(LinksTest, ABodyAnswersUnderItsProduct) {
    Document document = support::machine();
    support::addAnnotations(document);
    EXPECT_THAT(annotationsOf(annotationsByFace(document), {10, viz::BodyType, 11}),
                ElementsAre("#610"));
}

TEST(LinksTest, WhatIsLinkedTwiceIsAnsweredOnce) {
    Document document = support::machine();
    support::addAnnotations(document);
    auto& links = document.annotations[0].links;
    links.push_back(links.front());
    EXPECT_THAT(annotationsOf(annotationsByFace(document), {11, viz::FaceType, 12}),
                ElementsAre("#600"));
}

TEST(LinksTest, LinksOutliveTheLoading) {
    Document document = support::machine();
    support::addAnnotations(document);
    const auto model = load(document);
    EXPECT_EQ(annotationsByFace(document).size(), 4U);
}

TEST(LinksTest, EveryKindOfLinkIsAnEntity) {
    const Document document = support::machine();
    const LinkedEntities entities(document);
    using Kind = EntityLink::Kind;
    EXPECT_EQ(entities.EntityOf({Kind::Edge, 11, 14}), viz::EntityId(11, viz::EdgeType, 14));
    EXPECT_EQ(entities.EntityOf({Kind::Vertex, 11, 99}), viz::EntityId(11, viz::VertexType, 99));
    EXPECT_EQ(entities.EntityOf({Kind::Product, 0, 30}), viz::EntityId(0, viz::AssemblyType, 30));
    EXPECT_EQ(entities.EntityOf({Kind::Body, 0, 999}), viz::EntityId(0, viz::BodyType, 999));
}

}  // namespace
}  // namespace kesview
