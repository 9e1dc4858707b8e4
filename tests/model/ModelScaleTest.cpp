/// @file
/// Models as large as they come: what is asked of a million elements stays quick. A step that
/// grew with their square would not end before the time limit of the test.

#include "model/ModelTestKit.h"
#include "model/PickingHost.h"
#include "support/Scale.h"

#include <KesVizCore/model/VizContainer.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

namespace KesVizCore {
namespace {

using support::MeshLoader;
using support::newPickable;
using support::PickingAdapter;

const std::size_t kMillion = support::scaled(1'000'000U);

TEST(ModelScaleTest, PicksTheLastOfAMillionMeshes) {
    VizContainer container(1);
    container.SetMeshCountHint(kMillion);
    for (std::uint64_t mesh = 0; mesh < kMillion; ++mesh) {
        container.AddMesh(newPickable<MeshLoader>({1, mesh}));
    }
    PickingAdapter adapter({1, kMillion - 1, 5});
    VizElement* out = nullptr;
    EXPECT_TRUE(container.PickVisual(&adapter, Ray(), out));
    EXPECT_EQ(out, container.GetMeshes().back());
    adapter.picked = RenderId(support::Path{1, kMillion}, View3D);
    EXPECT_FALSE(container.PickVisual(&adapter, Ray(), out));
    EXPECT_EQ(adapter.asked, 2);
}

TEST(ModelScaleTest, TransformsAMillionVertices) {
    support::Floats vertices(3 * kMillion);
    for (std::size_t place = 0; place < vertices.size(); ++place) {
        vertices[place] = static_cast<float>(place % 1000);
    }
    support::Matrix matrix = support::translationBy(1, 2, 3);
    const auto edge = support::loadEdge([&](VizEdge& made) { made.SetVertices(vertices); });
    const auto face = support::loadFace([&](VizFace& made) {
        made.SetVertices(kMillion, vertices.data());
        made.SetNormals(kMillion, vertices.data());
    });
    edge->ApplyTransform(matrix.Columns);
    face->ApplyTransform(matrix.Columns);
    EXPECT_EQ(face->GetNormals(), vertices);
    for (std::size_t place = 0; place < vertices.size(); ++place) {
        vertices[place] += static_cast<float>(place % 3 + 1);
    }
    EXPECT_EQ(edge->GetVertices(), vertices);
    EXPECT_EQ(face->GetVertices(), vertices);
}

TEST(ModelScaleTest, GathersVerticesInManySmallSteps) {
    // Each call reserves room for its own points alone, which must not make all move every time.
    const auto edge = support::loadEdge();
    const support::Floats point = {1, 2, 3};
    for (std::size_t count = 0; count < kMillion; ++count) {
        edge->SetVertices(point);
    }
    EXPECT_EQ(edge->GetVertices().size(), 3 * kMillion);
}

TEST(ModelScaleTest, MapsAMeshOfAHundredThousandFaces) {
    const int faces = support::scaled(100'000);
    const auto mesh = support::loadMesh();
    for (int face = 0; face < faces; ++face) {
        mesh->AddFace(support::loadFace([face](VizFace& made) {
                          made.SetVisualID(std::to_wstring(face));
                      }).release());
    }
    std::map<std::wstring, VizElement*> elements;
    mesh->FillVisuIdMap(elements);
    EXPECT_EQ(elements.size(), static_cast<std::size_t>(faces) + 1);
    EXPECT_EQ(elements[std::to_wstring(faces - 1)], mesh->GetFaces().back());
}

}  // namespace
}  // namespace KesVizCore
