#include "Snippets.h"

#include <cstdio>
#include <memory>

namespace snippets {

namespace {

void shareABolt() {
    viz::Node* const root = viz::Node::CreateRoot();
    viz::Node* const left = root->CreateChild(2);
    viz::Node* const right = root->CreateChild(3);
    viz::Node* const bolt = left->CreateChild(7);
    right->AddChild(bolt);  // two parents own it now

    left->DeleteChildById(7);  // takes one link away: the bolt lives on below the other
    std::printf("%s\n", bolt->ToString().c_str());
    delete root;  // a tree again, it takes all below with it
}

void takeOffAColor(viz::GeoNode& node) {
    node.SetAttribute(new viz::AttributeColor(viz::RGBAColor::Red(), false));  // the node's now
    const std::unique_ptr<viz::Attribute> color(node.GetAttribute(viz::AttributeType::Color));
    node.DeleteAttribute(viz::AttributeType::Color);  // only takes it off: now it is ours
}

void askForAPath(const viz::GeoNode& node) {
    viz::RenderId* path = node.GetRenderId();  // on the library's heap, ours to release
    std::printf("%s\n", path->ToString().c_str());
    viz::RenderId::DeleteRenderId(path);  // and path is null
}

}  // namespace

void ownership() {
    std::printf("--- ownership\n");
    shareABolt();
    const std::unique_ptr<viz::Node> root(viz::Node::CreateRoot());
    takeOffAColor(*root);
    askForAPath(*root);
}

}  // namespace snippets
