#include "commands/AnnotationLinks.h"

#include "commands/Text.h"

#include <algorithm>
#include <set>

namespace kesview {

namespace {

/// What is selected, as links name it.
class Meant {
public:
    explicit Meant(const Document& document) : _document(document) {}

    void Add(const SceneNode& node) {
        switch (node.kind) {
            case SceneNode::Kind::Assembly:
            case SceneNode::Kind::Part:
            case SceneNode::Kind::Bodies:
                addProduct(*node.product);
                break;
            case SceneNode::Kind::Body:
            case SceneNode::Kind::Elements:
                _bodies.insert(node.body->id);
                break;
            case SceneNode::Kind::Face:
                _parts.insert(node.face->id);
                break;
            case SceneNode::Kind::Edge:
                _parts.insert(node.edge->id);
                break;
            case SceneNode::Kind::Annotations:
            case SceneNode::Kind::Group:
                _all = true;
                break;
            case SceneNode::Kind::Annotation:
                _keys.insert(node.annotation->key);
                break;
        }
    }

    void Add(const SavedView& view) {
        _keys.insert(view.members.begin(), view.members.end());
        _all = _all || view.showsAll;
    }

    bool Contains(const Annotation& annotation) const {
        return _all || _keys.count(annotation.key) != 0 ||
               std::any_of(annotation.links.begin(), annotation.links.end(),
                           [this](const EntityLink& link) { return contains(link); });
    }

private:
    bool contains(const EntityLink& link) const {
        return _products.count(link.id) != 0 || _bodies.count(link.id) != 0 ||
               _bodies.count(link.owner) != 0 || _parts.count(link.id) != 0;
    }

    void addProduct(const Product& product) {
        if (!_products.insert(product.id).second) {
            return;
        }
        for (const Body& body : product.bodies) {
            _bodies.insert(body.id);
        }
        for (const Component& component : product.components) {
            addProduct(_document.products.at(component.product));
        }
    }

    const Document& _document;
    std::set<Id> _products;
    std::set<Id> _bodies;
    std::set<Id> _parts;  // faces and edges
    std::set<std::string> _keys;
    bool _all = false;
};

}  // namespace

std::vector<SceneNode> placesOf(const SceneIndex& index, const EntityLink& link) {
    if (link.kind == EntityLink::Kind::Vertex) {
        return {};
    }
    return index.FindAll(nameOf(link.kind) + ":" + std::to_string(link.id));
}

std::vector<const Annotation*> annotationsOf(const SceneIndex& index, const Selection& selection) {
    Meant meant(index.GetDocument());
    for (const SceneNode& node : selection.nodes) {
        meant.Add(node);
    }
    for (const SavedView* view : selection.views) {
        meant.Add(*view);
    }
    std::vector<const Annotation*> found;
    for (const Annotation& annotation : index.GetDocument().annotations) {
        if (meant.Contains(annotation)) {
            found.push_back(&annotation);
        }
    }
    return found;
}

}  // namespace kesview
