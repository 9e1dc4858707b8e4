#include "loading/Load.h"
#include "support/DocumentKit.h"

#include <KesVizCore/model/VizEdge.h>
#include <KesVizCore/model/VizFace.h>
#include <KesVizCore/model/VizMesh.h>
#include <KesVizCore/model/VizPointSet.h>
#include <KesVizCore/model/VizPoints.h>
#include <KesVizCore/model/VizPolygon.h>
#include <KesVizCore/model/VizWire.h>

#include <gmock/gmock.h>

#include <set>

namespace kesview {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

viz::EntityId entityIdOf(const viz::VizElement& element) {
    viz::EntityId entity;
    element.GetEntityID(entity);
    return entity;
}

class GeometryLoadersTest : public testing::Test {
protected:
    Document _document = support::machine();
    std::unique_ptr<LoadedModel> _model = load(_document);
    const viz::VizMesh& _shank = *_model->geometry.GetMeshes()[0];
};

TEST_F(GeometryLoadersTest, ABodyIsLoadedOnceHoweverOftenItsProductIsUsed) {
    ASSERT_THAT(_model->geometry.GetMeshes(), SizeIs(2));
    EXPECT_EQ(entityIdOf(_shank), viz::EntityId(10, viz::BodyType, 11));
    EXPECT_EQ(_shank.GetVisualID(), L"body 11");
    EXPECT_EQ(_shank.GetMechanicalID(), L"Shank");
}

TEST_F(GeometryLoadersTest, AFaceKeepsItsTrianglesNamesAndColour) {
    ASSERT_THAT(_shank.GetFaces(), SizeIs(2));
    const viz::VizFace& top = *_shank.GetFaces()[1];
    EXPECT_EQ(entityIdOf(top), viz::EntityId(11, viz::FaceType, 13));
    EXPECT_EQ(top.GetVisualID(), L"face 13");
    EXPECT_EQ(top.GetMechanicalID(), L"Head top");
    EXPECT_EQ(top.GetColor(), viz::RGBAColor(0, 0, 255, 255));
    EXPECT_THAT(top.GetVertices(), ElementsAre(0, 0, 5, 1, 0, 5, 1, 1, 5, 0, 1, 5));
    EXPECT_THAT(top.GetNormals(), ElementsAre(0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 0, 1));
    ASSERT_THAT(top.GetPolygons(), SizeIs(1));
    EXPECT_EQ(top.GetPolygons()[0]->GetPolygonType(), viz::IndexedTriangles);
    EXPECT_THAT(top.GetPolygons()[0]->GetIndices(), ElementsAre(0, 1, 2, 0, 2, 3));
    EXPECT_FALSE(_shank.GetFaces()[0]->HasColor());
}

TEST_F(GeometryLoadersTest, AnEdgeKeepsItsLine) {
    ASSERT_THAT(_shank.GetEdges(), SizeIs(1));
    const viz::VizEdge& edge = *_shank.GetEdges()[0];
    EXPECT_EQ(entityIdOf(edge), viz::EntityId(11, viz::EdgeType, 14));
    EXPECT_EQ(edge.GetVisualID(), L"edge 14");
    EXPECT_THAT(edge.GetVertices(), ElementsAre(0, 0, 0, 1, 0, 0));
}

TEST_F(GeometryLoadersTest, ABodyWithoutAColourHasThatOfItsProduct) {
    EXPECT_EQ(_shank.GetColor(), viz::RGBAColor(255, 0, 0, 255));
    EXPECT_EQ(_model->geometry.GetMeshes()[1]->GetColor(), viz::RGBAColor(200, 200, 0, 255));
}

TEST_F(GeometryLoadersTest, HiddenBodiesAreHidden) {
    bool hidden = true;
    EXPECT_TRUE(_shank.GetHidden(hidden));
    EXPECT_FALSE(hidden);
    EXPECT_TRUE(_model->geometry.GetMeshes()[1]->GetHidden(hidden));
    EXPECT_TRUE(hidden);
}

TEST_F(GeometryLoadersTest, ABodyOfEdgesAloneIsAWire) {
    ASSERT_THAT(_model->geometry.GetWires(), SizeIs(1));
    const viz::VizWire& seam = *_model->geometry.GetWires()[0];
    EXPECT_EQ(entityIdOf(seam), viz::EntityId(30, viz::BodyType, 34));
    EXPECT_THAT(seam.GetEdges(), SizeIs(1));
}

TEST_F(GeometryLoadersTest, LoosePointsStandBesideTheMeshOfTheirBody) {
    ASSERT_THAT(_model->geometry.GetPointSets(), SizeIs(1));
    const viz::VizPointSet& points = *_model->geometry.GetPointSets()[0];
    EXPECT_EQ(entityIdOf(points), viz::EntityId(40, viz::BodyType, 41));
    EXPECT_THAT(points.GetPointSets()[0]->GetVertices(), ElementsAre(0, 0, 0, 1, 1, 1));
    EXPECT_EQ(_model->elements.at({40, viz::BodyType, 41}), _model->geometry.GetMeshes()[1]);
}

TEST(LoadTest, ABodyOfPointsAloneHasNoMesh) {
    Document document;
    document.products = {support::product(2, "Cloud")};
    Body cloud;
    cloud.id = 3;
    cloud.kind = BodyKind::Points;
    cloud.points = {1, 2, 3};
    document.products[0].bodies = {cloud};
    const auto model = load(document);
    EXPECT_THAT(model->geometry.GetMeshes(), SizeIs(0));
    EXPECT_THAT(model->geometry.GetPointSets(), SizeIs(1));
    EXPECT_EQ(model->elements.count({2, viz::BodyType, 3}), 1U);
}

TEST_F(GeometryLoadersTest, TheMapNamesEveryBodyFaceAndEdge) {
    EXPECT_THAT(_model->elements, SizeIs(3 + 3 + 2));
    for (const auto& [entity, element] : _model->elements) {
        EXPECT_EQ(entityIdOf(*element), entity);
    }
}

TEST_F(GeometryLoadersTest, VisualIdsAreUniqueAndTheSameEachTime) {
    Document again = support::machine();
    const auto model = load(again);
    std::set<std::wstring> visualIds;
    for (const auto& [entity, element] : _model->elements) {
        EXPECT_TRUE(visualIds.insert(element->GetVisualID()).second);
        EXPECT_EQ(model->elements.at(entity)->GetVisualID(), element->GetVisualID());
    }
}

TEST_F(GeometryLoadersTest, PointsLeaveTheDocumentAndStructureStays) {
    const Body& body = _document.products[0].bodies[0];
    ASSERT_THAT(body.faces, SizeIs(2));
    for (const Face& face : body.faces) {
        EXPECT_EQ(face.points.capacity() + face.normals.capacity() + face.triangles.capacity(), 0U);
    }
    EXPECT_EQ(body.edges[0].points.capacity(), 0U);
    EXPECT_EQ(body.faces[1].name, "Head top");
    EXPECT_EQ(_document.products[3].bodies[0].points.capacity(), 0U);
}

}  // namespace
}  // namespace kesview
