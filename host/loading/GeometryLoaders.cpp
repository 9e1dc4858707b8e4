/// @file
#include "loading/GeometryLoaders.h"

#include "loading/Ids.h"
#include "loading/LoaderCall.h"
#include "loading/TrianglesLoader.h"

#include <KesVizCore/model/AVizEdgeLoader.h>
#include <KesVizCore/model/AVizFaceLoader.h>
#include <KesVizCore/model/AVizMeshLoader.h>
#include <KesVizCore/model/AVizPointSetLoader.h>
#include <KesVizCore/model/AVizPointsLoader.h>
#include <KesVizCore/model/AVizWireLoader.h>
#include <KesVizCore/model/VizEdge.h>
#include <KesVizCore/model/VizFace.h>
#include <KesVizCore/model/VizMesh.h>
#include <KesVizCore/model/VizPointSet.h>
#include <KesVizCore/model/VizPoints.h>
#include <KesVizCore/model/VizWire.h>

namespace kesview {

namespace {

void identify(viz::VizElement& element, const viz::EntityId& entity) {
    element.SetEntityID(entity);
    element.SetVisualID(visualIdOf(entity));
}

void enter(const viz::VizElement& element, LoadedModel& model) {
    viz::EntityId entity;
    if (element.GetEntityID(entity)) {
        model.elements.emplace_hint(model.elements.end(), entity, &element);  // ids mostly rise
    }
}

// --- faces and edges ----------------------------------------------------------------------------

class FaceLoader : public viz::AVizFaceLoader {
public:
    FaceLoader(Face& source, const viz::EntityId& entity) : _source(source), _entity(entity) {}

protected:
    viz::VizElement* createAndFill() override {
        std::unique_ptr<viz::VizFace> face(static_cast<viz::VizFace*>(makeOne()));
        if (face == nullptr) {
            return nullptr;
        }
        identify(*face, _entity);
        face->SetMechanicalID(widen(_source.name));
        if (_source.color.has_value()) {
            face->SetColor(colorOf(*_source.color));
        }
        fill(*face);
        return face.release();
    }

private:
    void fill(viz::VizFace& face) const {
        face.SetVertices(_source.points.size() / 3, _source.points.data());
        release(_source.points);
        face.SetNormals(_source.normals.size() / 3, _source.normals.data());
        release(_source.normals);
        if (!_source.triangles.empty()) {
            face.SetPolygonSizeHint(1);
            face.AddPolygon(loadOne<viz::VizPolygon>(TrianglesLoader(_source.triangles)).release());
        }
    }

    Face& _source;
    viz::EntityId _entity;
};

class EdgeLoader : public viz::AVizEdgeLoader {
public:
    EdgeLoader(Edge& source, const viz::EntityId& entity) : _source(source), _entity(entity) {}

protected:
    viz::VizElement* createAndFill() override {
        std::unique_ptr<viz::VizEdge> edge(static_cast<viz::VizEdge*>(makeOne()));
        if (edge == nullptr) {
            return nullptr;
        }
        identify(*edge, _entity);
        edge->SetMechanicalID(widen(_source.name));
        if (_source.color.has_value()) {
            edge->SetColor(colorOf(*_source.color));
        }
        edge->SetVertices(_source.points);
        release(_source.points);
        return edge.release();
    }

private:
    Edge& _source;
    viz::EntityId _entity;
};

// --- bodies -------------------------------------------------------------------------------------

/// What all three kinds of elements that stand for a body have.
void describe(viz::VizElement& element, const Product& product, const Body& body) {
    identify(element, entityOf(product, body));
    element.SetHidden(body.hidden);
    if (body.color.has_value()) {
        element.SetColor(colorOf(*body.color));
    } else if (product.color.has_value()) {
        element.SetColor(colorOf(*product.color));
    }
}

template <typename Owner>
void addEdges(Owner& owner, Body& body, LoadedModel& model) {
    owner.SetEdgeCountHint(body.edges.size());
    for (Edge& edge : body.edges) {
        auto loaded = loadOne<viz::VizEdge>(EdgeLoader(edge, entityOf(body, edge)));
        enter(*loaded, model);
        owner.AddEdge(loaded.release());
    }
}

class MeshLoader : public viz::AVizMeshLoader {
public:
    MeshLoader(const Product& product, Body& body, LoadedModel& model)
        : _product(product), _body(body), _model(model) {}

protected:
    viz::VizElement* createAndFill() override {
        std::unique_ptr<viz::VizMesh> mesh(static_cast<viz::VizMesh*>(makeOne()));
        if (mesh == nullptr) {
            return nullptr;
        }
        describe(*mesh, _product, _body);
        mesh->SetMechanicalID(widen(_body.name));
        enter(*mesh, _model);
        mesh->SetFaceCountHint(_body.faces.size());
        for (Face& face : _body.faces) {
            auto loaded = loadOne<viz::VizFace>(FaceLoader(face, entityOf(_body, face)));
            enter(*loaded, _model);
            mesh->AddFace(loaded.release());
        }
        addEdges(*mesh, _body, _model);
        return mesh.release();
    }

private:
    const Product& _product;
    Body& _body;
    LoadedModel& _model;
};

class WireLoader : public viz::AVizWireLoader {
public:
    WireLoader(const Product& product, Body& body, LoadedModel& model)
        : _product(product), _body(body), _model(model) {}

protected:
    viz::VizElement* createAndFill() override {
        std::unique_ptr<viz::VizWire> wire(static_cast<viz::VizWire*>(makeOne()));
        if (wire == nullptr) {
            return nullptr;
        }
        describe(*wire, _product, _body);
        enter(*wire, _model);
        addEdges(*wire, _body, _model);
        return wire.release();
    }

private:
    const Product& _product;
    Body& _body;
    LoadedModel& _model;
};

class PointsLoader : public viz::AVizPointsLoader {
public:
    explicit PointsLoader(std::vector<float>& points) : _points(points) {}

protected:
    viz::VizElement* createAndFill() override {
        auto* const points = static_cast<viz::VizPoints*>(makeOne());
        if (points != nullptr) {
            points->SetVertices(_points);
            release(_points);
        }
        return points;
    }

private:
    std::vector<float>& _points;
};

class PointSetLoader : public viz::AVizPointSetLoader {
public:
    PointSetLoader(const Product& product, Body& body) : _product(product), _body(body) {}

protected:
    viz::VizElement* createAndFill() override {
        std::unique_ptr<viz::VizPointSet> set(static_cast<viz::VizPointSet*>(makeOne()));
        if (set == nullptr) {
            return nullptr;
        }
        describe(*set, _product, _body);
        set->AddPoints(loadOne<viz::VizPoints>(PointsLoader(_body.points)).release());
        return set.release();
    }

private:
    const Product& _product;
    Body& _body;
};

void loadBody(const Product& product, Body& body, LoadedModel& model) {
    viz::VizContainer& geometry = model.geometry;
    const bool hasPoints = !body.points.empty();
    if (typeOfEdges(body) == viz::WireType) {
        geometry.AddWire(loadOne<viz::VizWire>(WireLoader(product, body, model)).release());
    } else if (!body.faces.empty() || !body.edges.empty() || !hasPoints) {
        geometry.AddMesh(loadOne<viz::VizMesh>(MeshLoader(product, body, model)).release());
    }
    if (hasPoints) {
        auto set = loadOne<viz::VizPointSet>(PointSetLoader(product, body));
        enter(*set, model);  // which changes nothing where the body has an element already
        geometry.AddPointSet(set.release());
    }
}

}  // namespace

void loadGeometry(Document& document, LoadedModel& model) {
    for (Product& product : document.products) {
        for (Body& body : product.bodies) {
            loadBody(product, body, model);
        }
    }
}

}  // namespace kesview
