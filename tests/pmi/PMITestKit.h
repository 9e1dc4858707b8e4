#pragma once

/// @file
/// Short words for the tests of annotations: elements with ids, a model that owns them, and a
/// collection whose insides are open.

#include "support/TestLoaders.h"

#include <KesVizCore/core/EntityId.h>
#include <KesVizCore/core/RenderId.h>
#include <KesVizCore/model/VizElement.h>
#include <KesVizCore/pmi/VizPMICollection.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace KesVizCore::support {

using Box = std::array<float, 6>;
using Triple = std::array<float, 3>;

inline RenderId idIn3D(std::initializer_list<std::uint64_t> values) {
    return RenderId(std::vector<std::uint64_t>(values), View3D);
}

/// The extrema of an annotation.
inline Box extremaOf(const VizPMI& pmi) {
    Box box;
    pmi.GetExtrema(box.data());
    return box;
}

inline std::unique_ptr<VizEdge> edgeThrough(const std::vector<float>& vertices) {
    return loadEdge([&](VizEdge& edge) { edge.SetVertices(vertices); });
}

/// An edge of two points, the corners of @p box: it has extrema, and is too short for a frame.
inline std::unique_ptr<VizEdge> edgeAcross(const Box& box) {
    return edgeThrough({box.begin(), box.end()});
}

inline std::unique_ptr<VizText> textAt(float x, float y, float z) {
    return loadText([=](VizText& text) {
        const float anchor[3] = {x, y, z};
        text.SetAnchorPoint(anchor);
    });
}

inline std::unique_ptr<VizPMI> pmiNamed(const std::wstring& mechId,
                                        const std::wstring& name = std::wstring()) {
    return loadPMI([&](VizPMI& pmi) {
        pmi.SetMechanicalID(mechId);
        pmi.SetName(name);
    });
}

/// An annotation of one edge through these points.
inline std::unique_ptr<VizPMI> pmiThrough(const std::wstring& visualId,
                                          const std::vector<float>& vertices) {
    return loadPMI([&](VizPMI& pmi) {
        pmi.SetVisualID(visualId);
        pmi.AddEdge(edgeThrough(vertices).release());
    });
}

/// An annotation of those extrema that gives no frame.
inline std::unique_ptr<VizPMI> pmiOf(const std::wstring& visualId, const Box& box) {
    return pmiThrough(visualId, {box.begin(), box.end()});
}

/// An element of a host's own class.
class HostElement : public VizElement {
public:
    explicit HostElement(std::string type) : _type(std::move(type)) {}
    ~HostElement() override = default;
    std::string GetElementType() const override { return _type; }

private:
    std::string _type;
};

/// A model: it owns elements and enters them into the map that a host gives its collections.
class Model {
public:
    /// Takes the element over, as entity @p id.
    template <typename Element>
    Element& Add(std::uint64_t id, std::unique_ptr<Element> element) {
        Element& added = *element;
        _map[EntityId(0, OtherType, id)] = &added;
        _owned.push_back(std::shared_ptr<Element>(std::move(element)));
        // cppcheck-suppress returnReference ; what it refers to is kept in _owned
        return added;
    }
    /// A mesh of that visual id, and of that 3D render id unless it is empty.
    VizMesh& AddMesh(std::uint64_t id, const std::wstring& visualId, const RenderId& renderId) {
        VizMesh& mesh = Add(id, loadMesh());
        mesh.SetVisualID(visualId);
        mesh.Set3DRenderID(renderId);
        return mesh;
    }
    void AddNull(std::uint64_t id) { _map[EntityId(0, OtherType, id)] = nullptr; }

    const VizPMICollection::EntityMap* Map() const { return &_map; }

private:
    VizPMICollection::EntityMap _map;
    std::vector<std::shared_ptr<void>> _owned;
};

/// A collection of a host's own class, its insides open to tests.
class OpenCollection : public VizPMICollection {
public:
    OpenCollection() = default;
    /// Of these members of @p model.
    OpenCollection(const Model& model, const std::vector<std::wstring>& names) {
        SetEntityMap(model.Map());
        for (const std::wstring& name : names) {
            AddMember(name);
        }
    }
    OpenCollection(const OpenCollection&) = default;
    OpenCollection& operator=(const OpenCollection&) = default;
    ~OpenCollection() override = default;
    std::string GetElementType() const override { return "Collection"; }

    void SetFrame(const Triple& origin, const Triple& u, const Triple& v) {
        std::copy(origin.begin(), origin.end(), _origin);
        std::copy(u.begin(), u.end(), _uAxis);
        std::copy(v.begin(), v.end(), _vAxis);
        _viewOriented = true;
    }
    Triple Origin() const { return {_origin[0], _origin[1], _origin[2]}; }
    Triple U() const { return {_uAxis[0], _uAxis[1], _uAxis[2]}; }
    Triple V() const { return {_vAxis[0], _vAxis[1], _vAxis[2]}; }

    using VizPMICollection::FabricateAxis;
    using VizPMICollection::FindExtents;
    using VizPMICollection::MergeExtrema;
    using VizPMICollection::Recenter;
};

/// The extents of a copy of @p collection in the plane of the axes @p u and @p v of the model;
/// empty without extrema. @p collection has no extents of its own yet.
inline std::vector<float> extentsIn(const OpenCollection& collection, std::size_t u,
                                    std::size_t v) {
    OpenCollection copy(collection);
    Triple uAxis{};
    Triple vAxis{};
    uAxis[u] = 1.0F;
    vAxis[v] = 1.0F;
    copy.SetFrame(Triple{}, uAxis, vAxis);
    const float* extents = nullptr;
    return copy.GetExtents(extents) ? std::vector<float>(extents, extents + 4)
                                    : std::vector<float>();
}

/// The 3D extrema, which no operation hands out, as extents show them: each number 1.1 times as
/// large. Empty without extrema.
inline std::vector<float> grownExtremaOf(const OpenCollection& collection) {
    const std::vector<float> inXY = extentsIn(collection, 0, 1);
    const std::vector<float> inZX = extentsIn(collection, 2, 0);
    if (inXY.empty()) {
        return inXY;
    }
    return {inXY[0], inXY[1], inZX[0], inXY[2], inXY[3], inZX[2]};
}

/// What grownExtremaOf answers for these extrema.
inline std::vector<float> grown(const Box& box) {
    std::vector<float> result(box.begin(), box.end());
    for (float& value : result) {
        value *= 1.1F;
    }
    return result;
}

}  // namespace KesVizCore::support
