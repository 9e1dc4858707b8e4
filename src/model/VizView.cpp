#include "model/DumpLines.h"

#include <KesVizCore/model/VizView.h>

#include <algorithm>

namespace KesVizCore {

std::string VizView::TypeID() {
    return "View";
}

VizView::VizView() = default;

VizView::VizView(const VizView& other) = default;
VizView& VizView::operator=(const VizView& other) = default;
VizView::~VizView() = default;

std::string VizView::GetElementType() const {
    return TypeID();
}

void VizView::SetPlane(const float* origin, const float* u, const float* v) {
    // What GetPlane handed out may come back in another order.
    const float newU[3] = {u[0], u[1], u[2]};
    const float newV[3] = {v[0], v[1], v[2]};
    const float newOrigin[3] = {origin[0], origin[1], origin[2]};
    std::copy(newOrigin, newOrigin + 3, _origin);
    std::copy(newU, newU + 3, _uAxis);
    std::copy(newV, newV + 3, _vAxis);
    _viewOriented = true;
}

bool VizView::GetPlane(const float*& origin, const float*& u, const float*& v) const {
    origin = _origin;
    u = _uAxis;
    v = _vAxis;
    return _viewOriented;
}

bool VizView::GetPlane(float* origin, float* u, float* v) const {
    std::copy(_origin, _origin + 3, origin);
    std::copy(_uAxis, _uAxis + 3, u);
    std::copy(_vAxis, _vAxis + 3, v);
    return _viewOriented;
}

std::wstring VizView::GetViewAsString() const {
    return textLine(L"Name: ", GetName()) + textLine(L"VisualID : ", GetVisualID()) +
           textLine(L"MechID : ", GetMechanicalID()) + flagLine(L"Hidden : ", GetHidden()) +
           tripleLine(L"Origin = ", _origin) + tripleLine(L"U = ", _uAxis) +
           tripleLine(L"V = ", _vAxis);
}

}  // namespace KesVizCore
