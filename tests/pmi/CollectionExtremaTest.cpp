#include "pmi/PMITestKit.h"

#include <KesVizCore/pmi/VizPMI.h>
#include <KesVizCore/pmi/VizPMICollection.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace KesVizCore {
namespace {

using support::Box;
using support::grown;
using support::grownExtremaOf;
using support::HostElement;
using support::Model;
using support::OpenCollection;
using support::pmiOf;
using support::pmiThrough;
using support::Triple;

constexpr Triple kX{1, 0, 0};
constexpr Triple kY{0, 1, 0};

void expectExtrema(const OpenCollection& collection, const Box& box) {
    EXPECT_EQ(grownExtremaOf(collection), grown(box));
}

bool merge(OpenCollection& collection, const Box& box) {
    return collection.MergeExtrema(box.data());
}

/// The collection after it accumulated.
OpenCollection accumulated(OpenCollection collection) {
    EXPECT_TRUE(collection.AccumulatePMIExtrema());
    return collection;
}

/// A collection that is oriented, so that it keeps its frame.
OpenCollection orientedAt(const Triple& origin, OpenCollection collection = OpenCollection()) {
    collection.SetFrame(origin, kX, kY);
    return collection;
}

// --- merging ------------------------------------------------------------------------------------

TEST(CollectionExtremaTest, NothingIsMergedOfNull) {
    OpenCollection collection;
    EXPECT_FALSE(collection.MergeExtrema(nullptr));
    EXPECT_TRUE(grownExtremaOf(collection).empty());
    merge(collection, {1, 2, 3, 4, 5, 6});
    EXPECT_FALSE(collection.MergeExtrema(nullptr));
    expectExtrema(collection, {1, 2, 3, 4, 5, 6});
}

TEST(CollectionExtremaTest, TheFirstBoxIsCopied) {
    OpenCollection collection;
    EXPECT_TRUE(merge(collection, {1, 2, 3, 4, 5, 6}));
    expectExtrema(collection, {1, 2, 3, 4, 5, 6});
}

TEST(CollectionExtremaTest, FurtherBoxesWidenPerAxisAndSide) {
    OpenCollection collection;
    merge(collection, {0, 0, 0, 10, 10, 10});
    EXPECT_TRUE(merge(collection, {-1, 1, -3, 9, 12, 10}));
    expectExtrema(collection, {-1, 0, -3, 10, 12, 10});
    EXPECT_TRUE(merge(collection, {3, 3, 3, 4, 4, 4}));
    expectExtrema(collection, {-1, 0, -3, 10, 12, 10});
}

TEST(CollectionExtremaTest, BoxesWithLowAboveHighAreTakenAsTheyAre) {
    OpenCollection collection;
    merge(collection, {5, 5, 5, -5, -5, -5});
    merge(collection, {6, 4, 5, -6, -4, -5});
    // Extents of such a box are in order: seen per axis from the lower number on.
    expectExtrema(collection, {-5, -4, -5, 5, 4, 5});
}

TEST(CollectionExtremaTest, NaNWidensNothing) {
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    OpenCollection collection;
    merge(collection, {0, 0, 0, 1, 1, 1});
    EXPECT_TRUE(merge(collection, {nan, nan, nan, nan, nan, nan}));
    expectExtrema(collection, {0, 0, 0, 1, 1, 1});
}

TEST(CollectionExtremaTest, WithoutExtremaThereIsNoCentreToMoveTo) {
    OpenCollection collection = orientedAt({1, 2, 3});
    EXPECT_FALSE(collection.Recenter());
    EXPECT_EQ(collection.Origin(), (Triple{1, 2, 3}));
}

TEST(CollectionExtremaTest, RecentringMovesTheOriginAloneToTheCentre) {
    OpenCollection collection;
    merge(collection, {1, -2, 3, 4, 5, -6});
    EXPECT_TRUE(collection.Recenter());
    EXPECT_EQ(collection.Origin(), (Triple{2.5F, 1.5F, -1.5F}));
    EXPECT_EQ(collection.U(), kX);
    EXPECT_EQ(collection.V(), kY);
    EXPECT_FALSE(collection.IsViewOriented());
}

// --- a cube where there is nothing --------------------------------------------------------------

TEST(CollectionExtremaTest, WithoutMembersTheExtremaAreACubeAboutTheOrigin) {
    const Model model;
    const OpenCollection collection = accumulated(OpenCollection(model, {}));
    expectExtrema(collection, {-10, -10, -10, 10, 10, 10});
    EXPECT_EQ(collection.Origin(), (Triple{0, 0, 0}));
    EXPECT_FALSE(collection.IsViewOriented());
}

TEST(CollectionExtremaTest, TheCubeStandsAboutTheOriginOfTheFrame) {
    const Model model;
    const OpenCollection collection =
        accumulated(orientedAt({100, -20, 3}, OpenCollection(model, {})));
    expectExtrema(collection, {90, -30, -7, 110, -10, 13});
    EXPECT_EQ(collection.Origin(), (Triple{100, -20, 3}));
}

TEST(CollectionExtremaTest, WithoutAMapTheExtremaAreTheCube) {
    OpenCollection collection;
    collection.AddMember(L"a");
    expectExtrema(accumulated(collection), {-10, -10, -10, 10, 10, 10});
    expectExtrema(accumulated(OpenCollection()), {-10, -10, -10, 10, 10, 10});
}

TEST(CollectionExtremaTest, WithoutAnAnnotationAmongTheNamedTheExtremaAreTheCube) {
    Model model;
    model.AddMesh(1, L"a", RenderId());
    model.AddNull(2);
    expectExtrema(accumulated(OpenCollection(model, {L"a", L"gone"})), {-10, -10, -10, 10, 10, 10});
}

// --- extrema that are there already -------------------------------------------------------------

TEST(CollectionExtremaTest, WithoutMembersExtremaAreKeptAndTheOriginStays) {
    const Model model;
    OpenCollection collection(model, {});
    merge(collection, {20, 20, 20, 21, 21, 21});
    collection = accumulated(collection);
    expectExtrema(collection, {20, 20, 20, 21, 21, 21});
    EXPECT_EQ(collection.Origin(), (Triple{0, 0, 0}));
}

TEST(CollectionExtremaTest, WithoutAMapExtremaAreKeptAndTheOriginStays) {
    OpenCollection collection;
    collection.AddMember(L"a");
    merge(collection, {20, 20, 20, 21, 21, 21});
    collection = accumulated(collection);
    expectExtrema(collection, {20, 20, 20, 21, 21, 21});
    EXPECT_EQ(collection.Origin(), (Triple{0, 0, 0}));
}

TEST(CollectionExtremaTest, ExtremaAreAdjustedAlsoWhereNoMemberIsFound) {
    const Model model;
    OpenCollection collection(model, {L"gone"});
    merge(collection, {20, 20, 20, 30, 30, 30});
    collection = accumulated(collection);
    expectExtrema(collection, {0, 0, 0, 30, 30, 30});
    EXPECT_EQ(collection.Origin(), (Triple{15, 15, 15}));
}

// --- members ------------------------------------------------------------------------------------

TEST(CollectionExtremaTest, TheExtremaOfAllMembersAreMerged) {
    Model model;
    model.Add(1, pmiOf(L"a", {-20, 0, 0, 0, 5, 12}));
    model.Add(2, pmiOf(L"b", {0, -20, -1, 30, 0, 0}));
    model.Add(3, pmiOf(L"no member", {-99, -99, -99, 99, 99, 99}));
    expectExtrema(accumulated(OpenCollection(model, {L"b", L"a"})), {-20, -20, -1, 30, 5, 12});
}

TEST(CollectionExtremaTest, ExtremaThatAreThereAlreadyAreMergedToo) {
    Model model;
    model.Add(1, pmiOf(L"a", {-20, -20, -20, 20, 20, 20}));
    OpenCollection collection(model, {L"a"});
    merge(collection, {0, 0, 0, 50, 1, 1});
    expectExtrema(accumulated(collection), {-20, -20, -20, 50, 20, 20});
}

TEST(CollectionExtremaTest, OfSeveralAnnotationsOfOneNameTheFirstOfTheMapCounts) {
    Model model;
    model.Add(5, pmiOf(L"a", {-50, -50, -50, 50, 50, 50}));
    model.Add(4, pmiOf(L"a", {-20, -20, -20, 20, 20, 20}));
    model.AddNull(3);
    expectExtrema(accumulated(OpenCollection(model, {L"a"})), {-20, -20, -20, 20, 20, 20});
}

// Unlike render ids, which are of the first element of any kind.
TEST(CollectionExtremaTest, ElementsOfOtherKindsDoNotHideAnAnnotationOfTheirName) {
    Model model;
    model.AddMesh(1, L"a", RenderId());
    auto note = std::make_unique<HostElement>("Note");
    note->SetVisualID(L"a");
    model.Add(2, std::move(note));
    model.Add(3, pmiOf(L"a", {-20, -20, -20, 20, 20, 20}));
    expectExtrema(accumulated(OpenCollection(model, {L"a"})), {-20, -20, -20, 20, 20, 20});
}

/// A host's own class of annotation.
class HostPMI : public VizPMI {
public:
    HostPMI(const VizPMI& original, std::string type) : VizPMI(original), _type(std::move(type)) {}
    ~HostPMI() override = default;
    std::string GetElementType() const override { return _type; }

private:
    std::string _type;
};

std::unique_ptr<HostPMI> hostPMI(const std::string& type, const std::wstring& visualId,
                                 const Box& box) {
    auto pmi = std::make_unique<HostPMI>(*support::loadPMI(), type);
    pmi->SetVisualID(visualId);
    pmi->AddEdge(support::edgeAcross(box).release());
    return pmi;
}

TEST(CollectionExtremaTest, AHostsAnnotationCountsByItsType) {
    Model model;
    model.Add(1, hostPMI("HostPMI", L"a", {-90, -90, -90, 90, 90, 90}));
    model.Add(2, hostPMI("PMI", L"a", {-20, -20, -20, 20, 20, 20}));
    expectExtrema(accumulated(OpenCollection(model, {L"a"})), {-20, -20, -20, 20, 20, 20});
}

// It is the first of its name and type, but has no extrema that could be merged.
TEST(CollectionExtremaTest, AnElementThatOnlyCallsItselfPMIIsPassedOver) {
    Model model;
    auto impostor = std::make_unique<HostElement>("PMI");
    impostor->SetVisualID(L"a");
    model.Add(1, std::move(impostor));
    model.Add(2, pmiOf(L"a", {-90, -90, -90, 90, 90, 90}));
    model.Add(3, pmiOf(L"b", {-20, -20, -20, 20, 20, 20}));
    expectExtrema(accumulated(OpenCollection(model, {L"a", L"b"})), {-20, -20, -20, 20, 20, 20});
}

// --- origin and least size ----------------------------------------------------------------------

TEST(CollectionExtremaTest, TheOriginOfTheFrameIsMerged) {
    Model model;
    model.Add(1, pmiOf(L"a", {20, -40, 20, 40, -20, 40}));
    const OpenCollection collection =
        accumulated(orientedAt({1, 2, 50}, OpenCollection(model, {L"a"})));
    expectExtrema(collection, {1, -40, 20, 40, 2, 50});
    EXPECT_EQ(collection.Origin(), (Triple{1, 2, 50}));
    expectExtrema(accumulated(orientedAt({70, -50, 10}, OpenCollection(model, {L"a"}))),
                  {20, -50, 10, 70, -20, 40});
}

TEST(CollectionExtremaTest, AnAxisShorterThanTenIsWidenedAboutItsCentre) {
    Model model;
    model.Add(1, pmiOf(L"a", {-1, 0, 0, 3, 0, 20}));
    expectExtrema(accumulated(orientedAt({0, 0, 0}, OpenCollection(model, {L"a"}))),
                  {-4, -5, 0, 6, 5, 20});
}

TEST(CollectionExtremaTest, AnAxisIsMeasuredWithTheOriginInIt) {
    Model model;
    model.Add(1, pmiOf(L"a", {8, 4, -12, 8, 5, -11}));
    expectExtrema(accumulated(orientedAt({0, 0, 0}, OpenCollection(model, {L"a"}))),
                  {-1, -2.5F, -12, 9, 7.5F, 0});
}

TEST(CollectionExtremaTest, AnAxisOfTenIsLongEnough) {
    const float below = std::nextafter(10.0F, 0.0F);
    Model model;
    model.Add(1, pmiOf(L"a", {0, 0, -10, 10, below, 0}));
    expectExtrema(accumulated(orientedAt({0, 0, 0}, OpenCollection(model, {L"a"}))),
                  {0, below / 2 - 5, -10, 10, below / 2 + 5, 0});

    // An axis of ten is left alone, also where its middle cannot be told exactly.
    Model uneven;
    uneven.Add(1, pmiOf(L"a", {0.1F, 0, 0, 10.1F, 20, 20}));
    expectExtrema(accumulated(orientedAt({5, 0, 0}, OpenCollection(uneven, {L"a"}))),
                  {0.1F, 0, 0, 10.1F, 20, 20});
}

// --- the frame ----------------------------------------------------------------------------------

TEST(CollectionExtremaTest, ACollectionWithoutAFrameIsRecentred) {
    Model model;
    model.Add(1, pmiOf(L"a", {0, 10, 20, 40, 20, 60}));  // of too few points for a frame
    const OpenCollection collection = accumulated(OpenCollection(model, {L"a"}));
    expectExtrema(collection, {0, 0, 0, 40, 20, 60});
    EXPECT_EQ(collection.Origin(), (Triple{20, 10, 30}));
    EXPECT_FALSE(collection.IsViewOriented());
}

TEST(CollectionExtremaTest, TheFirstMemberWithAUsableEdgeGivesTheFrame) {
    Model model;
    model.Add(1, pmiThrough(L"in xy", {1, 0, 0, 0, 0, 0, 0, 1, 0}));
    model.Add(2, pmiThrough(L"in yz", {0, 30, 0, 0, 0, 0, 0, 0, 30}));
    model.Add(3, pmiOf(L"too short", {0, 0, 0, 30, 30, 30}));
    const OpenCollection collection =
        accumulated(OpenCollection(model, {L"too short", L"in yz", L"in xy"}));
    EXPECT_TRUE(collection.IsViewOriented());
    EXPECT_EQ(collection.U(), (Triple{0, 1, 0}));
    EXPECT_EQ(collection.V(), (Triple{0, 0, 1}));
}

TEST(CollectionExtremaTest, TheOriginOfAFrameMadeOnTheWayIsMergedAndThenRecentred) {
    Model model;
    model.Add(1, pmiThrough(L"a", {40, 50, 60, 70, 50, 60, 70, 90, 60}));
    const OpenCollection collection = accumulated(OpenCollection(model, {L"a"}));
    // Not the origin of before: the frame is at the edge's first point when it is merged.
    expectExtrema(collection, {40, 50, 55, 70, 90, 65});
    EXPECT_EQ(collection.Origin(), (Triple{55, 70, 60}));
}

TEST(CollectionExtremaTest, ACollectionWithAFrameKeepsIt) {
    Model model;
    model.Add(1, pmiThrough(L"a", {0, 30, 0, 0, 0, 0, 0, 0, 30}));
    const OpenCollection collection =
        accumulated(orientedAt({1, 2, 3}, OpenCollection(model, {L"a"})));
    EXPECT_EQ(collection.Origin(), (Triple{1, 2, 3}));
    EXPECT_EQ(collection.U(), kX);
    EXPECT_EQ(collection.V(), kY);
}

TEST(CollectionExtremaTest, ASecondTimeAFrameMadeBeforeIsKept) {
    Model model;
    model.Add(1, pmiThrough(L"a", {40, 50, 60, 70, 50, 60, 70, 90, 60}));
    OpenCollection collection = accumulated(OpenCollection(model, {L"a"}));
    model.Add(2, pmiOf(L"b", {0, 0, 0, 1, 1, 1}));
    collection.AddMember(L"b");
    collection = accumulated(collection);
    expectExtrema(collection, {0, 0, 0, 70, 90, 65});
    EXPECT_EQ(collection.Origin(), (Triple{55, 70, 60}));  // not the new centre
}

TEST(CollectionExtremaTest, ASecondTimeWithoutAFrameRecentresAgain) {
    Model model;
    model.Add(1, pmiOf(L"a", {-20, -20, -20, 20, 20, 20}));
    OpenCollection collection = accumulated(OpenCollection(model, {L"a"}));
    model.Add(2, pmiOf(L"b", {0, 0, 0, 40, 60, 80}));
    collection.AddMember(L"b");
    collection = accumulated(collection);
    expectExtrema(collection, {-20, -20, -20, 40, 60, 80});
    EXPECT_EQ(collection.Origin(), (Triple{10, 20, 30}));
}

TEST(CollectionExtremaTest, ASecondTimeWithNothingNewChangesNothing) {
    Model model;
    model.Add(1, pmiOf(L"a", {0, 10, 20, 40, 20, 60}));
    const OpenCollection once = accumulated(OpenCollection(model, {L"a"}));
    const OpenCollection twice = accumulated(once);
    EXPECT_EQ(grownExtremaOf(twice), grownExtremaOf(once));
    EXPECT_EQ(twice.Origin(), once.Origin());
}

TEST(CollectionExtremaTest, TheCubeIsNotMadeASecondTime) {
    OpenCollection collection = accumulated(OpenCollection());
    collection.SetFrame({100, 100, 100}, kX, kY);
    expectExtrema(accumulated(collection), {-10, -10, -10, 10, 10, 10});
}

TEST(CollectionExtremaTest, IsReachedThroughTheBase) {
    OpenCollection collection;
    VizPMICollection& base = collection;
    EXPECT_TRUE(base.AccumulatePMIExtrema());
    expectExtrema(collection, {-10, -10, -10, 10, 10, 10});
}

}  // namespace
}  // namespace KesVizCore
