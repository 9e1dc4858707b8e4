#pragma once

/// @file
/// Fills the library's data model from a document, through loaders.

#include "document/Document.h"

#include <KesVizCore/model/VizContainer.h>
#include <KesVizCore/pmi/VizPMICollection.h>
#include <KesVizCore/pmi/VizPMIContainer.h>

#include <memory>
#include <string>
#include <vector>

namespace kesview {

namespace viz = KesVizCore;

/// The data model of one document. A mesh for each body that has faces or edges, a wire or point
/// set for the others, once for each product however often it is used; in the body's own frame.
///
/// Entities: a face is EntityId(body id, FaceType, face id), an edge the same with EdgeType, a
/// body EntityId(product id, BodyType, body id), an annotation EntityId(0, its type, id), a view
/// EntityId(0, ViewType, id). A capture and a view stand for each saved view; the capture has an
/// entity of its own from Document ids above all others.
struct LoadedModel {
    viz::VizContainer geometry{1};
    viz::VizPMICollection::EntityMap elements;  ///< borrowed by views and captures: outlives pmi
    viz::VizPMIContainer pmi{2};
};

/// Moves the points out of @p document, whose structure, names, annotations' semantics and views
/// stay. The 3D render ids are still empty: the renderers set them.
std::unique_ptr<LoadedModel> load(Document& document);

/// UTF-8 to wide text and back; what is not UTF-8 is taken byte by byte.
std::wstring widen(const std::string& utf8);
std::string narrow(const std::wstring& text);

}  // namespace kesview
