/// @file
/// What must hold where a program and the library are modules of their own: exceptions, types,
/// virtual calls, data and text that cross from one to the other.

#include "graph/RecordingReport.h"
#include "support/RecordingHost.h"
#include "support/TellingAttribute.h"
#include "support/TestLoaders.h"

#include <KesVizCore/KesVizCore.h>

#include <gtest/gtest.h>

#include <exception>
#include <memory>
#include <stdexcept>
#include <string>
#include <typeinfo>
#include <vector>

namespace KesVizCore {
namespace {

using support::RecordingAdapter;
using support::TellingAttribute;

// ---- Exceptions

/// An error of the host's own that the library cannot know.
struct HostError {
    int code;
    std::wstring text;
};

class HostLogicError : public std::logic_error {
public:
    using std::logic_error::logic_error;
};

/// A report that fails while the library writes it.
class FailingReport : public support::SilentReport {
    void openElement(std::string name) override {
        throw HostError{42, std::wstring(name.begin(), name.end())};
    }
};

template <typename Error>
class FailingStrategy : public IViewDoUndoStrategy {
public:
    explicit FailingStrategy(Error error) : _error(error) {}
    bool Apply(const RenderId& /*id*/) override { return false; }
    bool Undo(const RenderId& /*id*/) override { return false; }
    void UndoAll() override {}
    bool IsApplied(const RenderId& /*id*/) override { throw _error; }

private:
    Error _error;
};

TEST(BoundaryExceptionTest, WhatAHostThrowsPassesThroughTheLibrary) {
    const std::unique_ptr<Node> root(Node::CreateRoot());
    FailingReport report;
    try {
        root->GetReport(report);
        FAIL() << "nothing was thrown";
    } catch (const HostError& error) {
        EXPECT_EQ(error.code, 42);
        EXPECT_EQ(error.text, L"Node");
    }
}

TEST(BoundaryExceptionTest, AnErrorThatTheLibraryCatchesAndThrowsAgainKeepsItsType) {
    FailingStrategy<HostLogicError> strategy(HostLogicError("the host's"));
    RecordingAdapter adapter;
    adapter.SetHighlightStrategy(&strategy);
    try {
        adapter.IsHighlighted(RenderId());
        FAIL() << "nothing was thrown";
    } catch (const HostLogicError& error) {
        EXPECT_STREQ(error.what(), "the host's");
        EXPECT_EQ(typeid(error), typeid(HostLogicError));
    }
}

TEST(BoundaryExceptionTest, TheLibraryTellsWhatIsNoStandardError) {
    FailingStrategy<HostError> strategy(HostError{7, L""});
    RecordingAdapter adapter;
    adapter.SetHighlightStrategy(&strategy);
    EXPECT_THROW(adapter.IsHighlighted(RenderId()), std::runtime_error);
}

/// The error of that very class which @p call throws, or nothing.
template <typename Error, typename Call>
std::string messageOf(Call&& call) {
    try {
        call();
    } catch (const Error& error) {
        return typeid(error) == typeid(Error) ? error.what() : "a derived class";
    }
    return "nothing";
}

TEST(BoundaryExceptionTest, ErrorsOfTheLibraryAreCaughtByTheirTypes) {
    RenderId id;
    float none[3] = {0.0F, 0.0F, 0.0F};
    const support::SilentReport report;
    EXPECT_EQ(messageOf<std::length_error>([&] { id.SetLength(-1); }),
              "RenderId: the length must not be negative");
    EXPECT_EQ(messageOf<std::out_of_range>([&] { id.SetValue(-1, 5); }),
              "RenderId: the index must not be negative");
    EXPECT_EQ(messageOf<std::invalid_argument>([&] { Normalize(none); }),
              "Invalid argument in Normalize()");
    EXPECT_EQ(messageOf<std::runtime_error>([&] { report.ToText(); }),
              "Report has not been completed");
}

TEST(BoundaryExceptionTest, AnErrorOfTheLibraryCanBeKeptAndThrownByTheHost) {
    std::exception_ptr kept;
    try {
        RenderId().SetLength(-1);
    } catch (...) {
        kept = std::current_exception();
    }
    EXPECT_EQ(messageOf<std::length_error>([&] { std::rethrow_exception(kept); }),
              "RenderId: the length must not be negative");
}

// ---- Types

TEST(BoundaryTypeTest, TheHostFindsTheClassOfWhatTheLibraryMade) {
    const std::unique_ptr<Node> root(Node::CreateRoot());
    GeoNode* const group = root->CreateChild(2);
    GeoNode* const leaf = root->CreateGeoChild(3);
    EXPECT_EQ(dynamic_cast<Node*>(group), group);
    EXPECT_EQ(dynamic_cast<Node*>(leaf), nullptr);
    EXPECT_EQ(typeid(*group), typeid(Node));
    EXPECT_EQ(typeid(*leaf), typeid(GeoNode));
}

TEST(BoundaryTypeTest, TheLibraryFindsTheClassOfWhatTheHostMade) {
    std::vector<int> destroyed;
    RecordingAdapter adapter;
    Node* const source = adapter._rootNode->CreateChild(2);
    source->SetAttribute(new TellingAttribute<AttributeColor>(destroyed, RGBAColor::Red(), true));
    adapter.openOnly(adapter._rootNode->CreateChild(3));
    adapter.CopyNodeAttributesFrom(*source);  // looks for the colour among all attributes
    ASSERT_EQ(adapter.applied.size(), 1U);
    auto* const color = dynamic_cast<AttributeColor*>(adapter.applied.front());
    ASSERT_NE(color, nullptr);
    EXPECT_EQ(typeid(*color), typeid(AttributeColor));
    EXPECT_TRUE(color->GetColor() == RGBAColor::Red());
}

TEST(BoundaryTypeTest, TheHostFindsItsOwnClassAgain) {
    std::vector<int> destroyed;
    using OwnAttribute = TellingAttribute<AttributeVisibility>;
    const std::unique_ptr<Node> root(Node::CreateRoot());
    auto* const own = new OwnAttribute(destroyed, true);
    root->SetAttribute(own);
    EXPECT_EQ(dynamic_cast<OwnAttribute*>(root->GetAttribute(AttributeType::Visibility)), own);
}

// ---- Virtual calls

TEST(BoundaryCallTest, CallsGoFromTheHostToTheLibraryAndBackAndIntoItAgain) {
    // Load is the library's, createAndFill the host's, makeOne again the library's.
    int filled = 0;
    const auto edge = support::loadEdge([&filled](VizEdge& made) {
        made.SetVisualID(L"edge");
        ++filled;
    });
    VizElement& element = *edge;
    EXPECT_EQ(filled, 1);
    EXPECT_EQ(element.GetElementType(), VizEdge::TypeID());
    EXPECT_EQ(element.GetVisualID(), L"edge");
}

TEST(BoundaryCallTest, OperationsThatAHostLeavesAloneAreTheLibrarys) {
    RecordingAdapter adapter;
    adapter._rootNode->CreateChild(2)->CreateChild(3);
    AView3DAdapter& base = adapter;
    EXPECT_TRUE(base.OpenNodes(RenderId({1, 2, 3}, View3D)));
    EXPECT_EQ(adapter.takeLog(),
              (support::CallLog{"OpenNode(1, )", "OpenNode(2, )", "OpenNode(3, )"}));
    EXPECT_EQ(base.GetCurrentOpenNode()->Id(), 3U);
}

// ---- Data

TEST(BoundaryDataTest, BothSidesSeeOneCounter) {
    const std::unique_ptr<Node> root(Node::CreateRoot());
    const std::uint64_t id = Node::GetNextId();
    EXPECT_EQ(GeoNode::NodeCounter, id);
    GeoNode::NodeCounter = 5000;
    EXPECT_EQ(Node::GetNextId(), 5001U);
}

TEST(BoundaryDataTest, TheSwitchOfTheLibraryIsTheHosts) {
    Stopwatch stopwatch;
    SetAllowThrow(true);
    EXPECT_TRUE(GetAllowThrow());
    EXPECT_THROW(stopwatch.Stop(), std::runtime_error);
    SetAllowThrow(false);
    EXPECT_NO_THROW(stopwatch.Stop());
}

// ---- Text

/// A face, an emoji that two units write where wide characters have 16 bits, and Chinese.
const std::wstring kWide = L"\x2300 \U0001F600 \x4E2D";

TEST(BoundaryTextTest, WideTextHasOneOrTwoUnitsForACharacter) {
    EXPECT_EQ(kWide.size(), sizeof(wchar_t) == 2 ? 6U : 5U);
}

TEST(BoundaryTextTest, NamesKeepEveryUnit) {
    const std::unique_ptr<Node> root(Node::CreateRoot());
    root->SetName(kWide);
    EXPECT_EQ(root->Name(), kWide);
    const auto text = support::loadText([](VizText& made) { made.SetText(kWide); });
    EXPECT_EQ(text->GetText(), kWide);
    support::RecordingReport report;
    root->GetReport(report);
    EXPECT_NE(report.Calls().find("open Node"), std::string::npos);
}

TEST(BoundaryTextTest, DumpsKeepEveryUnit) {
    const auto view = support::loadView([](VizView& made) {
        made.SetName(kWide);
        made.SetMechanicalID(L"\U0001F527");
    });
    EXPECT_EQ(view->GetViewAsString().substr(0, view->GetViewAsString().find(L"Hidden")),
              L"Name: " + kWide + L"\nVisualID : \nMechID : \U0001F527\n");
}

TEST(BoundaryTextTest, LongTextsCrossByValue) {
    const std::unique_ptr<Node> root(Node::CreateRoot());
    const std::wstring name(100000, L'n');
    root->SetName(name);
    EXPECT_EQ(root->Name(), name);
    EXPECT_EQ(Utils::StringToWstring(std::string(100000, 'n')), name);
}

// ---- Memory

TEST(BoundaryMemoryTest, IdsOfTheLibraryAreReleasedThere) {
    const std::unique_ptr<Node> root(Node::CreateRoot());
    RenderId* id = root->CreateChild(2)->GetRenderId();
    EXPECT_EQ(id->Length(), 2);
    RenderId::DeleteRenderId(id);
    EXPECT_EQ(id, nullptr);
}

TEST(BoundaryMemoryTest, ArraysOfTheHostAreReleasedByTheLibrary) {
    auto* ids = new RenderId[3];
    ids[2].SetLength(1000);
    RenderId::DeleteRenderIdArr(ids);
    EXPECT_EQ(ids, nullptr);
}

TEST(BoundaryMemoryTest, WhatAHostMadeDiesWithANodeOfTheLibrary) {
    std::vector<int> attributes;
    std::vector<std::uint64_t> items;
    {
        const std::unique_ptr<Node> root(Node::CreateRoot());
        Node* const child = root->CreateChild(2);
        child->SetAttribute(new TellingAttribute<AttributeVisibility>(attributes, true));
        child->AddGeometry(support::newItem(7, &items));
    }
    EXPECT_EQ(attributes, (std::vector<int>{AttributeType::Visibility}));
    EXPECT_EQ(items, (std::vector<std::uint64_t>{7}));
}

TEST(BoundaryMemoryTest, ElementsOfBothSidesDieWithTheirOwner) {
    support::Deaths deaths;
    {
        const auto mesh = support::loadMesh();
        mesh->AddEdge(support::loadEdge().release());
        mesh->AddEdge(support::newTelling<support::EdgeLoader>("edge", deaths));
    }
    EXPECT_EQ(deaths, (support::Deaths{"edge"}));
}

TEST(BoundaryMemoryTest, FactoriesOfTheHostAreReleasedByTheLibrary) {
    class Factory : public AReportFactory {
    public:
        explicit Factory(bool& isGone) : AReportFactory("own"), _isGone(isGone) {}
        ~Factory() override { _isGone = true; }
        AReport* MakeReport() override { return new support::SilentReport(); }

    private:
        bool& _isGone;
    };
    bool isGone = false;
    AReportFactory::SetActiveReportFactory(new Factory(isGone));
    const std::unique_ptr<AReport> report(AReportFactory::GetActiveReportFactory()->MakeReport());
    EXPECT_FALSE(report->IsDefined());
    AReportFactory::SetActiveReportFactory(nullptr);
    EXPECT_TRUE(isGone);
}

}  // namespace
}  // namespace KesVizCore
