// Scenes built, edited, asked and dumped, with every allocation failing in turn.

#include "session/Session.h"
#include "session/SessionHost.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace KesVizCore {
namespace {

using support::failEveryAllocation;
using support::newItem;
using support::recordFailures;
using support::SessionScene;

/// Longer than any text that a string keeps in itself.
const std::wstring kName(40, L'n');
const std::string kPattern(40, '-');

RenderId pathOf(const std::vector<std::uint64_t>& ids) {
    return RenderId(ids, View3D);
}

constexpr std::uint64_t kFaces = FaceType;

class ASceneSession : public support::Session {
public:
    explicit ASceneSession(std::size_t rootOpened) : scene(rootOpened) {}
    std::string State() override { return scene.State() + answers; }
    std::string Position() override { return scene.Position(); }

protected:
    SceneBuilder& builder() { return *scene.builder; }
    bool addItem(std::uint64_t id) { return builder().AddGeometry(newItem(id)); }
    /// Whether the attribute that a call handed over could be made.
    bool attributeMade() { return !scene.adapter.takeWasGivenNull(); }
    /// Ends the level that was begun without its colour, so that it can be begun again.
    bool beganWithColor(bool begun) {
        if (begun && !attributeMade()) {
            builder().BodyEnd();
            return false;
        }
        return begun;
    }

    SessionScene scene;
    std::string answers;  ///< what the session was told, beside the state of the scene
};

// --- building -----------------------------------------------------------------------------------

class BuildSession : public ASceneSession {
public:
    explicit BuildSession(std::size_t rootOpened = 1) : ASceneSession(rootOpened) {
        addOuterLevels();
        addBody();
        addEnds();
        addQuestions();
    }

private:
    void addOuterLevels() {
        add("ConstructionBegin", [this] { return builder().ConstructionBegin(); });
        addBegun("SceneBegin", [this] { return builder().SceneBegin(2, kName); });
        add("SceneLevelBegin", [this] { return builder().SceneLevelBegin(3, kName); });
        addBegun("ContainerBegin", [this] {
            return builder().ContainerBegin(4, kName, SceneBuilder::AddressedContainer);
        });
        add("SetTransformation", [this] {
            double matrix[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 5, 6, 7, 1};
            builder().SetTransformation(matrix);
            return attributeMade();
        });
        add("SetVisibility", [this] { return builder().SetVisibility(true) && attributeMade(); });
    }
    void addBody() {
        addBegun("BodyBegin with a colour", [this] {
            return beganWithColor(builder().BodyBegin(5, kName, RGBAColor::Red()));
        });
        add("EntityTypeBegin", [this] { return builder().EntityTypeBegin(FaceType, kName); });
        for (std::uint64_t face = 6; face < 9; ++face) {
            addBegun("EntityBegin with a colour", [this, face] {
                return beganWithColor(builder().EntityBegin(face, kName, RGBAColor::Blue()));
            });
            add("AddGeometry", [this, face] { return addItem(100 + face); });
            add("AddGeometry", [this, face] { return addItem(200 + face); });
            add("SetLineStyle", [this] {
                builder().SetLineStyle(kPattern, 2.0F);
                return attributeMade();
            });
            add("SetColor", [this] {
                builder().SetColor(RGBAColor::Green(), true);
                return attributeMade();
            });
            add("EntityEnd", [this] { return builder().EntityEnd(), true; });
        }
        add("EntityTypeEnd", [this] { return builder().EntityTypeEnd(), true; });
        add("BodyEnd", [this] { return builder().BodyEnd(), true; });
    }
    void addEnds() {
        add("BodyBegin", [this] { return builder().BodyBegin(9, kName); });
        add("EntityBegin", [this] { return builder().EntityBegin(10, kName); });
        add("GetCurrentRenderId", [this] {
            RenderId id;
            return builder().GetCurrentRenderId(id) && note(id.ToString());
        });
        add("EntityEnd", [this] { return builder().EntityEnd(), true; });
        add("BodyEnd", [this] { return builder().BodyEnd(), true; });
        add("ContainerEnd", [this] { return builder().ContainerEnd(), true; });
        add("SceneLevelEnd", [this] { return builder().SceneLevelEnd(), true; });
        add("SceneEnd", [this] { return builder().SceneEnd(), true; });
        add("ConstructionEnd", [this] { return builder().ConstructionEnd(), true; });
    }
    void addQuestions() {
        add("BuildRenderId", [this] {
            RenderId id;
            builder().BuildRenderId(id, EntityId(5, FaceType, 6), RGBAColor(), RGBAColor());
            return note(id.ToString());
        });
        add("Convert", [this] {
            EntityId entity;
            scene.adapter.Convert(pathOf({2, 4, 5, kFaces, 6, 0, 0}), entity);
            return note(entity.ToString());
        });
        add("PickVisual and SelectionHolder::Add", [this] {
            scene.adapter.picked = pathOf({1, 2, 3, 4, 5, kFaces, 6});
            RenderId picked;
            const bool hit = scene.adapter.PickVisual(Ray(), picked);
            scene.adapter.GetSelectionHolder()->Add(picked);
            return hit;
        });
        add("SelectionHolder::At",
            [this] { return note(scene.adapter.GetSelectionHolder()->At(0).ToString()); });
        add("GetSceneStructure", [this] {
            std::string text;
            scene.adapter.GetSceneStructure(text, false);
            return note(std::move(text));
        });
        add("GetReport", [this] { return note(support::callsOfReport(*scene.adapter._rootNode)); });
        add("ToString", [this] { return note(scene.adapter._rootNode->ToString()); });
    }
    bool note(const std::string& answer) {
        answers += answer + "\n";
        return true;
    }
};

/// A number of times for the root to be opened with which one more push needs new memory where
/// @p above nodes are open above it. A stack of libstdc++ takes memory for 64 pointers at a time.
constexpr std::size_t rootOpenedBelow(std::size_t above) {
    return 63 - above;
}

TEST(SceneSessionTest, ABuildGoesOnFromEveryAllocationThatFailed) {
    recordFailures(failEveryAllocation([] { return std::make_unique<BuildSession>(); }));
}

TEST(SceneSessionTest, ABuildGoesOnWhereTheStackOfOpenNodesFindsNoRoom) {
    long failures = 0;
    for (const std::size_t above : {std::size_t{3}, std::size_t{6}}) {  // a level and a face
        SCOPED_TRACE(above);
        failures += failEveryAllocation(
            [above] { return std::make_unique<BuildSession>(rootOpenedBelow(above)); });
    }
    recordFailures(failures);
}

// --- editing ------------------------------------------------------------------------------------

/// A scene of the bodies 10 to 15 under the group 3, each with the faces 20 to 22, and edits of it.
class EditSession : public ASceneSession {
public:
    explicit EditSession(std::size_t rootOpened = 1) : ASceneSession(rootOpened) {
        build();
        addEditsOfTheOpenNode();
        addReferences();
        addDeletions();
    }

private:
    void build() {
        builder().ConstructionBegin();
        builder().SceneBegin(2, L"scene");
        builder().SceneLevelBegin(3, L"level");
        for (std::uint64_t body = 10; body < 16; ++body) {
            builder().BodyBegin(body, kName, RGBAColor::Red());
            addItem(1000 + body);
            for (std::uint64_t face = 20; face < 23; ++face) {
                builder().EntityBegin(face, kName, RGBAColor::Blue());
                for (std::uint64_t item = 0; item < 4; ++item) {
                    addItem(100 * body + 10 * face + item);
                }
                double matrix[16] = {};
                builder().SetTransformation(matrix);
                builder().EntityEnd();
            }
            builder().BodyEnd();
        }
        builder().SceneEnd();
        builder().ConstructionEnd();
    }
    void addOpen(const std::vector<std::uint64_t>& ids) {
        add("OpenNodes", [this, path = pathOf(ids)] { return scene.adapter.OpenNodes(path); });
    }
    void addCloseAll() {
        add("CloseAllNodes", [this] { return scene.adapter.CloseAllNodes(), true; });
    }
    void addEditsOfTheOpenNode() {
        addOpen({1, 2, 3, 10, 20});
        addBegun("CopyNodeAttributesFrom", [this, from = pathOf({1, 2, 3, 11, 20})] {
            scene.adapter.CopyNodeAttributesFrom(*scene.adapter.GetNode(from));
            return attributeMade();
        });
        add("TransferNodeGeometryFrom", [this, from = pathOf({1, 2, 3, 11, 20})] {
            return scene.adapter.TransferNodeGeometryFrom(*scene.adapter.GetNode(from)), true;
        });
        addBegun("MoveGeometryFrom", [this, from = pathOf({1, 2, 3, 12, 21})] {
            return builder().MoveGeometryFrom(from) && attributeMade();
        });
        add("SetColor of the items",
            [this] { return scene.adapter.SetColor(RGBAColor::Green()), true; });
        addCloseAll();
    }
    void addReferences() {
        addOpen({1, 2, 3, 10, 21});
        add("AddReference and CloseNode", [this, to = pathOf({1, 2, 3, 11, 22})] {
            builder().AddReference(to);
            return true;
        });
        add("the adapter's AddReference",
            [this, to = pathOf({1, 2, 3, 12, 20})] { return scene.adapter.AddReference(to); });
        add("CloseNode", [this] { return scene.adapter.CloseNode(), true; });
        // A node of two parents that die together would survive them.
        for (const std::uint64_t reference : {std::uint64_t{20}, std::uint64_t{22}}) {
            add("DeleteNode of a reference",
                [this, reference] { return scene.adapter.DeleteNode(reference); });
        }
        addCloseAll();
    }
    void addDeletions() {
        add("Delete with nothing open", [this, path = pathOf({1, 2, 3, 13, 20})] {
            builder().Delete(path);
            return true;
        });
        addOpen({1, 2, 3});
        add("DeleteNode with a node open",
            [this, path = pathOf({1, 2, 3, 13, 21})] { return scene.adapter.DeleteNode(path); });
        addCloseAll();
        add("Clear of a leaf",
            [this, path = pathOf({1, 2, 3, 14, 20})] { return builder().Clear(path), true; });
        addBegun("Clear of a group",
                 [this, path = pathOf({1, 2, 3, 14})] { return builder().Clear(path), true; });
        addOpen({1, 2, 3, 15});
        addBegun("Clear of the open node",
                 [this, path = pathOf({1, 2, 3, 15})] { return builder().Clear(path), true; });
        addCloseAll();
        add("Clear of a path that leads nowhere",
            [this, path = pathOf({1, 2, 3, 99})] { return builder().Clear(path), true; });
        addBegun("Clear of a level",
                 [this, path = pathOf({1, 2, 3})] { return builder().Clear(path), true; });
        add("Clear of the scene",
            [this, path = pathOf({2})] { return builder().Clear(path), true; });
    }
};

TEST(SceneSessionTest, EditsGoOnFromEveryAllocationThatFailed) {
    recordFailures(failEveryAllocation([] { return std::make_unique<EditSession>(); }));
}

TEST(SceneSessionTest, EditsGoOnWhereTheStackOfOpenNodesFindsNoRoom) {
    long failures = 0;
    // Above so many nodes stand those of paths, and what AddReference opens.
    for (const std::size_t above : {std::size_t{3}, std::size_t{4}}) {
        SCOPED_TRACE(above);
        failures += failEveryAllocation(
            [above] { return std::make_unique<EditSession>(rootOpenedBelow(above)); });
    }
    recordFailures(failures);
}

}  // namespace
}  // namespace KesVizCore
