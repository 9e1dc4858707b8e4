#include "pmi/PMITestKit.h"

#include <KesVizCore/pmi/VizPMI.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace KesVizCore {
namespace {

using support::Box;
using support::Deaths;
using support::edgeAcross;
using support::extremaOf;
using support::loadFace;
using support::loadPMI;
using support::newTelling;
using support::textAt;

using Names = std::vector<std::wstring>;

static_assert(!std::is_default_constructible_v<VizPMI>, "annotations are made by loaders");
static_assert(!std::is_constructible_v<VizPMI, VizPMIType, VizPMIType>);
static_assert(std::is_copy_constructible_v<VizPMI> && std::is_copy_assignable_v<VizPMI>);

TEST(VizPMITest, ItsTypeIsPMI) {
    EXPECT_EQ(VizPMI::TypeID(), "PMI");
    const auto pmi = loadPMI();
    const VizElement& element = *pmi;
    EXPECT_EQ(element.GetElementType(), "PMI");
}

TEST(VizPMITest, IsEmptyAtFirst) {
    const auto pmi = loadPMI();
    EXPECT_TRUE(pmi->GetEdges().empty());
    EXPECT_TRUE(pmi->GetFaces().empty());
    EXPECT_TRUE(pmi->GetTexts().empty());
    EXPECT_EQ(pmi->GetName(), L"");
    EXPECT_EQ(pmi->GetMechanicalID(), L"");
    EXPECT_TRUE(pmi->GetLinkedEntityIDs().empty());
    EXPECT_FALSE(pmi->GetHidden());
    EXPECT_EQ(extremaOf(*pmi), Box{});
}

// --- ownership ----------------------------------------------------------------------------------

TEST(VizPMITest, DestroysEdgesThenFacesThenTexts) {
    Deaths deaths;
    auto pmi = loadPMI();
    pmi->AddText(newTelling<support::TextLoader>("text 1", deaths));
    pmi->AddFace(newTelling<support::FaceLoader>("face 1", deaths));
    pmi->AddEdge(newTelling<support::EdgeLoader>("edge 1", deaths));
    pmi->AddText(newTelling<support::TextLoader>("text 2", deaths));
    pmi->AddFace(newTelling<support::FaceLoader>("face 2", deaths));
    pmi->AddEdge(newTelling<support::EdgeLoader>("edge 2", deaths));
    EXPECT_TRUE(deaths.empty());
    pmi.reset();
    EXPECT_EQ(deaths, (Deaths{"edge 1", "edge 2", "face 1", "face 2", "text 1", "text 2"}));
}

/// A full annotation, and the elements that it shares with a copy.
class SharedPMI {
public:
    SharedPMI()
        : _original(loadPMI({1, "Group", 2}, {3, "Type", 4})),
          _edge(edgeAcross({1, 2, 3, 4, 5, 6})),
          _face(loadFace()),
          _text(textAt(2, 3, 4)) {
        _original->AddEdge(_edge.get());
        _original->AddFace(_face.get());
        _original->AddText(_text.get());
        _original->SetVisualID(L"visual");
        _original->SetName(L"name");
        _original->SetMechanicalID(L"mech");
        _original->SetLinkedEntityIDs({L"A"});
        _original->SetLinkedEntityMechIDs({L"M1"});
        _original->SetHidden(true);
    }
    const VizPMI& Original() const { return *_original; }
    void ExpectHeldBy(const VizPMI& copy) const {
        EXPECT_EQ(copy.GetEdges(), std::vector<VizEdge*>{_edge.get()});
        EXPECT_EQ(copy.GetFaces(), std::vector<VizFace*>{_face.get()});
        EXPECT_EQ(copy.GetTexts(), std::vector<VizText*>{_text.get()});
        EXPECT_EQ(copy.GetGroupType().Name, "Group");
        EXPECT_EQ(copy.GetType().Number2, 4);
        EXPECT_EQ(extremaOf(copy), (Box{1, 2, 3, 4, 5, 6}));
        EXPECT_EQ(copy.GetLinkedEntityIDs(), Names{L"A"});
        EXPECT_TRUE(copy.GetHidden());
        EXPECT_EQ(copy.GetID(), _original->GetID());
        EXPECT_EQ(copy.ToString(), _original->ToString());
    }
    /// Has the original forget its elements, so that the copy alone destroys them.
    void LeaveElementsTo(std::unique_ptr<VizPMI>& copy) {
        *_original = *loadPMI();
        copy.reset();  // destroys the elements
        _edge.release();
        _face.release();
        _text.release();
    }

private:
    std::unique_ptr<VizPMI> _original;
    std::unique_ptr<VizEdge> _edge;
    std::unique_ptr<VizFace> _face;
    std::unique_ptr<VizText> _text;
};

TEST(VizPMITest, ACopyHasEveryFieldAndSharesTheElements) {
    SharedPMI shared;
    auto copy = std::make_unique<VizPMI>(shared.Original());
    shared.ExpectHeldBy(*copy);
    shared.LeaveElementsTo(copy);
}

TEST(VizPMITest, AssignmentTakesEveryFieldAndSharesTheElements) {
    SharedPMI shared;
    auto assigned = loadPMI();
    *assigned = shared.Original();
    shared.ExpectHeldBy(*assigned);
    shared.LeaveElementsTo(assigned);
}

// --- graphics -----------------------------------------------------------------------------------

TEST(VizPMITest, ElementsStandInTheOrderOfAdding) {
    const auto pmi = loadPMI();
    auto* const edge1 = support::loadEdge().release();
    auto* const edge2 = support::loadEdge().release();
    auto* const face1 = loadFace().release();
    auto* const face2 = loadFace().release();
    auto* const text1 = support::loadText().release();
    auto* const text2 = support::loadText().release();
    pmi->AddEdge(edge1);
    pmi->AddFace(face1);
    pmi->AddText(text1);
    pmi->AddEdge(edge2);
    pmi->AddFace(face2);
    pmi->AddText(text2);
    EXPECT_EQ(pmi->GetEdges(), (std::vector<VizEdge*>{edge1, edge2}));
    EXPECT_EQ(pmi->GetFaces(), (std::vector<VizFace*>{face1, face2}));
    EXPECT_EQ(pmi->GetTexts(), (std::vector<VizText*>{text1, text2}));
}

TEST(VizPMITest, NullElementsAreIgnored) {
    const auto pmi = loadPMI();
    pmi->AddEdge(nullptr);
    pmi->AddFace(nullptr);
    pmi->AddText(nullptr);
    EXPECT_TRUE(pmi->GetEdges().empty());
    EXPECT_TRUE(pmi->GetFaces().empty());
    EXPECT_TRUE(pmi->GetTexts().empty());
    EXPECT_EQ(extremaOf(*pmi), Box{});
}

TEST(VizPMITest, ANullEdgeDoesNotCountAsTheFirst) {
    const auto pmi = loadPMI();
    pmi->AddEdge(nullptr);
    pmi->AddEdge(edgeAcross({1, 2, 3, 4, 5, 6}).release());
    EXPECT_EQ(extremaOf(*pmi), (Box{1, 2, 3, 4, 5, 6}));
}

TEST(VizPMITest, CountHintsReserveRoomAndNothingElse) {
    const auto pmi = loadPMI();
    pmi->SetEdgeCountHint(11);
    pmi->SetFaceCountHint(12);
    pmi->SetTextCountHint(13);
    EXPECT_GE(pmi->GetEdges().capacity(), 11U);
    EXPECT_GE(pmi->GetFaces().capacity(), 12U);
    EXPECT_GE(pmi->GetTexts().capacity(), 13U);
    EXPECT_TRUE(pmi->GetEdges().empty());
    EXPECT_TRUE(pmi->GetFaces().empty());
    EXPECT_TRUE(pmi->GetTexts().empty());
}

TEST(VizPMITest, ASmallerCountHintKeepsWhatIsThere) {
    const auto pmi = loadPMI();
    pmi->AddEdge(support::loadEdge().release());
    pmi->AddEdge(support::loadEdge().release());
    pmi->SetEdgeCountHint(1);
    EXPECT_EQ(pmi->GetEdges().size(), 2U);
}

TEST(VizPMITest, TheFirstEdgeGivesItsExtrema) {
    const auto pmi = loadPMI();
    pmi->AddEdge(edgeAcross({5, 6, 7, 8, 9, 10}).release());
    EXPECT_EQ(extremaOf(*pmi), (Box{5, 6, 7, 8, 9, 10}));  // the zeros of before have no part
}

TEST(VizPMITest, FurtherEdgesWidenTheExtrema) {
    const auto pmi = loadPMI();
    pmi->AddEdge(edgeAcross({0, 0, 0, 1, 1, 1}).release());
    pmi->AddEdge(edgeAcross({-1, 0.25F, -3, 0.5F, 4, 1}).release());
    EXPECT_EQ(extremaOf(*pmi), (Box{-1, 0, -3, 1, 4, 1}));
}

TEST(VizPMITest, AnEdgeWithoutVerticesCountsWithItsZeros) {
    const auto pmi = loadPMI();
    pmi->AddEdge(edgeAcross({5, 5, 5, 6, 6, 6}).release());
    pmi->AddEdge(support::loadEdge().release());
    EXPECT_EQ(extremaOf(*pmi), (Box{0, 0, 0, 6, 6, 6}));
}

TEST(VizPMITest, FacesDoNotChangeTheExtrema) {
    const auto pmi = loadPMI();
    pmi->AddEdge(edgeAcross({0, 0, 0, 1, 1, 1}).release());
    pmi->AddFace(loadFace([](VizFace& face) {
                     const float far[9] = {-50, -50, -50, 50, 50, 50, 9, 9, 9};
                     face.SetVertices(3, far);
                 }).release());
    EXPECT_EQ(extremaOf(*pmi), (Box{0, 0, 0, 1, 1, 1}));
}

TEST(VizPMITest, ATextWidensTheExtremaToItsAnchor) {
    const auto pmi = loadPMI();
    pmi->AddEdge(edgeAcross({0, 0, 0, 1, 1, 1}).release());
    pmi->AddText(textAt(-2, 0.5F, 7).release());
    EXPECT_EQ(extremaOf(*pmi), (Box{-2, 0, 0, 1, 1, 7}));
    pmi->AddText(textAt(0.5F, -3, 0.5F).release());
    EXPECT_EQ(extremaOf(*pmi), (Box{-2, -3, 0, 1, 1, 7}));
}

TEST(VizPMITest, ATextWithinTheExtremaChangesNothing) {
    const auto pmi = loadPMI();
    pmi->AddEdge(edgeAcross({0, 0, 0, 1, 1, 1}).release());
    pmi->AddText(textAt(0.5F, 0.5F, 0.5F).release());
    EXPECT_EQ(extremaOf(*pmi), (Box{0, 0, 0, 1, 1, 1}));
}

TEST(VizPMITest, AnAnchorOnTheBoundaryChangesNoBit) {
    const auto pmi = loadPMI();
    pmi->AddEdge(edgeAcross({0.0F, 0, 0, 1, 1, 1}).release());
    pmi->AddText(textAt(-0.0F, 1, 0).release());
    EXPECT_FALSE(std::signbit(extremaOf(*pmi)[0]));  // -0 is not below 0
}

TEST(VizPMITest, ATextBeforeTheFirstEdgeWidensTheZeros) {
    const auto pmi = loadPMI();
    pmi->AddText(textAt(2, -3, 4).release());
    EXPECT_EQ(extremaOf(*pmi), (Box{0, -3, 0, 2, 0, 4}));
}

// Edges come first: what texts added before is lost with the first edge, and on purpose.
TEST(VizPMITest, TheFirstEdgeOverwritesWhatTextsAdded) {
    const auto pmi = loadPMI();
    pmi->AddText(textAt(-100, 100, -100).release());
    pmi->AddEdge(edgeAcross({1, 1, 1, 2, 2, 2}).release());
    EXPECT_EQ(extremaOf(*pmi), (Box{1, 1, 1, 2, 2, 2}));
}

TEST(VizPMITest, NaNNeverReplacesAnExtremum) {
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    const auto pmi = loadPMI();
    pmi->AddEdge(edgeAcross({0, 0, 0, 1, 1, 1}).release());
    pmi->AddText(textAt(nan, nan, nan).release());
    pmi->AddEdge(edgeAcross({nan, nan, nan, nan, nan, nan}).release());
    EXPECT_EQ(extremaOf(*pmi), (Box{0, 0, 0, 1, 1, 1}));
}

TEST(VizPMITest, TheExtremaCanBeReadInPlace) {
    const auto pmi = loadPMI();
    const float* const extrema = pmi->GetExtrema();
    pmi->AddEdge(edgeAcross({1, 2, 3, 4, 5, 6}).release());
    EXPECT_EQ(pmi->GetExtrema(), extrema);
    EXPECT_EQ(std::vector<float>(extrema, extrema + 6), (std::vector<float>{1, 2, 3, 4, 5, 6}));
}

// --- identity -----------------------------------------------------------------------------------

TEST(VizPMITest, KeepsBothTypesOfItsLoaderApart) {
    const auto pmi = loadPMI({1, "Dimension", 2}, {3, "Radius", 4});
    EXPECT_EQ(pmi->GetGroupType().Code, 1);
    EXPECT_EQ(pmi->GetGroupType().Name, "Dimension");
    EXPECT_EQ(pmi->GetGroupType().Number2, 2);
    EXPECT_EQ(pmi->GetType().Code, 3);
    EXPECT_EQ(pmi->GetType().Name, "Radius");
    EXPECT_EQ(pmi->GetType().Number2, 4);
}

TEST(VizPMITest, NameAndMechanicalIdAreKeptApart) {
    const auto pmi = loadPMI();
    pmi->SetName(L"name");
    pmi->SetMechanicalID(L"mech");
    EXPECT_EQ(pmi->GetName(), L"name");
    EXPECT_EQ(pmi->GetMechanicalID(), L"mech");
}

TEST(VizPMITest, SettingLinkedIdsReplacesThem) {
    const auto pmi = loadPMI();
    pmi->SetLinkedEntityIDs({L"A", L"B"});
    pmi->SetLinkedEntityIDs({L"C"});
    EXPECT_EQ(pmi->GetLinkedEntityIDs(), Names{L"C"});
}

TEST(VizPMITest, LinkedIdsAreHandedOutAsACopy) {
    const auto pmi = loadPMI();
    pmi->SetLinkedEntityIDs({L"A"});
    Names links = pmi->GetLinkedEntityIDs();
    links.push_back(L"B");
    EXPECT_EQ(pmi->GetLinkedEntityIDs(), Names{L"A"});
}

TEST(VizPMITest, ItsHiddenFlagIsApartFromThatOfElements) {
    const auto pmi = loadPMI();
    pmi->SetHidden(true);
    EXPECT_TRUE(pmi->GetHidden());
    bool hidden = true;
    EXPECT_FALSE(pmi->VizElement::GetHidden(hidden));
    EXPECT_FALSE(hidden);
    pmi->SetHidden(false);
    EXPECT_FALSE(pmi->GetHidden());
}

/// Opens what elements keep to themselves.
struct Transformable : VizPMI {
    explicit Transformable(const VizPMI& pmi) : VizPMI(pmi) {}
    using VizElement::ApplyTransform;
};

TEST(VizPMITest, IgnoresTransforms) {
    Transformable pmi(*loadPMI());
    pmi.AddEdge(edgeAcross({1, 2, 3, 4, 5, 6}).release());
    float matrix[4][4] = {{2, 0, 0, 0}, {0, 2, 0, 0}, {0, 0, 2, 0}, {9, 9, 9, 1}};
    pmi.ApplyTransform(matrix);
    EXPECT_EQ(extremaOf(pmi), (Box{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(pmi.GetEdges()[0]->GetVertices(), (std::vector<float>{1, 2, 3, 4, 5, 6}));
}

// --- dump ---------------------------------------------------------------------------------------

TEST(VizPMITest, DumpsANewAnnotationWithNoLinks) {
    EXPECT_EQ(loadPMI()->ToString(),
              L"--------------\n"
              L"Graphical Info:\n"
              L"\n"
              L"Name : \n"
              L"VisualID : \n"
              L"MechID : \n"
              L"Links (0) : \n"
              L"\n"
              L"--------------\n");
}

TEST(VizPMITest, DumpsIdsAndPairedLinks) {
    const auto pmi = loadPMI({1, "Dimension", 2}, {3, "Radius", 4});
    pmi->SetName(L"R5 \x2300");
    pmi->SetVisualID(L"V 7");
    pmi->SetMechanicalID(L"M 7");
    pmi->SetLinkedEntityIDs({L"A", L"B"});
    pmi->SetLinkedEntityMechIDs({L"M1", L"M2"});
    EXPECT_EQ(pmi->ToString(),  // neither type is named
              L"--------------\n"
              L"Graphical Info:\n"
              L"\n"
              L"Name : R5 \x2300\n"
              L"VisualID : V 7\n"
              L"MechID : M 7\n"
              L"Links (2) : \n"
              L"    VisualID : A    MechID : M1\n"
              L"    VisualID : B    MechID : M2\n"
              L"\n"
              L"--------------\n");
}

// Lists of different length cannot be paired, so that no mechanical id is shown at all.
TEST(VizPMITest, DumpsMinusOneForEveryLinkWhenTheListsDifferInLength) {
    const std::wstring expected =
        L"--------------\n"
        L"Graphical Info:\n"
        L"\n"
        L"Name : \n"
        L"VisualID : \n"
        L"MechID : \n"
        L"Links (2) : \n"
        L"    VisualID : A    MechID : -1\n"
        L"    VisualID : B    MechID : -1\n"
        L"\n"
        L"--------------\n";
    for (const Names& mechIds : {Names{}, Names{L"M1"}, Names{L"M1", L"M2", L"M3"}}) {
        const auto pmi = loadPMI();
        pmi->SetLinkedEntityIDs({L"A", L"B"});
        pmi->SetLinkedEntityMechIDs(mechIds);
        EXPECT_EQ(pmi->ToString(), expected) << mechIds.size() << " mechanical ids";
    }
}

TEST(VizPMITest, MechanicalIdsWithoutLinkedIdsAreNotDumped) {
    const auto pmi = loadPMI();
    pmi->SetLinkedEntityMechIDs({L"M1"});
    EXPECT_EQ(pmi->ToString(), loadPMI()->ToString());
}

TEST(VizPMITest, SettingMechanicalIdsOfLinksReplacesThem) {
    const auto pmi = loadPMI();
    pmi->SetLinkedEntityIDs({L"A"});
    pmi->SetLinkedEntityMechIDs({L"M1", L"M2"});
    pmi->SetLinkedEntityMechIDs({L"M3"});
    EXPECT_NE(pmi->ToString().find(L"    VisualID : A    MechID : M3\n"), std::wstring::npos);
}

}  // namespace
}  // namespace KesVizCore
