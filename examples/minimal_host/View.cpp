#include "View.h"

#include "Geometry.h"

#include <KesVizCore/core/EntityId.h>
#include <KesVizCore/graph/AGeometryItem.h>
#include <KesVizCore/graph/Node.h>
#include <KesVizCore/math/HitTests.h>
#include <KesVizCore/math/VectorMath.h>
#include <KesVizCore/report/Utils.h>
#include <KesVizCore/view/AView3DAdapter.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace host {

namespace {

constexpr float kCharacterHeight = 2;  // in widths of a character
constexpr float kMargin = 1.04F;

void copyPoint(const float* from, float* to) {
    std::copy(from, from + 3, to);
}

}  // namespace

// --- the camera ---------------------------------------------------------------------------------

void View::GetViewport(int& width, int& height) const {
    width = _width;
    height = _height;
}

void View::SetViewport(int width, int height) {
    _width = width;
    _height = height;
    Invalidate();
}

void View::GetCamera(float* eye, float* target, float* up) const {
    copyPoint(_eye, eye);
    copyPoint(_target, target);
    copyPoint(_up, up);
}

void View::SetCamera(const float* eye, const float* target, const float* up) {
    float backward[3];
    float right[3];
    float upright[3];
    viz::Subtract(eye, target, backward);
    viz::CrossProduct(up, backward, right);
    viz::CrossProduct(backward, right, upright);
    viz::Normalize(upright);
    copyPoint(eye, _eye);
    copyPoint(target, _target);
    copyPoint(upright, _up);
    Invalidate();
}

void View::GetViewExtent(float& width, float& height) const {
    width = _viewWidth;
    height = _viewHeight;
}

void View::SetPerspective(bool perspective) {
    _perspective = perspective;
    Invalidate();
}

View::Axes View::axes() const {
    Axes axes{};
    float backward[3];
    viz::Subtract(_eye, _target, backward);
    viz::CrossProduct(_up, backward, axes.right);
    viz::Normalize(axes.right);
    copyPoint(_up, axes.up);
    return axes;
}

// Keeps the direction of sight, aims at the middle of all that is shown and widens the view until
// the corners of its box lie inside.
void View::FitAll() {
    float box[6];
    const viz::RenderId root({viz::Node::GetRootNodeId()}, viz::View3D);
    if (_view3DAdapter == nullptr || !_view3DAdapter->GetExtents(root, box)) {
        return;
    }
    float center[3];
    float half[3];
    for (int axis = 0; axis < 3; ++axis) {
        center[axis] = (box[axis] + box[axis + 3]) / 2;
        half[axis] = (box[axis + 3] - box[axis]) / 2;
    }
    SetGeometryExtents(center, viz::Length(half));

    float backward[3];
    viz::Subtract(_eye, _target, backward);
    viz::Multiply(viz::Normalize(backward), 2 * GetGeometryRadius());
    copyPoint(center, _target);
    viz::Add(center, backward, _eye);

    const Axes view = axes();
    float halfWidth = 0;
    float halfHeight = 0;
    for (int axis = 0; axis < 3; ++axis) {
        halfWidth += std::abs(view.right[axis]) * half[axis];
        halfHeight += std::abs(view.up[axis]) * half[axis];
    }
    const float aspect =
        static_cast<float>(_width) / (kCharacterHeight * static_cast<float>(_height));
    _viewHeight = 2 * kMargin * std::max(halfHeight, halfWidth / aspect);
    _viewWidth = _viewHeight * aspect;
    Invalidate();
}

// --- the top node -------------------------------------------------------------------------------

void View::OpenTopNode() {
    if (_view3DAdapter != nullptr) {
        _view3DAdapter->OpenNode(viz::Node::GetRootNodeId(), std::wstring());
    }
}

void View::CloseTopNode() {
    if (_view3DAdapter != nullptr) {
        _view3DAdapter->CloseAllNodes();
    }
}

// --- picking ------------------------------------------------------------------------------------

bool View::GetRay(int x, int y, viz::Ray& ray) const {
    if (x < 0 || x >= _width || y < 0 || y >= _height) {
        return false;
    }
    float eye[3];
    float target[3];
    float up[3];
    GetCamera(eye, target, up);
    float root[3];
    float direction[3];
    try {
        viz::GetRayVector(x, y, _width, _height, eye, target, up, _viewWidth, _viewHeight,
                          _perspective, root, direction);
    } catch (const std::invalid_argument&) {
        return false;  // a camera that looks nowhere
    }
    const float halfPixel = _viewWidth / static_cast<float>(2 * _width);
    ray = viz::Ray(root, direction, halfPixel);
    return true;
}

bool View::PickAt(int x, int y, viz::RenderId& id) {
    viz::Ray ray;
    if (_view3DAdapter == nullptr || !GetRay(x, y, ray)) {
        return false;
    }
    NotifyPick(ray);  // false says only that nobody listens
    return _view3DAdapter->PickVisual(ray, id);
}

// --- the picture --------------------------------------------------------------------------------

void View::Render() {
    _picture.clear();
    for (int y = 0; y < _height; ++y) {
        std::string row;
        for (int x = 0; x < _width; ++x) {
            row += characterAt(x, y);
        }
        row.erase(row.find_last_not_of(' ') + 1);
        _picture += row + "\n";
    }
    _upToDate = true;
}

namespace {

/// The step before the last of a path is the type.
bool isAnnotation(const viz::RenderId& id) {
    return id.Length() > 1 &&
           viz::EntityId(0, viz::EntityId::GetTypeFromInt(id[id.Length() - 2]), 0).IsAnnotation();
}

}  // namespace

char View::characterAt(int x, int y) {
    viz::Ray ray;
    viz::RenderId id;
    if (_view3DAdapter == nullptr || !GetRay(x, y, ray) || !_view3DAdapter->PickVisual(ray, id)) {
        return ' ';
    }
    const viz::GeoNode* const node = _view3DAdapter->GetNode(id);
    const auto* const item = node != nullptr && !node->EachGeometry().empty()
                                 ? dynamic_cast<const HostItem*>(node->EachGeometry().front())
                                 : nullptr;
    if (item == nullptr) {
        return '?';  // not one of ours
    }
    if (item->GetShape().IsThin() && !isAnnotation(id)) {
        return item->IsHighlighted() ? '#' : '.';
    }
    const char letter = letterOf(id);
    return item->IsHighlighted() ? static_cast<char>(letter - 'a' + 'A') : letter;
}

char View::letterOf(const viz::RenderId& id) {
    const auto known = std::find(_lettered.begin(), _lettered.end(), id);
    const auto index = (known - _lettered.begin()) % 26;
    if (known == _lettered.end()) {
        _lettered.push_back(id);
    }
    return static_cast<char>('a' + index);
}

const std::string& View::Picture() {
    if (!_upToDate) {
        Display();  // draws unless display is off
    }
    return _picture;
}

void View::GetSceneGraphStructure(std::string& out, bool flag) {
    for (const viz::RenderId& id : _lettered) {
        const viz::GeoNode* const node = _view3DAdapter->GetNode(id);
        if (node != nullptr) {
            out += std::string("  ") + letterOf(id) + "  " +
                   viz::Utils::WstringToString(node->Name()) +
                   (flag ? "  " + id.ToString() : std::string()) + "\n";
        }
    }
}

bool View::SaveImage(const std::wstring& path) {
    std::ofstream file(std::filesystem::path(path), std::ios::binary);
    file << Picture();
    file.close();
    return !file.fail();
}

}  // namespace host
