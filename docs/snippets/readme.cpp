#include <KesVizCore/KesVizCore.h>

#include <cstdio>

int main() {
    KesVizCore::Node* root = KesVizCore::Node::CreateRoot();
    KesVizCore::Node* body = root->CreateChild(7);
    body->SetName(L"Bracket");
    body->SetAttribute(new KesVizCore::AttributeColor(KesVizCore::RGBAColor::Red(), false));
    KesVizCore::RenderId* face = body->CreateGeoChild(3)->GetRenderId();
    std::printf("face: %s\n", face->ToString().c_str());  // face: [ 1, 7, 3 View3D ]
    KesVizCore::RenderId::DeleteRenderId(face);
    std::printf("node: %s\n", body->ToString().c_str());
    delete root;  // and all below it
}
