#pragma once

/// @file
/// A whole host for tests: an adapter and a view that keep a real graph and write down, in order,
/// every operation through which the library calls them.

#include <KesVizCore/KesVizCore.h>

#include <set>
#include <string>
#include <utility>
#include <vector>

namespace KesVizCore::support {

/// The calls in the order in which they came, one text each, such as "OpenNode(7, Bracket)".
using CallLog = std::vector<std::string>;

/// A geometry item of any kind that tells when it is destroyed.
template <typename Kind>
class TellingItem : public Kind {
public:
    template <typename... Arguments>
    explicit TellingItem(std::vector<std::uint64_t>* destroyed, Arguments&&... arguments)
        : Kind(std::forward<Arguments>(arguments)...), _destroyed(destroyed) {}
    ~TellingItem() override {
        if (_destroyed != nullptr) {
            _destroyed->push_back(this->ID());
        }
    }

    bool GetExtents(float* /*extrema*/) const override { return false; }
    void SetVisible(const bool& visible) override { _visible = visible; }
    bool IsVisible() const override { return _visible; }

private:
    std::vector<std::uint64_t>* _destroyed;
    bool _visible = true;
};

/// A point, the smallest item there is, for tests that need just any.
using AnyItem = TellingItem<AGeometryItemVertex>;

inline AnyItem* newItem(std::uint64_t id, std::vector<std::uint64_t>* destroyed = nullptr) {
    return new AnyItem(destroyed, id, nullptr);
}

class RecordingAdapter;

/// A view whose top node is the adapter's root.
class RecordingView : public IView3D {
public:
    explicit RecordingView(CallLog& log) : _log(log) {}

    void GetViewport(int& width, int& height) const override { width = height = 100; }
    void SetViewport(int, int) override {}
    void GetCamera(float*, float*, float*) const override {}
    void SetCamera(const float*, const float*, const float*) override {}
    void GetViewExtent(float& width, float& height) const override { width = height = 10.0F; }
    bool IsPerspective() const override { return false; }
    void SetPerspective(bool) override {}
    void FitAll() override {}
    void OpenTopNode() override;
    void CloseTopNode() override;
    void GetSceneGraphStructure(std::string& out, bool flag) override {
        _log.push_back(flag ? "View.GetSceneGraphStructure(true)"
                            : "View.GetSceneGraphStructure(false)");
        out += "the view's own text";
    }
    bool GetRay(int, int, Ray&) const override { return false; }
    bool PickAt(int, int, RenderId&) override { return false; }
    void GetBackground(RGBAColor&) const override {}
    void SetBackground(const RGBAColor&) override {}
    bool SaveImage(const std::wstring&) override { return false; }
    void Invalidate() override {}
    void SetAntialiasLevel(int) override {}
    void AttachView3DAdapter(AView3DAdapter* adapter) override {
        _log.push_back("AttachView3DAdapter");
        _view3DAdapter = adapter;
    }
    void Render() override { _log.push_back("Render"); }

private:
    CallLog& _log;
};

/// An adapter that keeps its graph as a host would. Its stack of open nodes holds the root after
/// the view's OpenTopNode and is empty after CloseTopNode and CloseAllNodes.
class RecordingAdapter : public AView3DAdapter {
public:
    /// With @p root false there is no graph, as before a host makes one.
    explicit RecordingAdapter(bool root = true) : _view(log) {
        if (root) {
            _rootNode = Node::CreateRoot();
        }
        RecordingAdapter::SetView3D(&_view);
        log.clear();
    }
    /// A copy of an adapter: it shares the pointers of @p copied, so let go of them (letGo)
    /// before one of the two dies.
    explicit RecordingAdapter(const AView3DAdapter& copied) : AView3DAdapter(copied), _view(log) {}
    ~RecordingAdapter() override {
        if (ownsRoot) {
            delete _rootNode;
        }
    }
    RecordingAdapter(const RecordingAdapter&) = delete;
    RecordingAdapter& operator=(const RecordingAdapter&) = delete;

    IView3D* GetView3D() override { return &_view; }
    bool IsConstructing() const override { return false; }
    void StartConstruction(Node* node) override {
        log.push_back(node == nullptr ? "StartConstruction(null)" : "StartConstruction(node)");
    }
    void EndConstruction() override { log.push_back("EndConstruction"); }
    bool OpenNode(const std::uint64_t& id, const std::wstring& name) override {
        log.push_back("OpenNode(" + described(id, name) + ")");
        if (refusesToOpen.count(id) != 0) {
            return false;
        }
        if (_rootNode != nullptr && id == _rootNode->Id()) {
            _openNodes.push(_rootNode);
            return true;
        }
        auto* const group = openGroup();
        GeoNode* const child = group != nullptr ? group->GetChild(id) : nullptr;
        if (child == nullptr) {
            return false;
        }
        _openNodes.push(child);
        return true;
    }
    void CloseNode() override {
        log.push_back("CloseNode");
        if (!_openNodes.empty()) {
            _openNodes.pop();
        }
    }
    void CloseAllNodes() override {
        log.push_back("CloseAllNodes");
        closeAll();
    }
    bool CreateNode(const std::uint64_t& id, const std::wstring& name) override {
        log.push_back("CreateNode(" + described(id, name) + ")");
        auto* const group = openGroup();
        if (group == nullptr || refusesToCreate.count(id) != 0) {
            return false;
        }
        Node* const child = group->CreateChild(id);
        child->SetName(name);
        _openNodes.push(child);
        return true;
    }
    bool CreateGeoNode(const std::uint64_t& id, const std::wstring& name) override {
        log.push_back("CreateGeoNode(" + described(id, name) + ")");
        auto* const group = openGroup();
        if (group == nullptr) {
            return false;
        }
        GeoNode* const child = group->CreateGeoChild(id);
        child->SetName(name);
        _openNodes.push(child);
        return true;
    }
    void DeleteAllNodes() override { log.push_back("DeleteAllNodes"); }
    /// Keeps @p attribute on the open node, as a host would, or destroys it without one.
    void ApplyAttribute(Attribute* attribute) override {
        log.push_back("ApplyAttribute(" + describedAttribute(attribute) + ")");
        applied.push_back(attribute);
        if (_openNodes.empty()) {
            delete attribute;
            return;
        }
        _openNodes.top()->SetAttribute(attribute);
    }
    void RemoveAttribute(const AttributeType&) override { log.push_back("RemoveAttribute"); }
    void AddGeometryItem(AGeometryItem* item) override {
        log.push_back("AddGeometryItem(" +
                      (item != nullptr ? std::to_string(item->ID()) : std::string("null")) + ")");
        if (_openNodes.empty()) {
            delete item;
            return;
        }
        _openNodes.top()->AddGeometry(item);
    }
    AGeometryItemFactory* GetGeometryItemFactory() override {
        log.push_back("GetGeometryItemFactory");
        return itemFactory;
    }
    void ClearScene(const RenderId& id) override {
        log.push_back("ClearScene(" + id.ToString() + ")");
    }
    bool Show(const RenderId&) override { return false; }
    bool Hide(const RenderId&) override { return false; }
    bool Highlight(const RenderId&, const RGBAColor&) override { return false; }
    bool Unhighlight(const RenderId&) override { return false; }
    void UnhighlightAll() override {}
    bool IsVisible(const RenderId&) override { return true; }
    bool GetExtents(const RenderId&, float*) override { return false; }
    RenderingOptions* GetRenderingOptions() override { return &options; }
    bool Isolate(const RenderId&) override { return false; }
    void ShowAll() override {}
    void BeginUpdate() override {}
    void EndUpdate() override {}

    /// @name The adapter's insides, for tests
    /// @{
    using AView3DAdapter::_filterManager;
    using AView3DAdapter::_hideStrategy;
    using AView3DAdapter::_highlightStrategy;
    using AView3DAdapter::_openNodes;
    using AView3DAdapter::_rootNode;
    using AView3DAdapter::_sceneBuilders;
    using AView3DAdapter::_selectionHolder;
    using AView3DAdapter::getAttributeString;
    using AView3DAdapter::getColorString;
    using AView3DAdapter::nodeToString;
    /// @}

    void closeAll() {
        while (!_openNodes.empty()) {
            _openNodes.pop();
        }
    }
    /// Opens exactly this node, whatever was open.
    void openOnly(GeoNode* node) {
        closeAll();
        _openNodes.push(node);
    }
    /// Forgets what another adapter owns as well.
    void letGo() {
        _rootNode = nullptr;
        _filterManager = nullptr;
        _selectionHolder = nullptr;
    }
    CallLog takeLog() { return std::exchange(log, CallLog()); }

    CallLog log;
    std::vector<Attribute*> applied;  ///< what ApplyAttribute was given, null included
    std::set<std::uint64_t> refusesToOpen;
    std::set<std::uint64_t> refusesToCreate;
    AGeometryItemFactory* itemFactory = nullptr;
    RenderingOptions options;
    bool ownsRoot = true;  ///< false: the graph outlives this adapter

private:
    Node* openGroup() {
        return _openNodes.empty() ? nullptr : dynamic_cast<Node*>(_openNodes.top());
    }
    static std::string described(std::uint64_t id, const std::wstring& name) {
        return std::to_string(id) + ", " + Utils::WstringToString(name);
    }
    static std::string describedAttribute(Attribute* attribute) {
        return attribute == nullptr ? "null"
                                    : std::to_string(static_cast<int>(attribute->GetType()));
    }

    RecordingView _view;
};

inline void RecordingView::OpenTopNode() {
    _log.push_back("View.OpenTopNode");
    auto* const adapter = static_cast<RecordingAdapter*>(GetView3DAdapter());
    adapter->_openNodes.push(adapter->_rootNode);
}

inline void RecordingView::CloseTopNode() {
    _log.push_back("View.CloseTopNode");
    static_cast<RecordingAdapter*>(GetView3DAdapter())->closeAll();
}

}  // namespace KesVizCore::support
