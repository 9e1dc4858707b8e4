#include "Snippets.h"

#include <cstdio>
#include <string>

namespace snippets {

void describePlate(viz::SceneBuilder* builder) {
    float points[12] = {0, 0, 6, 60, 0, 6, 60, 40, 6, 0, 40, 6};
    int corners[6] = {0, 1, 2, 0, 2, 3};
    viz::AGeometryItemFactory& items = *builder->GetView3DAdapter()->GetGeometryItemFactory();

    const viz::ConstructionContext construction(builder);
    const viz::SceneContext scene(builder, viz::Node::GetRootNodeId(), L"One plate");
    const viz::ContainerContext part(builder, 10, L"Part", viz::SceneBuilder::AddressedContainer);
    const viz::BodyContext body(builder, 100, L"Plate");
    builder->SetColor(viz::RGBAColor(70, 130, 180, 255), false);  // of the open node, the body
    const viz::EntityTypeContext faces(builder, viz::FaceType, L"Faces");
    const viz::EntityContext top(builder, 11, L"Top", false, viz::RGBAColor());
    builder->AddGeometry(
        items.CreateTriangleSet(11, points, nullptr, corners, 4, 0, 6, viz::IndexedTriangles));
}  // the guards end their levels, the innermost first

namespace {

void printStructure(viz::AView3DAdapter& adapter) {
    std::string structure;
    adapter.GetSceneStructure(structure, false);
    std::printf("%s", structure.c_str());
}

void addAnotherBody(viz::SceneBuilder* builder) {
    builder->ConstructionBegin();
    builder->SceneBegin(viz::Node::GetRootNodeId(), L"One plate");
    builder->ContainerBegin(10, L"Part", viz::SceneBuilder::AddressedContainer);  // there already
    builder->BodyBegin(200, L"Bolt");
    builder->ConstructionEnd();  // closes body and container as well
}

}  // namespace

void sceneProtocol() {
    std::printf("--- scene-protocol\n");
    Stage stage;
    describePlate(stage.builder);
    printStructure(*stage.adapter);
    addAnotherBody(stage.builder);
    printStructure(*stage.adapter);
    std::printf("open: %s, content: %s\n",
                stage.adapter->GetCurrentOpenNode() == nullptr ? "nothing" : "something",
                stage.builder->HasContent() ? "yes" : "no");
}

}  // namespace snippets
