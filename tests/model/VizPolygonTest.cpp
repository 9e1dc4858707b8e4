#include "model/ModelTestKit.h"

#include <KesVizCore/core/TriangleType.h>
#include <KesVizCore/model/VizPolygon.h>
#include <KesVizCore/model/VizPolygonLoop.h>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace KesVizCore {
namespace {

using support::Deaths;
using support::loadPolygon;
using support::loadPolygonLoop;
using support::newTelling;
using support::PolygonLoopLoader;

using Indices = std::vector<int>;
using Loops = std::vector<VizPolygonLoop*>;

TEST(VizPolygonTest, IsEmptyAtFirst) {
    const auto polygon = loadPolygon();
    EXPECT_TRUE(polygon->GetIndices().empty());
    EXPECT_TRUE(polygon->GetPolygonLoopList().empty());
}

TEST(VizPolygonTest, BorrowsItsLoops) {
    Deaths deaths;
    const std::unique_ptr<VizPolygonLoop> loop(newTelling<PolygonLoopLoader>("loop", deaths));
    auto polygon = loadPolygon();
    polygon->AddLoop(loop.get());
    polygon.reset();
    EXPECT_TRUE(deaths.empty());
}

TEST(VizPolygonTest, SetIndicesStoresAsManyAsItIsTold) {
    const int data[4] = {0, -1, 2, 3};
    const auto polygon = loadPolygon();
    polygon->SetIndices(3, data);
    EXPECT_EQ(polygon->GetIndices(), (Indices{0, -1, 2}));
}

TEST(VizPolygonTest, ASecondSetIndicesAppends) {
    const int data[4] = {0, 1, 2, 3};
    const auto polygon = loadPolygon();
    polygon->SetIndices(3, data);
    polygon->SetIndices(2, data + 2);
    EXPECT_EQ(polygon->GetIndices(), (Indices{0, 1, 2, 2, 3}));
}

TEST(VizPolygonTest, SetIndicesOfNothingChangesNothing) {
    const int data[1] = {7};
    const auto polygon = loadPolygon();
    polygon->SetIndices(0, nullptr);
    EXPECT_TRUE(polygon->GetIndices().empty());
    polygon->SetIndices(1, data);
    polygon->SetIndices(0, nullptr);
    EXPECT_EQ(polygon->GetIndices(), Indices{7});
}

TEST(VizPolygonTest, SetIndicesOfItsOwnIndicesDoublesThem) {
    const int data[2] = {1, 2};
    const auto polygon = loadPolygon();
    polygon->SetIndices(2, data);
    polygon->SetIndices(2, polygon->GetIndices().data());
    EXPECT_EQ(polygon->GetIndices(), (Indices{1, 2, 1, 2}));
}

TEST(VizPolygonTest, AddLoopAppendsDuplicatesToo) {
    const auto one = loadPolygonLoop();
    const auto other = loadPolygonLoop();
    const auto polygon = loadPolygon();
    polygon->AddLoop(other.get());
    polygon->AddLoop(one.get());
    polygon->AddLoop(other.get());
    EXPECT_EQ(polygon->GetPolygonLoopList(), (Loops{other.get(), one.get(), other.get()}));
}

TEST(VizPolygonTest, AddLoopIgnoresNull) {
    const auto loop = loadPolygonLoop();
    const auto polygon = loadPolygon();
    polygon->AddLoop(nullptr);
    EXPECT_TRUE(polygon->GetPolygonLoopList().empty());
    polygon->AddLoop(loop.get());
    polygon->AddLoop(nullptr);
    EXPECT_EQ(polygon->GetPolygonLoopList(), Loops{loop.get()});
}

TEST(VizPolygonTest, SetPolygonLoopCountHintMakesRoomAndNothingElse) {
    const auto polygon = loadPolygon();
    polygon->SetPolygonLoopCountHint(100);
    EXPECT_GE(polygon->GetPolygonLoopList().capacity(), 100U);
    EXPECT_TRUE(polygon->GetPolygonLoopList().empty());
    polygon->SetPolygonLoopCountHint(0);
    EXPECT_GE(polygon->GetPolygonLoopList().capacity(), 100U);
}

TEST(VizPolygonTest, SetPolygonTypeStoresAnyNumber) {
    const auto polygon = loadPolygon();
    for (const TriangleType type : {IndexedTriangles, TriangleStrip, TriangleFan, TriangleList,
                                    static_cast<TriangleType>(-7)}) {
        polygon->SetPolygonType(type);
        EXPECT_EQ(polygon->GetPolygonType(), type);
    }
}

TEST(VizPolygonTest, CopiesHaveIndicesOfTheirOwnAndShareTheLoops) {
    const int data[3] = {0, 1, 2};
    const auto loop = loadPolygonLoop();
    const auto polygon = loadPolygon();
    polygon->SetIndices(3, data);
    polygon->AddLoop(loop.get());
    polygon->SetPolygonType(TriangleFan);
    VizPolygon copy(*polygon);
    copy.SetIndices(1, data);
    EXPECT_EQ(copy.GetIndices(), (Indices{0, 1, 2, 0}));
    EXPECT_EQ(polygon->GetIndices(), (Indices{0, 1, 2}));
    EXPECT_EQ(copy.GetPolygonLoopList(), Loops{loop.get()});
    EXPECT_EQ(copy.GetPolygonType(), TriangleFan);
    copy = *loadPolygon();
    EXPECT_TRUE(copy.GetIndices().empty());
    EXPECT_TRUE(copy.GetPolygonLoopList().empty());
}

}  // namespace
}  // namespace KesVizCore
