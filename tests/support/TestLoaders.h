#pragma once

/// @file
/// A host's loaders for every kind of element, short words to load one, and elements whose death a
/// test can see.

#include <KesVizCore/model/AVizCaptureLoader.h>
#include <KesVizCore/model/AVizEdgeLoader.h>
#include <KesVizCore/model/AVizFaceLoader.h>
#include <KesVizCore/model/AVizMeshLoader.h>
#include <KesVizCore/model/AVizPointSetLoader.h>
#include <KesVizCore/model/AVizPointsLoader.h>
#include <KesVizCore/model/AVizPolygonLoader.h>
#include <KesVizCore/model/AVizPolygonLoopLoader.h>
#include <KesVizCore/model/AVizTextLoader.h>
#include <KesVizCore/model/AVizViewLoader.h>
#include <KesVizCore/model/AVizWireLoader.h>
#include <KesVizCore/model/VizCapture.h>
#include <KesVizCore/model/VizEdge.h>
#include <KesVizCore/model/VizFace.h>
#include <KesVizCore/model/VizMesh.h>
#include <KesVizCore/model/VizPointSet.h>
#include <KesVizCore/model/VizPoints.h>
#include <KesVizCore/model/VizPolygon.h>
#include <KesVizCore/model/VizPolygonLoop.h>
#include <KesVizCore/model/VizText.h>
#include <KesVizCore/model/VizView.h>
#include <KesVizCore/model/VizWire.h>
#include <KesVizCore/pmi/AVizPMILoader.h>
#include <KesVizCore/pmi/VizPMI.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace KesVizCore::support {

/// A host's loader of any kind, with the parts that the library keeps for hosts open to tests: it
/// makes an element, has a callable fill it, and answers it.
template <typename Base, typename Element>
class FillingLoader : public Base {
public:
    using Made = Element;
    using Fill = std::function<void(Element&)>;

    explicit FillingLoader(Fill fill = Fill()) : _fill(std::move(fill)) {}

    VizElement* createAndFill() override {
        std::unique_ptr<Element> element(static_cast<Element*>(makeOne()));
        if (element != nullptr && _fill) {
            _fill(*element);
        }
        return element.release();
    }

    using Base::_transformation;
    using Base::getNextID;
    using Base::IsIdentityTranformation;
    using Base::makeOne;

private:
    Fill _fill;
};

class EdgeLoader : public FillingLoader<AVizEdgeLoader, VizEdge> {
public:
    using AVizEdgeLoader::setIndices;
    using FillingLoader::FillingLoader;
};

class PointsLoader : public FillingLoader<AVizPointsLoader, VizPoints> {
public:
    using AVizPointsLoader::setIndices;
    using FillingLoader::FillingLoader;
};

class TextLoader : public FillingLoader<AVizTextLoader, VizText> {
public:
    using AVizTextLoader::setFontAttrs;
    using FillingLoader::FillingLoader;
};

class PMILoader : public FillingLoader<AVizPMILoader, VizPMI> {
public:
    using AVizPMILoader::setGroupAndType;
    using FillingLoader::FillingLoader;
};

using FaceLoader = FillingLoader<AVizFaceLoader, VizFace>;
using PolygonLoader = FillingLoader<AVizPolygonLoader, VizPolygon>;
using PolygonLoopLoader = FillingLoader<AVizPolygonLoopLoader, VizPolygonLoop>;
using MeshLoader = FillingLoader<AVizMeshLoader, VizMesh>;
using WireLoader = FillingLoader<AVizWireLoader, VizWire>;
using PointSetLoader = FillingLoader<AVizPointSetLoader, VizPointSet>;
using ViewLoader = FillingLoader<AVizViewLoader, VizView>;
using CaptureLoader = FillingLoader<AVizCaptureLoader, VizCapture>;

/// For typed tests of what holds for every kind.
using EveryLoader = ::testing::Types<EdgeLoader, FaceLoader, PolygonLoader, PolygonLoopLoader,
                                     PointsLoader, MeshLoader, WireLoader, PointSetLoader,
                                     TextLoader, ViewLoader, CaptureLoader, PMILoader>;

/// What one Load of a loader of that kind answers, filled by @p fill; the caller owns it.
template <typename Loader>
std::unique_ptr<typename Loader::Made> load(typename Loader::Fill fill = {}) {
    return std::unique_ptr<typename Loader::Made>(
        static_cast<typename Loader::Made*>(Loader(std::move(fill)).Load()));
}

/// @name One element of each kind
/// Release it into what is to own it: `mesh->AddEdge(loadEdge([](VizEdge& edge) {...}).release())`.
/// @{
inline std::unique_ptr<VizEdge> loadEdge(EdgeLoader::Fill fill = {}) {
    return load<EdgeLoader>(std::move(fill));
}
inline std::unique_ptr<VizFace> loadFace(FaceLoader::Fill fill = {}) {
    return load<FaceLoader>(std::move(fill));
}
inline std::unique_ptr<VizPolygon> loadPolygon(PolygonLoader::Fill fill = {}) {
    return load<PolygonLoader>(std::move(fill));
}
inline std::unique_ptr<VizPolygonLoop> loadPolygonLoop(PolygonLoopLoader::Fill fill = {}) {
    return load<PolygonLoopLoader>(std::move(fill));
}
inline std::unique_ptr<VizPoints> loadPoints(PointsLoader::Fill fill = {}) {
    return load<PointsLoader>(std::move(fill));
}
inline std::unique_ptr<VizMesh> loadMesh(MeshLoader::Fill fill = {}) {
    return load<MeshLoader>(std::move(fill));
}
inline std::unique_ptr<VizWire> loadWire(WireLoader::Fill fill = {}) {
    return load<WireLoader>(std::move(fill));
}
inline std::unique_ptr<VizPointSet> loadPointSet(PointSetLoader::Fill fill = {}) {
    return load<PointSetLoader>(std::move(fill));
}
inline std::unique_ptr<VizText> loadText(TextLoader::Fill fill = {}) {
    return load<TextLoader>(std::move(fill));
}
inline std::unique_ptr<VizView> loadView(ViewLoader::Fill fill = {}) {
    return load<ViewLoader>(std::move(fill));
}
inline std::unique_ptr<VizCapture> loadCapture(CaptureLoader::Fill fill = {}) {
    return load<CaptureLoader>(std::move(fill));
}
inline std::unique_ptr<VizPMI> loadPMI(PMILoader::Fill fill = {}) {
    return load<PMILoader>(std::move(fill));
}
inline std::unique_ptr<VizPMI> loadPMI(const VizPMIType& group, const VizPMIType& type,
                                       PMILoader::Fill fill = {}) {
    PMILoader loader(std::move(fill));
    loader.setGroupAndType(group, type);
    return std::unique_ptr<VizPMI>(static_cast<VizPMI*>(loader.Load()));
}
/// @}

/// The names of what was destroyed, in the order in which it died.
using Deaths = std::vector<std::string>;

/// A host's own element of a kind, which writes its name down when it is destroyed.
template <typename Kind>
class Telling : public Kind {
public:
    /// A copy of @p original, which should own nothing, since a copy shares it.
    Telling(const Kind& original, std::string name, Deaths& deaths)
        : Kind(original), _name(std::move(name)), _deaths(deaths) {}
    Telling(const Telling&) = delete;
    Telling& operator=(const Telling&) = delete;
    ~Telling() override { _deaths.push_back(_name); }

private:
    std::string _name;
    Deaths& _deaths;
};

/// A new, empty element that writes @p name into @p deaths when it dies; the caller owns it.
/// `newTelling<EdgeLoader>("edge", deaths)`.
template <typename Loader>
Telling<typename Loader::Made>* newTelling(std::string name, Deaths& deaths) {
    const auto original = load<Loader>();
    return new Telling<typename Loader::Made>(*original, std::move(name), deaths);
}

}  // namespace KesVizCore::support
