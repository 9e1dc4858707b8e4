/// @file
#include "building/IndexWalk.h"

#include "building/PathPattern.h"

#include <KesVizCore/graph/Node.h>

namespace kesview {

namespace {

using Kind = SceneNode::Kind;

}  // namespace

IndexWalk::IndexWalk(const SceneIndex& index, const SceneIndex::Callback& callback)
    : _index(index), _callback(callback) {}

void IndexWalk::Run() {
    _node.renderId = viz::RenderId({viz::Node::GetRootNodeId()}, viz::View3D);
    visitComponents(_index.GetDocument().roots);
    visitAnnotations();
}

// Kind, entity and pointers are set by the caller; the path is put on here and taken off again.
template <typename Below>
void IndexWalk::visit(Id id, const std::string& name, const Below& below) {
    const std::size_t pathLength = _node.path.size();
    const int idLength = _node.renderId.Length();
    _node.path += (_node.path.empty() ? "" : "/") + escapedForPath(name);
    _node.renderId.AddValue(id);
    const NextStep next = _callback(_node);
    _stopped = next == NextStep::Stop;
    if (next == NextStep::Into) {
        below();
    }
    _node.path.resize(pathLength);
    _node.renderId.SetLength(idLength);
}

void IndexWalk::visitComponents(const std::vector<Component>& components) {
    const Product* const owner = _node.product;
    const auto& products = _index.GetDocument().products;
    const std::size_t product =
        owner != nullptr ? static_cast<std::size_t>(owner - products.data()) : 0;
    for (std::size_t i = 0; i < components.size() && !_stopped; ++i) {
        visitComponent(components[i], owner != nullptr ? _index.Names().Component(product, i)
                                                       : _index.Names().Root(i));
        _node.product = owner;
    }
}

void IndexWalk::visitComponent(const Component& component, const std::string& name) {
    const Product& product = _index.GetDocument().products[component.product];
    _node.components.push_back(&component);
    _node.product = &product;
    _node.kind = product.components.empty() ? Kind::Part : Kind::Assembly;
    _node.entity = entityOf(product, component);
    visit(component.id, name, [&] {
        visitComponents(product.components);
        if (!_stopped) {
            visitBodies();
        }
    });
    _node.components.pop_back();
}

void IndexWalk::visitBodies() {
    const Product& product = *_node.product;
    const auto place = static_cast<std::size_t>(&product - _index.GetDocument().products.data());
    const int idLength = _node.renderId.Length();
    if (!product.components.empty()) {
        _node.renderId.AddValue(product.id);
    }
    for (std::size_t i = 0; i < product.bodies.size() && !_stopped; ++i) {
        _node.body = &product.bodies[i];
        _node.kind = Kind::Body;
        _node.entity = entityOf(product, *_node.body);
        visit(_node.body->id, _index.Names().Body(place, i), [&] { visitElements(); });
    }
    _node.body = nullptr;
    _node.renderId.SetLength(idLength);
}

void IndexWalk::visitElements() {
    const Body& body = *_node.body;
    const auto nothing = [] {};
    _node.renderId.AddValue(viz::FaceType);
    for (std::size_t i = 0; i < body.faces.size() && !_stopped; ++i) {
        _node.face = &body.faces[i];
        _node.kind = Kind::Face;
        _node.entity = entityOf(body, *_node.face);
        visit(_node.face->id, sceneNameOf(*_node.face), nothing);
    }
    _node.face = nullptr;
    _node.renderId.SetValue(_node.renderId.Length() - 1, static_cast<Id>(typeOfEdges(body)));
    for (std::size_t i = 0; i < body.edges.size() && !_stopped; ++i) {
        _node.edge = &body.edges[i];
        _node.kind = Kind::Edge;
        _node.entity = entityOf(body, *_node.edge);
        visit(_node.edge->id, sceneNameOf(*_node.edge), nothing);
    }
    _node.edge = nullptr;
    _node.renderId.SetLength(_node.renderId.Length() - 1);
}

void IndexWalk::visitAnnotations() {
    const auto& annotations = _index.GetDocument().annotations;
    if (_stopped || annotations.empty()) {
        return;
    }
    _node.kind = Kind::Annotations;
    _node.product = nullptr;
    _node.entity = viz::EntityId();
    visit(_index.AnnotationContainer(), annotationsName, [&] {
        const int idLength = _node.renderId.Length();
        for (std::size_t i = 0; i < annotations.size() && !_stopped; ++i) {
            _node.annotation = &annotations[i];
            _node.kind = Kind::Annotation;
            _node.entity = entityOf(annotations[i]);
            _node.renderId.AddValue(static_cast<Id>(_node.entity.Type));
            visit(annotations[i].id, sceneNameOf(annotations[i]), [] {});
            _node.renderId.SetLength(idLength);
        }
    });
}

}  // namespace kesview
