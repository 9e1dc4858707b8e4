#pragma once

/// @file
/// The scene as the library keeps it, behind a host's adapter that does what it must and no more.

#include "support/SceneModel.h"

#include <memory>

namespace bench {

/// A view that draws nothing; its top node is the adapter's root.
class View final : public viz::IView3D {
public:
    void GetViewport(int& width, int& height) const override { width = height = 100; }
    void SetViewport(int, int) override {}
    void GetCamera(float*, float*, float*) const override {}
    void SetCamera(const float*, const float*, const float*) override {}
    void GetViewExtent(float& width, float& height) const override { width = height = 1.0F; }
    bool IsPerspective() const override { return false; }
    void SetPerspective(bool) override {}
    void FitAll() override {}
    void OpenTopNode() override { _view3DAdapter->OpenNode(sceneId, std::wstring()); }
    void CloseTopNode() override { _view3DAdapter->CloseAllNodes(); }
    void GetSceneGraphStructure(std::string&, bool) override {}
    bool GetRay(int, int, viz::Ray&) const override { return false; }
    bool PickAt(int, int, viz::RenderId&) override { return false; }
    void GetBackground(viz::RGBAColor&) const override {}
    void SetBackground(const viz::RGBAColor&) override {}
    bool SaveImage(const std::wstring&) override { return false; }
    void Invalidate() override {}
    void SetAntialiasLevel(int) override {}
    void AttachView3DAdapter(viz::AView3DAdapter* adapter) override { _view3DAdapter = adapter; }
    void Render() override {}
};

/// Keeps a graph of groups; what it does not show it need not hide, highlight or measure.
class Adapter : public viz::AView3DAdapter {
public:
    Adapter() : _graph(viz::Node::CreateRoot()) {
        _rootNode = _graph.get();
        Adapter::SetView3D(&_view);
    }

    viz::Node& Root() { return *_graph; }
    void DestroyGraph() {
        _rootNode = nullptr;
        _graph.reset();
    }

    viz::IView3D* GetView3D() override { return &_view; }
    bool IsConstructing() const override { return !_openNodes.empty(); }
    bool OpenNode(const std::uint64_t& id, const std::wstring& /*name*/) override {
        if (id == sceneId) {
            _openNodes.push(_graph.get());
            return true;
        }
        const viz::Node* const group = openGroup();
        viz::GeoNode* const child = group != nullptr ? group->GetChild(id) : nullptr;
        if (child == nullptr) {
            return false;
        }
        _openNodes.push(child);
        return true;
    }
    bool CreateNode(const std::uint64_t& id, const std::wstring& name) override {
        viz::Node* const group = openGroup();
        return group != nullptr && openNew(group->CreateChild(id), name);
    }
    bool CreateGeoNode(const std::uint64_t& id, const std::wstring& name) override {
        viz::Node* const group = openGroup();
        return group != nullptr && openNew(group->CreateGeoChild(id), name);
    }
    void CloseNode() override {
        if (!_openNodes.empty()) {
            _openNodes.pop();
        }
    }
    void CloseAllNodes() override {
        while (!_openNodes.empty()) {
            _openNodes.pop();
        }
    }
    void DeleteAllNodes() override {
        CloseAllNodes();
        while (_graph->HasChildren()) {
            _graph->DeleteChildById(_graph->Children().begin()->first);
        }
    }
    void ClearScene(const viz::RenderId& id) override {
        if (GetNode(id) == _graph.get()) {
            DeleteAllNodes();
        }
    }

    void ApplyAttribute(viz::Attribute* attribute) override {
        std::unique_ptr<viz::Attribute> unset(attribute);
        viz::GeoNode* const open = GetCurrentOpenNode();
        if (open != nullptr && open->SetAttribute(attribute)) {
            static_cast<void>(unset.release());
        }
    }
    void RemoveAttribute(const viz::AttributeType& type) override {
        if (viz::GeoNode* const open = GetCurrentOpenNode()) {
            const std::unique_ptr<viz::Attribute> removed(open->GetAttribute(type));
            open->DeleteAttribute(type);
        }
    }
    void AddGeometryItem(viz::AGeometryItem* item) override {
        std::unique_ptr<viz::AGeometryItem> owned(item);
        if (viz::GeoNode* const open = GetCurrentOpenNode()) {
            open->AddGeometry(item);
            static_cast<void>(owned.release());
        }
    }

    viz::AGeometryItemFactory* GetGeometryItemFactory() override { return nullptr; }
    bool Show(const viz::RenderId&) override { return false; }
    bool Hide(const viz::RenderId&) override { return false; }
    bool Highlight(const viz::RenderId&, const viz::RGBAColor&) override { return false; }
    bool Unhighlight(const viz::RenderId&) override { return false; }
    void UnhighlightAll() override {}
    bool IsVisible(const viz::RenderId&) override { return true; }
    bool GetExtents(const viz::RenderId&, float*) override { return false; }
    viz::RenderingOptions* GetRenderingOptions() override { return nullptr; }
    bool Isolate(const viz::RenderId&) override { return false; }
    void ShowAll() override {}
    void BeginUpdate() override {}
    void EndUpdate() override {}

private:
    /// The open node where it is a group, and every node that this scene begins is one.
    viz::Node* openGroup() const {
        viz::GeoNode* const open = _openNodes.empty() ? nullptr : _openNodes.top();
        return open != nullptr && typeid(*open) == typeid(viz::Node) ? static_cast<viz::Node*>(open)
                                                                     : nullptr;
    }
    bool openNew(viz::GeoNode* child, const std::wstring& name) {
        if (child == nullptr || !child->HasParent()) {
            delete child;  // memory ran out, or the id is taken
            return false;
        }
        child->SetName(name);
        _openNodes.push(child);
        return true;
    }

    std::unique_ptr<viz::Node> _graph;
    View _view;
};

/// An adapter with its builder.
class OurScene {
public:
    using GeometryItem = Item;

    OurScene() : builder(*_factory.MakeSceneBuilder(&adapter)) {}
    OurScene(const OurScene&) = delete;
    OurScene& operator=(const OurScene&) = delete;
    ~OurScene() {
        viz::SceneBuilder* made = &builder;
        _factory.DeleteSceneBuilder(made);
    }

    static std::unique_ptr<OurScene> Built(const SceneModel& model) {
        auto scene = std::make_unique<OurScene>();
        scene->Build(model);
        return scene;
    }

    /// Describes the whole scene.
    void Build(const SceneModel& model) {
        builder.ConstructionBegin();
        builder.SceneBegin(sceneId, L"Scene");
        builder.ContainerBegin(containerId, L"Container", viz::SceneBuilder::AddressedContainer);
        std::uint64_t id = firstBodyId;
        for (const std::wstring& name : model.bodies) {
            builder.BodyBegin(id++, name);
            for (const EntityGroup& group : model.groups) {
                builder.EntityTypeBegin(group.type, group.typeName);
                buildEntities(group, model.color);
                builder.EntityTypeEnd();
            }
            builder.BodyEnd();
        }
        builder.ContainerEnd();
        builder.SceneEnd();
        builder.ConstructionEnd();
    }

private:
    void buildEntities(const EntityGroup& group, const viz::RGBAColor& color) {
        std::uint64_t id = firstEntityId;
        for (const std::wstring& name : group.names) {
            builder.EntityBegin(id, name, color);
            builder.AddGeometry(new Item(id));
            builder.EntityEnd();
            ++id;
        }
    }

    viz::SceneBuilderFactory _factory;

public:
    Adapter adapter;
    viz::SceneBuilder& builder;
};

}  // namespace bench
