/// @file
/// A scene graph of plain containers, which says what the library's must look like after each
/// operation. Nodes are numbers, so that a copy of the model is a graph of its own.
#pragma once

#include "Input.h"

#include <KesVizCore/KesVizCore.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cwchar>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace Fuzz {

/// The bytes of @p text in the current locale, as many as it has characters: none from the first
/// character on that has no form or no room left, nor behind a zero character.
inline std::string narrow(const std::wstring& text) {
    std::string bytes;
    for (const wchar_t character : text) {
        char form[MB_LEN_MAX];
        std::mbstate_t state = {};
        const std::size_t length = std::wcrtomb(form, character, &state);
        if (character == L'\0' || length > MB_LEN_MAX || bytes.size() + length > text.size()) {
            break;
        }
        bytes.append(form, length);
    }
    bytes.resize(text.size());
    return bytes;
}

struct ModelAttribute {
    int type = -1;
    std::string text;  ///< what it holds, or by what name it tells of its end
};

struct ModelItem {
    std::uint64_t id = 0;
    std::string name;   ///< by which it tells of its end; empty for a null item
    std::string color;  ///< where colours are compared
};

struct ModelNode {
    std::uint64_t id = 0;
    bool isGroup = false;
    bool isAlive = true;
    int filter = -1;
    std::wstring name;
    std::vector<ModelAttribute> attributes;
    std::vector<ModelItem> items;
    std::vector<int> parents;
    std::map<std::uint64_t, int> children;

    ModelAttribute* Attribute(int type) {
        const auto place = find(type);
        return place == attributes.end() ? nullptr : &*place;
    }
    /// Answers the one replaced.
    ModelAttribute SetAttribute(ModelAttribute attribute) {
        if (ModelAttribute* const held = Attribute(attribute.type)) {
            return std::exchange(*held, std::move(attribute));
        }
        attributes.push_back(std::move(attribute));
        return {};
    }
    void DropAttribute(int type) {
        const auto place = find(type);
        if (place != attributes.end()) {
            attributes.erase(place);
        }
    }

private:
    std::vector<ModelAttribute>::iterator find(int type) {
        return std::find_if(attributes.begin(), attributes.end(),
                            [type](const auto& attribute) { return attribute.type == type; });
    }
};

class GraphModel {
public:
    std::vector<ModelNode> nodes;
    std::vector<std::string> deaths;  ///< attributes and items destroyed, in that order
    bool attributesTell = false;      ///< whether attributes stand in deaths

    ModelNode& operator[](int node) { return nodes[static_cast<std::size_t>(node)]; }
    const ModelNode& operator[](int node) const { return nodes[static_cast<std::size_t>(node)]; }

    int Add(std::uint64_t id, bool isGroup) {
        ModelNode node;
        node.id = id;
        node.isGroup = isGroup;
        nodes.push_back(node);
        return static_cast<int>(nodes.size()) - 1;
    }

    int Child(int parent, std::uint64_t id) const {
        const auto place = (*this)[parent].children.find(id);
        return place == (*this)[parent].children.end() ? -1 : place->second;
    }

    bool AddChild(int parent, int child) {
        if (!(*this)[parent].children.emplace((*this)[child].id, child).second) {
            return false;
        }
        std::vector<int>& parents = (*this)[child].parents;
        if (std::count(parents.begin(), parents.end(), parent) == 0) {
            parents.push_back(parent);
        }
        return true;
    }

    bool DeleteChild(int parent, std::uint64_t id) {
        const int child = Child(parent, id);
        if (child < 0) {
            return false;
        }
        (*this)[parent].children.erase(id);
        ForgetParent(child, parent);
        if ((*this)[child].parents.empty()) {
            Destroy(child);
        }
        return true;
    }

    void ForgetParent(int child, int parent) {
        std::vector<int>& parents = (*this)[child].parents;
        parents.erase(std::remove(parents.begin(), parents.end(), parent), parents.end());
    }

    void Destroy(int node) {
        for (const auto& [id, child] : (*this)[node].children) {
            if ((*this)[child].parents.size() == 1) {
                Destroy(child);
            }
        }
        ModelNode& destroyed = (*this)[node];
        destroyed.children.clear();
        for (const ModelAttribute& attribute : destroyed.attributes) {
            if (attributesTell) {
                deaths.push_back(attribute.text);
            }
        }
        DestroyItems(node);
        destroyed.isAlive = false;
    }

    void DestroyItems(int node) {
        for (const ModelItem& item : (*this)[node].items) {
            if (!item.name.empty()) {
                deaths.push_back(item.name);
            }
        }
        (*this)[node].items.clear();
    }

    /// Whether @p ancestor is @p node or recorded as one above it.
    bool IsAbove(int ancestor, int node) const {
        std::vector<int> above = {node};
        for (std::size_t next = 0; next < above.size(); ++next) {
            for (const int parent : (*this)[above[next]].parents) {
                if (std::count(above.begin(), above.end(), parent) == 0) {
                    above.push_back(parent);
                }
            }
        }
        return std::count(above.begin(), above.end(), ancestor) != 0;
    }

    std::vector<std::uint64_t> Path(int node) const {
        std::vector<std::uint64_t> path = {(*this)[node].id};
        while (!(*this)[node].parents.empty()) {
            node = (*this)[node].parents.front();
            path.insert(path.begin(), (*this)[node].id);
        }
        return path;
    }

    /// The node at the end of a path that begins at @p root; -1 for none.
    int Find(int root, const std::vector<std::uint64_t>& path) const {
        if (path.empty() || path[0] != (*this)[root].id) {
            return -1;
        }
        int node = root;
        for (std::size_t place = 1; place < path.size() && node >= 0; ++place) {
            node = Child(node, path[place]);
        }
        return node;
    }

    std::string Text(int node) const {
        const ModelNode& it = (*this)[node];
        std::wstring text = L"[" + std::to_wstring(it.id) + L"] \"" + it.name.c_str() +
                            L"\" parents(" + std::to_wstring(it.parents.size()) + L") attributes(" +
                            std::to_wstring(it.attributes.size()) + L") geoEntities(" +
                            std::to_wstring(it.items.size()) + L")";
        std::string bytes = narrow(text.substr(0, 4095));
        if (it.isGroup) {
            bytes += " children(" + std::to_string(it.children.size()) + ")";
        }
        return bytes;
    }

    /// How often a walk down from @p node meets a node: shared ones count for each way to them.
    std::size_t Steps(int node, std::size_t enough) const {
        std::size_t steps = 1;
        for (const auto& [id, child] : (*this)[node].children) {
            if (steps >= enough) {
                break;
            }
            steps += Steps(child, enough - steps);
        }
        return steps;
    }

    void Dump(int node, std::string& out, std::size_t indentation = 0) const {
        const ModelNode& it = (*this)[node];
        const auto truncated = static_cast<std::int32_t>(static_cast<std::uint32_t>(it.id));
        out += std::string(indentation, ' ') + "Node [" + std::to_string(truncated) + "] '" +
               narrow(it.name) + "', parents: " + std::to_string(it.parents.size()) + " ";
        const bool isLeaf = it.children.empty();
        out += isLeaf ? "   geometry objects: " + std::to_string(it.items.size()) + " "
                      : ", children: " + std::to_string(it.children.size());
        out += it.attributes.empty() ? " " : " , Attr:";
        static const std::map<int, std::string> kinds = {
            {0, " Co"}, {1, " Hi"}, {2, " Tx"}, {4, " Vi"}};
        for (const ModelAttribute& attribute : it.attributes) {
            const auto kind = kinds.find(attribute.type);
            out += kind == kinds.end() ? " Unknown attribute" : kind->second;
        }
        out += "\n";
        for (const auto& [id, child] : it.children) {
            Dump(child, out, indentation + 2);
        }
    }
};

/// The model beside the nodes themselves.
class Graph {
public:
    using AttributeText = std::function<std::string(KesVizCore::Attribute*)>;
    /// Name and colour.
    using ItemText = std::function<std::string(KesVizCore::AGeometryItem*)>;

    Graph(GraphModel& beside, AttributeText attributeText, ItemText itemText)
        : model(beside), _attributeText(std::move(attributeText)), _itemText(std::move(itemText)) {}

    GraphModel& model;
    std::vector<KesVizCore::GeoNode*> nodes;  ///< by the model's numbers, dead ones too

    KesVizCore::GeoNode* operator[](int node) const {
        return nodes[static_cast<std::size_t>(node)];
    }
    /// Null for a leaf; dangling, as in nodes, for one that is dead.
    KesVizCore::Node* Group(int node) const { return _groups[static_cast<std::size_t>(node)]; }
    int Count() const { return static_cast<int>(nodes.size()); }

    /// Takes a node that the library made as the next one of the model, or of one that has it
    /// already; its parents are the caller's to say.
    int Adopt(KesVizCore::GeoNode* node) {
        nodes.push_back(node);
        _groups.push_back(dynamic_cast<KesVizCore::Node*>(node));
        if (model.nodes.size() < nodes.size()) {
            model.Add(node->Id(), _groups.back() != nullptr);
        }
        return Count() - 1;
    }

    /// What a caller must do who lets a shared node outlive a parent: nodes that live on forget the
    /// parents that died.
    void ForgetDeadParents() {
        for (int node = 0; node < Count(); ++node) {
            if (!model[node].isAlive) {
                continue;
            }
            const std::vector<int> parents = model[node].parents;
            for (const int parent : parents) {
                if (!model[parent].isAlive) {
                    model.ForgetParent(node, parent);
                    (*this)[node]->RemoveFromParents(Group(parent));
                }
            }
        }
    }

    /// Destroys what is left, each shared node after it was unlinked.
    void DestroyAll() {
        for (int node = 0; node < Count(); ++node) {
            while (model[node].isAlive && !model[node].children.empty()) {
                const std::uint64_t id = model[node].children.begin()->first;
                Check(Group(node)->DeleteChildById(id) == model.DeleteChild(node, id),
                      "DeleteChildById");
                ForgetDeadParents();
            }
        }
        for (int node = 0; node < Count(); ++node) {
            if (model[node].isAlive) {
                model.Destroy(node);
                delete (*this)[node];
                ForgetDeadParents();
            }
        }
    }

    void CheckAll() const {
        for (int node = 0; node < Count(); ++node) {
            if (model[node].isAlive) {
                checkNode(node);
            }
        }
    }

private:
    void checkNode(int number) const {
        const ModelNode& expected = model[number];
        KesVizCore::GeoNode& node = *(*this)[number];
        const std::string text = node.ToString();
        if (text != model.Text(number)) {
            Fail("node " + text + ", expected " + model.Text(number));
        }
        Check(node.Id() == expected.id && node.Name() == expected.name &&
                  node.GetFilterID() == expected.filter,
              "id, name and filter id");
        Check(node.HasChildren() == !expected.children.empty(), "HasChildren");
        checkParents(node, expected);
        checkChildren(number);
        checkHeld(node, expected);
        KesVizCore::RenderId* id = node.GetRenderId();
        const KesVizCore::RenderId path(model.Path(number), KesVizCore::View3D);
        if (*id != path) {
            Fail("path " + id->ToString() + ", expected " + path.ToString());
        }
        KesVizCore::RenderId::DeleteRenderId(id);
    }

    void checkParents(KesVizCore::GeoNode& node, const ModelNode& expected) const {
        std::vector<KesVizCore::Node*> parents;
        for (const int parent : expected.parents) {
            parents.push_back(Group(parent));
        }
        Check(node.Parents() == parents && node.HasParent() == !parents.empty(), "parents");
        for (const KesVizCore::Node* parent : parents) {
            const auto first =
                std::find_if(parents.begin(), parents.end(),
                             [parent](const auto* one) { return one->Id() == parent->Id(); });
            Check(node.GetParent(parent->Id()) == *first, "GetParent");
        }
    }

    void checkChildren(int number) const {
        const ModelNode& expected = model[number];
        if (!expected.isGroup) {
            return;
        }
        std::map<std::uint64_t, KesVizCore::GeoNode*> children;
        for (const auto& [id, child] : expected.children) {
            children[id] = (*this)[child];
            Check(Group(number)->GetChild(id) == (*this)[child], "GetChild");
        }
        Check(Group(number)->Children() == children, "children");
    }

    void checkHeld(KesVizCore::GeoNode& node, const ModelNode& expected) const {
        Check(node.Attributes()->size() == expected.attributes.size(), "number of attributes");
        for (std::size_t place = 0; place < expected.attributes.size(); ++place) {
            KesVizCore::Attribute* const attribute = (*node.Attributes())[place];
            const ModelAttribute& wanted = expected.attributes[place];
            Check(attribute->GetType() == wanted.type, "type of an attribute");
            Check(node.GetAttribute(wanted.type) == attribute, "GetAttribute");
            const std::string text = _attributeText(attribute);
            if (text != wanted.text) {
                Fail("attribute " + text + ", expected " + wanted.text);
            }
        }
        Check(node.Geometry().size() == expected.items.size(), "number of items");
        for (std::size_t place = 0; place < expected.items.size(); ++place) {
            KesVizCore::AGeometryItem* const item = node.Geometry()[place];
            const std::string text = _itemText(item);
            const ModelItem& wanted = expected.items[place];
            if (text != wanted.name + wanted.color) {
                Fail("item " + text + ", expected " + wanted.name + wanted.color);
            }
        }
    }

    std::vector<KesVizCore::Node*> _groups;
    AttributeText _attributeText;
    ItemText _itemText;
};

}  // namespace Fuzz
