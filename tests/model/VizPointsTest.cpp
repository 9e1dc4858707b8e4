#include "model/ModelTestKit.h"
#include "model/VerticesTest.h"

#include <KesVizCore/model/VizPoints.h>

#include <gtest/gtest.h>

#include <vector>

namespace KesVizCore {
namespace support {
namespace {

INSTANTIATE_TYPED_TEST_SUITE_P(VizPoints, VerticesTest, PointsLoader);

}  // namespace
}  // namespace support

namespace {

using support::loadPoints;
using support::PointsLoader;

TEST(VizPointsTest, SetIndicesDoesNothing) {
    const auto points = loadPoints();
    points->SetIndices({0, 1, 2});
    EXPECT_TRUE(points->GetIndices().empty());
}

TEST(VizPointsTest, SetIndicesLeavesThoseOfTheLoader) {
    const auto points = loadPoints([](VizPoints& made) {
        PointsLoader::setIndices(made, {0, -1, 2});
    });
    points->SetIndices({7});
    points->SetIndices({});
    EXPECT_EQ(points->GetIndices(), (std::vector<int>{0, -1, 2}));
}

TEST(VizPointsTest, TheLoaderReplacesTheIndices) {
    const auto points = loadPoints([](VizPoints& made) {
        PointsLoader::setIndices(made, {0, 1, 2});
        PointsLoader::setIndices(made, {7});
    });
    EXPECT_EQ(points->GetIndices(), (std::vector<int>{7}));
}

TEST(VizPointsTest, CopiesCopyTheIndices) {
    const auto points = loadPoints([](VizPoints& made) { PointsLoader::setIndices(made, {0, 1}); });
    const VizPoints copy(*points);
    EXPECT_EQ(copy.GetIndices(), (std::vector<int>{0, 1}));
    const auto assigned = loadPoints();
    *assigned = *points;
    EXPECT_EQ(assigned->GetIndices(), (std::vector<int>{0, 1}));
}

}  // namespace
}  // namespace KesVizCore
