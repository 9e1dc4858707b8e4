// The indented text of a graph, compared whole.

#include "view/ViewTestKit.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace KesVizCore {
namespace {

using support::addGroup;
using support::addLeaf;
using support::newItem;
using support::RecordingAdapter;

std::string dumpOf(RecordingAdapter& adapter, bool flag = false) {
    std::string text;
    adapter.GetSceneStructure(text, flag);
    return text;
}

void addItems(GeoNode& node, int count) {
    for (int item = 0; item < count; ++item) {
        node.AddGeometry(newItem(static_cast<std::uint64_t>(item)));
    }
}

// --- the whole graph ----------------------------------------------------------------------------

TEST(SceneDumpTest, RootWithOneLeaf) {
    RecordingAdapter adapter;
    GeoNode* const leaf = addLeaf(adapter._rootNode, 2, L"A");
    leaf->SetAttribute(new AttributeColor(RGBAColor::Red(), false));
    addItems(*leaf, 3);
    EXPECT_EQ(dumpOf(adapter),
              "Node [1] 'ROOT', parents: 0 , children: 1 \n"
              "  Node [2] 'A', parents: 1    geometry objects: 3  , Attr: Co\n");
}

TEST(SceneDumpTest, WithoutARootNothingIsWritten) {
    RecordingAdapter adapter(false);
    EXPECT_EQ(dumpOf(adapter), "");
}

// Without children a group is written as a leaf is.
TEST(SceneDumpTest, RootAlone) {
    RecordingAdapter adapter;
    EXPECT_EQ(dumpOf(adapter), "Node [1] 'ROOT', parents: 0    geometry objects: 0  \n");
}

TEST(SceneDumpTest, EmptyGroupHasTheFormOfALeaf) {
    RecordingAdapter adapter;
    addItems(*addGroup(adapter._rootNode, 2, L"group"), 4);
    addItems(*addLeaf(adapter._rootNode, 3, L"leaf"), 4);
    EXPECT_EQ(dumpOf(adapter),
              "Node [1] 'ROOT', parents: 0 , children: 2 \n"
              "  Node [2] 'group', parents: 1    geometry objects: 4  \n"
              "  Node [3] 'leaf', parents: 1    geometry objects: 4  \n");
}

TEST(SceneDumpTest, GroupWithChildrenDoesNotTellItsGeometry) {
    RecordingAdapter adapter;
    Node* const group = addGroup(adapter._rootNode, 2, L"group");
    addItems(*group, 7);
    addLeaf(group, 3, L"leaf");
    EXPECT_EQ(dumpOf(adapter),
              "Node [1] 'ROOT', parents: 0 , children: 1 \n"
              "  Node [2] 'group', parents: 1 , children: 1 \n"
              "    Node [3] 'leaf', parents: 1    geometry objects: 0  \n");
}

TEST(SceneDumpTest, EveryLevelIsTwoBlanksDeeper) {
    RecordingAdapter adapter;
    Node* const assembly = addGroup(adapter._rootNode, 2, L"assembly");
    Node* const part = addGroup(assembly, 10, L"part");
    addLeaf(part, 30, L"body");
    addLeaf(assembly, 20, L"note");
    addLeaf(adapter._rootNode, 3, L"frame");
    EXPECT_EQ(dumpOf(adapter),
              "Node [1] 'ROOT', parents: 0 , children: 2 \n"
              "  Node [2] 'assembly', parents: 1 , children: 2 \n"
              "    Node [10] 'part', parents: 1 , children: 1 \n"
              "      Node [30] 'body', parents: 1    geometry objects: 0  \n"
              "    Node [20] 'note', parents: 1    geometry objects: 0  \n"
              "  Node [3] 'frame', parents: 1    geometry objects: 0  \n");
}

TEST(SceneDumpTest, ChildrenComeByAscendingId) {
    RecordingAdapter adapter;
    for (const std::uint64_t id : {30U, 4U, 200U, 5U}) {
        addLeaf(adapter._rootNode, id, L"x");
    }
    EXPECT_EQ(dumpOf(adapter),
              "Node [1] 'ROOT', parents: 0 , children: 4 \n"
              "  Node [4] 'x', parents: 1    geometry objects: 0  \n"
              "  Node [5] 'x', parents: 1    geometry objects: 0  \n"
              "  Node [30] 'x', parents: 1    geometry objects: 0  \n"
              "  Node [200] 'x', parents: 1    geometry objects: 0  \n");
}

TEST(SceneDumpTest, ChildrenOfOneNameAreAllListed) {
    RecordingAdapter adapter;
    addLeaf(adapter._rootNode, 2, L"screw");
    addLeaf(adapter._rootNode, 3, L"screw");
    EXPECT_EQ(dumpOf(adapter),
              "Node [1] 'ROOT', parents: 0 , children: 2 \n"
              "  Node [2] 'screw', parents: 1    geometry objects: 0  \n"
              "  Node [3] 'screw', parents: 1    geometry objects: 0  \n");
}

TEST(SceneDumpTest, SharedNodeIsWrittenUnderEachParent) {
    RecordingAdapter adapter;
    Node* const left = addGroup(adapter._rootNode, 2, L"left");
    Node* const right = addGroup(adapter._rootNode, 3, L"right");
    Node* const shared = addGroup(left, 4, L"shared");
    addLeaf(shared, 5, L"leaf");
    ASSERT_TRUE(right->AddChild(shared));
    EXPECT_EQ(dumpOf(adapter),
              "Node [1] 'ROOT', parents: 0 , children: 2 \n"
              "  Node [2] 'left', parents: 1 , children: 1 \n"
              "    Node [4] 'shared', parents: 2 , children: 1 \n"
              "      Node [5] 'leaf', parents: 1    geometry objects: 0  \n"
              "  Node [3] 'right', parents: 1 , children: 1 \n"
              "    Node [4] 'shared', parents: 2 , children: 1 \n"
              "      Node [5] 'leaf', parents: 1    geometry objects: 0  \n");
    EXPECT_TRUE(right->DeleteChildById(4));
}

TEST(SceneDumpTest, TextIsAppended) {
    RecordingAdapter adapter;
    std::string text = "before\n";
    adapter.GetSceneStructure(text, false);
    adapter.GetSceneStructure(text, false);
    EXPECT_EQ(text,
              "before\n"
              "Node [1] 'ROOT', parents: 0    geometry objects: 0  \n"
              "Node [1] 'ROOT', parents: 0    geometry objects: 0  \n");
}

TEST(SceneDumpTest, FlagChangesNothing) {
    std::vector<int> destroyed;
    RecordingAdapter adapter;
    Node* const group = addGroup(adapter._rootNode, 2, L"group");
    GeoNode* const leaf = addLeaf(group, 3, L"leaf");
    support::addEveryAttribute(*leaf, destroyed);
    addItems(*leaf, 2);
    EXPECT_EQ(dumpOf(adapter, true), dumpOf(adapter, false));
}

TEST(SceneDumpTest, AsksTheHostNothing) {
    RecordingAdapter adapter;
    addLeaf(adapter._rootNode, 2, L"A");
    dumpOf(adapter);
    EXPECT_TRUE(adapter.log.empty());
    EXPECT_TRUE(adapter._openNodes.empty());
}

// --- ids ----------------------------------------------------------------------------------------

// Ids are printed as signed numbers of 32 bits.
TEST(SceneDumpTest, LargeIdsAreCutToSigned32Bits) {
    RecordingAdapter adapter;
    for (const std::uint64_t id :
         {2147483647ULL, 2147483648ULL, 4294967295ULL, 4294967296ULL, 4294967298ULL,
          9223372036854775808ULL, 18446744073709551615ULL}) {
        addLeaf(adapter._rootNode, id, L"x");
    }
    EXPECT_EQ(dumpOf(adapter),
              "Node [1] 'ROOT', parents: 0 , children: 7 \n"
              "  Node [2147483647] 'x', parents: 1    geometry objects: 0  \n"
              "  Node [-2147483648] 'x', parents: 1    geometry objects: 0  \n"
              "  Node [-1] 'x', parents: 1    geometry objects: 0  \n"
              "  Node [0] 'x', parents: 1    geometry objects: 0  \n"
              "  Node [2] 'x', parents: 1    geometry objects: 0  \n"
              "  Node [0] 'x', parents: 1    geometry objects: 0  \n"
              "  Node [-1] 'x', parents: 1    geometry objects: 0  \n");
}

// --- names --------------------------------------------------------------------------------------

TEST(SceneDumpTest, NamesAreNotEscaped) {
    RecordingAdapter adapter;
    addLeaf(adapter._rootNode, 2, L"");
    addLeaf(adapter._rootNode, 3, L"it's 'quoted' \"twice\"");
    addLeaf(adapter._rootNode, 4, L"two\nlines %d\\");
    EXPECT_EQ(dumpOf(adapter),
              "Node [1] 'ROOT', parents: 0 , children: 3 \n"
              "  Node [2] '', parents: 1    geometry objects: 0  \n"
              "  Node [3] 'it's 'quoted' \"twice\"', parents: 1    geometry objects: 0  \n"
              "  Node [4] 'two\nlines %d\\', parents: 1    geometry objects: 0  \n");
}

TEST(SceneDumpTest, NamesAreNotCutAtAnyLength) {
    RecordingAdapter adapter;
    std::string name;
    while (name.size() < 10'000) {
        name += std::to_string(name.size()) + ' ';
    }
    addLeaf(adapter._rootNode, 2, std::wstring(name.begin(), name.end()));
    EXPECT_EQ(dumpOf(adapter), "Node [1] 'ROOT', parents: 0 , children: 1 \n  Node [2] '" + name +
                                   "', parents: 1    geometry objects: 0  \n");
}

TEST(SceneDumpTest, NamesAreNarrowedAsUtilsNarrowsThem) {
    RecordingAdapter adapter;
    const std::wstring name = L"Gr\u00F6\u00DFe \u2300 20";
    addLeaf(adapter._rootNode, 2, name);
    EXPECT_EQ(dumpOf(adapter), "Node [1] 'ROOT', parents: 0 , children: 1 \n  Node [2] '" +
                                   Utils::WstringToString(name) +
                                   "', parents: 1    geometry objects: 0  \n");
}

TEST(SceneDumpTest, EachCharacterIsNarrowedAsUtilsNarrowsIt) {
    RecordingAdapter adapter;
    GeoNode* const leaf = addLeaf(adapter._rootNode, 2);
    for (wchar_t character = 1; character < 0x180; ++character) {
        for (const std::wstring& name :
             {std::wstring(1, character), L"ab" + std::wstring(1, character)}) {
            leaf->SetName(name);
            std::string text;
            adapter.nodeToString(leaf, text, 0, false);
            EXPECT_EQ(text, "Node [2] '" + Utils::WstringToString(name) +
                                "', parents: 1    geometry objects: 0  \n")
                << "character " << static_cast<int>(character);
        }
    }
}

// --- attributes ---------------------------------------------------------------------------------

TEST(SceneDumpTest, AttributesAreMarkedInTheOrderOfTheirList) {
    std::vector<int> destroyed;
    RecordingAdapter adapter;
    GeoNode* const leaf = addLeaf(adapter._rootNode, 2, L"leaf");
    support::addEveryAttribute(*leaf, destroyed);
    EXPECT_EQ(dumpOf(adapter),
              "Node [1] 'ROOT', parents: 0 , children: 1 \n"
              "  Node [2] 'leaf', parents: 1    geometry objects: 0  , Attr: Unknown attribute Tx"
              " Vi Co Hi\n");
}

TEST(SceneDumpTest, AttributesOfAGroupStandBehindTheNumberOfItsChildren) {
    RecordingAdapter adapter;
    adapter._rootNode->SetAttribute(new AttributeTransform());
    adapter._rootNode->SetAttribute(new AttributeVisibility(true));
    addLeaf(adapter._rootNode, 2, L"leaf");
    EXPECT_EQ(dumpOf(adapter),
              "Node [1] 'ROOT', parents: 0 , children: 1 , Attr: Tx Vi\n"
              "  Node [2] 'leaf', parents: 1    geometry objects: 0  \n");
}

/// An attribute of a type of the host's own.
class HostAttribute : public Attribute {
public:
    explicit HostAttribute(int type) : Attribute(AttributeType(type)) {}
};

TEST(SceneDumpTest, TypesWithoutAMarkAreUnknown) {
    RecordingAdapter adapter;
    for (const int type : {-1, 3, 5, 6}) {
        adapter._rootNode->SetAttribute(new HostAttribute(type));
    }
    EXPECT_EQ(dumpOf(adapter),
              "Node [1] 'ROOT', parents: 0    geometry objects: 0  , Attr: Unknown attribute"
              " Unknown attribute Unknown attribute Unknown attribute\n");
}

TEST(AttributeStringTest, IsABlankForNullAndWithoutAttributes) {
    RecordingAdapter adapter;
    EXPECT_EQ(adapter.getAttributeString(nullptr), " ");
    EXPECT_EQ(adapter.getAttributeString(adapter._rootNode), " ");
}

TEST(AttributeStringTest, EachKindHasItsMark) {
    RecordingAdapter adapter;
    const std::vector<std::pair<Attribute*, std::string>> marked = {
        {new AttributeColor(RGBAColor(), false), " , Attr: Co"},
        {new AttributeHighlight(RGBAColor()), " , Attr: Hi"},
        {new AttributeTransform(), " , Attr: Tx"},
        {new AttributeVisibility(false), " , Attr: Vi"},
        {new AttributeLineStyle(1.0F, ""), " , Attr: Unknown attribute"}};
    std::uint64_t id = 2;
    for (const auto& [attribute, mark] : marked) {
        GeoNode* const leaf = addLeaf(adapter._rootNode, id++);
        leaf->SetAttribute(attribute);
        EXPECT_EQ(adapter.getAttributeString(leaf), mark);
    }
}

TEST(AttributeStringTest, NullInTheListCountsAsUnknown) {
    RecordingAdapter adapter;
    adapter._rootNode->Attributes()->push_back(nullptr);
    EXPECT_EQ(adapter.getAttributeString(adapter._rootNode), " , Attr: Unknown attribute");
}

TEST(ColorStringTest, IsABlankWhateverTheColour) {
    RecordingAdapter adapter;
    EXPECT_EQ(adapter.getColorString(nullptr), " ");
    EXPECT_EQ(adapter.getColorString(adapter._rootNode), " ");
    adapter._rootNode->SetAttribute(new AttributeColor(RGBAColor::Red(), true));
    EXPECT_EQ(adapter.getColorString(adapter._rootNode), " ");
}

// --- one node and what is below it --------------------------------------------------------------

TEST(NodeToStringTest, NullNodeWritesNothing) {
    RecordingAdapter adapter;
    std::string text = "before";
    adapter.nodeToString(nullptr, text, 4, true);
    EXPECT_EQ(text, "before");
}

TEST(NodeToStringTest, StartsAtTheIndentationGiven) {
    RecordingAdapter adapter;
    Node* const group = addGroup(adapter._rootNode, 2, L"group");
    addLeaf(group, 3, L"leaf");
    std::string text = "before\n";
    adapter.nodeToString(group, text, 3, false);
    EXPECT_EQ(text,
              "before\n"
              "   Node [2] 'group', parents: 1 , children: 1 \n"
              "     Node [3] 'leaf', parents: 1    geometry objects: 0  \n");
}

TEST(NodeToStringTest, ACopyOfAGroupIsAGroup) {
    RecordingAdapter adapter;
    Node* const group = addGroup(adapter._rootNode, 2, L"group");
    addLeaf(group, 3, L"leaf");
    Node copy(*group);
    std::string text;
    adapter.nodeToString(&copy, text, 0, false);
    EXPECT_EQ(text,
              "Node [2] 'group', parents: 1 , children: 1 \n"
              "  Node [3] 'leaf', parents: 1    geometry objects: 0  \n");
    copy.ClearChildren();  // the group owns them
}

TEST(NodeToStringTest, NoIndentationIsTooDeep) {
    RecordingAdapter adapter;
    Node* const group = addGroup(adapter._rootNode, 2, L"group");
    addLeaf(group, 3, L"leaf");
    for (const int indentation : {255, 257, 4095, 4096, 4097, 8192, 10'000}) {
        const std::string blanks(static_cast<std::size_t>(indentation), ' ');
        std::string text;
        adapter.nodeToString(group, text, indentation, true);
        EXPECT_EQ(text, blanks + "Node [2] 'group', parents: 1 , children: 1 \n" + blanks +
                            "  Node [3] 'leaf', parents: 1    geometry objects: 0  \n");
    }
}

TEST(NodeToStringTest, AnyIndentationIsWrittenWhole) {
    RecordingAdapter adapter;
    GeoNode* const leaf = addLeaf(adapter._rootNode, 3, L"leaf");
    for (const int indentation : {0, 1, 255, 256, 257, 4095, 4096, 5000, 100000}) {
        std::string text = "before ";
        adapter.nodeToString(leaf, text, indentation, true);
        EXPECT_EQ(text, "before " + std::string(static_cast<std::size_t>(indentation), ' ') +
                            "Node [3] 'leaf', parents: 1    geometry objects: 0  \n");
    }
}

TEST(NodeToStringTest, AnIndentationBelowZeroHasNoBlanks) {
    RecordingAdapter adapter;
    Node* const group = addGroup(adapter._rootNode, 2, L"group");
    addLeaf(group, 3, L"leaf");
    std::string text;
    adapter.nodeToString(adapter._rootNode, text, -3, false);
    EXPECT_EQ(text,
              "Node [1] 'ROOT', parents: 0 , children: 1 \n"
              "Node [2] 'group', parents: 1 , children: 1 \n"
              " Node [3] 'leaf', parents: 1    geometry objects: 0  \n");
}

TEST(NodeToStringTest, WritesALeafAlone) {
    RecordingAdapter adapter;
    GeoNode* const leaf = addLeaf(adapter._rootNode, 3, L"leaf");
    std::string text;
    adapter.nodeToString(leaf, text, 1, true);
    EXPECT_EQ(text, " Node [3] 'leaf', parents: 1    geometry objects: 0  \n");
}

// --- random graphs ------------------------------------------------------------------------------

/// The text written down once more, by plain recursion.
std::string expectedText(GeoNode& node, const std::string& indentation) {
    std::string summary = " ";
    const char* const marks[] = {"Co", "Hi", "Tx", "", "Vi", "Unknown attribute"};
    for (const int type : support::attributeTypes(node)) {
        summary += (summary == " " ? ", Attr: " : " ") + std::string(marks[type]);
    }
    const std::wstring name = node.Name();
    std::string text = indentation + "Node [" + std::to_string(node.Id()) + "] '" +
                       std::string(name.begin(), name.end()) +
                       "', parents: " + std::to_string(node.Parents().size()) + " ";
    const auto* const group = dynamic_cast<Node*>(&node);
    if (group == nullptr || group->Children().empty()) {
        return text + "   geometry objects: " + std::to_string(node.Geometry().size()) + " " +
               summary + "\n";
    }
    text += ", children: " + std::to_string(group->Children().size()) + summary + "\n";
    for (const auto& [id, child] : group->Children()) {
        text += expectedText(*child, indentation + "  ");
    }
    return text;
}

Attribute* newAttribute(unsigned kind) {
    switch (kind) {
        case 0:
            return new AttributeColor(RGBAColor(), false);
        case 1:
            return new AttributeHighlight(RGBAColor());
        case 2:
            return new AttributeTransform();
        case 3:
            return new AttributeVisibility(true);
        default:
            return new AttributeLineStyle(1.0F, "solid");
    }
}

/// A graph of up to 25 nodes, some of them under two parents.
std::vector<GeoNode*> growRandomGraph(Node* root, std::mt19937& random) {
    std::vector<Node*> groups = {root};
    std::vector<GeoNode*> nodes;
    const std::uint64_t count = random() % 25;
    for (std::uint64_t id = 2; id < count + 2; ++id) {
        Node* const parent = groups[random() % groups.size()];
        const std::wstring name(random() % 4, static_cast<wchar_t>(L'a' + random() % 26));
        const bool isGroup = random() % 2 == 0;
        GeoNode* const node = isGroup ? addGroup(parent, id, name) : addLeaf(parent, id, name);
        addItems(*node, static_cast<int>(random() % 3));
        for (unsigned attributes = random() % 4; attributes > 0; --attributes) {
            node->SetAttribute(newAttribute(static_cast<unsigned>(random() % 5)));
        }
        // Groups made before this node cannot be below it: no cycle.
        groups[random() % groups.size()]->AddChild(node);
        if (isGroup) {
            groups.push_back(static_cast<Node*>(node));
        }
        nodes.push_back(node);
    }
    return nodes;
}

TEST(SceneDumpTest, RandomGraphsReadAsAPlainRecursionWritesThem) {
    for (unsigned seed = 1; seed <= 200; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        RecordingAdapter adapter;
        const std::vector<GeoNode*> nodes = growRandomGraph(adapter._rootNode, random);
        ASSERT_EQ(dumpOf(adapter), expectedText(*adapter._rootNode, ""));
        // Shared nodes back to one parent each, the youngest first, for the root to destroy.
        for (auto node = nodes.rbegin(); node != nodes.rend(); ++node) {
            while ((*node)->Parents().size() > 1) {
                (*node)->Parents().back()->DeleteChildById((*node)->Id());
            }
        }
    }
}

// --- large graphs -------------------------------------------------------------------------------

/// Groups of the root with so many leaves each.
void addGroupsOfLeaves(Node* root, const std::vector<int>& sizes) {
    std::uint64_t id = 1;
    for (const int size : sizes) {
        Node* const group = addGroup(root, ++id, L"group");
        for (int leaf = 0; leaf < size; ++leaf) {
            addLeaf(group, ++id, L"a leaf of that group");
        }
    }
}

class LargeDumpTest : public testing::TestWithParam<std::vector<int>> {};

// However the nodes are spread, the text is whole, stands behind what was there, and does not take
// memory without measure.
TEST_P(LargeDumpTest, IsWrittenAsAPlainRecursionWritesIt) {
    RecordingAdapter adapter;
    addGroupsOfLeaves(adapter._rootNode, GetParam());
    const std::string expected = expectedText(*adapter._rootNode, "");
    for (const std::size_t length : {std::size_t{0}, std::size_t{7}, 3 * expected.size()}) {
        const std::string before(length, '-');
        std::string text = before;
        adapter.GetSceneStructure(text, false);
        ASSERT_EQ(text, before + expected);
        EXPECT_LE(text.capacity(), 4 * text.size());
    }
}

TEST(SceneDumpTest, TakesLittleMoreThanItNeedsWhereGroupsAreAlike) {
    RecordingAdapter adapter;
    addGroupsOfLeaves(adapter._rootNode, std::vector<int>(400, 10));
    std::string text;
    adapter.GetSceneStructure(text, false);
    EXPECT_LE(text.capacity(), text.size() + text.size() / 2);
}

TEST(SceneDumpTest, TextsThatGrowByManyDumpsAreSeldomMoved) {
    RecordingAdapter adapter;
    addGroupsOfLeaves(adapter._rootNode, std::vector<int>(20, 10));
    std::string text;
    std::size_t capacity = 0;
    int moves = 0;
    for (int dumps = 0; dumps < 300; ++dumps) {
        adapter.GetSceneStructure(text, false);
        moves += text.capacity() != capacity ? 1 : 0;
        capacity = text.capacity();
    }
    EXPECT_LT(moves, 20);
}

INSTANTIATE_TEST_SUITE_P(Spread, LargeDumpTest,
                         testing::Values(std::vector<int>(200, 20),                 // evenly
                                         std::vector<int>{4000, 0, 0, 1},           // at first
                                         std::vector<int>{0, 1, 0, 4000},           // at last
                                         std::vector<int>{1, 1, 1, 1, 3000, 0, 0},  // between
                                         std::vector<int>{4000}, std::vector<int>{}));

}  // namespace
}  // namespace KesVizCore
