#pragma once

/// @file
/// Loaders for the annotations, what they mean, and the views and captures that show them.

#include "Annotations.h"

#include <KesVizCore/core/EntityId.h>
#include <KesVizCore/pmi/VizPMICollection.h>
#include <KesVizCore/pmi/VizPMIContainer.h>

#include <map>
#include <string>

namespace host {

namespace viz = KesVizCore;

/// Fills @p pmi, and adds the annotations to @p elements, which holds the geometry already and
/// must outlive @p pmi: views and captures borrow it.
void loadPmi(const Annotations& source, viz::VizPMICollection::EntityMap& elements,
             viz::VizPMIContainer& pmi);

/// From a face to the mechanical ids of its annotations. Ids are unique in this model over all
/// types, so that an EntityId, whose order ignores the type, may be the key.
using AnnotationsByFace = std::multimap<viz::EntityId, std::wstring>;
AnnotationsByFace annotationsByFace(const viz::VizPMIContainer& pmi);

}  // namespace host
