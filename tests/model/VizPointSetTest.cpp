#include "model/ModelTestKit.h"

#include <KesVizCore/model/VizPointSet.h>
#include <KesVizCore/model/VizPoints.h>

#include <gtest/gtest.h>

#include <vector>

namespace KesVizCore {
namespace {

using support::Deaths;
using support::loadPoints;
using support::loadPointSet;
using support::newTelling;
using support::PointsLoader;

using PointLists = std::vector<VizPoints*>;

TEST(VizPointSetTest, IsEmptyAtFirst) {
    EXPECT_TRUE(loadPointSet()->GetPointSets().empty());
}

TEST(VizPointSetTest, DestroysItsListsInOrderSkippingNull) {
    Deaths deaths;
    auto set = loadPointSet();
    set->AddPoints(newTelling<PointsLoader>("first", deaths));
    set->AddPoints(nullptr);
    set->AddPoints(newTelling<PointsLoader>("second", deaths));
    EXPECT_TRUE(deaths.empty());
    set.reset();
    EXPECT_EQ(deaths, (Deaths{"first", "second"}));
}

TEST(VizPointSetTest, AddPointsAppendsNullToo) {
    const auto set = loadPointSet();
    VizPoints* const one = loadPoints().release();
    VizPoints* const other = loadPoints().release();
    set->AddPoints(other);
    set->AddPoints(nullptr);
    set->AddPoints(one);
    EXPECT_EQ(set->GetPointSets(), (PointLists{other, nullptr, one}));
}

TEST(VizPointSetTest, SetPointsCountHintMakesRoomAndNothingElse) {
    const auto set = loadPointSet();
    set->SetPointsCountHint(100);
    EXPECT_GE(set->GetPointSets().capacity(), 100U);
    EXPECT_TRUE(set->GetPointSets().empty());
    set->SetPointsCountHint(0);
    EXPECT_GE(set->GetPointSets().capacity(), 100U);
}

TEST(VizPointSetTest, CopiesShareTheLists) {
    Deaths deaths;
    auto set = loadPointSet();
    VizPoints* const points = newTelling<PointsLoader>("points", deaths);
    set->AddPoints(points);
    {
        VizPointSet copy(*set);
        EXPECT_EQ(copy.GetPointSets(), PointLists{points});
        copy = *loadPointSet();  // lets go of the list, which the original goes on owning
        EXPECT_TRUE(copy.GetPointSets().empty());
    }
    EXPECT_TRUE(deaths.empty());
    set.reset();
    EXPECT_EQ(deaths, Deaths{"points"});
}

}  // namespace
}  // namespace KesVizCore
