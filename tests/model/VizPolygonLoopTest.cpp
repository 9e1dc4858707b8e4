#include "model/ModelTestKit.h"

#include <KesVizCore/model/VizEdge.h>
#include <KesVizCore/model/VizPolygonLoop.h>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace KesVizCore {
namespace {

using support::Deaths;
using support::EdgeLoader;
using support::loadEdge;
using support::loadPolygonLoop;
using support::newTelling;

using Edges = std::vector<VizEdge*>;

TEST(VizPolygonLoopTest, IsEmptyAtFirst) {
    EXPECT_TRUE(loadPolygonLoop()->GetEdges().empty());
}

TEST(VizPolygonLoopTest, BorrowsItsEdges) {
    Deaths deaths;
    const std::unique_ptr<VizEdge> edge(newTelling<EdgeLoader>("edge", deaths));
    auto loop = loadPolygonLoop();
    loop->AddEdge(edge.get());
    loop.reset();
    EXPECT_TRUE(deaths.empty());
}

TEST(VizPolygonLoopTest, AddEdgeAppendsDuplicatesToo) {
    const auto one = loadEdge();
    const auto other = loadEdge();
    const auto loop = loadPolygonLoop();
    loop->AddEdge(other.get());
    loop->AddEdge(one.get());
    loop->AddEdge(other.get());
    EXPECT_EQ(loop->GetEdges(), (Edges{other.get(), one.get(), other.get()}));
}

TEST(VizPolygonLoopTest, AddEdgeIgnoresNull) {
    const auto edge = loadEdge();
    const auto loop = loadPolygonLoop();
    loop->AddEdge(nullptr);
    EXPECT_TRUE(loop->GetEdges().empty());
    loop->AddEdge(edge.get());
    loop->AddEdge(nullptr);
    EXPECT_EQ(loop->GetEdges(), Edges{edge.get()});
}

TEST(VizPolygonLoopTest, SetEdgeCountHintMakesRoomAndNothingElse) {
    const auto loop = loadPolygonLoop();
    loop->SetEdgeCountHint(100);
    EXPECT_GE(loop->GetEdges().capacity(), 100U);
    EXPECT_TRUE(loop->GetEdges().empty());
    loop->SetEdgeCountHint(0);
    EXPECT_GE(loop->GetEdges().capacity(), 100U);
}

TEST(VizPolygonLoopTest, CopiesShareTheEdges) {
    const auto edge = loadEdge();
    const auto loop = loadPolygonLoop();
    loop->AddEdge(edge.get());
    VizPolygonLoop copy(*loop);
    EXPECT_EQ(copy.GetEdges(), Edges{edge.get()});
    copy = *loadPolygonLoop();
    EXPECT_TRUE(copy.GetEdges().empty());
    EXPECT_EQ(loop->GetEdges(), Edges{edge.get()});
}

}  // namespace
}  // namespace KesVizCore
