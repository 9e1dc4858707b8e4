#include "model/ModelTestKit.h"
#include "report/ForeignLocale.h"

#include <KesVizCore/model/VizView.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>

namespace KesVizCore {
namespace {

using support::loadView;
using support::tripleAt;

struct Plane {
    Vector Origin{-99, -99, -99};
    Vector U{-99, -99, -99};
    Vector V{-99, -99, -99};
    bool Oriented = false;
};

Plane planeOf(const VizView& view) {
    Plane plane;
    plane.Oriented = view.GetPlane(plane.Origin.data(), plane.U.data(), plane.V.data());
    return plane;
}

void setPlane(VizView& view, const Vector& origin, const Vector& u, const Vector& v) {
    view.SetPlane(origin.data(), u.data(), v.data());
}

void expectPlane(const VizView& view, const Vector& origin, const Vector& u, const Vector& v) {
    const Plane plane = planeOf(view);
    EXPECT_EQ(plane.Origin, origin);
    EXPECT_EQ(plane.U, u);
    EXPECT_EQ(plane.V, v);
}

/// A host's own view, which has the protected constructor.
class HostView : public VizView {
public:
    HostView() = default;
};

TEST(VizViewTest, IsMadeByItsLoaderOrByDerivingFromIt) {
    static_assert(!std::is_default_constructible_v<VizView>);
    const HostView view;
    EXPECT_EQ(view.GetElementType(), "View");
}

TEST(VizViewTest, HasTheDefaultFrameAtFirst) {
    const auto view = loadView();
    expectPlane(*view, {0, 0, 0}, {1, 0, 0}, {0, 1, 0});
    EXPECT_FALSE(planeOf(*view).Oriented);
    EXPECT_FALSE(view->IsViewOriented());
    EXPECT_EQ(view->GetName(), L"unnamed");
    EXPECT_EQ(view->GetVisualID(), L"");
    EXPECT_EQ(view->GetMechanicalID(), L"");
    EXPECT_FALSE(view->GetHidden());
    EXPECT_FALSE(view->GetActive());
}

TEST(VizViewTest, SetPlaneStoresTheTriplesAsTheyAre) {
    const auto view = loadView();
    setPlane(*view, {1, 2, 3}, {40, 50, 60}, {7, 8, 9});
    expectPlane(*view, {1, 2, 3}, {40, 50, 60}, {7, 8, 9});
}

TEST(VizViewTest, SetPlaneOrientsTheView) {
    const auto view = loadView();
    setPlane(*view, {0, 0, 0}, {1, 0, 0}, {0, 1, 0});
    EXPECT_TRUE(planeOf(*view).Oriented);
    EXPECT_TRUE(view->IsViewOriented());
}

TEST(VizViewTest, SetPlaneTakesWhatGetPlaneHandedOut) {
    const auto view = loadView();
    setPlane(*view, {1, 2, 3}, {4, 5, 6}, {7, 8, 9});
    const float* origin = nullptr;
    const float* u = nullptr;
    const float* v = nullptr;
    view->GetPlane(origin, u, v);
    view->SetPlane(origin, v, u);
    expectPlane(*view, {1, 2, 3}, {7, 8, 9}, {4, 5, 6});
    view->SetPlane(v, origin, u);
    expectPlane(*view, {4, 5, 6}, {1, 2, 3}, {7, 8, 9});
}

TEST(VizViewTest, GetPlaneHandsOutTheStoredTriples) {
    const auto view = loadView();
    const float* origin = nullptr;
    const float* u = nullptr;
    const float* v = nullptr;
    EXPECT_FALSE(view->GetPlane(origin, u, v));
    setPlane(*view, {1, 2, 3}, {4, 5, 6}, {7, 8, 9});
    EXPECT_EQ(tripleAt(origin), (Vector{1, 2, 3}));
    EXPECT_EQ(tripleAt(u), (Vector{4, 5, 6}));
    EXPECT_EQ(tripleAt(v), (Vector{7, 8, 9}));
    EXPECT_TRUE(view->GetPlane(origin, u, v));
}

TEST(VizViewTest, CopiesHaveAFrameOfTheirOwn) {
    const auto view = loadView();
    setPlane(*view, {1, 2, 3}, {4, 5, 6}, {7, 8, 9});
    view->SetName(L"name");
    view->SetActive(true);
    VizView copy(*view);
    setPlane(*view, {0, 0, 0}, {0, 0, 0}, {0, 0, 0});
    expectPlane(copy, {1, 2, 3}, {4, 5, 6}, {7, 8, 9});
    EXPECT_TRUE(planeOf(copy).Oriented);
    EXPECT_EQ(copy.GetName(), L"name");
    EXPECT_TRUE(copy.GetActive());
    copy = *loadView();
    expectPlane(copy, {0, 0, 0}, {1, 0, 0}, {0, 1, 0});
    EXPECT_FALSE(planeOf(copy).Oriented);
    EXPECT_EQ(copy.GetName(), L"unnamed");
}

// --- the dump ------------------------------------------------------------------------------------

TEST(VizViewTest, DumpOfANewViewHasItsPlaneToo) {
    EXPECT_EQ(loadView()->GetViewAsString(),
              L"Name: unnamed\n"
              L"VisualID : \n"
              L"MechID : \n"
              L"Hidden : NO\n"
              L"Origin = (0.00, 0.00, 0.00)\n"
              L"U = (1.00, 0.00, 0.00)\n"
              L"V = (0.00, 1.00, 0.00)\n");
}

TEST(VizViewTest, DumpHasEveryField) {
    const auto view = loadView();
    view->SetName(L"Front %s");
    view->SetVisualID(L"visual");
    view->SetMechanicalID(L"mechanical");
    view->SetHidden(true);
    view->SetActive(true);  // has no line
    setPlane(*view, {1.005F, -2.126F, 1234567.0F}, {0.001F, -0.001F, 10}, {7, 8, -0.0F});
    EXPECT_EQ(view->GetViewAsString(),
              L"Name: Front %s\n"
              L"VisualID : visual\n"
              L"MechID : mechanical\n"
              L"Hidden : YES\n"
              L"Origin = (1.00, -2.13, 1234567.00)\n"
              L"U = (0.00, -0.00, 10.00)\n"
              L"V = (7.00, 8.00, -0.00)\n");
}

TEST(VizViewTest, DumpDoesNotCutTexts) {
    const auto view = loadView();
    const std::wstring longText(5000, L'x');
    view->SetName(longText);
    view->SetVisualID(longText);
    view->SetMechanicalID(longText);
    EXPECT_EQ(view->GetViewAsString(), L"Name: " + longText + L"\nVisualID : " + longText +
                                           L"\nMechID : " + longText +
                                           L"\nHidden : NO\n"
                                           L"Origin = (0.00, 0.00, 0.00)\n"
                                           L"U = (1.00, 0.00, 0.00)\n"
                                           L"V = (0.00, 1.00, 0.00)\n");
}

TEST(VizViewTest, DumpReadsTheVisualIdOfTheCollectionNotThatOfTheElement) {
    const auto view = loadView();
    VizElement& element = *view;
    element.SetVisualID(L"of the element");
    element.SetHidden(true);
    EXPECT_EQ(view->GetViewAsString(),
              L"Name: unnamed\n"
              L"VisualID : \n"
              L"MechID : \n"
              L"Hidden : NO\n"
              L"Origin = (0.00, 0.00, 0.00)\n"
              L"U = (1.00, 0.00, 0.00)\n"
              L"V = (0.00, 1.00, 0.00)\n");
}

TEST(VizViewTest, DumpLeavesOutATripleOfMoreThan63Characters) {
    const auto view = loadView();
    const float wide = 9007199254740992.0F;  // 19 characters with its decimals
    setPlane(*view, {wide, wide, wide}, {wide, wide, -wide}, {1e30F, 1e30F, 1e30F});
    EXPECT_EQ(view->GetViewAsString(),
              L"Name: unnamed\n"
              L"VisualID : \n"
              L"MechID : \n"
              L"Hidden : NO\n"
              L"Origin = (9007199254740992.00, 9007199254740992.00, 9007199254740992.00)\n");
}

TEST(VizViewTest, DumpIsTheSameInEveryLocale) {
    const auto view = loadView();
    setPlane(*view, {1234.5F, 2, 3}, {1, 0, 0}, {0, 1, 0});
    const support::ForeignLocale locale;
    EXPECT_EQ(view->GetViewAsString(),
              L"Name: unnamed\n"
              L"VisualID : \n"
              L"MechID : \n"
              L"Hidden : NO\n"
              L"Origin = (1234.50, 2.00, 3.00)\n"
              L"U = (1.00, 0.00, 0.00)\n"
              L"V = (0.00, 1.00, 0.00)\n");
}

}  // namespace
}  // namespace KesVizCore
