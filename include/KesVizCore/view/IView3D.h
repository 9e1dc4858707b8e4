#pragma once

#include <KesVizCore/Export.h>

#include <string>

namespace KesVizCore {

class AView3DAdapter;
class IRayPickListener;
class RGBAColor;
class RenderId;
struct Ray;

/// The host's 3D view, which the host completes: camera, drawing, picking by pixel.
///
/// The library asks it for little (the top node, its text of the graph, back faces); the rest is
/// a common language for host code that works with any view.
///
/// @par Units and ranges
/// Pixels count from the upper left corner, x to the right, y down. Points and extents are in
/// model units; points are 3 floats x, y, z, in arrays of the caller's that must not be null.
///
/// @par Ownership
/// The host owns the view. The view keeps pointers to the adapter and to the pick listener and
/// owns neither.
///
/// @par Errors
/// Those of the host's operations, and what the listener throws in NotifyPick; the library's own
/// bodies do not fail.
///
/// @par Threads
/// One thread, the one that draws.
class KESVIZCORE_API IView3D {
public:
    virtual ~IView3D();

    /// @name Viewport and camera
    /// @{

    /// The size of the drawing in pixels.
    virtual void GetViewport(int& width, int& height) const = 0;
    /// Changes the size of the drawing, in pixels.
    virtual void SetViewport(int width, int height) = 0;
    /// Writes 3 floats each: two points and the direction that is up on the screen.
    virtual void GetCamera(float* eye, float* target, float* up) const = 0;
    /// Takes what GetCamera writes.
    virtual void SetCamera(const float* eye, const float* target, const float* up) = 0;
    /// What the view shows of the plane through the target, in model units.
    virtual void GetViewExtent(float& width, float& height) const = 0;
    /// False for a parallel projection.
    virtual bool IsPerspective() const = 0;
    /// False for a parallel projection.
    virtual void SetPerspective(bool perspective) = 0;
    /// Moves the camera so that everything is seen.
    virtual void FitAll() = 0;
    /// @}

    /// Keeps what lies on the side of a plane to which its normal points, and cuts away the rest;
    /// the body here does nothing and answers false.
    ///
    /// @param point   a point of the plane, x, y, z
    /// @param normal  the plane's normal, x, y, z
    virtual bool SetClipPlane(float* point, float* normal);
    /// Stops cutting; the body here does nothing.
    virtual void UnSetClipPlane();

    /// The adapter that feeds this view, or null.
    virtual AView3DAdapter* GetView3DAdapter();
    /// Opens the root of the adapter's graph for a construction; the body here does nothing.
    virtual void OpenTopNode();
    /// Closes everything that is open, the root included; the body here does nothing.
    virtual void CloseTopNode();

    /// Writes the view's own text of its graph to @p out, asked by
    /// AView3DAdapter::GetSceneGraphStructure; what @p flag means is the host's.
    virtual void GetSceneGraphStructure(std::string& out, bool flag) = 0;
    /// The ray through the centre of a pixel; false where there is none.
    virtual bool GetRay(int x, int y, Ray& ray) const = 0;
    /// What is seen at a pixel; false where nothing is.
    virtual bool PickAt(int x, int y, RenderId& id) = 0;
    /// Writes the colour behind everything.
    virtual void GetBackground(RGBAColor& color) const = 0;
    /// Changes the colour behind everything.
    virtual void SetBackground(const RGBAColor& color) = 0;
    /// Writes what is seen into a file; false where that fails.
    virtual bool SaveImage(const std::wstring& path) = 0;
    /// Asks for a new drawing when there is time.
    virtual void Invalidate() = 0;

    /// Whether triangles are seen from behind; false at first.
    virtual bool IsBackFacesVisible() const;
    virtual void SetBackFacesVisible(bool visible);  ///< stored for the host, which draws
    /// Samples a pixel, as RenderingOptions::GetAntialiasLevel.
    virtual void SetAntialiasLevel(int level) = 0;

    /// Stores @p adapter, which may be null, in _view3DAdapter; called through
    /// AView3DAdapter::SetView3D.
    virtual void AttachView3DAdapter(AView3DAdapter* adapter) = 0;
    /// Draws now.
    virtual void Render() = 0;

    /// Calls Render, unless display is off.
    void Display();
    void SetDisplayOn(const bool& on);  ///< false makes Display do nothing
    /// True at first.
    bool GetDisplayOn() const;

    /// Copies the 3 floats of the centre, and the radius, of the sphere around all geometry, in
    /// model units and unchecked.
    void SetGeometryExtents(float* const center, float radius);
    /// The 3 stored floats, valid as long as the view; 0, 0, 0 at first.
    const float* GetGeometryCenter() const;
    float GetGeometryRadius() const;  ///< 0 at first

    /// Null takes the listener away. A listener must outlive the view or be taken away before.
    void SetRayPickListener(IRayPickListener* listener);
    /// Hands @p ray to the listener; false without one, true whatever it does with it.
    bool NotifyPick(const Ray& ray);

protected:
    friend class AView3DAdapter;

    /// No adapter and no listener, display on, back faces hidden, extents all zero.
    IView3D();
    /// Hands @p adapter, which may be null, to AttachView3DAdapter.
    void SetView3DAdapter(AView3DAdapter* adapter);

    AView3DAdapter* _view3DAdapter;  ///< null until the derived class stores one; not owned

private:
    float _geometryCenter[3];
    float _geometryRadius;
    bool _backFacesVisible;
    bool _displayOn;
    IRayPickListener* _rayPickListener;
};

}  // namespace KesVizCore
