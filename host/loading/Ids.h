#pragma once

/// @file
/// The ids by which the library knows what a document holds, each made in one place.

#include "document/Document.h"

#include <KesVizCore/core/EntityId.h>

#include <cstddef>
#include <string>

namespace kesview {

namespace viz = KesVizCore;

/// "face 12", "edge 13", "body 14", "annotation 77", "view 80", "capture 81": unique, and the same
/// each time the same document is loaded. All kinds of annotations share one word.
std::wstring visualIdOf(const viz::EntityId& entity);

viz::EntityType entityTypeOf(AnnotationKind kind);
/// "Dimension", "Tolerance", …: of the types that entityTypeOf answers.
std::string nameOfAnnotations(viz::EntityType type);

/// WireType for the edges of a body that is nothing but a wire, EdgeType for all others: what the
/// node above them in a scene is called, by which views tell lines of the model from outlines.
viz::EntityType typeOfEdges(const Body& body);

viz::EntityId entityOf(const Product& product, const Body& body);
viz::EntityId entityOf(const Body& body, const Face& face);
viz::EntityId entityOf(const Body& body, const Edge& edge);
viz::EntityId entityOf(const Annotation& annotation);
viz::EntityId entityOf(const SavedView& view);
/// AssemblyType where the product has components, PartType otherwise; no owner.
viz::EntityId entityOf(const Product& product);
/// The instance: the type is that of the product, which is the owner.
viz::EntityId entityOf(const Product& product, const Component& component);

/// The ids behind the last one of the document: first those of the captures, one for each saved
/// view in their order, then that of the node that holds all annotations.
class IdsBeyond {
public:
    explicit IdsBeyond(const Document& document);
    /// The capture of Document::views[view].
    Id Capture(std::size_t view) const { return _highest + 1 + view; }
    Id AnnotationContainer() const { return _highest + 1 + _viewCount; }

private:
    Id _highest;
    std::size_t _viewCount;
};

}  // namespace kesview
