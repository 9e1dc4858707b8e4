#include "building/SceneIds.h"

#include <gtest/gtest.h>

namespace kesview {
namespace {

TEST(SceneIdsTest, RenderIdsAreNumbersBetweenSlashes) {
    const viz::RenderId id({1, 12, 44, 18446744073709551615ULL}, viz::View3D);
    EXPECT_EQ(renderIdText(id), "1/12/44/18446744073709551615");
    EXPECT_EQ(parseRenderId("1/12/44/18446744073709551615"), id);
    EXPECT_EQ(parseRenderId("1"), viz::RenderId({1}, viz::View3D));
}

TEST(SceneIdsTest, WhatIsNotNumbersIsNoRenderId) {
    for (const char* text :
         {"", "/", "1/", "/1", "1//2", "1/a", "-1", "1 /2", "0x1", "18446744073709551616"}) {
        EXPECT_FALSE(parseRenderId(text).has_value()) << text;
    }
}

TEST(SceneIdsTest, EntitiesAreAWordAndANumber) {
    EXPECT_EQ(entityText({11, viz::FaceType, 12}), "face:12");
    EXPECT_EQ(entityText({11, viz::EdgeType, 13}), "edge:13");
    EXPECT_EQ(entityText({11, viz::VertexType, 14}), "vertex:14");
    EXPECT_EQ(entityText({10, viz::BodyType, 11}), "body:11");
    EXPECT_EQ(entityText({10, viz::PartType, 21}), "instance:21");
    EXPECT_EQ(entityText({0, viz::AssemblyType, 30}), "product:30");
    EXPECT_EQ(entityText({0, viz::WeldType, 60}), "annotation:60");
    EXPECT_EQ(entityText({0, viz::ViewType, 70}), "view:70");
}

TEST(SceneIdsTest, TheTextsOfSceneNodesAreRead) {
    const auto face = parseEntityText("face:12");
    ASSERT_TRUE(face.has_value());
    EXPECT_EQ(face->kind, EntityName::Kind::Face);
    EXPECT_EQ(face->id, 12U);
    EXPECT_EQ(parseEntityText("product:3")->kind, EntityName::Kind::Product);
    EXPECT_EQ(parseEntityText("annotation:3")->kind, EntityName::Kind::Annotation);
}

TEST(SceneIdsTest, OtherTextsAreNoEntities) {
    for (const char* text :
         {"", "face", "face:", ":12", "face:12x", "view:70", "Face:12", "Bolt:2"}) {
        EXPECT_FALSE(parseEntityText(text).has_value()) << text;
    }
}

}  // namespace
}  // namespace kesview
