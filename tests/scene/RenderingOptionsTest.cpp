#include <KesVizCore/scene/IRenderingOptionsListener.h>
#include <KesVizCore/scene/RenderingOptions.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <ostream>
#include <random>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace KesVizCore {
namespace {

using testing::ElementsAre;

/// One option behind plain numbers: a flag is 0 or 1, a colour its ARGB word.
struct Option {
    const char* name;
    int standard;  // what the constructor sets
    int other;     // another value that may be stored
    std::function<int(const RenderingOptions&)> get;
    std::function<void(RenderingOptions&, int)> set;
};

void PrintTo(const Option& option, std::ostream* out) {
    *out << option.name;
}

std::string nameOf(const testing::TestParamInfo<Option>& tested) {
    return tested.param.name;
}

RGBAColor colorOf(int word) {
    const auto bits = static_cast<std::uint32_t>(word);
    const auto channel = [bits](unsigned shift) {
        return static_cast<unsigned short>(bits >> shift & 255U);
    };
    return RGBAColor(channel(16), channel(8), channel(0), channel(24));
}

Option flag(const char* name, bool standard, bool (RenderingOptions::*get)() const,
            void (RenderingOptions::*set)(bool)) {
    return {name, standard ? 1 : 0, standard ? 0 : 1,
            [get](const RenderingOptions& options) { return (options.*get)() ? 1 : 0; },
            [set](RenderingOptions& options, int value) { (options.*set)(value != 0); }};
}

Option color(const char* name, RGBAColor (RenderingOptions::*get)() const,
             void (RenderingOptions::*set)(const RGBAColor&)) {
    return {name, -1, RGBAColor(1, 2, 3, 4).ToInt32(),
            [get](const RenderingOptions& options) { return (options.*get)().ToInt32(); },
            [set](RenderingOptions& options, int value) { (options.*set)(colorOf(value)); }};
}

/// The sixteen options that are told of before they are stored.
const std::vector<Option>& flagsAndColors() {
    using O = RenderingOptions;
    static const std::vector<Option> options = {
        flag("DisplayFaces", true, &O::GetDisplayFaces, &O::SetDisplayFaces),
        flag("DisplayEdges", true, &O::GetDisplayEdges, &O::SetDisplayEdges),
        flag("DisplayVertices", false, &O::GetDisplayVertices, &O::SetDisplayVertices),
        flag("DisplayTessellation", false, &O::GetDisplayTessellation, &O::SetDisplayTessellation),
        flag("DisplayClouds", true, &O::GetDisplayClouds, &O::SetDisplayClouds),
        flag("DisplayPMI", true, &O::GetDisplayPMI, &O::SetDisplayPMI),
        flag("DisplayAxes", true, &O::GetDisplayAxes, &O::SetDisplayAxes),
        flag("DisplayNavigationCube", true, &O::GetDisplayNavigationCube,
             &O::SetDisplayNavigationCube),
        color("DefaultBodyColor", &O::GetDefaultBodyColor, &O::SetDefaultBodyColor),
        color("DefaultFaceColor", &O::GetDefaultFaceColor, &O::SetDefaultFaceColor),
        color("DefaultEdgeColor", &O::GetDefaultEdgeColor, &O::SetDefaultEdgeColor),
        color("DefaultTessEdgeColor", &O::GetDefaultTessEdgeColor, &O::SetDefaultTessEdgeColor),
        color("DefaultVertexColor", &O::GetDefaultVertexColor, &O::SetDefaultVertexColor),
        color("DefaultCloudColor", &O::GetDefaultCloudColor, &O::SetDefaultCloudColor),
        color("DefaultPMIColor", &O::GetDefaultPMIColor, &O::SetDefaultPMIColor),
        color("HighlightColor", &O::GetHighlightColor, &O::SetHighlightColor),
    };
    return options;
}

/// All seventeen, in the order of the record.
const std::vector<Option>& allOptions() {
    static const std::vector<Option> options = [] {
        std::vector<Option> all = flagsAndColors();
        all.push_back({"AntialiasLevel", 1, 8,
                       [](const RenderingOptions& from) { return from.GetAntialiasLevel(); },
                       [](RenderingOptions& in, int level) { in.SetAntialiasLevel(level); }});
        return all;
    }();
    return options;
}

/// Name and value of every option, for comparing whole records with good messages.
using Values = std::vector<std::pair<std::string, int>>;

Values valuesOf(const RenderingOptions& options) {
    Values values;
    for (const Option& option : allOptions()) {
        values.emplace_back(option.name, option.get(options));
    }
    return values;
}

Values standardValues() {
    Values values;
    for (const Option& option : allOptions()) {
        values.emplace_back(option.name, option.standard);
    }
    return values;
}

/// @p values but for one option.
Values with(Values values, const std::string& name, int value) {
    for (auto& one : values) {
        if (one.first == name) {
            one.second = value;
        }
    }
    return values;
}

/// A listener that does what a test tells it to.
class Listener : public IRenderingOptionsListener {
public:
    explicit Listener(std::function<void(RenderingOptions*)> action) : _action(std::move(action)) {}
    void OnOptionsChange(RenderingOptions* changed) override { _action(changed); }

private:
    std::function<void(RenderingOptions*)> _action;
};

/// A listener that appends its name to a list when it is told.
class Named : public Listener {
public:
    Named(const std::string& name, std::vector<std::string>& told)
        : Listener([name, &told](RenderingOptions*) { told.push_back(name); }) {}
};

/// Gives a test the name of a private member.
template <typename Tag, typename Tag::Member member>
struct Expose {
    friend typename Tag::Member exposed(Tag) { return member; }
};
struct NotifyTag {
    using Member = void (RenderingOptions::*)(RenderingOptions*);
    friend Member exposed(NotifyTag);
};
struct ListenersTag {
    using Member = std::vector<IRenderingOptionsListener*> RenderingOptions::*;
    friend Member exposed(ListenersTag);
};
template struct Expose<NotifyTag, &RenderingOptions::notify>;
template struct Expose<ListenersTag, &RenderingOptions::_listeners>;

// ---- The two interfaces

TEST(IRenderingOptionsTest, IsAnInterfaceDestroyedThroughItsBase) {
    static_assert(std::is_abstract_v<IRenderingOptions>);
    static_assert(std::has_virtual_destructor_v<IRenderingOptions>);
    static_assert(std::is_base_of_v<IRenderingOptions, RenderingOptions>);
    bool told = false;
    Listener listener([&](RenderingOptions*) { told = true; });
    auto derived = std::make_unique<RenderingOptions>();
    RenderingOptions* const options = derived.get();
    const std::unique_ptr<IRenderingOptions> base = std::move(derived);
    base->AddListener(&listener);
    EXPECT_EQ(base->GetNumberOfListeners(nullptr), 1U);
    options->SetDisplayFaces(false);
    EXPECT_TRUE(told);
    base->RemoveListener(&listener);
    EXPECT_EQ(base->GetNumberOfListeners(nullptr), 0U);
}

TEST(IRenderingOptionsTest, CountsListenersIn64Bits) {
    static_assert(
        std::is_same_v<decltype(std::declval<IRenderingOptions&>().GetNumberOfListeners(nullptr)),
                       std::uint64_t>);
}

TEST(IRenderingOptionsListenerTest, IsAnInterfaceDestroyedThroughItsBase) {
    static_assert(std::is_abstract_v<IRenderingOptionsListener>);
    static_assert(std::has_virtual_destructor_v<IRenderingOptionsListener>);
    const auto alive = std::make_shared<int>(0);
    std::unique_ptr<IRenderingOptionsListener> listener =
        std::make_unique<Listener>([alive](RenderingOptions*) {});
    EXPECT_EQ(alive.use_count(), 2);
    listener.reset();
    EXPECT_EQ(alive.use_count(), 1);
}

// ---- Construction

TEST(RenderingOptionsTest, HoldsTheDefaultsAndNoListener) {
    RenderingOptions options;
    EXPECT_TRUE(options.GetDisplayFaces());
    EXPECT_TRUE(options.GetDisplayEdges());
    EXPECT_FALSE(options.GetDisplayVertices());
    EXPECT_FALSE(options.GetDisplayTessellation());
    EXPECT_TRUE(options.GetDisplayClouds());
    EXPECT_TRUE(options.GetDisplayPMI());
    EXPECT_TRUE(options.GetDisplayAxes());
    EXPECT_TRUE(options.GetDisplayNavigationCube());
    const RGBAColor opaqueWhite(255, 255, 255, 255);
    EXPECT_EQ(options.GetDefaultBodyColor(), opaqueWhite);
    EXPECT_EQ(options.GetDefaultFaceColor(), opaqueWhite);
    EXPECT_EQ(options.GetDefaultEdgeColor(), opaqueWhite);
    EXPECT_EQ(options.GetDefaultTessEdgeColor(), opaqueWhite);
    EXPECT_EQ(options.GetDefaultVertexColor(), opaqueWhite);
    EXPECT_EQ(options.GetDefaultCloudColor(), opaqueWhite);
    EXPECT_EQ(options.GetDefaultPMIColor(), opaqueWhite);
    EXPECT_EQ(options.GetHighlightColor(), opaqueWhite);
    EXPECT_EQ(options.GetAntialiasLevel(), 1);
    EXPECT_EQ(options.GetNumberOfListeners(nullptr), 0U);
}

TEST(RenderingOptionsTest, CreateDefaultMakesNewOptionsWithTheDefaults) {
    const std::unique_ptr<RenderingOptions> one(RenderingOptions::CreateDefault());
    const std::unique_ptr<RenderingOptions> other(RenderingOptions::CreateDefault());
    ASSERT_NE(one, nullptr);
    ASSERT_NE(other, nullptr);
    EXPECT_NE(one, other);
    EXPECT_EQ(valuesOf(*one), standardValues());
    EXPECT_EQ(one->GetNumberOfListeners(nullptr), 0U);
}

TEST(RenderingOptionsTest, ACopyHoldsEveryValueAndTheListeners) {
    RenderingOptions options;
    Values expected;
    for (const Option& option : allOptions()) {
        option.set(options, option.other);
        expected.emplace_back(option.name, option.other);
    }
    std::vector<std::string> told;
    Named first("first", told);
    Named second("second", told);
    options.AddListener(&first);
    options.AddListener(&second);

    RenderingOptions copy(options);
    EXPECT_EQ(valuesOf(copy), expected);
    copy.SetDisplayFaces(!copy.GetDisplayFaces());
    EXPECT_THAT(told, ElementsAre("first", "second"));
}

TEST(RenderingOptionsTest, ACopyHasAListOfItsOwn) {
    std::vector<std::string> told;
    Named listener("listener", told);
    RenderingOptions options;
    options.AddListener(&listener);
    RenderingOptions copy(options);
    copy.RemoveListener(&listener);
    EXPECT_EQ(options.GetNumberOfListeners(nullptr), 1U);
    EXPECT_EQ(copy.GetNumberOfListeners(nullptr), 0U);
}

// ---- Listeners

TEST(RenderingOptionsTest, AddListenerIgnoresNull) {
    RenderingOptions options;
    options.AddListener(nullptr);
    EXPECT_EQ(options.GetNumberOfListeners(nullptr), 0U);
    options.SetDisplayFaces(false);
    EXPECT_FALSE(options.GetDisplayFaces());
}

TEST(RenderingOptionsTest, ListenersAreToldInTheOrderInWhichTheyWereAdded) {
    RenderingOptions options;
    std::vector<std::string> told;
    Named third("third", told);
    Named first("first", told);
    Named second("second", told);
    options.AddListener(&first);
    options.AddListener(&second);
    options.AddListener(&third);
    options.SetDisplayFaces(false);
    EXPECT_THAT(told, ElementsAre("first", "second", "third"));
}

TEST(RenderingOptionsTest, AListenerAddedTwiceIsToldTwiceEachTimeInItsPlace) {
    RenderingOptions options;
    std::vector<std::string> told;
    Named twice("twice", told);
    Named once("once", told);
    options.AddListener(&twice);
    options.AddListener(&once);
    options.AddListener(&twice);
    options.SetDisplayFaces(false);
    EXPECT_THAT(told, ElementsAre("twice", "once", "twice"));
}

TEST(RenderingOptionsTest, RemoveListenerRemovesEveryEntryOfIt) {
    RenderingOptions options;
    std::vector<std::string> told;
    Named twice("twice", told);
    Named once("once", told);
    options.AddListener(&twice);
    options.AddListener(&once);
    options.AddListener(&twice);
    options.RemoveListener(&twice);
    EXPECT_EQ(options.GetNumberOfListeners(nullptr), 1U);
    options.SetDisplayFaces(false);
    EXPECT_THAT(told, ElementsAre("once"));
}

TEST(RenderingOptionsTest, RemoveListenerOfNullOrAStrangerChangesNothing) {
    RenderingOptions options;
    std::vector<std::string> told;
    Named listener("listener", told);
    Named stranger("stranger", told);
    options.AddListener(&listener);
    options.RemoveListener(&stranger);
    options.RemoveListener(nullptr);
    EXPECT_EQ(options.GetNumberOfListeners(nullptr), 1U);
}

TEST(RenderingOptionsTest, GetNumberOfListenersCountsEveryEntryWhateverItIsAsked) {
    RenderingOptions options;
    std::vector<std::string> told;
    Named twice("twice", told);
    Named once("once", told);
    Named stranger("stranger", told);
    options.AddListener(&twice);
    options.AddListener(&once);
    options.AddListener(&twice);
    EXPECT_EQ(options.GetNumberOfListeners(nullptr), 3U);
    EXPECT_EQ(options.GetNumberOfListeners(&twice), 3U);
    EXPECT_EQ(options.GetNumberOfListeners(&once), 3U);
    EXPECT_EQ(options.GetNumberOfListeners(&stranger), 3U);
}

// ---- What holds for each option

class EachOptionTest : public testing::TestWithParam<Option> {
protected:
    const Option& option = GetParam();
    RenderingOptions options;
};

TEST_P(EachOptionTest, HasItsDefault) {
    EXPECT_EQ(option.get(options), option.standard);
}

TEST_P(EachOptionTest, SetsItsOwnFieldAlone) {
    option.set(options, option.other);
    EXPECT_EQ(valuesOf(options), with(standardValues(), option.name, option.other));
    option.set(options, option.standard);
    EXPECT_EQ(valuesOf(options), standardValues());
}

TEST_P(EachOptionTest, SettingThePresentValueTellsNobody) {
    int calls = 0;
    Listener listener([&](RenderingOptions*) { ++calls; });
    options.AddListener(&listener);
    option.set(options, option.standard);
    EXPECT_EQ(calls, 0);
    option.set(options, option.other);
    EXPECT_EQ(calls, 1);
    option.set(options, option.other);
    EXPECT_EQ(calls, 1);
}

TEST_P(EachOptionTest, TellsEveryListenerOnceOfAChange) {
    std::vector<std::string> told;
    Named first("first", told);
    Named second("second", told);
    options.AddListener(&first);
    options.AddListener(&second);
    option.set(options, option.other);
    EXPECT_THAT(told, ElementsAre("first", "second"));
}

TEST_P(EachOptionTest, PassesACopyWithTheNewValueAndNothingElseChanged) {
    const RenderingOptions* passed = nullptr;
    Values values;
    Listener listener([&](RenderingOptions* changed) {
        passed = changed;
        values = valuesOf(*changed);
    });
    options.AddListener(&listener);
    option.set(options, option.other);
    EXPECT_NE(passed, nullptr);
    EXPECT_NE(passed, &options);
    EXPECT_EQ(values, with(standardValues(), option.name, option.other));
}

TEST_P(EachOptionTest, EveryListenerGetsTheSameCopy) {
    std::vector<RenderingOptions*> passed;
    Listener listener([&](RenderingOptions* changed) { passed.push_back(changed); });
    Listener other([&](RenderingOptions* changed) { passed.push_back(changed); });
    options.AddListener(&listener);
    options.AddListener(&other);
    option.set(options, option.other);
    ASSERT_EQ(passed.size(), 2U);
    EXPECT_EQ(passed[0], passed[1]);
}

TEST_P(EachOptionTest, TheCopyCarriesTheListeners) {
    std::uint64_t carried = 0;
    Listener listener(
        [&](RenderingOptions* changed) { carried = changed->GetNumberOfListeners(nullptr); });
    options.AddListener(&listener);
    options.AddListener(&listener);
    option.set(options, option.other);
    EXPECT_EQ(carried, 2U);
}

TEST_P(EachOptionTest, WhatAListenerDoesToTheCopyDoesNotReachTheOptions) {
    Listener listener([&](RenderingOptions* changed) {
        changed->RemoveListener(&listener);  // or the copy would tell of its own changes
        for (const Option& one : allOptions()) {
            const bool isOther = one.get(*changed) == one.other;
            one.set(*changed, isOther ? one.standard : one.other);
        }
    });
    options.AddListener(&listener);
    option.set(options, option.other);
    EXPECT_EQ(valuesOf(options), with(standardValues(), option.name, option.other));
    EXPECT_EQ(options.GetNumberOfListeners(nullptr), 1U);
}

INSTANTIATE_TEST_SUITE_P(RenderingOptions, EachOptionTest, testing::ValuesIn(allOptions()), nameOf);

// ---- What holds for flags and colours, but not for the antialias level

class EachFlagOrColorTest : public EachOptionTest {};

TEST_P(EachFlagOrColorTest, StillHoldsTheOldValueWhileListenersRun) {
    Values first;
    Values second;
    Listener listener([&](RenderingOptions*) { first = valuesOf(options); });
    Listener other([&](RenderingOptions*) { second = valuesOf(options); });
    options.AddListener(&listener);
    options.AddListener(&other);
    option.set(options, option.other);
    EXPECT_EQ(first, standardValues());
    EXPECT_EQ(second, standardValues());
    EXPECT_EQ(option.get(options), option.other);
}

TEST_P(EachFlagOrColorTest, KeepsTheOldValueWhenAListenerThrows) {
    std::vector<std::string> told;
    Listener throwing([](RenderingOptions*) { throw std::runtime_error("refused"); });
    Named behind("behind", told);
    options.AddListener(&throwing);
    options.AddListener(&behind);
    EXPECT_THROW(option.set(options, option.other), std::runtime_error);
    EXPECT_EQ(valuesOf(options), standardValues());
    EXPECT_TRUE(told.empty());
}

INSTANTIATE_TEST_SUITE_P(RenderingOptions, EachFlagOrColorTest, testing::ValuesIn(flagsAndColors()),
                         nameOf);

// ---- Colours compare by all four channels

class EachColorTest : public EachOptionTest {};

TEST_P(EachColorTest, ADifferenceInAnyChannelIsAChange) {
    int calls = 0;
    Listener listener([&](RenderingOptions*) { ++calls; });
    options.AddListener(&listener);
    int expected = 0;
    for (const RGBAColor& next : {RGBAColor(254, 255, 255, 255), RGBAColor(254, 254, 255, 255),
                                  RGBAColor(254, 254, 254, 255), RGBAColor(254, 254, 254, 254)}) {
        option.set(options, next.ToInt32());
        ++expected;
        EXPECT_EQ(calls, expected);
        EXPECT_EQ(option.get(options), next.ToInt32());
    }
}

INSTANTIATE_TEST_SUITE_P(RenderingOptions, EachColorTest,
                         testing::ValuesIn(flagsAndColors().begin() + 8, flagsAndColors().end()),
                         nameOf);

TEST(RenderingOptionsTest, AColorThatAListenerDestroysIsStoredAllTheSame) {
    RenderingOptions options;
    auto given = std::make_unique<RGBAColor>(RGBAColor::Red());
    Listener listener([&](RenderingOptions*) { given.reset(); });
    options.AddListener(&listener);
    options.SetHighlightColor(*given);
    EXPECT_EQ(options.GetHighlightColor(), RGBAColor::Red());
}

// ---- Antialias level

TEST(RenderingOptionsTest, SetAntialiasLevelKeepsTheSevenAllowedLevelsAndStores1ForOthers) {
    const std::vector<int> allowed{1, 2, 4, 8, 16, 32, 64};
    for (int level = -200; level <= 300; ++level) {
        const bool isAllowed = std::find(allowed.begin(), allowed.end(), level) != allowed.end();
        for (const int before : allowed) {
            RenderingOptions options;
            options.SetAntialiasLevel(before);
            options.SetAntialiasLevel(level);
            ASSERT_EQ(options.GetAntialiasLevel(), isAllowed ? level : 1)
                << "level " << level << " after " << before;
        }
    }
}

TEST(RenderingOptionsTest, SetAntialiasLevelOf3Stores1AndOf64Stores64AndOf128Stores1) {
    RenderingOptions options;
    options.SetAntialiasLevel(3);
    EXPECT_EQ(options.GetAntialiasLevel(), 1);
    options.SetAntialiasLevel(64);
    EXPECT_EQ(options.GetAntialiasLevel(), 64);
    options.SetAntialiasLevel(128);
    EXPECT_EQ(options.GetAntialiasLevel(), 1);
}

TEST(RenderingOptionsTest, SetAntialiasLevelStores1ForTheLargestAndSmallestNumbers) {
    for (const int level : {std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        RenderingOptions options;
        options.SetAntialiasLevel(16);
        options.SetAntialiasLevel(level);
        EXPECT_EQ(options.GetAntialiasLevel(), 1) << level;
    }
}

// Unlike the other setters, this one stores first.
TEST(RenderingOptionsTest, SetAntialiasLevelAlreadyHoldsTheNewLevelWhileListenersRun) {
    RenderingOptions options;
    Values original;
    Values copy;
    Listener listener([&](RenderingOptions* changed) {
        original = valuesOf(options);
        copy = valuesOf(*changed);
    });
    options.AddListener(&listener);
    options.SetAntialiasLevel(16);
    EXPECT_EQ(original, with(standardValues(), "AntialiasLevel", 16));
    EXPECT_EQ(copy, original);
}

TEST(RenderingOptionsTest, SetAntialiasLevelKeepsTheNewLevelWhenAListenerThrows) {
    RenderingOptions options;
    Listener throwing([](RenderingOptions*) { throw std::runtime_error("refused"); });
    options.AddListener(&throwing);
    EXPECT_THROW(options.SetAntialiasLevel(16), std::runtime_error);
    EXPECT_EQ(options.GetAntialiasLevel(), 16);
}

TEST(RenderingOptionsTest, SetAntialiasLevelTellsOfTheFallBackTo1) {
    RenderingOptions options;
    options.SetAntialiasLevel(16);
    std::vector<int> levels;
    Listener listener(
        [&](RenderingOptions* changed) { levels.push_back(changed->GetAntialiasLevel()); });
    options.AddListener(&listener);
    options.SetAntialiasLevel(3);
    EXPECT_THAT(levels, ElementsAre(1));
}

// On purpose: the request is compared with the stored level, not what becomes of it.
TEST(RenderingOptionsTest, SetAntialiasLevelTellsOfAnUnallowedLevelThoughTheStored1Stays) {
    RenderingOptions options;
    std::vector<int> levels;
    Listener listener(
        [&](RenderingOptions* changed) { levels.push_back(changed->GetAntialiasLevel()); });
    options.AddListener(&listener);
    options.SetAntialiasLevel(3);
    options.SetAntialiasLevel(3);
    options.SetAntialiasLevel(0);
    EXPECT_THAT(levels, ElementsAre(1, 1, 1));
}

TEST(RenderingOptionsTest, SetAntialiasLevelOf1From1TellsNobody) {
    RenderingOptions options;
    int calls = 0;
    Listener listener([&](RenderingOptions*) { ++calls; });
    options.AddListener(&listener);
    options.SetAntialiasLevel(1);
    EXPECT_EQ(calls, 0);
}

// ---- notify

TEST(RenderingOptionsTest, NotifyOfNothingTellsNobody) {
    RenderingOptions options;
    int calls = 0;
    Listener listener([&](RenderingOptions*) { ++calls; });
    options.AddListener(&listener);
    (options.*exposed(NotifyTag()))(nullptr);
    EXPECT_EQ(calls, 0);
}

TEST(RenderingOptionsTest, NotifyPassesOnWhatItIsGiven) {
    RenderingOptions options;
    RenderingOptions given;
    RenderingOptions* passed = nullptr;
    Listener listener([&](RenderingOptions* changed) { passed = changed; });
    options.AddListener(&listener);
    (options.*exposed(NotifyTag()))(&given);
    EXPECT_EQ(passed, &given);
}

TEST(RenderingOptionsTest, NotifySkipsNullEntries) {
    RenderingOptions options;
    std::vector<std::string> told;
    Named listener("listener", told);
    options.*exposed(ListenersTag()) = {nullptr, &listener, nullptr};
    (options.*exposed(NotifyTag()))(&options);
    EXPECT_THAT(told, ElementsAre("listener"));
}

// ---- Listeners that come and go while they are told

TEST(RenderingOptionsTest, AListenerMayRemoveItself) {
    RenderingOptions options;
    std::vector<std::string> told;
    Named before("before", told);
    Listener leaving([&](RenderingOptions*) {
        told.push_back("leaving");
        options.RemoveListener(&leaving);
    });
    Named behind("behind", told);
    options.AddListener(&before);
    options.AddListener(&leaving);
    options.AddListener(&behind);
    options.SetDisplayFaces(false);
    options.SetDisplayFaces(true);
    EXPECT_THAT(told, ElementsAre("before", "leaving", "behind", "before", "behind"));
}

TEST(RenderingOptionsTest, AListenerAddedTwiceThatRemovesItselfIsToldOnce) {
    RenderingOptions options;
    std::vector<std::string> told;
    Listener leaving([&](RenderingOptions*) {
        told.push_back("leaving");
        options.RemoveListener(&leaving);
    });
    options.AddListener(&leaving);
    options.AddListener(&leaving);
    options.SetDisplayFaces(false);
    EXPECT_THAT(told, ElementsAre("leaving"));
}

TEST(RenderingOptionsTest, AListenerRemovedAndDestroyedByAnEarlierOneIsNotTold) {
    RenderingOptions options;
    std::vector<std::string> told;
    auto doomed = std::make_unique<Named>("doomed", told);
    Listener removing([&](RenderingOptions*) {
        told.push_back("removing");
        options.RemoveListener(doomed.get());
        doomed.reset();
    });
    Named behind("behind", told);
    options.AddListener(&removing);
    options.AddListener(doomed.get());
    options.AddListener(&behind);
    options.SetDisplayFaces(false);
    EXPECT_THAT(told, ElementsAre("removing", "behind"));
    EXPECT_EQ(options.GetNumberOfListeners(nullptr), 2U);
}

TEST(RenderingOptionsTest, AnEarlierListenerMayBeRemovedWithoutAnyOtherBeingMissed) {
    RenderingOptions options;
    std::vector<std::string> told;
    Named first("first", told);
    Listener removing([&](RenderingOptions*) {
        told.push_back("removing");
        options.RemoveListener(&first);
    });
    Named third("third", told);
    Named fourth("fourth", told);
    options.AddListener(&first);
    options.AddListener(&removing);
    options.AddListener(&third);
    options.AddListener(&fourth);
    options.SetDisplayFaces(false);
    EXPECT_THAT(told, ElementsAre("first", "removing", "third", "fourth"));
}

TEST(RenderingOptionsTest, AListenerAddedWhileOthersAreToldIsToldFromTheNextChangeOn) {
    RenderingOptions options;
    std::vector<std::string> told;
    std::vector<std::unique_ptr<Named>> added;
    Listener adding([&](RenderingOptions*) {
        told.push_back("adding");
        for (int more = 0; more < 100 && added.size() < 100; ++more) {  // so the list must move
            added.push_back(std::make_unique<Named>("added", told));
            options.AddListener(added.back().get());
        }
    });
    Named behind("behind", told);
    options.AddListener(&adding);
    options.AddListener(&behind);
    options.SetDisplayFaces(false);
    EXPECT_THAT(told, ElementsAre("adding", "behind"));
    told.clear();
    options.SetDisplayFaces(true);
    EXPECT_EQ(told.size(), 102U);
}

TEST(RenderingOptionsTest, AListenerThatLeavesAndComesBackWithinAChangeCountsAsNeverGone) {
    RenderingOptions options;
    std::vector<std::string> told;
    Named moved("moved", told);
    Named last("last", told);
    Listener moving([&](RenderingOptions*) {
        options.RemoveListener(&moved);
        options.AddListener(&moved);
    });
    options.AddListener(&moving);
    options.AddListener(&moved);
    options.AddListener(&last);
    options.SetDisplayFaces(false);
    EXPECT_THAT(told, ElementsAre("moved", "last"));
    told.clear();
    options.RemoveListener(&moving);
    options.SetDisplayFaces(true);
    EXPECT_THAT(told, ElementsAre("last", "moved"));
}

TEST(RenderingOptionsTest, TheLastListenerMayGoWhileItIsToldAndTheValueIsStored) {
    RenderingOptions options;
    auto only = std::make_unique<Listener>([](RenderingOptions*) {});
    Listener removing([&](RenderingOptions*) {
        options.RemoveListener(only.get());
        only.reset();
        options.RemoveListener(&removing);
    });
    options.AddListener(&removing);
    options.AddListener(only.get());
    options.SetDisplayFaces(false);
    EXPECT_FALSE(options.GetDisplayFaces());
    EXPECT_EQ(options.GetNumberOfListeners(nullptr), 0U);
}

TEST(RenderingOptionsTest, ListenersMayComeAndGoDuringAnAntialiasChangeToo) {
    RenderingOptions options;
    std::vector<std::string> told;
    auto doomed = std::make_unique<Named>("doomed", told);
    Named added("added", told);
    Listener changing([&](RenderingOptions*) {
        options.RemoveListener(doomed.get());
        doomed.reset();
        options.AddListener(&added);
    });
    options.AddListener(&changing);
    options.AddListener(doomed.get());
    options.SetAntialiasLevel(8);
    EXPECT_TRUE(told.empty());
    EXPECT_EQ(options.GetNumberOfListeners(nullptr), 2U);
}

// ---- Changes within changes

TEST(RenderingOptionsTest, AListenerMaySetAnotherOptionAndBothAreStored) {
    RenderingOptions options;
    std::vector<Values> copies;
    Listener listener([&](RenderingOptions* changed) {
        copies.push_back(valuesOf(*changed));
        if (copies.size() == 1) {
            options.SetDisplayEdges(false);
        }
    });
    options.AddListener(&listener);
    options.SetDisplayFaces(false);
    const Values withoutFaces = with(standardValues(), "DisplayFaces", 0);
    // The inner change is told of while the outer one is not stored yet.
    EXPECT_THAT(copies, ElementsAre(withoutFaces, with(standardValues(), "DisplayEdges", 0)));
    EXPECT_EQ(valuesOf(options), with(withoutFaces, "DisplayEdges", 0));
}

TEST(RenderingOptionsTest, AListenerRemovedInAnInnerChangeIsNotToldOfTheOuterOne) {
    RenderingOptions options;
    std::vector<std::string> told;
    auto doomed = std::make_unique<Named>("doomed", told);
    Listener inner([&](RenderingOptions*) {
        if (doomed != nullptr) {
            options.RemoveListener(doomed.get());
            doomed.reset();
        }
    });
    bool within = false;
    Listener outer([&](RenderingOptions*) {
        if (!within) {
            within = true;
            options.SetDisplayEdges(false);
        }
    });
    options.AddListener(&outer);
    options.AddListener(&inner);
    options.AddListener(doomed.get());
    options.SetDisplayFaces(false);
    EXPECT_TRUE(told.empty());
    EXPECT_FALSE(options.GetDisplayFaces());
    EXPECT_FALSE(options.GetDisplayEdges());
}

// ---- All operations together

TEST(RenderingOptionsTest, BehavesLikeAListOfValuesUnderRandomChanges) {
    std::mt19937 random(20268);
    RenderingOptions options;
    Values model = standardValues();
    std::vector<std::size_t> listed;  // numbers of listeners, in list order
    std::vector<std::size_t> told;
    std::vector<Listener> listeners;
    for (std::size_t number = 0; number < 4; ++number) {
        listeners.emplace_back([&told, number](RenderingOptions*) { told.push_back(number); });
    }
    for (int step = 0; step < 5000; ++step) {
        const std::size_t number = random() % 4;
        const Option& option = allOptions()[random() % 17];
        SCOPED_TRACE("step " + std::to_string(step) + " at " + option.name);
        told.clear();
        std::vector<std::size_t> expectedTold;
        switch (random() % 8) {
            case 0:
                options.AddListener(&listeners[number]);
                listed.push_back(number);
                break;
            case 1:
                options.RemoveListener(&listeners[number]);
                listed.erase(std::remove(listed.begin(), listed.end(), number), listed.end());
                break;
            default: {
                const int value = random() % 2 == 0 ? option.standard : option.other;
                expectedTold = option.get(options) == value ? expectedTold : listed;
                option.set(options, value);
                model = with(model, option.name, value);
                break;
            }
        }
        ASSERT_EQ(valuesOf(options), model);
        ASSERT_EQ(options.GetNumberOfListeners(nullptr), listed.size());
        ASSERT_EQ(told, expectedTold);
    }
}

}  // namespace
}  // namespace KesVizCore
