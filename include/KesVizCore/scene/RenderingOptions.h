#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/core/RGBAColor.h>
#include <KesVizCore/scene/IRenderingOptions.h>

#include <cstdint>
#include <vector>

namespace KesVizCore {

/// What a view shows: which kinds of things, in which colours, and how smoothly.
///
/// A setter whose value is new tells every listener, in the order of the list, and passes a
/// copy of the options as they will be. The options themselves still hold the old value while
/// listeners run, except for SetAntialiasLevel, which stores first and tells afterwards.
///
/// Listeners may come and go while they are told: one that is removed is not told any more and
/// may be destroyed at once, one that is added is told from the next change on. One that is
/// removed and added again within one change counts as never removed.
///
/// @par Ownership
/// Listeners are borrowed. A copy of the options tells the same listeners as the original. The
/// options must outlive the change that they are telling of.
///
/// @par Errors
/// Where a listener throws or memory runs out, the setter throws, later listeners are not told,
/// and the old value stays; of SetAntialiasLevel the new one.
///
/// @par Threads
/// None of its own: options are used on the thread of their view.
class KESVIZCORE_API RenderingOptions : public IRenderingOptions {
public:
    /// Faces, edges, clouds, PMI, axes and the navigation cube are shown, vertices and the
    /// tessellation are not; every colour is opaque white, the antialias level is 1.
    RenderingOptions();
    /// New options with the values of the constructor, which the caller owns and destroys with
    /// delete; null when memory runs out.
    static RenderingOptions* CreateDefault();

    void AddListener(IRenderingOptionsListener* listener) override;
    void RemoveListener(IRenderingOptionsListener* listener) override;
    std::uint64_t GetNumberOfListeners(IRenderingOptionsListener* listener) override;

    /// @name What is shown
    /// @{
    bool GetDisplayFaces() const;           ///< true at first
    bool GetDisplayEdges() const;           ///< true at first
    bool GetDisplayVertices() const;        ///< false at first
    bool GetDisplayTessellation() const;    ///< false at first
    bool GetDisplayClouds() const;          ///< true at first
    bool GetDisplayPMI() const;             ///< true at first
    bool GetDisplayAxes() const;            ///< true at first
    bool GetDisplayNavigationCube() const;  ///< true at first

    void SetDisplayFaces(bool display);         ///< shows or hides the surfaces
    void SetDisplayEdges(bool display);         ///< shows or hides the lines of edges and wires
    void SetDisplayVertices(bool display);      ///< shows or hides the points of vertices
    void SetDisplayTessellation(bool display);  ///< shows or hides the sides of the triangles
    void SetDisplayClouds(bool display);        ///< shows or hides clouds of points
    void SetDisplayPMI(bool display);           ///< shows or hides annotations
    void SetDisplayAxes(bool display);          ///< shows or hides the axes of the model
    /// Shows or hides the cube that tells and turns the camera.
    void SetDisplayNavigationCube(bool display);
    /// @}

    /// @name Colours
    /// Those of things that have none of their own, and that of what is highlighted.
    /// @{
    RGBAColor GetDefaultBodyColor() const;      ///< of bodies
    RGBAColor GetDefaultFaceColor() const;      ///< of faces
    RGBAColor GetDefaultEdgeColor() const;      ///< of edges
    RGBAColor GetDefaultTessEdgeColor() const;  ///< of the sides of triangles
    RGBAColor GetDefaultVertexColor() const;    ///< of vertices
    RGBAColor GetDefaultCloudColor() const;     ///< of clouds of points
    RGBAColor GetDefaultPMIColor() const;       ///< of annotations
    RGBAColor GetHighlightColor() const;        ///< of what is highlighted

    void SetDefaultBodyColor(const RGBAColor& color);      ///< of bodies
    void SetDefaultFaceColor(const RGBAColor& color);      ///< of faces
    void SetDefaultEdgeColor(const RGBAColor& color);      ///< of edges
    void SetDefaultTessEdgeColor(const RGBAColor& color);  ///< of the sides of triangles
    void SetDefaultVertexColor(const RGBAColor& color);    ///< of vertices
    void SetDefaultCloudColor(const RGBAColor& color);     ///< of clouds of points
    void SetDefaultPMIColor(const RGBAColor& color);       ///< of annotations
    void SetHighlightColor(const RGBAColor& color);        ///< of what is highlighted
    /// @}

    /// Samples a pixel: 1, 2, 4, 8, 16, 32 or 64.
    int GetAntialiasLevel() const;
    /// Stores @p level, or 1 where it is none of the allowed levels.
    ///
    /// Listeners are told when @p level differs from the stored level, and so also of a level
    /// that is not allowed while 1 is stored and stays.
    void SetAntialiasLevel(int level);

private:
    /// Tells of the change of one option, then stores it.
    template <typename Value>
    void change(Value RenderingOptions::*option, Value value);
    void notify(RenderingOptions* changed);

    bool _displayFaces;
    bool _displayEdges;
    bool _displayVertices;
    bool _displayTessellation;
    bool _displayClouds;
    bool _displayPMI;
    bool _displayAxes;
    bool _displayNavigationCube;
    RGBAColor _defaultBodyColor;
    RGBAColor _defaultFaceColor;
    RGBAColor _defaultEdgeColor;
    RGBAColor _defaultTessEdgeColor;
    RGBAColor _defaultVertexColor;
    RGBAColor _defaultCloudColor;
    RGBAColor _defaultPMIColor;
    RGBAColor _highlightColor;
    int _antialiasLevel;
    std::vector<IRenderingOptionsListener*> _listeners;
};

}  // namespace KesVizCore
