#include "scene/SceneHost.h"

#include <KesVizCore/KesVizCore.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace KesVizCore {
namespace {

using support::CallLog;
using support::OpenBuilder;
using support::OpenBuilderFactory;
using support::RecordingAdapter;

/// Makes one adapter after another, and tells when it is destroyed.
class AdapterFactory : public AView3DAdapterFactory {
public:
    explicit AdapterFactory(CallLog* log = nullptr) : _log(log) {}
    ~AdapterFactory() override {
        if (_log != nullptr) {
            _log->push_back("~AdapterFactory");
        }
    }

    AView3DAdapter* made = nullptr;  ///< the last one

protected:
    AView3DAdapter* makeView3DAdapterImpl() override { return made = new RecordingAdapter(); }

private:
    CallLog* _log;
};

// ---- AView3DAdapterFactory

TEST(AView3DAdapterFactoryTest, IsAbstractAndCopyableAndDestroyedThroughItsBase) {
    static_assert(std::is_abstract_v<AView3DAdapterFactory>);
    static_assert(std::has_virtual_destructor_v<AView3DAdapterFactory>);
    static_assert(std::is_copy_constructible_v<AdapterFactory>);
}

TEST(AView3DAdapterFactoryTest, AnswersWhatTheHostMakes) {
    AdapterFactory factory;
    const std::unique_ptr<AView3DAdapter> first(factory.MakeView3DAdapter());
    EXPECT_EQ(first.get(), factory.made);
    const std::unique_ptr<AView3DAdapter> second(factory.MakeView3DAdapter());
    EXPECT_EQ(second.get(), factory.made);
    EXPECT_NE(first, second);
}

TEST(AView3DAdapterFactoryTest, AnswersNullWhereTheHostCannotMakeOne) {
    class Barren : public AView3DAdapterFactory {
    protected:
        AView3DAdapter* makeView3DAdapterImpl() override { return nullptr; }
    };
    EXPECT_EQ(Barren().MakeView3DAdapter(), nullptr);
}

// ---- VizFactories

/// Leaves the singleton without factories.
class VizFactoriesTest : public testing::Test {
protected:
    ~VizFactoriesTest() override { factories.Terminate(); }

    VizFactories& factories = VizFactories::Instance();
    CallLog log;
    RecordingAdapter adapter;
};

TEST_F(VizFactoriesTest, IsOnePerProcess) {
    static_assert(!std::is_default_constructible_v<VizFactories>);
    static_assert(!std::is_copy_constructible_v<VizFactories>);
    static_assert(!std::is_copy_assignable_v<VizFactories>);
    static_assert(!std::is_destructible_v<VizFactories>);
    EXPECT_EQ(&VizFactories::Instance(), &factories);
}

TEST_F(VizFactoriesTest, CreatesNothingBeforeFactoriesAreSet) {
    EXPECT_EQ(factories.CreateSceneBuilder(&adapter), nullptr);
    EXPECT_EQ(factories.CreateSceneBuilder(nullptr), nullptr);
    EXPECT_EQ(factories.CreateView3DAdapter(), nullptr);
    EXPECT_TRUE(adapter._sceneBuilders.empty());
}

TEST_F(VizFactoriesTest, InitKeepsTheFactories) {
    factories.SetSceneBuilderFactory(new OpenBuilderFactory(&log));
    factories.SetView3DAdapterFactory(new AdapterFactory(&log));
    factories.Init();
    EXPECT_EQ(log, CallLog());
    const std::unique_ptr<AView3DAdapter> made(factories.CreateView3DAdapter());
    EXPECT_NE(made, nullptr);
    SceneBuilder* builder = factories.CreateSceneBuilder(nullptr);
    EXPECT_NE(builder, nullptr);
    factories.DeleteSceneBuilder(builder);
}

TEST_F(VizFactoriesTest, TerminateDestroysTheBuilderFactoryThenTheAdapterFactory) {
    factories.SetView3DAdapterFactory(new AdapterFactory(&log));
    factories.SetSceneBuilderFactory(new OpenBuilderFactory(&log));
    factories.Terminate();
    EXPECT_EQ(log, (CallLog{"~OpenBuilderFactory", "~AdapterFactory"}));
    EXPECT_EQ(factories.CreateSceneBuilder(nullptr), nullptr);
    EXPECT_EQ(factories.CreateView3DAdapter(), nullptr);
}

TEST_F(VizFactoriesTest, TerminateDestroysWhatIsSetAndNothingTwice) {
    factories.SetView3DAdapterFactory(new AdapterFactory(&log));
    factories.Terminate();
    EXPECT_EQ(log, CallLog{"~AdapterFactory"});
    factories.SetSceneBuilderFactory(new OpenBuilderFactory(&log));
    factories.Terminate();
    factories.Terminate();
    EXPECT_EQ(log, (CallLog{"~AdapterFactory", "~OpenBuilderFactory"}));
}

TEST_F(VizFactoriesTest, InitAfterTerminateDoesNothing) {
    factories.SetSceneBuilderFactory(new OpenBuilderFactory());
    factories.SetView3DAdapterFactory(new AdapterFactory());
    factories.Terminate();
    factories.Init();
    EXPECT_EQ(factories.CreateSceneBuilder(nullptr), nullptr);
    EXPECT_EQ(factories.CreateView3DAdapter(), nullptr);
}

TEST_F(VizFactoriesTest, FactoriesCanBeSetAgainAfterTerminate) {
    factories.Terminate();
    factories.Init();
    factories.SetSceneBuilderFactory(new OpenBuilderFactory());
    factories.SetView3DAdapterFactory(new AdapterFactory());
    factories.Init();  // the flag stays true, so this forgets nothing
    const std::unique_ptr<AView3DAdapter> made(factories.CreateView3DAdapter());
    EXPECT_NE(made, nullptr);
    SceneBuilder* builder = factories.CreateSceneBuilder(nullptr);
    EXPECT_NE(builder, nullptr);
    factories.DeleteSceneBuilder(builder);
}

TEST_F(VizFactoriesTest, SettingAFactoryDestroysTheOneBefore) {
    CallLog second;
    factories.SetSceneBuilderFactory(new OpenBuilderFactory(&log));
    factories.SetSceneBuilderFactory(new OpenBuilderFactory(&second));
    EXPECT_EQ(log, CallLog{"~OpenBuilderFactory"});
    EXPECT_EQ(second, CallLog());
    factories.SetView3DAdapterFactory(new AdapterFactory(&log));
    factories.SetView3DAdapterFactory(new AdapterFactory(&second));
    EXPECT_EQ(log, (CallLog{"~OpenBuilderFactory", "~AdapterFactory"}));
    EXPECT_EQ(second, CallLog());
    factories.Terminate();
}

TEST_F(VizFactoriesTest, SettingNullDestroysTheFactoryBefore) {
    factories.SetSceneBuilderFactory(new OpenBuilderFactory(&log));
    factories.SetSceneBuilderFactory(nullptr);
    EXPECT_EQ(log, CallLog{"~OpenBuilderFactory"});
    EXPECT_EQ(factories.CreateSceneBuilder(nullptr), nullptr);
    factories.SetView3DAdapterFactory(new AdapterFactory(&log));
    factories.SetView3DAdapterFactory(nullptr);
    EXPECT_EQ(log, (CallLog{"~OpenBuilderFactory", "~AdapterFactory"}));
    EXPECT_EQ(factories.CreateView3DAdapter(), nullptr);
    factories.SetSceneBuilderFactory(nullptr);  // with none before
    factories.SetView3DAdapterFactory(nullptr);
}

TEST_F(VizFactoriesTest, ReplacingAFactoryTakesTheNewOne) {
    factories.SetSceneBuilderFactory(new SceneBuilderFactory());
    factories.SetSceneBuilderFactory(new OpenBuilderFactory());
    SceneBuilder* builder = factories.CreateSceneBuilder(nullptr);
    EXPECT_NE(dynamic_cast<OpenBuilder*>(builder), nullptr);
    factories.DeleteSceneBuilder(builder);
}

TEST_F(VizFactoriesTest, CreateSceneBuilderTiesTheBuilderToTheAdapter) {
    factories.SetSceneBuilderFactory(new SceneBuilderFactory());
    SceneBuilder* builder = factories.CreateSceneBuilder(&adapter);
    ASSERT_NE(builder, nullptr);
    EXPECT_EQ(builder->GetView3DAdapter(), &adapter);
    EXPECT_EQ(adapter._sceneBuilders, std::vector<SceneBuilder*>{builder});
    factories.DeleteSceneBuilder(builder);
    EXPECT_EQ(builder, nullptr);
    EXPECT_TRUE(adapter._sceneBuilders.empty());
}

TEST_F(VizFactoriesTest, CreateSceneBuilderWithoutAnAdapterMakesABuilderWhoseBeginsFail) {
    factories.SetSceneBuilderFactory(new SceneBuilderFactory());
    SceneBuilder* builder = factories.CreateSceneBuilder(nullptr);
    ASSERT_NE(builder, nullptr);
    EXPECT_FALSE(builder->ConstructionBegin());
    factories.DeleteSceneBuilder(builder);
}

TEST_F(VizFactoriesTest, DeleteSceneBuilderWithoutAFactoryDoesNothingAtAll) {
    factories.SetSceneBuilderFactory(new OpenBuilderFactory(&log));
    SceneBuilder* builder = factories.CreateSceneBuilder(&adapter);
    SceneBuilder* const made = builder;
    factories.SetSceneBuilderFactory(nullptr);
    log.clear();
    factories.DeleteSceneBuilder(builder);
    EXPECT_EQ(builder, made);
    EXPECT_EQ(log, CallLog());
    EXPECT_EQ(adapter._sceneBuilders, std::vector<SceneBuilder*>{made});
    factories.SetSceneBuilderFactory(new OpenBuilderFactory());
    factories.DeleteSceneBuilder(builder);
    EXPECT_EQ(builder, nullptr);
    EXPECT_EQ(log, CallLog{"~OpenBuilder"});
}

TEST_F(VizFactoriesTest, DeleteSceneBuilderOfNullDoesNothing) {
    SceneBuilder* builder = nullptr;
    factories.DeleteSceneBuilder(builder);
    factories.SetSceneBuilderFactory(new SceneBuilderFactory());
    factories.DeleteSceneBuilder(builder);
    EXPECT_EQ(builder, nullptr);
}

TEST_F(VizFactoriesTest, CreateView3DAdapterAnswersTheFactorysForTheCallerToOwn) {
    auto* const factory = new AdapterFactory();
    factories.SetView3DAdapterFactory(factory);
    const std::unique_ptr<AView3DAdapter> made(factories.CreateView3DAdapter());
    EXPECT_EQ(made.get(), factory->made);
    factories.Terminate();  // destroys the factory, not what it made
    EXPECT_EQ(made->GetCurrentOpenNode(), nullptr);
}

}  // namespace
}  // namespace KesVizCore
