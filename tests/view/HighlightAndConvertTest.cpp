// Questions that the adapter passes on: to its highlight strategy and to its scene builders.

#include "view/ViewTestKit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <typeinfo>
#include <utility>
#include <vector>

namespace KesVizCore {
namespace {

using support::pathOf;
using support::RecordingAdapter;
using testing::ElementsAre;
using testing::IsEmpty;

// --- IsHighlighted ------------------------------------------------------------------------------

/// A strategy whose IsApplied is the test's.
class ScriptedStrategy : public IViewDoUndoStrategy {
public:
    explicit ScriptedStrategy(std::function<bool(const RenderId&)> answer)
        : _answer(std::move(answer)) {}

    bool Apply(const RenderId&) override { return otherCall(); }
    bool Undo(const RenderId&) override { return otherCall(); }
    void UndoAll() override { otherCall(); }
    bool IsApplied(const RenderId& id) override { return _answer(id); }

private:
    static bool otherCall() {
        ADD_FAILURE() << "the adapter asks IsApplied alone";
        return false;
    }
    std::function<bool(const RenderId&)> _answer;
};

TEST(IsHighlightedTest, NothingIsHighlightedWithoutAStrategy) {
    RecordingAdapter adapter;
    ScriptedStrategy hide([](const RenderId&) { return true; });
    adapter.SetHideStrategy(&hide);  // which is not asked
    EXPECT_FALSE(adapter.IsHighlighted(pathOf({1})));
}

TEST(IsHighlightedTest, AnswersWhatTheStrategyAnswersForThatId) {
    RecordingAdapter adapter;
    std::vector<std::string> asked;
    ScriptedStrategy highlight([&](const RenderId& id) {
        asked.push_back(id.ToString());
        return id == pathOf({1, 2});
    });
    adapter.SetHighlightStrategy(&highlight);
    EXPECT_TRUE(adapter.IsHighlighted(pathOf({1, 2})));
    EXPECT_FALSE(adapter.IsHighlighted(pathOf({1, 3})));
    EXPECT_FALSE(adapter.IsHighlighted(RenderId()));
    EXPECT_THAT(asked, ElementsAre("[ 1, 2 View3D ]", "[ 1, 3 View3D ]", "[  Unknown ]"));
}

TEST(IsHighlightedTest, StandardExceptionPassesThroughAsItIs) {
    const std::out_of_range thrown("not in this view");
    RecordingAdapter adapter;
    ScriptedStrategy highlight([&](const RenderId&) -> bool { throw thrown; });
    adapter.SetHighlightStrategy(&highlight);
    try {
        adapter.IsHighlighted(pathOf({1}));
        FAIL() << "nothing thrown";
    } catch (const std::exception& error) {
        EXPECT_EQ(typeid(error), typeid(std::out_of_range));
        EXPECT_STREQ(error.what(), "not in this view");
    }
}

TEST(IsHighlightedTest, StandardExceptionIsNotCopiedOnItsWay) {
    /// Derived by the host, told apart by its address.
    struct HostError : std::exception {};
    const std::exception* address = nullptr;
    RecordingAdapter adapter;
    ScriptedStrategy highlight([&](const RenderId&) -> bool {
        try {
            throw HostError();
        } catch (const HostError& error) {
            address = &error;
            throw;
        }
    });
    adapter.SetHighlightStrategy(&highlight);
    try {
        adapter.IsHighlighted(pathOf({1}));
        FAIL() << "nothing thrown";
    } catch (const HostError& error) {
        EXPECT_EQ(&error, address);
    }
}

// The message names an EntityId although a RenderId is asked for: hosts know it by these words.
TEST(IsHighlightedTest, ForeignExceptionComesOutAsARuntimeError) {
    RecordingAdapter adapter;
    ScriptedStrategy highlight([](const RenderId&) -> bool { throw 5; });
    adapter.SetHighlightStrategy(&highlight);
    try {
        adapter.IsHighlighted(pathOf({1}));
        FAIL() << "nothing thrown";
    } catch (const std::exception& error) {
        EXPECT_EQ(typeid(error), typeid(std::runtime_error));
        EXPECT_STREQ(
            error.what(),
            "Unrecognized Exception thrown from AView3DAdapter::IsHighlighted( const EntityId& )");
    }
}

// --- Convert ------------------------------------------------------------------------------------

/// A builder that answers the same entity for every path and tells that it was asked.
class AnsweringBuilder : public SceneBuilder {
public:
    AnsweringBuilder(std::vector<std::string>& log, std::string name, const EntityId& answer)
        : _log(log), _name(std::move(name)), _answer(answer) {}
    ~AnsweringBuilder() override = default;

    void ExtractEntityId(const RenderId& id, EntityId& out) const override {
        _log.push_back(_name + " " + id.ToString());
        out = _answer;
    }

private:
    std::vector<std::string>& _log;
    std::string _name;
    EntityId _answer;
};

/// Three builders of which the tests choose.
struct Builders {
    std::vector<std::string> log;
    AnsweringBuilder emptyFace{log, "emptyFace", EntityId(0, FaceType, 0)};
    AnsweringBuilder emptyEdge{log, "emptyEdge", EntityId(0, EdgeType, 0)};
    AnsweringBuilder body{log, "body", EntityId(0, BodyType, 7)};
    AnsweringBuilder face{log, "face", EntityId(7, FaceType, 9)};
    RecordingAdapter adapter;
    EntityId out{1, VertexType, 2};
};

TEST(ConvertTest, WithoutBuildersTheAnswerStaysAsItWas) {
    Builders builders;
    builders.adapter.Convert(pathOf({1, 2}), builders.out);
    EXPECT_EQ(builders.out, EntityId(1, VertexType, 2));
}

TEST(ConvertTest, AsksInTheOrderOfRegistrationAndStopsAtTheFirstAnswer) {
    Builders builders;
    builders.adapter._sceneBuilders = {&builders.emptyFace, &builders.body, &builders.face};
    builders.adapter.Convert(pathOf({1, 2}), builders.out);
    EXPECT_EQ(builders.out, EntityId(0, BodyType, 7));
    EXPECT_THAT(builders.log, ElementsAre("emptyFace [ 1, 2 View3D ]", "body [ 1, 2 View3D ]"));
}

TEST(ConvertTest, WithoutAnyAnswerTheLastBuildersIsLeft) {
    Builders builders;
    builders.adapter._sceneBuilders = {&builders.emptyFace, &builders.emptyEdge};
    builders.adapter.Convert(pathOf({1}), builders.out);
    EXPECT_EQ(builders.out, EntityId(0, EdgeType, 0));
    EXPECT_THAT(builders.log, ElementsAre("emptyFace [ 1 View3D ]", "emptyEdge [ 1 View3D ]"));
}

TEST(ConvertTest, PassesOverNullBuilders) {
    Builders builders;
    builders.adapter._sceneBuilders = {nullptr, &builders.face, nullptr};
    builders.adapter.Convert(pathOf({1}), builders.out);
    EXPECT_EQ(builders.out, EntityId(7, FaceType, 9));
}

TEST(ConvertTest, NullBuildersAloneLeaveTheAnswerAsItWas) {
    Builders builders;
    builders.adapter._sceneBuilders = {nullptr, nullptr};
    builders.adapter.Convert(pathOf({1}), builders.out);
    EXPECT_EQ(builders.out, EntityId(1, VertexType, 2));
}

// What the answer held before does not count: only what a builder leaves in it stops the search.
TEST(ConvertTest, FullAnswerBeforehandDoesNotStopTheSearch) {
    Builders builders;
    builders.adapter._sceneBuilders = {&builders.face};
    ASSERT_FALSE(builders.out.IsEmpty());
    builders.adapter.Convert(pathOf({1}), builders.out);
    EXPECT_EQ(builders.out, EntityId(7, FaceType, 9));
}

TEST(ConvertTest, FindsTheEntityThatARegisteredBuilderPacked) {
    RecordingAdapter adapter;
    SceneBuilderFactory factory;
    SceneBuilder* builder = factory.MakeSceneBuilder(&adapter);
    ASSERT_NE(builder, nullptr);
    EntityId out;
    // Without a scene the builder reads owner, type and, from five ids on, the entity's own.
    adapter.Convert(pathOf({7, FaceType, 9, 0, 0}), out);
    EXPECT_EQ(out, EntityId(7, FaceType, 9));
    factory.DeleteSceneBuilder(builder);
    out.Clear();
    adapter.Convert(pathOf({7, FaceType, 9, 0, 0}), out);
    EXPECT_TRUE(out.IsEmpty());
}

}  // namespace
}  // namespace KesVizCore
