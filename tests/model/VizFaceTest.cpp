#include "model/ModelTestKit.h"

#include <KesVizCore/model/VizFace.h>
#include <KesVizCore/model/VizPolygon.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace KesVizCore {
namespace {

using support::Deaths;
using support::Floats;
using support::loadFace;
using support::loadPolygon;
using support::Matrix;
using support::newTelling;
using support::PolygonLoader;

/// A face with these triples as vertices and as normals.
std::unique_ptr<VizFace> faceOf(const Floats& vertices, const Floats& normals) {
    return loadFace([&](VizFace& face) {
        face.SetVertices(vertices.size() / 3, vertices.data());
        face.SetNormals(normals.size() / 3, normals.data());
    });
}

TEST(VizFaceTest, IsEmptyAtFirst) {
    const auto face = loadFace();
    EXPECT_TRUE(face->GetVertices().empty());
    EXPECT_TRUE(face->GetNormals().empty());
    EXPECT_TRUE(face->GetPolygons().empty());
    EXPECT_EQ(face->GetMechanicalID(), L"");
}

TEST(VizFaceTest, DestroysItsPolygonsInOrderSkippingNull) {
    Deaths deaths;
    auto face = loadFace();
    face->AddPolygon(newTelling<PolygonLoader>("first", deaths));
    face->AddPolygon(nullptr);
    face->AddPolygon(newTelling<PolygonLoader>("second", deaths));
    EXPECT_TRUE(deaths.empty());
    face.reset();
    EXPECT_EQ(deaths, (Deaths{"first", "second"}));
}

TEST(VizFaceTest, ApplyTransformMovesVerticesAndTurnsNormals) {
    const auto face = faceOf({1, 10, 100}, {1, 10, 100});
    Matrix matrix = support::unevenMatrix();
    face->ApplyTransform(matrix.Columns);
    EXPECT_EQ(face->GetVertices(),
              (Floats{2 + 70 + 1700 + 29, 3 + 110 + 1900 + 31, 5 + 130 + 2300 + 37}));
    EXPECT_EQ(face->GetNormals(), (Floats{2 + 70 + 1700, 3 + 110 + 1900, 5 + 130 + 2300}));
}

TEST(VizFaceTest, ApplyTransformByATranslationKeepsTheNormals) {
    const auto face = faceOf({1, 2, 3, 4, 5, 6}, {0, 0, 1, 0.6F, 0.8F, 0});
    Matrix matrix = support::translationBy(1, 0, 0);
    face->ApplyTransform(matrix.Columns);
    EXPECT_EQ(face->GetVertices(), (Floats{2, 2, 3, 5, 5, 6}));
    EXPECT_EQ(face->GetNormals(), (Floats{0, 0, 1, 0.6F, 0.8F, 0}));
}

TEST(VizFaceTest, ApplyTransformByAScaleStretchesTheNormals) {
    const auto face = faceOf({1, 2, 3}, {0, 0, 1, 0.6F, 0.8F, 0});
    Matrix matrix = support::scaleBy(2, 2, 2);
    face->ApplyTransform(matrix.Columns);
    EXPECT_EQ(face->GetNormals(), (Floats{0, 0, 2, 1.2F, 1.6F, 0}));
}

TEST(VizFaceTest, ApplyTransformByAnUnevenScaleSkewsTheNormals) {
    // The inverse transpose would divide where this multiplies.
    const auto face = faceOf({1, 2, 3}, {0.5F, 0.25F, 1});
    Matrix matrix = support::scaleBy(2, 4, 8);
    face->ApplyTransform(matrix.Columns);
    EXPECT_EQ(face->GetNormals(), (Floats{1, 1, 8}));
}

TEST(VizFaceTest, ApplyTransformOfAFaceWithoutNormalsMovesItsVertices) {
    const auto face = faceOf({1, 2, 3}, {});
    Matrix matrix = support::translationBy(1, 1, 1);
    face->ApplyTransform(matrix.Columns);
    EXPECT_EQ(face->GetVertices(), (Floats{2, 3, 4}));
    EXPECT_TRUE(face->GetNormals().empty());
}

TEST(VizFaceTest, ApplyTransformIsAsExactAsFloatsAre) {
    SeededNumbers numbers(55);
    for (int round = 0; round < 50; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        Matrix matrix = support::randomMatrix(numbers);
        const Vector point = numbers.VectorWithin(1000.0);
        const Vector normal = numbers.UnitVector();
        const auto face = faceOf({point[0], point[1], point[2]}, {normal[0], normal[1], normal[2]});
        face->ApplyTransform(matrix.Columns);
        const LongVector moved = support::transformed(matrix, point, true);
        const LongVector turned = support::transformed(matrix, normal, false);
        for (std::size_t axis = 0; axis < 3; ++axis) {
            EXPECT_LE(std::fabs(face->GetVertices()[axis] - moved[axis]),
                      support::roundingOf(matrix, point)[axis]);
            EXPECT_LE(std::fabs(face->GetNormals()[axis] - turned[axis]),
                      support::roundingOf(matrix, normal)[axis]);
        }
    }
}

TEST(VizFaceTest, SetVerticesCountsTriples) {
    const Floats data = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    const auto face = loadFace();
    face->SetVertices(2, data.data());
    EXPECT_EQ(face->GetVertices(), (Floats{1, 2, 3, 4, 5, 6}));
    EXPECT_TRUE(face->GetNormals().empty());
}

TEST(VizFaceTest, ASecondSetVerticesAppends) {
    const auto face = faceOf({1, 2, 3}, {});
    const Floats more = {4, 5, 6};
    face->SetVertices(1, more.data());
    EXPECT_EQ(face->GetVertices(), (Floats{1, 2, 3, 4, 5, 6}));
}

TEST(VizFaceTest, MoreTriplesThanAnArrayCanHoldAreRefused) {
    // Three times some of these come to few floats or none, once they have gone through zero.
    constexpr std::size_t most = std::numeric_limits<std::size_t>::max();
    const Floats data(9, 1.0F);
    const auto face = faceOf({1, 2, 3}, {4, 5, 6});
    const auto isRefused =
        testing::ThrowsMessage<std::length_error>("more triples than an array can hold");
    for (const std::size_t count :
         {data.max_size() / 3 + 1, most / 3 + 1, most / 3 * 2 + 2, most, most / 3}) {
        EXPECT_THAT([&] { face->SetVertices(count, data.data()); }, isRefused) << count;
        EXPECT_THAT([&] { face->SetNormals(count, data.data()); }, isRefused) << count;
    }
    EXPECT_EQ(face->GetVertices(), (Floats{1, 2, 3}));
    EXPECT_EQ(face->GetNormals(), (Floats{4, 5, 6}));
}

TEST(VizFaceTest, ACountHintBeyondWhatAVectorCanHoldIsRefused) {
    const auto face = loadFace();
    EXPECT_THROW(face->SetPolygonSizeHint(std::numeric_limits<std::size_t>::max()),
                 std::length_error);
    EXPECT_TRUE(face->GetPolygons().empty());
}

TEST(VizFaceTest, SetVerticesTakesTriplesFromBelowAndAboveItsOwn) {
    // Constants and locals lie on either side of the heap.
    static const float constants[3] = {4, 5, 6};
    const float locals[3] = {7, 8, 9};
    const auto face = faceOf({1, 2, 3}, {});
    face->SetVertices(1, constants);
    face->SetVertices(1, locals);
    EXPECT_EQ(face->GetVertices(), (Floats{1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

TEST(VizFaceTest, SetVerticesOfNothingChangesNothing) {
    const auto face = faceOf({1, 2, 3}, {4, 5, 6});
    face->SetVertices(0, nullptr);
    face->SetNormals(0, nullptr);
    EXPECT_EQ(face->GetVertices(), (Floats{1, 2, 3}));
    EXPECT_EQ(face->GetNormals(), (Floats{4, 5, 6}));
}

TEST(VizFaceTest, SetVerticesOfItsOwnVerticesDoublesThem) {
    const auto face = faceOf({1, 2, 3, 4, 5, 6}, {});
    face->SetVertices(2, face->GetVertices().data());
    EXPECT_EQ(face->GetVertices(), (Floats{1, 2, 3, 4, 5, 6, 1, 2, 3, 4, 5, 6}));
    face->SetVertices(1, face->GetVertices().data() + 9);
    EXPECT_EQ(face->GetVertices(), (Floats{1, 2, 3, 4, 5, 6, 1, 2, 3, 4, 5, 6, 4, 5, 6}));
}

TEST(VizFaceTest, SetNormalsCountsTriplesAndAppends) {
    const Floats data = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    const auto face = loadFace();
    face->SetNormals(1, data.data());
    face->SetNormals(2, data.data() + 3);
    EXPECT_EQ(face->GetNormals(), data);
    EXPECT_TRUE(face->GetVertices().empty());
}

TEST(VizFaceTest, ANormalForEachVertexIsNotAskedFor) {
    const auto face = faceOf({1, 2, 3}, {4, 5, 6, 7, 8, 9});
    EXPECT_EQ(face->GetVertices().size(), 3U);
    EXPECT_EQ(face->GetNormals().size(), 6U);
}

TEST(VizFaceTest, AddPolygonAppendsNullAndDuplicatesToo) {
    const auto face = loadFace();
    VizPolygon* const polygon = loadPolygon().release();
    face->AddPolygon(nullptr);
    face->AddPolygon(polygon);
    face->AddPolygon(nullptr);
    EXPECT_EQ(face->GetPolygons(), (std::vector<VizPolygon*>{nullptr, polygon, nullptr}));
}

TEST(VizFaceTest, SetPolygonSizeHintMakesRoomAndNothingElse) {
    const auto face = loadFace();
    VizPolygon* const polygon = loadPolygon().release();
    face->AddPolygon(polygon);
    face->SetPolygonSizeHint(100);
    EXPECT_GE(face->GetPolygons().capacity(), 100U);
    face->SetPolygonSizeHint(0);
    EXPECT_GE(face->GetPolygons().capacity(), 100U);
    EXPECT_EQ(face->GetPolygons(), std::vector<VizPolygon*>{polygon});
}

TEST(VizFaceTest, SetMechanicalIDReplacesIt) {
    const auto face = loadFace();
    face->SetMechanicalID(L"first");
    face->SetMechanicalID(L"second");
    EXPECT_EQ(face->GetMechanicalID(), L"second");
}

TEST(VizFaceTest, RemoveTransparencyMakesTheColorOpaque) {
    const auto face = loadFace();
    face->SetColor(RGBAColor(1, 2, 3, 128));
    face->RemoveTransparency();
    EXPECT_TRUE(face->GetColor() == RGBAColor(1, 2, 3, 255));
    EXPECT_TRUE(face->HasColor());
}

TEST(VizFaceTest, RemoveTransparencyGivesNoColor) {
    const auto face = loadFace();
    face->RemoveTransparency();
    EXPECT_FALSE(face->HasColor());
}

TEST(VizFaceTest, CopiesHaveArraysOfTheirOwnAndShareThePolygons) {
    Deaths deaths;
    auto face = faceOf({1, 2, 3}, {0, 0, 1});
    face->SetMechanicalID(L"mechanical");
    VizPolygon* const polygon = newTelling<PolygonLoader>("polygon", deaths);
    face->AddPolygon(polygon);
    {
        VizFace copy(*face);
        Matrix matrix = support::scaleBy(2, 2, 2);
        copy.ApplyTransform(matrix.Columns);
        EXPECT_EQ(copy.GetVertices(), (Floats{2, 4, 6}));
        EXPECT_EQ(copy.GetNormals(), (Floats{0, 0, 2}));
        EXPECT_EQ(copy.GetMechanicalID(), L"mechanical");
        EXPECT_EQ(copy.GetPolygons(), std::vector<VizPolygon*>{polygon});
        copy = *loadFace();  // lets go of the polygon, which the original goes on owning
        EXPECT_TRUE(copy.GetPolygons().empty());
        EXPECT_TRUE(copy.GetVertices().empty());
    }
    EXPECT_TRUE(deaths.empty());
    EXPECT_EQ(face->GetVertices(), (Floats{1, 2, 3}));
    face.reset();
    EXPECT_EQ(deaths, Deaths{"polygon"});
}

}  // namespace
}  // namespace KesVizCore
