#include "model/ModelTestKit.h"
#include "model/VerticesTest.h"

#include <KesVizCore/model/VizEdge.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

namespace KesVizCore {
namespace support {
namespace {

INSTANTIATE_TYPED_TEST_SUITE_P(VizEdge, VerticesTest, EdgeLoader);

}  // namespace
}  // namespace support

namespace {

using support::EdgeLoader;
using support::loadEdge;

TEST(VizEdgeTest, IndicesComeFromTheLoader) {
    const auto edge = loadEdge([](VizEdge& made) { EdgeLoader::setIndices(made, {0, -1, 2}); });
    EXPECT_EQ(edge->GetIndices(), (std::vector<int>{0, -1, 2}));
}

TEST(VizEdgeTest, TheLoaderReplacesTheIndices) {
    const auto edge = loadEdge([](VizEdge& made) {
        EdgeLoader::setIndices(made, {0, 1, 2});
        EdgeLoader::setIndices(made, {7});
    });
    EXPECT_EQ(edge->GetIndices(), (std::vector<int>{7}));
}

TEST(VizEdgeTest, TransformsAndVerticesLeaveTheIndicesAlone) {
    const auto edge = loadEdge([](VizEdge& made) { EdgeLoader::setIndices(made, {0, 1}); });
    edge->SetVertices({1, 2, 3, 4, 5, 6});
    support::Matrix matrix = support::unevenMatrix();
    edge->ApplyTransform(matrix.Columns);
    EXPECT_EQ(edge->GetIndices(), (std::vector<int>{0, 1}));
}

TEST(VizEdgeTest, LineTypeIsAnyNumberOfTheHosts) {
    static_assert(std::is_same_v<std::underlying_type_t<VizEdge::EdgeType>, std::int32_t>);
    const auto edge = loadEdge();
    EXPECT_EQ(static_cast<std::int32_t>(edge->GetLineType()), 0);
    for (const std::int32_t number : {0, 1, 12345, -1, INT32_MIN, INT32_MAX}) {
        edge->SetLineType(static_cast<VizEdge::EdgeType>(number));
        EXPECT_EQ(static_cast<std::int32_t>(edge->GetLineType()), number);
    }
}

TEST(VizEdgeTest, SetMechanicalIDReplacesIt) {
    const auto edge = loadEdge();
    EXPECT_EQ(edge->GetMechanicalID(), L"");
    edge->SetMechanicalID(L"first");
    edge->SetMechanicalID(L"second");
    EXPECT_EQ(edge->GetMechanicalID(), L"second");
    edge->GetMechanicalID() += L" changed";  // a copy
    EXPECT_EQ(edge->GetMechanicalID(), L"second");
    EXPECT_EQ(edge->GetVisualID(), L"");
}

TEST(VizEdgeTest, CopiesCopyEveryFieldOfItsOwn) {
    const auto edge = loadEdge([](VizEdge& made) {
        EdgeLoader::setIndices(made, {0, 1});
        made.SetLineType(static_cast<VizEdge::EdgeType>(5));
        made.SetMechanicalID(L"mechanical");
    });
    VizEdge copy(*edge);
    EXPECT_EQ(copy.GetIndices(), (std::vector<int>{0, 1}));
    EXPECT_EQ(copy.GetLineType(), 5);
    EXPECT_EQ(copy.GetMechanicalID(), L"mechanical");
    const auto assigned = loadEdge();
    *assigned = *edge;
    EXPECT_EQ(assigned->GetIndices(), (std::vector<int>{0, 1}));
    EXPECT_EQ(assigned->GetLineType(), 5);
    EXPECT_EQ(assigned->GetMechanicalID(), L"mechanical");
}

}  // namespace
}  // namespace KesVizCore
