/// @file
/// A node keeps its name, its lists and its children in different forms, as long and as many as
/// they are. None of it shows: that is tested here, form by form.

#include "graph/RecordingReport.h"
#include "graph/TellingGraph.h"
#include "support/RecordingHost.h"

#include <KesVizCore/graph/AGeometryItemVertex.h>
#include <KesVizCore/graph/Node.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <limits>
#include <map>
#include <memory>
#include <numeric>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

namespace KesVizCore {
namespace {

using support::newItem;

// --- names --------------------------------------------------------------------------------------

/// Texts around every limit: lengths about 15, and characters about U+0100.
std::vector<std::wstring> namesOfAllForms() {
    const wchar_t characters[] = {
        L'a',    L'\0',    L'\x7F',   L'\x80',
        L'\xFF', L'\x100', L'\xFFFF', std::numeric_limits<wchar_t>::max()};
    std::vector<std::wstring> names;
    for (const std::size_t length : {0U, 1U, 2U, 14U, 15U, 16U, 17U, 40U}) {
        for (const wchar_t character : characters) {
            names.push_back(std::wstring(length, character));
            names.push_back(std::wstring(length, L'b') + character);
        }
    }
    names.push_back(std::wstring(1, static_cast<wchar_t>(-1)));
    for (std::size_t place = 0; place < 15; ++place) {  // that differ in one place
        names.push_back(std::wstring(15, L'm'));
        names.back()[place] = L'n';
        names.push_back(std::wstring(place, L'm') + L'l' + std::wstring(14 - place, L'z'));
    }
    std::mt19937 random(1);
    for (int number = 0; number < 60; ++number) {  // that differ in any place
        std::wstring name(random() % 16, L'a');
        for (wchar_t& character : name) {
            character = characters[random() % 5];
        }
        names.push_back(name);
    }
    for (std::size_t place = 0; place < 15; ++place) {  // that differ from another in one place
        names.push_back(std::wstring(15, L'a'));
        names.back()[place] = L'b';
    }
    return names;
}

TEST(NodeStorageTest, EveryNameComesBack) {
    const std::unique_ptr<Node> root = support::newRoot();
    for (const std::wstring& name : namesOfAllForms()) {
        root->SetName(name);
        EXPECT_EQ(root->Name(), name);
    }
}

TEST(NodeStorageTest, ANameTakesThePlaceOfAnyOther) {
    const std::unique_ptr<Node> root = support::newRoot();
    for (const std::wstring& name : namesOfAllForms()) {
        for (const std::wstring& other : namesOfAllForms()) {
            root->SetName(other);
            root->SetName(name);
            ASSERT_EQ(root->Name(), name);
        }
    }
}

TEST(NodeStorageTest, ACopyHasANameOfItsOwn) {
    const std::unique_ptr<Node> root = support::newRoot();
    for (const std::wstring& name : namesOfAllForms()) {
        root->SetName(name);
        GeoNode copy(*root);
        root->SetName(L"changed");
        EXPECT_EQ(copy.Name(), name);
        for (const std::wstring& other : namesOfAllForms()) {
            root->SetName(other);
            copy = *root;
            root->SetName(L"changed");
            ASSERT_EQ(copy.Name(), other);
        }
        root->SetName(name);
        *static_cast<GeoNode*>(root.get()) = *root;
        EXPECT_EQ(root->Name(), name);
    }
}

TEST(NodeStorageTest, AReportOrdersNamesOfAllFormsAsTextsAreOrdered) {
    const std::unique_ptr<Node> root = support::newRoot();
    std::map<std::wstring, std::uint64_t> expected;
    std::uint64_t id = 1;
    for (const std::wstring& name : namesOfAllForms()) {
        root->CreateGeoChild(++id)->SetName(name);
        expected.emplace(name, id);
    }
    std::string ids;
    for (const auto& entry : expected) {
        ids += "  open GeoNode\n    ID = number " + std::to_string(entry.second) + "\n";
    }
    std::string found;
    const std::string calls = support::callsOfReport(*root);
    const std::string mark = "  open GeoNode\n";
    for (auto at = calls.find(mark); at != std::string::npos; at = calls.find(mark, at + 1)) {
        found += calls.substr(at, calls.find("    Name", at) - at);
    }
    EXPECT_EQ(found, ids);
}

// --- children -----------------------------------------------------------------------------------

/// The ids of children in the order in which they are linked.
using Ids = std::vector<std::uint64_t>;

Ids rising(std::size_t count, std::uint64_t step) {
    Ids ids(count);
    for (std::size_t place = 0; place < count; ++place) {
        ids[place] = 10 + place * step;
    }
    return ids;
}

Ids shuffled(Ids ids, unsigned seed) {
    std::shuffle(ids.begin(), ids.end(), std::mt19937(seed));
    return ids;
}

Ids reversed(Ids ids) {
    std::reverse(ids.begin(), ids.end());
    return ids;
}

/// Ids at both ends of their range, where differences of ids wrap.
Ids extreme() {
    Ids ids;
    for (std::uint64_t id = 0; id < 700; ++id) {
        ids.push_back(id);
        ids.push_back(~id);
        ids.push_back((std::uint64_t{1} << 63) - 350 + id);
    }
    return ids;
}

class ChildrenInOrderTest : public testing::TestWithParam<Ids> {
protected:
    ~ChildrenInOrderTest() override {
        for (const auto& entry : expected) {
            root->DeleteChildById(entry.first);
        }
    }

    void link(std::uint64_t id) {
        GeoNode* const child = root->CreateGeoChild(id);
        EXPECT_TRUE(child->HasParent());
        expected.emplace(id, child);
    }

    void expectFound() {
        for (const std::uint64_t id : GetParam()) {
            for (const std::uint64_t near : {id - 1, id, id + 1}) {
                const auto place = expected.find(near);
                ASSERT_EQ(root->GetChild(near), place != expected.end() ? place->second : nullptr);
            }
        }
        EXPECT_EQ(root->HasChildren(), !expected.empty());
        std::map<std::uint64_t, GeoNode*> walked;
        for (const auto& [id, child] : root->EachChild()) {
            EXPECT_TRUE(walked.empty() || walked.rbegin()->first < id);
            walked.emplace(id, child);
        }
        EXPECT_EQ(walked, expected);
        EXPECT_EQ(root->EachChild().size(), expected.size());
        EXPECT_EQ(root->EachChild().empty(), expected.empty());
        const std::string count = "children(" + std::to_string(expected.size()) + ")";
        EXPECT_NE(root->ToString().find(count), std::string::npos) << root->ToString();
    }

    const std::unique_ptr<Node> root = support::newRoot();
    std::map<std::uint64_t, GeoNode*> expected;
};

TEST_P(ChildrenInOrderTest, AreFoundAndUnlinked) {
    for (const std::uint64_t id : GetParam()) {
        link(id);
    }
    expectFound();
    Ids leaving = shuffled(GetParam(), 7);
    leaving.resize(leaving.size() / 2);
    for (const std::uint64_t id : leaving) {
        EXPECT_TRUE(root->DeleteChildById(id));
        EXPECT_FALSE(root->DeleteChildById(id));
        expected.erase(id);
    }
    expectFound();
    for (const std::uint64_t id : leaving) {
        link(id);
    }
    expectFound();
    EXPECT_EQ(root->Children(), expected);
}

TEST_P(ChildrenInOrderTest, AreWalkedOnWhenTheMapIsFirstAskedForOnTheWay) {
    for (const std::uint64_t id : GetParam()) {
        link(id);
    }
    std::map<std::uint64_t, GeoNode*> walked;
    for (const auto& [id, child] : root->EachChild()) {
        EXPECT_EQ(root->Children().size(), expected.size());
        walked.emplace(id, child);
    }
    EXPECT_EQ(walked, expected);
}

TEST_P(ChildrenInOrderTest, AreInAMapThatKeepsStep) {
    const std::map<std::uint64_t, GeoNode*>& children = root->Children();
    for (const std::uint64_t id : GetParam()) {
        link(id);
    }
    EXPECT_EQ(children, expected);
    expectFound();
    for (const std::uint64_t id : shuffled(GetParam(), 8)) {
        if (id % 3 != 0) {
            EXPECT_TRUE(root->DeleteChildById(id));
            expected.erase(id);
        }
    }
    EXPECT_EQ(children, expected);
    expectFound();
}

TEST_P(ChildrenInOrderTest, AreAllForgottenAndLinkedAgain) {
    for (const std::uint64_t id : GetParam()) {
        link(id);
    }
    const std::map<std::uint64_t, GeoNode*> forgotten = expected;
    root->ClearChildren();
    expected.clear();
    expectFound();
    for (const auto& entry : forgotten) {
        EXPECT_TRUE(root->AddChild(entry.second));
    }
    expected = forgotten;
    expectFound();
}

TEST_P(ChildrenInOrderTest, ATakenIdIsRefused) {
    for (const std::uint64_t id : GetParam()) {
        link(id);
    }
    for (const std::uint64_t id : GetParam()) {
        const std::unique_ptr<GeoNode> refused(root->CreateGeoChild(id));
        ASSERT_FALSE(refused->HasParent());
    }
    expectFound();
}

INSTANTIATE_TEST_SUITE_P(Orders, ChildrenInOrderTest,
                         testing::Values(Ids{}, Ids{5}, rising(4, 1), rising(5, 1), rising(512, 1),
                                         rising(513, 1), rising(1400, 1), rising(1400, 3),
                                         reversed(rising(1400, 1)), shuffled(rising(512, 1), 1),
                                         shuffled(rising(513, 7), 2), shuffled(rising(3000, 2), 3),
                                         extreme(), shuffled(extreme(), 4)));

TEST(NodeStorageTest, TheMapOfChildrenIsMadeOnce) {
    const std::unique_ptr<Node> root = support::newRoot();
    const std::map<std::uint64_t, GeoNode*>& children = root->Children();
    root->CreateGeoChild(2);
    EXPECT_EQ(&root->Children(), &children);
    root->DeleteChildById(2);
    EXPECT_EQ(&root->Children(), &children);
}

TEST(NodeStorageTest, AMapThatWasAskedForForgetsChildrenToo) {
    for (const std::size_t count : {0U, 1U, 5U, 600U}) {
        const std::unique_ptr<Node> root = support::newRoot();
        const std::map<std::uint64_t, GeoNode*>& children = root->Children();
        for (const std::uint64_t id : rising(count, 1)) {
            root->CreateGeoChild(id);
        }
        const std::map<std::uint64_t, GeoNode*> before = children;
        EXPECT_EQ(before.size(), count);
        root->ClearChildren();
        EXPECT_TRUE(children.empty());
        for (const auto& entry : before) {
            root->AddChild(entry.second);
        }
        EXPECT_EQ(children, before);
        for (const auto& entry : before) {
            root->DeleteChildById(entry.first);
        }
    }
}

TEST(NodeStorageTest, ChildrenAreARangeForAlgorithms) {
    const std::unique_ptr<Node> root = support::newRoot();
    root->CreateGeoChild(4);
    GeoNode* const last = root->CreateGeoChild(9);
    const ChildRange children = root->EachChild();
    EXPECT_EQ(std::distance(children.begin(), children.end()), 2);
    const auto found = std::find_if(children.begin(), children.end(),
                                    [](const auto& entry) { return entry.id > 5; });
    EXPECT_EQ(found->child, last);
    auto at = children.begin();
    EXPECT_EQ((at++)->id, 4U);
    EXPECT_EQ((at++)->id, 9U);
    EXPECT_EQ(at, children.end());
}

TEST(NodeStorageTest, ChildrenDieInTheOrderOfTheirIds) {
    support::Deaths deaths;
    support::Deaths expected;
    std::unique_ptr<Node> root = support::newRoot();
    for (const std::uint64_t id : shuffled(rising(2000, 1), 5)) {
        root->AddChild(new support::HostLeaf(deaths, std::to_string(id), id));
    }
    for (const std::uint64_t id : rising(2000, 1)) {
        expected.push_back(std::to_string(id));
    }
    root.reset();
    EXPECT_EQ(deaths, expected);
}

TEST(NodeStorageTest, ACopyOfAGroupSharesItsChildrenInEveryForm) {
    for (const std::size_t count : {0U, 1U, 5U, 600U}) {
        const std::unique_ptr<Node> root = support::newRoot();
        for (const std::uint64_t id : rising(count, 1)) {
            root->CreateGeoChild(id);
        }
        Node copy(*root);
        EXPECT_EQ(copy.Children(), root->Children());
        for (const std::size_t before : {0U, 1U, 5U, 600U}) {
            for (const bool asked : {false, true}) {
                const std::unique_ptr<Node> other = support::newRoot();
                Node target(*other);
                const std::map<std::uint64_t, GeoNode*>* const children =
                    asked ? &target.Children() : nullptr;
                for (const std::uint64_t id : rising(before, 2)) {
                    other->AddChild(target.CreateGeoChild(id));
                }
                target = *root;
                EXPECT_EQ(target.HasChildren(), count != 0);
                EXPECT_EQ(children != nullptr ? *children : target.Children(), root->Children());
                target.ClearChildren();
                for (const std::uint64_t id : rising(before, 2)) {
                    other->GetChild(id)->RemoveFromParents(&target);
                }
            }
        }
        copy.ClearChildren();
    }
}

TEST(NodeStorageTest, ALeafCopiedFromAGroupIsALeaf) {
    const std::unique_ptr<Node> root = support::newRoot();
    root->CreateGeoChild(2);
    GeoNode copy(*root);
    EXPECT_FALSE(copy.HasChildren());
    EXPECT_EQ(copy.ToString(), "[1] \"ROOT\" parents(0) attributes(0) geoEntities(0)");
}

// --- lists --------------------------------------------------------------------------------------

TEST(NodeStorageTest, ListsThatWereAskedForKeepStep) {
    const std::unique_ptr<Node> root = support::newRoot();
    Node* const group = root->CreateChild(2);
    GeoNode* const leaf = root->CreateGeoChild(3);
    const std::vector<Node*>& parents = leaf->Parents();
    const std::vector<AGeometryItem*>& items = leaf->Geometry();
    std::vector<Attribute*>& attributes = *leaf->Attributes();
    EXPECT_EQ(parents, std::vector<Node*>{root.get()});
    EXPECT_TRUE(items.empty());
    EXPECT_TRUE(attributes.empty());

    group->AddChild(leaf);
    EXPECT_EQ(parents, (std::vector<Node*>{root.get(), group}));
    root->DeleteChildById(3);
    EXPECT_EQ(parents, std::vector<Node*>{group});

    AGeometryItem* const item = newItem(1);
    leaf->AddGeometry(item);
    EXPECT_EQ(items, std::vector<AGeometryItem*>{item});
    root->AddGeometry(newItem(2));
    leaf->TransferGeometryFrom(root.get());
    EXPECT_EQ(items.size(), 2U);
    EXPECT_TRUE(root->Geometry().empty());
    leaf->DeleteAllGeometry();
    EXPECT_TRUE(items.empty());

    auto* const attribute = new support::HostAttribute(AttributeType(50));
    leaf->SetAttribute(attribute);
    EXPECT_EQ(attributes, std::vector<Attribute*>{attribute});
    attributes.clear();
    EXPECT_EQ(leaf->GetAttribute(50), nullptr);
    attributes.push_back(attribute);
    EXPECT_EQ(leaf->GetAttribute(50), attribute);
    EXPECT_EQ(leaf->Attributes(), &attributes);
}

template <typename List>
auto asVector(const List& list) {
    using Element = std::decay_t<decltype(*list.begin())>;
    return std::vector<Element>(list.begin(), list.end());
}

TEST(NodeStorageTest, ListsAreWalkedAsTheirVectorsAre) {
    const std::unique_ptr<Node> root = support::newRoot();
    Node* const group = root->CreateChild(2);
    GeoNode* const leaf = root->CreateGeoChild(3);
    for (const std::size_t count : {0U, 1U, 2U, 3U}) {
        GeoNode untold(*leaf);  // of which no vector was asked for
        EXPECT_EQ(asVector(untold.EachParent()), leaf->Parents());
        EXPECT_EQ(asVector(untold.EachGeometry()), leaf->Geometry());
        EXPECT_EQ(asVector(untold.EachAttribute()), *leaf->Attributes());
        EXPECT_EQ(untold.EachGeometry().size(), count);
        EXPECT_EQ(untold.EachGeometry().empty(), count == 0);
        untold = GeoNode(*root);  // shares nothing of the leaf when it dies

        group->AddChild(leaf);
        leaf->AddGeometry(newItem(count));
        leaf->SetAttribute(new support::HostAttribute(AttributeType(50 + static_cast<int>(count))));
    }
    group->DeleteChildById(3);
}

TEST(NodeStorageTest, ListsAreWalkedOnWhenTheirVectorIsFirstAskedForOnTheWay) {
    const std::unique_ptr<Node> root = support::newRoot();
    GeoNode* const leaf = root->CreateGeoChild(3);
    leaf->AddGeometry(newItem(1));
    int seen = 0;
    for (const Node* parent : leaf->EachParent()) {
        seen += parent == leaf->Parents().front() ? 1 : 0;
    }
    for (const AGeometryItem* item : leaf->EachGeometry()) {
        seen += item == leaf->Geometry().front() ? 1 : 0;
    }
    EXPECT_EQ(seen, 2);
}

TEST(NodeStorageTest, AnAssignedNodeKeepsTheListsThatWereHandedOut) {
    const std::unique_ptr<Node> root = support::newRoot();
    GeoNode* const leaf = root->CreateGeoChild(2);
    for (const std::size_t count : {0U, 1U, 3U}) {
        GeoNode copy(*leaf);
        const std::vector<AGeometryItem*>& items = copy.Geometry();
        const std::vector<Node*>& parents = copy.Parents();
        std::vector<Attribute*>& attributes = *copy.Attributes();
        while (leaf->Geometry().size() < count) {
            leaf->AddGeometry(newItem(leaf->Geometry().size()));
            leaf->SetAttribute(new support::HostAttribute(
                AttributeType(50 + static_cast<int>(leaf->Geometry().size()))));
        }
        copy = *leaf;
        EXPECT_EQ(items, leaf->Geometry());
        EXPECT_EQ(parents, leaf->Parents());
        EXPECT_EQ(attributes, *leaf->Attributes());
        attributes.clear();
        const std::unique_ptr<Node> taker = support::newRoot();
        taker->TransferGeometryFrom(&copy);  // the copy owns nothing
        while (!taker->Geometry().empty()) {
            taker->DeleteGeometryById(taker->Geometry().front()->ID());
        }
    }
}

TEST(NodeStorageTest, NullIsKeptInEveryFormOfAList) {
    const std::unique_ptr<Node> root = support::newRoot();
    for (const std::size_t count : {1U, 2U, 3U}) {
        GeoNode* const leaf = root->CreateGeoChild(count + 1);
        leaf->RemoveFromParents(root.get());
        leaf->AddToParents(nullptr);
        EXPECT_TRUE(leaf->HasParent());
        for (std::size_t item = 0; item < count; ++item) {
            leaf->AddGeometry(nullptr);
        }
        GeoNode copy(*leaf);
        GeoNode assigned(*root);
        assigned = *leaf;
        EXPECT_EQ(copy.Geometry(), std::vector<AGeometryItem*>(count, nullptr));
        EXPECT_EQ(assigned.Geometry(), copy.Geometry());
        EXPECT_EQ(copy.Parents(), std::vector<Node*>(1, nullptr));
        leaf->RemoveFromParents(nullptr);
        EXPECT_FALSE(leaf->HasParent());
        leaf->AddToParents(root.get());
    }
}

}  // namespace
}  // namespace KesVizCore
