#include "model/ModelTestKit.h"

#include <KesVizCore/model/VizEdge.h>
#include <KesVizCore/model/VizFace.h>
#include <KesVizCore/model/VizMesh.h>

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace KesVizCore {
namespace {

using support::Deaths;
using support::EdgeLoader;
using support::FaceLoader;
using support::loadEdge;
using support::loadFace;
using support::loadMesh;
using support::newTelling;

using Edges = std::vector<VizEdge*>;
using Faces = std::vector<VizFace*>;
using Elements = std::map<std::wstring, VizElement*>;
using Texts = std::map<std::wstring, std::wstring>;

/// Names an element by its visual and its mechanical id.
template <typename Element>
Element* named(Element* element, const std::wstring& visualId, const std::wstring& mechanicalId) {
    element->SetVisualID(visualId);
    element->SetMechanicalID(mechanicalId);
    return element;
}

TEST(VizMeshTest, IsEmptyAtFirst) {
    const auto mesh = loadMesh();
    EXPECT_TRUE(mesh->GetFaces().empty());
    EXPECT_TRUE(mesh->GetEdges().empty());
    EXPECT_EQ(mesh->GetMechanicalID(), L"");
}

TEST(VizMeshTest, DestroysItsFacesFirstThenItsEdgesInOrder) {
    Deaths deaths;
    auto mesh = loadMesh();
    mesh->AddEdge(newTelling<EdgeLoader>("edge 1", deaths));
    mesh->AddFace(newTelling<FaceLoader>("face 1", deaths));
    mesh->AddEdge(newTelling<EdgeLoader>("edge 2", deaths));
    mesh->AddFace(newTelling<FaceLoader>("face 2", deaths));
    EXPECT_TRUE(deaths.empty());
    mesh.reset();
    EXPECT_EQ(deaths, (Deaths{"face 1", "face 2", "edge 1", "edge 2"}));
}

TEST(VizMeshTest, DestructionSkipsNull) {
    Deaths deaths;
    auto mesh = loadMesh();
    mesh->AddFace(nullptr);
    mesh->AddFace(newTelling<FaceLoader>("face", deaths));
    mesh->AddEdge(nullptr);
    mesh->AddEdge(newTelling<EdgeLoader>("edge", deaths));
    mesh.reset();
    EXPECT_EQ(deaths, (Deaths{"face", "edge"}));
}

TEST(VizMeshTest, AddFaceAppendsNullToo) {
    const auto mesh = loadMesh();
    VizFace* const one = loadFace().release();
    VizFace* const other = loadFace().release();
    mesh->AddFace(other);
    mesh->AddFace(nullptr);
    mesh->AddFace(one);
    EXPECT_EQ(mesh->GetFaces(), (Faces{other, nullptr, one}));
    EXPECT_TRUE(mesh->GetEdges().empty());
}

TEST(VizMeshTest, AddEdgeAppendsNullToo) {
    const auto mesh = loadMesh();
    VizEdge* const one = loadEdge().release();
    VizEdge* const other = loadEdge().release();
    mesh->AddEdge(other);
    mesh->AddEdge(nullptr);
    mesh->AddEdge(one);
    EXPECT_EQ(mesh->GetEdges(), (Edges{other, nullptr, one}));
    EXPECT_TRUE(mesh->GetFaces().empty());
}

TEST(VizMeshTest, SetFaceCountHintMakesRoomForFacesAndNothingElse) {
    const auto mesh = loadMesh();
    mesh->SetFaceCountHint(100);
    EXPECT_GE(mesh->GetFaces().capacity(), 100U);
    EXPECT_LT(mesh->GetEdges().capacity(), 100U);
    EXPECT_TRUE(mesh->GetFaces().empty());
    mesh->SetFaceCountHint(0);
    EXPECT_GE(mesh->GetFaces().capacity(), 100U);
}

TEST(VizMeshTest, SetEdgeCountHintMakesRoomForEdgesAndNothingElse) {
    const auto mesh = loadMesh();
    mesh->SetEdgeCountHint(100);
    EXPECT_GE(mesh->GetEdges().capacity(), 100U);
    EXPECT_LT(mesh->GetFaces().capacity(), 100U);
    EXPECT_TRUE(mesh->GetEdges().empty());
    mesh->SetEdgeCountHint(0);
    EXPECT_GE(mesh->GetEdges().capacity(), 100U);
}

TEST(VizMeshTest, SetMechanicalIDReplacesIt) {
    const auto mesh = loadMesh();
    mesh->SetMechanicalID(L"first");
    mesh->SetMechanicalID(L"second");
    EXPECT_EQ(mesh->GetMechanicalID(), L"second");
    EXPECT_EQ(mesh->GetVisualID(), L"");
}

TEST(VizMeshTest, FillVisuIdMapEntersTheMeshItsFacesAndItsEdges) {
    const auto mesh = loadMesh();
    named(mesh.get(), L"m", L"");
    VizFace* const face1 = named(loadFace().release(), L"f1", L"");
    VizFace* const face2 = named(loadFace().release(), L"f2", L"");
    VizEdge* const edge = named(loadEdge().release(), L"e", L"");
    mesh->AddFace(face1);
    mesh->AddFace(face2);
    mesh->AddEdge(edge);
    Elements elements;
    mesh->FillVisuIdMap(elements);
    EXPECT_EQ(elements,
              (Elements{{L"m", mesh.get()}, {L"f1", face1}, {L"f2", face2}, {L"e", edge}}));
}

TEST(VizMeshTest, FillVisuIdMapLetsEdgesWinOverFacesAndFacesOverTheMesh) {
    const auto mesh = loadMesh();
    named(mesh.get(), L"face", L"");
    VizFace* const face = named(loadFace().release(), L"face", L"");
    VizFace* const beaten = named(loadFace().release(), L"edge", L"");
    VizEdge* const edge = named(loadEdge().release(), L"edge", L"");
    mesh->AddEdge(edge);
    mesh->AddFace(face);
    mesh->AddFace(beaten);
    Elements elements;
    mesh->FillVisuIdMap(elements);
    EXPECT_EQ(elements, (Elements{{L"face", face}, {L"edge", edge}}));
}

TEST(VizMeshTest, FillVisuIdMapLetsTheLastOfAKindWin) {
    const auto mesh = loadMesh();
    named(mesh.get(), L"m", L"");
    VizFace* const face1 = named(loadFace().release(), L"f", L"");
    VizFace* const face2 = named(loadFace().release(), L"f", L"");
    VizEdge* const edge1 = named(loadEdge().release(), L"e", L"");
    VizEdge* const edge2 = named(loadEdge().release(), L"e", L"");
    mesh->AddFace(face1);
    mesh->AddFace(face2);
    mesh->AddEdge(edge1);
    mesh->AddEdge(edge2);
    Elements elements;
    mesh->FillVisuIdMap(elements);
    EXPECT_EQ(elements, (Elements{{L"m", mesh.get()}, {L"f", face2}, {L"e", edge2}}));
}

TEST(VizMeshTest, FillVisuIdMapEntersEmptyIdsToo) {
    const auto mesh = loadMesh();
    Elements elements;
    mesh->FillVisuIdMap(elements);
    EXPECT_EQ(elements, (Elements{{L"", mesh.get()}}));
    VizEdge* const edge = loadEdge().release();
    mesh->AddFace(loadFace().release());
    mesh->AddEdge(edge);
    mesh->FillVisuIdMap(elements);
    EXPECT_EQ(elements, (Elements{{L"", edge}}));
}

TEST(VizMeshTest, FillVisuIdMapSkipsNull) {
    const auto mesh = loadMesh();
    named(mesh.get(), L"m", L"mechanical");
    mesh->AddFace(nullptr);
    mesh->AddEdge(nullptr);
    Elements elements;
    mesh->FillVisuIdMap(elements);
    EXPECT_EQ(elements, (Elements{{L"m", mesh.get()}}));
    Texts texts;
    mesh->FillVisuIdMap(texts);
    EXPECT_EQ(texts, (Texts{{L"m", L"mechanical"}}));
}

TEST(VizMeshTest, FillVisuIdMapKeepsOtherEntriesAndReplacesItsOwn) {
    const auto mesh = loadMesh();
    const auto other = loadMesh();
    named(mesh.get(), L"m", L"mechanical");
    Elements elements = {{L"other", other.get()}, {L"m", nullptr}};
    mesh->FillVisuIdMap(elements);
    EXPECT_EQ(elements, (Elements{{L"other", other.get()}, {L"m", mesh.get()}}));
    Texts texts = {{L"other", L"kept"}, {L"m", L"replaced"}};
    mesh->FillVisuIdMap(texts);
    EXPECT_EQ(texts, (Texts{{L"other", L"kept"}, {L"m", L"mechanical"}}));
}

TEST(VizMeshTest, FillVisuIdMapOfTextsEntersMechanicalIds) {
    const auto mesh = loadMesh();
    named(mesh.get(), L"m", L"mechanical mesh");
    mesh->AddFace(named(loadFace().release(), L"f", L"mechanical face"));
    mesh->AddEdge(named(loadEdge().release(), L"e", L""));
    Texts texts;
    mesh->FillVisuIdMap(texts);
    EXPECT_EQ(texts, (Texts{{L"m", L"mechanical mesh"}, {L"f", L"mechanical face"}, {L"e", L""}}));
}

TEST(VizMeshTest, FillVisuIdMapOfTextsLetsTheLastWin) {
    const auto mesh = loadMesh();
    named(mesh.get(), L"one", L"mesh");
    mesh->AddEdge(named(loadEdge().release(), L"two", L"edge"));
    mesh->AddFace(named(loadFace().release(), L"one", L"face"));
    mesh->AddFace(named(loadFace().release(), L"two", L"beaten"));
    Texts texts;
    mesh->FillVisuIdMap(texts);
    EXPECT_EQ(texts, (Texts{{L"one", L"face"}, {L"two", L"edge"}}));
}

TEST(VizMeshTest, CopiesShareFacesAndEdges) {
    Deaths deaths;
    auto mesh = loadMesh();
    mesh->SetMechanicalID(L"mechanical");
    VizFace* const face = newTelling<FaceLoader>("face", deaths);
    VizEdge* const edge = newTelling<EdgeLoader>("edge", deaths);
    mesh->AddFace(face);
    mesh->AddEdge(edge);
    {
        VizMesh copy(*mesh);
        EXPECT_EQ(copy.GetFaces(), Faces{face});
        EXPECT_EQ(copy.GetEdges(), Edges{edge});
        EXPECT_EQ(copy.GetMechanicalID(), L"mechanical");
        copy = *loadMesh();  // lets go of them, and the original goes on owning them
        EXPECT_TRUE(copy.GetFaces().empty());
        EXPECT_TRUE(copy.GetEdges().empty());
        EXPECT_EQ(copy.GetMechanicalID(), L"");
    }
    EXPECT_TRUE(deaths.empty());
    mesh.reset();
    EXPECT_EQ(deaths, (Deaths{"face", "edge"}));
}

}  // namespace
}  // namespace KesVizCore
