#include "model/ModelTestKit.h"
#include "report/ForeignLocale.h"

#include <KesVizCore/model/VizCapture.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <limits>
#include <stdexcept>
#include <string>
#include <type_traits>

namespace KesVizCore {
namespace {

using support::loadCapture;
using support::tripleAt;

/// A host's own capture, with its frame open.
class HostCapture : public VizCapture {
public:
    HostCapture() = default;

    Vector Origin() const { return tripleAt(_origin); }
    Vector U() const { return tripleAt(_uAxis); }
    Vector V() const { return tripleAt(_vAxis); }
};

struct Orientation {
    Vector Eye{-99, -99, -99};
    Vector Target{-99, -99, -99};
    Vector Up{-99, -99, -99};
    bool Set = false;
};

Orientation orientationOf(const VizCapture& capture) {
    Orientation got;
    got.Set = capture.GetOrientation(got.Eye.data(), got.Target.data(), got.Up.data());
    return got;
}

bool setOrientation(VizCapture& capture, Vector eye, Vector target, Vector up) {
    return capture.SetOrientation(eye.data(), target.data(), up.data());
}

/// Expects that setting that orientation throws what Normalize throws.
void expectRefused(VizCapture& capture, const Vector& eye, const Vector& target, const Vector& up) {
    try {
        setOrientation(capture, eye, target, up);
        ADD_FAILURE() << "did not throw";
    } catch (const std::invalid_argument& error) {
        EXPECT_STREQ(error.what(), "Invalid argument in Normalize()");
    }
}

void expectClippingPlane(const VizCapture& capture, const Vector& origin, const Vector& u,
                         const Vector& v, bool set) {
    Vector gotOrigin{-99, -99, -99};
    Vector gotU{-99, -99, -99};
    Vector gotV{-99, -99, -99};
    EXPECT_EQ(capture.GetClippingPlane(gotOrigin.data(), gotU.data(), gotV.data()), set);
    EXPECT_EQ(gotOrigin, origin);
    EXPECT_EQ(gotU, u);
    EXPECT_EQ(gotV, v);
}

void setClippingPlane(VizCapture& capture, const Vector& origin, const Vector& u, const Vector& v) {
    capture.SetClippingPlane(origin.data(), u.data(), v.data());
}

TEST(VizCaptureTest, CameraTypesHaveTheirNumbers) {
    static_assert(std::is_same_v<std::underlying_type_t<VizCapture::CameraType>, std::int32_t>);
    EXPECT_EQ(VizCapture::UndefinedCamera, 0);
    EXPECT_EQ(VizCapture::Perspective, 1);
    EXPECT_EQ(VizCapture::Orthographic, 2);
}

TEST(VizCaptureTest, HasDefaultsAtFirst) {
    const VizCapture capture;  // hosts may make one themselves
    const Orientation orientation = orientationOf(capture);
    EXPECT_EQ(orientation.Eye, (Vector{0, 0, 0}));
    EXPECT_EQ(orientation.Target, (Vector{0, 0, 0}));
    EXPECT_EQ(orientation.Up, (Vector{0, 1, 0}));
    EXPECT_FALSE(orientation.Set);
    EXPECT_FALSE(capture.IsViewOriented());
    expectClippingPlane(capture, {0, 0, 0}, {0, 0, 0}, {0, 1, 0}, false);
    EXPECT_EQ(capture.GetPerspectiveViewAngle(), 13.5F);
    EXPECT_EQ(capture.GetOrthographicZoomFactor(), 1.0F);
    EXPECT_EQ(capture.GetCameraType(), VizCapture::UndefinedCamera);
    EXPECT_EQ(capture.GetHiddenText(), L"");
    EXPECT_EQ(capture.GetName(), L"unnamed");
    EXPECT_FALSE(capture.GetHidden());
    EXPECT_FALSE(capture.GetActive());
}

TEST(VizCaptureTest, SetOrientationStoresEyeTargetAndNormalisedUp) {
    HostCapture capture;
    EXPECT_TRUE(setOrientation(capture, {0, 0, 10}, {0, 0, 0}, {0, 2, 0}));
    const Orientation orientation = orientationOf(capture);
    EXPECT_EQ(orientation.Eye, (Vector{0, 0, 10}));
    EXPECT_EQ(orientation.Target, (Vector{0, 0, 0}));
    EXPECT_EQ(orientation.Up, (Vector{0, 1, 0}));
    EXPECT_TRUE(orientation.Set);
}

TEST(VizCaptureTest, SetOrientationMakesTheFrame) {
    HostCapture capture;
    setOrientation(capture, {5, 6, 17}, {5, 6, 7}, {0, 2, 0});
    EXPECT_EQ(capture.Origin(), (Vector{5, 6, 7}));
    EXPECT_EQ(capture.V(), (Vector{0, 1, 0}));
    EXPECT_EQ(capture.U(), (Vector{1, 0, 0}));  // (0, 1, 0) x (0, 0, 1)
    EXPECT_TRUE(capture.IsViewOriented());
}

TEST(VizCaptureTest, SetOrientationKeepsAnUpVectorThatLeans) {
    // V is not made perpendicular to the line of sight, nor U brought to length 1.
    HostCapture capture;
    setOrientation(capture, {0, 0, 10}, {0, 0, 0}, {0, 3, 4});
    EXPECT_NEAR(capture.V()[1], 0.6, 1e-7);
    EXPECT_NEAR(capture.V()[2], 0.8, 1e-7);
    EXPECT_NEAR(capture.U()[0], 0.6, 1e-7);
    EXPECT_EQ(capture.U()[1], 0.0F);
    EXPECT_EQ(capture.U()[2], 0.0F);
}

TEST(VizCaptureTest, SetOrientationAlongTheUpVectorHasNoUAxis) {
    HostCapture capture;
    EXPECT_TRUE(setOrientation(capture, {0, 5, 0}, {0, 0, 0}, {0, 1, 0}));
    EXPECT_EQ(capture.U(), (Vector{0, 0, 0}));
}

TEST(VizCaptureTest, SetOrientationOfRandomCamerasIsTheCrossProductOfUpAndLineOfSight) {
    SeededNumbers numbers(58);
    for (int round = 0; round < 200; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        const Vector eye = numbers.VectorWithin(100.0);
        const Vector target = numbers.VectorWithin(1.0);
        const Vector up = numbers.VectorWithin(10.0);
        HostCapture capture;
        setOrientation(capture, eye, target, up);
        const LongVector v = times(1.0L / length(widened(up)), widened(up));
        const LongVector sight = difference(widened(eye), widened(target));
        const LongVector u = cross(v, times(1.0L / length(sight), sight));
        for (std::size_t axis = 0; axis < 3; ++axis) {
            EXPECT_NEAR(capture.V()[axis], static_cast<double>(v[axis]), 1e-6);
            EXPECT_NEAR(capture.U()[axis], static_cast<double>(u[axis]), 1e-6);
        }
        EXPECT_EQ(orientationOf(capture).Eye, eye);
        EXPECT_EQ(orientationOf(capture).Target, target);
    }
}

TEST(VizCaptureTest, SetOrientationLeavesItsArgumentsAlone) {
    Vector eye = {0, 0, 10};
    Vector target = {0, 0, 1};
    Vector up = {0, 2, 0};
    VizCapture capture;
    capture.SetOrientation(eye.data(), target.data(), up.data());
    EXPECT_EQ(eye, (Vector{0, 0, 10}));
    EXPECT_EQ(target, (Vector{0, 0, 1}));
    EXPECT_EQ(up, (Vector{0, 2, 0}));
}

TEST(VizCaptureTest, ANullUpVectorThrowsWithAllThreeStored) {
    HostCapture capture;
    expectRefused(capture, {1, 2, 3}, {4, 5, 6}, {0, 0, 0});
    EXPECT_EQ(orientationOf(capture).Eye, (Vector{1, 2, 3}));
    EXPECT_EQ(orientationOf(capture).Target, (Vector{4, 5, 6}));
    EXPECT_EQ(orientationOf(capture).Up, (Vector{0, 0, 0}));
    EXPECT_EQ(capture.U(), (Vector{1, 0, 0}));
    EXPECT_FALSE(orientationOf(capture).Set);
    EXPECT_FALSE(capture.IsViewOriented());
}

TEST(VizCaptureTest, AnEyeAtTheTargetThrowsWithTheUpVectorNormalised) {
    HostCapture capture;
    expectRefused(capture, {4, 5, 6}, {4, 5, 6}, {0, 0, -2});
    EXPECT_EQ(orientationOf(capture).Eye, (Vector{4, 5, 6}));
    EXPECT_EQ(orientationOf(capture).Target, (Vector{4, 5, 6}));
    EXPECT_EQ(orientationOf(capture).Up, (Vector{0, 0, -1}));
    EXPECT_EQ(capture.U(), (Vector{1, 0, 0}));
    EXPECT_FALSE(orientationOf(capture).Set);
    EXPECT_FALSE(capture.IsViewOriented());
}

TEST(VizCaptureTest, ARefusedOrientationLeavesUAxisAndFlagsOfTheOneBefore) {
    for (const bool nullUp : {true, false}) {
        SCOPED_TRACE(nullUp ? "null up vector" : "eye at the target");
        HostCapture capture;
        setOrientation(capture, {10, 0, 0}, {0, 0, 0}, {0, 1, 0});
        const Vector u = capture.U();
        EXPECT_EQ(u, (Vector{0, 0, -1}));
        expectRefused(capture, {7, 7, 7}, nullUp ? Vector{1, 1, 1} : Vector{7, 7, 7},
                      nullUp ? Vector{0, 0, 0} : Vector{2, 0, 0});
        EXPECT_EQ(capture.U(), u);
        EXPECT_EQ(orientationOf(capture).Eye, (Vector{7, 7, 7}));
        EXPECT_EQ(orientationOf(capture).Up, nullUp ? (Vector{0, 0, 0}) : (Vector{1, 0, 0}));
        EXPECT_TRUE(orientationOf(capture).Set);
        EXPECT_TRUE(capture.IsViewOriented());
    }
}

TEST(VizCaptureTest, NaNsAreRefusedToo) {
    VizCapture capture;
    expectRefused(capture, {0, 0, 10}, {0, 0, 0}, {kNaN, 1, 0});
    expectRefused(capture, {0, 0, kNaN}, {0, 0, 0}, {0, 1, 0});
}

TEST(VizCaptureTest, SetClippingPlaneStoresTheTriplesAsTheyAre) {
    VizCapture capture;
    setClippingPlane(capture, {1, 2, 3}, {40, 50, 60}, {0, 0, 0});
    expectClippingPlane(capture, {1, 2, 3}, {40, 50, 60}, {0, 0, 0}, true);
    setClippingPlane(capture, {0, 0, 0}, {0, 0, 0}, {0, 1, 0});
    expectClippingPlane(capture, {0, 0, 0}, {0, 0, 0}, {0, 1, 0}, true);
}

TEST(VizCaptureTest, TheClippingPlaneIsApartFromTheFrame) {
    HostCapture capture;
    setClippingPlane(capture, {1, 2, 3}, {4, 5, 6}, {7, 8, 9});
    EXPECT_EQ(capture.Origin(), (Vector{0, 0, 0}));
    EXPECT_EQ(capture.U(), (Vector{1, 0, 0}));
    EXPECT_EQ(capture.V(), (Vector{0, 1, 0}));
    EXPECT_FALSE(capture.IsViewOriented());
    EXPECT_FALSE(orientationOf(capture).Set);
}

TEST(VizCaptureTest, SetCameraTypeStoresAnyNumber) {
    VizCapture capture;
    for (const auto type : {VizCapture::Perspective, VizCapture::Orthographic,
                            VizCapture::UndefinedCamera, static_cast<VizCapture::CameraType>(-7)}) {
        capture.SetCameraType(type);
        EXPECT_EQ(capture.GetCameraType(), type);
    }
}

TEST(VizCaptureTest, AngleAndZoomStoreAnyNumber) {
    VizCapture capture;
    for (const float number : {0.0F, -1.0F, 1e30F, kInfinity}) {
        capture.SetPerspectiveViewAngle(number);
        capture.SetOrthographicZoomFactor(2.0F * number);
        EXPECT_EQ(capture.GetPerspectiveViewAngle(), number);
        EXPECT_EQ(capture.GetOrthographicZoomFactor(), 2.0F * number);
    }
}

TEST(VizCaptureTest, SetHiddenTextReplacesIt) {
    VizCapture capture;
    capture.SetHiddenText(L"first");
    capture.SetHiddenText(L"second");
    EXPECT_EQ(capture.GetHiddenText(), L"second");
    EXPECT_FALSE(capture.GetHidden());
}

TEST(VizCaptureTest, CopiesCopyEveryField) {
    HostCapture capture;
    setOrientation(capture, {10, 0, 0}, {1, 0, 0}, {0, 2, 0});
    setClippingPlane(capture, {1, 2, 3}, {4, 5, 6}, {7, 8, 9});
    capture.SetCameraType(VizCapture::Orthographic);
    capture.SetPerspectiveViewAngle(2.0F);
    capture.SetOrthographicZoomFactor(3.0F);
    capture.SetHiddenText(L"hidden");
    capture.SetName(L"name");
    HostCapture constructed(capture);
    HostCapture assigned;
    assigned = capture;
    capture = HostCapture();
    for (const HostCapture* const copy : {&constructed, &assigned}) {
        EXPECT_EQ(orientationOf(*copy).Eye, (Vector{10, 0, 0}));
        EXPECT_EQ(orientationOf(*copy).Target, (Vector{1, 0, 0}));
        EXPECT_EQ(orientationOf(*copy).Up, (Vector{0, 1, 0}));
        EXPECT_TRUE(orientationOf(*copy).Set);
        EXPECT_EQ(copy->U(), (Vector{0, 0, -1}));
        EXPECT_TRUE(copy->IsViewOriented());
        expectClippingPlane(*copy, {1, 2, 3}, {4, 5, 6}, {7, 8, 9}, true);
        EXPECT_EQ(copy->GetCameraType(), VizCapture::Orthographic);
        EXPECT_EQ(copy->GetPerspectiveViewAngle(), 2.0F);
        EXPECT_EQ(copy->GetOrthographicZoomFactor(), 3.0F);
        EXPECT_EQ(copy->GetHiddenText(), L"hidden");
        EXPECT_EQ(copy->GetName(), L"name");
    }
    EXPECT_FALSE(orientationOf(capture).Set);
    expectClippingPlane(capture, {0, 0, 0}, {0, 0, 0}, {0, 1, 0}, false);
}

// --- the dump ------------------------------------------------------------------------------------

constexpr const wchar_t* kNewCapture =
    L"Name: unnamed\n"
    L"VisualID : \n"
    L"MechID : \n"
    L"Active : NO\n"
    L"Hidden : NO\n";

TEST(VizCaptureTest, DumpOfANewCaptureIsSixLines) {
    EXPECT_EQ(loadCapture()->GetCaptureAsString(),
              std::wstring(kNewCapture) + L"Camera Type: Undefined\n");
}

TEST(VizCaptureTest, DumpOfAnOrthographicCaptureHasItsValues) {
    VizCapture capture;
    capture.SetCameraType(VizCapture::Orthographic);
    EXPECT_EQ(capture.GetCaptureAsString(), std::wstring(kNewCapture) +
                                                L"Camera Type: Orthographic\n"
                                                L"View Angle = 13.500000\n"
                                                L"Zoom Factor = 1.000000\n"
                                                L"Eye = (0.00, 0.00, 0.00)\n"
                                                L"Target = (0.00, 0.00, 0.00)\n"
                                                L"Up = (0.00, 1.00, 0.00)\n");
}

TEST(VizCaptureTest, DumpOfAnUnknownCameraTypeIsUndefinedWithItsValues) {
    for (const int type : {3, -1}) {
        VizCapture capture;
        capture.SetCameraType(static_cast<VizCapture::CameraType>(type));
        EXPECT_EQ(capture.GetCaptureAsString(), std::wstring(kNewCapture) +
                                                    L"Camera Type: Undefined\n"
                                                    L"View Angle = 13.500000\n"
                                                    L"Zoom Factor = 1.000000\n"
                                                    L"Eye = (0.00, 0.00, 0.00)\n"
                                                    L"Target = (0.00, 0.00, 0.00)\n"
                                                    L"Up = (0.00, 1.00, 0.00)\n");
    }
}

TEST(VizCaptureTest, DumpHasEveryField) {
    VizCapture capture;
    capture.SetName(L"Front %s");
    capture.SetVisualID(L"visual");
    capture.SetMechanicalID(L"mechanical");
    capture.SetActive(true);
    capture.SetHidden(true);
    capture.SetHiddenText(L"has no line");
    capture.SetCameraType(VizCapture::Perspective);
    capture.SetPerspectiveViewAngle(45.25F);
    capture.SetOrthographicZoomFactor(-0.5F);
    setOrientation(capture, {1.25F, 2, 30}, {1.25F, 2, -3.5F}, {0, -4, 0});
    setClippingPlane(capture, {10, 20.126F, 30}, {0.999F, 0, 0}, {0, 0, -1234567});
    EXPECT_EQ(capture.GetCaptureAsString(),
              L"Name: Front %s\n"
              L"VisualID : visual\n"
              L"MechID : mechanical\n"
              L"Active : YES\n"
              L"Hidden : YES\n"
              L"Camera Type: Perspective\n"
              L"View Angle = 45.250000\n"
              L"Zoom Factor = -0.500000\n"
              L"Eye = (1.25, 2.00, 30.00)\n"
              L"Target = (1.25, 2.00, -3.50)\n"
              L"Up = (0.00, -1.00, 0.00)\n"
              L"Clipping Plane:\n"
              L"Origin = (10.00, 20.13, 30.00)\n"
              L"U = (1.00, 0.00, 0.00)\n"
              L"V = (0.00, 0.00, -1234567.00)\n");
}

TEST(VizCaptureTest, DumpOfAnUndefinedCameraHasItsClippingPlaneOnly) {
    VizCapture capture;
    setOrientation(capture, {0, 0, 10}, {0, 0, 0}, {0, 1, 0});
    setClippingPlane(capture, {0, 0, 0}, {1, 0, 0}, {0, 1, 0});
    EXPECT_EQ(capture.GetCaptureAsString(), std::wstring(kNewCapture) +
                                                L"Camera Type: Undefined\n"
                                                L"Clipping Plane:\n"
                                                L"Origin = (0.00, 0.00, 0.00)\n"
                                                L"U = (1.00, 0.00, 0.00)\n"
                                                L"V = (0.00, 1.00, 0.00)\n");
}

TEST(VizCaptureTest, DumpDoesNotCutTexts) {
    VizCapture capture;
    const std::wstring longText(5000, L'x');
    capture.SetName(longText);
    capture.SetVisualID(longText);
    capture.SetMechanicalID(longText);
    EXPECT_EQ(capture.GetCaptureAsString(),
              L"Name: " + longText + L"\nVisualID : " + longText + L"\nMechID : " + longText +
                  L"\nActive : NO\nHidden : NO\nCamera Type: Undefined\n");
}

TEST(VizCaptureTest, DumpReadsIdAndFlagOfTheCollectionNotThoseOfTheElement) {
    VizCapture capture;
    VizElement& element = capture;
    element.SetVisualID(L"of the element");
    element.SetHidden(true);
    EXPECT_EQ(capture.GetCaptureAsString(),
              std::wstring(kNewCapture) + L"Camera Type: Undefined\n");
}

TEST(VizCaptureTest, DumpLeavesOutTriplesOfMoreThan63Characters) {
    VizCapture capture;
    const float wide = 9007199254740992.0F;  // 19 characters with its decimals
    capture.SetCameraType(VizCapture::Perspective);
    setOrientation(capture, {1e30F, 1e30F, 1e30F}, {wide, wide, wide}, {0, 1, 0});
    setClippingPlane(capture, {wide, wide, wide}, {-wide, wide, wide}, {1e30F, 1e30F, 1e30F});
    EXPECT_EQ(capture.GetCaptureAsString(),
              std::wstring(kNewCapture) +
                  L"Camera Type: Perspective\n"
                  L"View Angle = 13.500000\n"
                  L"Zoom Factor = 1.000000\n"
                  L"Target = (9007199254740992.00, 9007199254740992.00, 9007199254740992.00)\n"
                  L"Up = (0.00, 1.00, 0.00)\n"
                  L"Clipping Plane:\n"
                  L"Origin = (9007199254740992.00, 9007199254740992.00, 9007199254740992.00)\n");
}

TEST(VizCaptureTest, DumpKeepsTheLongestNumber) {
    VizCapture capture;
    capture.SetCameraType(VizCapture::Perspective);
    capture.SetPerspectiveViewAngle(-std::numeric_limits<float>::max());
    capture.SetOrthographicZoomFactor(1e-7F);
    EXPECT_EQ(capture.GetCaptureAsString(),
              std::wstring(kNewCapture) +
                  L"Camera Type: Perspective\n"
                  L"View Angle = -340282346638528859811704183484516925440.000000\n"
                  L"Zoom Factor = 0.000000\n"
                  L"Eye = (0.00, 0.00, 0.00)\n"
                  L"Target = (0.00, 0.00, 0.00)\n"
                  L"Up = (0.00, 1.00, 0.00)\n");
}

TEST(VizCaptureTest, DumpIsTheSameInEveryLocale) {
    VizCapture capture;
    capture.SetCameraType(VizCapture::Perspective);
    capture.SetPerspectiveViewAngle(1234.5F);
    setClippingPlane(capture, {1234.5F, 0, 0}, {1, 0, 0}, {0, 1, 0});
    const support::ForeignLocale locale;
    EXPECT_EQ(capture.GetCaptureAsString(), std::wstring(kNewCapture) +
                                                L"Camera Type: Perspective\n"
                                                L"View Angle = 1234.500000\n"
                                                L"Zoom Factor = 1.000000\n"
                                                L"Eye = (0.00, 0.00, 0.00)\n"
                                                L"Target = (0.00, 0.00, 0.00)\n"
                                                L"Up = (0.00, 1.00, 0.00)\n"
                                                L"Clipping Plane:\n"
                                                L"Origin = (1234.50, 0.00, 0.00)\n"
                                                L"U = (1.00, 0.00, 0.00)\n"
                                                L"V = (0.00, 1.00, 0.00)\n");
}

}  // namespace
}  // namespace KesVizCore
