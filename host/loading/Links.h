#pragma once

/// @file
/// What annotations speak of, asked from both ends.

#include "document/Document.h"

#include <KesVizCore/core/EntityId.h>

#include <map>
#include <string>
#include <unordered_map>
#include <vector>

namespace kesview {

namespace viz = KesVizCore;

/// Turns the links of a document's annotations into entities. Borrows nothing: it may outlive the
/// document.
class LinkedEntities {
public:
    explicit LinkedEntities(const Document& document);

    /// A body's owner is its product, whatever the link says; a product has none. A body or product
    /// that the document does not hold is answered without owner or as a part.
    viz::EntityId EntityOf(const EntityLink& link) const;
    /// Of all links, in their order; what is linked twice is answered once.
    std::vector<viz::EntityId> EntitiesOf(const Annotation& annotation) const;

private:
    std::unordered_map<Id, viz::EntityId> _bodiesAndProducts;
};

/// From what is spoken of, a face most of the time, to the keys of its annotations in the order of
/// the document. An EntityId, whose order ignores the type, may be the key: ids are unique in a
/// document over all types.
using AnnotationsByFace = std::multimap<viz::EntityId, std::string>;

/// With the links of every kind, so that edges, bodies and products answer too.
AnnotationsByFace annotationsByFace(const Document& document);

/// The keys of the annotations that speak of @p entity; none where there are none.
std::vector<std::string> annotationsOf(const AnnotationsByFace& links, const viz::EntityId& entity);

}  // namespace kesview
