#include "scene/SceneHost.h"

#include <KesVizCore/KesVizCore.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace KesVizCore {
namespace {

using support::CallLog;
using support::OpenBuilder;
using support::OpenBuilderFactory;
using support::pathOf;
using support::SceneAdapter;

using Builders = std::vector<SceneBuilder*>;

TEST(SceneBuilderFactoryTest, CanBeMadeAndCopiedAndDestroyedThroughItsBase) {
    static_assert(std::is_default_constructible_v<SceneBuilderFactory>);
    static_assert(std::is_copy_constructible_v<SceneBuilderFactory>);
    static_assert(std::has_virtual_destructor_v<SceneBuilderFactory>);
    const SceneBuilderFactory original;
    SceneBuilderFactory copy(original);
    SceneBuilder* builder = copy.MakeSceneBuilder(nullptr);
    EXPECT_NE(builder, nullptr);
    copy.DeleteSceneBuilder(builder);
}

// ---- MakeSceneBuilder

TEST(SceneBuilderFactoryTest, MakesABuilderTiedToItsAdapter) {
    SceneAdapter adapter;
    SceneBuilderFactory factory;
    SceneBuilder* builder = factory.MakeSceneBuilder(&adapter);
    ASSERT_NE(builder, nullptr);
    EXPECT_EQ(builder->GetView3DAdapter(), &adapter);
    EXPECT_EQ(adapter._sceneBuilders, Builders{builder});
    EXPECT_EQ(adapter.log, CallLog()) << "the adapter is asked nothing";
    factory.DeleteSceneBuilder(builder);
}

TEST(SceneBuilderFactoryTest, ListsBuildersInTheOrderOfTheirMaking) {
    SceneAdapter adapter;
    SceneBuilderFactory factory;
    SceneBuilder* first = factory.MakeSceneBuilder(&adapter);
    SceneBuilder* second = factory.MakeSceneBuilder(&adapter);
    SceneBuilder* third = factory.MakeSceneBuilder(&adapter);
    EXPECT_EQ(adapter._sceneBuilders, (Builders{first, second, third}));
    factory.DeleteSceneBuilder(second);
    EXPECT_EQ(adapter._sceneBuilders, (Builders{first, third}));
    factory.DeleteSceneBuilder(first);
    EXPECT_EQ(adapter._sceneBuilders, (Builders{third}));
    factory.DeleteSceneBuilder(third);
    EXPECT_EQ(adapter._sceneBuilders, Builders());
}

TEST(SceneBuilderFactoryTest, EachAdapterListsItsOwnBuilders) {
    SceneAdapter one;
    SceneAdapter other;
    SceneBuilderFactory factory;
    SceneBuilder* ofOne = factory.MakeSceneBuilder(&one);
    SceneBuilder* ofOther = factory.MakeSceneBuilder(&other);
    EXPECT_EQ(one._sceneBuilders, Builders{ofOne});
    EXPECT_EQ(other._sceneBuilders, Builders{ofOther});
    factory.DeleteSceneBuilder(ofOne);
    EXPECT_EQ(other._sceneBuilders, Builders{ofOther});
    factory.DeleteSceneBuilder(ofOther);
}

TEST(SceneBuilderFactoryTest, WithoutAnAdapterMakesABuilderWhoseBeginsFail) {
    SceneBuilderFactory factory;
    SceneBuilder* builder = factory.MakeSceneBuilder(nullptr);
    ASSERT_NE(builder, nullptr);
    EXPECT_EQ(builder->GetView3DAdapter(), nullptr);
    EXPECT_FALSE(builder->ConstructionBegin());
    EXPECT_FALSE(builder->SceneBegin(7, L""));
    factory.DeleteSceneBuilder(builder);
    EXPECT_EQ(builder, nullptr);
}

TEST(SceneBuilderFactoryTest, MakesWhatADerivedFactoryMakes) {
    SceneAdapter adapter;
    OpenBuilderFactory factory;
    SceneBuilder* builder = factory.MakeSceneBuilder(&adapter);
    EXPECT_NE(dynamic_cast<OpenBuilder*>(builder), nullptr);
    EXPECT_EQ(builder->GetView3DAdapter(), &adapter);
    EXPECT_EQ(adapter._sceneBuilders, Builders{builder});
    factory.DeleteSceneBuilder(builder);
}

TEST(SceneBuilderFactoryTest, ANullFromADerivedFactoryIsAnsweredAndListedNowhere) {
    class Barren : public SceneBuilderFactory {
    protected:
        SceneBuilder* makeSceneBuilderImpl() override { return nullptr; }
    };
    SceneAdapter adapter;
    Barren factory;
    EXPECT_EQ(factory.MakeSceneBuilder(&adapter), nullptr);
    EXPECT_EQ(factory.MakeSceneBuilder(nullptr), nullptr);
    EXPECT_EQ(adapter._sceneBuilders, Builders());
}

// ---- DeleteSceneBuilder

TEST(SceneBuilderFactoryTest, DeletingNullDoesNothing) {
    SceneBuilderFactory factory;
    SceneBuilder* builder = nullptr;
    factory.DeleteSceneBuilder(builder);
    EXPECT_EQ(builder, nullptr);
}

TEST(SceneBuilderFactoryTest, DeletingDestroysADerivedBuilderAndNullsThePointer) {
    CallLog destroyed;
    OpenBuilderFactory factory(&destroyed);
    SceneAdapter adapter;
    for (SceneAdapter* const tiedTo : {static_cast<SceneAdapter*>(nullptr), &adapter}) {
        destroyed.clear();
        SceneBuilder* builder = factory.MakeSceneBuilder(tiedTo);
        EXPECT_EQ(destroyed, CallLog());
        factory.DeleteSceneBuilder(builder);
        EXPECT_EQ(builder, nullptr);
        EXPECT_EQ(destroyed, CallLog{"~OpenBuilder"});
    }
}

TEST(SceneBuilderFactoryTest, DeletingRemovesOnlyTheFirstEntryOfTheBuilder) {
    SceneAdapter adapter;
    SceneBuilderFactory factory;
    SceneBuilder* first = factory.MakeSceneBuilder(&adapter);
    SceneBuilder* second = factory.MakeSceneBuilder(&adapter);
    SceneBuilder* const gone = first;
    adapter._sceneBuilders = {second, first, second, first, nullptr};
    factory.DeleteSceneBuilder(first);
    EXPECT_EQ(adapter._sceneBuilders, (Builders{second, second, gone, nullptr}));
    adapter._sceneBuilders = {second};
    factory.DeleteSceneBuilder(second);
}

TEST(SceneBuilderFactoryTest, DeletingABuilderThatIsNotListedStillDestroysIt) {
    CallLog destroyed;
    SceneAdapter adapter;
    OpenBuilderFactory factory(&destroyed);
    SceneBuilder* builder = factory.MakeSceneBuilder(&adapter);
    adapter._sceneBuilders = {nullptr};
    factory.DeleteSceneBuilder(builder);
    EXPECT_EQ(builder, nullptr);
    EXPECT_EQ(destroyed, CallLog{"~OpenBuilder"});
    EXPECT_EQ(adapter._sceneBuilders, Builders{nullptr});
}

TEST(SceneBuilderFactoryTest, DeletingAsksTheAdapterNothing) {
    SceneAdapter adapter;
    SceneBuilderFactory factory;
    SceneBuilder* builder = factory.MakeSceneBuilder(&adapter);
    builder->ConstructionBegin();
    builder->BodyBegin(7, L"");
    adapter.takeLog();
    factory.DeleteSceneBuilder(builder);
    EXPECT_EQ(adapter.log, CallLog());
    EXPECT_NE(adapter._rootNode->GetChild(7), nullptr) << "what was built stays";
}

TEST(SceneBuilderFactoryTest, AnAdapterAsksItsBuildersForAnEntity) {
    SceneAdapter adapter;
    SceneBuilderFactory factory;
    SceneBuilder* first = factory.MakeSceneBuilder(&adapter);
    SceneBuilder* second = factory.MakeSceneBuilder(&adapter);
    adapter.openOnly(adapter._rootNode);
    first->SceneBegin(3, L"");
    first->ContainerBegin(12, L"", SceneBuilder::AddressedContainer);
    EntityId out;
    adapter.Convert(pathOf({3, 12, 7, FaceType, 4, 5, 6}), out);
    EXPECT_EQ(out, EntityId(7, FaceType, 4)) << "the first builder's";
    factory.DeleteSceneBuilder(first);
    adapter.Convert(pathOf({7, FaceType, 4, 5, 6}), out);
    EXPECT_EQ(out, EntityId(7, FaceType, 4)) << "the second builder's";
    factory.DeleteSceneBuilder(second);
}

}  // namespace
}  // namespace KesVizCore
