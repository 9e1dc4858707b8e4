#include "scene/SceneHost.h"
#include "support/EmptyHost.h"

#include <KesVizCore/KesVizCore.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>

namespace KesVizCore {
namespace {

using support::CallLog;
using support::OpenBuilderFactory;
using support::SceneAdapter;

/// The least that a host completes, with the insides open.
class Renderer : public support::EmptyRenderer {
public:
    using EmptyRenderer::EmptyRenderer;

    bool GetRenderId(const EntityId& entity, RenderId& out) const override {
        out = RenderId({entity.ID}, ViewTree);
        return true;
    }

    using ARenderer::_backFacesVisible;
    using ARenderer::_builderOwnership;
    using ARenderer::_flag;
    using ARenderer::_progressCallback;
    using ARenderer::getGeometryItemFactory;
    using ARenderer::GetRenderId;
    using ARenderer::getSceneBuilder;
    using ARenderer::getView3DAdapter;
};

/// Installs a builder factory and leaves the singleton without one.
class ARendererTest : public testing::Test {
protected:
    ARendererTest() {
        VizFactories::Instance().SetSceneBuilderFactory(new OpenBuilderFactory(&log));
    }
    ~ARendererTest() override { VizFactories::Instance().Terminate(); }

    SceneBuilder* newBuilder(AView3DAdapter* tiedTo) {
        return VizFactories::Instance().CreateSceneBuilder(tiedTo);
    }

    CallLog log;
    SceneAdapter adapter;
};

TEST_F(ARendererTest, IsAnAbstractReportProviderThatIsNotCopied) {
    static_assert(std::is_abstract_v<ARenderer>);
    static_assert(std::is_base_of_v<IRendererReportProvider, ARenderer>);
    static_assert(!std::is_base_of_v<IRenderTimeReportProvider, ARenderer>);
    static_assert(std::has_virtual_destructor_v<ARenderer>);
    static_assert(!std::is_copy_constructible_v<Renderer>);
    static_assert(!std::is_copy_assignable_v<Renderer>);
}

// ---- The report

void expectCounts(const RendererReport& report, std::uint64_t count) {
    EXPECT_EQ(report.Bodies, count);
    EXPECT_EQ(report.Faces, count);
    EXPECT_EQ(report.Edges, count);
    EXPECT_EQ(report.Vertices, count);
    EXPECT_EQ(report.Annotations, count);
    EXPECT_EQ(report.Triangles, count);
}

TEST_F(ARendererTest, ReportModeIsOffAtFirstAndStored) {
    Renderer renderer;
    EXPECT_FALSE(renderer.GetReportMode());
    renderer.SetReportMode(true);
    EXPECT_TRUE(renderer.GetReportMode());
    renderer.SetReportMode(false);
    EXPECT_FALSE(renderer.GetReportMode());
}

TEST_F(ARendererTest, TheReportIsSixCountersOf64BitsAllZeroAtFirst) {
    static_assert(sizeof(RendererReport) == 6 * sizeof(std::uint64_t));
    Renderer renderer;
    expectCounts(renderer.GetReport(), 0);
}

TEST_F(ARendererTest, GetReportAnswersTheReportItself) {
    Renderer renderer;
    renderer.GetReport().Faces = 5;
    EXPECT_EQ(renderer.GetReport().Faces, 5U);
}

TEST_F(ARendererTest, ClearReportSetsEveryCountToZeroAndKeepsTheMode) {
    Renderer renderer;
    renderer.SetReportMode(true);
    renderer.GetReport() = RendererReport{9, 9, 9, 9, 9, 9};
    renderer.ClearReport();
    expectCounts(renderer.GetReport(), 0);
    EXPECT_TRUE(renderer.GetReportMode());
}

TEST_F(ARendererTest, ReportsAreReadThroughTheProvider) {
    Renderer renderer;
    IRendererReportProvider& provider = renderer;
    provider.SetReportMode(true);
    EXPECT_TRUE(provider.GetReportMode());
    provider.GetReport().Edges = 5;
    provider.ClearReport();
    expectCounts(provider.GetReport(), 0);
}

TEST(IRenderTimeReportProviderTest, AHostsRendererMayProvideTimesToo) {
    class Timed : public Renderer, public IRenderTimeReportProvider {
    public:
        double GetRenderTime() const override { return _seconds; }
        void AddRenderTime(double seconds) override { _seconds += seconds; }
        void ClearRenderTime() override { _seconds = 0.0; }

    private:
        double _seconds = 0.0;
    };
    static_assert(std::is_abstract_v<IRenderTimeReportProvider>);
    Timed renderer;
    IRenderTimeReportProvider& provider = renderer;
    provider.AddRenderTime(0.5);
    provider.AddRenderTime(0.25);
    EXPECT_EQ(provider.GetRenderTime(), 0.75);
    provider.ClearRenderTime();
    EXPECT_EQ(provider.GetRenderTime(), 0.0);
}

// ---- The destructor

TEST_F(ARendererTest, TheDestructorDeletesAnOwnedBuilderThroughTheFactories) {
    auto renderer = std::make_unique<Renderer>(newBuilder(&adapter));
    EXPECT_EQ(adapter._sceneBuilders.size(), 1U);
    renderer.reset();
    EXPECT_EQ(log, CallLog{"~OpenBuilder"});
    EXPECT_TRUE(adapter._sceneBuilders.empty());
}

TEST_F(ARendererTest, TheDestructorLeavesABuilderThatIsNotOwned) {
    SceneBuilder* builder = newBuilder(&adapter);
    {
        Renderer renderer(builder);
        renderer.SetBuilderOwnership(false);
    }
    EXPECT_EQ(log, CallLog());
    EXPECT_EQ(builder->GetView3DAdapter(), &adapter);
    VizFactories::Instance().DeleteSceneBuilder(builder);
}

TEST_F(ARendererTest, OwnershipCanBeTakenBack) {
    {
        Renderer renderer(newBuilder(&adapter));
        EXPECT_TRUE(renderer._builderOwnership);
        renderer.SetBuilderOwnership(false);
        EXPECT_FALSE(renderer._builderOwnership);
        renderer.SetBuilderOwnership(true);
    }
    EXPECT_EQ(log, CallLog{"~OpenBuilder"});
}

TEST_F(ARendererTest, TheDestructorWithoutABuilderDeletesNothing) {
    { const Renderer renderer; }
    EXPECT_EQ(log, CallLog());
}

TEST_F(ARendererTest, TheDestructorCannotDeleteABuilderWithoutAFactory) {
    SceneBuilder* builder = newBuilder(nullptr);
    VizFactories::Instance().SetSceneBuilderFactory(nullptr);
    log.clear();
    { const Renderer renderer(builder); }
    EXPECT_EQ(log, CallLog());
    VizFactories::Instance().SetSceneBuilderFactory(new SceneBuilderFactory());
    VizFactories::Instance().DeleteSceneBuilder(builder);
    EXPECT_EQ(log, CallLog{"~OpenBuilder"});
}

// ---- The bodies of the host's operations

TEST_F(ARendererTest, ActivateAnswersTrueAndDoesNothing) {
    Renderer renderer;
    RenderId id({5, 6}, ViewTree);
    EXPECT_TRUE(renderer.Activate(id));
    EXPECT_EQ(id.ToString(), "[ 5, 6 ViewTree ]");
}

TEST_F(ARendererTest, GetToolTipIsEmpty) {
    Renderer renderer;
    EXPECT_EQ(renderer.GetToolTip(RenderId({5}, View3D)), L"");
}

// ---- What it was made of

TEST_F(ARendererTest, GetRenderIdAnswersACopyOfTheGivenId) {
    RenderId given({3, 12}, ViewTree);
    Renderer renderer(nullptr, &given);
    given.AddValue(99);
    EXPECT_EQ(renderer.GetRenderId().ToString(), "[ 3, 12 ViewTree ]");
    renderer.GetRenderId().AddValue(98);
    EXPECT_EQ(renderer.GetRenderId().ToString(), "[ 3, 12 ViewTree ]");
}

TEST_F(ARendererTest, GetRenderIdIsEmptyWhenNoneIsGiven) {
    Renderer renderer(nullptr, nullptr);
    EXPECT_EQ(renderer.GetRenderId().ToString(), "[  Unknown ]");
}

TEST_F(ARendererTest, GetRenderIdOfAnEntityIsTheHosts) {
    RenderId given({3, 12}, View3D);
    Renderer renderer(nullptr, &given);
    ARenderer& base = renderer;
    RenderId out;
    EXPECT_TRUE(base.GetRenderId(EntityId(1, FaceType, 2), out));
    EXPECT_EQ(out.ToString(), "[ 2 ViewTree ]");
    EXPECT_EQ(base.GetRenderId().ToString(), "[ 3, 12 View3D ]");
}

TEST_F(ARendererTest, WithoutABuilderThereIsNothingToAsk) {
    Renderer renderer(nullptr);
    EXPECT_EQ(renderer.getSceneBuilder(), nullptr);
    EXPECT_EQ(renderer.GetRenderingOptions(), nullptr);
    EXPECT_EQ(renderer.getView3DAdapter(), nullptr);
    EXPECT_EQ(renderer.getGeometryItemFactory(), nullptr);
    EXPECT_FALSE(renderer._backFacesVisible);
}

TEST_F(ARendererTest, WithoutAnAdapterThereIsOnlyTheBuilder) {
    SceneBuilder* const builder = newBuilder(nullptr);
    Renderer renderer(builder);
    EXPECT_EQ(renderer.getSceneBuilder(), builder);
    EXPECT_EQ(renderer.GetRenderingOptions(), nullptr);
    EXPECT_EQ(renderer.getView3DAdapter(), nullptr);
    EXPECT_EQ(renderer.getGeometryItemFactory(), nullptr);
    EXPECT_FALSE(renderer._backFacesVisible);
}

TEST_F(ARendererTest, WithAnAdapterItAnswersTheAdaptersOptionsAndItemFactory) {
    support::EmptyItemFactory items;
    adapter.itemFactory = &items;
    SceneBuilder* const builder = newBuilder(&adapter);
    Renderer renderer(builder);
    EXPECT_EQ(renderer.getSceneBuilder(), builder);
    EXPECT_EQ(renderer.getView3DAdapter(), &adapter);
    adapter.takeLog();
    EXPECT_EQ(renderer.GetRenderingOptions(), &adapter.options);
    EXPECT_EQ(renderer.getGeometryItemFactory(), &items);
    EXPECT_EQ(adapter.log, (CallLog{"GetRenderingOptions", "GetGeometryItemFactory"}));
}

TEST_F(ARendererTest, OptionsAreThoseOfADerivedBuilder) {
    class OwnOptions : public SceneBuilder {
    public:
        RenderingOptions* GetRenderingOptions() override { return &options; }
        RenderingOptions options;
    };
    class OwnOptionsFactory : public SceneBuilderFactory {
    protected:
        SceneBuilder* makeSceneBuilderImpl() override { return new OwnOptions(); }
    };
    VizFactories::Instance().SetSceneBuilderFactory(new OwnOptionsFactory());
    SceneBuilder* const builder = newBuilder(nullptr);
    Renderer renderer(builder);
    EXPECT_EQ(renderer.GetRenderingOptions(), &static_cast<OwnOptions*>(builder)->options);
}

TEST_F(ARendererTest, ItNotesWhatTheViewSaysOfBackFacesWhenItIsMade) {
    Renderer hidden(newBuilder(&adapter));
    EXPECT_FALSE(hidden._backFacesVisible);
    adapter.GetView3D()->SetBackFacesVisible(true);
    Renderer visible(newBuilder(&adapter));
    EXPECT_TRUE(visible._backFacesVisible);
    EXPECT_FALSE(hidden._backFacesVisible) << "asked once only";
}

TEST_F(ARendererTest, AnAdapterWithoutAViewShowsNoBackFaces) {
    class Blind : public SceneAdapter {
    public:
        IView3D* GetView3D() override { return nullptr; }
    };
    Blind blind;
    Renderer renderer(newBuilder(&blind));
    EXPECT_FALSE(renderer._backFacesVisible);
    EXPECT_EQ(renderer.getView3DAdapter(), &blind);
}

TEST_F(ARendererTest, TheHostsFlagIsFalseAtFirst) {
    const Renderer renderer;
    EXPECT_FALSE(renderer._flag);
}

// ---- The progress callback

void noProgress(const int& /*done*/, const int& /*total*/, const char* /*text*/) {}

TEST_F(ARendererTest, TheProgressCallbackIsNullAtFirstAndStored) {
    Renderer renderer;
    EXPECT_EQ(renderer._progressCallback, nullptr);
    renderer.SetProgressCallback(&noProgress);
    EXPECT_EQ(renderer._progressCallback, &noProgress);
    renderer.SetProgressCallback(nullptr);
    EXPECT_EQ(renderer._progressCallback, nullptr);
}

}  // namespace
}  // namespace KesVizCore
