/// @file
/// A small host, the same for every way of taking the library: it derives from two of its classes,
/// builds a scene with them, and lets an exception of the library through.

#include <KesVizCore/KesVizCore.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <stdexcept>

namespace {

/// A vertex, its box and whether it is shown.
class Vertex : public KesVizCore::AGeometryItemVertex {
public:
    Vertex(std::uint64_t id, float* position) : AGeometryItemVertex(id, position) {
        std::copy_n(position, 3, _position);
    }

    bool GetExtents(float* extrema) const override {
        std::copy_n(_position, 3, extrema);
        std::copy_n(_position, 3, extrema + 3);
        return true;
    }
    void SetVisible(const bool& visible) override { _visible = visible; }
    bool IsVisible() const override { return _visible; }

private:
    float _position[3] = {};
    bool _visible = true;
};

/// Prints what it is told.
class Listener : public KesVizCore::IRenderingOptionsListener {
public:
    void OnOptionsChange(KesVizCore::RenderingOptions* changed) override {
        std::printf("told: edges %s\n", changed->GetDisplayEdges() ? "shown" : "hidden");
    }
};

void buildScene() {
    const std::unique_ptr<KesVizCore::Node> root(KesVizCore::Node::CreateRoot());
    KesVizCore::Node* body = root->CreateChild(7);
    body->SetName(L"Bracket");
    body->SetAttribute(new KesVizCore::AttributeColor(KesVizCore::RGBAColor::Red(), false));
    KesVizCore::GeoNode* corner = body->CreateGeoChild(3);
    float position[3] = {1.0F, 2.0F, 3.0F};
    corner->AddGeometry(new Vertex(4, position));

    KesVizCore::RenderId* id = corner->GetRenderId();
    std::printf("corner: %s\n", id->ToString().c_str());
    KesVizCore::RenderId::DeleteRenderId(id);
    std::printf("body: %s\n", body->ToString().c_str());
    std::printf("item: %s\n", corner->Geometry().front()->ToString().c_str());
}

void changeOptions() {
    Listener listener;
    KesVizCore::RenderingOptions options;
    options.AddListener(&listener);
    options.SetDisplayEdges(false);
    options.RemoveListener(&listener);
}

void failToNormalize() {
    float nothing[3] = {};
    try {
        KesVizCore::Normalize(nothing);
    } catch (const std::invalid_argument& error) {
        std::printf("caught: %s\n", error.what());
    }
}

}  // namespace

int main() {
    buildScene();
    changeOptions();
    failToNormalize();
}
