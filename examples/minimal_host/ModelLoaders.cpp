#include "ModelLoaders.h"

#include <KesVizCore/model/AVizFaceLoader.h>
#include <KesVizCore/model/AVizMeshLoader.h>
#include <KesVizCore/model/AVizPolygonLoader.h>
#include <KesVizCore/model/VizFace.h>
#include <KesVizCore/model/VizMesh.h>
#include <KesVizCore/model/VizPolygon.h>

#include <set>

namespace host {

std::wstring visualIdOf(const viz::EntityId& entity) {
    const std::wstring kind = entity.IsFace()   ? L"face "
                              : entity.IsEdge() ? L"edge "
                              : entity.IsBody() ? L"body "
                                                : L"annotation ";
    return kind + std::to_wstring(entity.ID);
}

void EdgeLoader::SetNames(const viz::EntityId& entity, std::wstring mechanicalId) {
    _entity = entity;
    _mechanicalId = std::move(mechanicalId);
}

viz::VizElement* EdgeLoader::createAndFill() {
    std::unique_ptr<viz::VizEdge> edge(static_cast<viz::VizEdge*>(makeOne()));
    if (edge == nullptr) {
        return nullptr;
    }
    edge->SetVertices(_points);
    if (!_entity.IsEmpty()) {
        edge->SetEntityID(_entity);
        edge->SetVisualID(visualIdOf(_entity));
        edge->SetMechanicalID(_mechanicalId);
    }
    return edge.release();
}

namespace {

/// Loads patches, which the data model does not know, as two triangles each.
class PatchLoader : public viz::AVizPolygonLoader {
public:
    explicit PatchLoader(const std::vector<int>& quads) : _quads(quads) {}

protected:
    viz::VizElement* createAndFill() override {
        std::unique_ptr<viz::VizPolygon> polygon(static_cast<viz::VizPolygon*>(makeOne()));
        if (polygon == nullptr) {
            return nullptr;
        }
        polygon->SetPolygonType(viz::IndexedTriangles);
        for (std::size_t at = 0; at + 4 <= _quads.size(); at += 4) {
            const int corners[6] = {_quads[at], _quads[at + 1], _quads[at + 2],
                                    _quads[at], _quads[at + 2], _quads[at + 3]};
            polygon->SetIndices(6, corners);  // appends
        }
        return polygon.release();
    }

private:
    const std::vector<int>& _quads;
};

class FaceLoader : public viz::AVizFaceLoader {
public:
    FaceLoader(const Face& source, const Body& body) : _source(source), _body(body) {}

protected:
    viz::VizElement* createAndFill() override {
        std::unique_ptr<viz::VizFace> face(static_cast<viz::VizFace*>(makeOne()));
        if (face == nullptr) {
            return nullptr;
        }
        const viz::EntityId entity(_body.id, viz::FaceType, _source.id);
        face->SetEntityID(entity);
        face->SetVisualID(visualIdOf(entity));
        face->SetMechanicalID(_source.name);
        if (_source.color.has_value()) {
            face->SetColor(*_source.color);
        }
        face->SetVertices(_source.points.size() / 3, _source.points.data());
        face->AddPolygon(load<viz::VizPolygon>(PatchLoader(_source.quads)).release());
        return face.release();
    }

private:
    const Face& _source;
    const Body& _body;
};

class MeshLoader : public viz::AVizMeshLoader {
public:
    MeshLoader(const Instance& instance, const Body& body, bool withGeometry)
        : _instance(instance), _body(body), _withGeometry(withGeometry) {}

protected:
    viz::VizElement* createAndFill() override {
        std::unique_ptr<viz::VizMesh> mesh(static_cast<viz::VizMesh*>(makeOne()));
        if (mesh == nullptr) {
            return nullptr;
        }
        mesh->SetEntityID(viz::EntityId(_instance.id, viz::BodyType, _body.id));
        mesh->SetVisualID(_instance.name);
        mesh->SetMechanicalID(_body.name);
        mesh->SetColor(_body.color);
        if (_withGeometry) {
            addGeometry(*mesh);
        }
        return mesh.release();
    }

private:
    void addGeometry(viz::VizMesh& mesh) const {
        for (const Face& face : _body.faces) {
            mesh.AddFace(load<viz::VizFace>(FaceLoader(face, _body)).release());
        }
        for (const Edge& edge : _body.edges) {
            EdgeLoader loader(edge.points);
            loader.SetNames(viz::EntityId(_body.id, viz::EdgeType, edge.id), edge.name);
            mesh.AddEdge(load<viz::VizEdge>(loader).release());
        }
    }

    const Instance& _instance;
    const Body& _body;
    bool _withGeometry;
};

void enter(const viz::VizElement& element, viz::VizPMICollection::EntityMap& elements) {
    viz::EntityId entity;
    if (element.GetEntityID(entity)) {
        elements.emplace(entity, &element);
    }
}

}  // namespace

void loadGeometry(const Model& model, viz::VizContainer& geometry) {
    std::set<std::uint64_t> loaded;
    geometry.SetMeshCountHint(model.instances.size());
    for (const Instance& instance : model.instances) {
        const Body* const body = model.FindBody(instance.bodyId);
        if (body != nullptr) {
            const bool isNew = loaded.insert(body->id).second;
            geometry.AddMesh(load<viz::VizMesh>(MeshLoader(instance, *body, isNew)).release());
        }
    }
}

viz::VizPMICollection::EntityMap elementsOf(const viz::VizContainer& geometry) {
    viz::VizPMICollection::EntityMap elements;
    for (const viz::VizMesh* mesh : geometry.GetMeshes()) {
        enter(*mesh, elements);
        for (const viz::VizFace* face : mesh->GetFaces()) {
            enter(*face, elements);
        }
        for (const viz::VizEdge* edge : mesh->GetEdges()) {
            enter(*edge, elements);
        }
    }
    return elements;
}

}  // namespace host
