#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/core/RenderId.h>
#include <KesVizCore/scene/IRendererReportProvider.h>

#include <cstdint>
#include <map>
#include <string>
#include <unordered_set>

namespace KesVizCore {

class AGeometryItemFactory;
class AView3DAdapter;
class EntityId;
class RenderingOptions;
class SceneBuilder;

/// The base of the host's renderers, which turn one kind of host data into scene-builder calls.
///
/// Its static part maps host ids, which may have the top bit set, to unique ids that are not
/// negative as signed 64-bit numbers.
///
/// @par Ownership
/// Owns its builder unless SetBuilderOwnership(false) is called, and then deletes it through
/// VizFactories. The render id is copied.
///
/// @par Errors
/// Without a builder, or one without an adapter, what is asked of them is null.
///
/// @par Threads
/// One renderer, one thread. The tables of signed ids belong to the whole process and are
/// unguarded: compute signed ids on one thread.
class KESVIZCORE_API ARenderer : public IRendererReportProvider {
public:
    /// Told how far a renderer is: @p done of @p total steps, and what it is doing.
    using ProgressCallback = void (*)(const int& done, const int& total, const char* text);

    void SetReportMode(const bool& on) override;
    bool GetReportMode() override;
    /// Sets all counts to 0.
    void ClearReport() override;
    RendererReport& GetReport() override;
    /// Also forgets every signed id handed out so far, for all renderers.
    virtual ~ARenderer();

    /// @name The host's renderer
    /// @{
    virtual std::wstring GetName() const = 0;
    virtual bool Render() = 0;
    virtual bool Update() = 0;
    virtual void Clear() = 0;
    virtual bool IsEmpty() const = 0;
    /// The body here does nothing and answers true.
    virtual bool Activate(RenderId& id);
    virtual bool Deactivate(RenderId& id) = 0;
    virtual bool Show(const RenderId& id) = 0;
    virtual bool Hide(const RenderId& id) = 0;
    /// The body here answers an empty text.
    virtual std::wstring GetToolTip(const RenderId& id);
    virtual bool GetEntityId(const RenderId& id, EntityId& out) const = 0;
    virtual bool GetRenderId(const EntityId& entity, RenderId& out) const = 0;
    /// @}

    /// The id under which this renderer renders.
    RenderId GetRenderId();
    /// The builder's options, or null.
    RenderingOptions* GetRenderingOptions();
    /// Null takes the callback away.
    void SetProgressCallback(ProgressCallback callback);
    /// Whether the destructor deletes the builder; true at first.
    void SetBuilderOwnership(const bool& owned);

    /// The id, the same for the same input until a renderer is destroyed, by which a host id is
    /// known where ids are signed.
    ///
    /// An id with its top bit clear is answered as it is, whatever was handed out before. One with
    /// the top bit set has 2^63 + 1 taken off; where that number is taken, the highest free one
    /// below 2^63 is answered instead.
    ///
    /// @throws std::runtime_error for 2^63 itself, for which there is no such number, and when
    ///     none is free
    static std::uint64_t getSignedId(const std::uint64_t& id);

protected:
    /// @param builder   null allowed; owned from now on
    /// @param renderId  copied unless it is null
    ARenderer(SceneBuilder* builder, RenderId* renderId);
    ARenderer(const ARenderer& other) = delete;
    ARenderer& operator=(const ARenderer& other) = delete;

    SceneBuilder* getSceneBuilder() const;
    /// The builder's adapter, or null.
    AView3DAdapter* getView3DAdapter() const;
    /// The adapter's maker of items, or null.
    AGeometryItemFactory* getGeometryItemFactory() const;

    /// Hands out @p signedId for @p id from now on, in the place of any other.
    static void addSignedId(const std::uint64_t& id, const std::uint64_t& signedId);

    RenderId _renderId;
    bool _flag;              ///< the host's to use; false at first
    bool _backFacesVisible;  ///< what the view said when this renderer was made
    RendererReport _report;
    bool _reportMode;
    SceneBuilder* _sceneBuilder;
    bool _builderOwnership;
    ProgressCallback _progressCallback;

private:
    void init();
    static std::uint64_t freeSignedId(std::uint64_t candidate);

    static std::map<std::uint64_t, std::uint64_t> signedIds;
    static std::unordered_set<std::uint64_t> signedIdSet;
};

}  // namespace KesVizCore
