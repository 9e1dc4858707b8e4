#include "building/SceneIndex.h"
#include "support/DocumentKit.h"

#include <gmock/gmock.h>

#include <stdexcept>

namespace kesview {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Kind = SceneNode::Kind;

Document annotatedMachine() {
    Document document = support::machine();
    support::addAnnotations(document);
    return document;
}

class SceneIndexTest : public testing::Test {
protected:
    std::optional<SceneNode> find(const std::string& renderId) const {
        return _index.Find(*parseRenderId(renderId));
    }
    std::vector<std::string> renderIds(const std::string& selector) const {
        std::vector<std::string> texts;
        for (const SceneNode& node : _index.FindAll(selector)) {
            texts.push_back(renderIdText(node.renderId));
        }
        return texts;
    }

    const Document _document = annotatedMachine();
    const SceneIndex _index{_document};
};

TEST_F(SceneIndexTest, TheWalkMeetsEveryNodeWithItsPathAndIds) {
    std::string text;
    forEachNode(_document, [&](const SceneNode& node) {
        text += node.path + "  " + renderIdText(node.renderId) + "  " +
                (node.entity.IsEmpty() ? "-" : entityText(node.entity)) + "\n";
        return node.renderId.Length() == 3 && node.path == "Machine/Pair:2" ? NextStep::Over
                                                                            : NextStep::Into;
    });
    EXPECT_EQ(text,
              "Machine  1/50  instance:50\n"
              "Machine/Pair  1/50/31  instance:31\n"
              "Machine/Pair/Bolt  1/50/31/21  instance:21\n"
              "Machine/Pair/Bolt/Shank  1/50/31/21/11  body:11\n"
              "Machine/Pair/Bolt/Shank/face 12  1/50/31/21/11/10002/12  face:12\n"
              "Machine/Pair/Bolt/Shank/Head top  1/50/31/21/11/10002/13  face:13\n"
              "Machine/Pair/Bolt/Shank/edge 14  1/50/31/21/11/10001/14  edge:14\n"
              "Machine/Pair/Bolt:2  1/50/31/22  instance:22\n"
              "Machine/Pair/Bolt:2/Shank  1/50/31/22/11  body:11\n"
              "Machine/Pair/Bolt:2/Shank/face 12  1/50/31/22/11/10002/12  face:12\n"
              "Machine/Pair/Bolt:2/Shank/Head top  1/50/31/22/11/10002/13  face:13\n"
              "Machine/Pair/Bolt:2/Shank/edge 14  1/50/31/22/11/10001/14  edge:14\n"
              "Machine/Pair:2  1/50/32  instance:32\n"
              "Machine/Plate  1/50/33  instance:33\n"
              "Machine/Plate/Body  1/50/33/41  body:41\n"
              "Machine/Plate/Body/face 42  1/50/33/41/10002/42  face:42\n"
              "Machine/Seam  1/50/30/34  body:34\n"
              "Machine/Seam/edge 35  1/50/30/34/10006/35  edge:35\n"
              "PMI  1/63  -\n"
              "PMI/Length  1/63/10100/60  annotation:60\n"
              "PMI/A  1/63/10102/61  annotation:61\n"
              "PMI/Bore  1/63/10101/62  annotation:62\n");
}

TEST_F(SceneIndexTest, AStoppedWalkMeetsNothingMore) {
    for (const std::string last : {"Machine", "Machine/Pair/Bolt/Shank/face 12",
                                   "Machine/Pair/Bolt/Shank/edge 14", "Machine/Seam", "PMI/A"}) {
        std::string met;
        _index.ForEachNode([&](const SceneNode& node) {
            met = node.path;
            return node.path == last ? NextStep::Stop : NextStep::Into;
        });
        EXPECT_EQ(met, last);
    }
}

TEST_F(SceneIndexTest, TheNodeOfAWalkIsWhatFindAnswers) {
    std::size_t count = 0;
    _index.ForEachNode([&](const SceneNode& node) {
        const std::optional<SceneNode> found = _index.Find(node.renderId);
        EXPECT_TRUE(found.has_value()) << node.path;
        if (found.has_value()) {
            EXPECT_EQ(found->kind, node.kind) << node.path;
            EXPECT_EQ(found->path, node.path);
            EXPECT_EQ(found->entity, node.entity) << node.path;
            EXPECT_EQ(found->components, node.components) << node.path;
            EXPECT_EQ(found->product, node.product) << node.path;
            EXPECT_EQ(found->body, node.body) << node.path;
            EXPECT_EQ(found->face, node.face) << node.path;
            EXPECT_EQ(found->edge, node.edge) << node.path;
            EXPECT_EQ(found->annotation, node.annotation) << node.path;
        }
        ++count;
        return NextStep::Into;
    });
    EXPECT_EQ(count, 32U);
}

TEST_F(SceneIndexTest, NodesWithoutANameAreFoundByTheirPath) {
    EXPECT_EQ(find("1/50/30")->kind, Kind::Bodies);
    EXPECT_EQ(find("1/50/30")->entity, viz::EntityId(0, viz::AssemblyType, 30));
    EXPECT_EQ(find("1/50/31/21/11/10001")->kind, Kind::Elements);
    EXPECT_EQ(find("1/50/31/21/11/10001")->entity, viz::EntityId(10, viz::BodyType, 11));
    EXPECT_EQ(find("1/63/10101")->kind, Kind::Group);
    EXPECT_TRUE(find("1/63/10101")->entity.IsEmpty());
    EXPECT_EQ(find("1/63/10102/61/2")->kind, Kind::Annotation);  // the place of its text
}

TEST_F(SceneIndexTest, PathsThatLeadNowhereAreNotFound) {
    for (const char* path :
         {"1", "2", "2/50", "1/51", "1/31", "1/50/21", "1/50/11", "1/50/31/11", "1/50/34",
          "1/50/31/20", "1/50/31/21/11/12", "1/50/31/21/11/10002/14", "1/50/31/21/11/10001/12",
          "1/50/31/21/11/10002/42", "1/50/31/21/11/10002/12/2", "1/50/30/34/10001/35", "1/63/10103",
          "1/63/10100/61", "1/50/63"}) {
        EXPECT_FALSE(find(path).has_value()) << path;
    }
}

TEST_F(SceneIndexTest, ASelectorIsARenderId) {
    EXPECT_THAT(renderIds("1/50/32/22"), ElementsAre("1/50/32/22"));
}

TEST_F(SceneIndexTest, ASelectorIsAnEntityAtEveryPlace) {
    EXPECT_THAT(renderIds("face:13"),
                ElementsAre("1/50/31/21/11/10002/13", "1/50/31/22/11/10002/13",
                            "1/50/32/21/11/10002/13", "1/50/32/22/11/10002/13"));
    EXPECT_THAT(renderIds("edge:35"), ElementsAre("1/50/30/34/10006/35"));
    EXPECT_THAT(renderIds("body:41"), ElementsAre("1/50/33/41"));
    EXPECT_THAT(renderIds("instance:22"), ElementsAre("1/50/31/22", "1/50/32/22"));
    EXPECT_THAT(renderIds("product:20"), ElementsAre("1/50/31", "1/50/32"));
    EXPECT_THAT(renderIds("annotation:61"), ElementsAre("1/63/10102/61"));
    EXPECT_THAT(renderIds("face:14"), IsEmpty());
}

TEST_F(SceneIndexTest, ASelectorIsTheKeyOfAnAnnotation) {
    EXPECT_THAT(renderIds("#620"), ElementsAre("1/63/10101/62"));
}

TEST_F(SceneIndexTest, ASelectorIsAPatternOfNames) {
    EXPECT_THAT(renderIds("Bolt:2"), ElementsAre("1/50/31/22", "1/50/32/22"));
    EXPECT_THAT(renderIds("/Machine/*"),
                ElementsAre("1/50/31", "1/50/32", "1/50/33", "1/50/30/34"));
    EXPECT_THAT(renderIds("Pair/**/Head*"),
                ElementsAre("1/50/31/21/11/10002/13", "1/50/31/22/11/10002/13"));
    EXPECT_THAT(renderIds("PMI/*"), SizeIs(3));
    EXPECT_THAT(renderIds("**"), SizeIs(32));
    EXPECT_THAT(renderIds("Screw"), IsEmpty());
}

TEST_F(SceneIndexTest, ANameThatLooksLikeARenderIdIsStillFound) {
    Document document;
    document.products = {support::product(2, "Part")};
    document.roots = {support::component(3, "12", 0)};
    const SceneIndex index(document);
    ASSERT_THAT(index.FindAll("12"), SizeIs(1));
    EXPECT_EQ(index.FindAll("12")[0].path, "12");
}

TEST(SceneIndexLimitTest, AChainOfAThousandLevelsIsWalkedAndALongerOneRefused) {
    const auto chain = [](std::uint32_t levels) {
        Document document;
        for (std::uint32_t i = 0; i < levels; ++i) {
            document.products.push_back(support::product(2 + i, "Level"));
            if (i + 1 < levels) {
                document.products[i].components = {support::component(5000 + i, "Next", i + 1)};
            }
        }
        document.roots = {support::component(10000, "Top", 0)};
        return document;
    };
    const Document deepest = chain(1000);
    std::size_t count = 0;
    SceneIndex(deepest).ForEachNode([&](const SceneNode&) {
        ++count;
        return NextStep::Into;
    });
    EXPECT_EQ(count, 1000U);
    EXPECT_THROW(SceneIndex{chain(1001)}, std::runtime_error);
}

TEST(SceneIndexLimitTest, AProductThatContainsItselfIsRefused) {
    Document document;
    document.products = {support::product(2, "Snake")};
    document.products[0].components = {support::component(3, "Tail", 0),
                                       support::component(4, "Tail", 0)};
    document.roots = {support::component(5, "Snake", 0)};
    EXPECT_THROW(SceneIndex{document}, std::runtime_error);
}

TEST(SceneIndexLimitTest, AComponentOfNoProductIsRefused) {
    Document document;
    document.roots = {support::component(5, "Ghost", 0)};
    EXPECT_THROW(SceneIndex{document}, std::runtime_error);
}

}  // namespace
}  // namespace kesview
