/// @file
/// What nodes write into a structured report, call by call.

#include "graph/RecordingReport.h"
#include "graph/TellingGraph.h"
#include "support/RecordingHost.h"

#include <KesVizCore/graph/AttributeColor.h>
#include <KesVizCore/graph/AttributeHighlight.h>
#include <KesVizCore/graph/AttributeLineStyle.h>
#include <KesVizCore/graph/AttributeTransform.h>
#include <KesVizCore/graph/AttributeVisibility.h>
#include <KesVizCore/graph/Node.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>

namespace KesVizCore {
namespace {

using support::callsOfReport;
using support::Deaths;
using support::HostLeaf;
using support::HostNode;
using support::TellingItem;

/// The calls of a leaf 5 without parents or name that holds just this attribute.
std::string callsOfAttribute(Attribute* attribute) {
    Deaths deaths;
    HostLeaf leaf(deaths, "leaf", 5);
    leaf.SetAttribute(attribute);
    return callsOfReport(leaf);
}

/// Those calls with @p inner, lines indented by four, inside the element of the attribute.
std::string leafWithAttribute(const std::string& inner) {
    return "open GeoNode\n"
           "  ID = number 5\n"
           "  Name = text \"\"\n"
           "  open Attribute\n" +
           inner +
           "  close\n"
           "close\n";
}

// --- a leaf -------------------------------------------------------------------------------------

TEST(NodeReportTest, AnEmptyLeafReportsIdAndNameAlone) {
    Deaths deaths;
    HostLeaf leaf(deaths, "leaf", std::numeric_limits<std::uint64_t>::max());
    leaf.SetName(L"Bl\u00E4tter \"1\"");
    EXPECT_EQ(callsOfReport(leaf), R"(open GeoNode
  ID = number 18446744073709551615
  Name = text "Bl\228tter "1""
close
)");
}

TEST(NodeReportTest, AnswersTrue) {
    const std::unique_ptr<Node> root = support::newRoot();
    support::RecordingReport report;
    EXPECT_TRUE(root->GetReport(report));
    EXPECT_TRUE(root->CreateGeoChild(5)->GetReport(report));
}

TEST(NodeReportTest, LeavesTheReportOpen) {
    const std::unique_ptr<Node> root = support::newRoot();
    support::RecordingReport report;
    root->GetReport(report);
    EXPECT_FALSE(report.IsDefined());
}

TEST(NodeReportTest, ALeafReportsGeometryThenAttributesThenParents) {
    const std::unique_ptr<Node> root = support::newRoot();
    Node* const second = root->CreateChild(3);
    second->SetName(L"Second");
    GeoNode* const leaf = root->CreateGeoChild(5);
    leaf->SetName(L"Leaf");
    second->AddChild(leaf);
    leaf->SetAttribute(new AttributeVisibility(false));
    leaf->SetAttribute(new AttributeColor(RGBAColor(1, 2, 3, 4), true));
    leaf->AddGeometry(new TellingItem<AGeometryItemText>(nullptr, std::uint64_t{9}, L"", L"",
                                                         nullptr, FontAttr(), 0.0F));
    leaf->AddGeometry(support::newItem(8));
    EXPECT_EQ(callsOfReport(*leaf), R"(open GeoNode
  ID = number 5
  Name = text "Leaf"
  open Geometry
    ID = number 9
    Type = text "Text"
  close
  open Geometry
    ID = number 8
    Type = text "Vertex"
  close
  open Attribute
    Type = text "Visibility"
    Value = bool false
  close
  open Attribute
    Type = text "Color"
    Color = text "1,2,3,4"
  close
  open Parent
    ID = number 1
    Name = text "ROOT"
  close
  open Parent
    ID = number 3
    Name = text "Second"
  close
close
)");
    second->DeleteChildById(5);
}

TEST(NodeReportTest, NullsAmongItemsAndParentsAreSkipped) {
    Deaths deaths;
    HostLeaf leaf(deaths, "leaf", 5);
    leaf.AddGeometry(nullptr);
    leaf.AddGeometry(support::newItem(8));
    leaf.AddToParents(nullptr);
    EXPECT_EQ(callsOfReport(leaf), R"(open GeoNode
  ID = number 5
  Name = text ""
  open Geometry
    ID = number 8
    Type = text "Vertex"
  close
close
)");
}

TEST(NodeReportTest, ItemsReportTheNameOfTheirKind) {
    Deaths deaths;
    HostLeaf leaf(deaths, "leaf", 5);
    leaf.AddGeometry(new TellingItem<AGeometryItemTriangleSet>(
        nullptr, std::uint64_t{1}, nullptr, nullptr, nullptr, 0, 0, 0, TriangleList));
    leaf.AddGeometry(new TellingItem<AGeometryItemPolyline>(nullptr, std::uint64_t{2}, nullptr, 0));
    leaf.AddGeometry(
        new TellingItem<AGeometryItemFilledPolyline>(nullptr, std::uint64_t{3}, nullptr, 0));
    leaf.AddGeometry(
        new TellingItem<AGeometryItemPointCloud>(nullptr, std::uint64_t{4}, 0, nullptr));
    EXPECT_EQ(callsOfReport(leaf), R"(open GeoNode
  ID = number 5
  Name = text ""
  open Geometry
    ID = number 1
    Type = text "TriangleSet"
  close
  open Geometry
    ID = number 2
    Type = text "Polyline"
  close
  open Geometry
    ID = number 3
    Type = text "FilledPolyline"
  close
  open Geometry
    ID = number 4
    Type = text "PointCloud"
  close
close
)");
}

// --- attributes ---------------------------------------------------------------------------------

TEST(NodeReportTest, AColorReportsItsChannelsInOrder) {
    EXPECT_EQ(callsOfAttribute(new AttributeColor(RGBAColor(255, 0, 51, 7), false)),
              leafWithAttribute("    Type = text \"Color\"\n"
                                "    Color = text \"255,0,51,7\"\n"));
    EXPECT_EQ(callsOfAttribute(new AttributeColor(RGBAColor(100, 99, 10, 9), false)),
              leafWithAttribute("    Type = text \"Color\"\n"
                                "    Color = text \"100,99,10,9\"\n"));
    EXPECT_EQ(callsOfAttribute(new AttributeColor(RGBAColor(101, 199, 200, 109), false)),
              leafWithAttribute("    Type = text \"Color\"\n"
                                "    Color = text \"101,199,200,109\"\n"));
}

TEST(NodeReportTest, AHighlightReportsTheOriginalColor) {
    EXPECT_EQ(callsOfAttribute(new AttributeHighlight(RGBAColor(9, 10, 11, 255))),
              leafWithAttribute("    Type = text \"Highlight\"\n"
                                "    OriginalColor = text \"9,10,11,255\"\n"));
}

TEST(NodeReportTest, AVisibilityReportsItsFlag) {
    EXPECT_EQ(callsOfAttribute(new AttributeVisibility(true)),
              leafWithAttribute("    Type = text \"Visibility\"\n"
                                "    Value = bool true\n"));
}

TEST(NodeReportTest, ATransformReportsItsMatrix) {
    // Double blanks between the groups of four and none before the closing bracket.
    EXPECT_EQ(callsOfAttribute(new AttributeTransform),
              leafWithAttribute("    Type = text \"Transform\"\n"
                                "    Matrix = text \" = [ 1.000, 0.000, 0.000, 0.000,  "
                                "0.000, 1.000, 0.000, 0.000,  0.000, 0.000, 1.000, 0.000,  "
                                "0.000, 0.000, 0.000, 1.000]\"\n"));
}

TEST(NodeReportTest, AMatrixIsWrittenInItsOrderWithThreeDecimals) {
    double matrix[16] = {0.0,    1.0,  -2.0,   3.25,      -0.0,    0.0005, 0.0015, -0.0004,
                         9.9996, 12.0, -123.5, 1234567.0, 100.125, -1e-9,  1e15,   42.0};
    EXPECT_EQ(callsOfAttribute(new AttributeTransform(matrix)),
              leafWithAttribute("    Type = text \"Transform\"\n"
                                "    Matrix = text \" = [ 0.000, 1.000, -2.000, 3.250,  "
                                "-0.000, 0.001, 0.002, -0.000,  "
                                "10.000, 12.000, -123.500, 1234567.000,  "
                                "100.125, -0.000, 1000000000000000.000, 42.000]\"\n"));
}

TEST(NodeReportTest, AMatrixTextIsCutAfter1023Characters) {
    // 1e300 has 301 digits: the fourth number no longer fits.
    double matrix[16] = {1e300, 1e300, 1e300, 1e300};
    const std::string number = std::to_string(1e300).substr(0, 305);
    const std::string whole = " = [ " + number + ", " + number + ", " + number + ", " + number;
    ASSERT_GT(whole.size(), 1023U);
    EXPECT_EQ(callsOfAttribute(new AttributeTransform(matrix)),
              leafWithAttribute("    Type = text \"Transform\"\n"
                                "    Matrix = text \"" +
                                whole.substr(0, 1023) + "\"\n"));
}

TEST(NodeReportTest, ALineStyleReportsThatItsTypeIsUnknown) {
    // The one kind of the library's own that reports leave out. \10 is the line break.
    EXPECT_EQ(callsOfAttribute(new AttributeLineStyle(2.0F, "dash")),
              leafWithAttribute("    text \"Type is Unknown\\10\"\n"));
}

TEST(NodeReportTest, ATypeOfTheHostReportsThatItIsUnknown) {
    for (const int type : {-1, 3, 6, 99}) {
        EXPECT_EQ(callsOfAttribute(new support::HostAttribute(AttributeType(type))),
                  leafWithAttribute("    text \"Type is Unknown\\10\"\n"))
            << type;
    }
}

TEST(NodeReportTest, TheTypeThatAnAttributeAnswersDecides) {
    struct Hosts : AttributeVisibility {
        Hosts() : AttributeVisibility(true) {}
        AttributeType GetType() override { return 99; }
    };
    EXPECT_EQ(callsOfAttribute(new Hosts), leafWithAttribute("    text \"Type is Unknown\\10\"\n"));
}

TEST(NodeReportTest, AColorThatIsNoAttributeColorReportsThatItIsUnknown) {
    EXPECT_EQ(callsOfAttribute(new support::HostAttribute(AttributeType(AttributeType::Color))),
              leafWithAttribute("    text \"Type is Unknown\\10\"\n"));
}

TEST(NodeReportTest, ANullAttributeReportsThatItsTypeIsUnknown) {
    Deaths deaths;
    HostLeaf leaf(deaths, "leaf", 5);
    leaf.Attributes()->push_back(nullptr);
    EXPECT_EQ(callsOfReport(leaf), leafWithAttribute("    text \"Type is Unknown\\10\"\n"));
}

// --- a group ------------------------------------------------------------------------------------

TEST(NodeReportTest, AnEmptyGroupReportsAsNode) {
    const std::unique_ptr<Node> root = support::newRoot();
    EXPECT_EQ(callsOfReport(*root), R"(open Node
  ID = number 1
  Name = text "ROOT"
close
)");
}

TEST(NodeReportTest, AGroupReportsItsBodyAndThenItsChildrenEachInItsOwnElement) {
    const std::unique_ptr<Node> root = support::newRoot();
    root->AddGeometry(support::newItem(7));
    root->SetAttribute(new AttributeVisibility(true));
    Node* const group = root->CreateChild(2);
    group->SetName(L"B");
    root->CreateGeoChild(3)->SetName(L"A");
    group->CreateGeoChild(4)->SetName(L"C");
    EXPECT_EQ(callsOfReport(*root), R"(open Node
  ID = number 1
  Name = text "ROOT"
  open Geometry
    ID = number 7
    Type = text "Vertex"
  close
  open Attribute
    Type = text "Visibility"
    Value = bool true
  close
  open GeoNode
    ID = number 3
    Name = text "A"
    open Parent
      ID = number 1
      Name = text "ROOT"
    close
  close
  open Node
    ID = number 2
    Name = text "B"
    open Parent
      ID = number 1
      Name = text "ROOT"
    close
    open GeoNode
      ID = number 4
      Name = text "C"
      open Parent
        ID = number 2
        Name = text "B"
      close
    close
  close
close
)");
}

/// The ids of the children in the order in which a group reports them.
std::string reportedChildren(Node& group) {
    const std::string calls = callsOfReport(group);
    const std::string mark = "\n    ID = number ";
    std::string ids;
    for (std::size_t place = calls.find("open GeoNode"); place != std::string::npos;
         place = calls.find("open GeoNode", place + 1)) {
        const std::size_t id = calls.find(mark, place) + mark.size();
        ids += calls.substr(id, calls.find('\n', id) - id) + " ";
    }
    return ids;
}

TEST(NodeReportTest, ChildrenAreReportedByNameNotById) {
    const std::unique_ptr<Node> root = support::newRoot();
    const std::wstring names[] = {L"b", L"", L"B", L"ba", L"a", L"\u00E4", L"10", L"9"};
    std::uint64_t id = 2;
    for (const std::wstring& name : names) {
        root->CreateGeoChild(id++)->SetName(name);
    }
    EXPECT_EQ(reportedChildren(*root), "3 8 9 4 6 2 5 7 ");  // "", 10, 9, B, a, b, ba, ä
}

TEST(NodeReportTest, OfChildrenOfOneNameOnlyTheLowestIdIsReported) {
    const std::unique_ptr<Node> root = support::newRoot();
    root->CreateGeoChild(9)->SetName(L"same");
    root->CreateGeoChild(4)->SetName(L"same");
    root->CreateGeoChild(6)->SetName(L"same");
    root->CreateGeoChild(3)->SetName(L"z");
    root->CreateGeoChild(8)->SetName(L"z");
    root->CreateGeoChild(5)->SetName(L"a");
    EXPECT_EQ(reportedChildren(*root), "5 4 3 ");
}

TEST(NodeReportTest, ALeftOutGroupIsLeftOutWithAllBelowIt) {
    const std::unique_ptr<Node> root = support::newRoot();
    root->CreateGeoChild(2);  // without a name, as the group
    root->CreateChild(3)->CreateGeoChild(4)->SetName(L"below");
    EXPECT_EQ(callsOfReport(*root), R"(open Node
  ID = number 1
  Name = text "ROOT"
  open GeoNode
    ID = number 2
    Name = text ""
    open Parent
      ID = number 1
      Name = text "ROOT"
    close
  close
close
)");
}

TEST(NodeReportTest, ASharedChildIsReportedUnderEachParent) {
    const std::unique_ptr<Node> root = support::newRoot();
    Node* const first = root->CreateChild(2);
    Node* const second = root->CreateChild(3);
    first->SetName(L"first");
    second->SetName(L"second");
    GeoNode* const shared = first->CreateGeoChild(4);
    second->AddChild(shared);
    support::CountingReport report;
    root->GetReport(report);
    // The groups with a parent each, and twice the leaf with two.
    EXPECT_EQ(report.opened, 1U + 2 * 2 + 2 * 3);
    EXPECT_EQ(report.closed, report.opened);
    second->DeleteChildById(4);
}

/// A group that reports in the host's own way, around the library's report of it.
class OwnReportNode : public HostNode {
public:
    using HostNode::HostNode;
    bool GetReport(AReport& report) override {
        report.AddComment(L"before");
        const bool reported = Node::GetReport(report);
        report.AddComment(L"after");
        return reported;
    }
};

class OwnReportLeaf : public HostLeaf {
public:
    using HostLeaf::HostLeaf;
    bool GetReport(AReport& report) override {
        report.AddText(L"the host's leaf");
        return false;
    }
};

TEST(NodeReportTest, TheHostsOwnReportsAreAskedAtEveryDepth) {
    Deaths deaths;
    const std::unique_ptr<Node> root = support::newRoot();
    auto* const hosts = new OwnReportNode(deaths, "group", 3);
    root->CreateChild(2)->AddChild(hosts);
    Node* const inner = hosts->CreateChild(4);
    inner->AddChild(new OwnReportLeaf(deaths, "leaf", 5));
    EXPECT_EQ(callsOfReport(*root), R"(open Node
  ID = number 1
  Name = text "ROOT"
  open Node
    ID = number 2
    Name = text ""
    open Parent
      ID = number 1
      Name = text "ROOT"
    close
    comment "before"
    open Node
      ID = number 3
      Name = text ""
      open Parent
        ID = number 2
        Name = text ""
      close
      open Node
        ID = number 4
        Name = text ""
        open Parent
          ID = number 3
          Name = text ""
        close
        text "the host's leaf"
      close
    close
    comment "after"
  close
close
)");
}

TEST(NodeReportTest, AHostsGroupWithoutItsOwnReportReportsAsNode) {
    Deaths deaths;
    const std::unique_ptr<Node> root = support::newRoot();
    root->AddChild(new HostNode(deaths, "group", 3));
    EXPECT_EQ(callsOfReport(*root), R"(open Node
  ID = number 1
  Name = text "ROOT"
  open Node
    ID = number 3
    Name = text ""
    open Parent
      ID = number 1
      Name = text "ROOT"
    close
  close
close
)");
}

TEST(NodeReportTest, WhatTheReportThrowsPassesThrough) {
    const std::unique_ptr<Node> root = support::newRoot();
    GeoNode* const leaf = root->CreateGeoChild(5);
    support::RecordingReport report;
    report.EndReport();
    EXPECT_THROW(root->GetReport(report), std::runtime_error);
    EXPECT_THROW(leaf->GetReport(report), std::runtime_error);
    EXPECT_EQ(report.Calls(), "end\n");
}

/// Becomes defined within the call of that number.
class EndingReport : public support::SilentReport {
public:
    explicit EndingReport(int lastCall) : _lastCall(lastCall) {}

    int Calls() const { return _calls; }

protected:
    void openElement(std::string /*name*/) override { count(); }
    void closeElement() override { count(); }
    void addAttribute(std::string /*name*/, double /*value*/) override { count(); }
    void addAttribute(std::string /*name*/, bool /*value*/) override { count(); }
    void addAttribute(std::string /*name*/, std::uint64_t /*value*/) override { count(); }
    void addAttribute(std::string /*name*/, std::wstring /*value*/) override { count(); }
    void addText(std::wstring /*text*/) override { count(); }

private:
    void count() {
        if (++_calls == _lastCall) {
            EndReport();
        }
    }

    int _lastCall;
    int _calls = 0;
};

TEST(NodeReportTest, AReportThatEndsOnTheWayTakesNothingMore) {
    const std::unique_ptr<Node> root = support::newRoot();
    GeoNode* const leaf = root->CreateGeoChild(5);
    leaf->AddGeometry(support::newItem(7));
    leaf->SetAttribute(new AttributeVisibility(true));
    leaf->SetAttribute(new AttributeLineStyle(1.0F, "solid"));

    EndingReport endless(-1);
    EXPECT_TRUE(root->GetReport(endless));
    const int calls = endless.Calls();
    ASSERT_GT(calls, 20);
    for (int lastCall = 1; lastCall < calls; ++lastCall) {
        EndingReport report(lastCall);
        EXPECT_THROW(root->GetReport(report), std::runtime_error);
        EXPECT_EQ(report.Calls(), lastCall);
    }
}

}  // namespace
}  // namespace KesVizCore
