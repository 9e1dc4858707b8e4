/// @file
/// Building the scene of OpenSceneGraph: groups, and a Geode for each entity with a Geometry that
/// has one colour. There are no ids, so that nothing is looked for before it is made.

#include "support/Bench.h"
#include "support/SceneModel.h"

#include <osg/Array>
#include <osg/Geode>
#include <osg/Geometry>
#include <osg/Group>

namespace bench {
namespace {

std::vector<std::string> narrow(const std::vector<std::wstring>& names) {
    std::vector<std::string> all;
    for (const std::wstring& name : names) {
        all.emplace_back(name.begin(), name.end());
    }
    return all;
}

struct OsgModel {
    explicit OsgModel(const SceneModel& model) : bodies(narrow(model.bodies)) {
        for (const EntityGroup& group : model.groups) {
            types.push_back({narrow({group.typeName})[0], narrow(group.names)});
        }
    }

    struct Type {
        std::string name;
        std::vector<std::string> names;
    };
    std::vector<std::string> bodies;
    std::vector<Type> types;
    osg::Vec4 color{0.8F, 0.4F, 0.2F, 1.0F};
};

struct OsgScene {
    osg::ref_ptr<osg::Group> root = new osg::Group();

    void Build(const OsgModel& model) const {
        osg::Group& container = addGroup(addGroup(*root, "Scene"), "Container");
        for (const std::string& name : model.bodies) {
            osg::Group& body = addGroup(container, name);
            for (const OsgModel::Type& type : model.types) {
                osg::Group& parent = addGroup(body, type.name);
                for (const std::string& entityName : type.names) {
                    addEntity(parent, entityName, model.color);
                }
            }
        }
    }

private:
    static osg::Group& addGroup(osg::Group& parent, const std::string& name) {
        const osg::ref_ptr<osg::Group> group = new osg::Group();
        group->setName(name);
        parent.addChild(group);
        return *group;
    }
    static void addEntity(osg::Group& parent, const std::string& name, const osg::Vec4& color) {
        const osg::ref_ptr<osg::Geode> geode = new osg::Geode();
        geode->setName(name);
        const osg::ref_ptr<osg::Geometry> geometry = new osg::Geometry();
        geometry->setColorArray(new osg::Vec4Array(1, &color), osg::Array::BIND_OVERALL);
        geode->addDrawable(geometry);
        parent.addChild(geode);
    }
};

void build(benchmark::State& state, std::int64_t size) {
    const SceneModel model(size);
    const OsgModel osgModel(model);
    timeOnFresh(
        state, [] { return std::make_unique<OsgScene>(); },
        [&](const OsgScene& scene) { scene.Build(osgModel); });
    countItems(state, model.NodeCount());
}

const Registered registered([] {
    for (const std::int64_t size : sizesOr({10'000, 100'000, 1'000'000})) {
        add("build/OpenSceneGraph", size, build);
    }
});

}  // namespace
}  // namespace bench
