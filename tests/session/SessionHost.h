#pragma once

/// @file
/// The host of the sessions: it keeps a graph as RecordingAdapter does, writes nothing down, and
/// leaves everything as it was where memory runs out in its own operations.

#include "graph/RecordingReport.h"
#include "support/RecordingHost.h"

#include <KesVizCore/KesVizCore.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <string>

namespace KesVizCore::support {

/// A view that opens and closes in silence.
class SessionView : public RecordingView {
public:
    using RecordingView::RecordingView;
    void OpenTopNode() override;
    void CloseTopNode() override { GetView3DAdapter()->CloseAllNodes(); }
};

class SessionAdapter : public RecordingAdapter {
public:
    /// As long as nothing is open, opening the root opens it @p rootOpened times: with the right
    /// number the stack needs new memory for any node that a test wants.
    explicit SessionAdapter(std::size_t rootOpened = 1) : _view(log), _rootOpened(rootOpened) {
        SessionAdapter::SetView3D(&_view);
    }

    IView3D* GetView3D() override { return &_view; }
    bool IsConstructing() const override { return _constructing; }
    void StartConstruction(Node*) override { _constructing = true; }
    void EndConstruction() override { _constructing = false; }

    bool OpenNode(const std::uint64_t& id, const std::wstring&) override {
        if (id == _rootNode->Id()) {
            openRoot();
            return true;
        }
        Node* const group = openGroup();
        GeoNode* const child = group != nullptr ? group->GetChild(id) : nullptr;
        if (child != nullptr) {
            _openNodes.push(child);
        }
        return child != nullptr;
    }
    bool CreateNode(const std::uint64_t& id, const std::wstring& name) override {
        Node* const group = openGroup();
        if (group == nullptr) {
            return false;
        }
        Node* const child = group->CreateChild(id);
        if (child == nullptr) {
            throw std::bad_alloc();
        }
        try {
            child->SetName(name);
            _openNodes.push(child);
        } catch (...) {
            group->DeleteChildById(id);
            throw;
        }
        return true;
    }
    void CloseNode() override {
        _openNodes.pop();
        if (_openNodes.size() + 1 == _rootOpened) {
            closeAll();  // the root, which was opened so many times
        }
    }
    void CloseAllNodes() override { closeAll(); }

    void ApplyAttribute(Attribute* attribute) override {
        _wasGivenNull = _wasGivenNull || attribute == nullptr;
        GeoNode* const open = GetCurrentOpenNode();
        if (attribute == nullptr || open->GetAttribute(attribute->GetType()) == attribute) {
            return;
        }
        std::unique_ptr<Attribute> owned(attribute);
        open->SetAttribute(attribute);
        static_cast<void>(owned.release());
    }
    void AddGeometryItem(AGeometryItem* item) override {
        std::unique_ptr<AGeometryItem> owned(item);
        GetCurrentOpenNode()->AddGeometry(item);
        static_cast<void>(owned.release());
    }
    void ClearScene(const RenderId&) override {
        while (_rootNode->HasChildren()) {
            _rootNode->DeleteChildById(_rootNode->Children().begin()->first);
        }
    }
    bool PickVisual(const Ray&, RenderId& id) override {
        id = picked;
        return true;
    }

    /// Whether ApplyAttribute was given null since this was asked last.
    bool takeWasGivenNull() { return std::exchange(_wasGivenNull, false); }
    /// Opens the root, and as many times as the constructor was told where nothing is open.
    void openRoot() {
        const std::size_t count = _openNodes.empty() ? _rootOpened : 1;
        std::size_t opened = 0;
        try {
            for (; opened < count; ++opened) {
                _openNodes.push(_rootNode);
            }
        } catch (...) {
            for (; opened > 0; --opened) {
                _openNodes.pop();
            }
            throw;
        }
    }

    RenderId picked;  ///< the answer of PickVisual

private:
    Node* openGroup() { return dynamic_cast<Node*>(GetCurrentOpenNode()); }

    SessionView _view;
    std::size_t _rootOpened;
    bool _constructing = false;
    bool _wasGivenNull = false;
};

inline void SessionView::OpenTopNode() {
    static_cast<SessionAdapter*>(GetView3DAdapter())->openRoot();
}

/// A host with its graph, a builder and a selection, and texts of all that they hold.
class SessionScene {
public:
    explicit SessionScene(std::size_t rootOpened = 1)
        : adapter(rootOpened), builder(_factory.MakeSceneBuilder(&adapter)) {}
    ~SessionScene() { _factory.DeleteSceneBuilder(builder); }
    SessionScene(const SessionScene&) = delete;
    SessionScene& operator=(const SessionScene&) = delete;

    /// Dump and report of the graph, and what is selected.
    std::string State() {
        std::string text;
        adapter.GetSceneStructure(text, false);
        text += callsOfReport(*adapter._rootNode);
        const SelectionHolder& selected = *adapter.GetSelectionHolder();
        for (int place = 0; place < selected.Count(); ++place) {
            text += "selected " + selected[place].ToString() + "\n";
        }
        return text;
    }
    /// What is open, and what the builder remembers.
    std::string Position() {
        RenderId open;
        builder->GetCurrentRenderId(open);
        return std::to_string(adapter._openNodes.size()) + " open, last " + open.ToString() +
               (adapter.IsConstructing() ? ", constructing" : "") +
               (builder->HasContent() ? ", content" : "") + ", container " +
               builder->GetContainerRenderId().ToString();
    }

    SessionAdapter adapter;

private:
    SceneBuilderFactory _factory;

public:
    SceneBuilder* builder;
};

}  // namespace KesVizCore::support
