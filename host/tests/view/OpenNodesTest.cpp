#include "view/SceneKit.h"

#include <KesVizCore/scene/SceneBuilder.h>
#include <KesVizCore/scene/SceneBuilderFactory.h>
#include <KesVizCore/scene/VizFactories.h>

#include <gtest/gtest.h>

#include <memory>

namespace kesview::testing {
namespace {

TEST(SceneAdapterTest, TheRootOpensWhateverIsOpen) {
    SceneAdapter scene;
    ASSERT_TRUE(scene.OpenNode(1, L""));
    ASSERT_TRUE(scene.CreateNode(5, L"five"));
    ASSERT_TRUE(scene.OpenNode(1, L""));
    EXPECT_EQ(scene.GetCurrentOpenNode()->Id(), 1U);
}

TEST(SceneAdapterTest, CreatesUnderTheOpenNodeAndOpensWhatItCreated) {
    SceneAdapter scene;
    EXPECT_FALSE(scene.CreateNode(5, L"")) << "nothing is open";
    scene.OpenTopNode();
    EXPECT_TRUE(scene.CreateNode(5, L"five"));
    EXPECT_EQ(scene.GetCurrentOpenNode()->Name(), L"five");
    EXPECT_FALSE(scene.CreateNode(1, L"")) << "the root's id";
    EXPECT_TRUE(scene.CreateGeoNode(6, L"leaf"));
    EXPECT_FALSE(scene.CreateNode(7, L"")) << "a leaf is open";
    scene.CloseNode();
    EXPECT_FALSE(scene.CreateNode(6, L"")) << "the id is taken";
    scene.CloseTopNode();
    EXPECT_EQ(scene.GetCurrentOpenNode(), nullptr);
    EXPECT_NE(scene.GetNode(path({1, 5, 6})), nullptr);
}

TEST(SceneAdapterTest, DestroysWhatItIsHandedWithNothingOpen) {
    SceneAdapter scene;  // the leak sanitizer watches
    scene.ApplyAttribute(new viz::AttributeVisibility(true));
    float points[6] = {0, 0, 0, 1, 0, 0};
    scene.AddGeometryItem(scene.GetGeometryItemFactory()->CreatePolyline(1, points, 2));
    scene.ApplyAttribute(nullptr);
    scene.AddGeometryItem(nullptr);
    EXPECT_FALSE(scene.IsVisible(path({1})));
}

TEST(SceneAdapterTest, AttributesGoToTheOpenNodeAndComeOffIt) {
    SceneAdapter scene;
    scene.OpenTopNode();
    scene.CreateNode(5, L"");
    scene.ApplyAttribute(new viz::AttributeVisibility(false));
    viz::GeoNode* const node = scene.GetNode(path({1, 5}));
    EXPECT_NE(node->GetAttribute(viz::AttributeType::Visibility), nullptr);
    scene.RemoveAttribute(viz::AttributeType::Visibility);
    EXPECT_EQ(node->GetAttribute(viz::AttributeType::Visibility), nullptr);
}

TEST(SceneAdapterTest, AnUpdateTellsTheViewOnceAtItsEnd) {
    SceneKit kit;
    kit.Body(kit.Root(), 5);
    int drawings = 0;
    SceneView view([&](const Picture&) { return ++drawings, Image{1, 1, {0, 0, 0}}; }, {});
    kit.scene.SetView3D(&view);
    view.GetImage();
    kit.scene.BeginUpdate();
    kit.scene.BeginUpdate();
    kit.scene.Hide(path({1, 5}));
    kit.scene.EndUpdate();
    view.GetImage();
    EXPECT_EQ(drawings, 1) << "an update is still going on";
    kit.scene.EndUpdate();
    view.GetImage();
    EXPECT_EQ(drawings, 2);
    kit.scene.EndUpdate();  // one too many does no harm
    kit.scene.Show(path({1, 5}));
    view.GetImage();
    EXPECT_EQ(drawings, 3);
}

TEST(SceneAdapterTest, BuildersOfTheLibraryDescribeScenesThroughIt) {
    viz::VizFactories& factories = viz::VizFactories::Instance();
    factories.SetView3DAdapterFactory(new SceneAdapterFactory());
    factories.SetSceneBuilderFactory(new viz::SceneBuilderFactory());
    const std::unique_ptr<viz::AView3DAdapter> adapter(factories.CreateView3DAdapter());
    SceneView view;
    adapter->SetView3D(&view);
    viz::SceneBuilder* builder = factories.CreateSceneBuilder(adapter.get());
    float points[9] = {0, 0, 0, 1, 0, 0, 0, 1, 0};
    builder->ConstructionBegin();
    EXPECT_TRUE(adapter->IsConstructing());
    builder->SceneBegin(1, L"scene");
    builder->ContainerBegin(3, L"part", viz::SceneBuilder::AddressedContainer);
    builder->BodyBegin(5, L"body", viz::RGBAColor(10, 20, 30, 255));
    builder->EntityTypeBegin(viz::FaceType, L"Faces");
    builder->EntityBegin(100, L"face");
    builder->AddGeometry(adapter->GetGeometryItemFactory()->CreateTriangleSet(
        100, points, nullptr, nullptr, 3, 0, 0, viz::TriangleList));
    viz::RenderId composed;
    builder->BuildRenderId(composed, viz::EntityId(5, viz::FaceType, 100), {}, {});
    builder->SceneEnd();
    builder->ConstructionEnd();
    EXPECT_FALSE(adapter->IsConstructing());

    ShownWalk walk = static_cast<SceneAdapter&>(*adapter).Walk();
    ASSERT_TRUE(walk.Next());
    EXPECT_EQ(walk.Path(), composed);
    EXPECT_EQ(walk.Type(), viz::FaceType);
    EXPECT_EQ(walk.GetColor(), (Color{10, 20, 30, 255}));
    factories.DeleteSceneBuilder(builder);
    factories.Terminate();
}

}  // namespace
}  // namespace kesview::testing
