/// @file
/// Building the scene of Coin: a separator for each node, with a colour and a face set for each
/// entity. There are no ids, so that nothing is looked for before it is made.

#include "support/Bench.h"
#include "support/SceneModel.h"

#include <Inventor/SbColor.h>
#include <Inventor/SbName.h>
#include <Inventor/SoDB.h>
#include <Inventor/nodes/SoBaseColor.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoSeparator.h>

namespace bench {
namespace {

/// Names as Coin takes them: it keeps one copy of each, and no blanks.
std::vector<SbName> converted(const std::vector<std::wstring>& names) {
    std::vector<SbName> all;
    for (const std::wstring& name : names) {
        std::string text(name.begin(), name.end());
        std::replace(text.begin(), text.end(), ' ', '_');
        all.emplace_back(text.c_str());
    }
    return all;
}

struct CoinModel {
    explicit CoinModel(const SceneModel& model) : bodies(converted(model.bodies)) {
        for (const EntityGroup& group : model.groups) {
            types.push_back({converted({group.typeName})[0], converted(group.names)});
        }
    }

    struct Type {
        SbName name;
        std::vector<SbName> names;
    };
    std::vector<SbName> bodies;
    std::vector<Type> types;
    SbColor color{0.8F, 0.4F, 0.2F};
};

class CoinScene {
public:
    CoinScene() : _root(new SoSeparator()) { _root->ref(); }
    CoinScene(const CoinScene&) = delete;
    CoinScene& operator=(const CoinScene&) = delete;
    ~CoinScene() { _root->unref(); }

    void Build(const CoinModel& model) {
        SoSeparator& container = addGroup(addGroup(*_root, "Scene"), "Container");
        for (const SbName& name : model.bodies) {
            SoSeparator& body = addGroup(container, name);
            for (const CoinModel::Type& type : model.types) {
                SoSeparator& parent = addGroup(body, type.name);
                for (const SbName& entityName : type.names) {
                    SoSeparator& entity = addGroup(parent, entityName);
                    auto* const color = new SoBaseColor();
                    color->rgb.setValue(model.color);
                    entity.addChild(color);
                    entity.addChild(new SoFaceSet());
                }
            }
        }
    }

private:
    static SoSeparator& addGroup(SoSeparator& parent, const SbName& name) {
        auto* const group = new SoSeparator();
        group->setName(name);
        parent.addChild(group);
        return *group;
    }

    SoSeparator* _root;
};

void build(benchmark::State& state, std::int64_t size) {
    static const bool initialised = [] {
        SoDB::init();
        return true;
    }();
    static_cast<void>(initialised);
    const SceneModel model(size);
    const CoinModel coinModel(model);
    timeOnFresh(
        state, [] { return std::make_unique<CoinScene>(); },
        [&](CoinScene& scene) { scene.Build(coinModel); });
    countItems(state, model.NodeCount());
}

// A million takes many seconds each time, for a peer that has no goal.
const Registered registered([] {
    for (const std::int64_t size : sizesOr({10'000, 100'000})) {
        add("build/Coin", size, build);
    }
});

}  // namespace
}  // namespace bench
