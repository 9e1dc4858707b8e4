#include "CommandKit.h"
#include "commands/AnnotationLinks.h"

#include <gmock/gmock.h>

namespace kesview {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class AnnotationLinksTest : public testing::Test {
protected:
    std::vector<std::string> keysOf(const std::string& selector) const {
        std::vector<std::string> keys;
        for (const Annotation* annotation : annotationsOf(_index, select(_index, selector))) {
            keys.push_back(annotation->key);
        }
        return keys;
    }

    Document _document = support::annotatedMachine();
    SceneIndex _index{_document};
};

TEST_F(AnnotationLinksTest, AFaceHasThoseThatSpeakOfIt) {
    EXPECT_THAT(keysOf("face:12"), ElementsAre("#600"));
    EXPECT_THAT(keysOf("Head top"), ElementsAre("#600", "#620"));
    EXPECT_THAT(keysOf("edge:14"), IsEmpty());
}

TEST_F(AnnotationLinksTest, ABodyHasThoseOfItsFacesToo) {
    EXPECT_THAT(keysOf("body:11"), ElementsAre("#600", "#610", "#620"));
    EXPECT_THAT(keysOf("body:41"), IsEmpty());
}

TEST_F(AnnotationLinksTest, AnInstanceHasThoseOfAllBelow) {
    EXPECT_THAT(keysOf("/Machine"), ElementsAre("#600", "#610", "#620"));
    EXPECT_THAT(keysOf("Plate"), IsEmpty());
}

TEST_F(AnnotationLinksTest, AnAnnotationNamesItselfAndAViewItsMembers) {
    EXPECT_THAT(keysOf("#610"), ElementsAre("#610"));
    EXPECT_THAT(keysOf("Front"), ElementsAre("#600"));
    EXPECT_THAT(keysOf("/PMI"), ElementsAre("#600", "#610", "#620"));
}

TEST_F(AnnotationLinksTest, AViewThatShowsAllNamesAll) {
    _document.views[0].showsAll = true;
    EXPECT_THAT(keysOf("Front"), ElementsAre("#600", "#610", "#620"));
}

TEST_F(AnnotationLinksTest, AProductLinkIsFoundByItsInstances) {
    _document.annotations[0].links = {{EntityLink::Kind::Product, 0, 40}};
    EXPECT_THAT(keysOf("Plate"), ElementsAre("#600"));
}

TEST_F(AnnotationLinksTest, PlacesAreAllUsesOfTheFace) {
    std::vector<std::string> ids;
    for (const SceneNode& node : placesOf(_index, {EntityLink::Kind::Face, 11, 13})) {
        ids.push_back(renderIdText(node.renderId));
    }
    EXPECT_THAT(ids, ElementsAre("1/50/31/21/11/10002/13", "1/50/31/22/11/10002/13",
                                 "1/50/32/21/11/10002/13", "1/50/32/22/11/10002/13"));
    EXPECT_THAT(placesOf(_index, {EntityLink::Kind::Vertex, 11, 13}), IsEmpty());
}

}  // namespace
}  // namespace kesview
