#pragma once

/// @file
/// Geometry items with their data, and the factory that makes them.
///
/// The library's item classes describe how something is drawn; where it is, the host keeps.

#include <KesVizCore/graph/AGeometryItemFactory.h>
#include <KesVizCore/math/Ray.h>

#include <array>
#include <utility>
#include <vector>

namespace host {

namespace viz = KesVizCore;

/// Where a node stands: what leads from its own coordinates to those of the world.
class Placement {
public:
    /// At the origin.
    Placement();
    /// @p matrix is 16 doubles, column by column, translation at 12..14.
    explicit Placement(const double* matrix);

    /// The placement of something that stands at @p inner inside of this one.
    Placement Around(const Placement& inner) const;
    /// @p points are x, y, z triples.
    std::vector<float> ToWorld(const std::vector<float>& points) const;

private:
    std::array<double, 16> _worldFromLocal;
};

/// Where an item lies, in the coordinates of its node, and what hits it.
class Shape {
public:
    enum class Form { Triangles, Lines, Points };

    /// @param points   x, y, z triples
    /// @param corners  three indices into the points for each triangle; empty for other forms
    Shape(Form form, std::vector<float> points, std::vector<int> corners);

    const std::vector<float>& Points() const { return _points; }
    /// True for what has no area: hard to hit, so that picking favours it.
    bool IsThin() const { return _form != Form::Triangles; }
    /// Whether @p ray hits the shape where it stands; @p distance is in model units.
    bool IsHit(const viz::Ray& ray, const Placement& placement, double& distance) const;

private:
    double distanceToTriangles(const viz::Ray& ray, const std::vector<float>& points) const;

    Form _form;
    std::vector<float> _points;
    std::vector<int> _corners;
};

/// What every item of this host answers besides what the library asks of it.
class HostItem {
public:
    virtual ~HostItem() = default;
    virtual const Shape& GetShape() const = 0;
    virtual bool IsHighlighted() const = 0;
};

/// Widens the box @p extrema (min x, y, z, max x, y, z) by points.
void addToBox(const std::vector<float>& points, float* extrema);
/// A box that holds nothing yet.
void clearBox(float* extrema);

/// An item of any of the library's kinds, with its shape.
template <typename Kind>
class Item : public Kind, public HostItem {
public:
    /// @p arguments are those of the kind's own constructor.
    template <typename... Arguments>
    explicit Item(Shape shape, Arguments&&... arguments)
        : Kind(std::forward<Arguments>(arguments)...), _shape(std::move(shape)) {}

    bool GetExtents(float* extrema) const override {
        if (_shape.Points().empty()) {
            return false;
        }
        clearBox(extrema);
        addToBox(_shape.Points(), extrema);
        return true;
    }
    void SetVisible(const bool& visible) override { _visible = visible; }
    bool IsVisible() const override { return _visible; }

    const Shape& GetShape() const override { return _shape; }
    /// A colour is saved exactly while another is shown in its place.
    bool IsHighlighted() const override { return this->_colorSaved; }

private:
    Shape _shape;
    bool _visible = true;
};

/// Makes this host's items. Every array is copied: it is the caller's and may go away.
class ItemFactory final : public viz::AGeometryItemFactory {
public:
    viz::AGeometryItem* CreateTriangleSet(const std::uint64_t& id, float* vertices, float* normals,
                                          int* indices, int vertexCount, int normalCount,
                                          int indexCount, viz::TriangleType triangleType) override;
    viz::AGeometryItem* CreatePolyline(const std::uint64_t& id, float* points, int count) override;
    viz::AGeometryItem* CreateFilledPolyline(const std::uint64_t& id, float* points,
                                             int count) override;
    viz::AGeometryItem* CreatePointCloud(const std::uint64_t& id, const int& count,
                                         float* points) override;
    viz::AGeometryItem* CreateVertex(const std::uint64_t& id, float* const position) override;
    viz::AGeometryItem* CreateText(const std::uint64_t& id, const std::wstring& firstText,
                                   const std::wstring& secondText, float* position,
                                   const viz::FontAttr& font, const float& number) override;
};

}  // namespace host
