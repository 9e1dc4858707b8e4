#include "CommandKit.h"
#include "commands/Errors.h"
#include "commands/Selectors.h"

#include <gmock/gmock.h>

namespace kesview {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::UnorderedElementsAre;

class SelectorsTest : public testing::Test {
protected:
    std::vector<std::string> pathsOf(const std::string& selector) const {
        std::vector<std::string> paths;
        for (const SceneNode& node : select(_index, selector).nodes) {
            paths.push_back(node.path);
        }
        return paths;
    }

    std::string refusalOf(const std::string& selector) const {
        try {
            select(_index, selector);
        } catch (const UsageError& error) {
            return error.what();
        }
        return "accepted";
    }

    Document _document = support::annotatedMachine();
    SceneIndex _index{_document};
};

TEST_F(SelectorsTest, ANameIsFoundWhereverItStands) {
    EXPECT_THAT(
        pathsOf("Head top"),
        ElementsAre("Machine/Pair/Bolt/Shank/Head top", "Machine/Pair/Bolt:2/Shank/Head top",
                    "Machine/Pair:2/Bolt/Shank/Head top", "Machine/Pair:2/Bolt:2/Shank/Head top"));
}

TEST_F(SelectorsTest, APathFromTheTopIsOne) {
    EXPECT_THAT(pathsOf("/Machine/Pair:2/Bolt"), ElementsAre("Machine/Pair:2/Bolt"));
}

TEST_F(SelectorsTest, WildcardsStandForLettersAndLevels) {
    EXPECT_THAT(pathsOf("/Machine/P*"),
                ElementsAre("Machine/Pair", "Machine/Pair:2", "Machine/Plate"));
    EXPECT_THAT(pathsOf("/**/Plate"), ElementsAre("Machine/Plate"));
}

TEST_F(SelectorsTest, ARenderIdNamesOnePlace) {
    EXPECT_THAT(pathsOf("1/50/32/22/11"), ElementsAre("Machine/Pair:2/Bolt:2/Shank"));
}

TEST_F(SelectorsTest, AnEntityIdNamesAllPlaces) {
    EXPECT_EQ(pathsOf("face:12").size(), 4U);
    EXPECT_EQ(pathsOf("instance:22").size(), 2U);
    EXPECT_THAT(pathsOf("instance:33"), ElementsAre("Machine/Plate"));
}

TEST_F(SelectorsTest, AnnotationsAreNamedByKeyNameAndEntity) {
    EXPECT_THAT(pathsOf("#600"), ElementsAre("PMI/Length"));
    EXPECT_THAT(pathsOf("Length"), ElementsAre("PMI/Length"));
    EXPECT_THAT(pathsOf("annotation:60"), ElementsAre("PMI/Length"));
}

TEST_F(SelectorsTest, ViewsAreNamedByNameKeyAndEntity) {
    for (const char* selector : {"Front", "#700", "view:70"}) {
        const Selection selection = select(_index, selector);
        EXPECT_TRUE(selection.nodes.empty()) << selector;
        ASSERT_EQ(selection.views.size(), 1U) << selector;
        EXPECT_EQ(selection.views[0]->key, "#700") << selector;
    }
}

TEST_F(SelectorsTest, WhatNamesNothingIsRefusedWithNearNames) {
    EXPECT_EQ(refusalOf("Bolf"), "nothing is named \"Bolf\". Did you mean \"Bolt\"?");
    EXPECT_THAT(refusalOf("/Machine/Plaite"), HasSubstr("Did you mean \"Plate\"?"));
    EXPECT_EQ(refusalOf("face:4711"),
              "nothing is named \"face:4711\". \"kesview tree\" lists the names.");
    EXPECT_THAT(refusalOf("1/50/99"), HasSubstr("nothing is named"));
    EXPECT_THAT(refusalOf(""), HasSubstr("nothing is named"));
}

TEST_F(SelectorsTest, InASceneAViewStandsForItsMembers) {
    const std::vector<SceneNode> members = selectNodes(_index, {"Front"});
    ASSERT_EQ(members.size(), 1U);
    ASSERT_NE(members[0].annotation, nullptr);
    EXPECT_EQ(members[0].annotation->key, "#600");
    EXPECT_EQ(selectNodes(_index, {"view:70"}).size(), 1U);
    EXPECT_EQ(selectNodes(_index, {"Plate", "Length"}).size(), 2U);
}

TEST(FindViewTest, TheFirstOfSeveralOfOneName) {
    Document document = support::annotatedMachine();
    document.views.push_back(document.views.front());
    document.views.back().key = "#701";
    EXPECT_EQ(findView(document, "Front"), &document.views[0]);
    EXPECT_EQ(findView(document, "#701"), &document.views[1]);
    EXPECT_EQ(findView(document, "front"), nullptr);
    EXPECT_EQ(noSuchView(document, "front"), "no view is named \"front\". Did you mean \"Front\"?");
}

TEST(LastNameTest, BackslashesOfAPathGo) {
    EXPECT_EQ(lastName("A/B"), "B");
    EXPECT_EQ(lastName("A/M6\\/20"), "M6/20");
    EXPECT_EQ(lastName("A\\\\"), "A\\");
    EXPECT_EQ(lastName(""), "");
}

}  // namespace
}  // namespace kesview
