/// @file
/// Random operations on graphs, each compared with a small model that is written straight from
/// what the operations promise: numbers for nodes, and destruction as the plain recursion that
/// the library avoids.

#include "graph/RecordingReport.h"
#include "graph/TellingGraph.h"
#include "support/RecordingHost.h"

#include <KesVizCore/core/RenderId.h>
#include <KesVizCore/graph/Node.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace KesVizCore {
namespace {

using support::Deaths;
using support::HostNode;

constexpr std::size_t kNone = static_cast<std::size_t>(-1);
constexpr int kTagType = 50;  // the type of an attribute that every node keeps, to tell its death

/// An item that writes its name among the deaths of everything else.
class NamedItem : public support::AnyItem {
public:
    NamedItem(Deaths& deaths, std::string name, std::uint64_t id)
        : TellingItem(nullptr, id, nullptr), _deaths(deaths), _name(std::move(name)) {}
    ~NamedItem() override { _deaths.push_back(_name); }
    NamedItem(const NamedItem&) = delete;
    NamedItem& operator=(const NamedItem&) = delete;

private:
    Deaths& _deaths;
    std::string _name;
};

/// One node as the model knows it. Nodes are named by their numbers.
struct ModelNode {
    std::uint64_t id = 0;
    bool isGroup = false;
    bool isHosts = false;
    std::string name;
    int filterId = -1;
    std::vector<std::size_t> parents;
    std::map<std::uint64_t, std::size_t> children;
    struct HeldAttribute {
        int type;
        Attribute* real;
        std::string name;
    };
    std::vector<HeldAttribute> attributes;
    struct HeldItem {
        std::uint64_t id;
        AGeometryItem* real;  // may be null, with neither id nor name
        std::string name;
    };
    std::vector<HeldItem> items;
};

/// A graph and its model, and operations that act on both.
class Walk {
public:
    /// A shy walk seldom asks for the containers of a node, which keeps it in other forms.
    Walk(unsigned seed, bool isShy) : _isShy(isShy), _random(seed) {
        addNode(Node::CreateRoot(), 1, true, false);
        _model[0].name = "ROOT";
        compareAll();
    }
    ~Walk() { destroyEverything(); }
    Walk(const Walk&) = delete;
    Walk& operator=(const Walk&) = delete;

    /// One random operation; answers its name.
    std::string Step() {
        struct Operation {
            const char* name;
            void (Walk::*run)();
            int weight;
        };
        static const Operation operations[] = {
            {"create", &Walk::create, 12},
            {"add an existing child", &Walk::addExisting, 12},
            {"add null", &Walk::addNull, 1},
            {"remove a child", &Walk::removeChild, 3},
            {"delete a child", &Walk::deleteChild, 6},
            {"clear the children", &Walk::clearChildren, 1},
            {"destroy an unlinked node", &Walk::destroyUnlinked, 2},
            {"set an attribute", &Walk::setAttribute, 8},
            {"set a stored attribute", &Walk::setStoredAttribute, 2},
            {"detach an attribute", &Walk::detachAttribute, 4},
            {"add an item", &Walk::addItem, 8},
            {"detach an item", &Walk::detachItem, 4},
            {"delete all geometry", &Walk::deleteAllGeometry, 2},
            {"transfer geometry", &Walk::transferGeometry, 4},
            {"rename", &Walk::rename, 6},
            {"report", &Walk::report, 2},
        };
        int total = 0;
        for (const Operation& operation : operations) {
            total += operation.weight;
        }
        int chosen = static_cast<int>(below(static_cast<std::size_t>(total)));
        for (const Operation& operation : operations) {
            chosen -= operation.weight;
            if (chosen < 0) {
                (this->*operation.run)();
                return operation.name;
            }
        }
        return "";
    }

    void CompareAll() { compareAll(); }

private:
    // --- chance -----------------------------------------------------------------------------

    std::size_t below(std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(_random);
    }
    bool oneIn(std::size_t times) { return below(times) == 0; }
    bool asksForContainers() { return !_isShy || oneIn(500); }
    std::uint64_t anyId() { return below(12); }

    /// A living node that @p fits, or kNone.
    std::size_t anyNode(const std::function<bool(std::size_t)>& fits) {
        std::vector<std::size_t> fitting;
        for (const auto& entry : _model) {
            if (fits(entry.first)) {
                fitting.push_back(entry.first);
            }
        }
        return fitting.empty() ? kNone : fitting[below(fitting.size())];
    }
    std::size_t anyNode() {
        return anyNode([](std::size_t) { return true; });
    }
    std::size_t anyGroup() {
        return anyNode([this](std::size_t node) { return _model[node].isGroup; });
    }

    // --- the model's own questions ----------------------------------------------------------

    bool isLinked(std::size_t node) const {
        return std::any_of(_model.begin(), _model.end(), [node](const auto& parent) {
            const auto& children = parent.second.children;
            return std::any_of(children.begin(), children.end(),
                               [node](const auto& entry) { return entry.second == node; });
        });
    }

    /// The node and all above it, be it by children or by parents that only the child still knows.
    std::set<std::size_t> above(std::size_t node) {
        std::set<std::size_t> found = {node};
        std::vector<std::size_t> open = {node};
        while (!open.empty()) {
            const std::vector<std::size_t> parents = _model[open.back()].parents;
            open.pop_back();
            for (const std::size_t parent : parents) {
                if (found.insert(parent).second) {
                    open.push_back(parent);
                }
            }
        }
        return found;
    }

    /// Destroys in the model, as nested destructors would.
    void die(std::size_t number, Deaths& deaths) {
        ModelNode& node = _model[number];
        if (node.isHosts) {
            deaths.push_back("host's " + std::to_string(number) + " with " +
                             std::to_string(node.children.size()) + " children");
        }
        for (const auto& entry : node.children) {
            if (_model[entry.second].parents.size() == 1) {
                die(entry.second, deaths);
            }
        }
        for (const auto& attribute : node.attributes) {
            deaths.push_back(attribute.name);
        }
        for (const auto& item : node.items) {
            if (item.real != nullptr) {
                deaths.push_back(item.name);
            }
        }
        _model.erase(number);
    }

    // --- making and destroying --------------------------------------------------------------

    std::size_t addNode(GeoNode* real, std::uint64_t id, bool isGroup, bool isHosts) {
        const std::size_t number = _real.size();
        ModelNode& node = _model[number];
        node.id = id;
        node.isGroup = isGroup;
        node.isHosts = isHosts;
        _real.push_back(real);
        _groups.push_back(dynamic_cast<Node*>(real));
        giveAttribute(number, kTagType);
        return number;
    }

    /// Links in the model, where the id is free.
    bool link(std::size_t parent, std::size_t child) {
        if (!_model[parent].children.emplace(_model[child].id, child).second) {
            return false;
        }
        auto& parents = _model[child].parents;
        if (std::find(parents.begin(), parents.end(), parent) == parents.end()) {
            parents.push_back(parent);
        }
        return true;
    }

    Node* group(std::size_t number) { return _groups[number]; }

    void create() {
        const std::size_t parent = anyGroup();
        if (_model.size() > 40 || parent == kNone) {
            return;
        }
        const std::uint64_t id = anyId();
        const std::size_t kind = below(5);
        const bool isHosts = kind == 0;
        const bool isGroup = kind < 3;
        GeoNode* made = nullptr;
        if (isHosts) {
            made = new HostNode(_deaths, "host's " + std::to_string(_real.size()), id);
            EXPECT_EQ(group(parent)->AddChild(made), _model[parent].children.count(id) == 0);
        } else {
            made = isGroup ? group(parent)->CreateChild(id) : group(parent)->CreateGeoChild(id);
        }
        link(parent, addNode(made, id, isGroup, isHosts));
    }

    void addExisting() {
        const std::size_t parent = anyGroup();
        if (parent == kNone) {
            return;
        }
        const std::set<std::size_t> refused = above(parent);  // they would close a circle
        const std::size_t child =
            anyNode([&](std::size_t node) { return refused.count(node) == 0; });
        if (child != kNone) {
            EXPECT_EQ(group(parent)->AddChild(_real[child]), link(parent, child));
        }
    }

    void addNull() {
        const std::size_t parent = anyGroup();
        if (parent != kNone) {
            EXPECT_FALSE(group(parent)->AddChild(nullptr));
        }
    }

    void removeChild() {
        const std::size_t parent = anyGroup();
        if (parent == kNone) {
            return;
        }
        const std::uint64_t id = anyId();
        EXPECT_EQ(group(parent)->RemoveChildById(id), _model[parent].children.erase(id) == 1);
    }

    void clearChildren() {
        const std::size_t parent = anyGroup();
        if (parent != kNone) {
            group(parent)->ClearChildren();
            _model[parent].children.clear();
        }
    }

    void deleteChild() {
        const std::size_t parent = anyGroup();
        if (parent == kNone) {
            return;
        }
        const std::uint64_t id = anyId();
        Deaths expected;
        const auto place = _model[parent].children.find(id);
        const bool found = place != _model[parent].children.end();
        if (found) {
            const std::size_t child = place->second;
            _model[parent].children.erase(place);
            forgetParent(child, parent);
            if (_model[child].parents.empty()) {
                die(child, expected);
            }
        }
        EXPECT_EQ(group(parent)->DeleteChildById(id), found);
        expectDeaths(expected);
        forgetDeadParents();
    }

    void destroyUnlinked() {
        const std::size_t number = anyNode([this](std::size_t node) { return !isLinked(node); });
        if (number == kNone || (_model.size() < 10 && !_ending)) {
            return;
        }
        Deaths expected;
        die(number, expected);
        delete _real[number];
        expectDeaths(expected);
        forgetDeadParents();
    }

    void destroyEverything() {
        _ending = true;
        while (!_model.empty() && !testing::Test::HasFatalFailure()) {
            destroyUnlinked();
        }
    }

    void expectDeaths(const Deaths& expected) {
        EXPECT_EQ(_deaths, expected);
        _deaths.clear();
    }

    void forgetParent(std::size_t child, std::size_t parent) {
        auto& parents = _model[child].parents;
        parents.erase(std::remove(parents.begin(), parents.end(), parent), parents.end());
    }

    /// Nodes of several parents survive one of them with its address; here it is taken off them
    /// before anything follows it or lives at that address.
    void forgetDeadParents() {
        for (auto& entry : _model) {
            compareParents(entry.first);
            const std::vector<std::size_t> parents = entry.second.parents;
            for (const std::size_t parent : parents) {
                if (_model.count(parent) == 0) {
                    _real[entry.first]->RemoveFromParents(group(parent));
                    forgetParent(entry.first, parent);
                }
            }
        }
    }

    // --- attributes -------------------------------------------------------------------------

    void giveAttribute(std::size_t number, int type) {
        const std::string name = "attribute " + std::to_string(_serial++);
        auto* const real = new support::AnyAttribute(_deaths, name, AttributeType(type));
        Deaths expected;
        auto& held = _model[number].attributes;
        const auto same = std::find_if(held.begin(), held.end(),
                                       [type](const auto& one) { return one.type == type; });
        if (same != held.end()) {
            expected.push_back(same->name);
            *same = {type, real, name};
        } else {
            held.push_back({type, real, name});
        }
        EXPECT_TRUE(_real[number]->SetAttribute(real));
        expectDeaths(expected);
    }

    void setAttribute() {
        const std::size_t number = anyNode();
        if (number == kNone) {
            return;
        }
        if (oneIn(10)) {
            EXPECT_FALSE(_real[number]->SetAttribute(nullptr));
            return;
        }
        giveAttribute(number, static_cast<int>(below(6)));
    }

    void setStoredAttribute() {
        const std::size_t number = anyNode();
        if (number != kNone) {
            const auto& held = _model[number].attributes;
            EXPECT_TRUE(_real[number]->SetAttribute(held[below(held.size())].real));
            expectDeaths({});
        }
    }

    void detachAttribute() {
        const std::size_t number = anyNode();
        if (number == kNone) {
            return;
        }
        const int type = static_cast<int>(below(6));
        auto& held = _model[number].attributes;
        const auto place = std::find_if(held.begin(), held.end(),
                                        [type](const auto& one) { return one.type == type; });
        Attribute* const expected = place != held.end() ? place->real : nullptr;
        EXPECT_EQ(_real[number]->GetAttribute(type), expected);
        _real[number]->DeleteAttribute(type);
        expectDeaths({});
        if (place != held.end()) {
            const std::string name = place->name;
            held.erase(place);
            delete expected;
            expectDeaths({name});
        }
    }

    // --- geometry ---------------------------------------------------------------------------

    void addItem() {
        const std::size_t number = anyNode();
        if (number == kNone) {
            return;
        }
        ModelNode::HeldItem item = {below(6), nullptr, "item " + std::to_string(_serial++)};
        if (!oneIn(10)) {
            item.real = new NamedItem(_deaths, item.name, item.id);
        }
        _real[number]->AddGeometry(item.real);
        _model[number].items.push_back(item);
    }

    void detachItem() {
        const std::size_t number = anyNode();
        if (number == kNone) {
            return;
        }
        const std::uint64_t id = below(6);
        auto& items = _model[number].items;
        const auto place = std::find_if(items.begin(), items.end(), [id](const auto& item) {
            return item.real != nullptr && item.id == id;
        });
        _real[number]->DeleteGeometryById(id);
        expectDeaths({});
        if (place != items.end()) {
            const ModelNode::HeldItem item = *place;
            items.erase(place);
            delete item.real;
            expectDeaths({item.name});
        }
    }

    void deleteAllGeometry() {
        const std::size_t number = anyNode();
        if (number == kNone) {
            return;
        }
        Deaths expected;
        for (const auto& item : _model[number].items) {
            if (item.real != nullptr) {
                expected.push_back(item.name);
            }
        }
        _model[number].items.clear();
        _real[number]->DeleteAllGeometry();
        expectDeaths(expected);
    }

    void transferGeometry() {
        const std::size_t to = anyNode();
        const std::size_t from = anyNode();
        if (to == kNone) {
            return;
        }
        if (oneIn(10)) {
            _real[to]->TransferGeometryFrom(nullptr);
            return;
        }
        _real[to]->TransferGeometryFrom(_real[from]);
        if (to != from) {
            auto& source = _model[from].items;
            auto& target = _model[to].items;
            target.insert(target.end(), source.begin(), source.end());
            source.clear();
        }
        expectDeaths({});
    }

    // --- properties -------------------------------------------------------------------------

    void rename() {
        const std::size_t number = anyNode();
        if (number == kNone) {
            return;
        }
        static const std::string names[] = {"", "a", "b", "c", "A longer name for a node"};
        const std::string& name = names[below(5)];
        _model[number].name = name;
        _real[number]->SetName(std::wstring(name.begin(), name.end()));
        _model[number].filterId = static_cast<int>(below(100));
        _real[number]->SetFilterID(_model[number].filterId);
    }

    // --- comparison -------------------------------------------------------------------------

    void compareParents(std::size_t number) {
        EXPECT_EQ(_real[number]->HasParent(), !_model[number].parents.empty());
        if (!asksForContainers()) {
            return;
        }
        std::vector<Node*> parents;
        for (const std::size_t parent : _model[number].parents) {
            parents.push_back(group(parent));
        }
        EXPECT_EQ(_real[number]->Parents(), parents) << "node " << number;
    }

    void compareLists(std::size_t number) {
        std::vector<Attribute*> attributes;
        for (const auto& attribute : _model[number].attributes) {
            attributes.push_back(attribute.real);
            EXPECT_EQ(_real[number]->GetAttribute(attribute.type), attribute.real);
        }
        if (!asksForContainers()) {
            return;
        }
        EXPECT_EQ(*_real[number]->Attributes(), attributes) << "node " << number;
        std::vector<AGeometryItem*> items;
        for (const auto& item : _model[number].items) {
            items.push_back(item.real);
        }
        EXPECT_EQ(_real[number]->Geometry(), items) << "node " << number;
    }

    void compareChildren(std::size_t number) {
        std::map<std::uint64_t, GeoNode*> children;
        for (const auto& entry : _model[number].children) {
            children.emplace(entry.first, _real[entry.second]);
        }
        EXPECT_EQ(_real[number]->HasChildren(), !children.empty()) << "node " << number;
        if (_model[number].isGroup) {
            if (asksForContainers()) {
                EXPECT_EQ(group(number)->Children(), children) << "node " << number;
            }
            const std::uint64_t id = anyId();
            const auto place = children.find(id);
            EXPECT_EQ(group(number)->GetChild(id),
                      place != children.end() ? place->second : nullptr);
        }
    }

    void compareLookups(std::size_t number) {
        const std::uint64_t id = anyId();
        Node* found = nullptr;
        std::vector<std::uint64_t> path = {_model[number].id};
        for (const std::size_t parent : _model[number].parents) {
            if (found == nullptr && _model[parent].id == id) {
                found = group(parent);
            }
        }
        for (std::size_t node = number; !_model[node].parents.empty();) {
            node = _model[node].parents.front();
            path.insert(path.begin(), _model[node].id);
        }
        EXPECT_EQ(_real[number]->GetParent(id), found) << "node " << number;
        const std::unique_ptr<RenderId> renderId(_real[number]->GetRenderId());
        EXPECT_EQ(*renderId, RenderId(path, View3D)) << "node " << number;
    }

    std::string textOf(const ModelNode& node) {
        const auto count = [](const char* what, std::size_t number) {
            return " " + std::string(what) + "(" + std::to_string(number) + ")";
        };
        return "[" + std::to_string(node.id) + "] \"" + node.name + "\"" +
               count("parents", node.parents.size()) + count("attributes", node.attributes.size()) +
               count("geoEntities", node.items.size()) +
               (node.isGroup ? count("children", node.children.size()) : "");
    }

    void compareAll() {
        for (const auto& entry : _model) {
            const std::size_t number = entry.first;
            const ModelNode& node = entry.second;
            EXPECT_EQ(_real[number]->Id(), node.id);
            EXPECT_EQ(_real[number]->GetFilterID(), node.filterId);
            EXPECT_EQ(_real[number]->ToString(), textOf(node));
            compareParents(number);
            compareLists(number);
            compareChildren(number);
            compareLookups(number);
        }
    }

    // --- reports ----------------------------------------------------------------------------

    /// Writes in the model, as nested reports would; stops where the text becomes too long.
    void write(std::size_t number, std::size_t depth, std::string& text) {
        if (text.size() > kLongestReport) {
            return;
        }
        const ModelNode& node = _model[number];
        const std::string blanks(2 * depth, ' ');
        const auto idAndName = [&text](const std::string& indent, const ModelNode& named) {
            text += indent + "  ID = number " + std::to_string(named.id) + "\n";
            text += indent + "  Name = text \"" + named.name + "\"\n";
        };
        text += blanks + (node.isGroup ? "open Node\n" : "open GeoNode\n");
        idAndName(blanks, node);
        for (const auto& item : node.items) {
            if (item.real != nullptr) {
                text += blanks + "  open Geometry\n" + blanks + "    ID = number " +
                        std::to_string(item.id) + "\n" + blanks + "    Type = text \"Vertex\"\n" +
                        blanks + "  close\n";
            }
        }
        for (std::size_t count = 0; count < node.attributes.size(); ++count) {
            text += blanks + "  open Attribute\n" + blanks + "    text \"Type is Unknown\\10\"\n" +
                    blanks + "  close\n";
        }
        for (const std::size_t parent : node.parents) {
            text += blanks + "  open Parent\n";
            idAndName(blanks + "  ", _model[parent]);
            text += blanks + "  close\n";
        }
        std::map<std::string, std::size_t> byName;
        for (const auto& entry : node.children) {
            byName.emplace(_model[entry.second].name, entry.second);
        }
        for (const auto& entry : byName) {
            write(entry.second, depth + 1, text);
        }
        text += blanks + "close\n";
    }

    void report() {
        const std::size_t number = anyNode();
        if (number == kNone) {
            return;
        }
        std::string expected;
        write(number, 0, expected);
        if (expected.size() <= kLongestReport) {
            EXPECT_EQ(support::callsOfReport(*_real[number]), expected);
        }
    }

    static constexpr std::size_t kLongestReport = 1'000'000;

    bool _isShy;
    std::mt19937 _random;
    Deaths _deaths;
    std::map<std::size_t, ModelNode> _model;  // the living
    std::vector<GeoNode*> _real;              // the addresses of all, the dead included
    std::vector<Node*> _groups;               // the same as groups, null for leaves
    int _serial = 0;
    bool _ending = false;
};

TEST(NodeModelTest, RandomOperationsDoWhatTheModelDoes) {
    for (unsigned seed = 1; seed <= 16; ++seed) {
        Walk walk(seed, seed % 2 == 0);
        for (int step = 0; step < 2500; ++step) {
            const std::string operation = walk.Step();
            if (step % 8 == 0 || testing::Test::HasFailure()) {
                walk.CompareAll();
            }
            ASSERT_FALSE(testing::Test::HasFailure())
                << "seed " << seed << ", step " << step << ": " << operation;
        }
    }
}

}  // namespace
}  // namespace KesVizCore
