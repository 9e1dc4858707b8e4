#pragma once

/// @file
/// The adapter: it keeps the scene graph and what of it is shown.

#include "view/FilterManager.h"
#include "view/ItemFactory.h"
#include "view/PathMarks.h"
#include "view/Picker.h"
#include "view/Showing.h"
#include "view/ShownWalk.h"
#include "view/Strategies.h"
#include "view/Vectors.h"

#include <KesVizCore/graph/Node.h>
#include <KesVizCore/scene/AView3DAdapterFactory.h>
#include <KesVizCore/scene/IRenderingOptionsListener.h>
#include <KesVizCore/scene/RenderingOptions.h>
#include <KesVizCore/view/AView3DAdapter.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace kesview {

/// Owns the graph, the factory of items, the options, the strategies and the picker.
///
/// The root opens whatever is open, and no other node may have its id. What is shown follows from
/// marks by path, isolation, the filter and the options (see Showing); none of them changes the
/// graph. Shared nodes are unlinked before one of their parents dies.
///
/// @par Errors
/// Paths that lead nowhere are answered by false. The constructor throws std::bad_alloc.
class SceneAdapter final : public viz::AView3DAdapter {
public:
    /// @p makePicker may be empty: nothing is picked then.
    explicit SceneAdapter(const MakePicker& makePicker = {});
    ~SceneAdapter() override;
    SceneAdapter(const SceneAdapter&) = delete;
    SceneAdapter& operator=(const SceneAdapter&) = delete;

    void SetView3D(viz::IView3D* view) override;
    viz::IView3D* GetView3D() override { return _view; }

    bool IsConstructing() const override { return _constructing; }
    void StartConstruction(viz::Node* node) override;
    void EndConstruction() override;
    /// Without a view the root is opened and closed all the same.
    void OpenTopNode() override;
    void CloseTopNode() override;
    bool OpenNode(const std::uint64_t& id, const std::wstring& name) override;
    bool CreateNode(const std::uint64_t& id, const std::wstring& name) override;
    bool CreateGeoNode(const std::uint64_t& id, const std::wstring& name) override;
    bool AddReference(const viz::RenderId& path) override;
    void CloseNode() override;
    void CloseAllNodes() override;

    using AView3DAdapter::DeleteNode;
    bool DeleteNode(const std::uint64_t& id) override;
    void DeleteAllNodes() override;
    /// Clears all where @p id names the root, and otherwise the scene that it names.
    void ClearScene(const viz::RenderId& id) override;
    void Clear(const viz::RenderId& path) override;

    void ApplyAttribute(viz::Attribute* attribute) override;
    void RemoveAttribute(const viz::AttributeType& type) override;
    void AddGeometryItem(viz::AGeometryItem* item) override;
    void TransferNodeGeometryFrom(viz::GeoNode& source) override;
    viz::AGeometryItemFactory* GetGeometryItemFactory() override { return &_itemFactory; }

    /// Shows it even where it is hidden above, by the file or by an isolation.
    bool Show(const viz::RenderId& id) override;
    bool Hide(const viz::RenderId& id) override;
    /// Whether anything at or below the path is shown.
    bool IsVisible(const viz::RenderId& id) override;
    bool Isolate(const viz::RenderId& id) override;
    /// Ends isolation and takes all marks back: shown is what the file shows. To show that too
    /// which the file hides, show the root.
    void ShowAll() override;
    bool Highlight(const viz::RenderId& id, const viz::RGBAColor& color) override;
    bool Unhighlight(const viz::RenderId& id) override;
    void UnhighlightAll() override;

    bool PickVisual(const viz::Ray& ray, viz::RenderId& id) override;
    bool GetExtents(const viz::RenderId& id, float* extrema) override;
    viz::RenderingOptions* GetRenderingOptions() override { return &_options; }
    void BeginUpdate() override;
    void EndUpdate() override;

    /// @name Beyond what the library asks
    /// @{
    std::optional<PickHit> Pick(const PickRay& ray);
    /// Of what is shown at or below the path, in the world or in other axes; exact far from zero as
    /// well.
    Box GetBox(const viz::RenderId& id, const Matrix& axesFromWorld = identityMatrix) const;
    /// Over all that is shown, or what of it lies at or below a path. The walk borrows the graph.
    ShownWalk Walk() const;
    ShownWalk Walk(const viz::RenderId& top) const;

    /// Shows just these; those that lead nowhere count as well. None ends the isolation.
    void SetIsolated(const std::vector<viz::RenderId>& paths);
    std::vector<viz::RenderId> GetIsolated() const;
    /// Cuts away what lies on the far side; annotations stay unless @p cutsAnnotations.
    void SetClipping(const std::optional<SavedView::Plane>& plane, bool cutsAnnotations);
    const std::optional<SavedView::Plane>& GetClipping() const { return _clipping; }
    bool ClipsAnnotations() const { return _clipsAnnotations; }

    HideStrategy& Hiding() { return _hiding; }
    const HideStrategy& Hiding() const { return _hiding; }
    HighlightStrategy& Highlighting() { return _highlighting; }
    const HighlightStrategy& Highlighting() const { return _highlighting; }
    FilterManager& Filter() { return *_filter; }
    const Showing& GetShowing() const { return _showing; }
    const viz::Node& Root() const { return *_graph; }

    /// Another number after every change of nodes, items or places. Who changes nodes without the
    /// adapter says so by GeometryChanged.
    std::uint64_t GeometryRevision() const { return _revision; }
    void GeometryChanged();
    /// Asks the view for a new picture, or for one at the end of the update that is going on.
    void Redraw();
    /// @}

private:
    class OptionsListener final : public viz::IRenderingOptionsListener {
    public:
        explicit OptionsListener(SceneAdapter& adapter) : _adapter(adapter) {}
        void OnOptionsChange(viz::RenderingOptions* changed) override;

    private:
        SceneAdapter& _adapter;
    };

    bool canHaveChild(std::uint64_t id) const;
    bool openNew(viz::GeoNode* child, const std::wstring& name);
    void releaseSharedBelow(std::uint64_t child);
    void setDefaultColors();

    std::unique_ptr<viz::Node> _graph;
    viz::IView3D* _view = nullptr;
    ItemFactory _itemFactory;
    viz::RenderingOptions _options;
    HighlightStrategy _highlighting;
    HideStrategy _hiding;
    PathMarks<bool> _isolation;
    FilterManager* _filter;
    Showing _showing;
    OptionsListener _optionsListener;
    std::optional<SavedView::Plane> _clipping;
    bool _clipsAnnotations = false;
    bool _constructing = false;
    int _updates = 0;
    std::uint64_t _revision = 1;
    std::unique_ptr<Picker> _picker;
};

/// Installed in the library, which makes every adapter through it.
class SceneAdapterFactory final : public viz::AView3DAdapterFactory {
public:
    explicit SceneAdapterFactory(MakePicker makePicker = {});

protected:
    viz::AView3DAdapter* makeView3DAdapterImpl() override;

private:
    MakePicker _makePicker;
};

}  // namespace kesview
