#include "support/EmptyHost.h"

#include <KesVizCore/graph/AGeometryItemFactory.h>
#include <KesVizCore/graph/AGeometryItemTriangleSet.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace KesVizCore {
namespace {

using Indices = std::vector<int>;

/// The arguments of one call of CreateTriangleSet.
struct TriangleSetCall {
    std::uint64_t id = 0;
    const float* vertices = nullptr;
    const float* normals = nullptr;
    Indices indices;
    int vertexCount = 0;
    int normalCount = 0;
    int indexCount = 0;
    TriangleType type = TriangleList;
};

class HostTriangleSet : public AGeometryItemTriangleSet {
public:
    explicit HostTriangleSet(std::uint64_t id) : AGeometryItemTriangleSet(id) {}
    bool GetExtents(float* /*extrema*/) const override { return false; }
    void SetVisible(const bool& /*visible*/) override {}
    bool IsVisible() const override { return true; }
};

/// Writes down the triangle sets that it is asked for and answers always the same item.
class RecordingFactory : public support::EmptyItemFactory {
public:
    AGeometryItem* CreateTriangleSet(const std::uint64_t& id, float* vertices, float* normals,
                                     int* indices, int vertexCount, int normalCount, int indexCount,
                                     TriangleType triangleType) override {
        calls.push_back({id, vertices, normals, Indices(indices, indices + indexCount), vertexCount,
                         normalCount, indexCount, triangleType});
        return answer;
    }

    /// The one call that CreateQuadSet makes for @p quads, of which @p count are told.
    TriangleSetCall callForQuads(Indices quads, int count) {
        calls.clear();
        CreateQuadSet(5, nullptr, quads.data(), 8, count, nullptr, 0);
        return calls.size() == 1 ? calls.front() : TriangleSetCall();
    }

    std::vector<TriangleSetCall> calls;
    AGeometryItem* answer = nullptr;
};

/// Corner by corner, straight from what a quad is.
Indices trianglesOf(const Indices& quads, int count) {
    Indices triangles;
    for (int first = 0; first + 3 < count; first += 4) {
        for (const int corner : {0, 1, 2, 0, 2, 3}) {
            triangles.push_back(quads[static_cast<std::size_t>(first + corner)]);
        }
    }
    return triangles;
}

// --- AddColorMap --------------------------------------------------------------------------------

TEST(AGeometryItemFactoryTest, AddColorMapDoesNothing) {
    RecordingFactory factory;
    HostTriangleSet triangles(5);
    factory.AddColorMap(&triangles, {0.0F, 1.0F, 0.0F, 1.0F});
    factory.AddColorMap(nullptr, {});
    EXPECT_TRUE(factory.calls.empty());
    EXPECT_EQ(triangles.GetColor()[1], 0.0F);
    EXPECT_EQ(triangles.GetNumberOfTriangles(), 0);
}

TEST(AGeometryItemFactoryTest, AddColorMapIsTheHostsToOverride) {
    struct ColoringFactory : RecordingFactory {
        void AddColorMap(AGeometryItemTriangleSet* triangles,
                         const std::vector<float>& colors) override {
            colored = triangles;
            map = colors;
        }
        AGeometryItemTriangleSet* colored = nullptr;
        std::vector<float> map;
    };
    ColoringFactory factory;
    AGeometryItemFactory& base = factory;
    HostTriangleSet triangles(5);
    base.AddColorMap(&triangles, {0.5F});
    EXPECT_EQ(factory.colored, &triangles);
    EXPECT_EQ(factory.map, std::vector<float>{0.5F});
}

// --- CreateQuadSet ------------------------------------------------------------------------------

TEST(AGeometryItemFactoryTest, QuadSetSplitsEachQuadAlongItsFirstDiagonal) {
    RecordingFactory factory;
    const TriangleSetCall call = factory.callForQuads({0, 1, 2, 3, 4, 5, 6, 7}, 8);
    EXPECT_EQ(call.indices, (Indices{0, 1, 2, 0, 2, 3, 4, 5, 6, 4, 6, 7}));
    EXPECT_EQ(call.indexCount, 12);
}

TEST(AGeometryItemFactoryTest, QuadSetIgnoresIndicesBeyondTheLastWholeQuad) {
    RecordingFactory factory;
    const TriangleSetCall call = factory.callForQuads({0, 1, 2, 3, 4, 5, 6, 7, 8, 9}, 10);
    EXPECT_EQ(call.indices, (Indices{0, 1, 2, 0, 2, 3, 4, 5, 6, 4, 6, 7}));
    EXPECT_EQ(call.indexCount, 12);
}

TEST(AGeometryItemFactoryTest, QuadSetOfFewerThanFourIndicesIsStillMadeWithoutAny) {
    for (int count = 0; count < 4; ++count) {
        SCOPED_TRACE(count);
        RecordingFactory factory;
        factory.CreateQuadSet(5, nullptr, Indices{0, 1, 2, 3}.data(), 8, count, nullptr, 0);
        ASSERT_EQ(factory.calls.size(), 1U);
        EXPECT_EQ(factory.calls[0].indexCount, 0);
    }
}

TEST(AGeometryItemFactoryTest, QuadSetOfANegativeCountIsMadeWithoutIndices) {
    for (const int count : {-1, -3, -4, -8, std::numeric_limits<int>::min()}) {
        SCOPED_TRACE(count);
        RecordingFactory factory;
        factory.CreateQuadSet(5, nullptr, nullptr, 8, count, nullptr, 0);
        ASSERT_EQ(factory.calls.size(), 1U);
        EXPECT_EQ(factory.calls[0].indexCount, 0);
    }
}

TEST(AGeometryItemFactoryTest, QuadSetHandsEverythingElseThroughUntouched) {
    RecordingFactory factory;
    float vertices[] = {1.0F, 2.0F, 3.0F};
    float normals[] = {4.0F, 5.0F};
    int quads[] = {3, 2, 1, 0};
    factory.CreateQuadSet(std::numeric_limits<std::uint64_t>::max(), vertices, quads, -17, 4,
                          normals, 23);
    ASSERT_EQ(factory.calls.size(), 1U);
    const TriangleSetCall& call = factory.calls[0];
    EXPECT_EQ(call.id, std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(call.vertices, vertices);
    EXPECT_EQ(call.normals, normals);
    EXPECT_EQ(call.vertexCount, -17);
    EXPECT_EQ(call.normalCount, 23);
    EXPECT_EQ(vertices[0], 1.0F);
    EXPECT_EQ(normals[1], 5.0F);
    EXPECT_EQ(quads[0], 3);
}

TEST(AGeometryItemFactoryTest, QuadSetIsAnIndexedListOfTriangles) {
    RecordingFactory factory;
    EXPECT_EQ(factory.callForQuads({0, 1, 2, 3}, 4).type, IndexedTriangles);
}

TEST(AGeometryItemFactoryTest, QuadSetAnswersWhatTheCreatorAnswers) {
    RecordingFactory factory;
    HostTriangleSet item(5);
    int quads[] = {0, 1, 2, 3};
    EXPECT_EQ(factory.CreateQuadSet(5, nullptr, quads, 4, 4, nullptr, 0), nullptr);
    factory.answer = &item;
    EXPECT_EQ(factory.CreateQuadSet(5, nullptr, quads, 4, 4, nullptr, 0), &item);
}

TEST(AGeometryItemFactoryTest, QuadSetsOfRandomQuadsEqualACornerByCornerSplit) {
    constexpr unsigned kSeed = 20260801;
    std::mt19937 random(kSeed);
    std::uniform_int_distribution<int> length(0, 60);
    std::uniform_int_distribution<int> index(std::numeric_limits<int>::min(),
                                             std::numeric_limits<int>::max());
    RecordingFactory factory;
    for (int round = 0; round < 500; ++round) {
        Indices quads(static_cast<std::size_t>(length(random)));
        for (int& corner : quads) {
            corner = index(random);
        }
        const int count = static_cast<int>(quads.size());
        SCOPED_TRACE(testing::Message() << "seed " << kSeed << " round " << round << " quads "
                                        << testing::PrintToString(quads));
        const TriangleSetCall call = factory.callForQuads(quads, count);
        EXPECT_EQ(call.indices, trianglesOf(quads, count));
        EXPECT_EQ(call.indexCount, 6 * (count / 4));
    }
}

}  // namespace
}  // namespace KesVizCore
