/// @file
/// Random scenes, built through guards and raw calls and then compared with a tiny model of what
/// such calls make of a graph.

#include "support/RecordingHost.h"

#include <KesVizCore/KesVizCore.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace KesVizCore {
namespace {

using Values = std::vector<std::uint64_t>;

enum Level { Construction, Scene, SceneLevel, Container, OtherContainer, Body, Type, Entity };

/// A node as the calls alone make it.
struct ModelNode {
    std::wstring name;
    int filter = -1;
    std::optional<RGBAColor> color;
    std::optional<bool> visible;
    std::vector<std::uint64_t> items;
    std::map<std::uint64_t, ModelNode> children;
};

/// Where one Begin leads.
struct Step {
    Level level = Construction;
    std::uint64_t id = 0;
    std::wstring name;
    bool colored = false;
    RGBAColor color = RGBAColor::Red();
};

bool begin(SceneBuilder& builder, const Step& step) {
    switch (step.level) {
        case Scene:
            return builder.SceneBegin(step.id, step.name);
        case SceneLevel:
            return builder.SceneLevelBegin(step.id, step.name);
        case Container:
            return builder.ContainerBegin(step.id, step.name, SceneBuilder::AddressedContainer);
        case OtherContainer:
            return builder.ContainerBegin(step.id, step.name, SceneBuilder::UnaddressedContainer);
        case Body:
            return step.colored ? builder.BodyBegin(step.id, step.name, step.color)
                                : builder.BodyBegin(step.id, step.name);
        case Type:
            return builder.EntityTypeBegin(EntityId::GetTypeFromInt(step.id), step.name);
        case Entity:
            return step.colored ? builder.EntityBegin(step.id, step.name, step.color)
                                : builder.EntityBegin(step.id, step.name);
        default:
            return builder.ConstructionBegin();
    }
}

void end(SceneBuilder& builder, Level level) {
    switch (level) {
        case Scene:
            return builder.SceneEnd();
        case SceneLevel:
            return builder.SceneLevelEnd();
        case Container:
        case OtherContainer:
            return builder.ContainerEnd();
        case Body:
            return builder.BodyEnd();
        case Type:
            return builder.EntityTypeEnd();
        case Entity:
            return builder.EntityEnd();
        default:
            return builder.ConstructionEnd();
    }
}

using Inside = std::function<void(bool begun)>;

void guarded(SceneBuilder* builder, const Step& step, const Inside& inside) {
    const auto run = [&inside](const ASceneBuilderContext& context) { inside(context.IsOK()); };
    switch (step.level) {
        case Scene:
            return run(SceneContext(builder, step.id, step.name));
        case SceneLevel:
            return run(SceneLevelContext(builder, step.id, step.name));
        case Container:
            return run(
                ContainerContext(builder, step.id, step.name, SceneBuilder::AddressedContainer));
        case OtherContainer:
            return run(
                ContainerContext(builder, step.id, step.name, SceneBuilder::UnaddressedContainer));
        case Body:
            return run(BodyContext(builder, step.id, step.name));
        case Type:
            return run(EntityTypeContext(builder, EntityId::GetTypeFromInt(step.id), step.name));
        case Entity:
            return run(EntityContext(builder, step.id, step.name, step.colored, step.color));
        default:
            return run(ConstructionContext(builder));
    }
}

void raw(SceneBuilder* builder, const Step& step, const Inside& inside) {
    const bool begun = begin(*builder, step);
    inside(begun);
    if (begun) {
        end(*builder, step.level);
    }
}

/// Levels that may stand in another.
std::vector<Level> levelsIn(Level level) {
    switch (level) {
        case Construction:
            return {Scene};
        case Scene:
        case SceneLevel:
            return {SceneLevel, Container, OtherContainer, Body};
        case Container:
        case OtherContainer:
            return {Container, OtherContainer, Body};
        case Body:
            return {Type};
        case Type:
            return {Entity};
        default:
            return {};
    }
}

/// Builds at random and keeps the model beside.
class ModelBuild {
public:
    explicit ModelBuild(unsigned seed) : _random(seed) {
        _builder = _factory.MakeSceneBuilder(&_adapter);
        // Some ids can be neither opened nor created.
        _adapter.refusesToOpen = {_refused};
        _adapter.refusesToCreate = {_refused};
    }
    ~ModelBuild() { _factory.DeleteSceneBuilder(_builder); }
    ModelBuild(const ModelBuild&) = delete;
    ModelBuild& operator=(const ModelBuild&) = delete;

    void construct() {
        level(Step(), [this](bool begun) {
            ASSERT_TRUE(begun);
            _path = {1};
            _scenes.clear();
            const int scenes = 1 + chance(2);
            for (int scene = 0; scene < scenes; ++scene) {
                // SceneEnd closes nothing, so that the next scene stands within this one.
                child(Scene, false);
            }
        });
        EXPECT_TRUE(_adapter._openNodes.empty());
    }

    void expectGraphAsModelled() { expectNode(*_adapter._rootNode, _root, {1}); }

private:
    int chance(int bound) { return static_cast<int>(_random() % static_cast<unsigned>(bound)); }

    void level(const Step& step, const Inside& inside) {
        if (chance(2) == 0) {
            guarded(_builder, step, inside);
        } else {
            raw(_builder, step, inside);
        }
    }

    Step anyStep(Level level) {
        static const std::uint64_t types[] = {10000, 10001, 10002, 10004, _refused};
        Step step;
        step.level = level;
        step.id = level == Type ? types[chance(5)] : 20 + static_cast<std::uint64_t>(chance(5));
        if (level != Type && level != Scene && chance(8) == 0) {
            step.id = _refused;
        }
        step.name = L"name " + std::to_wstring(chance(1000));
        step.colored = level == Entity && chance(2) == 0;  // the guard of a body has no colour
        step.color = RGBAColor(static_cast<unsigned short>(chance(256)), 2, 3, 255);
        return step;
    }

    ModelNode& modelAt(const Values& path) {
        ModelNode* node = &_root;
        for (std::size_t place = 1; place < path.size(); ++place) {
            node = &node->children.at(path[place]);
        }
        return *node;
    }

    /// Begins a child of the open node, fills it, and ends it.
    void child(Level kind, bool closes = true) {
        const Step step = anyStep(kind);
        level(step, [&](bool begun) {
            ASSERT_EQ(begun, step.id != _refused);
            if (begun) {
                enter(step);
                fill(step.level);
            }
        });
        if (closes && step.id != _refused) {
            _path.pop_back();
        }
        expectStateAsModelled();
    }

    void enter(const Step& step) {
        ModelNode& parent = modelAt(_path);
        const bool isNew = parent.children.count(step.id) == 0;
        ModelNode& node = parent.children[step.id];
        if (isNew) {
            node.name = step.name;  // reopening renames nothing
        }
        if (step.level == Type) {
            node.filter = static_cast<int>(step.id);
        }
        if (step.colored) {
            node.color = step.color;
        }
        if (step.level == Scene) {
            _scenes.push_back(step.id);
        }
        if (step.level == Container) {
            _container = step.id;
        }
        _path.push_back(step.id);
        expectStateAsModelled();
    }

    void fill(Level level) {
        decorate();
        const std::vector<Level> possible = levelsIn(level);
        const int children = possible.empty() ? 0 : chance(_path.size() > 7 ? 2 : 4);
        for (int count = 0; count < children; ++count) {
            child(possible[static_cast<std::size_t>(chance(static_cast<int>(possible.size())))]);
        }
    }

    /// Some attributes and geometry for the open node.
    void decorate() {
        ModelNode& node = modelAt(_path);
        if (chance(4) == 0) {
            node.color = RGBAColor(1, 2, static_cast<unsigned short>(chance(256)), 4);
            _builder->SetColor(*node.color, false);
        }
        if (chance(4) == 0) {
            node.visible = chance(2) == 0;
            EXPECT_TRUE(_builder->SetVisibility(*node.visible));
        }
        if (chance(4) == 0) {
            node.filter = chance(100);
            _builder->SetFilter(node.filter);
        }
        if (chance(3) == 0) {
            node.items.push_back(++_items);
            EXPECT_TRUE(_builder->AddGeometry(support::newItem(_items)));
        }
    }

    void expectStateAsModelled() {
        RenderId open;
        ASSERT_TRUE(_builder->GetCurrentRenderId(open));
        EXPECT_EQ(open.ToString(), RenderId(_path, View3D).ToString());
        Values container = _scenes;
        if (_container) {
            container.push_back(*_container);
        }
        EXPECT_EQ(_builder->GetContainerRenderId().ToString(),
                  RenderId(container, View3D).ToString());
    }

    static void expectNode(const GeoNode& node, const ModelNode& model, const Values& path) {
        const std::unique_ptr<RenderId> id(node.GetRenderId());
        SCOPED_TRACE(id->ToString());
        EXPECT_EQ(id->ToString(), RenderId(path, View3D).ToString());
        EXPECT_EQ(node.Name(), path.size() == 1 ? L"ROOT" : model.name);
        EXPECT_EQ(node.GetFilterID(), model.filter);
        expectAttributes(node, model);
        Values items;
        for (const AGeometryItem* item : node.Geometry()) {
            items.push_back(item->ID());
        }
        EXPECT_EQ(items, model.items);
        const auto& children = dynamic_cast<const Node&>(node).Children();
        ASSERT_EQ(children.size(), model.children.size());
        for (const auto& [childId, child] : children) {
            ASSERT_EQ(model.children.count(childId), 1U) << childId;
            Values childPath = path;
            childPath.push_back(childId);
            expectNode(*child, model.children.at(childId), childPath);
        }
    }

    static void expectAttributes(const GeoNode& node, const ModelNode& model) {
        auto* const color = dynamic_cast<AttributeColor*>(node.GetAttribute(AttributeType::Color));
        ASSERT_EQ(color != nullptr, model.color.has_value());
        if (color != nullptr) {
            EXPECT_EQ(color->GetColor(), *model.color);
        }
        auto* const visibility =
            dynamic_cast<AttributeVisibility*>(node.GetAttribute(AttributeType::Visibility));
        ASSERT_EQ(visibility != nullptr, model.visible.has_value());
        if (visibility != nullptr) {
            EXPECT_EQ(visibility->GetIsVisible(), *model.visible);
        }
    }

    static constexpr std::uint64_t _refused = 99999;  // a type's number too

    std::mt19937 _random;
    support::RecordingAdapter _adapter;
    SceneBuilderFactory _factory;
    SceneBuilder* _builder = nullptr;
    ModelNode _root;
    Values _path;
    Values _scenes;
    std::optional<std::uint64_t> _container;
    std::uint64_t _items = 0;
};

TEST(SceneBuilderModelTest, RandomScenesAreWhatTheirCallsSay) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        ModelBuild build(seed);
        // Later constructions reopen what the first has made.
        for (int construction = 0; construction < 3; ++construction) {
            build.construct();
            build.expectGraphAsModelled();
        }
        if (testing::Test::HasFailure()) {
            return;  // one seed tells enough
        }
    }
}

}  // namespace
}  // namespace KesVizCore
