#pragma once

/// @file
/// The view: a camera, and a picture of characters made by casting a ray through each of them.

#include <KesVizCore/core/RGBAColor.h>
#include <KesVizCore/core/RenderId.h>
#include <KesVizCore/view/IView3D.h>

#include <string>
#include <vector>

namespace KesVizCore {
class GeoNode;
}

namespace host {

namespace viz = KesVizCore;

/// Works with any adapter: what it shows it learns by picking.
///
/// A pixel is one character, which is twice as tall as it is wide. Faces and annotations are
/// letters, capital where they are highlighted; edges are dots, or '#'.
class View : public viz::IView3D {
public:
    void GetViewport(int& width, int& height) const override;
    void SetViewport(int width, int height) override;
    void GetCamera(float* eye, float* target, float* up) const override;
    /// Turns @p up until it is upright on the line of sight, as GetRayVector wants it; throws
    /// std::invalid_argument where it cannot be.
    void SetCamera(const float* eye, const float* target, const float* up) override;
    void GetViewExtent(float& width, float& height) const override;
    bool IsPerspective() const override { return _perspective; }
    void SetPerspective(bool perspective) override;
    void FitAll() override;

    void OpenTopNode() override;
    void CloseTopNode() override;

    /// The legend of the picture: a line for each letter; with @p flag also its render id.
    void GetSceneGraphStructure(std::string& out, bool flag) override;
    bool GetRay(int x, int y, viz::Ray& ray) const override;
    bool PickAt(int x, int y, viz::RenderId& id) override;
    void GetBackground(viz::RGBAColor& color) const override { color = _background; }
    void SetBackground(const viz::RGBAColor& color) override { _background = color; }
    bool SaveImage(const std::wstring& path) override;
    void Invalidate() override { _upToDate = false; }
    /// Characters have no half tones: every level looks the same.
    void SetAntialiasLevel(int /*level*/) override {}

    void AttachView3DAdapter(viz::AView3DAdapter* adapter) override { _view3DAdapter = adapter; }
    void Render() override;

    /// The picture, drawn anew where something has changed; a line of text for each row.
    const std::string& Picture();

private:
    struct Axes {
        float right[3], up[3];
    };
    Axes axes() const;
    char characterAt(int x, int y);
    char letterOf(const viz::RenderId& id);

    int _width = 64;
    int _height = 26;
    float _eye[3] = {0, 0, 1};
    float _target[3] = {0, 0, 0};
    float _up[3] = {0, 1, 0};
    float _viewWidth = 1;
    float _viewHeight = 1;
    bool _perspective = false;
    viz::RGBAColor _background;

    std::string _picture;
    bool _upToDate = false;
    std::vector<viz::RenderId> _lettered;  ///< what the letters stand for, a first
};

}  // namespace host
