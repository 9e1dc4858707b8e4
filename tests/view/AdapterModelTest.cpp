// Random edits through the adapter, each checked against a small model of the graph that knows
// only numbers: nodes stand in a list and name each other by their places in it.

#include "support/CapturedDebugText.h"
#include "view/ViewTestKit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <iterator>
#include <map>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace KesVizCore {
namespace {

using support::RecordingAdapter;

using Ids = std::vector<std::uint64_t>;

// --- the model ----------------------------------------------------------------------------------

struct ModelNode {
    std::uint64_t id = 0;
    std::wstring name;
    bool isGroup = false;
    int filterId = -1;
    std::vector<int> parents;
    std::map<std::uint64_t, int> children;
    std::vector<std::pair<std::uint64_t, bool>> items;  // id, and whether it is red
    std::vector<int> attributes;
};

/// A graph without pointers, so that it may be copied, tried out and thrown away.
struct Model {
    std::vector<ModelNode> nodes;
    std::vector<int> open;
    /// Set by an operation that a caller must not ask for: it would leave a pointer to a node
    /// that is gone.
    bool unsafe = false;
    /// What the deletions write to the debug stream.
    std::string messages;

    Model() : nodes(1) {
        nodes[0].id = 1;
        nodes[0].name = L"ROOT";
        nodes[0].isGroup = true;
    }

    int top() const { return open.empty() ? -1 : open.back(); }
    ModelNode& node(int place) { return nodes[static_cast<std::size_t>(place)]; }
    const ModelNode& node(int place) const { return nodes[static_cast<std::size_t>(place)]; }

    int childOf(int parent, std::uint64_t id) const {
        if (parent < 0) {
            return -1;
        }
        const auto found = node(parent).children.find(id);
        return found != node(parent).children.end() ? found->second : -1;
    }
    int find(const Ids& path) const {
        int found = !path.empty() && path[0] == 1 ? 0 : -1;
        for (std::size_t level = 1; level < path.size(); ++level) {
            found = childOf(found, path[level]);
        }
        return found;
    }
    Ids pathTo(int place) const {
        const ModelNode& last = node(place);
        Ids path = last.parents.empty() ? Ids() : pathTo(last.parents.front());
        path.push_back(last.id);
        return path;
    }
    bool isAtOrAbove(int ancestor, int place) const {
        const std::vector<int>& parents = node(place).parents;
        return ancestor == place || std::any_of(parents.begin(), parents.end(), [&](int parent) {
                   return isAtOrAbove(ancestor, parent);
               });
    }

    bool create(std::uint64_t id, const std::wstring& name, bool isGroup) {
        ModelNode made;
        made.id = id;
        made.name = name;
        made.isGroup = isGroup;
        made.parents = {top()};
        node(top()).children[id] = static_cast<int>(nodes.size());
        open.push_back(static_cast<int>(nodes.size()));
        nodes.push_back(made);
        return true;
    }
    bool openNode(std::uint64_t id) {
        const int opened = id == 1 ? 0 : childOf(top(), id);
        if (opened >= 0) {
            open.push_back(opened);
        }
        return opened >= 0;
    }
    bool openNodes(const Ids& path) {
        return std::all_of(path.begin(), path.end(),
                           [&](std::uint64_t id) { return openNode(id); });
    }
    bool addReference(const Ids& path) {
        const int referenced = find(path);
        if (top() < 0 || !node(top()).isGroup || referenced < 0 ||
            childOf(top(), node(referenced).id) >= 0) {
            return false;
        }
        node(top()).children[node(referenced).id] = referenced;
        node(referenced).parents.push_back(top());
        open.push_back(referenced);
        return true;
    }

    void destroy(int place) {
        unsafe = unsafe || std::count(open.begin(), open.end(), place) != 0;
        for (const auto& entry : node(place).children) {
            unsafe = unsafe || node(entry.second).parents.size() != 1;
            destroy(entry.second);
        }
    }
    bool deleteChild(int parent, std::uint64_t id) {
        const int child = childOf(parent, id);
        if (child < 0) {
            return false;
        }
        node(parent).children.erase(id);
        std::vector<int>& parents = node(child).parents;
        parents.erase(std::find(parents.begin(), parents.end(), parent));
        if (parents.empty()) {
            destroy(child);
        }
        return true;
    }
    bool deleteById(std::uint64_t id) {
        const bool searchesRoot = open.empty() && id == 1;
        if (searchesRoot || (!open.empty() && !node(top()).children.empty())) {
            return deleteChild(searchesRoot ? 0 : top(), id);
        }
        messages += open.empty() ? "Stack is zero, yet is requesting for children\n"
                                 : "Cannot delete child node, no children found.\n";
        messages += "Cannot delete child node " + std::to_string(id) + "\n";
        return false;
    }
    bool deleteByPath(Ids path) {
        if (path.empty()) {
            return false;
        }
        const std::uint64_t last = path.back();
        path.pop_back();
        if (path.size() < 2) {
            return deleteById(last);
        }
        const std::vector<int> before = open;
        const bool deleted = openNodes(path) && deleteById(last);
        open = before;
        return deleted;
    }
    void strip(int place, const std::set<int>& types) {
        std::vector<int>& attributes = node(place).attributes;
        attributes.erase(std::remove_if(attributes.begin(), attributes.end(),
                                        [&](int type) { return types.count(type) != 0; }),
                         attributes.end());
    }
    void clear(const Ids& path) {
        if (path.empty()) {
            return;
        }
        const bool opensPath = open.empty();
        if ((!opensPath || openNodes(path)) && pathTo(top()) == path) {
            clearNode(top());
        }
        if (opensPath) {
            open.clear();
        }
    }
    void clearNode(int target) {
        if (node(target).children.empty()) {
            node(target).items.clear();
        }
        std::vector<Ids> paths;
        for (const auto& entry : node(target).children) {
            paths.push_back(pathTo(entry.second));
        }
        for (const Ids& path : paths) {
            deleteByPath(path);
        }
        strip(target, {AttributeType::Color, AttributeType::Highlight, AttributeType::Transform});
    }
    void setAttribute(int type) {
        std::vector<int>& attributes = node(top()).attributes;
        if (std::count(attributes.begin(), attributes.end(), type) == 0) {
            attributes.push_back(type);
        }
    }
    void copyAttributes(int source) {
        if (top() < 0) {
            return;
        }
        strip(top(), {AttributeType::Color, AttributeType::Transform});
        const std::vector<int> types = node(source).attributes;
        for (const int type : types) {
            if (type == AttributeType::Color || type == AttributeType::Transform) {
                setAttribute(type);
            }
        }
    }
    void transfer(int source) {
        if (top() < 0 || top() == source) {
            return;
        }
        auto& moved = node(source).items;
        node(top()).items.insert(node(top()).items.end(), moved.begin(), moved.end());
        moved.clear();
    }
};

// --- both sides as text -------------------------------------------------------------------------

std::string narrow(const std::wstring& name) {
    return std::string(name.begin(), name.end());
}

std::string modelText(const Model& model, int place, const std::string& indentation) {
    const ModelNode& node = model.node(place);
    std::string text = indentation + narrow(node.name) + (node.isGroup ? " group " : " leaf ") +
                       RenderId(model.pathTo(place), View3D).ToString() + " filter " +
                       std::to_string(node.filterId) + " parents";
    for (const int parent : node.parents) {
        text += " " + narrow(model.node(parent).name);
    }
    text += " items";
    for (const auto& [id, isRed] : node.items) {
        text += " " + std::to_string(id) + (isRed ? "r" : "");
    }
    text += " attributes";
    for (const int type : node.attributes) {
        text += " " + std::to_string(type);
    }
    text += "\n";
    for (const auto& entry : node.children) {
        text += modelText(model, entry.second, indentation + "  ");
    }
    return text;
}

std::string renderIdText(const GeoNode& node) {
    RenderId* id = node.GetRenderId();
    const std::string text = id->ToString();
    RenderId::DeleteRenderId(id);
    return text;
}

std::string graphText(GeoNode& node, const std::string& indentation) {
    auto* const group = dynamic_cast<Node*>(&node);
    std::string text = indentation + narrow(node.Name()) +
                       (group != nullptr ? " group " : " leaf ") + renderIdText(node) + " filter " +
                       std::to_string(node.GetFilterID()) + " parents";
    for (const Node* parent : node.Parents()) {
        text += " " + narrow(parent->Name());
    }
    text += " items";
    for (AGeometryItem* item : node.Geometry()) {
        RGBAColor color;
        item->GetColor(color);
        text += " " + std::to_string(item->ID()) + (color == RGBAColor::Red() ? "r" : "");
    }
    text += " attributes";
    for (const int type : support::attributeTypes(node)) {
        text += " " + std::to_string(type);
    }
    text += "\n";
    if (group != nullptr) {
        for (const auto& entry : group->Children()) {
            text += graphText(*entry.second, indentation + "  ");
        }
    }
    return text;
}

std::string openText(const Model& model) {
    std::string text;
    for (auto place = model.open.rbegin(); place != model.open.rend(); ++place) {
        text += narrow(model.node(*place).name) + " ";
    }
    return text;
}

std::string openText(const RecordingAdapter& adapter) {
    std::string text;
    for (auto open = adapter._openNodes; !open.empty(); open.pop()) {
        text += narrow(open.top()->Name()) + " ";
    }
    return text;
}

Attribute* newAttribute(int type) {
    switch (type) {
        case AttributeType::Color:
            return new AttributeColor(RGBAColor::Green(), true);
        case AttributeType::Highlight:
            return new AttributeHighlight(RGBAColor::Green());
        case AttributeType::Transform:
            return new AttributeTransform();
        case AttributeType::Visibility:
            return new AttributeVisibility(true);
        default:
            return new AttributeLineStyle(1.0F, "solid");
    }
}

// --- the random walk ----------------------------------------------------------------------------

/// One host that does whatever comes to its mind, and the model beside it.
class RandomHost {
public:
    explicit RandomHost(unsigned seed) : _random(seed) {}
    ~RandomHost() {
        _adapter.closeAll();
        std::vector<GeoNode*> nodes;
        collect(*_adapter._rootNode, nodes);
        for (GeoNode* node : nodes) {
            while (node->Parents().size() > 1) {
                node->Parents().back()->DeleteChildById(node->Id());
            }
        }
    }
    RandomHost(const RandomHost&) = delete;
    RandomHost& operator=(const RandomHost&) = delete;

    /// Does one thing on both sides and compares them; counts by name what succeeded.
    void step(std::map<std::string, int>& succeeded) {
        Model before = _model;
        const std::string done = anyOperation();
        SCOPED_TRACE(done + " of " + RenderId(_path, View3D).ToString() + " or " +
                     std::to_string(_id) + ", open: " + openText(before));
        if (_model.unsafe) {
            _model = std::move(before);
            return;
        }
        const support::CapturedDebugText text;
        const bool result = _apply();
        ASSERT_EQ(result, _expected);
        ASSERT_EQ(text.Text(), std::exchange(_model.messages, std::string()));
        ASSERT_EQ(openText(_adapter), openText(_model));
        ASSERT_EQ(graphText(*_adapter._rootNode, ""), modelText(_model, 0, ""));
        ASSERT_TRUE(foundNodeIsTheModels());
        succeeded[done] += result ? 1 : 0;
    }

private:
    static void collect(GeoNode& node, std::vector<GeoNode*>& nodes) {
        if (std::count(nodes.begin(), nodes.end(), &node) != 0) {
            return;
        }
        nodes.push_back(&node);
        if (auto* const group = dynamic_cast<Node*>(&node)) {
            for (const auto& entry : group->Children()) {
                collect(*entry.second, nodes);
            }
        }
    }

    unsigned below(unsigned end) { return static_cast<unsigned>(_random()) % end; }

    /// Down from the root by random children; now and then with a wrong id somewhere.
    Ids anyPath() {
        Ids path = {1};
        int place = 0;
        while (!_model.node(place).children.empty() && below(4) != 0) {
            auto child = _model.node(place).children.begin();
            std::advance(child, below(static_cast<unsigned>(_model.node(place).children.size())));
            path.push_back(child->first);
            place = child->second;
        }
        switch (below(12)) {
            case 0:
                path.push_back(anyId());
                break;
            case 1:
                path[below(static_cast<unsigned>(path.size()))] = anyId();
                break;
            case 2:
                path.pop_back();
                break;
            default:
                break;
        }
        return path;
    }
    std::uint64_t anyId() { return 2 + below(7); }  // 1 opens the root from everywhere

    bool foundNodeIsTheModels() {
        const GeoNode* const found = _adapter.GetNode(RenderId(_path, View3D));
        const int expected = _model.find(_path);
        return found == nullptr ? expected < 0
                                : expected >= 0 && found->Name() == _model.node(expected).name;
    }

    /// Chooses an operation, does it on the model and prepares it for the adapter.
    std::string anyOperation() {
        _path = anyPath();
        _id = anyId();
        _expected = true;
        if (below(2) == 0) {
            return furnish();
        }
        const RenderId path(_path, View3D);
        switch (below(7)) {
            case 0:
                _expected = _model.openNodes(_path);
                _apply = [=] { return _adapter.OpenNodes(path); };
                return "OpenNodes";
            case 1:
                return addReference();
            case 2:
                _expected = _model.deleteById(_id);
                _apply = [=] { return _adapter.DeleteNode(_id); };
                return "DeleteNode by id";
            case 3:
                _expected = _model.deleteByPath(_path);
                _apply = [=] { return _adapter.DeleteNode(path); };
                return "DeleteNode by path";
            case 4:
                return clear();
            case 5:
                _model.open.clear();
                _apply = [=] { return _adapter.CloseTopNode(), true; };
                return "CloseTopNode";
            default:
                return copyOrTransfer();
        }
    }
    std::string addReference() {
        const int referenced = _model.find(_path);
        const int top = _model.top();
        const bool cycle = referenced >= 0 && top >= 0 && _model.isAtOrAbove(referenced, top);
        _expected = _model.addReference(_path);
        _model.unsafe = _expected && cycle;
        _apply = [=] { return _adapter.AddReference(RenderId(_path, View3D)); };
        return "AddReference";
    }
    std::string clear() {
        if (!_model.open.empty() && below(2) == 0) {
            _path = _model.pathTo(_model.top());
        }
        _model.clear(_path);
        _apply = [=] { return _adapter.Clear(RenderId(_path, View3D)), true; };
        return "Clear";
    }
    std::string copyOrTransfer() {
        const int source = _model.find(_path);
        if (source < 0) {
            _apply = [] { return true; };
            return "nothing";
        }
        if (below(2) == 0) {
            _model.copyAttributes(source);
            _apply = [=] {
                _adapter.CopyNodeAttributesFrom(*_adapter.GetNode(RenderId(_path, View3D)));
                return true;
            };
            return "CopyNodeAttributesFrom";
        }
        _model.transfer(source);
        _apply = [=] {
            _adapter.TransferNodeGeometryFrom(*_adapter.GetNode(RenderId(_path, View3D)));
            return true;
        };
        return "TransferNodeGeometryFrom";
    }

    /// What fills a graph: nodes, items, attributes, colours.
    std::string furnish() {
        const int top = _model.top();
        if (top < 0) {
            _expected = _model.openNode(1);
            _apply = [=] { return _adapter.OpenTopNode(), true; };
            return "OpenTopNode";
        }
        const bool canCreate = _model.node(top).isGroup && _model.childOf(top, _id) < 0;
        if (canCreate && below(2) == 0) {
            return create();
        }
        switch (below(4)) {
            case 0:
                return addItem(top);
            case 1:
                return setAttribute();
            case 2:
                for (auto& item : _model.node(top).items) {
                    item.second = true;
                }
                _apply = [=] { return _adapter.SetColor(RGBAColor::Red()), true; };
                return "SetColor";
            default:
                _model.node(top).filterId = static_cast<int>(_id);
                _apply = [=] { return _adapter.SetFilterId(static_cast<int>(_id)), true; };
                return "SetFilterId";
        }
    }
    std::string create() {
        const std::wstring name = L"n" + std::to_wstring(++_names);
        const bool isGroup = below(3) != 0;
        _model.create(_id, name, isGroup);
        _apply = [=] {
            return isGroup ? _adapter.CreateNode(_id, name) : _adapter.CreateGeoNode(_id, name);
        };
        return "Create";
    }
    std::string addItem(int top) {
        const std::uint64_t item = ++_items;
        _model.node(top).items.emplace_back(item, false);
        _apply = [=] { return _adapter.AddGeometryItem(support::newItem(item)), true; };
        return "AddGeometryItem";
    }
    std::string setAttribute() {
        const int types[] = {AttributeType::Color, AttributeType::Highlight,
                             AttributeType::Transform, AttributeType::Visibility,
                             AttributeType::LineStyle};
        const int type = types[below(5)];
        _model.setAttribute(type);
        _apply = [=] { return _adapter.GetCurrentOpenNode()->SetAttribute(newAttribute(type)); };
        return "SetAttribute";
    }

    std::mt19937 _random;
    RecordingAdapter _adapter;
    Model _model;
    std::function<bool()> _apply;
    bool _expected = true;
    Ids _path;
    std::uint64_t _id = 0;
    std::uint64_t _items = 0;
    int _names = 0;
};

TEST(AdapterModelTest, RandomEditsLeaveTheGraphThatTheModelPredicts) {
    std::map<std::string, int> succeeded;
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomHost host(seed);
        for (int step = 0; step < 250; ++step) {
            SCOPED_TRACE("step " + std::to_string(step));
            ASSERT_NO_FATAL_FAILURE(host.step(succeeded));
        }
    }
    for (const char* operation :
         {"OpenNodes", "AddReference", "DeleteNode by id", "DeleteNode by path", "Clear",
          "CopyNodeAttributesFrom", "TransferNodeGeometryFrom", "SetColor", "SetFilterId"}) {
        EXPECT_GT(succeeded[operation], 50) << operation;
    }
}

}  // namespace
}  // namespace KesVizCore
