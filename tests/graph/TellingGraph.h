#pragma once

/// @file
/// Attributes and nodes that tell when they are destroyed, as a host derives them.

#include <KesVizCore/graph/Attribute.h>
#include <KesVizCore/graph/Node.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace KesVizCore::support {

/// What was destroyed, in that order.
using Deaths = std::vector<std::string>;

/// An attribute of any kind that tells its name when it is destroyed.
template <typename Kind>
class TellingAttribute : public Kind {
public:
    template <typename... Arguments>
    TellingAttribute(Deaths& deaths, std::string name, Arguments&&... arguments)
        : Kind(std::forward<Arguments>(arguments)...), _deaths(deaths), _name(std::move(name)) {}
    ~TellingAttribute() override { _deaths.push_back(_name); }
    TellingAttribute(const TellingAttribute&) = delete;
    TellingAttribute& operator=(const TellingAttribute&) = delete;

private:
    Deaths& _deaths;
    std::string _name;
};

/// An attribute of a type that the host chooses.
class HostAttribute : public Attribute {
public:
    explicit HostAttribute(AttributeType type) : Attribute(type) {}
};

using AnyAttribute = TellingAttribute<HostAttribute>;

/// An attribute that does something when it is destroyed.
class ActingAttribute : public HostAttribute {
public:
    ActingAttribute(AttributeType type, std::function<void()> act)
        : HostAttribute(type), _act(std::move(act)) {}
    ~ActingAttribute() override { _act(); }
    ActingAttribute(const ActingAttribute&) = delete;
    ActingAttribute& operator=(const ActingAttribute&) = delete;

private:
    std::function<void()> _act;
};

/// A node of the host's own class, which tells its name when it is destroyed, a group also the
/// number of children that it still sees then.
class HostNode : public Node {
public:
    HostNode(Deaths& deaths, std::string name, std::uint64_t id)
        : Node(id), _deaths(deaths), _name(std::move(name)) {}
    ~HostNode() override {
        _deaths.push_back(_name + " with " + std::to_string(Children().size()) + " children");
    }
    HostNode(const HostNode&) = delete;
    HostNode& operator=(const HostNode&) = delete;

private:
    Deaths& _deaths;
    std::string _name;
};

class HostLeaf : public GeoNode {
public:
    HostLeaf(Deaths& deaths, std::string name, std::uint64_t id)
        : GeoNode(id), _deaths(deaths), _name(std::move(name)) {}
    ~HostLeaf() override { _deaths.push_back(_name); }
    HostLeaf(const HostLeaf&) = delete;
    HostLeaf& operator=(const HostLeaf&) = delete;

private:
    Deaths& _deaths;
    std::string _name;
};

/// A root that lives as long as the test.
inline std::unique_ptr<Node> newRoot() {
    return std::unique_ptr<Node>(Node::CreateRoot());
}

}  // namespace KesVizCore::support
