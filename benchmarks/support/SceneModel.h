#pragma once

/// @file
/// The scene that all benchmarks of the graph share, and the host's item in it.
///
/// One scene, one container, and bodies of 50 faces and 100 edges below their entity types. Each
/// entity has a name, a colour and one geometry item. Names are made before any clock starts.

#include <KesVizCore/KesVizCore.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace bench {

namespace viz = KesVizCore;

constexpr std::uint64_t sceneId = 1;  // that of the root, with which every path begins
constexpr std::uint64_t containerId = 2;
constexpr std::uint64_t firstBodyId = 1000;
constexpr std::uint64_t firstEntityId = 2;
constexpr int facesOfBody = 50;
constexpr int edgesOfBody = 100;
constexpr int entitiesOfBody = facesOfBody + edgesOfBody;
constexpr int nodesOfBody = 1 + 2 + entitiesOfBody;

/// All entities of one type of one body.
struct EntityGroup {
    viz::EntityType type;
    std::wstring typeName;
    std::vector<std::wstring> names;  ///< of the entities, whose ids count from firstEntityId
};

/// What the scene is described from.
struct SceneModel {
    /// Of @p entities or a few more, so that the last body is whole.
    explicit SceneModel(std::int64_t entities)
        : groups{{viz::FaceType, L"Faces", numbered(L"Face ", facesOfBody)},
                 {viz::EdgeType, L"Edges", numbered(L"Edge ", edgesOfBody)}},
          bodies(numbered(L"Body ",
                          static_cast<int>((entities + entitiesOfBody - 1) / entitiesOfBody))) {}

    static std::vector<std::wstring> numbered(const std::wstring& name, int count) {
        std::vector<std::wstring> names;
        for (int number = 1; number <= count; ++number) {
            names.push_back(name + std::to_wstring(number));
        }
        return names;
    }

    std::int64_t BodyCount() const { return static_cast<std::int64_t>(bodies.size()); }
    /// Root, container, bodies, entity types and entities.
    std::int64_t NodeCount() const { return 2 + BodyCount() * nodesOfBody; }
    std::int64_t EntityCount() const { return BodyCount() * entitiesOfBody; }

    std::vector<EntityGroup> groups;
    std::vector<std::wstring> bodies;  ///< whose ids count from firstBodyId
    viz::RGBAColor color{200, 100, 50, 255};
};

using Path = std::vector<std::uint64_t>;

/// The paths of all entities from the root down, in an order without a pattern.
inline std::vector<Path> shuffledPaths(const SceneModel& model) {
    std::vector<Path> paths;
    paths.reserve(static_cast<std::size_t>(model.EntityCount()));
    for (std::size_t body = 0; body < model.bodies.size(); ++body) {
        for (const EntityGroup& group : model.groups) {
            for (std::size_t at = 0; at < group.names.size(); ++at) {
                paths.push_back({sceneId, containerId, firstBodyId + body,
                                 static_cast<std::uint64_t>(group.type), firstEntityId + at});
            }
        }
    }
    std::shuffle(paths.begin(), paths.end(), std::mt19937_64(1));
    return paths;
}

/// The ids of all bodies in an order without a pattern.
inline std::vector<std::uint64_t> shuffledBodies(const SceneModel& model) {
    std::vector<std::uint64_t> ids;
    for (std::size_t body = 0; body < model.bodies.size(); ++body) {
        ids.push_back(firstBodyId + body);
    }
    std::shuffle(ids.begin(), ids.end(), std::mt19937_64(1));
    return ids;
}

/// The host's geometry item, without data of its own.
class Item final : public viz::AGeometryItemTriangleSet {
public:
    explicit Item(std::uint64_t id) : AGeometryItemTriangleSet(id) {}

    bool GetExtents(float* /*extrema*/) const override { return false; }
    void SetVisible(const bool& visible) override { _visible = visible; }
    bool IsVisible() const override { return _visible; }

private:
    bool _visible = true;
};

}  // namespace bench
