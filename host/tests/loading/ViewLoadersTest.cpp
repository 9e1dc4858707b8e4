#include "loading/ViewLoaders.h"
#include "support/DocumentKit.h"

#include <KesVizCore/math/VectorMath.h>
#include <KesVizCore/model/VizCapture.h>
#include <KesVizCore/model/VizView.h>
#include <KesVizCore/pmi/VizPMI.h>

#include <gmock/gmock.h>

#include <cmath>

namespace kesview {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class ViewLoadersTest : public testing::Test {
protected:
    ViewLoadersTest() {
        support::addAnnotations(_document);
        _document.views = {support::frontView()};
    }
    SavedView& saved() { return _document.views[0]; }
    void loadAll() {
        _model = load(_document);
        _view = _model->pmi.GetViews().at(0);
        _capture = _model->pmi.GetCaptures().at(0);
    }

    Document _document = support::machine();
    std::unique_ptr<LoadedModel> _model;
    const viz::VizView* _view = nullptr;
    const viz::VizCapture* _capture = nullptr;
};

std::vector<float> triple(const float* v) {
    return {v, v + 3};
}

TEST_F(ViewLoadersTest, ASavedViewIsAViewAndACapture) {
    loadAll();
    EXPECT_EQ(_view->GetName(), L"Front");
    EXPECT_EQ(_view->GetVisualID(), L"view 70");
    EXPECT_EQ(_view->GetMechanicalID(), L"#700");
    EXPECT_EQ(_capture->GetName(), L"Front");
    EXPECT_EQ(_capture->GetVisualID(), L"capture 71");
    EXPECT_FALSE(_capture->GetActive());
    EXPECT_FALSE(_capture->GetHidden());
    EXPECT_THAT(_document.findings, IsEmpty());
}

TEST_F(ViewLoadersTest, ThePlaneOfAViewLiesAtTheTargetTurnedToTheEye) {
    loadAll();
    const float* origin = nullptr;
    const float* u = nullptr;
    const float* v = nullptr;
    ASSERT_TRUE(_view->GetPlane(origin, u, v));
    EXPECT_THAT(triple(origin), ElementsAre(1, 0, 2));
    EXPECT_THAT(triple(u), ElementsAre(1, 0, 0));  // seen from -y with z up, x is to the right
    EXPECT_THAT(triple(v), ElementsAre(0, 0, 1));
}

TEST_F(ViewLoadersTest, ACaptureHasTheCamera) {
    loadAll();
    float eye[3];
    float target[3];
    float up[3];
    ASSERT_TRUE(_capture->GetOrientation(eye, target, up));
    EXPECT_THAT(triple(eye), ElementsAre(1, -100, 2));
    EXPECT_THAT(triple(target), ElementsAre(1, 0, 2));
    EXPECT_THAT(triple(up), ElementsAre(0, 0, 1));
    EXPECT_EQ(_capture->GetCameraType(), viz::VizCapture::Orthographic);
    EXPECT_EQ(_capture->GetOrthographicZoomFactor(), 100.0F);
}

TEST_F(ViewLoadersTest, ASlantingUpVectorIsTurnedUpright) {
    saved().up = {0, 0.6, 0.8};
    loadAll();
    float eye[3];
    float target[3];
    float up[3];
    ASSERT_TRUE(_capture->GetOrientation(eye, target, up));
    EXPECT_THAT(triple(up), ElementsAre(0, 0, 1));
}

TEST_F(ViewLoadersTest, AnUnknownHeightLeavesTheZoomUnset) {
    saved().height = 0;
    loadAll();
    EXPECT_EQ(_capture->GetOrthographicZoomFactor(), 1.0F);
    saved().height = 1;
    loadAll();
    EXPECT_NE(_capture->GetOrthographicZoomFactor(), 1.0F);
    EXPECT_NEAR(_capture->GetOrthographicZoomFactor(), 1.0F, 1e-6);
}

TEST_F(ViewLoadersTest, APerspectiveCameraHasItsAngle) {
    saved().perspective = true;
    saved().viewAngle = 35;
    loadAll();
    EXPECT_EQ(_capture->GetCameraType(), viz::VizCapture::Perspective);
    EXPECT_EQ(_capture->GetPerspectiveViewAngle(), 35.0F);
}

TEST_F(ViewLoadersTest, TheAxesOfAClippingPlaneSpanItTowardsWhatIsKept) {
    const Vector normals[] = {{0, 0, 2}, {-1, 0, 0}, {0.6, 0, 0.8}, {0, -3, 0}};
    for (const Vector& normal : normals) {
        saved().clipping = SavedView::Plane{{1, 2, 3}, normal};
        loadAll();
        float origin[3];
        float u[3];
        float v[3];
        ASSERT_TRUE(_capture->GetClippingPlane(origin, u, v));
        EXPECT_THAT(triple(origin), ElementsAre(1, 2, 3));
        float spanned[3];
        viz::CrossProduct(u, v, spanned);
        const double length = std::hypot(normal[0], normal[1], normal[2]);
        for (std::size_t axis = 0; axis < 3; ++axis) {
            EXPECT_NEAR(spanned[axis], normal[axis] / length, 1e-6);
        }
    }
}

TEST_F(ViewLoadersTest, WithoutAClippingPlaneThereIsNone) {
    loadAll();
    float origin[3];
    float u[3];
    float v[3];
    EXPECT_FALSE(_capture->GetClippingPlane(origin, u, v));
}

TEST_F(ViewLoadersTest, MembersAreNamedByVisualId) {
    loadAll();
    EXPECT_THAT(_view->GetMemberList(), ElementsAre(L"annotation 60"));
    EXPECT_TRUE(_capture->IsMember(*_model->pmi.GetVizPMI(L"#600")));
    EXPECT_FALSE(_capture->IsMember(*_model->pmi.GetVizPMI(L"#610")));
}

TEST_F(ViewLoadersTest, AViewWithoutAListOfMembersShowsAll) {
    saved().members.clear();
    saved().showsAll = true;
    loadAll();
    EXPECT_THAT(_view->GetMemberList(),
                ElementsAre(L"annotation 60", L"annotation 61", L"annotation 62"));
}

TEST_F(ViewLoadersTest, AnUnknownMemberIsAFinding) {
    saved().members = {"#1", "#600", "#2"};
    loadAll();
    EXPECT_THAT(_view->GetMemberList(), SizeIs(1));
    ASSERT_THAT(_document.findings, SizeIs(1));
    EXPECT_EQ(_document.findings[0].code, "view.unknown-member");
    EXPECT_EQ(_document.findings[0].where, "Front");
    EXPECT_EQ(_document.findings[0].count, 2U);
}

TEST_F(ViewLoadersTest, ACameraThatLooksNowhereIsAFinding) {
    saved().target = saved().eye;
    loadAll();
    EXPECT_EQ(_capture->GetCameraType(), viz::VizCapture::UndefinedCamera);
    EXPECT_FALSE(_view->IsViewOriented());
    ASSERT_THAT(_document.findings, SizeIs(1));
    EXPECT_EQ(_document.findings[0].code, "view.no-camera");
}

TEST_F(ViewLoadersTest, AnUpVectorAlongTheLineOfSightIsNoCamera) {
    saved().up = {0, 1, 0};
    loadAll();
    EXPECT_FALSE(_capture->IsViewOriented());
    EXPECT_THAT(_document.findings, SizeIs(1));
}

TEST_F(ViewLoadersTest, EyesThatRoundToTheTargetAreNoCamera) {
    saved().target = {1e9, 0, 0};
    saved().eye = {1e9 + 1, 0, 0};  // floats lie 64 apart there
    loadAll();
    EXPECT_FALSE(_capture->IsViewOriented());
}

TEST_F(ViewLoadersTest, AClippingPlaneWithoutDirectionIsAFinding) {
    saved().clipping = SavedView::Plane{{0, 0, 0}, {0, 0, 0}};
    loadAll();
    ASSERT_THAT(_document.findings, SizeIs(1));
    EXPECT_EQ(_document.findings[0].code, "view.no-clipping");
}

}  // namespace
}  // namespace kesview
