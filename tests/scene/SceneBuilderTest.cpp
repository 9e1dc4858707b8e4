#include "scene/SceneHost.h"

#include <KesVizCore/KesVizCore.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <ostream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace KesVizCore {
namespace {

using support::CallLog;
using support::newItem;
using support::pathOf;
using support::SceneAdapter;
using support::valuesOf;

using Values = std::vector<std::uint64_t>;

constexpr std::uint64_t kLargest = std::numeric_limits<std::uint64_t>::max();

// ---- ContainerType

TEST(ContainerTypeTest, IsASigned32BitEnumerationOfTwo) {
    static_assert(
        std::is_same_v<std::underlying_type_t<SceneBuilder::ContainerType>, std::int32_t>);
    static_assert(!std::is_convertible_v<int, SceneBuilder::ContainerType>);
    EXPECT_EQ(SceneBuilder::AddressedContainer, 0);
    EXPECT_EQ(SceneBuilder::UnaddressedContainer, 1);
}

TEST(SceneBuilderTypeTest, IsMadeAndDestroyedByItsFactoryAlone) {
    static_assert(std::is_polymorphic_v<SceneBuilder>);
    static_assert(!std::is_default_constructible_v<SceneBuilder>);
    static_assert(!std::is_copy_constructible_v<SceneBuilder>);
    static_assert(!std::is_destructible_v<SceneBuilder>);
}

// ---- A builder with an adapter

class SceneBuilderTest : public testing::Test {
protected:
    SceneBuilderTest() : builder(factory.MakeSceneBuilder(&adapter)) {}
    ~SceneBuilderTest() override { factory.DeleteSceneBuilder(builder); }

    void openRoot() { adapter.openOnly(adapter._rootNode); }
    GeoNode* open() const {
        return adapter._openNodes.empty() ? nullptr : adapter._openNodes.top();
    }
    /// The scene's render id, with the container that render ids name.
    std::string state() const { return builder->GetContainerRenderId().ToString(); }

    SceneAdapter adapter;
    SceneBuilderFactory factory;
    SceneBuilder* builder;
};

TEST_F(SceneBuilderTest, StartsWithoutContentSceneOrContainer) {
    EXPECT_EQ(builder->GetView3DAdapter(), &adapter);
    EXPECT_FALSE(builder->HasContent());
    EXPECT_EQ(state(), "[  View3D ]");
    EXPECT_EQ(adapter.log, CallLog());
}

// ---- Construction

TEST_F(SceneBuilderTest, ConstructionBeginStartsTheConstructionAndOpensTheTopNode) {
    EXPECT_TRUE(builder->ConstructionBegin());
    EXPECT_EQ(adapter.log, (CallLog{"StartConstruction(null)", "OpenTopNode"}));
    EXPECT_EQ(open(), adapter._rootNode);
}

TEST_F(SceneBuilderTest, ConstructionBeginEmptiesTheSceneRenderIdAndKeepsItsOrigin) {
    openRoot();
    builder->SceneBegin(7, L"");
    ASSERT_EQ(state(), "[ 7 View3D ]");
    builder->ConstructionBegin();
    EXPECT_EQ(state(), "[  View3D ]");
}

// Only Clear forgets containers: a new construction goes on naming the last one of the old.
TEST_F(SceneBuilderTest, ConstructionBeginKeepsTheContainerAndTheContent) {
    openRoot();
    builder->ContainerBegin(12, L"", SceneBuilder::AddressedContainer);
    builder->SceneEnd();
    builder->ConstructionBegin();
    EXPECT_EQ(state(), "[ 12 View3D ]");
    EXPECT_TRUE(builder->HasContent());
}

TEST_F(SceneBuilderTest, ConstructionEndClosesTheTopNodeThenEndsTheConstruction) {
    openRoot();
    builder->ConstructionEnd();
    EXPECT_EQ(adapter.log, (CallLog{"CloseTopNode", "EndConstruction"}));
    EXPECT_EQ(open(), nullptr);
}

TEST_F(SceneBuilderTest, ConstructionEndKeepsSceneContainerAndContent) {
    openRoot();
    builder->SceneBegin(7, L"");
    builder->ContainerBegin(12, L"", SceneBuilder::AddressedContainer);
    builder->ConstructionEnd();
    EXPECT_EQ(state(), "[ 7, 12 View3D ]");
    EXPECT_FALSE(builder->HasContent());
}

// ---- What all Begins of a node share

struct Begin {
    const char* name;
    std::function<bool(SceneBuilder&)> call;  // of id 7 and the name Name
    std::string node;                         // what the adapter is asked for
    CallLog afterwards;                       // what else it is asked once the node is open
    std::string state;                        // the container render id then
};

void PrintTo(const Begin& begin, std::ostream* out) {
    *out << begin.name;
}

std::vector<Begin> allBegins() {
    static const std::uint64_t id = 7;
    static const std::wstring name = L"Name";
    static const RGBAColor red = RGBAColor::Red();
    const CallLog colored = {"GetCurrentOpenNode", "ApplyAttribute(0)"};
    return {
        {"Scene",
         [](SceneBuilder& b) { return b.SceneBegin(id, name); },
         "7, Name",
         {},
         "[ 7 View3D ]"},
        {"SceneLevel",
         [](SceneBuilder& b) { return b.SceneLevelBegin(id, name); },
         "7, Name",
         {},
         "[  View3D ]"},
        {"AddressedContainer",
         [](SceneBuilder& b) {
             return b.ContainerBegin(id, name, SceneBuilder::AddressedContainer);
         },
         "7, Name",
         {},
         "[ 7 View3D ]"},
        {"UnaddressedContainer",
         [](SceneBuilder& b) {
             return b.ContainerBegin(id, name, SceneBuilder::UnaddressedContainer);
         },
         "7, Name",
         {},
         "[  View3D ]"},
        {"Body",
         [](SceneBuilder& b) { return b.BodyBegin(id, name); },
         "7, Name",
         {},
         "[  View3D ]"},
        {"ColoredBody", [](SceneBuilder& b) { return b.BodyBegin(id, name, red); }, "7, Name",
         colored, "[  View3D ]"},
        {"EntityType",
         [](SceneBuilder& b) { return b.EntityTypeBegin(FaceType, name); },
         "10002, Name",
         {"SetFilterId(10002)"},
         "[  View3D ]"},
        {"Entity",
         [](SceneBuilder& b) { return b.EntityBegin(id, name); },
         "7, Name",
         {},
         "[  View3D ]"},
        {"ColoredEntity", [](SceneBuilder& b) { return b.EntityBegin(id, name, red); }, "7, Name",
         colored, "[  View3D ]"},
    };
}

std::string nameOf(const testing::TestParamInfo<Begin>& tested) {
    return tested.param.name;
}

class SceneBuilderBeginTest : public SceneBuilderTest, public testing::WithParamInterface<Begin> {
protected:
    /// The log of a Begin for which the adapter gave @p attempts, such as OpenNode.
    static CallLog expected(const std::vector<std::string>& attempts, bool open) {
        CallLog log;
        for (const std::string& attempt : attempts) {
            log.push_back(attempt + "(" + GetParam().node + ")");
        }
        if (open) {
            log.insert(log.end(), GetParam().afterwards.begin(), GetParam().afterwards.end());
        }
        return log;
    }
    static std::uint64_t nodeId() { return std::stoull(GetParam().node); }
};

TEST_P(SceneBuilderBeginTest, OpensTheNodeThatIsThere) {
    Node* const there = adapter.newChild(nodeId(), L"There before");
    openRoot();
    EXPECT_TRUE(GetParam().call(*builder));
    EXPECT_EQ(adapter.log, expected({"OpenNode"}, true));
    EXPECT_EQ(open(), there);
    EXPECT_EQ(there->Name(), L"There before");
    EXPECT_EQ(adapter._rootNode->Children().size(), 1U);
    EXPECT_EQ(state(), GetParam().state);
}

TEST_P(SceneBuilderBeginTest, CreatesTheNodeThatIsMissing) {
    openRoot();
    EXPECT_TRUE(GetParam().call(*builder));
    EXPECT_EQ(adapter.log, expected({"OpenNode", "CreateNode"}, true));
    ASSERT_EQ(open(), adapter._rootNode->GetChild(nodeId()));
    EXPECT_EQ(open()->Name(), L"Name");
    EXPECT_EQ(state(), GetParam().state);
}

TEST_P(SceneBuilderBeginTest, ChangesNothingWhenTheNodeCanBeNeitherOpenedNorCreated) {
    adapter.newChild(nodeId());
    adapter.refusesToOpen.insert(nodeId());
    adapter.refusesToCreate.insert(nodeId());
    openRoot();
    EXPECT_FALSE(GetParam().call(*builder));
    EXPECT_EQ(adapter.log, expected({"OpenNode", "CreateNode"}, false));
    EXPECT_EQ(open(), adapter._rootNode);
    EXPECT_TRUE(adapter._rootNode->Attributes()->empty());
    EXPECT_EQ(adapter._rootNode->GetFilterID(), -1);
    EXPECT_EQ(state(), "[  View3D ]");
    EXPECT_FALSE(builder->HasContent());
}

TEST_P(SceneBuilderBeginTest, IsRefusedOutsideOfAConstruction) {
    EXPECT_FALSE(GetParam().call(*builder));
    EXPECT_EQ(adapter.log, expected({"OpenNode", "CreateNode"}, false));
    EXPECT_EQ(state(), "[  View3D ]");
}

TEST_P(SceneBuilderBeginTest, BegunTwiceReopensTheSameNode) {
    openRoot();
    EXPECT_TRUE(GetParam().call(*builder));
    GeoNode* const first = open();
    openRoot();
    EXPECT_TRUE(GetParam().call(*builder));
    EXPECT_EQ(open(), first);
    EXPECT_EQ(adapter._rootNode->Children().size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(AllBegins, SceneBuilderBeginTest, testing::ValuesIn(allBegins()), nameOf);

// ---- What is particular to each

TEST_F(SceneBuilderTest, SceneBeginAppendsToTheSceneRenderIdEachTime) {
    openRoot();
    builder->SceneBegin(7, L"");
    builder->SceneBegin(kLargest, L"");
    builder->SceneBegin(0, L"");
    EXPECT_EQ(valuesOf(builder->GetContainerRenderId()), (Values{7, kLargest, 0}));
}

TEST_F(SceneBuilderTest, SceneEndClosesNoNode) {
    openRoot();
    builder->SceneBegin(7, L"");
    GeoNode* const scene = open();
    adapter.takeLog();
    builder->SceneEnd();
    EXPECT_EQ(adapter.log, CallLog());
    EXPECT_EQ(open(), scene);
    EXPECT_EQ(state(), "[ 7 View3D ]");
}

TEST_F(SceneBuilderTest, SceneEndWithoutSceneBeginSetsTheContentFlag) {
    builder->SceneEnd();
    EXPECT_TRUE(builder->HasContent());
}

TEST_F(SceneBuilderTest, NoBeginSetsTheContentFlag) {
    openRoot();
    for (const Begin& begin : allBegins()) {
        EXPECT_TRUE(begin.call(*builder)) << begin.name;
        EXPECT_FALSE(builder->HasContent()) << begin.name;
    }
}

TEST_F(SceneBuilderTest, ContainerEndClosesTheNodeAndRenderIdsGoOnNamingIt) {
    openRoot();
    builder->SceneBegin(7, L"");
    builder->ContainerBegin(12, L"", SceneBuilder::AddressedContainer);
    adapter.takeLog();
    builder->ContainerEnd();
    EXPECT_EQ(adapter.log, CallLog{"CloseNode"});
    EXPECT_EQ(open()->Id(), 7U);
    EXPECT_EQ(state(), "[ 7, 12 View3D ]");
}

TEST_F(SceneBuilderTest, TheLastAddressedContainerCountsAlsoAfterItsEnd) {
    openRoot();
    builder->ContainerBegin(12, L"", SceneBuilder::AddressedContainer);
    builder->ContainerBegin(13, L"", SceneBuilder::AddressedContainer);
    EXPECT_EQ(state(), "[ 13 View3D ]");
    builder->ContainerEnd();  // does not lead back to 12, which is open
    EXPECT_EQ(state(), "[ 13 View3D ]");
    builder->ContainerEnd();
    EXPECT_EQ(state(), "[ 13 View3D ]");
}

TEST_F(SceneBuilderTest, EveryContainerTypeOtherThanZeroIsUnaddressed) {
    openRoot();
    builder->ContainerBegin(12, L"", SceneBuilder::AddressedContainer);
    std::uint64_t id = 20;
    for (const int raw : {1, 2, -1, std::numeric_limits<int>::min()}) {
        EXPECT_TRUE(
            builder->ContainerBegin(id, L"", static_cast<SceneBuilder::ContainerType>(raw)));
        EXPECT_EQ(open()->Id(), id) << "a container of type " << raw << " is a node";
        EXPECT_EQ(state(), "[ 12 View3D ]") << "type " << raw;
        ++id;
    }
}

TEST_F(SceneBuilderTest, BodyBeginWithAColorSetsItWithoutPriority) {
    openRoot();
    builder->BodyBegin(7, L"", RGBAColor(1, 2, 3, 4));
    auto* const color = dynamic_cast<AttributeColor*>(open()->GetAttribute(AttributeType::Color));
    ASSERT_NE(color, nullptr);
    EXPECT_EQ(color->GetColor(), RGBAColor(1, 2, 3, 4));
    EXPECT_FALSE(color->HasPriority());
}

TEST_F(SceneBuilderTest, BodyBeginWithoutAColorLeavesTheColorOfTheBody) {
    openRoot();
    builder->BodyBegin(7, L"", RGBAColor(1, 2, 3, 4));
    Attribute* const color = open()->GetAttribute(AttributeType::Color);
    openRoot();
    builder->BodyBegin(7, L"");
    EXPECT_EQ(open()->GetAttribute(AttributeType::Color), color);
}

TEST_F(SceneBuilderTest, EntityTypeBeginTakesTheTypesNumberForIdAndFilter) {
    openRoot();
    EXPECT_TRUE(builder->EntityTypeBegin(OtherType, L"Others"));
    EXPECT_EQ(adapter.log, (CallLog{"OpenNode(99999, Others)", "CreateNode(99999, Others)",
                                    "SetFilterId(99999)"}));
    EXPECT_EQ(open()->Id(), 99999U);
    EXPECT_EQ(open()->GetFilterID(), 99999);
}

TEST_F(SceneBuilderTest, EntityTypeBeginSignExtendsANegativeType) {
    openRoot();
    EXPECT_TRUE(builder->EntityTypeBegin(InvalidType, L""));
    EXPECT_EQ(adapter.takeLog(),
              (CallLog{"OpenNode(18446744073709551615, )", "CreateNode(18446744073709551615, )",
                       "SetFilterId(-1)"}));
    EXPECT_TRUE(builder->EntityTypeBegin(
        static_cast<EntityType>(std::numeric_limits<std::int32_t>::min()), L""));
    EXPECT_EQ(adapter.takeLog(),
              (CallLog{"OpenNode(18446744071562067968, )", "CreateNode(18446744071562067968, )",
                       "SetFilterId(-2147483648)"}));
}

TEST_F(SceneBuilderTest, EntityTypeBeginSetsTheFilterOfAReopenedNodeToo) {
    Node* const there = adapter.newChild(10002);
    openRoot();
    builder->EntityTypeBegin(FaceType, L"");
    EXPECT_EQ(there->GetFilterID(), 10002);
}

TEST_F(SceneBuilderTest, EntityBeginWithAColorSetsItWithoutPriority) {
    openRoot();
    builder->EntityBegin(7, L"", RGBAColor(1, 2, 3, 4));
    auto* const color = dynamic_cast<AttributeColor*>(open()->GetAttribute(AttributeType::Color));
    ASSERT_NE(color, nullptr);
    EXPECT_EQ(color->GetColor(), RGBAColor(1, 2, 3, 4));
    EXPECT_FALSE(color->HasPriority());
}

TEST_F(SceneBuilderTest, EntityBeginWithoutAColorLeavesTheColorOfTheEntity) {
    openRoot();
    builder->EntityBegin(7, L"", RGBAColor(1, 2, 3, 4));
    Attribute* const color = open()->GetAttribute(AttributeType::Color);
    openRoot();
    builder->EntityBegin(7, L"");
    EXPECT_EQ(open()->GetAttribute(AttributeType::Color), color);
}

TEST_F(SceneBuilderTest, EachEndOfANodeClosesOneNode) {
    using End = void (SceneBuilder::*)();
    const std::pair<const char*, End> ends[] = {{"Container", &SceneBuilder::ContainerEnd},
                                                {"Body", &SceneBuilder::BodyEnd},
                                                {"EntityType", &SceneBuilder::EntityTypeEnd},
                                                {"Entity", &SceneBuilder::EntityEnd},
                                                {"SceneLevel", &SceneBuilder::SceneLevelEnd}};
    openRoot();
    for (const auto& [name, end] : ends) {
        builder->BodyBegin(7, L"");
        adapter.takeLog();
        (builder->*end)();
        EXPECT_EQ(adapter.log, CallLog{"CloseNode"}) << name;
        EXPECT_EQ(open(), adapter._rootNode) << name;
        EXPECT_FALSE(builder->HasContent()) << name;
    }
}

// Nesting is the host's to keep: the builder forwards what it is told.
TEST_F(SceneBuilderTest, AnEndClosesWhateverIsOpen) {
    openRoot();
    builder->BodyBegin(7, L"");
    builder->EntityEnd();
    EXPECT_EQ(open(), adapter._rootNode);
}

// ---- AddGeometry

TEST_F(SceneBuilderTest, AddGeometryHandsTheItemToTheAdapter) {
    openRoot();
    AGeometryItem* const item = newItem(5);
    EXPECT_TRUE(builder->AddGeometry(item));
    EXPECT_EQ(adapter.log, CallLog{"AddGeometryItem(5)"});
    EXPECT_EQ(open()->Geometry(), std::vector<AGeometryItem*>{item});
}

TEST_F(SceneBuilderTest, AddGeometryPassesNullOn) {
    openRoot();
    EXPECT_TRUE(builder->AddGeometry(nullptr));
    EXPECT_EQ(adapter.log, CallLog{"AddGeometryItem(null)"});
}

// ---- Clear

TEST_F(SceneBuilderTest, ClearOfOneIdClearsAScene) {
    builder->Clear(pathOf({7}));
    EXPECT_EQ(adapter.log, CallLog{"ClearScene([ 7 View3D ])"});
}

TEST_F(SceneBuilderTest, ClearOfAnyOtherLengthClearsANode) {
    builder->Clear(pathOf({}));
    builder->Clear(pathOf({1, 7}));
    builder->Clear(pathOf({1, 7, 9}));
    EXPECT_EQ(adapter.log, (CallLog{"Clear([  View3D ])", "Clear([ 1, 7 View3D ])",
                                    "Clear([ 1, 7, 9 View3D ])"}));
}

TEST_F(SceneBuilderTest, ClearForgetsContentAndContainersAndKeepsTheScene) {
    for (const Values& path : {Values{7}, Values{}, Values{1, 7}}) {
        builder->ConstructionBegin();
        builder->SceneBegin(7, L"");
        builder->ContainerBegin(12, L"", SceneBuilder::AddressedContainer);
        builder->ContainerBegin(13, L"", SceneBuilder::AddressedContainer);
        builder->SceneEnd();
        builder->ConstructionEnd();
        builder->Clear(pathOf(path));
        EXPECT_FALSE(builder->HasContent()) << path.size();
        EXPECT_EQ(state(), "[ 7 View3D ]") << path.size();
    }
}

TEST_F(SceneBuilderTest, AContainerBegunAfterClearCountsAgain) {
    openRoot();
    builder->ContainerBegin(12, L"", SceneBuilder::AddressedContainer);
    builder->Clear(pathOf({7}));
    builder->ContainerBegin(13, L"", SceneBuilder::AddressedContainer);
    EXPECT_EQ(state(), "[ 13 View3D ]");
}

// ---- Attributes of the open node

TEST_F(SceneBuilderTest, SetColorSetsOneAttributeOnTheNodeAndAppliesTheSame) {
    openRoot();
    builder->SetColor(RGBAColor(1, 2, 3, 4), true);
    EXPECT_EQ(adapter.log, (CallLog{"GetCurrentOpenNode", "ApplyAttribute(0)"}));
    ASSERT_EQ(adapter.applied.size(), 1U);
    EXPECT_TRUE(adapter.stoodOnNode[0]) << "set before it is applied";
    EXPECT_EQ(open()->GetAttribute(AttributeType::Color), adapter.applied[0]);
    auto* const color = dynamic_cast<AttributeColor*>(adapter.applied[0]);
    ASSERT_NE(color, nullptr);
    EXPECT_EQ(color->GetColor(), RGBAColor(1, 2, 3, 4));
}

TEST_F(SceneBuilderTest, SetColorTakesItsFlagForThePriority) {
    openRoot();
    for (const bool priority : {true, false}) {
        builder->SetColor(RGBAColor::Red(), priority);
        const auto* const color =
            dynamic_cast<AttributeColor*>(open()->GetAttribute(AttributeType::Color));
        ASSERT_NE(color, nullptr);
        EXPECT_EQ(color->HasPriority(), priority);
    }
}

TEST_F(SceneBuilderTest, SetColorReplacesTheColorBefore) {
    openRoot();
    builder->SetColor(RGBAColor::Red(), false);
    builder->SetColor(RGBAColor::Blue(), false);
    ASSERT_EQ(open()->Attributes()->size(), 1U);
    auto* const color = dynamic_cast<AttributeColor*>(open()->Attributes()->front());
    ASSERT_NE(color, nullptr);
    EXPECT_EQ(color->GetColor(), RGBAColor::Blue());
}

TEST_F(SceneBuilderTest, SetColorWithoutAnOpenNodeDoesNothing) {
    builder->SetColor(RGBAColor::Red(), true);
    EXPECT_EQ(adapter.log, CallLog{"GetCurrentOpenNode"});
}

TEST_F(SceneBuilderTest, SetLineStyleSetsOneAttributeOnTheNodeAndAppliesTheSame) {
    openRoot();
    builder->SetLineStyle("dashed", 2.5F);
    EXPECT_EQ(adapter.log, (CallLog{"GetCurrentOpenNode", "ApplyAttribute(5)"}));
    ASSERT_EQ(adapter.applied.size(), 1U);
    EXPECT_TRUE(adapter.stoodOnNode[0]) << "set before it is applied";
    EXPECT_EQ(open()->GetAttribute(AttributeType::LineStyle), adapter.applied[0]);
    auto* const style = dynamic_cast<AttributeLineStyle*>(adapter.applied[0]);
    ASSERT_NE(style, nullptr);
    EXPECT_EQ(style->GetPattern(), "dashed");
    EXPECT_EQ(style->GetWeight(), 2.5F);
}

TEST_F(SceneBuilderTest, SetLineStyleWithoutAnOpenNodeDoesNothing) {
    builder->SetLineStyle("dashed", 2.5F);
    EXPECT_EQ(adapter.log, CallLog{"GetCurrentOpenNode"});
}

TEST_F(SceneBuilderTest, SetTransformationOnlyAppliesAnAttribute) {
    openRoot();
    double matrix[16];
    for (int place = 0; place < 16; ++place) {
        matrix[place] = place + 0.5;
    }
    builder->SetTransformation(matrix);
    EXPECT_EQ(adapter.log, CallLog{"ApplyAttribute(2)"});
    EXPECT_EQ(open()->GetAttribute(AttributeType::Transform), nullptr);
    auto* const transform = dynamic_cast<AttributeTransform*>(adapter.applied.back());
    ASSERT_NE(transform, nullptr);
    for (int place = 0; place < 16; ++place) {
        EXPECT_EQ(transform->GetTransform()[place], place + 0.5);
    }
}

TEST_F(SceneBuilderTest, SetTransformationNeedsNoOpenNode) {
    double matrix[16] = {};
    builder->SetTransformation(matrix);
    EXPECT_EQ(adapter.log, CallLog{"ApplyAttribute(2)"});
}

TEST_F(SceneBuilderTest, SetTransformationOfNullDoesNothing) {
    openRoot();
    builder->SetTransformation(nullptr);
    EXPECT_EQ(adapter.log, CallLog());
}

// ---- Editing

TEST_F(SceneBuilderTest, DeleteAnswersFalseAlthoughTheNodeIsGone) {
    adapter.newChild(5);
    openRoot();
    EXPECT_FALSE(builder->Delete(pathOf({1, 5})));
    EXPECT_EQ(adapter.log, CallLog{"DeleteNode([ 1, 5 View3D ])"});
    EXPECT_EQ(adapter._rootNode->GetChild(5), nullptr);
}

TEST_F(SceneBuilderTest, DeleteOfAnUnknownNodeAnswersFalse) {
    adapter.newChild(5);
    openRoot();
    EXPECT_FALSE(builder->Delete(pathOf({1, 6})));
    EXPECT_EQ(adapter.log, CallLog{"DeleteNode([ 1, 6 View3D ])"});
    EXPECT_NE(adapter._rootNode->GetChild(5), nullptr);
}

TEST_F(SceneBuilderTest, DeleteKeepsContentAndContainers) {
    adapter.newChild(5);
    openRoot();
    builder->ContainerBegin(12, L"", SceneBuilder::AddressedContainer);
    builder->ContainerEnd();
    builder->SceneEnd();
    builder->Delete(pathOf({1, 12}));
    EXPECT_TRUE(builder->HasContent());
    EXPECT_EQ(state(), "[ 12 View3D ]");
}

TEST_F(SceneBuilderTest, MoveGeometryFromCopiesAttributesThenTransfersGeometry) {
    Node* const source = adapter.newChild(5);
    AGeometryItem* const item = newItem(50);
    source->AddGeometry(item);
    source->SetAttribute(new AttributeColor(RGBAColor(1, 2, 3, 4), true));
    Node* const target = adapter.newChild(6);
    adapter.openOnly(target);
    EXPECT_TRUE(builder->MoveGeometryFrom(pathOf({1, 5})));
    EXPECT_EQ(adapter.log, (CallLog{"GetCurrentOpenNode", "GetNode([ 1, 5 View3D ])",
                                    "CopyNodeAttributesFrom(5)", "TransferNodeGeometryFrom(5)"}));
    EXPECT_TRUE(source->Geometry().empty());
    EXPECT_EQ(target->Geometry(), std::vector<AGeometryItem*>{item});
    ASSERT_EQ(adapter.applied.size(), 1U);
    auto* const color = dynamic_cast<AttributeColor*>(adapter.applied[0]);
    ASSERT_NE(color, nullptr);
    EXPECT_EQ(color->GetColor(), RGBAColor(1, 2, 3, 4));
    EXPECT_TRUE(color->HasPriority());
}

TEST_F(SceneBuilderTest, MoveGeometryFromAnUnknownNodeAnswersFalse) {
    Node* const target = adapter.newChild(6);
    target->SetAttribute(new AttributeColor(RGBAColor::Red(), false));
    adapter.openOnly(target);
    EXPECT_FALSE(builder->MoveGeometryFrom(pathOf({1, 5})));
    EXPECT_EQ(adapter.log, (CallLog{"GetCurrentOpenNode", "GetNode([ 1, 5 View3D ])"}));
    EXPECT_NE(target->GetAttribute(AttributeType::Color), nullptr);
}

// The source alone decides the answer; without an open node nothing is there to move to.
TEST_F(SceneBuilderTest, MoveGeometryFromWithoutAnOpenNodeAnswersTrueAndMovesNothing) {
    Node* const source = adapter.newChild(5);
    source->AddGeometry(newItem(50));
    EXPECT_TRUE(builder->MoveGeometryFrom(pathOf({1, 5})));
    EXPECT_EQ(adapter.log, (CallLog{"GetCurrentOpenNode", "GetNode([ 1, 5 View3D ])",
                                    "CopyNodeAttributesFrom(5)", "TransferNodeGeometryFrom(5)"}));
    EXPECT_EQ(source->Geometry().size(), 1U);
}

TEST_F(SceneBuilderTest, AddReferenceClosesTheNodeItOpenedAndAnswersFalse) {
    Node* const referenced = adapter.newChild(5);
    Node* const group = adapter.newChild(6);
    adapter.openOnly(group);
    EXPECT_FALSE(builder->AddReference(pathOf({1, 5})));
    EXPECT_EQ(adapter.log, (CallLog{"AddReference([ 1, 5 View3D ])", "CloseNode"}));
    EXPECT_EQ(group->GetChild(5), referenced);
    EXPECT_EQ(open(), group);
    group->DeleteChildById(5);  // a node whose parents die together would survive
}

TEST_F(SceneBuilderTest, AddReferenceThatIsRefusedClosesNothing) {
    adapter.newChild(5);
    openRoot();
    EXPECT_FALSE(builder->AddReference(pathOf({1, 5})));  // a child of the root already
    EXPECT_FALSE(builder->AddReference(pathOf({1, 9})));
    EXPECT_EQ(adapter.log,
              (CallLog{"AddReference([ 1, 5 View3D ])", "AddReference([ 1, 9 View3D ])"}));
    EXPECT_EQ(open(), adapter._rootNode);
}

// ---- The rest

TEST_F(SceneBuilderTest, GetRenderingOptionsAsksTheAdapter) {
    EXPECT_EQ(builder->GetRenderingOptions(), &adapter.options);
    EXPECT_EQ(adapter.log, CallLog{"GetRenderingOptions"});
}

TEST_F(SceneBuilderTest, SetFilterPassesTheIdToTheAdapter) {
    openRoot();
    builder->SetFilter(42);
    builder->SetFilter(-7);
    EXPECT_EQ(adapter.log, (CallLog{"SetFilterId(42)", "SetFilterId(-7)"}));
    EXPECT_EQ(open()->GetFilterID(), -7);
}

TEST_F(SceneBuilderTest, SetVisibilityOnlyAppliesAnAttribute) {
    openRoot();
    for (const bool visible : {true, false}) {
        adapter.takeLog();
        EXPECT_TRUE(builder->SetVisibility(visible));
        EXPECT_EQ(adapter.log, CallLog{"ApplyAttribute(4)"});
        auto* const attribute = dynamic_cast<AttributeVisibility*>(adapter.applied.back());
        ASSERT_NE(attribute, nullptr);
        EXPECT_EQ(attribute->GetIsVisible(), visible);
    }
    EXPECT_EQ(open()->GetAttribute(AttributeType::Visibility), nullptr);
}

TEST_F(SceneBuilderTest, SetVisibilityNeedsNoOpenNode) {
    EXPECT_TRUE(builder->SetVisibility(true));
    EXPECT_EQ(adapter.log, CallLog{"ApplyAttribute(4)"});
}

TEST_F(SceneBuilderTest, GetContainerRenderIdAnswersACopy) {
    openRoot();
    builder->SceneBegin(7, L"");
    builder->GetContainerRenderId().AddValue(99);
    builder->GetContainerRenderId()[0] = 98;
    EXPECT_EQ(state(), "[ 7 View3D ]");
}

TEST_F(SceneBuilderTest, GetCurrentRenderIdAnswersThePathOfTheOpenNode) {
    openRoot();
    builder->SceneBegin(7, L"");
    builder->BodyBegin(9, L"");
    adapter.takeLog();
    RenderId out({5, 5, 5, 5, 5}, ViewTree);
    EXPECT_TRUE(builder->GetCurrentRenderId(out));
    EXPECT_EQ(adapter.log, CallLog{"GetCurrentOpenNode"});
    EXPECT_EQ(out.ToString(), "[ 1, 7, 9 View3D ]");
}

TEST_F(SceneBuilderTest, GetCurrentRenderIdWithoutAnOpenNodeLeavesOutAlone) {
    RenderId out({5}, ViewTree);
    EXPECT_FALSE(builder->GetCurrentRenderId(out));
    EXPECT_EQ(adapter.log, CallLog{"GetCurrentOpenNode"});
    EXPECT_EQ(out.ToString(), "[ 5 ViewTree ]");
}

TEST_F(SceneBuilderTest, AWholeBuildAsksTheAdapterInTheOrderOfItsCalls) {
    builder->ConstructionBegin();
    builder->SceneBegin(7, L"Scene");
    builder->SceneLevelBegin(8, L"Level");
    builder->ContainerBegin(9, L"Container", SceneBuilder::AddressedContainer);
    builder->BodyBegin(10, L"Body", RGBAColor::Red());
    builder->EntityTypeBegin(FaceType, L"Faces");
    builder->EntityBegin(11, L"Face");
    builder->AddGeometry(newItem(50));
    builder->EntityEnd();
    builder->EntityTypeEnd();
    builder->BodyEnd();
    builder->ContainerEnd();
    builder->SceneLevelEnd();
    builder->SceneEnd();
    builder->ConstructionEnd();
    EXPECT_EQ(adapter.log, (CallLog{"StartConstruction(null)",
                                    "OpenTopNode",
                                    "OpenNode(7, Scene)",
                                    "CreateNode(7, Scene)",
                                    "OpenNode(8, Level)",
                                    "CreateNode(8, Level)",
                                    "OpenNode(9, Container)",
                                    "CreateNode(9, Container)",
                                    "OpenNode(10, Body)",
                                    "CreateNode(10, Body)",
                                    "GetCurrentOpenNode",
                                    "ApplyAttribute(0)",
                                    "OpenNode(10002, Faces)",
                                    "CreateNode(10002, Faces)",
                                    "SetFilterId(10002)",
                                    "OpenNode(11, Face)",
                                    "CreateNode(11, Face)",
                                    "AddGeometryItem(50)",
                                    "CloseNode",
                                    "CloseNode",
                                    "CloseNode",
                                    "CloseNode",
                                    "CloseNode",
                                    "CloseTopNode",
                                    "EndConstruction"}));
    EXPECT_TRUE(builder->HasContent());
}

// ---- Deriving from it

TEST(SceneBuilderDerivedTest, OpenOrCreateNodeOpensBeforeItCreates) {
    SceneAdapter adapter;
    support::OpenBuilderFactory factory;
    SceneBuilder* made = factory.MakeSceneBuilder(&adapter);
    auto* const builder = static_cast<support::OpenBuilder*>(made);
    adapter.openOnly(adapter._rootNode);
    EXPECT_TRUE(builder->openOrCreateNode(5, L"Five"));
    adapter.openOnly(adapter._rootNode);
    EXPECT_TRUE(builder->openOrCreateNode(5, L"Another"));
    adapter.refusesToCreate.insert(6);
    EXPECT_FALSE(builder->openOrCreateNode(6, L"Six"));
    EXPECT_EQ(adapter.log,
              (CallLog{"OpenNode(5, Five)", "CreateNode(5, Five)", "OpenNode(5, Another)",
                       "OpenNode(6, Six)", "CreateNode(6, Six)"}));
    factory.DeleteSceneBuilder(made);
}

TEST(SceneBuilderDerivedTest, ColorOfABeginGoesThroughTheDerivedSetColor) {
    class OwnColors : public SceneBuilder {
    public:
        void SetColor(const RGBAColor&, const bool& flag) override { flags.push_back(flag); }
        std::vector<bool> flags;
    };
    class OwnColorsFactory : public SceneBuilderFactory {
    protected:
        SceneBuilder* makeSceneBuilderImpl() override { return new OwnColors(); }
    };
    SceneAdapter adapter;
    OwnColorsFactory factory;
    SceneBuilder* builder = factory.MakeSceneBuilder(&adapter);
    adapter.openOnly(adapter._rootNode);
    builder->BodyBegin(5, L"", RGBAColor::Red());
    builder->EntityBegin(6, L"", RGBAColor::Red());
    EXPECT_EQ(static_cast<OwnColors*>(builder)->flags, (std::vector<bool>{false, false}));
    factory.DeleteSceneBuilder(builder);
}

// ---- A builder without an adapter

class SceneBuilderWithoutAdapterTest : public testing::Test {
protected:
    SceneBuilderWithoutAdapterTest() : builder(factory.MakeSceneBuilder(nullptr)) {}
    ~SceneBuilderWithoutAdapterTest() override { factory.DeleteSceneBuilder(builder); }

    void expectUntouched() const {
        EXPECT_FALSE(builder->HasContent());
        EXPECT_EQ(builder->GetContainerRenderId().ToString(), "[  View3D ]");
    }

    support::OpenBuilderFactory factory;
    SceneBuilder* builder;
};

TEST_F(SceneBuilderWithoutAdapterTest, HasNoAdapterAndNoOptions) {
    EXPECT_EQ(builder->GetView3DAdapter(), nullptr);
    EXPECT_EQ(builder->GetRenderingOptions(), nullptr);
}

TEST_F(SceneBuilderWithoutAdapterTest, ConstructionBeginAnswersFalse) {
    EXPECT_FALSE(builder->ConstructionBegin());
    expectUntouched();
}

TEST_F(SceneBuilderWithoutAdapterTest, EveryBeginAnswersFalse) {
    for (const Begin& begin : allBegins()) {
        EXPECT_FALSE(begin.call(*builder)) << begin.name;
    }
    expectUntouched();
}

TEST_F(SceneBuilderWithoutAdapterTest, OpenOrCreateNodeAnswersFalse) {
    EXPECT_FALSE(static_cast<support::OpenBuilder*>(builder)->openOrCreateNode(5, L"Five"));
}

TEST_F(SceneBuilderWithoutAdapterTest, EveryEndDoesNothing) {
    builder->ConstructionEnd();
    builder->SceneEnd();
    builder->SceneLevelEnd();
    builder->ContainerEnd();
    builder->BodyEnd();
    builder->EntityTypeEnd();
    builder->EntityEnd();
    expectUntouched();
}

TEST_F(SceneBuilderWithoutAdapterTest, AddGeometryLeavesTheItemToTheCaller) {
    std::vector<std::uint64_t> destroyed;
    const std::unique_ptr<AGeometryItem> item(newItem(5, &destroyed));
    EXPECT_FALSE(builder->AddGeometry(item.get()));
    EXPECT_TRUE(destroyed.empty());
}

TEST_F(SceneBuilderWithoutAdapterTest, SettersDoNothing) {
    double matrix[16] = {};
    builder->SetColor(RGBAColor::Red(), true);
    builder->SetLineStyle("dashed", 1.0F);
    builder->SetTransformation(matrix);
    builder->SetTransformation(nullptr);
    builder->SetFilter(5);
    expectUntouched();
}

TEST_F(SceneBuilderWithoutAdapterTest, SetVisibilityAnswersFalse) {
    EXPECT_FALSE(builder->SetVisibility(true));
}

TEST_F(SceneBuilderWithoutAdapterTest, EditsAnswerFalse) {
    EXPECT_FALSE(builder->Delete(pathOf({1, 5})));
    EXPECT_FALSE(builder->MoveGeometryFrom(pathOf({1, 5})));
    EXPECT_FALSE(builder->AddReference(pathOf({1, 5})));
    builder->Clear(pathOf({1}));
    builder->Clear(pathOf({1, 5}));
    expectUntouched();
}

TEST_F(SceneBuilderWithoutAdapterTest, RenderIdsAreLeftAlone) {
    RenderId out({5, 6}, ViewTree);
    const EntityId face(1, FaceType, 2);
    builder->BuildRenderId(out, face, RGBAColor::Red(), RGBAColor::Red());
    builder->BuildRenderId(out, FaceType, face, RGBAColor::Red(), RGBAColor::Red());
    EXPECT_FALSE(builder->GetCurrentRenderId(out));
    EXPECT_EQ(out.ToString(), "[ 5, 6 ViewTree ]");
}

TEST_F(SceneBuilderWithoutAdapterTest, ExtractEntityIdLeavesTheEntityAlone) {
    EntityId out(1, FaceType, 2);
    builder->ExtractEntityId(pathOf({1, 2, 3}), out);
    builder->ExtractEntityId(pathOf({}), out);
    EXPECT_EQ(out, EntityId(1, FaceType, 2));
}

}  // namespace
}  // namespace KesVizCore
