#include "model/ModelTestKit.h"

#include <KesVizCore/model/VizEdge.h>
#include <KesVizCore/model/VizWire.h>

#include <gtest/gtest.h>

#include <vector>

namespace KesVizCore {
namespace {

using support::Deaths;
using support::EdgeLoader;
using support::loadEdge;
using support::loadWire;
using support::newTelling;

using Edges = std::vector<VizEdge*>;

TEST(VizWireTest, IsEmptyAtFirst) {
    EXPECT_TRUE(loadWire()->GetEdges().empty());
}

TEST(VizWireTest, DestroysItsEdgesInOrderSkippingNull) {
    Deaths deaths;
    auto wire = loadWire();
    wire->AddEdge(newTelling<EdgeLoader>("first", deaths));
    wire->AddEdge(nullptr);
    wire->AddEdge(newTelling<EdgeLoader>("second", deaths));
    EXPECT_TRUE(deaths.empty());
    wire.reset();
    EXPECT_EQ(deaths, (Deaths{"first", "second"}));
}

TEST(VizWireTest, AddEdgeAppendsNullToo) {
    const auto wire = loadWire();
    VizEdge* const one = loadEdge().release();
    VizEdge* const other = loadEdge().release();
    wire->AddEdge(other);
    wire->AddEdge(nullptr);
    wire->AddEdge(one);
    EXPECT_EQ(wire->GetEdges(), (Edges{other, nullptr, one}));
}

TEST(VizWireTest, SetEdgeCountHintMakesRoomAndNothingElse) {
    const auto wire = loadWire();
    wire->SetEdgeCountHint(100);
    EXPECT_GE(wire->GetEdges().capacity(), 100U);
    EXPECT_TRUE(wire->GetEdges().empty());
    wire->SetEdgeCountHint(0);
    EXPECT_GE(wire->GetEdges().capacity(), 100U);
}

TEST(VizWireTest, CopiesShareTheEdges) {
    Deaths deaths;
    auto wire = loadWire();
    VizEdge* const edge = newTelling<EdgeLoader>("edge", deaths);
    wire->AddEdge(edge);
    {
        VizWire copy(*wire);
        EXPECT_EQ(copy.GetEdges(), Edges{edge});
        copy = *loadWire();  // lets go of the edge, which the original goes on owning
        EXPECT_TRUE(copy.GetEdges().empty());
    }
    EXPECT_TRUE(deaths.empty());
    wire.reset();
    EXPECT_EQ(deaths, Deaths{"edge"});
}

}  // namespace
}  // namespace KesVizCore
