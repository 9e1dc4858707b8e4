#include "core/Allocation.h"
#include "report/ReportWriter.h"

#include <KesVizCore/graph/Node.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <typeinfo>
#include <vector>

namespace KesVizCore {

namespace {

constexpr std::uint64_t kRootNodeId = 1;

/// The node as a group of this very class. A class that the host derived answers null: its own
/// destructor and report must run as the host wrote them.
Node* plainGroup(GeoNode* node) {
    return typeid(*node) == typeid(Node) ? static_cast<Node*>(node) : nullptr;
}

}  // namespace

Node::Node(const std::uint64_t& id) : GeoNode(id) {
    _isGroup = true;
}

Node::Node(const Node& other) : GeoNode(other), _children(other._children) {
    _isGroup = true;
}

Node& Node::operator=(const Node& other) = default;

Node::~Node() {
    destroyChildren();
}

// --- identifiers --------------------------------------------------------------------------------

std::uint64_t Node::GetRootNodeId() {
    return kRootNodeId;
}

std::uint64_t Node::GetNextId() {
    return ++NodeCounter;
}

Node* Node::CreateRoot() {
    NodeCounter = kRootNodeId;
    return nullWhenExhausted([] {
        std::unique_ptr<Node> root(new Node(kRootNodeId));
        root->SetName(L"ROOT");
        return root.release();
    });
}

// --- children -----------------------------------------------------------------------------------

bool Node::HasChildren() const {
    return !_children.empty();
}

ChildRange Node::EachChild() const {
    return ChildRange(_children);
}

const std::map<std::uint64_t, GeoNode*>& Node::Children() const {
    return _children.AsMap();
}

Node* Node::CreateChild(const std::uint64_t& id) {
    return nullWhenExhausted([&] {
        std::unique_ptr<Node> child(new Node(id));
        AddChild(child.get());
        return child.release();
    });
}

GeoNode* Node::CreateGeoChild(const std::uint64_t& id) {
    return nullWhenExhausted([&] {
        std::unique_ptr<GeoNode> child(new GeoNode(id));
        AddChild(child.get());
        return child.release();
    });
}

bool Node::AddChild(GeoNode* child) {
    if (child == nullptr) {
        return false;
    }
    if (!_children.Insert(child->_id, child)) {
        return false;
    }
    try {
        child->AddToParents(this);
    } catch (...) {
        _children.Erase(child->_id);
        throw;
    }
    return true;
}

GeoNode* Node::GetChild(const std::uint64_t& id) const {
    return _children.ChildOf(id);
}

bool Node::RemoveChildById(const std::uint64_t& id) {
    return _children.Erase(id);
}

bool Node::DeleteChildById(const std::uint64_t& id) {
    GeoNode* const child = GetChild(id);
    if (child == nullptr) {
        return false;
    }
    eraseChildNode(child, id);
    child->RemoveFromParents(this);
    if (!child->HasParent()) {
        delete child;
    }
    return true;
}

void Node::eraseChildNode(GeoNode* child, const std::uint64_t& id) {
    if (child != nullptr) {
        _children.Erase(id);
    }
}

void Node::ClearChildren() {
    _children.Clear();
}

// By id, but for a child that took another id by assignment after it was linked.
ChildTable::Iterator Node::placeOf(const GeoNode& child) const {
    ChildTable::Iterator place = _children.Find(child._id);
    if (place == _children.end() || place->child != &child) {
        place = _children.begin();
        while (place->child != &child) {
            ++place;
        }
    }
    return place;
}

// Children are destroyed before their parents, each whole before the next. A walk takes the place
// of nested destructors: it goes down to a group whose own children are gone and destroys that
// one, whose destructor then has nothing left to walk. It needs no memory, since destructors must
// not fail: the way back up is the child's only entry of parents, which is overwritten in the rare
// case that it names another node, and the place in the parent's map is found again. So it is after
// each child, since a destructor of the host's may link and unlink others.
void Node::destroyChildren() {
    Node* group = this;
    auto place = group->_children.begin();
    while (true) {
        if (place == group->_children.end()) {
            group->_children.Clear();
            if (group == this) {
                return;
            }
            Node* const parent = group->_parents.front();
            const std::uint64_t id = parent->placeOf(*group)->id;
            delete group;
            group = parent;
            place = group->_children.After(id);
            continue;
        }
        GeoNode* const child = place->child;
        if (child->_parents.size() != 1) {
            ++place;
            continue;
        }
        Node* const childGroup = plainGroup(child);
        if (childGroup == nullptr || childGroup->_children.empty()) {
            const std::uint64_t id = place->id;
            delete child;
            place = group->_children.After(id);
            continue;
        }
        childGroup->_parents.set(childGroup->_parents.begin(), group);
        group = childGroup;
        place = group->_children.begin();
    }
}

// --- text forms ---------------------------------------------------------------------------------

// A stack of nodes still to write takes the place of recursion; null stands for "close the element
// that is open".
bool Node::GetReport(AReport& report) {
    ReportWriter writer(report);
    std::vector<GeoNode*> stack;
    const auto writeGroup = [&](Node& group) {
        writer.OpenElement("Node");
        writer.AddAttribute("ID", group._id);
        writer.AddAttribute("Name", group._name.Get());
        group.getReport(report);
        stack.push_back(nullptr);
        group.pushReportedChildren(stack);
    };
    writeGroup(*this);
    while (!stack.empty()) {
        GeoNode* const next = stack.back();
        stack.pop_back();
        if (next == nullptr) {
            writer.CloseElement();
        } else if (Node* const group = plainGroup(next)) {
            writeGroup(*group);
        } else {
            next->GetReport(report);
        }
    }
    return true;
}

// The last by name goes first, so that the stack hands them out in the order of their names.
void Node::pushReportedChildren(std::vector<GeoNode*>& stack) const {
    const std::size_t below = stack.size();
    for (const ChildTable::Entry& entry : _children) {
        stack.push_back(entry.child);
    }
    const auto first = stack.begin() + static_cast<std::ptrdiff_t>(below);
    // A stable sort keeps children of one name in the order of their ids; the first is written.
    std::stable_sort(first, stack.end(), [](const GeoNode* one, const GeoNode* other) {
        return CompactName::Compare(one->_name, other->_name) < 0;
    });
    const auto sameName = [](const GeoNode* one, const GeoNode* other) {
        return CompactName::Compare(one->_name, other->_name) == 0;
    };
    stack.erase(std::unique(first, stack.end(), sameName), stack.end());
    std::reverse(first, stack.end());
}

std::string Node::ToString() const {
    return GeoNode::ToString() + " children(" + std::to_string(_children.size()) + ")";
}

}  // namespace KesVizCore
