/// @file
#include "loading/Load.h"

#include "loading/AnnotationLoader.h"
#include "loading/GeometryLoaders.h"
#include "loading/ViewLoaders.h"

namespace kesview {

std::unique_ptr<LoadedModel> load(Document& document) {
    auto model = std::make_unique<LoadedModel>();
    loadGeometry(document, *model);
    loadAnnotations(document, *model);  // which link to the geometry
    loadViews(document, *model);        // which show annotations
    return model;
}

}  // namespace kesview
