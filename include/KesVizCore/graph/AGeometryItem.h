#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/core/Pooled.h>
#include <KesVizCore/core/RGBAColor.h>

#include <cstdint>
#include <string>

namespace KesVizCore {

/// One renderable piece of a scene-graph node: its id, its colour and one saved colour.
///
/// It holds no coordinates. The host derives its own items from the kinds of geometry
/// (AGeometryItemTriangleSet, AGeometryItemPolyline, ...) and keeps the render data there.
///
/// @par Units and ranges
/// A colour is 4 floats: red, green, blue, alpha, stored unchecked. A new item holds 0, 0, 0 and
/// 255.0, not 1.0, in the alpha.
///
/// @par Ownership
/// Made by the host, usually through its AGeometryItemFactory. GeoNode::AddGeometry gives it to
/// the node, which destroys it.
///
/// @par Errors
/// No operation fails, but that ToString throws std::bad_alloc when memory runs out. Array
/// arguments must not be null.
///
/// @par Threads
/// None of its own: items are used on the thread of their graph.
class KESVIZCORE_API AGeometryItem : public Pooled {
public:
    virtual ~AGeometryItem();
    /// As given to the constructor; nothing asks whether it is unique.
    virtual std::uint64_t ID() const;

    /// Writes 6 floats in model units, min x, y, z and max x, y, z; false, and nothing written,
    /// without a box.
    virtual bool GetExtents(float* extrema) const = 0;
    /// Shows or hides the item in the host's view; the library never calls it.
    virtual void SetVisible(const bool& visible) = 0;
    /// Whether the item is shown.
    virtual bool IsVisible() const = 0;

    /// Copies 4 floats.
    virtual void SetColor(float* const color);
    /// The channels divided by 255.
    virtual void SetColor(const RGBAColor& color);
    /// The 4 stored floats, valid as long as the item.
    virtual const float* GetColor() const;
    /// The 4 stored floats as RGBAColor reads floats: times 255, truncated, clamped.
    virtual void GetColor(RGBAColor& color);

    /// Copies the colour into the saved colour, whether or not one is saved already: saving
    /// twice loses the first.
    virtual void SaveColor();
    /// Puts the saved colour back and forgets it; without one nothing happens.
    virtual void RestoreColor();

    /// The id and the name of this base class; every kind answers its bare kind name instead.
    virtual std::string ToString();

    AGeometryItem(const AGeometryItem& other) = default;             ///< copies the id too
    AGeometryItem& operator=(const AGeometryItem& other) = default;  ///< copies the id too

protected:
    /// The colour is 0, 0, 0, 255.0, and none is saved.
    explicit AGeometryItem(const std::uint64_t& id);

    std::uint64_t _id;     ///< what ID answers
    bool _colorSaved;      ///< whether _savedColor holds one
    float _color[4];       ///< red, green, blue, alpha
    float _savedColor[4];  ///< zero until SaveColor
};

}  // namespace KesVizCore
