#include "building/PmiRenderer.h"
#include "support/DocumentKit.h"
#include "support/SceneKit.h"
#include "view/Items.h"

#include <KesVizCore/graph/AttributeTransform.h>
#include <KesVizCore/model/VizView.h>
#include <KesVizCore/pmi/VizPMI.h>

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace kesview {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

Document annotatedMachine() {
    Document document = support::machine();
    support::addAnnotations(document);
    return document;
}

/// The container is 63, one behind the highest id, which is that of the last annotation.
class PmiRendererTest : public testing::Test {
protected:
    PmiRendererTest() { _renderer.SetReportMode(true); }

    std::string renderIdOf(const viz::EntityId& entity) {
        viz::RenderId id;
        return _renderer.GetRenderId(entity, id) ? renderIdText(id) : "none";
    }

    support::SceneKit _kit{annotatedMachine()};
    PmiRenderer& _renderer = *_kit.pmiRenderer;
};

TEST_F(PmiRendererTest, AnnotationsStandByTypeInAContainerOfTheirOwn) {
    ASSERT_TRUE(_renderer.Render());
    EXPECT_EQ(_kit.Structure(),
              "Node [1] 'ROOT', parents: 0 , children: 1 \n"
              "  Node [63] 'PMI', parents: 1 , children: 3 \n"
              "    Node [10100] 'Dimensions', parents: 1 , children: 1 \n"
              "      Node [60] 'Length', parents: 1    geometry objects: 2  , Attr: Co\n"
              "    Node [10101] 'Tolerances', parents: 1 , children: 1 \n"
              "      Node [62] 'Bore', parents: 1 , children: 1 , Attr: Vi\n"
              "        Node [2] 'Text', parents: 1    geometry objects: 1  , Attr: Tx\n"
              "    Node [10102] 'Datums', parents: 1 , children: 1 \n"
              "      Node [61] 'A', parents: 1 , children: 1 \n"
              "        Node [2] 'Text', parents: 1    geometry objects: 1  , Attr: Tx\n");
}

TEST_F(PmiRendererTest, ModelAndAnnotationsShareTheScene) {
    ASSERT_TRUE(_kit.modelRenderer->Render());
    ASSERT_TRUE(_renderer.Render());
    forEachNode(_kit.document, [&](const SceneNode& node) {
        EXPECT_NE(_kit.adapter.GetNode(node.renderId), nullptr) << node.path;
        return NextStep::Into;
    });
}

TEST_F(PmiRendererTest, LinesArePolylinesAndAreasTriangles) {
    ASSERT_TRUE(_renderer.Render());
    const auto& items = _kit.NodeAt("1/63/10100/60")->Geometry();
    ASSERT_THAT(items, SizeIs(2));
    EXPECT_EQ(shapeOf(*items[0]).form, Shape::Form::Lines);
    EXPECT_EQ(shapeOf(*items[0]).pointCount, 3);
    EXPECT_EQ(shapeOf(*items[1]).form, Shape::Form::Triangles);
    EXPECT_EQ(shapeOf(*items[1]).TriangleCount(), 1);
}

TEST_F(PmiRendererTest, ATextIsLaidIntoItsPlaneByItsNode) {
    ASSERT_TRUE(_renderer.Render());
    viz::GeoNode* const node = _kit.NodeAt("1/63/10102/61/2");
    const double* const matrix =
        dynamic_cast<viz::AttributeTransform*>(node->GetAttribute(viz::AttributeType::Transform))
            ->GetTransform();
    EXPECT_THAT(std::vector<double>(matrix, matrix + 16),
                ElementsAre(0, 1, 0, 0,  // along the writing
                            0, 0, 1, 0,  // up the letters
                            1, 0, 0, 0,  // out of the paper
                            1, 2, 3, 1));
    const auto* const text = dynamic_cast<const TextItem*>(node->Geometry().at(0));
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->Text(), L"A");
    EXPECT_EQ(text->Height(), 2.5F);
    EXPECT_EQ(text->Position(), (Vector{0, 0, 0}));
}

TEST_F(PmiRendererTest, EntitiesAndPathsNameEachOther) {
    EXPECT_EQ(renderIdOf({0, viz::DimensionType, 60}), "none");
    ASSERT_TRUE(_renderer.Render());
    EXPECT_EQ(renderIdOf({0, viz::DimensionType, 60}), "1/63/10100/60");
    EXPECT_EQ(renderIdOf({0, viz::NoteType, 60}), "none");
    EXPECT_EQ(renderIdOf({11, viz::FaceType, 12}), "none");
    viz::EntityId entity;
    for (const char* path : {"1/63/10102/61", "1/63/10102/61/2"}) {
        ASSERT_TRUE(_renderer.GetEntityId(*parseRenderId(path), entity)) << path;
        EXPECT_EQ(entity, viz::EntityId(0, viz::DatumType, 61)) << path;
    }
    for (const char* path : {"1", "1/63", "1/63/10102", "1/63/10100/61", "1/50"}) {
        EXPECT_FALSE(_renderer.GetEntityId(*parseRenderId(path), entity)) << path;
    }
}

TEST_F(PmiRendererTest, ViewsAnswerTheRenderIdsOfTheirMembers) {
    Document document = annotatedMachine();
    document.views = {support::frontView()};
    support::SceneKit kit(std::move(document));
    ASSERT_TRUE(kit.pmiRenderer->Render());
    viz::RenderId* ids = nullptr;
    int count = 0;
    ASSERT_TRUE(kit.model->pmi.GetViews()[0]->GetMemberRenderIds(ids, count, false));
    ASSERT_EQ(count, 1);
    EXPECT_EQ(renderIdText(ids[0]), "1/72/10100/60");
    viz::RenderId::DeleteRenderIdArr(ids);
}

TEST_F(PmiRendererTest, ToolTipsTellTypeNumberAndName) {
    EXPECT_EQ(_renderer.GetToolTip(*parseRenderId("1/63/10100/60")), L"Dimension 60 'Length'");
    EXPECT_EQ(_renderer.GetToolTip(*parseRenderId("1/50")), L"");
}

TEST_F(PmiRendererTest, CountsAnnotationsAndTriangles) {
    ASSERT_TRUE(_renderer.Render());
    EXPECT_EQ(_renderer.GetReport().Annotations, 3U);
    EXPECT_EQ(_renderer.GetReport().Triangles, 1U);
}

TEST_F(PmiRendererTest, HiddenAnnotationsAreInvisible) {
    ASSERT_TRUE(_renderer.Render());
    EXPECT_TRUE(_kit.adapter.IsVisible(*parseRenderId("1/63/10100/60")));
    EXPECT_FALSE(_kit.adapter.IsVisible(*parseRenderId("1/63/10101/62")));
}

TEST_F(PmiRendererTest, ClearLeavesTheModelAlone) {
    ASSERT_TRUE(_kit.modelRenderer->Render());
    const std::string model = _kit.Structure();
    ASSERT_TRUE(_renderer.Render());
    EXPECT_FALSE(_renderer.IsEmpty());
    EXPECT_FALSE(_renderer.Render());
    _renderer.Clear();
    EXPECT_TRUE(_renderer.IsEmpty());
    EXPECT_EQ(renderIdOf({0, viz::DimensionType, 60}), "none");
    EXPECT_FALSE(_kit.modelRenderer->IsEmpty());
    EXPECT_NE(_kit.NodeAt("1/50/31/21/11"), nullptr);
}

TEST_F(PmiRendererTest, UpdateDescribesTheSameAgain) {
    ASSERT_TRUE(_kit.modelRenderer->Render());
    ASSERT_TRUE(_renderer.Render());
    const std::string structure = _kit.Structure();
    ASSERT_TRUE(_renderer.Update());
    EXPECT_EQ(_kit.Structure(), structure);
}

TEST_F(PmiRendererTest, ClearingTheModelClearsTheAnnotations) {
    ASSERT_TRUE(_kit.modelRenderer->Render());
    ASSERT_TRUE(_renderer.Render());
    _kit.modelRenderer->Clear();
    EXPECT_TRUE(_renderer.IsEmpty());
    EXPECT_EQ(renderIdOf({0, viz::DimensionType, 60}), "none");
    EXPECT_TRUE(_renderer.Render());
}

TEST(PmiRendererEmptyTest, WithoutAnnotationsThereIsNoContainer) {
    support::SceneKit kit(support::machine());
    EXPECT_TRUE(kit.pmiRenderer->Render());
    EXPECT_TRUE(kit.pmiRenderer->IsEmpty());
    EXPECT_EQ(kit.Structure(), "Node [1] 'ROOT', parents: 0    geometry objects: 0  \n");
}

}  // namespace
}  // namespace kesview
