#pragma once

/// @file
/// The view: camera, viewport and background over what a scene adapter shows.

#include "view/Cameras.h"
#include "view/Picker.h"
#include "view/Picture.h"

#include <KesVizCore/core/RenderId.h>
#include <KesVizCore/view/IView3D.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace kesview {

class SceneAdapter;

/// What draws for a view, and what writes an image into a file (UTF-8). Either throws what went
/// wrong.
using DrawPicture = std::function<Image(const Picture&)>;
using WriteImage = std::function<void(const Image&, const std::string& path)>;

/// Knows no library of drawing: it makes pictures, and hands them to whatever draws. Orthographic
/// at first, in the standard view "iso". Floats of the library's camera are rounded from a camera
/// in double, which is what is drawn and picked with.
///
/// @par Errors
/// Render throws what the drawing throws; SaveImage answers false and keeps the reason.
class SceneView final : public viz::IView3D {
public:
    SceneView();
    SceneView(DrawPicture draw, WriteImage write);

    void GetViewport(int& width, int& height) const override;
    /// Pixels; less than 1 is taken as 1.
    void SetViewport(int width, int height) override;
    void GetCamera(float* eye, float* target, float* up) const override;
    /// Keeps the height of what is seen, and turns @p up upright on the line of sight.
    void SetCamera(const float* eye, const float* target, const float* up) override;
    void GetViewExtent(float& width, float& height) const override;
    bool IsPerspective() const override { return _camera.perspective; }
    void SetPerspective(bool perspective) override;
    /// Keeps the direction; looks at the middle of what is shown.
    void FitAll() override;

    /// @p normal points towards what is kept. False without a scene, or for a normal of no length.
    bool SetClipPlane(float* point, float* normal) override;
    void UnSetClipPlane() override;

    viz::AView3DAdapter* GetView3DAdapter() override;
    void OpenTopNode() override;
    void CloseTopNode() override;
    /// A line for each item that is shown: type, form, colour, and with @p flag its path.
    void GetSceneGraphStructure(std::string& out, bool flag) override;

    /// By the library's helper, which turns directions within 0.0004 of an axis onto it. The
    /// aperture is SetAperture's.
    bool GetRay(int x, int y, viz::Ray& ray) const override;
    bool PickAt(int x, int y, viz::RenderId& id) override;
    /// All that is known of what is seen at a pixel. With a parallel projection also what lies
    /// behind the eye, as it is drawn.
    std::optional<PickHit> Pick(int x, int y);

    void GetBackground(viz::RGBAColor& color) const override;
    /// Also ends a gradient.
    void SetBackground(const viz::RGBAColor& color) override;
    bool SaveImage(const std::wstring& path) override;
    void Invalidate() override { _upToDate = false; }
    /// Samples for each pixel, by the adapter's options: 1, 2, 4, 8, 16, 32 or 64.
    void SetAntialiasLevel(int level) override;

    void AttachView3DAdapter(viz::AView3DAdapter* adapter) override;
    void Render() override;

    /// @name Beyond what the library asks
    /// @{
    const Camera& GetCamera() const { return _camera; }
    void SetCamera(const Camera& camera);
    /// One of standardViewNames, with all in sight; false for another name.
    bool SetStandardView(const std::string& name);
    /// Camera and clipping plane of a capture; false, with nothing changed, where it has no camera.
    /// A capture that does not say how much is seen gets all in sight.
    bool SetCapture(const viz::VizCapture& capture);
    void SetBackground(const Color& bottom, const std::optional<Color>& top);
    const Color& BackgroundColor() const { return _background; }
    const std::optional<Color>& BackgroundTop() const { return _backgroundTop; }
    /// How far off, in pixels, lines and points are still picked; 3 at first.
    void SetAperture(double pixels) { _aperture = pixels; }
    double GetAperture() const { return _aperture; }
    int Width() const { return _width; }
    int Height() const { return _height; }
    int Samples() const;

    Picture MakePicture() const;
    /// Drawn anew where anything has changed; empty without a drawing.
    const Image& GetImage();
    /// Why SaveImage failed last.
    const std::string& GetError() const { return _error; }
    /// Null where the adapter is none of this host's, or there is none.
    SceneAdapter* GetScene() const { return _scene; }
    /// @}

private:
    Box sceneBox() const;
    PickRay rayAt(int x, int y) const;

    DrawPicture _draw;
    WriteImage _write;
    SceneAdapter* _scene = nullptr;
    int _width = 1600;
    int _height = 1000;
    Camera _camera;
    Color _background = {255, 255, 255, 255};
    std::optional<Color> _backgroundTop;
    double _aperture = 3;
    bool _upToDate = false;
    Image _image;
    std::string _error;
};

}  // namespace kesview
