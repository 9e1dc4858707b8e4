#include "pmi/PMITestKit.h"

#include <KesVizCore/pmi/VizPMICollection.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace KesVizCore {
namespace {

using support::idIn3D;
using support::Model;
using support::OpenCollection;

using Names = std::vector<std::wstring>;
using Ids = std::vector<std::string>;

/// An answer of render ids, written out, and the caller's array gone.
struct Answer {
    bool result;
    bool hasArray;
    int count;
    Ids ids;
};

/// Asks with an out argument and a count that are not empty before.
template <typename Ask>
Answer answerOf(Ask ask) {
    RenderId* const before = RenderId::CreateRenderId();
    RenderId* out = before;
    int count = -7;
    Answer answer{ask(out, count), out != nullptr, count, {}};
    if (out == before) {
        answer.ids = {"untouched"};
    } else {
        for (int place = 0; place < count; ++place) {
            answer.ids.push_back(out[place].ToString());
        }
        RenderId::DeleteRenderIdArr(out);
        EXPECT_EQ(out, nullptr);
    }
    out = before;
    RenderId::DeleteRenderId(out);
    return answer;
}

Answer membersOf(const VizPMICollection& collection, bool withOwn = false) {
    return answerOf([&](RenderId*& out, int& count) {
        return collection.GetMemberRenderIds(out, count, withOwn);
    });
}

Answer othersOf(const VizPMICollection& collection) {
    return answerOf(
        [&](RenderId*& out, int& count) { return collection.GetNonmemberRenderIds(out, count); });
}

Answer listOf(const VizPMICollection& collection, const Names& names) {
    return answerOf([&](RenderId*& out, int& count) {
        return collection.GetRenderIdsFromList(out, count, names);
    });
}

void expectIds(const Answer& answer, const Ids& ids) {
    EXPECT_TRUE(answer.result);
    EXPECT_TRUE(answer.hasArray);
    EXPECT_EQ(answer.count, static_cast<int>(ids.size()));
    EXPECT_EQ(answer.ids, ids);
}

void expectTrueWithoutIds(const Answer& answer) {
    EXPECT_TRUE(answer.result);
    EXPECT_FALSE(answer.hasArray);
    EXPECT_EQ(answer.count, 0);
}

void expectUntouched(const Answer& answer) {
    EXPECT_FALSE(answer.result);
    EXPECT_EQ(answer.ids, Ids{"untouched"});
    EXPECT_EQ(answer.count, -7);
}

/// Elements a, b, c and one without visual id, at 10, 20, 30 and 40 of the 3D scene.
class CollectionRenderIdsTest : public testing::Test {
protected:
    CollectionRenderIdsTest() {
        _model.AddMesh(1, L"a", idIn3D({10}));
        _model.AddMesh(2, L"b", idIn3D({20}));
        _model.AddMesh(3, L"c", idIn3D({30}));
        _model.AddMesh(4, L"", idIn3D({40}));
    }
    OpenCollection collectionOf(const Names& names) const { return OpenCollection(_model, names); }

    Model _model;
};

// --- members ------------------------------------------------------------------------------------

TEST_F(CollectionRenderIdsTest, WithoutAMapNoMembersAreAnswered) {
    OpenCollection collection = collectionOf({L"a"});
    collection.SetEntityMap(nullptr);
    expectUntouched(membersOf(collection));
    expectUntouched(membersOf(collection, true));
}

TEST_F(CollectionRenderIdsTest, MembersAreAnsweredInTheirOwnOrder) {
    expectIds(membersOf(collectionOf({L"c", L"a"})), {"[ 30 View3D ]", "[ 10 View3D ]"});
}

TEST_F(CollectionRenderIdsTest, AMemberNamedTwiceIsAnsweredTwice) {
    expectIds(membersOf(collectionOf({L"a", L"c", L"a"})),
              {"[ 10 View3D ]", "[ 30 View3D ]", "[ 10 View3D ]"});
}

TEST_F(CollectionRenderIdsTest, NamesThatNameNothingAreLeftOut) {
    expectIds(membersOf(collectionOf({L"gone", L"b", L"lost"})), {"[ 20 View3D ]"});
}

TEST_F(CollectionRenderIdsTest, TheEmptyNameNamesTheElementWithoutVisualId) {
    expectIds(membersOf(collectionOf({L""})), {"[ 40 View3D ]"});
}

TEST_F(CollectionRenderIdsTest, AnElementOfAnyKindCanBeAMember) {
    _model.Add(0, support::pmiOf(L"pmi", {})).Set3DRenderID(RenderId({5, 6}, ViewTree));
    expectIds(membersOf(collectionOf({L"pmi"})), {"[ 5, 6 ViewTree ]"});
}

TEST_F(CollectionRenderIdsTest, MembersWithoutARenderIdAreLeftOut) {
    _model.AddMesh(5, L"nowhere", RenderId());
    _model.AddMesh(6, L"nowhere in a tree", RenderId({}, ViewTree));
    expectIds(membersOf(collectionOf({L"nowhere", L"b", L"nowhere in a tree"})), {"[ 20 View3D ]"});
}

TEST_F(CollectionRenderIdsTest, OfSeveralElementsOfOneNameTheFirstOfTheMapIsTaken) {
    _model.AddMesh(0, L"b", idIn3D({5}));
    _model.AddMesh(9, L"a", idIn3D({90}));
    expectIds(membersOf(collectionOf({L"a", L"b"})), {"[ 10 View3D ]", "[ 5 View3D ]"});
}

TEST_F(CollectionRenderIdsTest, TheFirstOfANameIsTakenAlsoWithoutARenderId) {
    _model.AddMesh(0, L"b", RenderId());
    expectTrueWithoutIds(membersOf(collectionOf({L"b"})));
}

TEST_F(CollectionRenderIdsTest, NullsInTheMapAreSkippedAmongMembers) {
    _model.AddNull(0);
    _model.AddNull(99);
    expectIds(membersOf(collectionOf({L"c"})), {"[ 30 View3D ]"});
}

TEST_F(CollectionRenderIdsTest, WithoutAnyMemberFoundTheAnswerIsTrueAndNull) {
    expectTrueWithoutIds(membersOf(collectionOf({L"gone"})));
    expectTrueWithoutIds(membersOf(collectionOf({})));
}

TEST_F(CollectionRenderIdsTest, ItsOwnIdFollowsThoseOfTheMembers) {
    OpenCollection collection = collectionOf({L"b", L"a"});
    collection.Set3DRenderID(idIn3D({7, 8}));
    expectIds(membersOf(collection, true), {"[ 20 View3D ]", "[ 10 View3D ]", "[ 7, 8 View3D ]"});
    expectIds(membersOf(collection, false), {"[ 20 View3D ]", "[ 10 View3D ]"});
}

TEST_F(CollectionRenderIdsTest, ItsOwnIdIsLeftOutWhereItHasNone) {
    OpenCollection collection = collectionOf({L"b"});
    collection.Set3DRenderID(RenderId({}, View3D));
    expectIds(membersOf(collection, true), {"[ 20 View3D ]"});
}

TEST_F(CollectionRenderIdsTest, ItsOwnIdIsLeftOutWithoutAMemberFound) {
    OpenCollection collection = collectionOf({L"gone"});
    collection.Set3DRenderID(idIn3D({7}));
    expectTrueWithoutIds(membersOf(collection, true));
}

TEST_F(CollectionRenderIdsTest, AMapTakesThePlaceOfTheOneBefore) {
    Model other;
    other.AddMesh(1, L"a", idIn3D({11}));
    OpenCollection collection = collectionOf({L"a"});
    collection.SetEntityMap(other.Map());
    expectIds(membersOf(collection), {"[ 11 View3D ]"});
}

TEST_F(CollectionRenderIdsTest, TheMapIsReadAnewForEachAnswer) {
    const OpenCollection collection = collectionOf({L"d"});
    expectTrueWithoutIds(membersOf(collection));
    _model.AddMesh(5, L"d", idIn3D({50}));
    expectIds(membersOf(collection), {"[ 50 View3D ]"});
}

// --- everything else ----------------------------------------------------------------------------

TEST_F(CollectionRenderIdsTest, WithoutAMapNoOthersAreAnswered) {
    OpenCollection collection = collectionOf({L"a"});
    collection.SetEntityMap(nullptr);
    expectUntouched(othersOf(collection));
}

TEST_F(CollectionRenderIdsTest, OthersAreAnsweredInTheOrderOfTheMap) {
    expectIds(othersOf(collectionOf({L"b"})), {"[ 10 View3D ]", "[ 30 View3D ]", "[ 40 View3D ]"});
}

TEST_F(CollectionRenderIdsTest, WithoutMembersEverythingIsOther) {
    expectIds(othersOf(collectionOf({})),
              {"[ 10 View3D ]", "[ 20 View3D ]", "[ 30 View3D ]", "[ 40 View3D ]"});
}

TEST_F(CollectionRenderIdsTest, OthersWithoutARenderIdAreAnsweredEmpty) {
    _model.AddMesh(0, L"nowhere", RenderId());
    expectIds(othersOf(collectionOf({L"a", L"b", L"c"})), {"[  Unknown ]", "[ 40 View3D ]"});
}

TEST_F(CollectionRenderIdsTest, NullsInTheMapAreNoOthers) {
    _model.AddNull(0);
    _model.AddNull(5);
    expectIds(othersOf(collectionOf({L"a", L"b", L"c"})), {"[ 40 View3D ]"});
}

TEST_F(CollectionRenderIdsTest, AllElementsOfAMembersNameAreMembers) {
    _model.AddMesh(5, L"a", idIn3D({50}));
    expectIds(othersOf(collectionOf({L"a", L"b"})), {"[ 30 View3D ]", "[ 40 View3D ]"});
}

TEST_F(CollectionRenderIdsTest, WithNothingButMembersThereIsAnArrayOfNone) {
    const Answer answer = othersOf(collectionOf({L"a", L"b", L"c", L""}));
    EXPECT_TRUE(answer.result);
    EXPECT_TRUE(answer.hasArray);
    EXPECT_EQ(answer.count, 0);
}

/// The answer where the others do not fit: false, with the array as full as it gets.
void expectFull(const Answer& answer, const Ids& ids) {
    EXPECT_FALSE(answer.result);
    EXPECT_TRUE(answer.hasArray);
    EXPECT_EQ(answer.count, static_cast<int>(ids.size()));
    EXPECT_EQ(answer.ids, ids);
}

TEST_F(CollectionRenderIdsTest, NamesThatNameNothingTakeRoomFromTheOthers) {
    expectFull(othersOf(collectionOf({L"gone"})),
               {"[ 10 View3D ]", "[ 20 View3D ]", "[ 30 View3D ]"});
}

TEST_F(CollectionRenderIdsTest, NamesThatStandTwiceTakeRoomFromTheOthers) {
    expectFull(othersOf(collectionOf({L"a", L"a", L"a"})), {"[ 20 View3D ]"});
}

TEST_F(CollectionRenderIdsTest, NullsInTheMapGiveRoomToTheOthers) {
    _model.AddNull(0);
    expectIds(othersOf(collectionOf({L"a", L"a"})),
              {"[ 20 View3D ]", "[ 30 View3D ]", "[ 40 View3D ]"});
}

TEST_F(CollectionRenderIdsTest, WithoutRoomTheArrayIsOfNone) {
    expectFull(othersOf(collectionOf({L"w", L"x", L"y", L"z"})), {});
}

TEST_F(CollectionRenderIdsTest, WithMoreNamesThanElementsThereIsNoArray) {
    for (const Names& names :
         {Names{L"a", L"b", L"c", L"", L"gone"}, Names{L"a", L"a", L"a", L"a", L"a", L"a"}}) {
        const Answer answer = othersOf(collectionOf(names));
        EXPECT_FALSE(answer.result);
        EXPECT_FALSE(answer.hasArray);
        EXPECT_EQ(answer.count, 0);
    }
}

// --- lists --------------------------------------------------------------------------------------

TEST_F(CollectionRenderIdsTest, WithoutAMapNoListIsAnswered) {
    OpenCollection collection = collectionOf({L"a"});
    collection.SetEntityMap(nullptr);
    expectUntouched(listOf(collection, {L"a"}));
}

TEST_F(CollectionRenderIdsTest, AnEmptyListIsNotAnswered) {
    expectUntouched(listOf(collectionOf({L"a"}), {}));
}

TEST_F(CollectionRenderIdsTest, AListIsAnsweredInItsOrderWhateverTheMembersAre) {
    OpenCollection collection = collectionOf({L"b"});
    collection.Set3DRenderID(idIn3D({7}));  // its own has no part
    expectIds(listOf(collection, {L"c", L"gone", L"a", L"c"}),
              {"[ 30 View3D ]", "[ 10 View3D ]", "[ 30 View3D ]"});
}

TEST_F(CollectionRenderIdsTest, AListThatNamesNothingIsAnsweredTrueAndNull) {
    expectTrueWithoutIds(listOf(collectionOf({L"a"}), {L"gone"}));
}

TEST_F(CollectionRenderIdsTest, OfSeveralElementsOfOneNameAListTakesTheFirstOfTheMap) {
    _model.AddMesh(0, L"c", idIn3D({5}));
    expectIds(listOf(collectionOf({}), {L"c"}), {"[ 5 View3D ]"});
}

}  // namespace
}  // namespace KesVizCore
