#include "loading/Ids.h"
#include "support/DocumentKit.h"

#include <gtest/gtest.h>

namespace kesview {
namespace {

TEST(IdsTest, VisualIdsNameKindAndNumber) {
    EXPECT_EQ(visualIdOf({11, viz::FaceType, 12}), L"face 12");
    EXPECT_EQ(visualIdOf({11, viz::EdgeType, 13}), L"edge 13");
    EXPECT_EQ(visualIdOf({10, viz::BodyType, 11}), L"body 11");
    EXPECT_EQ(visualIdOf({0, viz::DimensionType, 77}), L"annotation 77");
    EXPECT_EQ(visualIdOf({0, viz::AnnotationType, 77}), L"annotation 77");
    EXPECT_EQ(visualIdOf({0, viz::ViewType, 80}), L"view 80");
    EXPECT_EQ(visualIdOf({0, viz::CaptureType, 81}), L"capture 81");
}

TEST(IdsTest, EveryKindOfAnnotationHasAnAnnotationType) {
    for (int kind = 0; kind <= static_cast<int>(AnnotationKind::Other); ++kind) {
        const viz::EntityType type = entityTypeOf(static_cast<AnnotationKind>(kind));
        EXPECT_TRUE(viz::EntityId(0, type, 5).IsAnnotation()) << "kind " << kind;
        EXPECT_FALSE(nameOfAnnotations(type).empty()) << "kind " << kind;
    }
    EXPECT_EQ(entityTypeOf(AnnotationKind::DatumTarget), viz::DatumType);
    EXPECT_EQ(entityTypeOf(AnnotationKind::Tolerance), viz::ToleranceType);
}

TEST(IdsTest, AnInstanceIsOwnedByItsProductAndAProductByNothing) {
    const Document document = support::machine();
    const Product& whole = document.products[2];
    EXPECT_EQ(entityOf(whole, document.roots[0]), viz::EntityId(30, viz::AssemblyType, 50));
    EXPECT_EQ(entityOf(whole), viz::EntityId(0, viz::AssemblyType, 30));
    EXPECT_EQ(entityOf(document.products[0]), viz::EntityId(0, viz::PartType, 10));
}

TEST(IdsTest, OnlyTheEdgesOfABareWireAreOfTheWireType) {
    Body body;
    body.kind = BodyKind::Wire;
    EXPECT_EQ(typeOfEdges(body), viz::EdgeType);
    body.edges = {support::line(3, 1)};
    EXPECT_EQ(typeOfEdges(body), viz::WireType);
    body.faces = {support::square(4, 0)};
    EXPECT_EQ(typeOfEdges(body), viz::EdgeType);
}

TEST(IdsTest, IdsBeyondAreAboveEveryIdOfTheDocument) {
    Document document = support::machine();
    EXPECT_EQ(IdsBeyond(document).AnnotationContainer(), 51U);
    support::addAnnotations(document);
    document.views = {support::frontView(), support::frontView()};
    document.views[1].id = 71;
    EXPECT_EQ(IdsBeyond(document).Capture(0), 72U);
    EXPECT_EQ(IdsBeyond(document).Capture(1), 73U);
    EXPECT_EQ(IdsBeyond(document).AnnotationContainer(), 74U);
    document.products[0].bodies[0].edges[0].id = 1000;
    EXPECT_EQ(IdsBeyond(document).Capture(0), 1001U);
}

}  // namespace
}  // namespace kesview
