/// @file
/// How a builder composes the render id of an entity and takes it apart again.

#include "scene/SceneHost.h"

#include <KesVizCore/KesVizCore.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace KesVizCore {
namespace {

using support::pathOf;
using support::SceneAdapter;
using support::valuesOf;

using Values = std::vector<std::uint64_t>;

constexpr std::uint64_t kLargest = std::numeric_limits<std::uint64_t>::max();

class RenderIdCompositionTest : public testing::Test {
protected:
    RenderIdCompositionTest() : builder(factory.MakeSceneBuilder(&adapter)) {}
    ~RenderIdCompositionTest() override { factory.DeleteSceneBuilder(builder); }

    void begin(const Values& scenes, const Values& containers) {
        builder->ConstructionBegin();
        builder->Clear(pathOf({}));
        for (const std::uint64_t scene : scenes) {
            builder->SceneBegin(scene, L"");
        }
        for (const std::uint64_t container : containers) {
            builder->ContainerBegin(container, L"", SceneBuilder::AddressedContainer);
        }
    }
    Values built(const EntityId& entity) const {
        RenderId out;
        builder->BuildRenderId(out, entity, RGBAColor::Red(), RGBAColor::Blue());
        return valuesOf(out);
    }
    Values built(EntityType leading, const EntityId& entity) const {
        RenderId out;
        builder->BuildRenderId(out, leading, entity, RGBAColor::Red(), RGBAColor::Blue());
        return valuesOf(out);
    }
    EntityId extracted(const Values& path) const {
        EntityId out(91, WireType, 92);  // must not shine through
        builder->ExtractEntityId(pathOf(path), out);
        return out;
    }

    SceneAdapter adapter;
    SceneBuilderFactory factory;
    SceneBuilder* builder;
};

// Every type but the body and InvalidType, by number.
const std::uint64_t kOtherTypes[] = {10000, 10001, 10002, 10004, 10005, 10006, 10007, 10008,
                                     10009, 10010, 10012, 10100, 10101, 10102, 10103, 10104,
                                     10105, 11000, 20000, 40000, 50000, 99999};

// ---- Composing

TEST_F(RenderIdCompositionTest, AFaceReadsSceneContainerBodyTypeFace) {
    begin({3}, {12});
    EXPECT_EQ(built(EntityId(7, FaceType, 4)), (Values{3, 12, 7, 10002, 4}));
}

TEST_F(RenderIdCompositionTest, ABodyReadsSceneContainerBody) {
    begin({3}, {12});
    EXPECT_EQ(built(EntityId(99, BodyType, 7)), (Values{3, 12, 7}));
}

TEST_F(RenderIdCompositionTest, InvalidTypeReadsSceneContainerAlone) {
    begin({3}, {12});
    EXPECT_EQ(built(EntityId(7, InvalidType, 4)), (Values{3, 12}));
    EXPECT_EQ(built(EntityId()), (Values{3, 12}));
}

TEST_F(RenderIdCompositionTest, EveryOtherTypeReadsAsAFaceDoes) {
    begin({3}, {12});
    for (const std::uint64_t type : kOtherTypes) {
        EXPECT_EQ(built(EntityId(7, static_cast<EntityType>(type), 4)),
                  (Values{3, 12, 7, type, 4}));
    }
}

TEST_F(RenderIdCompositionTest, ANumberThatIsNoTypeIsComposedAsItIs) {
    begin({3}, {12});
    EXPECT_EQ(built(EntityId(7, static_cast<EntityType>(10011), 4)), (Values{3, 12, 7, 10011, 4}));
    EXPECT_EQ(built(EntityId(7, static_cast<EntityType>(-2), 4)),
              (Values{3, 12, 7, 18446744073709551614U, 4}));
}

TEST_F(RenderIdCompositionTest, AnEmptyEntityWithATypeIsComposed) {
    begin({3}, {12});
    EXPECT_EQ(built(EntityId(0, FaceType, 0)), (Values{3, 12, 0, 10002, 0}));
    EXPECT_EQ(built(EntityId(0, BodyType, 0)), (Values{3, 12, 0}));
}

TEST_F(RenderIdCompositionTest, TheLargestNumbersAreKept) {
    begin({kLargest}, {kLargest - 1});
    EXPECT_EQ(built(EntityId(kLargest - 2, OtherType, kLargest - 3)),
              (Values{kLargest, kLargest - 1, kLargest - 2, 99999, kLargest - 3}));
}

TEST_F(RenderIdCompositionTest, ALeadingTypeStandsRightAfterTheContainer) {
    begin({3}, {12});
    EXPECT_EQ(built(ViewType, EntityId(7, FaceType, 4)), (Values{3, 12, 10010, 7, 10002, 4}));
    EXPECT_EQ(built(ViewType, EntityId(99, BodyType, 7)), (Values{3, 12, 10010, 7}));
    EXPECT_EQ(built(ViewType, EntityId(7, InvalidType, 4)), (Values{3, 12, 10010}));
}

TEST_F(RenderIdCompositionTest, EveryTypeCanLead) {
    begin({3}, {12});
    for (const std::uint64_t type : kOtherTypes) {
        EXPECT_EQ(built(static_cast<EntityType>(type), EntityId(7, EdgeType, 4)),
                  (Values{3, 12, type, 7, 10001, 4}));
    }
    EXPECT_EQ(built(BodyType, EntityId(7, EdgeType, 4)), (Values{3, 12, 10003, 7, 10001, 4}));
}

TEST_F(RenderIdCompositionTest, ALeadingInvalidTypeIsSignExtended) {
    begin({3}, {12});
    EXPECT_EQ(built(InvalidType, EntityId(7, EdgeType, 4)), (Values{3, 12, kLargest, 7, 10001, 4}));
}

TEST_F(RenderIdCompositionTest, WithoutAContainerThePathStartsWithTheScene) {
    begin({3}, {});
    EXPECT_EQ(built(EntityId(7, FaceType, 4)), (Values{3, 7, 10002, 4}));
    EXPECT_EQ(built(EntityId(99, BodyType, 7)), (Values{3, 7}));
    EXPECT_EQ(built(EntityId()), (Values{3}));
}

TEST_F(RenderIdCompositionTest, WithoutASceneThePathStartsWithTheContainer) {
    begin({}, {12});
    EXPECT_EQ(built(EntityId(7, FaceType, 4)), (Values{12, 7, 10002, 4}));
}

TEST_F(RenderIdCompositionTest, WithoutEitherThePathIsTheEntity) {
    begin({}, {});
    EXPECT_EQ(built(EntityId(7, FaceType, 4)), (Values{7, 10002, 4}));
    EXPECT_EQ(built(ViewType, EntityId(99, BodyType, 7)), (Values{10010, 7}));
    EXPECT_EQ(built(EntityId()), Values());
}

TEST_F(RenderIdCompositionTest, EveryOpenedSceneIsNamed) {
    begin({3, 4}, {12});
    EXPECT_EQ(built(EntityId(99, BodyType, 7)), (Values{3, 4, 12, 7}));
}

TEST_F(RenderIdCompositionTest, OfSeveralContainersTheLastIsNamed) {
    begin({3}, {12, 13});
    EXPECT_EQ(built(EntityId(99, BodyType, 7)), (Values{3, 13, 7}));
}

TEST_F(RenderIdCompositionTest, ABodyNamesAContainerThatHasEnded) {
    begin({3}, {12});
    builder->ContainerEnd();
    EXPECT_EQ(built(EntityId(99, BodyType, 7)), (Values{3, 12, 7}));
}

TEST_F(RenderIdCompositionTest, SceneLevelsAndUnaddressedContainersAreNotNamed) {
    begin({3}, {12});
    builder->SceneLevelBegin(20, L"");
    builder->ContainerBegin(21, L"", SceneBuilder::UnaddressedContainer);
    builder->BodyBegin(22, L"");
    EXPECT_EQ(built(EntityId(99, BodyType, 7)), (Values{3, 12, 7}));
}

TEST_F(RenderIdCompositionTest, AfterClearNoContainerIsNamed) {
    begin({3}, {12, 13});
    builder->Clear(pathOf({3}));
    EXPECT_EQ(built(EntityId(99, BodyType, 7)), (Values{3, 7}));
}

TEST_F(RenderIdCompositionTest, TheOriginIsView3DAndWhatStoodThereIsGone) {
    begin({3}, {12});
    const EntityId body(99, BodyType, 7);
    RenderId out({5, 5, 5, 5, 5, 5, 5}, ViewTree);
    builder->BuildRenderId(out, body, RGBAColor::Red(), RGBAColor::Red());
    EXPECT_EQ(out.ToString(), "[ 3, 12, 7 View3D ]");
    out = RenderId({5, 5, 5, 5, 5, 5, 5}, ViewTree);
    builder->BuildRenderId(out, ViewType, body, RGBAColor::Red(), RGBAColor::Red());
    EXPECT_EQ(out.ToString(), "[ 3, 12, 10010, 7 View3D ]");
}

TEST_F(RenderIdCompositionTest, ColorsTakeNoPart) {
    begin({3}, {12});
    const EntityId face(7, FaceType, 4);
    const RGBAColor colors[] = {RGBAColor::Black(), RGBAColor::White(), RGBAColor(1, 2, 3, 4)};
    for (const RGBAColor& one : colors) {
        for (const RGBAColor& other : colors) {
            RenderId out;
            builder->BuildRenderId(out, face, one, other);
            EXPECT_EQ(out.ToString(), "[ 3, 12, 7, 10002, 4 View3D ]");
            builder->BuildRenderId(out, ViewType, face, one, other);
            EXPECT_EQ(out.ToString(), "[ 3, 12, 10010, 7, 10002, 4 View3D ]");
        }
    }
}

TEST_F(RenderIdCompositionTest, ComposingAsksTheAdapterNothing) {
    begin({3}, {12});
    adapter.takeLog();
    built(EntityId(7, FaceType, 4));
    built(ViewType, EntityId(7, FaceType, 4));
    extracted({3, 12, 7, 10002, 4});
    EXPECT_EQ(adapter.log, support::CallLog());
}

// ---- Taking apart

/// What a path of @c length ids gives for a container render id of @c container ids. The paths
/// hold 100, 101, 102 and so on, but for FaceType at the place of the type.
struct Extraction {
    int container;
    std::size_t length;
    EntityId expected;
};

// Three ids give the last one, whatever the container. From n + 2 ids on there are owner and
// type; the entity's own number, which stands at n + 2, is read from n + 5 ids on only.
const Extraction kExtractions[] = {
    {0, 0, EntityId()},
    {0, 1, EntityId()},
    {0, 2, EntityId(100, FaceType, 0)},
    {0, 3, EntityId(0, InvalidType, 102)},
    {0, 4, EntityId(100, FaceType, 0)},
    {0, 5, EntityId(100, FaceType, 102)},
    {0, 6, EntityId(100, FaceType, 102)},

    {1, 0, EntityId()},
    {1, 1, EntityId()},
    {1, 2, EntityId()},
    {1, 3, EntityId(0, InvalidType, 10002)},
    {1, 4, EntityId(101, FaceType, 0)},
    {1, 5, EntityId(101, FaceType, 0)},
    {1, 6, EntityId(101, FaceType, 103)},
    {1, 7, EntityId(101, FaceType, 103)},

    {2, 0, EntityId()},
    {2, 1, EntityId()},
    {2, 2, EntityId()},
    {2, 3, EntityId(0, InvalidType, 102)},
    {2, 4, EntityId(102, FaceType, 0)},
    {2, 5, EntityId(102, FaceType, 0)},
    {2, 6, EntityId(102, FaceType, 0)},
    {2, 7, EntityId(102, FaceType, 104)},
    {2, 8, EntityId(102, FaceType, 104)},

    {3, 0, EntityId()},
    {3, 1, EntityId()},
    {3, 2, EntityId()},
    {3, 3, EntityId(0, InvalidType, 102)},
    {3, 4, EntityId()},
    {3, 5, EntityId(103, FaceType, 0)},
    {3, 6, EntityId(103, FaceType, 0)},
    {3, 7, EntityId(103, FaceType, 0)},
    {3, 8, EntityId(103, FaceType, 105)},
    {3, 9, EntityId(103, FaceType, 105)},
};

TEST_F(RenderIdCompositionTest, ExtractEntityIdReadsByLength) {
    const std::vector<std::pair<Values, Values>> levels = {
        {{}, {}}, {{51}, {}}, {{51}, {52}}, {{51, 53}, {52}}};
    for (const Extraction& row : kExtractions) {
        const auto container = static_cast<std::size_t>(row.container);
        begin(levels[container].first, levels[container].second);
        Values path;
        for (std::size_t place = 0; place < row.length; ++place) {
            path.push_back(place == container + 1 ? 10002 : 100 + place);
        }
        EXPECT_EQ(extracted(path).ToString(), row.expected.ToString())
            << row.length << " ids, container of " << container;
    }
}

TEST_F(RenderIdCompositionTest, TheContainerCountsByLengthAlone) {
    begin({}, {12});  // n is 1, without a scene
    EXPECT_EQ(extracted({50, 7, 10002, 4, 5, 6}), EntityId(7, FaceType, 4));
}

TEST_F(RenderIdCompositionTest, ContainersBeforeTheLastDoNotCount) {
    begin({3}, {12, 13, 14});  // n is 2
    EXPECT_EQ(extracted({3, 14, 7, 10002}), EntityId(7, FaceType, 0));
}

TEST_F(RenderIdCompositionTest, ExtractEntityIdKnowsEveryType) {
    begin({3}, {12});
    for (const std::uint64_t type : kOtherTypes) {
        EXPECT_EQ(extracted({3, 12, 7, type, 4, 5, 6}),
                  EntityId(7, static_cast<EntityType>(type), 4));
    }
    EXPECT_EQ(extracted({3, 12, 7, 10003, 4, 5, 6}), EntityId(7, BodyType, 4));
}

TEST_F(RenderIdCompositionTest, ANumberThatIsNoTypeGivesTheOwnerAlone) {
    begin({3}, {12});
    for (const std::uint64_t number : {std::uint64_t{0}, std::uint64_t{10011}, kLargest,
                                       std::uint64_t{10002} + (std::uint64_t{1} << 32)}) {
        EXPECT_EQ(extracted({3, 12, 7, number, 4, 5, 6}), EntityId(7, InvalidType, 0)) << number;
    }
}

TEST_F(RenderIdCompositionTest, TheOriginIsNotLookedAt) {
    begin({3}, {12});
    EntityId out;
    builder->ExtractEntityId(RenderId({3, 12, 7, 10002, 4, 5, 6}, ViewTree), out);
    EXPECT_EQ(out, EntityId(7, FaceType, 4));
}

TEST_F(RenderIdCompositionTest, TheIdsOfTheContainerAreNotCompared) {
    begin({3}, {12});
    EXPECT_EQ(extracted({77, 78, 7, 10002, 4, 5, 6}), EntityId(7, FaceType, 4));
}

// The bound for the entity's own number is two ids more than a composed path has.
TEST_F(RenderIdCompositionTest, AComposedFaceIsTakenApartWithoutItsNumber) {
    begin({3}, {12});
    EXPECT_EQ(extracted(built(EntityId(7, FaceType, 4))), EntityId(7, FaceType, 0));
}

TEST_F(RenderIdCompositionTest, AComposedBodyInAContainerIsTakenApartByTheRuleOfThree) {
    begin({3}, {12});
    EXPECT_EQ(extracted(built(EntityId(99, BodyType, 7))), EntityId(0, InvalidType, 7));
}

TEST_F(RenderIdCompositionTest, AComposedBodyWithoutAContainerIsNotTakenApart) {
    begin({3}, {});
    EXPECT_EQ(extracted(built(EntityId(99, BodyType, 7))), EntityId());
}

TEST_F(RenderIdCompositionTest, ALeadingTypeIsTakenForTheOwner) {
    begin({3}, {12});
    EXPECT_EQ(extracted(built(ViewType, EntityId(10004, FaceType, 4))),
              EntityId(10010, CloudType, 0));
}

// ---- Both, at random

class RenderIdCompositionPropertyTest : public RenderIdCompositionTest {
protected:
    std::uint64_t number() {
        static const std::uint64_t edges[] = {0, 1, 10002, 10003, 10011, kLargest};
        return random() % 2 == 0 ? edges[random() % 6] : random();
    }
    Values numbers(std::size_t count) {
        Values made;
        while (made.size() < count) {
            made.push_back(number());
        }
        return made;
    }

    std::mt19937_64 random{20240607};
};

TEST_F(RenderIdCompositionPropertyTest, APathIsTheContainerAndThenTheEntity) {
    for (int round = 0; round < 500; ++round) {
        const Values scenes = numbers(random() % 3);
        const Values containers = numbers(random() % 3);
        begin(scenes, containers);
        const std::uint64_t type = kOtherTypes[random() % std::size(kOtherTypes)];
        const EntityId entity(number(), static_cast<EntityType>(type), number());
        SCOPED_TRACE(builder->GetContainerRenderId().ToString() + " " + entity.ToString());

        Values expected = scenes;
        if (!containers.empty()) {
            expected.push_back(containers.back());
        }
        EXPECT_EQ(valuesOf(builder->GetContainerRenderId()), expected);
        Values led = expected;
        led.push_back(10100);
        for (Values* path : {&expected, &led}) {
            path->insert(path->end(), {entity.OwnerID, type, entity.ID});
        }
        EXPECT_EQ(built(entity), expected);
        EXPECT_EQ(built(DimensionType, entity), led);
    }
}

TEST_F(RenderIdCompositionPropertyTest, APathIsReadByItsLengthAndTheTypeInIt) {
    for (int round = 0; round < 2000; ++round) {
        const Values scenes = numbers(random() % 3);
        begin(scenes, numbers(random() % 2));
        const std::size_t n = valuesOf(builder->GetContainerRenderId()).size();
        const Values path = numbers(random() % (n + 8));
        SCOPED_TRACE(std::to_string(n) + " before " + pathOf(path).ToString());

        EntityId expected;
        if (path.size() == 3) {
            expected = EntityId(0, InvalidType, path.back());
        } else if (path.size() >= n + 2) {
            const bool known =
                path[n + 1] == 10002 || path[n + 1] == 10003;  // of what number() makes
            const std::uint64_t id = known && path.size() >= n + 5 ? path[n + 2] : 0;
            expected =
                EntityId(path[n], known ? static_cast<EntityType>(path[n + 1]) : InvalidType, id);
        }
        EXPECT_EQ(extracted(path).ToString(), expected.ToString());
    }
}

}  // namespace
}  // namespace KesVizCore
