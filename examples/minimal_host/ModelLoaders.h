#pragma once

/// @file
/// Loaders: they turn what the reader has read into elements of the data model.

#include "Bracket.h"

#include <KesVizCore/model/AVizEdgeLoader.h>
#include <KesVizCore/model/VizContainer.h>
#include <KesVizCore/model/VizEdge.h>
#include <KesVizCore/pmi/VizPMICollection.h>

#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace host {

namespace viz = KesVizCore;

/// What @p loader loads, as what it is; throws std::bad_alloc where there is nothing.
template <typename Element, typename Loader>
std::unique_ptr<Element> load(Loader&& loader) {
    std::unique_ptr<Element> element(static_cast<Element*>(loader.Load()));
    if (element == nullptr) {
        throw std::bad_alloc();
    }
    return element;
}

/// Loads an edge of the model or a line of an annotation.
class EdgeLoader : public viz::AVizEdgeLoader {
public:
    /// @p points, x, y, z triples, must outlive the loader.
    explicit EdgeLoader(const std::vector<float>& points) : _points(points) {}
    /// Without these the edge has no names.
    void SetNames(const viz::EntityId& entity, std::wstring mechanicalId);

protected:
    viz::VizElement* createAndFill() override;

private:
    const std::vector<float>& _points;
    viz::EntityId _entity;
    std::wstring _mechanicalId;
};

/// "face 11": the name by which an element is drawn.
std::wstring visualIdOf(const viz::EntityId& entity);

/// A mesh for each instance, with the faces and edges of its body where that is used for the first
/// time; where it is used again, the scene refers to the first, and the mesh is empty.
void loadGeometry(const Model& model, viz::VizContainer& geometry);

/// Every element of the geometry that stands for an entity.
viz::VizPMICollection::EntityMap elementsOf(const viz::VizContainer& geometry);

}  // namespace host
