// One round of a host's life, in a module that is loaded for it: build, pick, edit, clear, and
// destroy everything. LongLife.cpp has the rounds.

#include "session/SessionHost.h"

#include <KesVizCore/KesVizCore.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

using namespace KesVizCore;

namespace {

using support::SessionAdapter;

constexpr std::uint64_t kBodies = 20;
constexpr std::uint64_t kFaces = 10;

class Factory : public AView3DAdapterFactory {
protected:
    AView3DAdapter* makeView3DAdapterImpl() override { return new SessionAdapter(); }
};

class FaceLoader : public AVizFaceLoader {
public:
    explicit FaceLoader(std::uint64_t id) : _id(id) {}
    VizElement* createAndFill() override {
        auto* const face = static_cast<VizFace*>(makeOne());
        const float triangle[9] = {0, 0, 0, 1, 0, 0, 0, 1, 0};
        face->SetVertices(3, triangle);
        face->SetVisualID(L"a face with a visual id of some length " + std::to_wstring(_id));
        face->SetEntityID(EntityId(1, FaceType, _id));
        return face;
    }

private:
    std::uint64_t _id;
};

class MeshLoader : public AVizMeshLoader {
public:
    VizElement* createAndFill() override {
        auto* const mesh = static_cast<VizMesh*>(makeOne());
        for (std::uint64_t id = 0; id < kFaces; ++id) {
            mesh->AddFace(static_cast<VizFace*>(FaceLoader(id).Load()));
        }
        mesh->SetEntityID(EntityId(1, BodyType, 7));
        mesh->Set3DRenderID(RenderId({1, 2, 3, 7}, View3D));
        return mesh;
    }
};

void build(SceneBuilder* builder, std::uint64_t round) {
    const ConstructionContext construction(builder);
    const SceneContext scene(builder, 2, L"scene");
    const ContainerContext container(builder, 3, L"part", SceneBuilder::AddressedContainer);
    for (std::uint64_t body = 10; body < 10 + kBodies; ++body) {
        const BodyContext level(builder, body, L"body of round " + std::to_wstring(round));
        builder->SetColor(RGBAColor::Red(), false);
        for (std::uint64_t face = 0; face < kFaces; ++face) {
            const EntityContext entity(builder, 100 + face, L"face", true, RGBAColor::Blue());
            builder->AddGeometry(support::newItem(face));
            builder->SetLineStyle("dashed with a pattern of some length", 1.0F);
        }
    }
}

bool pick(SessionAdapter& adapter, SceneBuilder* builder) {
    VizContainer model(1);
    model.AddMesh(static_cast<VizMesh*>(MeshLoader().Load()));
    adapter.picked = RenderId({1, 2, 3, 7, 104}, View3D);
    VizElement* hit = nullptr;
    const bool isHit = model.PickVisual(&adapter, Ray(), hit);
    adapter.GetSelectionHolder()->Add(adapter.picked);
    RenderId composed;
    builder->BuildRenderId(composed, EntityId(7, FaceType, 104), RGBAColor(), RGBAColor());
    return isHit && composed.Length() == 5 && Utils::Char2Wchar("shared")[0] == L's';
}

bool edit(SessionAdapter& adapter, SceneBuilder* builder) {
    builder->Delete(RenderId({1, 2, 3, 14}, View3D));
    adapter.OpenNodes(RenderId({1, 2, 3, 15}, View3D));
    builder->MoveGeometryFrom(RenderId({1, 2, 3, 16, 101}, View3D));
    builder->AddReference(RenderId({1, 2, 3, 16, 102}, View3D));  // its id is taken here
    adapter.CloseAllNodes();
    builder->Clear(RenderId({1, 2, 3, 18}, View3D));
    std::string dump;
    adapter.GetSceneStructure(dump, false);
    const bool isWhole = dump.size() > 1000;
    builder->Clear(RenderId({2}, View3D));
    dump.clear();
    adapter.GetSceneStructure(dump, false);
    return isWhole && dump.find("children") == std::string::npos;
}

bool annotate() {
    VizPMIContainer container(1);
    for (const wchar_t* id : {L"a", L"b", L"c"}) {
        auto record = std::make_unique<SemanticPMI>();
        record->Id = id;
        record->Attributes[L"Value"] = L"a value of some length, to be kept on the heap";
        container.AddSemanticPMI(record.release());
    }
    container.SetMatrix(static_cast<const double*>(nullptr), 0);
    return container.DeletePMI(L"b") && container.GetSemanticPMIs().size() == 2;
}

}  // namespace

/// 1 where everything went as it should.
extern "C" __attribute__((visibility("default"))) int liveOneRound(std::uint64_t round) {
    VizFactories& factories = VizFactories::Instance();
    factories.SetSceneBuilderFactory(new SceneBuilderFactory());
    factories.SetView3DAdapterFactory(new Factory());
    std::unique_ptr<AView3DAdapter> owned(factories.CreateView3DAdapter());
    auto& adapter = static_cast<SessionAdapter&>(*owned);
    SceneBuilder* builder = factories.CreateSceneBuilder(&adapter);

    build(builder, round);
    const bool isFine = pick(adapter, builder) && edit(adapter, builder) && annotate();

    factories.DeleteSceneBuilder(builder);
    owned.reset();
    factories.Terminate();
    return isFine ? 1 : 0;
}
