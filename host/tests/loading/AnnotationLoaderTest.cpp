#include "loading/AnnotationLoader.h"
#include "support/DocumentKit.h"

#include <KesVizCore/model/VizEdge.h>
#include <KesVizCore/model/VizFace.h>
#include <KesVizCore/model/VizPolygon.h>
#include <KesVizCore/model/VizText.h>
#include <KesVizCore/pmi/SemanticPMI.h>
#include <KesVizCore/pmi/VizPMI.h>

#include <gmock/gmock.h>

#include <cmath>

namespace kesview {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

Document annotatedMachine() {
    Document document = support::machine();
    support::addAnnotations(document);
    return document;
}

class AnnotationLoaderTest : public testing::Test {
protected:
    const viz::VizPMI& find(const wchar_t* key) const { return *_model->pmi.GetVizPMI(key); }
    const viz::SemanticPMI& record(const wchar_t* key) const {
        return *_model->pmi.GetSemanticPMIs().at(key);
    }

    Document _document = annotatedMachine();
    std::unique_ptr<LoadedModel> _model = load(_document);
};

TEST_F(AnnotationLoaderTest, AnAnnotationIsFoundByItsKey) {
    const viz::VizPMI& dimension = find(L"#600");
    EXPECT_EQ(dimension.GetVisualID(), L"annotation 60");
    EXPECT_EQ(dimension.GetName(), L"Length");
    EXPECT_EQ(dimension.GetGroupType().Name, "Dimension");
    EXPECT_EQ(dimension.GetType().Name, "linear distance");
    EXPECT_EQ(dimension.GetType().Code, 7);
    EXPECT_EQ(dimension.GetColor(), viz::RGBAColor(1, 2, 3, 255));
    EXPECT_EQ(_model->elements.at({0, viz::DimensionType, 60}), &dimension);
}

TEST_F(AnnotationLoaderTest, LinesAreEdgesAndAreasAreFaces) {
    const viz::VizPMI& dimension = find(L"#600");
    ASSERT_THAT(dimension.GetEdges(), SizeIs(1));
    EXPECT_THAT(dimension.GetEdges()[0]->GetVertices(), ElementsAre(0, 0, 0, 0, 0, 5, 0, 2, 5));
    ASSERT_THAT(dimension.GetFaces(), SizeIs(1));
    EXPECT_THAT(dimension.GetFaces()[0]->GetVertices(), ElementsAre(0, 0, 5, 1, 0, 5, 0, 1, 5));
    EXPECT_THAT(dimension.GetFaces()[0]->GetPolygons()[0]->GetIndices(), ElementsAre(0, 1, 2));
    EXPECT_THAT(dimension.GetTexts(), IsEmpty());
}

TEST_F(AnnotationLoaderTest, DrawingsLeaveTheDocumentAndTextsStay) {
    EXPECT_THAT(_document.annotations[0].lines, SizeIs(1));
    EXPECT_EQ(_document.annotations[0].lines[0].capacity(), 0U);
    EXPECT_EQ(_document.annotations[0].areas[0].points.capacity(), 0U);
    EXPECT_EQ(_document.annotations[1].texts[0].text, "A");
    EXPECT_TRUE(_document.annotations[0].drawnInFile);
}

TEST_F(AnnotationLoaderTest, ATextKeepsItsPlaceDirectionsAndHeight) {
    ASSERT_THAT(find(L"#610").GetTexts(), SizeIs(1));
    const viz::VizText& text = *find(L"#610").GetTexts()[0];
    EXPECT_EQ(text.GetText(), L"A");
    EXPECT_EQ(text.GetFontSize(), 2.5F);
    const auto triple = [](const float* v) { return std::vector<float>(v, v + 3); };
    EXPECT_THAT(triple(text.GetAnchorPoint()), ElementsAre(1, 2, 3));
    EXPECT_THAT(triple(text.GetDirection()), ElementsAre(0, 1, 0));
    EXPECT_THAT(triple(text.GetNormal()), ElementsAre(1, 0, 0));  // u x v = y x z
}

TEST_F(AnnotationLoaderTest, WhatHasNoDrawingIsWrittenIntoItsPlane) {
    ASSERT_THAT(find(L"#620").GetTexts(), SizeIs(1));
    const viz::VizText& text = *find(L"#620").GetTexts()[0];
    EXPECT_EQ(text.GetText(), L"\u2316 0.2 | A");
    EXPECT_EQ(text.GetAnchorPoint()[2], 9.0F);
    // The only mesh with an edge has a box 1 long in x alone.
    EXPECT_FLOAT_EQ(text.GetFontSize(), 0.01F);
    EXPECT_THAT(_document.annotations[2].texts, IsEmpty());
}

TEST_F(AnnotationLoaderTest, WhatIsDrawnWithAnotherHasNoTextOfItsOwn) {
    Document document = annotatedMachine();
    document.annotations[2].attributes["DrawnWith"] = "#600";
    const std::unique_ptr<LoadedModel> model = load(document);
    EXPECT_THAT(model->pmi.GetVizPMI(L"#620")->GetTexts(), IsEmpty());
}

TEST_F(AnnotationLoaderTest, LinkedElementsAreNamedVisuallyAndMechanically) {
    EXPECT_THAT(find(L"#600").GetLinkedEntityIDs(), ElementsAre(L"face 12", L"face 13"));
    EXPECT_EQ(find(L"#600").ToString(),
              L"--------------\nGraphical Info:\n\nName : Length\nVisualID : annotation 60\n"
              L"MechID : #600\nLinks (2) : \n    VisualID : face 12    MechID : \n"
              L"    VisualID : face 13    MechID : Head top\n\n--------------\n");
    EXPECT_THAT(find(L"#610").GetLinkedEntityIDs(), ElementsAre(L"body 11"));
}

TEST_F(AnnotationLoaderTest, ALinkToNothingLoadedStandsInTheRecordAlone) {
    Document document = annotatedMachine();
    document.annotations[0].links = {{EntityLink::Kind::Vertex, 11, 15}};
    const auto model = load(document);
    EXPECT_THAT(model->pmi.GetVizPMI(L"#600")->GetLinkedEntityIDs(), IsEmpty());
    std::vector<viz::EntityId> links;
    EXPECT_TRUE(model->pmi.GetBREPLinks(L"#600", links));
    EXPECT_THAT(links, ElementsAre(viz::EntityId(11, viz::VertexType, 15)));
}

TEST_F(AnnotationLoaderTest, TheRecordSaysWhatTheAnnotationMeans) {
    EXPECT_EQ(record(L"#600").Name, L"Length");
    EXPECT_EQ(record(L"#610").Label, L"A");
    EXPECT_EQ(record(L"#600").Attributes.at(L"Value"), L"5");
    std::vector<viz::EntityId> links;
    EXPECT_TRUE(_model->pmi.GetBREPLinks(L"#600", links));
    EXPECT_THAT(links, ElementsAre(viz::EntityId(11, viz::FaceType, 12),
                                   viz::EntityId(11, viz::FaceType, 13)));
}

TEST_F(AnnotationLoaderTest, ATolerancesDatumsAreItsLinksToAnnotations) {
    std::vector<std::wstring> links;
    EXPECT_TRUE(_model->pmi.GetPMILinks(L"#620", links));
    EXPECT_THAT(links, ElementsAre(L"#610"));
    EXPECT_FALSE(_model->pmi.GetPMILinks(L"#600", links));
}

TEST_F(AnnotationLoaderTest, OnlySemanticAnnotationsHaveARecord) {
    Document document = annotatedMachine();
    document.annotations[0].semantic = false;
    const auto model = load(document);
    EXPECT_NE(model->pmi.GetVizPMI(L"#600"), nullptr);
    EXPECT_EQ(model->pmi.GetSemanticPMIs().count(L"#600"), 0U);
    std::wstring name;
    EXPECT_TRUE(model->pmi.GetDisplayName(L"#600", name));
    EXPECT_EQ(name, L"Length");
}

TEST_F(AnnotationLoaderTest, HiddenAnnotationsAreHidden) {
    EXPECT_FALSE(find(L"#600").GetHidden());
    EXPECT_TRUE(find(L"#620").GetHidden());
}

TEST_F(AnnotationLoaderTest, ARepeatedKeyIsAFinding) {
    Document document = annotatedMachine();
    document.annotations[1].key = "#600";
    const auto model = load(document);
    EXPECT_THAT(model->pmi.GetVizPMIs(), SizeIs(2));
    ASSERT_THAT(document.findings, SizeIs(1));
    EXPECT_EQ(document.findings[0].code, "pmi.repeated-key");
    EXPECT_EQ(document.findings[0].where, "#600");
}

}  // namespace
}  // namespace kesview
