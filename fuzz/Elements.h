/// @file
/// Loaders of every kind of element for fuzz targets. Each element that they load counts itself
/// among the living, so that a target sees who is destroyed, and that nobody is destroyed twice.
#pragma once

#include "Input.h"

#include <KesVizCore/KesVizCore.h>

#include <cstdint>
#include <set>
#include <utility>

namespace Fuzz {

/// The elements that were loaded and are not destroyed.
class Living {
public:
    void Add(const KesVizCore::VizElement* element) { _elements.insert(element); }
    void Remove(const KesVizCore::VizElement* element) {
        Check(_elements.erase(element) == 1, "an element is destroyed once");
    }
    bool Has(const KesVizCore::VizElement* element) const { return _elements.count(element) != 0; }
    std::size_t Count() const { return _elements.size(); }

private:
    std::set<const KesVizCore::VizElement*> _elements;
};

/// An element of a kind whose constructor is the library's own, made by a copy of a new one.
template <typename Element>
class Counted : public Element {
public:
    Counted(const Element& empty, Living& living) : Element(empty), _living(living) {
        _living.Add(this);
    }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;
    ~Counted() override { _living.Remove(this); }

private:
    Living& _living;
};

/// Loads counted elements, or nothing, as it is told; opens what the library keeps for hosts.
template <typename Base, typename Element>
class Loader : public Base {
public:
    using Made = Element;

    explicit Loader(Living& living) : _living(living) {}

    /// The next element, which the caller owns; null where the host has nothing to give.
    Element* LoadOne(bool givesNothing = false) {
        _givesNothing = givesNothing;
        return static_cast<Element*>(Base::Load());
    }

    using Base::_transformation;
    using Base::IsIdentityTranformation;

protected:
    KesVizCore::VizElement* createAndFill() override {
        if (_givesNothing) {
            return nullptr;
        }
        auto* const empty = static_cast<Element*>(Base::makeOne());
        auto* const counted = new Counted<Element>(*empty, _living);
        delete empty;
        return counted;
    }

private:
    Living& _living;
    bool _givesNothing = false;
};

class EdgeLoader : public Loader<KesVizCore::AVizEdgeLoader, KesVizCore::VizEdge> {
public:
    using AVizEdgeLoader::setIndices;
    using Loader::Loader;
};

class PointsLoader : public Loader<KesVizCore::AVizPointsLoader, KesVizCore::VizPoints> {
public:
    using AVizPointsLoader::setIndices;
    using Loader::Loader;
};

class TextLoader : public Loader<KesVizCore::AVizTextLoader, KesVizCore::VizText> {
public:
    using AVizTextLoader::setFontAttrs;
    using Loader::Loader;
};

class PMILoader : public Loader<KesVizCore::AVizPMILoader, KesVizCore::VizPMI> {
public:
    using AVizPMILoader::setGroupAndType;
    using Loader::Loader;
};

using FaceLoader = Loader<KesVizCore::AVizFaceLoader, KesVizCore::VizFace>;
using PolygonLoader = Loader<KesVizCore::AVizPolygonLoader, KesVizCore::VizPolygon>;
using PolygonLoopLoader = Loader<KesVizCore::AVizPolygonLoopLoader, KesVizCore::VizPolygonLoop>;
using MeshLoader = Loader<KesVizCore::AVizMeshLoader, KesVizCore::VizMesh>;
using WireLoader = Loader<KesVizCore::AVizWireLoader, KesVizCore::VizWire>;
using PointSetLoader = Loader<KesVizCore::AVizPointSetLoader, KesVizCore::VizPointSet>;
using ViewLoader = Loader<KesVizCore::AVizViewLoader, KesVizCore::VizView>;
using CaptureLoader = Loader<KesVizCore::AVizCaptureLoader, KesVizCore::VizCapture>;

/// Few paths of few values, so that one is often another's beginning.
inline KesVizCore::RenderId AnyPath(Input& input) {
    KesVizCore::RenderId path;
    path.SetOrigin(static_cast<KesVizCore::OriginEnum>(input.Below(8) == 0 ? input.Below(3) : 1));
    for (unsigned left = input.Below(4); left > 0; --left) {
        path.AddValue(input.Below(4) == 0 ? input.Any<std::uint64_t>() : input.Below(2));
    }
    return path;
}

/// Whether what was picked lies at the element or below it.
inline bool IsPicked(const KesVizCore::VizElement& element, const KesVizCore::RenderId& picked) {
    KesVizCore::EntityId entity;
    KesVizCore::RenderId own;
    if (!element.GetEntityID(entity) || !element.Get3DRenderID(own)) {
        return false;
    }
    if (own.GetOrigin() != picked.GetOrigin() || own.Length() > picked.Length()) {
        return false;
    }
    for (int i = 0; i < own.Length(); ++i) {
        if (own[i] != picked[i]) {
            return false;
        }
    }
    return true;
}

}  // namespace Fuzz
