#pragma once

/// @file
/// The adapter: it keeps the scene graph, and the library and the view ask it for everything.

#include "Geometry.h"
#include "Strategies.h"

#include <KesVizCore/graph/Node.h>
#include <KesVizCore/scene/AView3DAdapterFactory.h>
#include <KesVizCore/scene/RenderingOptions.h>
#include <KesVizCore/view/AView3DAdapter.h>

#include <memory>

namespace host {

/// Owns the graph, the factory of items, the options and the strategies. The stack of open nodes
/// is the library's; this class pushes to it and pops from it.
class Adapter : public viz::AView3DAdapter {
public:
    Adapter();
    ~Adapter() override;
    Adapter(const Adapter&) = delete;
    Adapter& operator=(const Adapter&) = delete;

    void SetView3D(viz::IView3D* view) override;
    viz::IView3D* GetView3D() override { return _view; }

    bool IsConstructing() const override { return _constructing; }
    void StartConstruction(viz::Node* node) override;
    void EndConstruction() override;
    bool OpenNode(const std::uint64_t& id, const std::wstring& name) override;
    bool CreateNode(const std::uint64_t& id, const std::wstring& name) override;
    bool CreateGeoNode(const std::uint64_t& id, const std::wstring& name) override;
    void CloseNode() override;
    void CloseAllNodes() override;

    void ApplyAttribute(viz::Attribute* attribute) override;
    void RemoveAttribute(const viz::AttributeType& type) override;
    void AddGeometryItem(viz::AGeometryItem* item) override;
    viz::AGeometryItemFactory* GetGeometryItemFactory() override { return &_itemFactory; }

    void DeleteAllNodes() override;
    void ClearScene(const viz::RenderId& id) override;

    bool Show(const viz::RenderId& id) override;
    bool Hide(const viz::RenderId& id) override;
    bool IsVisible(const viz::RenderId& id) override;
    bool Isolate(const viz::RenderId& id) override;
    void ShowAll() override;
    bool Highlight(const viz::RenderId& id, const viz::RGBAColor& color) override;
    bool Unhighlight(const viz::RenderId& id) override;
    void UnhighlightAll() override;

    bool PickVisual(const viz::Ray& ray, viz::RenderId& id) override;
    bool GetExtents(const viz::RenderId& id, float* extrema) override;
    viz::RenderingOptions* GetRenderingOptions() override { return &_options; }
    void BeginUpdate() override;
    void EndUpdate() override;

private:
    bool canHaveChild(std::uint64_t id) const;
    bool openNew(viz::GeoNode* child, const std::wstring& name);
    void hideChildrenBut(const viz::RenderId& path, std::uint64_t shown);
    /// Asks the view for a new picture, or for one at the end of the update that is going on.
    void redraw();

    std::unique_ptr<viz::Node> _graph;
    viz::IView3D* _view = nullptr;
    ItemFactory _itemFactory;
    viz::RenderingOptions _options;
    HighlightStrategy _highlighting;
    HideStrategy _hiding;
    bool _constructing = false;
    int _updates = 0;
};

/// Installed in the library, which makes every adapter through it.
class AdapterFactory : public viz::AView3DAdapterFactory {
protected:
    viz::AView3DAdapter* makeView3DAdapterImpl() override { return new Adapter(); }
};

}  // namespace host
