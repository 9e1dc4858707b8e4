/// @file
/// What a view adapter and its scene builders must make of each call, on a graph of plain
/// containers. A copy is an adapter of its own, so that a call can be tried first.
#pragma once

#include "BuilderModel.h"
#include "GraphModel.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace Fuzz {

/// A path with its origin: 1 for the 3D view.
struct ModelPath {
    Values values;
    int origin = 1;
};

class AdapterModel {
public:
    GraphModel graph;
    std::vector<int> open;
    std::vector<ModelBuilder> builders;
    std::string debugText;
    std::uint64_t refused = 13;  ///< an id that the host neither opens nor creates

    AdapterModel() { graph[graph.Add(1, true)].name = L"ROOT"; }

    int Top() const { return open.empty() ? -1 : open.back(); }
    bool OpenNodeDied() const {
        for (const int node : open) {
            if (!graph[node].isAlive) {
                return true;
            }
        }
        return false;
    }

    // ---- the host's operations

    bool OpenNode(std::uint64_t id) {
        if (id == refused) {
            return false;
        }
        const int node = id == 1 ? 0 : topGroup() < 0 ? -1 : graph.Child(topGroup(), id);
        if (node >= 0) {
            open.push_back(node);
        }
        return node >= 0;
    }
    void CloseNode() {
        if (!open.empty()) {
            open.pop_back();
        }
    }
    void CloseAllNodes() { open.clear(); }
    void OpenTopNode() { open.push_back(0); }
    void CloseTopNode() { open.clear(); }
    bool CreateNode(std::uint64_t id, const std::wstring& name, bool isGroup = true) {
        const int parent = topGroup();
        if (parent < 0 || (isGroup && id == refused)) {
            return false;
        }
        const int child = graph.Add(id, isGroup);
        graph[child].name = name;
        graph.AddChild(parent, child);
        open.push_back(child);
        return true;
    }
    void ApplyAttribute(ModelAttribute attribute) {
        if (Top() >= 0) {
            graph[Top()].SetAttribute(std::move(attribute));
        }
    }
    void AddItem(const ModelItem& item) {
        if (Top() >= 0) {
            graph[Top()].items.push_back(item);
        } else {
            graph.deaths.push_back(item.name);
        }
    }
    void ClearScene(const Values& path) { graph.DeleteChild(0, path[0]); }

    // ---- the library's

    bool OpenOrCreate(std::uint64_t id, const std::wstring& name) {
        return OpenNode(id) || CreateNode(id, name);
    }

    bool OpenNodes(const Values& path) { return openPath(path, path.size()) == path.size(); }

    bool DeleteNode(std::uint64_t id) {
        int parent = -1;
        if (open.empty() && id == 1) {
            parent = 0;
        } else if (open.empty()) {
            debugText += "Stack is zero, yet is requesting for children\n";
        } else if (graph[Top()].children.empty()) {
            debugText += "Cannot delete child node, no children found.\n";
        } else {
            parent = Top();
        }
        if (parent < 0) {
            debugText += "Cannot delete child node " + std::to_string(id) + "\n";
            return false;
        }
        return graph.DeleteChild(parent, id);
    }

    bool DeleteNode(const Values& path) {
        if (path.empty()) {
            return false;
        }
        if (path.size() < 3) {
            return DeleteNode(path.back());
        }
        const bool opensTop = open.empty();
        if (opensTop) {
            OpenTopNode();
        }
        const std::size_t opened = openPath(path, path.size() - 1);
        const bool deleted = opened == path.size() - 1 && DeleteNode(path.back());
        if (opensTop) {
            CloseAllNodes();
        } else {
            open.resize(open.size() - opened);
        }
        return deleted;
    }

    void Clear(const ModelPath& path) {
        if (path.values.empty()) {
            return;
        }
        const bool opensPath = open.empty();
        const bool isFound = !opensPath || OpenNodes(path.values);
        if (isFound && path.origin == 1 && graph.Path(Top()) == path.values) {
            clearNode(Top());
        }
        if (opensPath) {
            CloseAllNodes();
        }
    }

    bool AddReference(const Values& path) {
        const int group = topGroup();
        const int node = graph.Find(0, path);
        if (group < 0 || node < 0 || !graph.AddChild(group, node)) {
            return false;
        }
        open.push_back(node);
        return true;
    }
    /// What the caller of AddReference must not do.
    bool MakesCycle(const Values& path) const {
        const int node = graph.Find(0, path);
        return node >= 0 && Top() >= 0 && graph.IsAbove(node, Top());
    }

    void CopyNodeAttributesFrom(int source) {
        if (Top() < 0) {
            return;
        }
        graph[Top()].DropAttribute(0);
        graph[Top()].DropAttribute(2);
        const std::vector<ModelAttribute> attributes = graph[source].attributes;
        for (const ModelAttribute& attribute : attributes) {
            if (attribute.type == 0 || attribute.type == 2) {
                ApplyAttribute(attribute);
            }
        }
    }

    void TransferNodeGeometryFrom(int source) {
        if (Top() < 0 || Top() == source) {
            return;
        }
        std::vector<ModelItem>& items = graph[Top()].items;
        items.insert(items.end(), graph[source].items.begin(), graph[source].items.end());
        graph[source].items.clear();
    }

    void SetColor(const std::string& color) {
        if (Top() < 0) {
            return;
        }
        for (ModelItem& item : graph[Top()].items) {
            if (!item.name.empty()) {
                item.color = color;
            }
        }
    }

    void SetFilter(int filter) {
        if (Top() >= 0) {
            graph[Top()].filter = filter;
        }
    }

    void Convert(const Values& path, ModelEntity& out) const {
        for (const ModelBuilder& builder : builders) {
            out = builder.Extract(path);
            if (!out.IsEmpty()) {
                return;
            }
        }
    }

private:
    int topGroup() const { return Top() >= 0 && graph[Top()].isGroup ? Top() : -1; }

    std::size_t openPath(const Values& path, std::size_t count) {
        std::size_t opened = 0;
        while (opened < count && OpenNode(path[opened])) {
            ++opened;
        }
        return opened;
    }

    void clearNode(int node) {
        if (graph[node].children.empty()) {
            graph.DestroyItems(node);
        } else {
            std::vector<Values> paths;
            for (const auto& [id, child] : graph[node].children) {
                paths.push_back(graph.Path(child));
            }
            for (const Values& path : paths) {
                DeleteNode(path);
            }
        }
        for (const int type : {0, 1, 2}) {
            graph[node].DropAttribute(type);
        }
    }
};

}  // namespace Fuzz
