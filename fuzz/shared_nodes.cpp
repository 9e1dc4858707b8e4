/// @file
/// Nodes with shared children, linked, unlinked and destroyed in any order, beside a model that
/// also says which attributes and items are destroyed, when, and in which order.

#include "GraphModel.h"
#include "Input.h"
#include "graph/TellingGraph.h"
#include "support/RecordingHost.h"

#include <KesVizCore/KesVizCore.h>

#include <map>
#include <memory>
#include <set>

namespace {

using namespace KesVizCore;
using Fuzz::Check;
using Fuzz::GraphModel;
using Fuzz::Input;
using Fuzz::ModelNode;

class TellingItem : public support::TellingItem<AGeometryItemVertex> {
public:
    TellingItem(support::Deaths& deaths, std::string name, std::uint64_t id)
        : support::TellingItem<AGeometryItemVertex>(nullptr, id, nullptr),
          _deaths(deaths),
          _name(std::move(name)) {}
    ~TellingItem() override { _deaths.push_back(_name); }
    TellingItem(const TellingItem&) = delete;
    TellingItem& operator=(const TellingItem&) = delete;

private:
    support::Deaths& _deaths;
    std::string _name;
};

class SharedNodes {
public:
    SharedNodes()
        : _graph(
              _model, [this](Attribute* attribute) { return _attributeNames.at(attribute); },
              [this](AGeometryItem* item) {
                  return item == nullptr ? std::string() : _itemNames.at(item);
              }) {
        _model.attributesTell = true;
        addRoot();
    }

    void Run(Input& input) {
        while (!input.IsAtEnd()) {
            change(input);
            _graph.ForgetDeadParents();
            _graph.CheckAll();
            checkDeaths();
        }
        _graph.DestroyAll();
        checkDeaths();
        for (const auto& [attribute, name] : _detachedAttributes) {
            delete attribute;
        }
        for (AGeometryItem* const item : _detachedItems) {
            delete item;
        }
        // Each attribute and item that was ever made is gone, and only once.
        const std::set<std::string> names(_deaths.begin(), _deaths.end());
        Check(names.size() == _deaths.size() && _deaths.size() == _made, "number of destructions");
    }

private:
    static constexpr int kMostNodes = 48;

    GraphModel& model() { return _model; }

    int anyNode(Input& input) {
        const int first = static_cast<int>(input.Below(256)) % _graph.Count();
        for (int step = 0; step < _graph.Count(); ++step) {
            const int node = (first + step) % _graph.Count();
            if (model()[node].isAlive) {
                return node;
            }
        }
        return addRoot();
    }

    /// -1 for none.
    int anyGroup(Input& input) {
        const int node = anyNode(input);
        return model()[node].isGroup ? node : -1;
    }

    static std::uint64_t anyId(Input& input) {
        return input.Below(16) == 0 ? input.Any<std::uint64_t>() : input.Below(8);
    }

    static std::wstring anyName(Input& input) { return input.Text(6); }

    void change(Input& input) {
        switch (input.Below(8)) {
            case 0:
                makeNode(input);
                break;
            case 1:
                link(input);
                break;
            case 2:
                unlink(input);
                break;
            case 3:
                record(input);
                break;
            case 4:
                changeAttribute(input);
                break;
            case 5:
                changeGeometry(input);
                break;
            case 6:
                destroy(input);
                break;
            default:
                ask(input);
        }
    }

    // ---- nodes and links

    int addRoot() {
        Node* const root = Node::CreateRoot();
        const int number = _graph.Adopt(root);
        model()[number].id = 1;
        model()[number].name = L"ROOT";
        _counter = 1;
        return number;
    }

    void makeNode(Input& input) {
        const int parent = anyGroup(input);
        if (_graph.Count() >= kMostNodes || parent < 0) {
            return;
        }
        if (input.Below(16) == 0) {
            addRoot();
            return;
        }
        std::uint64_t id = anyId(input);
        if (input.Flag()) {
            id = Node::GetNextId();
            Check(id == ++_counter, "GetNextId");
        }
        const bool isGroup = input.Below(4) != 0;
        GeoNode* const child = isGroup ? _graph.Group(parent)->CreateChild(id)
                                       : _graph.Group(parent)->CreateGeoChild(id);
        const int number = _graph.Adopt(child);
        model()[number].id = id;
        Check(model()[number].isGroup == isGroup, "class of a child");
        model().AddChild(parent, number);
        const std::wstring name = anyName(input);
        const int filter = static_cast<int>(input.Below(4)) - 1;
        child->SetName(name);
        child->SetFilterID(filter);
        model()[number].name = name;
        model()[number].filter = filter;
    }

    void link(Input& input) {
        const int parent = anyGroup(input);
        const int child = anyNode(input);
        if (parent < 0) {
            return;
        }
        Check(!_graph.Group(parent)->AddChild(nullptr), "AddChild of null");
        if (model().IsAbove(child, parent)) {
            return;  // a cycle
        }
        Check(_graph.Group(parent)->AddChild(_graph[child]) == model().AddChild(parent, child),
              "AddChild");
    }

    void unlink(Input& input) {
        const int parent = anyGroup(input);
        if (parent < 0) {
            return;
        }
        ModelNode& it = model()[parent];
        const std::uint64_t id = anyChildId(input, it);
        switch (input.Below(5)) {
            case 0:
                Check(_graph.Group(parent)->RemoveChildById(id) == (it.children.erase(id) != 0),
                      "RemoveChildById");
                break;
            case 1:
                _graph.Group(parent)->ClearChildren();
                it.children.clear();
                break;
            default:
                Check(_graph.Group(parent)->DeleteChildById(id) == model().DeleteChild(parent, id),
                      "DeleteChildById");
        }
    }

    static std::uint64_t anyChildId(Input& input, const ModelNode& node) {
        if (node.children.empty() || input.Below(4) == 0) {
            return anyId(input);
        }
        const auto place = static_cast<std::ptrdiff_t>(input.Below(256) % node.children.size());
        return std::next(node.children.begin(), place)->first;
    }

    /// Links of which only the child knows.
    void record(Input& input) {
        const int parent = anyGroup(input);
        const int child = anyNode(input);
        if (parent < 0 || model().IsAbove(child, parent)) {
            return;
        }
        std::vector<int>& parents = model()[child].parents;
        const bool isRecorded = std::count(parents.begin(), parents.end(), parent) != 0;
        if (input.Flag()) {
            _graph[child]->AddToParents(_graph.Group(parent));
            if (!isRecorded) {
                parents.push_back(parent);
            }
        } else if (model().Child(parent, model()[child].id) != child) {
            _graph[child]->RemoveFromParents(_graph.Group(parent));
            model().ForgetParent(child, parent);
        }
    }

    /// A node that no parent holds is the caller's to delete.
    void destroy(Input& input) {
        const int node = anyNode(input);
        for (const ModelNode& other : model().nodes) {
            const auto child = other.children.find(model()[node].id);
            if (other.isAlive && child != other.children.end() && child->second == node) {
                return;
            }
        }
        model().Destroy(node);
        delete _graph[node];
    }

    // ---- what nodes hold

    Attribute* newAttribute(Input& input, std::string& name) {
        static const RGBAColor color(1, 2, 3, 4);
        name = "attribute " + std::to_string(_made++);
        Attribute* attribute = nullptr;
        switch (input.Below(6)) {
            case 0:
                attribute =
                    new support::TellingAttribute<AttributeColor>(_deaths, name, color, false);
                break;
            case 1:
                attribute = new support::TellingAttribute<AttributeHighlight>(_deaths, name, color);
                break;
            case 2:
                attribute = new support::TellingAttribute<AttributeTransform>(_deaths, name);
                break;
            case 3:
                attribute = new support::TellingAttribute<AttributeVisibility>(_deaths, name, true);
                break;
            case 4:
                attribute =
                    new support::TellingAttribute<AttributeLineStyle>(_deaths, name, 1.0F, "-");
                break;
            default:
                attribute = new support::AnyAttribute(
                    _deaths, name, AttributeType(static_cast<int>(input.Below(8)) - 1));
        }
        _attributeNames[attribute] = name;
        return attribute;
    }

    void changeAttribute(Input& input) {
        const int node = anyNode(input);
        ModelNode& it = model()[node];
        const unsigned change = input.Below(4);
        if (change == 0) {
            const int type = static_cast<int>(input.Below(8)) - 1;
            detachAttribute(_graph[node]->GetAttribute(type));
            _graph[node]->DeleteAttribute(type);
            it.DropAttribute(type);
        } else if (change == 1 && !it.attributes.empty()) {
            const std::size_t place = input.Below(256) % it.attributes.size();
            Check(_graph[node]->SetAttribute((*_graph[node]->Attributes())[place]),
                  "SetAttribute of the very same");
            Check(!_graph[node]->SetAttribute(nullptr), "SetAttribute of null");
        } else {
            setAttribute(input, node);
        }
    }

    /// A new one, or one that was taken off a node before.
    void setAttribute(Input& input, int node) {
        std::string name;
        Attribute* attribute = nullptr;
        if (input.Flag() && !_detachedAttributes.empty()) {
            attribute = _detachedAttributes.back().first;
            name = _detachedAttributes.back().second;
            _detachedAttributes.pop_back();
        } else {
            attribute = newAttribute(input, name);
        }
        const int type = attribute->GetType();
        const std::string replaced = model()[node].SetAttribute({type, name}).text;
        if (!replaced.empty()) {
            model().deaths.push_back(replaced);
        }
        Check(_graph[node]->SetAttribute(attribute), "SetAttribute");
    }

    void detachAttribute(Attribute* attribute) {
        if (attribute != nullptr) {
            _detachedAttributes.emplace_back(attribute, _attributeNames.at(attribute));
        }
    }

    void changeGeometry(Input& input) {
        const int node = anyNode(input);
        ModelNode& it = model()[node];
        switch (input.Below(6)) {
            case 0:
                _graph[node]->DeleteAllGeometry();
                model().DestroyItems(node);
                break;
            case 1:
                detachItem(node, input.Below(8));
                break;
            case 2:
                transfer(node, anyNode(input));
                break;
            case 3:
                _graph[node]->AddGeometry(nullptr);
                it.items.emplace_back();
                _graph[node]->TransferGeometryFrom(nullptr);
                break;
            default: {
                const std::uint64_t id = input.Below(8);
                const std::string name = "item " + std::to_string(_made++);
                auto* const item = new TellingItem(_deaths, name, id);
                _itemNames[item] = name;
                _graph[node]->AddGeometry(item);
                it.items.push_back({id, name, {}});
            }
        }
    }

    void detachItem(int node, std::uint64_t id) {
        std::vector<Fuzz::ModelItem>& items = model()[node].items;
        const auto place = std::find_if(items.begin(), items.end(), [id](const auto& item) {
            return !item.name.empty() && item.id == id;
        });
        if (place != items.end()) {
            const auto index = static_cast<std::size_t>(place - items.begin());
            _detachedItems.push_back(_graph[node]->Geometry()[index]);
            items.erase(place);
        }
        _graph[node]->DeleteGeometryById(id);
    }

    void transfer(int node, int source) {
        _graph[node]->TransferGeometryFrom(_graph[source]);
        if (node == source) {
            return;
        }
        std::vector<Fuzz::ModelItem>& items = model()[node].items;
        std::vector<Fuzz::ModelItem>& from = model()[source].items;
        items.insert(items.end(), from.begin(), from.end());
        from.clear();
    }

    // ---- questions

    /// A node by a path and the dump of all below it, as an adapter answers them.
    void ask(Input& input) {
        const int root = anyGroup(input);
        if (root < 0 || !model()[root].isAlive) {
            return;
        }
        support::RecordingAdapter adapter(false);
        adapter.ownsRoot = false;
        adapter._rootNode = _graph.Group(root);
        std::vector<std::uint64_t> path;
        int node = input.Below(8) == 0 ? -1 : root;
        path.push_back(node < 0 ? anyId(input) : model()[root].id);
        for (unsigned left = input.Below(6); left > 0; --left) {
            path.push_back(node < 0 ? anyId(input) : anyChildId(input, model()[node]));
            node = node < 0 ? -1 : model().Child(node, path.back());
        }
        const int expected = model().Find(root, path);
        Check(
            adapter.GetNode(RenderId(path, View3D)) == (expected < 0 ? nullptr : _graph[expected]),
            "GetNode");
        if (model().Steps(root, 1000) < 1000) {
            std::string text = "before ";
            std::string expectedText = text;
            adapter.GetSceneStructure(text, input.Flag());
            model().Dump(root, expectedText);
            if (text != expectedText) {
                Fuzz::Fail("dump\n" + text + "expected\n" + expectedText);
            }
        }
    }

    void checkDeaths() {
        if (_deaths != model().deaths) {
            std::string told = "destroyed:";
            for (const std::string& name : _deaths) {
                told += " " + name;
            }
            told += ", expected:";
            for (const std::string& name : model().deaths) {
                told += " " + name;
            }
            Fuzz::Fail(told);
        }
    }

    support::Deaths _deaths;
    std::map<Attribute*, std::string> _attributeNames;
    std::map<AGeometryItem*, std::string> _itemNames;
    std::vector<std::pair<Attribute*, std::string>> _detachedAttributes;
    std::vector<AGeometryItem*> _detachedItems;
    std::size_t _made = 0;
    std::uint64_t _counter = 1;
    GraphModel _model;
    Fuzz::Graph _graph;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    SharedNodes nodes;
    nodes.Run(input);
    return 0;
}
