#include "view/SceneView.h"

#include "loading/Load.h"
#include "view/Items.h"
#include "view/MakePicture.h"
#include "view/SceneAdapter.h"

#include <KesVizCore/core/RGBAColor.h>
#include <KesVizCore/graph/AGeometryItem.h>
#include <KesVizCore/math/HitTests.h>
#include <KesVizCore/math/Ray.h>
#include <KesVizCore/model/VizCapture.h>

#include <algorithm>
#include <cstddef>
#include <exception>
#include <stdexcept>
#include <utility>

namespace kesview {

namespace {

const viz::RenderId& rootPath() {
    static const viz::RenderId path({viz::Node::GetRootNodeId()}, viz::View3D);
    return path;
}

Vector widened(const float* v) {
    return {v[0], v[1], v[2]};
}

void narrowed(const Vector& v, float* out) {
    std::transform(v.begin(), v.end(), out, [](double value) { return static_cast<float>(value); });
}

}  // namespace

SceneView::SceneView() : SceneView(DrawPicture(), WriteImage()) {}

SceneView::SceneView(DrawPicture draw, WriteImage write)
    : _draw(std::move(draw)), _write(std::move(write)), _camera(*standardCamera("iso")) {}

// --- the camera ---------------------------------------------------------------------------------

void SceneView::GetViewport(int& width, int& height) const {
    width = _width;
    height = _height;
}

void SceneView::SetViewport(int width, int height) {
    _width = std::max(1, width);
    _height = std::max(1, height);
    Invalidate();
}

void SceneView::GetCamera(float* eye, float* target, float* up) const {
    narrowed(_camera.eye, eye);
    narrowed(_camera.target, target);
    narrowed(_camera.up, up);
}

void SceneView::SetCamera(const float* eye, const float* target, const float* up) {
    Camera camera = _camera;
    camera.eye = widened(eye);
    camera.target = widened(target);
    camera.up = widened(up);
    SetCamera(camera);
}

void SceneView::SetCamera(const Camera& camera) {
    _camera = upright(camera);
    Invalidate();
}

void SceneView::GetViewExtent(float& width, float& height) const {
    height = static_cast<float>(_camera.height);
    width = static_cast<float>(_camera.height * _width / _height);
}

void SceneView::SetPerspective(bool perspective) {
    SetCamera(withPerspective(_camera, perspective));
}

Box SceneView::sceneBox() const {
    return _scene != nullptr ? _scene->GetBox(rootPath()) : Box();
}

void SceneView::FitAll() {
    const Box box = sceneBox();
    if (box.IsEmpty()) {
        return;
    }
    float center[3];
    narrowed(box.Center(), center);
    SetGeometryExtents(center, static_cast<float>(box.Diagonal() / 2));
    SetCamera(fittedToSeen(_camera, _scene->GetBox(rootPath(), axesOf(_camera)), _width, _height));
}

bool SceneView::SetStandardView(const std::string& name) {
    const std::optional<Camera> standard = standardCamera(name);
    if (!standard) {
        return false;
    }
    SetCamera(withPerspective(*standard, _camera.perspective));
    FitAll();
    return true;
}

bool SceneView::SetCapture(const viz::VizCapture& capture) {
    const std::optional<Camera> camera = cameraOf(capture);
    if (!camera) {
        return false;
    }
    SetCamera(*camera);
    if (!(camera->height > 0)) {
        FitAll();
    }
    float origin[3];
    float u[3];
    float v[3];
    if (capture.GetClippingPlane(origin, u, v)) {
        float normal[3];
        narrowed(cross(widened(u), widened(v)), normal);
        SetClipPlane(origin, normal);
    } else {
        UnSetClipPlane();
    }
    return true;
}

// --- clipping -----------------------------------------------------------------------------------

bool SceneView::SetClipPlane(float* point, float* normal) {
    const Vector direction = unit(widened(normal));
    if (_scene == nullptr || lengthOf(direction) <= 0) {
        return false;
    }
    _scene->SetClipping(SavedView::Plane{widened(point), direction}, _scene->ClipsAnnotations());
    return true;
}

void SceneView::UnSetClipPlane() {
    if (_scene != nullptr) {
        _scene->SetClipping(std::nullopt, _scene->ClipsAnnotations());
    }
}

// --- the adapter --------------------------------------------------------------------------------

viz::AView3DAdapter* SceneView::GetView3DAdapter() {
    return _view3DAdapter;
}

void SceneView::AttachView3DAdapter(viz::AView3DAdapter* adapter) {
    _view3DAdapter = adapter;
    _scene = dynamic_cast<SceneAdapter*>(adapter);
    Invalidate();
}

void SceneView::OpenTopNode() {
    if (_view3DAdapter != nullptr) {
        _view3DAdapter->OpenNode(viz::Node::GetRootNodeId(), std::wstring());
    }
}

void SceneView::CloseTopNode() {
    if (_view3DAdapter != nullptr) {
        _view3DAdapter->CloseAllNodes();
    }
}

namespace {

std::string nameOf(Shape::Form form) {
    static const char* const names[] = {"triangles", "lines", "points", "text"};
    return names[static_cast<std::size_t>(form)];
}

std::string nameOf(const Color& color) {
    std::string name = "#";
    for (const std::uint8_t channel : color) {
        name += "0123456789abcdef"[channel / 16];
        name += "0123456789abcdef"[channel % 16];
    }
    return name;
}

}  // namespace

void SceneView::GetSceneGraphStructure(std::string& out, bool flag) {
    if (_scene == nullptr) {
        return;
    }
    ShownWalk walk = _scene->Walk();
    while (walk.Next()) {
        out += std::to_string(static_cast<int>(walk.Type())) + " " +
               nameOf(shapeOf(walk.Item()).form) + " " + nameOf(walk.GetColor()) +
               (flag ? " " + walk.Path().ToString() : std::string()) + "\n";
    }
}

// --- picking ------------------------------------------------------------------------------------

bool SceneView::GetRay(int x, int y, viz::Ray& ray) const {
    if (x < 0 || x >= _width || y < 0 || y >= _height) {
        return false;
    }
    float eye[3];
    float target[3];
    float up[3];
    float width = 0;
    float height = 0;
    GetCamera(eye, target, up);
    GetViewExtent(width, height);
    float root[3];
    float direction[3];
    try {
        viz::GetRayVector(x, y, _width, _height, eye, target, up, width, height,
                          _camera.perspective, root, direction);
    } catch (const std::invalid_argument&) {
        return false;  // eye and target are one in single precision
    }
    ray = viz::Ray(root, direction, _aperture * _camera.height / _height);
    return true;
}

PickRay SceneView::rayAt(int x, int y) const {
    PickRay ray = rayThrough(_camera, _width, _height, x, y);
    ray.aperture = _aperture * _camera.height / _height;
    ray.isLine = !_camera.perspective;
    return ray;
}

std::optional<PickHit> SceneView::Pick(int x, int y) {
    viz::Ray told;
    if (_scene == nullptr || !GetRay(x, y, told)) {
        return std::nullopt;
    }
    NotifyPick(told);  // false says only that nobody listens
    return _scene->Pick(rayAt(x, y));
}

bool SceneView::PickAt(int x, int y, viz::RenderId& id) {
    const std::optional<PickHit> hit = Pick(x, y);
    if (!hit) {
        return false;
    }
    id = hit->path;
    return true;
}

// --- the picture --------------------------------------------------------------------------------

void SceneView::GetBackground(viz::RGBAColor& color) const {
    color = viz::RGBAColor(_background[0], _background[1], _background[2], _background[3]);
}

void SceneView::SetBackground(const viz::RGBAColor& color) {
    SetBackground(toColor(color), std::nullopt);
}

void SceneView::SetBackground(const Color& bottom, const std::optional<Color>& top) {
    _background = bottom;
    _backgroundTop = top;
    Invalidate();
}

int SceneView::Samples() const {
    return _scene != nullptr ? _scene->GetRenderingOptions()->GetAntialiasLevel() : 1;
}

void SceneView::SetAntialiasLevel(int level) {
    if (_scene != nullptr) {
        _scene->GetRenderingOptions()->SetAntialiasLevel(level);
    }
}

Picture SceneView::MakePicture() const {
    Picture picture;
    picture.width = _width;
    picture.height = _height;
    picture.background = _background;
    picture.backgroundTop = _backgroundTop;
    picture.samples = Samples();
    picture.camera = _camera;
    if (_scene != nullptr) {
        picture.clipping = _scene->GetClipping();
        picture.clipsAnnotations = _scene->ClipsAnnotations();
        addScene(*_scene, picture);
    }
    return picture;
}

void SceneView::Render() {
    _image = _draw ? _draw(MakePicture()) : Image();
    _upToDate = true;
}

const Image& SceneView::GetImage() {
    if (!_upToDate) {
        Display();  // draws unless display is off
    }
    return _image;
}

bool SceneView::SaveImage(const std::wstring& path) {
    try {
        if (!_draw || !_write) {
            throw std::runtime_error("There is nothing here that draws.");
        }
        _write(GetImage(), narrow(path));
        return true;
    } catch (const std::exception& error) {
        _error = error.what();
        return false;
    }
}

}  // namespace kesview
