#pragma once

/// @file
/// The baseline: the same scene as a tree that any C++ programmer would write.

#include "support/SceneModel.h"

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace bench {

/// What a node may carry, one of each kind.
class PlainAttribute {
public:
    PlainAttribute() = default;
    PlainAttribute(const PlainAttribute&) = delete;
    PlainAttribute& operator=(const PlainAttribute&) = delete;
    virtual ~PlainAttribute() = default;
    virtual int Kind() const = 0;
};

class PlainColor final : public PlainAttribute {
public:
    explicit PlainColor(const viz::RGBAColor& color) : _color(color) {}
    int Kind() const override { return 1; }
    const viz::RGBAColor& Color() const { return _color; }

private:
    viz::RGBAColor _color;
};

/// The host's geometry item, if there were no library: the same fields.
class PlainItem {
public:
    explicit PlainItem(std::uint64_t id) : _id(id) {}
    PlainItem(const PlainItem&) = delete;
    PlainItem& operator=(const PlainItem&) = delete;
    virtual ~PlainItem() = default;
    virtual std::uint64_t Id() const { return _id; }

private:
    std::uint64_t _id;
    bool _colorSaved = false;
    float _color[4] = {0.0F, 0.0F, 0.0F, 255.0F};
    float _savedColor[4] = {};
    int _vertexCount = 0;
    int _triangleCount = 0;
    int _triangleType = 0;
    bool _visible = true;
};
static_assert(sizeof(PlainItem) == sizeof(Item));

struct PlainNode {
    PlainNode(std::uint64_t newId, const std::wstring& newName, PlainNode* newParent)
        : id(newId), name(newName), parent(newParent) {}

    PlainNode* Child(std::uint64_t childId) const {
        const auto place = children.find(childId);
        return place != children.end() ? place->second.get() : nullptr;
    }
    PlainNode* AddChild(std::uint64_t childId, const std::wstring& childName) {
        return children.emplace(childId, std::make_unique<PlainNode>(childId, childName, this))
            .first->second.get();
    }
    /// In the place of one of its kind.
    void SetAttribute(std::unique_ptr<PlainAttribute> attribute) {
        for (auto& present : attributes) {
            if (present->Kind() == attribute->Kind()) {
                present = std::move(attribute);
                return;
            }
        }
        attributes.push_back(std::move(attribute));
    }

    std::uint64_t id;
    std::wstring name;
    PlainNode* parent;
    int filterId = -1;
    std::map<std::uint64_t, std::unique_ptr<PlainNode>> children;
    std::vector<std::unique_ptr<PlainAttribute>> attributes;
    std::vector<std::unique_ptr<PlainItem>> geometry;
};

/// The tree and the nodes of it that are open.
class PlainScene {
public:
    using GeometryItem = PlainItem;

    PlainScene() : root(std::make_unique<PlainNode>(sceneId, L"ROOT", nullptr)) {}

    static std::unique_ptr<PlainScene> Built(const SceneModel& model) {
        auto scene = std::make_unique<PlainScene>();
        scene->Build(model);
        return scene;
    }

    void Build(const SceneModel& model) {
        _open.push_back(root.get());
        begin(containerId, L"Container");
        std::uint64_t id = firstBodyId;
        for (const std::wstring& name : model.bodies) {
            begin(id++, name);
            for (const EntityGroup& group : model.groups) {
                begin(static_cast<std::uint64_t>(group.type), group.typeName).filterId = group.type;
                buildEntities(group, model.color);
                end();
            }
            end();
        }
        end();
        end();
    }

    /// The node at a path from the root on, or null.
    PlainNode* Find(const Path& path) const {
        if (path.empty() || path[0] != root->id) {
            return nullptr;
        }
        PlainNode* node = root.get();
        for (std::size_t place = 1; place < path.size() && node != nullptr; ++place) {
            node = node->Child(path[place]);
        }
        return node;
    }

    bool Delete(const Path& path) {
        PlainNode* const node = Find(path);
        return node != nullptr && node->parent != nullptr && node->parent->children.erase(node->id);
    }

    std::unique_ptr<PlainNode> root;

private:
    /// Opens the child of that id, or makes it.
    PlainNode& begin(std::uint64_t id, const std::wstring& name) {
        PlainNode& parent = *_open.back();
        PlainNode* child = parent.Child(id);
        if (child == nullptr) {
            child = parent.AddChild(id, name);
        }
        _open.push_back(child);
        return *child;
    }
    void end() { _open.pop_back(); }

    void buildEntities(const EntityGroup& group, const viz::RGBAColor& color) {
        std::uint64_t id = firstEntityId;
        for (const std::wstring& name : group.names) {
            PlainNode& node = begin(id, name);
            node.SetAttribute(std::make_unique<PlainColor>(color));
            node.geometry.push_back(std::make_unique<PlainItem>(id));
            end();
            ++id;
        }
    }

    std::vector<PlainNode*> _open;
};

}  // namespace bench
