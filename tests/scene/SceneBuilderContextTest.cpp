#include "scene/SceneHost.h"

#include <KesVizCore/KesVizCore.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <type_traits>
#include <vector>

namespace KesVizCore {
namespace {

using support::CallLog;

/// Writes down what guards call; each Begin answers begins().
class LoggingBuilder : public SceneBuilder {
public:
    explicit LoggingBuilder(const bool& begins) : _begins(begins) {}

    bool ConstructionBegin() override { return begin("ConstructionBegin()"); }
    void ConstructionEnd() override { log.push_back("ConstructionEnd"); }
    bool SceneBegin(const std::uint64_t& id, const std::wstring& name) override {
        return begin("SceneBegin(" + getIdAndNameString(id, name) + ")");
    }
    void SceneEnd() override { log.push_back("SceneEnd"); }
    bool ContainerBegin(const std::uint64_t& id, const std::wstring& name,
                        const ContainerType& type) override {
        return begin("ContainerBegin(" + getIdAndNameString(id, name) + ", " +
                     std::to_string(type) + ")");
    }
    void ContainerEnd() override { log.push_back("ContainerEnd"); }
    bool BodyBegin(const std::uint64_t& id, const std::wstring& name) override {
        return begin("BodyBegin(" + getIdAndNameString(id, name) + ")");
    }
    bool BodyBegin(const std::uint64_t& id, const std::wstring& name,
                   const RGBAColor& color) override {
        return begin("BodyBegin(" + getIdAndNameString(id, name) + ", " +
                     std::to_string(color.ToInt32()) + ")");
    }
    void BodyEnd() override { log.push_back("BodyEnd"); }
    bool EntityTypeBegin(const EntityType& type, const std::wstring& name) override {
        return begin("EntityTypeBegin(" + std::to_string(type) + ", " + convertToString(name) +
                     ")");
    }
    void EntityTypeEnd() override { log.push_back("EntityTypeEnd"); }
    bool EntityBegin(const std::uint64_t& id, const std::wstring& name) override {
        return begin("EntityBegin(" + getIdAndNameString(id, name) + ")");
    }
    bool EntityBegin(const std::uint64_t& id, const std::wstring& name,
                     const RGBAColor& color) override {
        return begin("EntityBegin(" + getIdAndNameString(id, name) + ", " +
                     std::to_string(color.ToInt32()) + ")");
    }
    void EntityEnd() override { log.push_back("EntityEnd"); }
    bool SceneLevelBegin(const std::uint64_t& id, const std::wstring& name) override {
        return begin("SceneLevelBegin(" + getIdAndNameString(id, name) + ")");
    }
    void SceneLevelEnd() override { log.push_back("SceneLevelEnd"); }

    CallLog log;

private:
    bool begin(const std::string& call) {
        log.push_back(call);
        return _begins;
    }

    const bool& _begins;
};

class LoggingBuilderFactory : public SceneBuilderFactory {
public:
    bool begins = true;  ///< what the Begins of its builders answer

protected:
    SceneBuilder* makeSceneBuilderImpl() override { return new LoggingBuilder(begins); }
};

/// One kind of guard, made with id 7 and the name Name.
struct Guard {
    using Made = std::unique_ptr<ASceneBuilderContext>;

    const char* name;
    std::string begin;
    std::string end;
    bool okWithoutBuilder;
    std::function<Made(SceneBuilder*)> make;
    std::function<Made(const ASceneBuilderContext&)> copy;
    std::function<void(ASceneBuilderContext&, const ASceneBuilderContext&)> assign;
};

void PrintTo(const Guard& guard, std::ostream* out) {
    *out << guard.name;
}

template <typename Kind, typename... Arguments>
Guard guard(const char* name, const char* begin, const char* end, Arguments... arguments) {
    static_assert(std::is_base_of_v<ASceneBuilderContext, Kind>);
    return {name,
            begin,
            end,
            std::is_same_v<Kind, ContainerContext>,
            [=](SceneBuilder* builder) { return std::make_unique<Kind>(builder, arguments...); },
            [](const ASceneBuilderContext& copied) {
                return std::make_unique<Kind>(static_cast<const Kind&>(copied));
            },
            [](ASceneBuilderContext& to, const ASceneBuilderContext& from) {
                static_cast<Kind&>(to) = static_cast<const Kind&>(from);
            }};
}

std::vector<Guard> allGuards() {
    const std::uint64_t id = 7;
    const std::wstring name = L"Name";
    const RGBAColor color(1, 2, 3, 0);  // as a number 66051
    return {
        guard<ConstructionContext>("Construction", "ConstructionBegin()", "ConstructionEnd"),
        guard<SceneContext>("Scene", "SceneBegin(7 Name)", "SceneEnd", id, name),
        guard<SceneLevelContext>("SceneLevel", "SceneLevelBegin(7 Name)", "SceneLevelEnd", id,
                                 name),
        guard<ContainerContext>("AddressedContainer", "ContainerBegin(7 Name, 0)", "ContainerEnd",
                                id, name, SceneBuilder::AddressedContainer),
        guard<ContainerContext>("UnaddressedContainer", "ContainerBegin(7 Name, 1)", "ContainerEnd",
                                id, name, SceneBuilder::UnaddressedContainer),
        guard<BodyContext>("Body", "BodyBegin(7 Name)", "BodyEnd", id, name),
        guard<EntityTypeContext>("EntityType", "EntityTypeBegin(10002, Name)", "EntityTypeEnd",
                                 FaceType, name),
        guard<EntityContext>("ColoredEntity", "EntityBegin(7 Name, 66051)", "EntityEnd", id, name,
                             true, color),
        guard<EntityContext>("PlainEntity", "EntityBegin(7 Name)", "EntityEnd", id, name, false,
                             color),
    };
}

std::string nameOf(const testing::TestParamInfo<Guard>& tested) {
    return tested.param.name;
}

class SceneBuilderContextTest : public testing::TestWithParam<Guard> {
protected:
    SceneBuilderContextTest() : made(factory.MakeSceneBuilder(nullptr)) {}
    ~SceneBuilderContextTest() override { factory.DeleteSceneBuilder(made); }

    CallLog& log() const { return static_cast<LoggingBuilder*>(made)->log; }

    LoggingBuilderFactory factory;
    SceneBuilder* made;
};

TEST_P(SceneBuilderContextTest, BeginsInTheConstructorAndEndsInTheDestructor) {
    auto context = GetParam().make(made);
    EXPECT_TRUE(context->IsOK());
    EXPECT_EQ(log(), CallLog{GetParam().begin});
    context.reset();
    EXPECT_EQ(log(), (CallLog{GetParam().begin, GetParam().end}));
}

TEST_P(SceneBuilderContextTest, DoesNotEndWhatCouldNotBegin) {
    factory.begins = false;
    auto context = GetParam().make(made);
    EXPECT_FALSE(context->IsOK());
    context.reset();
    EXPECT_EQ(log(), CallLog{GetParam().begin});
}

// A ContainerContext alone takes a missing builder for a success.
TEST_P(SceneBuilderContextTest, IsOKWithoutABuilderOnlyForAContainer) {
    auto context = GetParam().make(nullptr);
    EXPECT_EQ(context->IsOK(), GetParam().okWithoutBuilder);
    context.reset();
    EXPECT_EQ(log(), CallLog());
}

// Copies share what they end: hosts keep guards on the stack and never copy them.
TEST_P(SceneBuilderContextTest, ACopyEndsTheLevelASecondTime) {
    auto context = GetParam().make(made);
    auto copy = GetParam().copy(*context);
    EXPECT_TRUE(copy->IsOK());
    EXPECT_EQ(log(), CallLog{GetParam().begin});
    copy.reset();
    context.reset();
    EXPECT_EQ(log(), (CallLog{GetParam().begin, GetParam().end, GetParam().end}));
}

TEST_P(SceneBuilderContextTest, ACopyOfAFailedGuardEndsNothing) {
    factory.begins = false;
    auto context = GetParam().make(made);
    auto copy = GetParam().copy(*context);
    EXPECT_FALSE(copy->IsOK());
    copy.reset();
    context.reset();
    EXPECT_EQ(log(), CallLog{GetParam().begin});
}

// The level that the overwritten guard began is never ended.
TEST_P(SceneBuilderContextTest, AnAssignedGuardEndsTheLevelOfTheOther) {
    SceneBuilder* overwritten = factory.MakeSceneBuilder(nullptr);
    {
        const auto from = GetParam().make(made);
        const auto to = GetParam().make(overwritten);
        GetParam().assign(*to, *from);
        EXPECT_TRUE(to->IsOK());
    }
    EXPECT_EQ(log(), (CallLog{GetParam().begin, GetParam().end, GetParam().end}));
    EXPECT_EQ(static_cast<LoggingBuilder*>(overwritten)->log, CallLog{GetParam().begin});
    factory.DeleteSceneBuilder(overwritten);
}

TEST_P(SceneBuilderContextTest, AssigningAFailedGuardTakesTheFailureOver) {
    auto to = GetParam().make(made);
    factory.begins = false;
    const auto from = GetParam().make(made);
    GetParam().assign(*to, *from);
    EXPECT_FALSE(to->IsOK());
    to.reset();
    EXPECT_EQ(log(), (CallLog{GetParam().begin, GetParam().begin}));
}

INSTANTIATE_TEST_SUITE_P(AllGuards, SceneBuilderContextTest, testing::ValuesIn(allGuards()),
                         nameOf);

// ---- Together

TEST(SceneBuilderContextNestingTest, GuardsEndInTheReverseOrder) {
    LoggingBuilderFactory factory;
    SceneBuilder* builder = factory.MakeSceneBuilder(nullptr);
    {
        const ConstructionContext construction(builder);
        const SceneContext scene(builder, 1, L"Scene");
        const SceneLevelContext level(builder, 2, L"Level");
        const ContainerContext container(builder, 3, L"Container",
                                         SceneBuilder::AddressedContainer);
        const BodyContext body(builder, 4, L"Body");
        const EntityTypeContext type(builder, FaceType, L"Faces");
        const EntityContext entity(builder, 5, L"Face", false, RGBAColor::Red());
    }
    EXPECT_EQ(static_cast<LoggingBuilder*>(builder)->log,
              (CallLog{"ConstructionBegin()", "SceneBegin(1 Scene)", "SceneLevelBegin(2 Level)",
                       "ContainerBegin(3 Container, 0)", "BodyBegin(4 Body)",
                       "EntityTypeBegin(10002, Faces)", "EntityBegin(5 Face)", "EntityEnd",
                       "EntityTypeEnd", "BodyEnd", "ContainerEnd", "SceneLevelEnd", "SceneEnd",
                       "ConstructionEnd"}));
    factory.DeleteSceneBuilder(builder);
}

TEST(SceneBuilderContextNestingTest, GuardsOfABuildReachTheAdapterInOrder) {
    support::SceneAdapter adapter;
    SceneBuilderFactory factory;
    SceneBuilder* builder = factory.MakeSceneBuilder(&adapter);
    adapter.refusesToCreate.insert(6);
    {
        const ConstructionContext construction(builder);
        const SceneContext scene(builder, 2, L"Scene");
        {
            const BodyContext body(builder, 4, L"Body");
            const EntityTypeContext type(builder, EdgeType, L"Edges");
            const EntityContext refused(builder, 6, L"Edge", true, RGBAColor::Red());
            EXPECT_FALSE(refused.IsOK());
        }
        const EntityContext entity(builder, 5, L"Face", true, RGBAColor::Red());
    }
    EXPECT_EQ(adapter.log, (CallLog{"StartConstruction(null)",
                                    "OpenTopNode",
                                    "OpenNode(2, Scene)",
                                    "CreateNode(2, Scene)",
                                    "OpenNode(4, Body)",
                                    "CreateNode(4, Body)",
                                    "OpenNode(10001, Edges)",
                                    "CreateNode(10001, Edges)",
                                    "SetFilterId(10001)",
                                    "OpenNode(6, Edge)",
                                    "CreateNode(6, Edge)",
                                    "CloseNode",
                                    "CloseNode",
                                    "OpenNode(5, Face)",
                                    "CreateNode(5, Face)",
                                    "GetCurrentOpenNode",
                                    "ApplyAttribute(0)",
                                    "CloseNode",
                                    "CloseTopNode",
                                    "EndConstruction"}));
    EXPECT_TRUE(builder->HasContent());
    factory.DeleteSceneBuilder(builder);
}

TEST(SceneBuilderContextNestingTest, GuardsOfABuilderWithoutAnAdapterFail) {
    SceneBuilderFactory factory;
    SceneBuilder* builder = factory.MakeSceneBuilder(nullptr);
    for (const Guard& guard : allGuards()) {
        EXPECT_FALSE(guard.make(builder)->IsOK()) << guard.name;
    }
    EXPECT_FALSE(builder->HasContent());
    factory.DeleteSceneBuilder(builder);
}

TEST(SceneBuilderContextNestingTest, OnlyDerivedGuardsCanBeMade) {
    static_assert(!std::is_constructible_v<ASceneBuilderContext, SceneBuilder*>);
    static_assert(std::has_virtual_destructor_v<ASceneBuilderContext>);
}

}  // namespace
}  // namespace KesVizCore
