#pragma once

/// @file
/// Elements of the data model, made as a host makes them.

#include <KesVizCore/KesVizCore.h>

#include <memory>

namespace bench {

namespace viz = KesVizCore;

/// A loader of any kind that leaves its elements empty.
template <typename Base>
class EmptyLoader final : public Base {
protected:
    viz::VizElement* createAndFill() override { return this->makeOne(); }
};

/// A new element, by the loader of its kind: `load<viz::AVizEdgeLoader, viz::VizEdge>()`.
template <typename Loader, typename Element>
std::unique_ptr<Element> load() {
    return std::unique_ptr<Element>(static_cast<Element*>(EmptyLoader<Loader>().Load()));
}

}  // namespace bench
