/// @file
#include "loading/Links.h"

#include "loading/Ids.h"

#include <algorithm>

namespace kesview {

LinkedEntities::LinkedEntities(const Document& document) {
    for (const Product& product : document.products) {
        _bodiesAndProducts.emplace(product.id, entityOf(product));
        for (const Body& body : product.bodies) {
            _bodiesAndProducts.emplace(body.id, entityOf(product, body));
        }
    }
}

viz::EntityId LinkedEntities::EntityOf(const EntityLink& link) const {
    switch (link.kind) {
        case EntityLink::Kind::Face:
            return {link.owner, viz::FaceType, link.id};
        case EntityLink::Kind::Edge:
            return {link.owner, viz::EdgeType, link.id};
        case EntityLink::Kind::Vertex:
            return {link.owner, viz::VertexType, link.id};
        case EntityLink::Kind::Body:
        case EntityLink::Kind::Product:
            break;
    }
    const auto known = _bodiesAndProducts.find(link.id);
    if (known != _bodiesAndProducts.end()) {
        return known->second;
    }
    const bool isBody = link.kind == EntityLink::Kind::Body;
    return {0, isBody ? viz::BodyType : viz::PartType, link.id};
}

std::vector<viz::EntityId> LinkedEntities::EntitiesOf(const Annotation& annotation) const {
    std::vector<viz::EntityId> entities;
    for (const EntityLink& link : annotation.links) {
        const viz::EntityId entity = EntityOf(link);
        if (std::find(entities.begin(), entities.end(), entity) == entities.end()) {
            entities.push_back(entity);
        }
    }
    return entities;
}

AnnotationsByFace annotationsByFace(const Document& document) {
    const LinkedEntities entities(document);
    AnnotationsByFace links;
    for (const Annotation& annotation : document.annotations) {
        for (const viz::EntityId& entity : entities.EntitiesOf(annotation)) {
            links.emplace(entity, annotation.key);
        }
    }
    return links;
}

std::vector<std::string> annotationsOf(const AnnotationsByFace& links,
                                       const viz::EntityId& entity) {
    std::vector<std::string> keys;
    const auto [begin, end] = links.equal_range(entity);
    std::for_each(begin, end, [&](const auto& link) { keys.push_back(link.second); });
    return keys;
}

}  // namespace kesview
