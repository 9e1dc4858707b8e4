#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/core/EntityId.h>
#include <KesVizCore/core/RenderId.h>

#include <cstdint>
#include <string>
#include <vector>

namespace KesVizCore {

class AGeometryItem;
class AView3DAdapter;
class GeoNode;
class RGBAColor;
class RenderingOptions;

/// Describes a scene to a view adapter with nested Begin and End calls.
///
/// It keeps no scene data: every call turns into calls on the adapter, which keeps the graph. What
/// it does keep is the render id of the open scene and the list of container ids, from which it
/// composes the render ids of entities and takes them apart again.
///
/// The order of a build: ConstructionBegin; for each scene SceneBegin, then scene levels,
/// containers, bodies, entity types and entities, each closed in reverse order, with attributes
/// and geometry on the open one, then SceneEnd; ConstructionEnd. Each Begin opens the child of
/// its id under the open node or creates it, so beginning an id again reopens the same node. A
/// Begin without its End leaves the node open, an End without its Begin closes another: nesting
/// is not checked. The guards of ASceneBuilderContext keep the pairs.
///
/// @par Ownership
/// Made by VizFactories::CreateSceneBuilder and destroyed by DeleteSceneBuilder. It does not own
/// its adapter, which must outlive it.
///
/// @par Errors
/// Without an adapter nothing happens, and the answer is false or null. A Begin whose node can be
/// neither opened nor created answers false and changes nothing. What the adapter throws passes
/// through: without a root MoveGeometryFrom throws std::runtime_error for a path that is not empty,
/// as AView3DAdapter::GetNode does, and so does AddReference where a group is open. std::bad_alloc
/// when memory runs out for anything but an attribute. A Begin that throws has closed its level
/// again; the node may have been created.
///
/// @par Threads
/// One builder, one thread: the one of its adapter.
class KESVIZCORE_API SceneBuilder {
public:
    /// Whether a container is a step of the render ids composed while it is the last one.
    enum ContainerType : std::int32_t {
        AddressedContainer = 0,   ///< its id stands in composed render ids
        UnaddressedContainer = 1  ///< a node of the graph only; as is every other value
    };

    /// @name Building
    /// The answer of each Begin is whether its node is open now.
    /// @{

    /// Has the adapter start a construction and open the root, and forgets the scene's render id.
    /// The adapter's view must not be null, here and at the end.
    virtual bool ConstructionBegin();
    /// Closes all that is open, the scene included, and ends the construction.
    virtual void ConstructionEnd();
    /// Appends @p id to the scene's render id, also while another scene is begun.
    virtual bool SceneBegin(const std::uint64_t& id, const std::wstring& name);
    /// Marks the builder as having content, and closes no node: ConstructionEnd does.
    virtual void SceneEnd();
    /// Makes @p id the container that render ids name, where @p type is AddressedContainer.
    virtual bool ContainerBegin(const std::uint64_t& id, const std::wstring& name,
                                const ContainerType& type);
    /// Closes the node. Render ids go on naming the container last begun as AddressedContainer,
    /// until another is begun or Clear is called.
    virtual void ContainerEnd();
    /// @p id is the ID of the body's EntityId where composed render ids are to lead here.
    virtual bool BodyBegin(const std::uint64_t& id, const std::wstring& name);
    /// Also sets @p color, without priority, on the body.
    virtual bool BodyBegin(const std::uint64_t& id, const std::wstring& name,
                           const RGBAColor& color);
    virtual void BodyEnd();  ///< closes the open node, whichever it is
    /// The node's id is the type's number, sign-extended to 64 bits; its filter id is the type.
    virtual bool EntityTypeBegin(const EntityType& type, const std::wstring& name);
    virtual void EntityTypeEnd();  ///< closes the open node, whichever it is
    /// @p id is the ID of the EntityId where composed render ids are to lead here.
    virtual bool EntityBegin(const std::uint64_t& id, const std::wstring& name);
    /// Also sets @p color, without priority, on the entity.
    virtual bool EntityBegin(const std::uint64_t& id, const std::wstring& name,
                             const RGBAColor& color);
    virtual void EntityEnd();  ///< closes the open node, whichever it is
    /// A level of the assembly: a node of the graph that no composed render id names.
    virtual bool SceneLevelBegin(const std::uint64_t& id, const std::wstring& name);
    virtual void SceneLevelEnd();  ///< closes the open node, whichever it is
    /// @}

    /// Hands @p item, null too, to AView3DAdapter::AddGeometryItem for the open node. False without
    /// an adapter; the item is then still the caller's.
    virtual bool AddGeometry(AGeometryItem* item);

    /// Empties the node at @p id: AView3DAdapter::ClearScene for a path of one id,
    /// AView3DAdapter::Clear for any other. The builder then has no content and names no
    /// container; the scene's render id stays.
    virtual void Clear(const RenderId& id);

    /// @name Attributes of the open node
    /// Colour and line style are set on the open node and then handed to
    /// AView3DAdapter::ApplyAttribute; without an open node nothing happens. A null attribute is
    /// passed on where memory runs out.
    /// @{

    /// @p flag becomes the attribute's priority.
    virtual void SetColor(const RGBAColor& color, const bool& flag);
    /// @p style is the pattern, @p width the weight; see AttributeLineStyle.
    virtual void SetLineStyle(const std::string& style, const float& width);
    /// Copies 16 doubles into an AttributeTransform, for ApplyAttribute alone. Null does nothing.
    virtual void SetTransformation(double* const matrix);
    /// @}

    /// @name Render ids of entities
    /// @{

    /// As below, with the number of @p type right after the container.
    virtual void BuildRenderId(RenderId& out, const EntityType& type, const EntityId& entity,
                               const RGBAColor& color1, const RGBAColor& color2) const;
    /// Composes scene, last addressed container if any, and then
    /// - for a body its ID;
    /// - for InvalidType nothing;
    /// - for any other type OwnerID, type and ID.
    ///
    /// The origin is View3D; the colours take no part.
    virtual void BuildRenderId(RenderId& out, const EntityId& entity, const RGBAColor& color1,
                               const RGBAColor& color2) const;
    /// Takes a render id apart, for a container render id of n ids.
    ///
    /// Three ids: the last becomes ID, whatever n is. Otherwise, from n + 2 ids on, OwnerID and
    /// type are read at n and n + 1 and, where that is a type, from n + 5 ids on ID at n + 2: a
    /// composed path of n + 3 ids gives owner and type, but ID 0. In every other case @p out is
    /// empty; its flag stays in all.
    virtual void ExtractEntityId(const RenderId& id, EntityId& out) const;
    /// @}

    /// @name Editing
    /// @{

    /// Deletes the node at @p id. Always false, whether or not one was deleted.
    virtual bool Delete(const RenderId& id);
    /// Moves the geometry of the node at @p id to the open node, with copies of its colour and
    /// transform. False without such a node; true, with nothing moved, where no node is open. Where
    /// memory runs out for the geometry, the colour and transform are copied already.
    virtual bool MoveGeometryFrom(const RenderId& id);
    /// Hangs the node at @p id under the open node as well. Always false.
    virtual bool AddReference(const RenderId& id);
    /// @}

    /// The adapter's options, or null. Not owned.
    virtual RenderingOptions* GetRenderingOptions();

    AView3DAdapter* GetView3DAdapter() const;  ///< null where it was made without one; not owned
    /// True from the first SceneEnd until Clear.
    bool HasContent() const;
    /// Sets the filter id of the open node, if there is one.
    void SetFilter(const int& filterId);
    /// Hands an AttributeVisibility to AView3DAdapter::ApplyAttribute; false without an adapter.
    bool SetVisibility(const bool& visible);
    /// The scene's render id, with the container last begun as AddressedContainer.
    RenderId GetContainerRenderId() const;
    /// Writes the render id of the open node; false, with @p out as it was, without one.
    bool GetCurrentRenderId(RenderId& out);

protected:
    friend class SceneBuilderFactory;

    /// No adapter, no content, no container: the factory attaches the adapter.
    SceneBuilder();
    SceneBuilder(const SceneBuilder& other) = default;  ///< not entered in the adapter's list
    SceneBuilder& operator=(const SceneBuilder& other) = default;  ///< the adapter's list stays
    virtual ~SceneBuilder();

    /// Opens the child of that id under the open node, or creates it; whether one of them
    /// succeeded.
    bool openOrCreateNode(const std::uint64_t& id, const std::wstring& name);

    /// @name Texts for tracing a build
    /// @{

    /// "7 Bracket"
    static std::string getIdAndNameString(std::uint64_t id, const std::wstring& name);
    /// The same for a node; "NULL" for null.
    static std::string getIdAndNameString(GeoNode* node);
    /// By the C library's conversion, at most 255 bytes and no more bytes than @p text has
    /// characters; a character that cannot be converted ends the text.
    static std::string convertToString(const std::wstring& text);
    /// As Utils::PointerToHexString: "0x7ffd5e8a1c40"
    static std::string getHexPointer(void* pointer);
    /// @}

private:
    void closeNode();
    GeoNode* currentOpenNode() const;

    AView3DAdapter* _view3DAdapter;
    bool _hasContent;
    RenderId _sceneRenderId;
    std::vector<std::uint64_t> _containers;
};

}  // namespace KesVizCore
