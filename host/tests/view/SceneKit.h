#pragma once

/// @file
/// Short words for the tests of view and picking: small scenes, paths, placements.

#include "view/SceneAdapter.h"
#include "view/SceneView.h"
#include "view/ShownWalk.h"

#include <KesVizCore/graph/AGeometryItem.h>
#include <KesVizCore/graph/AttributeColor.h>
#include <KesVizCore/graph/AttributeLineStyle.h>
#include <KesVizCore/graph/AttributeTransform.h>
#include <KesVizCore/graph/AttributeVisibility.h>

#include <cstdint>
#include <deque>
#include <initializer_list>
#include <string>
#include <vector>

namespace kesview::testing {

using Values = std::vector<float>;

inline viz::RenderId path(std::initializer_list<std::uint64_t> ids) {
    return viz::RenderId(std::vector<std::uint64_t>(ids), viz::View3D);
}

inline Matrix moved(double x, double y, double z) {
    Matrix matrix = identityMatrix;
    matrix[12] = x;
    matrix[13] = y;
    matrix[14] = z;
    return matrix;
}

/// A quarter turn about z: x becomes y.
inline Matrix turned() {
    Matrix matrix = identityMatrix;
    matrix[0] = 0;
    matrix[1] = 1;
    matrix[4] = -1;
    matrix[5] = 0;
    return matrix;
}

/// A scene made node by node. Nodes are changed without the adapter, which is told.
class SceneKit {
public:
    explicit SceneKit(const MakePicker& makePicker = {}) : scene(makePicker) {
        scene.SetView3D(&view);
    }

    viz::Node* Root() { return static_cast<viz::Node*>(scene.GetNode(path({1}))); }
    viz::Node* Group(viz::Node* parent, std::uint64_t id) {
        scene.GeometryChanged();
        return parent->CreateChild(id);
    }
    viz::Node* Type(viz::Node* parent, viz::EntityType type) {
        viz::Node* const node = Group(parent, static_cast<std::uint64_t>(type));
        node->SetFilterID(type);
        return node;
    }
    viz::AGeometryItem* Add(viz::GeoNode* node, viz::AGeometryItem* item) {
        node->AddGeometry(item);
        scene.GeometryChanged();
        return item;
    }
    float* Keep(Values values) {
        _arrays.push_back(std::move(values));
        return _arrays.back().data();
    }
    /// Every three points are a triangle.
    viz::AGeometryItem* Triangles(viz::GeoNode* node, const Values& points,
                                  const Values& normals = {}) {
        const int count = static_cast<int>(points.size() / 3);
        float* const kept = Keep(points);
        float* const keptNormals = normals.empty() ? nullptr : Keep(normals);
        return Add(node, scene.GetGeometryItemFactory()->CreateTriangleSet(
                             node->Id(), kept, keptNormals, nullptr, count,
                             static_cast<int>(normals.size() / 3), 0, viz::TriangleList));
    }
    viz::AGeometryItem* Lines(viz::GeoNode* node, const Values& points) {
        return Add(node, scene.GetGeometryItemFactory()->CreatePolyline(
                             node->Id(), Keep(points), static_cast<int>(points.size() / 3)));
    }
    viz::AGeometryItem* Text(viz::GeoNode* node, const std::wstring& text, float height) {
        float zero[3] = {0, 0, 0};
        return Add(node, scene.GetGeometryItemFactory()->CreateText(node->Id(), text, L"", zero,
                                                                    {height, 1, 1}, 0));
    }
    void Place(viz::GeoNode* node, Matrix matrix) {
        node->SetAttribute(new viz::AttributeTransform(matrix.data()));
        scene.GeometryChanged();
    }
    static void Paint(viz::GeoNode* node, const viz::RGBAColor& color, bool priority = false) {
        node->SetAttribute(new viz::AttributeColor(color, priority));
    }
    static void HideInFile(viz::GeoNode* node) {
        node->SetAttribute(new viz::AttributeVisibility(false));
    }
    /// A body of one face, a triangle in the plane z = 0 with its right angle at zero, and one
    /// edge along x: face and edge have the ids 100 and 200.
    viz::Node* Body(viz::Node* parent, std::uint64_t id, float size = 10) {
        viz::Node* const body = Group(parent, id);
        Triangles(Group(Type(body, viz::FaceType), 100), {0, 0, 0, size, 0, 0, 0, size, 0});
        Lines(Group(Type(body, viz::EdgeType), 200), {0, 0, 0, size, 0, 0});
        return body;
    }

    SceneView view;
    SceneAdapter scene;

private:
    std::deque<Values> _arrays;
};

/// The paths of all that is shown, in order.
inline std::vector<std::string> shownPaths(const SceneAdapter& scene) {
    std::vector<std::string> paths;
    for (ShownWalk walk = scene.Walk(); walk.Next();) {
        paths.push_back(walk.Path().ToString());
    }
    return paths;
}

inline std::vector<std::string> texts(const std::vector<viz::RenderId>& paths) {
    std::vector<std::string> list;
    for (const viz::RenderId& one : paths) {
        list.push_back(one.ToString());
    }
    return list;
}

constexpr std::uint64_t faces = viz::FaceType;
constexpr std::uint64_t edges = viz::EdgeType;

}  // namespace kesview::testing
