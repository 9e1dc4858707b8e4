#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/core/EntityId.h>
#include <KesVizCore/core/RGBAColor.h>
#include <KesVizCore/core/RenderId.h>

#include <cstdint>
#include <string>

namespace KesVizCore {

/// The base of everything in the data model: who an element is and how it is shown.
///
/// An element has an id of its own, which its loader stamps; a visual id, which the host chooses;
/// the entity of the CAD model that it stands for; and its places in the 3D scene and in the
/// host's tree.
///
/// @par Ownership
/// Made by loaders (AVizElementLoader) and owned by what holds it: a container its meshes, wires
/// and point sets, a mesh its faces and edges, and so on. Owners delete elements as what they
/// are, never as a VizElement. A copy shares the pointers of its original, so that the two must
/// not both be destroyed where the element owns others.
///
/// @par Errors
/// std::bad_alloc when memory runs out for a text, a render id or a copy; nothing else fails.
/// Everything is stored unchecked.
///
/// @par Threads
/// A model is used by one thread at a time.
class KESVIZCORE_API VizElement {
public:
    VizElement(const VizElement& other);             ///< the id too
    VizElement& operator=(const VizElement& other);  ///< the id too

    /// The name of the class: "Edge", "Face", "PMI", ...
    virtual std::string GetElementType() const = 0;

protected:
    virtual ~VizElement();
    /// Does nothing here: elements without coordinates of their own ignore transforms.
    ///
    /// @param targetFromSource 16 floats, read column by column, with the translation at 12..14
    virtual void ApplyTransform(float targetFromSource[4][4]);

public:
    /// @name Identity
    /// @{
    void SetVisualID(const std::wstring& visualId);  ///< any text; several elements may share one
    std::wstring GetVisualID() const;                ///< empty at first
    /// The largest unsigned number until a loader stamps the element.
    std::uint64_t GetID() const;
    void SetEntityID(const EntityId& entityId);  ///< of any type
    /// Always writes @p out; false where the stored id has no type.
    bool GetEntityID(EntityId& out) const;
    void Set3DRenderID(const RenderId& renderId);  ///< of any origin
    /// Always writes @p out; false where the stored id is empty.
    bool Get3DRenderID(RenderId& out) const;
    void SetTreeRenderID(const RenderId& renderId);  ///< of any origin
    /// Always writes @p out; false where the stored id is empty.
    bool GetTreeRenderID(RenderId& out) const;
    /// @}

    /// @name Display
    /// @{
    void SetColor(const RGBAColor& color);  ///< HasColor() from now on
    /// Opaque white until a colour is set.
    RGBAColor GetColor() const;
    /// True from the first SetColor on; there is no way back.
    bool HasColor() const;
    void SetHidden(const bool& hidden);  ///< GetHidden() answers true from now on
    /// Always writes @p hidden, false at first; true from the first SetHidden on, so that shown
    /// on purpose can be told from never said.
    bool GetHidden(bool& hidden) const;
    /// @}

protected:
    /// No colour, entity and render ids; the id of an element without a loader.
    VizElement();
    void setID(const std::uint64_t& id);  ///< what GetID answers
    /// Sets the colour's alpha to 255, whether or not the element has a colour.
    void makeColorOpaque();

private:
    friend class AVizElementLoader;
    friend struct ElementAccess;

    std::wstring _visualId;
    bool _hasColor;
    RGBAColor _color;
    bool _hidden;
    bool _hiddenSet;
    std::uint64_t _id;
    EntityId _entityId;
    RenderId _renderId3D;
    RenderId _treeRenderId;
};

}  // namespace KesVizCore
