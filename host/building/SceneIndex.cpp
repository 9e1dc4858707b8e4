/// @file
#include "building/SceneIndex.h"

#include "building/IndexWalk.h"
#include "building/PathPattern.h"

#include <KesVizCore/graph/Node.h>

#include <algorithm>
#include <functional>
#include <stdexcept>
#include <utility>

namespace kesview {

namespace {

using Kind = SceneNode::Kind;

constexpr int kMostLevels = 1000;

// --- what a document must be --------------------------------------------------------------------

/// How many levels of assemblies each product has. What is deeper than the limit is refused on the
/// way, so that the call stack has one too.
class Levels {
public:
    explicit Levels(const Document& document)
        : _document(document), _levels(document.products.size(), 0) {}

    int Of(const std::vector<Component>& components, int depth) {
        if (depth > kMostLevels) {
            refuse();
        }
        int most = 0;
        for (const Component& component : components) {
            most = std::max(most, ofProduct(component, depth));
        }
        if (most > kMostLevels) {
            refuse();
        }
        return most;
    }

private:
    int ofProduct(const Component& component, int depth) {
        if (component.product >= _document.products.size()) {
            throw std::runtime_error("Component " + std::to_string(component.id) +
                                     " is of a product that does not exist.");
        }
        int& levels = _levels[component.product];
        if (levels == 0) {
            levels = 1 + Of(_document.products[component.product].components, depth + 1);
        }
        return levels;
    }

    [[noreturn]] static void refuse() {
        throw std::runtime_error(
            "The assembly is nested more than 1,000 levels deep, or a product "
            "contains itself; it cannot be shown.");
    }

    const Document& _document;
    std::vector<int> _levels;
};

const Document& checked(const Document& document) {
    Levels levels(document);
    levels.Of(document.roots, 0);
    for (const Product& product : document.products) {
        levels.Of(product.components, 1);
    }
    return document;
}

// --- finding among siblings ---------------------------------------------------------------------

template <typename Element>
bool isAmong(const std::vector<Element>& elements, const Element* element) {
    const std::less<const Element*> before;
    return !elements.empty() && !before(element, elements.data()) &&
           !before(&elements.back(), element);
}

template <typename Element>
std::size_t placeIn(const std::vector<Element>& elements, const Element* element) {
    return static_cast<std::size_t>(element - elements.data());
}

template <typename Element>
const Element* elementOf(const std::vector<Element>& elements, Id id) {
    const auto found = std::find_if(elements.begin(), elements.end(),
                                    [&](const Element& element) { return element.id == id; });
    return found != elements.end() ? &*found : nullptr;
}

void appendName(std::string& path, const std::string& name) {
    path += (path.empty() ? "" : "/") + escapedForPath(name);
}

}  // namespace

SceneIndex::SceneIndex(const Document& document)
    : _document(checked(document)),
      _names(document),
      _annotationContainer(IdsBeyond(document).AnnotationContainer()) {
    for (const Component& root : document.roots) {
        _components.emplace(root.id, &root);
    }
    for (const Product& product : document.products) {
        for (const Component& component : product.components) {
            _components.emplace(component.id, &component);
        }
        for (const Body& body : product.bodies) {
            _bodies.emplace(body.id, &body);
        }
    }
}

void SceneIndex::ForEachNode(const Callback& callback) const {
    IndexWalk(*this, callback).Run();
}

void forEachNode(const Document& document, const SceneIndex::Callback& callback) {
    SceneIndex(document).ForEachNode(callback);
}

// --- by render id -------------------------------------------------------------------------------

std::optional<SceneNode> SceneIndex::Find(const viz::RenderId& id) const {
    if (id.Length() < 2 || id[0] != viz::Node::GetRootNodeId()) {
        return std::nullopt;
    }
    SceneNode node;
    for (int at = 1; at < id.Length(); ++at) {
        if (!enter(node, id[at - 1], id[at])) {
            return std::nullopt;
        }
    }
    node.renderId = id;
    node.renderId.SetOrigin(viz::View3D);
    return node;
}

/// @p above is the id of @p node itself.
bool SceneIndex::enter(SceneNode& node, Id above, Id id) const {
    if (above == viz::Node::GetRootNodeId()) {
        return enterComponent(node, id) || enterAnnotations(node, above, id);
    }
    switch (node.kind) {
        case Kind::Assembly:
            return enterComponent(node, id) || enterBody(node, id);
        case Kind::Part:
        case Kind::Bodies:
            return enterBody(node, id);
        case Kind::Body:
        case Kind::Elements:
            return enterElement(node, above, id);
        case Kind::Annotations:
        case Kind::Group:
            return enterAnnotations(node, above, id);
        case Kind::Annotation:
            return true;  // the places of its texts
        default:
            return false;
    }
}

bool SceneIndex::enterComponent(SceneNode& node, Id id) const {
    const bool isRoot = node.components.empty();
    const auto& siblings = isRoot ? _document.roots : node.product->components;
    const auto found = _components.find(id);
    if (found == _components.end() || !isAmong(siblings, found->second)) {
        return false;
    }
    const std::size_t place = placeIn(siblings, found->second);
    appendName(node.path, isRoot
                              ? _names.Root(place)
                              : _names.Component(placeIn(_document.products, node.product), place));
    node.components.push_back(found->second);
    node.product = &_document.products[found->second->product];
    node.entity = entityOf(*node.product, *found->second);
    node.kind = node.product->components.empty() ? Kind::Part : Kind::Assembly;
    return true;
}

bool SceneIndex::enterBody(SceneNode& node, Id id) const {
    if (node.kind == Kind::Assembly) {
        if (id != node.product->id || node.product->bodies.empty()) {
            return false;
        }
        node.kind = Kind::Bodies;
        node.entity = entityOf(*node.product);
        return true;
    }
    const auto found = _bodies.find(id);
    if (found == _bodies.end() || !isAmong(node.product->bodies, found->second)) {
        return false;
    }
    node.body = found->second;
    appendName(node.path, _names.Body(placeIn(_document.products, node.product),
                                      placeIn(node.product->bodies, node.body)));
    node.entity = entityOf(*node.product, *node.body);
    node.kind = Kind::Body;
    return true;
}

bool SceneIndex::enterElement(SceneNode& node, Id above, Id id) const {
    if (node.kind == Kind::Body) {
        node.kind = Kind::Elements;
        return id == viz::FaceType || id == viz::PointSetType ||
               id == static_cast<Id>(typeOfEdges(*node.body));
    }
    if (above == viz::FaceType) {
        node.face = elementOf(node.body->faces, id);
    } else if (above == static_cast<Id>(typeOfEdges(*node.body))) {
        node.edge = elementOf(node.body->edges, id);
    }
    if (node.face != nullptr) {
        node.kind = Kind::Face;
        node.entity = entityOf(*node.body, *node.face);
        appendName(node.path, sceneNameOf(*node.face));
    } else if (node.edge != nullptr) {
        node.kind = Kind::Edge;
        node.entity = entityOf(*node.body, *node.edge);
        appendName(node.path, sceneNameOf(*node.edge));
    }
    return node.face != nullptr || node.edge != nullptr;
}

bool SceneIndex::enterAnnotations(SceneNode& node, Id above, Id id) const {
    const auto isOfType = [](const Annotation& annotation, Id type) {
        return static_cast<Id>(entityOf(annotation).Type) == type;
    };
    const std::vector<Annotation>& all = _document.annotations;
    if (node.kind == Kind::Annotations) {
        node.kind = Kind::Group;
        return std::any_of(all.begin(), all.end(),
                           [&](const Annotation& each) { return isOfType(each, id); });
    }
    if (node.kind == Kind::Group) {
        node.annotation = elementOf(all, id);
        if (node.annotation == nullptr || !isOfType(*node.annotation, above)) {
            return false;
        }
        node.kind = Kind::Annotation;
        node.entity = entityOf(*node.annotation);
        appendName(node.path, sceneNameOf(*node.annotation));
        return true;
    }
    node.kind = Kind::Annotations;
    appendName(node.path, annotationsName);
    return id == _annotationContainer && !all.empty();
}

// --- by what people write -----------------------------------------------------------------------

void SceneIndex::ForEachMatch(const std::string& selector, const Callback& callback) const {
    const std::optional<viz::RenderId> id = parseRenderId(selector);
    const std::optional<SceneNode> node = id.has_value() ? Find(*id) : std::nullopt;
    if (node.has_value()) {
        callback(*node);
        return;
    }
    for (const Annotation& annotation : _document.annotations) {
        if (!selector.empty() && annotation.key == selector) {
            forEachEntity({EntityName::Kind::Annotation, annotation.id}, callback);
            return;
        }
    }
    const std::optional<EntityName> entity = parseEntityText(selector);
    if (entity.has_value()) {
        forEachEntity(*entity, callback);
    } else {
        forEachPath(selector, callback);
    }
}

std::vector<SceneNode> SceneIndex::FindAll(const std::string& selector) const {
    std::vector<SceneNode> nodes;
    ForEachMatch(selector, [&](const SceneNode& node) {
        nodes.push_back(node);
        return NextStep::Into;
    });
    return nodes;
}

namespace {

bool isNamed(const SceneNode& node, const EntityName& name) {
    switch (name.kind) {
        case EntityName::Kind::Instance:
            return node.entity.ID == name.id &&
                   (node.kind == Kind::Part || node.kind == Kind::Assembly);
        case EntityName::Kind::Product:
            return (node.kind == Kind::Part || node.kind == Kind::Assembly) &&
                   node.product->id == name.id;
        case EntityName::Kind::Body:
            return node.kind == Kind::Body && node.body->id == name.id;
        case EntityName::Kind::Face:
            return node.kind == Kind::Face && node.face->id == name.id;
        case EntityName::Kind::Edge:
            return node.kind == Kind::Edge && node.edge->id == name.id;
        case EntityName::Kind::Annotation:
            return node.kind == Kind::Annotation && node.annotation->id == name.id;
    }
    return false;
}

/// The body that has that face or edge, so that no other needs to be searched at each of its uses.
const Body* ownerOf(const Document& document, const EntityName& name) {
    for (const Product& product : document.products) {
        for (const Body& body : product.bodies) {
            if (name.kind == EntityName::Kind::Face ? elementOf(body.faces, name.id) != nullptr
                                                    : elementOf(body.edges, name.id) != nullptr) {
                return &body;
            }
        }
    }
    return nullptr;
}

}  // namespace

void SceneIndex::forEachEntity(const EntityName& name, const Callback& callback) const {
    const bool isElement =
        name.kind == EntityName::Kind::Face || name.kind == EntityName::Kind::Edge;
    const Body* const owner = isElement ? ownerOf(_document, name) : nullptr;
    ForEachNode([&](const SceneNode& node) {
        if (isNamed(node, name)) {
            return callback(node);
        }
        return node.kind == Kind::Body && node.body != owner ? NextStep::Over : NextStep::Into;
    });
}

void SceneIndex::forEachPath(const std::string& pattern, const Callback& callback) const {
    const PathPattern paths(pattern);
    ForEachNode([&](const SceneNode& node) {
        if (paths.Matches(node.path)) {
            return callback(node);
        }
        return paths.CanMatchBelow(node.path) ? NextStep::Into : NextStep::Over;
    });
}

}  // namespace kesview
