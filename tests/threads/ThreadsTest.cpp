// What the library promises of threads, each promise by threads that do it at the same time: a
// graph and a model on a thread of its own, plain values read by many, functions that keep nothing,
// and what belongs to the whole process used from one thread at a time. The thread sanitizer, under
// which scripts/thread-check runs this, sees a race also where the answers are right.

#include "graph/RecordingReport.h"
#include "session/SessionHost.h"
#include "support/EmptyHost.h"
#include "support/TestLoaders.h"

#include <KesVizCore/KesVizCore.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <unordered_map>
#include <vector>

namespace KesVizCore {
namespace {

using support::newItem;
using support::RecordingReport;
using support::SessionScene;

constexpr std::uint64_t kThreads = 4;
constexpr std::uint64_t kRounds = 20;

/// Guards what belongs to the whole process: a host needs one like it.
std::mutex processMutex;

/// Runs @p work with the numbers from 0 on, each on a thread of its own.
void onThreads(const std::function<void(std::uint64_t)>& work) {
    std::vector<std::thread> threads;
    for (std::uint64_t number = 0; number < kThreads; ++number) {
        threads.emplace_back(work, number);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

template <typename Make>
auto alone(const Make& make) {
    const std::lock_guard<std::mutex> lock(processMutex);
    return make();
}

// --- plain values -------------------------------------------------------------------------------

TEST(ThreadsTest, ManyReadOneRenderId) {
    const RenderId id({1, 2, 3}, View3D);
    onThreads([&id](std::uint64_t) {
        const RenderId copy(id);
        EXPECT_EQ(copy, id);
        EXPECT_EQ(id.Length(), 3);
        EXPECT_EQ(id[2], 3U);
        EXPECT_EQ(id.GetOrigin(), View3D);
        EXPECT_FALSE(id.IsEmpty());
        EXPECT_EQ(id.ToString(), "[ 1, 2, 3 View3D ]");
        EXPECT_EQ(std::hash<RenderId>()(id), std::hash<RenderId>()(copy));
    });
}

TEST(ThreadsTest, ManyReadOneEntityId) {
    const EntityId id(5, FaceType, 9);
    onThreads([&id](std::uint64_t) {
        EXPECT_TRUE(id.IsFace());
        EXPECT_FALSE(id.IsEmpty() || id.IsAnnotation());
        EXPECT_EQ(id.GetParentEntity(), EntityId(0, BodyType, 5));
        EXPECT_EQ(id.ToString(), "EntityId: EntityType = 10002 ID = 9 OwnerID = 5");
        EXPECT_FALSE(id < EntityId(id));
    });
}

TEST(ThreadsTest, ManyReadOneColorRayAndPick) {
    const RGBAColor color(255, 0, 51, 255);
    const float root[3] = {1, 2, 3};
    const Ray ray(root, root, 0.5);
    const Pick pick(1, 2.0F, 3.0F);
    onThreads([&](std::uint64_t) {
        std::wstring text;
        float channels[4];
        color.ToHexString(text);
        color.ToFloatArray(channels);
        EXPECT_EQ(text, L"ffff0033");
        EXPECT_FLOAT_EQ(channels[2], 0.2F);
        EXPECT_TRUE(color.IsOpaque());
        EXPECT_EQ(Ray(ray).ToString(), ray.ToString());
        EXPECT_FLOAT_EQ(Pick(pick).Value2, 3.0F);
    });
}

TEST(ThreadsTest, ManyReadOneBoxTransformAndRecord) {
    const double low[3] = {0, 0, 0};
    const double high[3] = {2, 4, 6};
    const VizBox box(low, high);
    const VizTransf transform(2.0);
    SemanticPMI record;
    record.Name = L"Length";
    record.Attributes[L"DatumRefDatas"] = L"A, B";
    const SemanticPMI& readable = record;
    onThreads([&](std::uint64_t) {
        double center[3];
        box.GetCenter(center);
        EXPECT_EQ(center[2], 3);
        EXPECT_FALSE((transform * box).IsEmpty());
        EXPECT_FALSE(transform.IsIdentity());
        std::vector<std::wstring> links;
        EXPECT_TRUE(readable.GetPMILinks(links));
        EXPECT_EQ(links, (std::vector<std::wstring>{L"A", L"B"}));
        EXPECT_EQ(SemanticPMI(readable).ToString(), readable.ToString());
    });
}

// --- functions ----------------------------------------------------------------------------------

TEST(ThreadsTest, EachThreadCalculatesOnArraysOfItsOwn) {
    onThreads([](std::uint64_t number) {
        const auto shift = static_cast<float>(number);
        for (std::uint64_t round = 0; round < kRounds; ++round) {
            const float triangle[9] = {shift, 0, 0, shift + 4, 0, 0, shift, 4, 0};
            const float root[3] = {shift + 1, 1, 5};
            const float down[3] = {0, 0, -10};
            float hit[3];
            float distance = 0;
            EXPECT_TRUE(
                RayHitsTriangle(triangle, triangle + 3, triangle + 6, root, down, hit, distance));
            EXPECT_FLOAT_EQ(hit[0], shift + 1);
            float axis[3] = {0, 0, 1};
            float matrix[16];
            float turned[3];
            CreateRotationMatrixDegrees(axis, 90.0F, matrix);
            MatrixMultiplyPoint(hit, matrix, turned);
            EXPECT_NEAR(turned[1], shift + 1, 1e-5);
        }
    });
}

TEST(ThreadsTest, UtilitiesRunOnManyThreads) {
    onThreads([](std::uint64_t number) {
        const int value = static_cast<int>(number);
        std::string format = "%.2f";
        for (std::uint64_t round = 0; round < kRounds; ++round) {
            EXPECT_EQ(Utils::SprintfL("%d %.1f", value, 0.5), std::to_string(value) + " 0.5");
            EXPECT_EQ(Utils::SWprintfL(L"%d", value), std::to_wstring(value));
            EXPECT_EQ(Utils::DoubleToWstring(1.5, format.data()), L"1.50");
            EXPECT_EQ(Utils::IntToHexString(255), "0xff");
            EXPECT_EQ(Utils::WstringToString(L"plain"), "plain");
            EXPECT_EQ(Utils::StringToWstring("plain"), L"plain");
            EXPECT_EQ(Utils::GetFileExtension(L"a.tar.gz"), L"gz");
            EXPECT_FALSE(Utils::GetExePath().empty());
            EXPECT_FALSE(Utils::FileExists(Utils::GetExePath() + L"/no such file"));
            EXPECT_TRUE(Utils::GetFileContents(Utils::GetExePath()).empty());
        }
    });
}

TEST(ThreadsTest, EachThreadHasAStopwatchOfItsOwn) {
    onThreads([](std::uint64_t) {
        Stopwatch stopwatch;
        stopwatch.Start();
        stopwatch.Stop();
        EXPECT_GE(stopwatch.GetElapsedTime(), 0);
    });
}

// --- graphs and models --------------------------------------------------------------------------

void buildBody(SceneBuilder& builder, std::uint64_t id) {
    const BodyContext body(&builder, id, L"body " + std::to_wstring(id));
    builder.SetColor(RGBAColor::Red(), false);
    for (std::uint64_t face = 1; face <= 5; ++face) {
        const EntityContext entity(&builder, 100 + face, L"face", true, RGBAColor::Blue());
        builder.AddGeometry(newItem(face));
        builder.SetLineStyle("dashed", 1.0F);
    }
}

void buildScene(SceneBuilder& builder) {
    const ConstructionContext construction(&builder);
    const SceneContext scene(&builder, 2, L"scene");
    const ContainerContext container(&builder, 3, L"part", SceneBuilder::AddressedContainer);
    for (std::uint64_t id = 10; id < 14; ++id) {
        buildBody(builder, id);
    }
}

/// What a host does with a scene all day; answers a text of it.
std::string useScene(SessionScene& scene) {
    buildScene(*scene.builder);
    scene.adapter.picked = RenderId({1, 2, 3, 10, 101}, View3D);
    RenderId picked;
    EXPECT_TRUE(scene.adapter.PickVisual(Ray(), picked));
    scene.adapter.GetSelectionHolder()->Add(picked);
    EntityId entity;
    scene.adapter.Convert(picked, entity);
    RenderId composed;
    scene.builder->BuildRenderId(composed, EntityId(10, FaceType, 101), RGBAColor(), RGBAColor());
    scene.builder->MoveGeometryFrom(RenderId({1, 2, 3, 11, 101}, View3D));
    scene.builder->Delete(RenderId({1, 2, 3, 12}, View3D));
    scene.builder->Clear(RenderId({1, 2, 3, 13}, View3D));
    return composed.ToString() + entity.ToString() + scene.State();
}

TEST(ThreadsTest, EachThreadHasAGraphOfItsOwn) {
    const std::string expected = [] {
        SessionScene scene;
        return useScene(scene);
    }();
    EXPECT_NE(expected.find("body 10"), std::string::npos);
    onThreads([&expected](std::uint64_t) {
        for (std::uint64_t round = 0; round < kRounds; ++round) {
            // CreateRoot restarts the ids of the process.
            const auto scene = alone([] { return std::make_unique<SessionScene>(); });
            EXPECT_EQ(useScene(*scene), expected);
        }
    });
}

TEST(ThreadsTest, EachThreadHasARendererAndOptionsOfItsOwn) {
    onThreads([](std::uint64_t number) {
        const auto scene = alone([] { return std::make_unique<SessionScene>(); });
        RenderId place({number}, View3D);
        auto renderer = std::make_unique<support::EmptyRenderer>(scene->builder, &place);
        renderer->SetBuilderOwnership(false);
        renderer->SetReportMode(true);
        renderer->GetReport().Bodies = number;
        EXPECT_EQ(renderer->ARenderer::GetRenderId(), place);
        EXPECT_EQ(renderer->GetReport().Bodies, number);
        RenderingOptions options;
        options.SetDisplayPMI(false);
        EXPECT_FALSE(options.GetDisplayPMI());
        alone([&renderer] { return renderer.reset(); });  // which forgets signed ids
    });
}

/// A mesh of a triangle with an edge.
VizMesh* newMesh(std::uint64_t id) {
    const std::vector<float> corners{0, 0, 0, 4, 0, 0, 4, 3, 0};
    auto mesh = support::loadMesh([id](VizMesh& made) {
        made.SetEntityID(EntityId(1, BodyType, id));
        made.Set3DRenderID(RenderId({1, 2, id}, View3D));
        made.SetVisualID(L"mesh " + std::to_wstring(id));
    });
    mesh->AddFace(support::loadFace([&corners](VizFace& face) {
                      face.SetVertices(3, corners.data());
                  }).release());
    mesh->AddEdge(
        support::loadEdge([&corners](VizEdge& edge) { edge.SetVertices(corners); }).release());
    return mesh.release();
}

std::unique_ptr<VizContainer> newModel(std::uint64_t id) {
    auto model = std::make_unique<VizContainer>(1);
    model->AddMesh(newMesh(id));
    return model;
}

/// Finds the mesh by a pick and by its name.
void useModel(VizContainer& model, SessionScene& scene, std::uint64_t id) {
    scene.adapter.picked = RenderId({1, 2, id, 7}, View3D);
    VizElement* hit = nullptr;
    EXPECT_TRUE(model.PickVisual(&scene.adapter, Ray(), hit));
    EXPECT_EQ(hit, model.GetMeshes().front());
    model.GetMeshes().front()->SetColor(RGBAColor::Green());
    EXPECT_EQ(model.GetMeshes().front()->GetVisualID(), L"mesh " + std::to_wstring(id));
}

TEST(ThreadsTest, EachThreadHasAModelOfItsOwn) {
    onThreads([](std::uint64_t number) {
        for (std::uint64_t round = 0; round < kRounds; ++round) {
            // Loaders number the elements of the whole process.
            const auto model = alone([number] { return newModel(number); });
            const auto scene = alone([] { return std::make_unique<SessionScene>(); });
            useModel(*model, *scene, number);
        }
    });
}

TEST(ThreadsTest, AModelGoesFromThreadToThread) {
    const std::unique_ptr<VizContainer> model = newModel(5);
    const auto scene = std::make_unique<SessionScene>();
    std::mutex mutex;
    onThreads([&](std::uint64_t) {
        const std::lock_guard<std::mutex> lock(mutex);
        useModel(*model, *scene, 5);
    });
}

std::unique_ptr<VizPMIContainer> newAnnotations() {
    auto container = std::make_unique<VizPMIContainer>(1);
    container->AddVizPMI(support::loadPMI([](VizPMI& pmi) {
                             pmi.SetMechanicalID(L"length");
                             pmi.AddEdge(support::loadEdge([](VizEdge& edge) {
                                             edge.SetVertices({0, 0, 0, 9, 0, 0});
                                         }).release());
                         }).release());
    container->AddView(support::loadView([](VizView& view) { view.SetName(L"top"); }).release());
    return container;
}

TEST(ThreadsTest, EachThreadHasAnnotationsOfItsOwn) {
    onThreads([](std::uint64_t) {
        const auto container = alone(newAnnotations);
        auto record = std::make_unique<SemanticPMI>();
        record->Id = L"length";
        record->Label = L"10 mm";
        container->AddSemanticPMI(record.release());
        std::wstring name;
        EXPECT_TRUE(container->GetDisplayName(L"length", name));
        EXPECT_EQ(name, L"10 mm");
        EXPECT_TRUE(container->GetViews().front()->AccumulatePMIExtrema());
        EXPECT_TRUE(container->DeletePMI(L"length"));
    });
}

// --- reports ------------------------------------------------------------------------------------

TEST(ThreadsTest, ManyReadOneDefinedReport) {
    RecordingReport report;
    report.StartReport("scene");
    report.AddAttribute("bodies", std::uint64_t{3});
    report.EndReport();
    const RecordingReport& defined = report;
    onThreads([&defined](std::uint64_t) {
        EXPECT_TRUE(defined.IsDefined());
        EXPECT_EQ(defined.GetName(), "scene");
        EXPECT_TRUE(defined.ToText().empty());
        EXPECT_NE(defined.Calls().find("bodies"), std::string::npos);
    });
}

// --- the whole process --------------------------------------------------------------------------

class NoReportFactory : public AReportFactory {
public:
    NoReportFactory() : AReportFactory("none") {}
    AReport* MakeReport() override { return nullptr; }
};

TEST(ThreadsTest, WhatBelongsToTheProcessIsUsedFromOneThreadAtATime) {
    onThreads([](std::uint64_t number) {
        for (std::uint64_t round = 0; round < kRounds; ++round) {
            const std::lock_guard<std::mutex> lock(processMutex);
            VizFactories::Instance().SetSceneBuilderFactory(new SceneBuilderFactory());
            AReportFactory::SetActiveReportFactory(new NoReportFactory());
            EXPECT_EQ(AReportFactory::GetActiveReportFactory()->GetName(), "none");
            Settings::Current()->Number1 = static_cast<int>(number);
            EXPECT_EQ(Settings::Current()->Number1, static_cast<int>(number));
            EXPECT_EQ(ARenderer::getSignedId(number), number);
            EXPECT_NE(Node::GetNextId(), Node::GetNextId());
            EXPECT_EQ(Utils::Char2Wchar("text"), std::wstring(L"text"));
            SetAllowThrow(GetAllowThrow());
            dbg << "" << std::flush;
        }
    });
    VizFactories::Instance().Terminate();
    AReportFactory::SetActiveReportFactory(nullptr);
    Settings::Current()->CopyFrom(Settings::Default());
}

}  // namespace
}  // namespace KesVizCore
