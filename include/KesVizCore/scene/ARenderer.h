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
/// Its static part maps host ids, which may have the top bit set, to ids that are not negative as
/// signed 64-bit numbers. Two ids with the top bit set never share one, but where addSignedId says
/// so; an id with the top bit clear may share one with another.
///
/// @par Ownership
/// Owns its builder unless SetBuilderOwnership(false) is called, and deletes it through
/// VizFactories: without an installed factory there the builder is not destroyed. The render id is
/// copied.
///
/// @par Errors
/// Without a builder, or one without an adapter, what is asked of them is null. getSignedId throws
/// std::runtime_error; std::bad_alloc when memory runs out for a render id or the tables. What the
/// host's operations mean by false is theirs.
///
/// @par Threads
/// One renderer, one thread. The tables of signed ids belong to the whole process and are
/// unguarded: compute signed ids, and destroy renderers, on one thread at a time.
class KESVIZCORE_API ARenderer : public IRendererReportProvider {
public:
    /// Told how far a renderer is: @p done of @p total steps, and what it is doing.
    using ProgressCallback = void (*)(const int& done, const int& total, const char* text);

    void SetReportMode(const bool& on) override;  ///< whether this renderer is to count
    bool GetReportMode() override;                ///< false at first
    /// Sets all counts to 0; the mode stays.
    void ClearReport() override;
    RendererReport& GetReport() override;  ///< its own counts, which it fills
    /// Deletes the builder if it is owned. Also forgets every signed id handed out so far, for all
    /// renderers.
    virtual ~ARenderer();

    /// @name The host's renderer
    /// @{

    /// What users call this renderer.
    virtual std::wstring GetName() const = 0;
    /// Builds the whole scene; whether that succeeded.
    virtual bool Render() = 0;
    /// Brings the scene up to date with the host's data; whether that succeeded.
    virtual bool Update() = 0;
    /// Takes out of the scene what this renderer put there.
    virtual void Clear() = 0;
    /// Whether it has put nothing there.
    virtual bool IsEmpty() const = 0;
    /// Called for what the user begins to work with; it may change @p id. The body here does
    /// nothing and answers true.
    virtual bool Activate(RenderId& id);
    /// Takes back what Activate did; whether that succeeded.
    virtual bool Deactivate(RenderId& id) = 0;
    /// Shows what @p id names; false where that is none of this renderer's.
    virtual bool Show(const RenderId& id) = 0;
    /// Hides what @p id names; false where that is none of this renderer's.
    virtual bool Hide(const RenderId& id) = 0;
    /// What is told of the thing under the pointer. The body here answers an empty text.
    virtual std::wstring GetToolTip(const RenderId& id);
    /// Writes the entity that stands at @p id; false without.
    virtual bool GetEntityId(const RenderId& id, EntityId& out) const = 0;
    /// Writes where @p entity stands in the scene; false where it does not.
    virtual bool GetRenderId(const EntityId& entity, RenderId& out) const = 0;
    /// @}

    /// The id under which this renderer renders; without ids unless the constructor was given one.
    RenderId GetRenderId();
    /// The builder's options, or null. Not owned.
    RenderingOptions* GetRenderingOptions();
    /// Null takes the callback away. The library never calls it.
    void SetProgressCallback(ProgressCallback callback);
    /// Whether the destructor deletes the builder; true at first.
    void SetBuilderOwnership(const bool& owned);

    /// The number by which a host id is known where ids are signed: the same for the same input
    /// until a renderer is destroyed, 0 to 2^63 - 1.
    ///
    /// An id with its top bit clear is answered as it is, unless addSignedId named another, and
    /// even if that number was handed out for another id before. One with the top bit set has 2^63
    /// + 1 taken off; where that number is taken, the highest free one below 2^63 is answered
    /// instead.
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

    SceneBuilder* getSceneBuilder() const;  ///< null where the constructor got none
    /// The builder's adapter, or null.
    AView3DAdapter* getView3DAdapter() const;
    /// The adapter's maker of items, or null.
    AGeometryItemFactory* getGeometryItemFactory() const;

    /// Hands out @p signedId for @p id from now on, in the place of any other.
    static void addSignedId(const std::uint64_t& id, const std::uint64_t& signedId);

    RenderId _renderId;                  ///< what GetRenderId answers
    bool _flag;                          ///< the host's to use; false at first
    bool _backFacesVisible;              ///< what the view said when this renderer was made
    RendererReport _report;              ///< what GetReport answers
    bool _reportMode;                    ///< whether to count
    SceneBuilder* _sceneBuilder;         ///< null allowed
    bool _builderOwnership;              ///< whether the destructor deletes it
    ProgressCallback _progressCallback;  ///< null at first

private:
    void init();
    static std::uint64_t freeSignedId(std::uint64_t candidate);

    static std::map<std::uint64_t, std::uint64_t> signedIds;
    static std::unordered_set<std::uint64_t> signedIdSet;
};

}  // namespace KesVizCore
