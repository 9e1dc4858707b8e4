#include "model/DumpLines.h"

#include <KesVizCore/math/VectorMath.h>
#include <KesVizCore/model/VizCapture.h>

#include <algorithm>

namespace KesVizCore {

namespace {

void copyTriple(const float* from, float* to) {
    std::copy(from, from + 3, to);
}

std::wstring cameraName(VizCapture::CameraType type) {
    switch (type) {
        case VizCapture::Perspective:
            return L"Perspective";
        case VizCapture::Orthographic:
            return L"Orthographic";
        default:
            return L"Undefined";
    }
}

}  // namespace

std::string VizCapture::TypeID() {
    return "Capture";
}

VizCapture::VizCapture()
    : _eye{},
      _clippingOrigin{},
      _clippingU{},
      _clippingV{0.0F, 1.0F, 0.0F},
      _clippingPlaneSet(false),
      _perspectiveViewAngle(13.5F),
      _orthographicZoomFactor(1.0F),
      _cameraType(UndefinedCamera),
      _orientationSet(false) {}

VizCapture::VizCapture(const VizCapture& other) = default;
VizCapture& VizCapture::operator=(const VizCapture& other) = default;
VizCapture::~VizCapture() = default;

std::string VizCapture::GetElementType() const {
    return TypeID();
}

bool VizCapture::SetOrientation(float* eye, float* target, float* up) {
    copyTriple(eye, _eye);
    copyTriple(target, _origin);
    copyTriple(up, _vAxis);

    float lineOfSight[3];
    Subtract(_eye, _origin, lineOfSight);
    Normalize(_vAxis);
    Normalize(lineOfSight);
    CrossProduct(_vAxis, lineOfSight, _uAxis);

    _orientationSet = true;
    _viewOriented = true;
    return true;
}

bool VizCapture::GetOrientation(float* eye, float* target, float* up) const {
    copyTriple(_eye, eye);
    copyTriple(_origin, target);
    copyTriple(_vAxis, up);
    return _orientationSet;
}

void VizCapture::SetClippingPlane(const float* origin, const float* u, const float* v) {
    copyTriple(origin, _clippingOrigin);
    copyTriple(u, _clippingU);
    copyTriple(v, _clippingV);
    _clippingPlaneSet = true;
}

bool VizCapture::GetClippingPlane(float* origin, float* u, float* v) const {
    copyTriple(_clippingOrigin, origin);
    copyTriple(_clippingU, u);
    copyTriple(_clippingV, v);
    return _clippingPlaneSet;
}

VizCapture::CameraType VizCapture::GetCameraType() const {
    return _cameraType;
}

void VizCapture::SetCameraType(const CameraType& type) {
    _cameraType = type;
}

float VizCapture::GetPerspectiveViewAngle() const {
    return _perspectiveViewAngle;
}

void VizCapture::SetPerspectiveViewAngle(float angle) {
    _perspectiveViewAngle = angle;
}

float VizCapture::GetOrthographicZoomFactor() const {
    return _orthographicZoomFactor;
}

void VizCapture::SetOrthographicZoomFactor(float factor) {
    _orthographicZoomFactor = factor;
}

std::wstring VizCapture::GetHiddenText() const {
    return _hiddenText;
}

void VizCapture::SetHiddenText(const std::wstring& text) {
    _hiddenText = text;
}

std::wstring VizCapture::GetCaptureAsString() const {
    std::wstring dump = textLine(L"Name: ", GetName()) + textLine(L"VisualID : ", GetVisualID()) +
                        textLine(L"MechID : ", GetMechanicalID()) +
                        flagLine(L"Active : ", GetActive()) + flagLine(L"Hidden : ", GetHidden()) +
                        textLine(L"Camera Type: ", cameraName(_cameraType));
    if (_cameraType != UndefinedCamera) {
        dump += numberLine(L"View Angle = ", _perspectiveViewAngle) +
                numberLine(L"Zoom Factor = ", _orthographicZoomFactor) +
                tripleLine(L"Eye = ", _eye) + tripleLine(L"Target = ", _origin) +
                tripleLine(L"Up = ", _vAxis);
    }
    if (_clippingPlaneSet) {
        dump += L"Clipping Plane:\n" + tripleLine(L"Origin = ", _clippingOrigin) +
                tripleLine(L"U = ", _clippingU) + tripleLine(L"V = ", _clippingV);
    }
    return dump;
}

}  // namespace KesVizCore
