/// @file
/// How infinities and NaNs read is left to the C library; these are the words of msvcrt. It rounds
/// them to the decimals that are asked for as if they were digits.

#include "model/ModelTestKit.h"

#include <KesVizCore/model/VizCapture.h>
#include <KesVizCore/model/VizView.h>

#include <gtest/gtest.h>

namespace KesVizCore {
namespace {

TEST(CaptureDumpWindowsTest, WritesInfinitiesAndNaNs) {
    VizCapture capture;
    capture.SetCameraType(VizCapture::Perspective);
    capture.SetPerspectiveViewAngle(-kInfinity);
    capture.SetOrthographicZoomFactor(kNaN);
    const Vector origin = {kInfinity, -kInfinity, kNaN};
    const Vector zero = {0, 0, 0};
    capture.SetClippingPlane(origin.data(), zero.data(), zero.data());
    EXPECT_EQ(capture.GetCaptureAsString(),
              L"Name: unnamed\n"
              L"VisualID : \n"
              L"MechID : \n"
              L"Active : NO\n"
              L"Hidden : NO\n"
              L"Camera Type: Perspective\n"
              L"View Angle = -1.#INF00\n"
              L"Zoom Factor = 1.#QNAN0\n"
              L"Eye = (0.00, 0.00, 0.00)\n"
              L"Target = (0.00, 0.00, 0.00)\n"
              L"Up = (0.00, 1.00, 0.00)\n"
              L"Clipping Plane:\n"
              L"Origin = (1.#J, -1.#J, 1.#R)\n"
              L"U = (0.00, 0.00, 0.00)\n"
              L"V = (0.00, 0.00, 0.00)\n");
}

TEST(ViewDumpWindowsTest, WritesInfinitiesAndNaNs) {
    const auto view = support::loadView();
    const Vector origin = {kInfinity, -kInfinity, kNaN};
    const Vector zero = {0, 0, 0};
    view->SetPlane(origin.data(), zero.data(), zero.data());
    EXPECT_EQ(view->GetViewAsString(),
              L"Name: unnamed\n"
              L"VisualID : \n"
              L"MechID : \n"
              L"Hidden : NO\n"
              L"Origin = (1.#J, -1.#J, 1.#R)\n"
              L"U = (0.00, 0.00, 0.00)\n"
              L"V = (0.00, 0.00, 0.00)\n");
}

}  // namespace
}  // namespace KesVizCore
