#include "building/ModelRenderer.h"
#include "support/DocumentKit.h"
#include "support/SceneKit.h"
#include "view/Items.h"

#include <KesVizCore/graph/AttributeColor.h>
#include <KesVizCore/graph/AttributeTransform.h>
#include <KesVizCore/graph/AttributeVisibility.h>
#include <KesVizCore/model/VizFace.h>
#include <KesVizCore/model/VizMesh.h>

#include <gmock/gmock.h>

#include <map>
#include <optional>
#include <utility>

namespace kesview {
namespace {

using testing::SizeIs;

class ModelRendererTest : public testing::Test {
protected:
    ModelRendererTest() { _kit.modelRenderer->SetReportMode(true); }

    std::optional<std::pair<viz::RGBAColor, bool>> colorAt(const std::string& path) {
        auto* const color = dynamic_cast<viz::AttributeColor*>(
            _kit.NodeAt(path)->GetAttribute(viz::AttributeType::Color));
        if (color == nullptr) {
            return std::nullopt;
        }
        return std::make_pair(color->GetColor(), color->HasPriority());
    }
    std::string renderIdOf(const viz::EntityId& entity) {
        viz::RenderId id;
        return _renderer.GetRenderId(entity, id) ? renderIdText(id) : "none";
    }
    std::string entityAt(const std::string& path) {
        viz::EntityId entity;
        const bool known = _renderer.GetEntityId(*parseRenderId(path), entity);
        return known ? entity.ToString() : "none";
    }
    std::wstring toolTipAt(const std::string& path) {
        return _renderer.GetToolTip(*parseRenderId(path));
    }

    support::SceneKit _kit{support::machine()};
    ModelRenderer& _renderer = *_kit.modelRenderer;
};

TEST_F(ModelRendererTest, APartAndASubAssemblyUsedTwiceAreDescribedOnce) {
    ASSERT_TRUE(_renderer.Render());
    const std::string bolt =
        "        Node [11] 'Shank', parents: 2 , children: 2 , Attr: Co\n"
        "          Node [10001] 'Edges', parents: 1 , children: 1 \n"
        "            Node [14] '', parents: 1    geometry objects: 1  \n"
        "          Node [10002] 'Faces', parents: 1 , children: 2 \n"
        "            Node [12] '', parents: 1    geometry objects: 1  \n"
        "            Node [13] 'Head top', parents: 1    geometry objects: 1  , Attr: Co\n";
    const std::string pair = "      Node [21] 'Bolt', parents: 2 , children: 1 \n" + bolt +
                             "      Node [22] 'Bolt:2', parents: 2 , children: 1 , Attr: Tx Co\n" +
                             bolt;
    EXPECT_EQ(_kit.Structure(),
              "Node [1] 'machine.stp', parents: 0 , children: 1 \n"
              "  Node [50] 'Machine', parents: 1 , children: 4 \n"
              "    Node [30] 'Machine', parents: 1 , children: 1 \n"
              "      Node [34] 'Seam', parents: 1 , children: 1 \n"
              "        Node [10006] 'Edges', parents: 1 , children: 1 \n"
              "          Node [35] '', parents: 1    geometry objects: 1  \n"
              "    Node [31] 'Pair', parents: 1 , children: 2 \n" +
                  pair + "    Node [32] 'Pair:2', parents: 1 , children: 2 , Attr: Tx\n" + pair +
                  "    Node [33] 'Plate', parents: 1 , children: 1 \n"
                  "      Node [41] 'Body', parents: 1 , children: 2 , Attr: Co Vi Tx\n"
                  "        Node [10002] 'Faces', parents: 1 , children: 1 \n"
                  "          Node [42] '', parents: 1    geometry objects: 1  \n"
                  "        Node [10009] 'Points', parents: 1    geometry objects: 1  \n");
}

TEST_F(ModelRendererTest, EveryNodeOfTheIndexStandsInTheScene) {
    ASSERT_TRUE(_renderer.Render());
    forEachNode(_kit.document, [&](const SceneNode& node) {
        EXPECT_NE(_kit.adapter.GetNode(node.renderId), nullptr) << node.path;
        return NextStep::Into;
    });
}

TEST_F(ModelRendererTest, CountsAreThoseOfTheDescription) {
    ASSERT_TRUE(_renderer.Render());
    const viz::RendererReport& report = _renderer.GetReport();
    EXPECT_EQ(report.Bodies, 3U);
    EXPECT_EQ(report.Faces, 3U);
    EXPECT_EQ(report.Edges, 2U);
    EXPECT_EQ(report.Vertices, 2U);
    EXPECT_EQ(report.Triangles, 6U);
    EXPECT_EQ(report.Annotations, 0U);
}

TEST_F(ModelRendererTest, WithoutReportModeNothingIsCounted) {
    _renderer.SetReportMode(false);
    ASSERT_TRUE(_renderer.Render());
    EXPECT_EQ(_renderer.GetReport().Faces, 0U);
}

TEST_F(ModelRendererTest, ColoursOfFacesAndInstancesHavePriority) {
    ASSERT_TRUE(_renderer.Render());
    EXPECT_EQ(colorAt("1/50/31/21/11/10002/13"),
              std::make_pair(viz::RGBAColor(0, 0, 255, 255), true));
    EXPECT_EQ(colorAt("1/50/31/22"), std::make_pair(viz::RGBAColor(0, 255, 0, 255), true));
    EXPECT_EQ(colorAt("1/50/31/21/11"), std::make_pair(viz::RGBAColor(255, 0, 0, 255), false));
    EXPECT_EQ(colorAt("1/50/33/41"), std::make_pair(viz::RGBAColor(200, 200, 0, 255), false));
    EXPECT_EQ(colorAt("1/50/31/21/11/10002/12"), std::nullopt);
    EXPECT_EQ(colorAt("1/50/31/21"), std::nullopt);
}

TEST_F(ModelRendererTest, TheNearestPriorityColourIsShown) {
    ASSERT_TRUE(_renderer.Render());
    std::map<std::string, Color> shown;
    auto walk = _kit.adapter.Walk();
    while (walk.Next()) {
        shown[renderIdText(walk.Path())] = walk.GetColor();
    }
    EXPECT_EQ(shown.at("1/50/31/21/11/10002/12"), (Color{255, 0, 0, 255}));  // the body's
    EXPECT_EQ(shown.at("1/50/31/22/11/10002/12"), (Color{0, 255, 0, 255}));  // the instance's
    EXPECT_EQ(shown.at("1/50/32/22/11/10002/12"), (Color{0, 255, 0, 255}));
    EXPECT_EQ(shown.at("1/50/31/22/11/10002/13"), (Color{0, 0, 255, 255}));  // the face's
}

TEST(ModelRendererColorTest, AnAssemblysColourStandsOnItsInstances) {
    Document document = support::machine();
    document.products[1].color = Color{9, 8, 7, 255};
    document.products[0].bodies[0].color.reset();
    support::SceneKit kit(std::move(document));
    ASSERT_TRUE(kit.modelRenderer->Render());
    auto* const color = dynamic_cast<viz::AttributeColor*>(
        kit.NodeAt("1/50/32")->GetAttribute(viz::AttributeType::Color));
    ASSERT_NE(color, nullptr);
    EXPECT_EQ(color->GetColor(), viz::RGBAColor(9, 8, 7, 255));
    EXPECT_FALSE(color->HasPriority());
}

TEST_F(ModelRendererTest, InstancesAndFarBodiesAreMoved) {
    ASSERT_TRUE(_renderer.Render());
    const auto matrixAt = [&](const std::string& path) {
        return dynamic_cast<viz::AttributeTransform*>(
                   _kit.NodeAt(path)->GetAttribute(viz::AttributeType::Transform))
            ->GetTransform();
    };
    EXPECT_EQ(matrixAt("1/50/32")[13], 20.0);
    EXPECT_EQ(matrixAt("1/50/31/22")[12], 10.0);
    EXPECT_EQ(matrixAt("1/50/33/41")[12], 1e6);
    EXPECT_EQ(_kit.NodeAt("1/50/31")->GetAttribute(viz::AttributeType::Transform), nullptr);
}

TEST_F(ModelRendererTest, HiddenBodiesAndInstancesAreInvisible) {
    ASSERT_TRUE(_renderer.Render());
    EXPECT_FALSE(_kit.adapter.IsVisible(*parseRenderId("1/50/33/41")));
    EXPECT_TRUE(_kit.adapter.IsVisible(*parseRenderId("1/50/31")));
}

TEST_F(ModelRendererTest, ItemsUseTheArraysOfTheModel) {
    ASSERT_TRUE(_renderer.Render());
    const viz::VizFace& face = *_kit.model->geometry.GetMeshes()[0]->GetFaces()[0];
    const viz::GeoNode* const node = _kit.NodeAt("1/50/31/21/11/10002/12");
    ASSERT_THAT(node->Geometry(), SizeIs(1));
    const Shape shape = shapeOf(*node->Geometry()[0]);
    EXPECT_EQ(shape.points, face.GetVertices().data());
    EXPECT_EQ(shape.normals, face.GetNormals().data());
    EXPECT_EQ(shape.TriangleCount(), 2);
}

TEST_F(ModelRendererTest, EntitiesAnswerThePathOfTheirFirstUse) {
    EXPECT_EQ(renderIdOf({11, viz::FaceType, 12}), "none");
    ASSERT_TRUE(_renderer.Render());
    EXPECT_EQ(renderIdOf({11, viz::FaceType, 12}), "1/50/31/21/11/10002/12");
    EXPECT_EQ(renderIdOf({11, viz::EdgeType, 14}), "1/50/31/21/11/10001/14");
    EXPECT_EQ(renderIdOf({30, viz::BodyType, 34}), "1/50/30/34");
    EXPECT_EQ(renderIdOf({20, viz::PartType, 22}), "1/50/31/22");
    EXPECT_EQ(renderIdOf({0, viz::AssemblyType, 20}), "1/50/31");
    EXPECT_EQ(renderIdOf({11, viz::EdgeType, 12}), "none");  // 12 is a face
    EXPECT_EQ(renderIdOf({11, viz::FaceType, 99}), "none");
}

TEST_F(ModelRendererTest, PathsThroughEveryUseNameTheirEntity) {
    ASSERT_TRUE(_renderer.Render());
    const std::string face = viz::EntityId(11, viz::FaceType, 12).ToString();
    EXPECT_EQ(entityAt("1/50/31/21/11/10002/12"), face);
    EXPECT_EQ(entityAt("1/50/31/22/11/10002/12"), face);
    EXPECT_EQ(entityAt("1/50/32/22/11/10002/12"), face);
    EXPECT_EQ(entityAt("1/50/32/22/11"), viz::EntityId(10, viz::BodyType, 11).ToString());
    EXPECT_EQ(entityAt("1/50/33/41/10009"), viz::EntityId(40, viz::BodyType, 41).ToString());
    EXPECT_EQ(entityAt("1/50/32/22"), viz::EntityId(10, viz::PartType, 22).ToString());
    EXPECT_EQ(entityAt("1"), "none");
    EXPECT_EQ(entityAt("1/50/99"), "none");
}

TEST_F(ModelRendererTest, ToolTipsAreNamesOnTheWay) {
    ASSERT_TRUE(_renderer.Render());
    EXPECT_EQ(toolTipAt("1/50/32/22/11/10002/13"),
              L"Machine / Pair:2 / Bolt:2 / Shank / face 13 'Head top'");
    EXPECT_EQ(toolTipAt("1/50/31/21/11/10001/14"), L"Machine / Pair / Bolt / Shank / edge 14");
    EXPECT_EQ(toolTipAt("1/50/33"), L"Machine / Plate");
    EXPECT_EQ(toolTipAt("1/99"), L"");
}

TEST_F(ModelRendererTest, RenderingTwiceIsRefused) {
    ASSERT_TRUE(_renderer.IsEmpty());
    ASSERT_TRUE(_renderer.Render());
    EXPECT_FALSE(_renderer.IsEmpty());
    const std::string structure = _kit.Structure();
    EXPECT_FALSE(_renderer.Render());
    EXPECT_EQ(_kit.Structure(), structure);
}

TEST_F(ModelRendererTest, UpdateDescribesTheSameAgain) {
    ASSERT_TRUE(_renderer.Render());
    const std::string structure = _kit.Structure();
    ASSERT_TRUE(_renderer.Update());
    EXPECT_EQ(_kit.Structure(), structure);
    EXPECT_EQ(_renderer.GetReport().Faces, 3U);
}

TEST_F(ModelRendererTest, ClearTakesAllAway) {
    ASSERT_TRUE(_renderer.Render());
    _renderer.Clear();
    EXPECT_TRUE(_renderer.IsEmpty());
    EXPECT_EQ(_kit.NodeAt("1/50"), nullptr);
    EXPECT_EQ(renderIdOf({11, viz::FaceType, 12}), "none");
    EXPECT_EQ(renderIdOf({20, viz::PartType, 22}), "none");
}

TEST_F(ModelRendererTest, ShowHideAndHighlightGoToTheAdapter) {
    ASSERT_TRUE(_renderer.Render());
    viz::RenderId pair = *parseRenderId("1/50/31");
    EXPECT_TRUE(_renderer.Hide(pair));
    EXPECT_FALSE(_kit.adapter.IsVisible(pair));
    EXPECT_TRUE(_renderer.Show(pair));
    EXPECT_TRUE(_kit.adapter.IsVisible(pair));
    EXPECT_TRUE(_renderer.Activate(pair));
    EXPECT_TRUE(_kit.adapter.IsHighlighted(pair));
    EXPECT_TRUE(_renderer.Deactivate(pair));
    EXPECT_FALSE(_kit.adapter.IsHighlighted(pair));
}

int bodiesTold = 0;

TEST_F(ModelRendererTest, ProgressIsToldForEachBody) {
    bodiesTold = 0;
    _renderer.SetProgressCallback([](const int& done, const int& total, const char* text) {
        ++bodiesTold;
        EXPECT_EQ(done, bodiesTold);
        EXPECT_EQ(total, 3);
        EXPECT_NE(std::string(text), "");
    });
    ASSERT_TRUE(_renderer.Render());
    EXPECT_EQ(bodiesTold, 3);
}

TEST(ModelRendererSizeTest, ThousandsOfInstancesCostOneDescription) {
    Document document;
    document.products = {support::boltProduct(10)};
    for (Id id = 100; id < 5100; ++id) {
        document.roots.push_back(support::component(id, "Bolt", 0));
    }
    support::SceneKit kit(std::move(document));
    kit.modelRenderer->SetReportMode(true);
    ASSERT_TRUE(kit.modelRenderer->Render());
    EXPECT_EQ(kit.modelRenderer->GetReport().Faces, 2U);
    EXPECT_EQ(kit.NodeAt("1/5099/11"), kit.NodeAt("1/100/11"));
    EXPECT_THAT(kit.NodeAt("1/100/11")->Parents(), SizeIs(5000));
}

TEST(ModelRendererEmptyTest, ADocumentOfNothingIsDescribed) {
    support::SceneKit kit{Document()};
    EXPECT_TRUE(kit.modelRenderer->Render());
    EXPECT_TRUE(kit.modelRenderer->IsEmpty());
}

TEST(ModelRendererEmptyTest, FacesWithoutPointsAreNodesWithoutItems) {
    Document document;
    document.products = {support::boltProduct(10)};
    document.products[0].bodies[0].faces[0] = Face();
    document.products[0].bodies[0].faces[0].id = 12;
    document.products[0].bodies[0].edges[0].points.clear();
    document.roots = {support::component(100, "Bolt", 0)};
    support::SceneKit kit(std::move(document));
    ASSERT_TRUE(kit.modelRenderer->Render());
    EXPECT_THAT(kit.NodeAt("1/100/11/10002/12")->Geometry(), SizeIs(0));
    EXPECT_THAT(kit.NodeAt("1/100/11/10001/14")->Geometry(), SizeIs(0));
}

TEST(ModelRendererEmptyTest, WithoutABuilderNothingIsDescribed) {
    Document document = support::machine();
    const auto model = load(document);
    ModelRenderer renderer(nullptr, document, *model, "machine.stp");
    EXPECT_FALSE(renderer.Render());
    EXPECT_TRUE(renderer.IsEmpty());
    renderer.Clear();
    viz::RenderId id;
    EXPECT_FALSE(renderer.Hide(id));
    EXPECT_FALSE(renderer.Activate(id));
}

}  // namespace
}  // namespace kesview
