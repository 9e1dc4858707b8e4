#include <KesVizCore/view/IRayPickListener.h>
#include <KesVizCore/view/IView3D.h>

#include <algorithm>

namespace KesVizCore {

IView3D::IView3D()
    : _view3DAdapter(nullptr),
      _geometryCenter{0.0F, 0.0F, 0.0F},
      _geometryRadius(0.0F),
      _backFacesVisible(false),
      _displayOn(true),
      _rayPickListener(nullptr) {}

IView3D::~IView3D() = default;

bool IView3D::SetClipPlane(float* /*point*/, float* /*normal*/) {
    return false;
}

void IView3D::UnSetClipPlane() {}

AView3DAdapter* IView3D::GetView3DAdapter() {
    return _view3DAdapter;
}

void IView3D::OpenTopNode() {}

void IView3D::CloseTopNode() {}

bool IView3D::IsBackFacesVisible() const {
    return _backFacesVisible;
}

void IView3D::SetBackFacesVisible(bool visible) {
    _backFacesVisible = visible;
}

void IView3D::Display() {
    if (_displayOn) {
        Render();
    }
}

void IView3D::SetDisplayOn(const bool& on) {
    _displayOn = on;
}

bool IView3D::GetDisplayOn() const {
    return _displayOn;
}

void IView3D::SetGeometryExtents(float* const center, float radius) {
    std::copy(center, center + 3, _geometryCenter);
    _geometryRadius = radius;
}

const float* IView3D::GetGeometryCenter() const {
    return _geometryCenter;
}

float IView3D::GetGeometryRadius() const {
    return _geometryRadius;
}

void IView3D::SetRayPickListener(IRayPickListener* listener) {
    _rayPickListener = listener;
}

bool IView3D::NotifyPick(const Ray& ray) {
    if (_rayPickListener == nullptr) {
        return false;
    }
    _rayPickListener->OnPick(ray);
    return true;
}

void IView3D::SetView3DAdapter(AView3DAdapter* adapter) {
    AttachView3DAdapter(adapter);
}

}  // namespace KesVizCore
