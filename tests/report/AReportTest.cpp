#include <KesVizCore/report/AReport.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace KesVizCore {
namespace {

using testing::Ref;
using testing::Return;
using testing::StrictMock;
using testing::Throw;
using testing::TypedEq;

const std::string finalized = "Report has been finalized, can't add content";

/// Every call that no test expects is an error.
class MockReport : public AReport {
public:
    MOCK_METHOD(void, start, (std::string), (override));
    MOCK_METHOD(void, end, (), (override));
    MOCK_METHOD(void, openElement, (std::string), (override));
    MOCK_METHOD(void, closeElement, (), (override));
    MOCK_METHOD(void, addAttribute, (std::string, bool), (override));
    MOCK_METHOD(void, addAttribute, (std::string, std::uint64_t), (override));
    MOCK_METHOD(void, addAttribute, (std::string, std::wstring), (override));
    MOCK_METHOD(void, addAttribute, (std::string, double), (override));
    MOCK_METHOD(void, addComment, (std::wstring), (override));
    MOCK_METHOD(void, addText, (std::wstring), (override));
    MOCK_METHOD(std::wstring, toText, (), (const, override));
    MOCK_METHOD(bool, saveTo, (std::wstring), (const, override));
    MOCK_METHOD(bool, restore, (std::wstring), (override));
    MOCK_METHOD(bool, compare, (const AReport&, std::wstring&, std::string&), (const, override));

    using AReport::_name;
    using AReport::assertNotDefined;
    using AReport::define;
};

using Report = StrictMock<MockReport>;

/// The message of what @p call throws.
std::string messageOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "nothing thrown";
}

/// Which slot a virtual operation stands in, counted from the first. Where the processor's C++
/// ABI is the Itanium one, a pointer to a virtual member holds the distance of its slot; an odd 1
/// may mark it as virtual.
template <typename Member>
std::uintptr_t slotOf(Member member) {
    std::uintptr_t distance = 0;
    std::memcpy(&distance, &member, sizeof distance);
    return (distance & ~std::uintptr_t{1}) / sizeof(void*);
}

/// All operations that refuse a defined report.
std::vector<std::pair<std::string, std::function<void(Report&)>>> contentOperations() {
    return {
        {"StartReport", [](Report& report) { report.StartReport("other"); }},
        {"OpenElement", [](Report& report) { report.OpenElement("element"); }},
        {"AddAttribute bool", [](Report& report) { report.AddAttribute("a", true); }},
        {"AddAttribute number", [](Report& report) { report.AddAttribute("a", std::uint64_t{1}); }},
        {"AddAttribute text", [](Report& report) { report.AddAttribute("a", std::wstring()); }},
        {"AddAttribute double", [](Report& report) { report.AddAttribute("a", 1.0); }},
        {"AddText", [](Report& report) { report.AddText(L"text"); }},
        {"AddComment", [](Report& report) { report.AddComment(L"comment"); }},
        {"CloseElement", [](Report& report) { report.CloseElement(); }},
        {"EndReport", [](Report& report) { report.EndReport(); }},
        {"Restore", [](Report& report) { report.Restore(L"path"); }},
    };
}

TEST(AReportTest, IsAbstract) {
    EXPECT_TRUE(std::is_abstract_v<AReport>);
    EXPECT_TRUE(std::has_virtual_destructor_v<AReport>);
}

TEST(AReportTest, VirtualOperationsKeepTheirSlots) {
    using M = MockReport;
    using Name = std::string;
    using Text = std::wstring;
    const std::vector<std::uintptr_t> slots = {
        slotOf(&M::start),
        slotOf(&M::end),
        slotOf(&M::openElement),
        slotOf(&M::closeElement),
        slotOf(static_cast<void (M::*)(Name, bool)>(&M::addAttribute)),
        slotOf(static_cast<void (M::*)(Name, std::uint64_t)>(&M::addAttribute)),
        slotOf(static_cast<void (M::*)(Name, Text)>(&M::addAttribute)),
        slotOf(static_cast<void (M::*)(Name, double)>(&M::addAttribute)),
        slotOf(&M::addComment),
        slotOf(&M::addText),
        slotOf(&M::toText),
        slotOf(&M::saveTo),
        slotOf(&M::restore),
        slotOf(&M::compare),
    };
    std::vector<std::uintptr_t> expected;  // the destructor in front has two slots in that ABI
    for (std::uintptr_t slot = 2; slot < 16; ++slot) {
        expected.push_back(slot);
    }
    EXPECT_EQ(slots, expected);
}

TEST(AReportTest, IsOpenAndNamelessAfterConstruction) {
    const Report report;
    EXPECT_FALSE(report.IsDefined());
    EXPECT_EQ(report.GetName(), "");
}

TEST(AReportTest, StartReportForwardsAndSetsTheName) {
    Report report;
    EXPECT_CALL(report, start("Scene")).WillOnce([&report](const std::string&) {
        EXPECT_EQ(report.GetName(), "Scene");
    });
    report.StartReport("Scene");
    EXPECT_EQ(report.GetName(), "Scene");
    EXPECT_FALSE(report.IsDefined());
}

TEST(AReportTest, OpenElementForwards) {
    Report report;
    EXPECT_CALL(report, openElement("Node"));
    report.OpenElement("Node");
    EXPECT_FALSE(report.IsDefined());
}

TEST(AReportTest, AddAttributeForwardsABool) {
    Report report;
    EXPECT_CALL(report, addAttribute("on", TypedEq<bool>(true)));
    EXPECT_CALL(report, addAttribute("off", TypedEq<bool>(false)));
    report.AddAttribute("on", true);
    report.AddAttribute("off", false);
}

TEST(AReportTest, AddAttributeForwardsAnUnsignedNumber) {
    Report report;
    constexpr std::uint64_t largest = std::numeric_limits<std::uint64_t>::max();
    EXPECT_CALL(report, addAttribute("id", TypedEq<std::uint64_t>(largest)));
    report.AddAttribute("id", largest);
}

TEST(AReportTest, AddAttributeForwardsAWideText) {
    Report report;
    EXPECT_CALL(report, addAttribute("name", TypedEq<std::wstring>(L"W\x00FCrfel")));
    report.AddAttribute("name", std::wstring(L"W\x00FCrfel"));
}

TEST(AReportTest, AddAttributeForwardsADouble) {
    Report report;
    EXPECT_CALL(report, addAttribute("size", TypedEq<double>(-0.1)));
    report.AddAttribute("size", -0.1);
}

TEST(AReportTest, AddAttributeTakesAWideLiteralForABool) {
    // A pointer turns into a bool before the compiler looks for a constructor of a text.
    Report report;
    EXPECT_CALL(report, addAttribute("name", TypedEq<bool>(true)));
    const wchar_t* const name = L"Cube";
    report.AddAttribute("name", name);
}

TEST(AReportTest, AddTextForwards) {
    Report report;
    EXPECT_CALL(report, addText(std::wstring(L"text")));
    report.AddText(L"text");
}

TEST(AReportTest, AddCommentForwards) {
    Report report;
    EXPECT_CALL(report, addComment(std::wstring(L"comment")));
    report.AddComment(L"comment");
}

TEST(AReportTest, CloseElementForwards) {
    Report report;
    EXPECT_CALL(report, closeElement());
    report.CloseElement();
    EXPECT_FALSE(report.IsDefined());
}

TEST(AReportTest, OpenReportTakesContentInAnyOrder) {
    Report report;
    const testing::InSequence inSequence;
    EXPECT_CALL(report, closeElement());  // nothing is open, and the report has not started
    EXPECT_CALL(report, addText(std::wstring(L"text")));
    EXPECT_CALL(report, openElement("never closed"));
    EXPECT_CALL(report, start("late"));
    EXPECT_CALL(report, end());
    report.CloseElement();
    report.AddText(L"text");
    report.OpenElement("never closed");
    report.StartReport("late");
    report.EndReport();
}

TEST(AReportTest, EndReportForwardsWhileStillOpenAndDefines) {
    Report report;
    EXPECT_CALL(report, end()).WillOnce([&report] { EXPECT_FALSE(report.IsDefined()); });
    report.EndReport();
    EXPECT_TRUE(report.IsDefined());
}

TEST(AReportTest, EndReportTwiceThrows) {
    Report report;
    EXPECT_CALL(report, end());
    report.EndReport();
    EXPECT_EQ(messageOf([&] { report.EndReport(); }), finalized);
}

TEST(AReportTest, EndReportThatFailsInTheDerivedClassLeavesTheReportOpen) {
    Report report;
    EXPECT_CALL(report, end()).WillOnce(Throw(std::runtime_error("disk full")));
    EXPECT_EQ(messageOf([&] { report.EndReport(); }), "disk full");
    EXPECT_FALSE(report.IsDefined());
}

TEST(AReportTest, RestoreForwardsAndDefines) {
    Report report;
    EXPECT_CALL(report, restore(std::wstring(L"saved.txt"))).WillOnce(Return(true));
    EXPECT_TRUE(report.Restore(L"saved.txt"));
    EXPECT_TRUE(report.IsDefined());
}

TEST(AReportTest, RestoreThatFailsStillDefines) {
    Report report;
    EXPECT_CALL(report, restore(std::wstring(L"missing.txt"))).WillOnce(Return(false));
    EXPECT_FALSE(report.Restore(L"missing.txt"));
    EXPECT_TRUE(report.IsDefined());
    EXPECT_EQ(messageOf([&] { report.AddText(L"more"); }), finalized);
}

TEST(AReportTest, RestoreMayFillTheReportByItsPublicOperations) {
    Report report;
    EXPECT_CALL(report, restore(std::wstring(L"saved.txt"))).WillOnce([&report](std::wstring) {
        report.OpenElement("Node");
        return true;
    });
    EXPECT_CALL(report, openElement("Node"));
    EXPECT_TRUE(report.Restore(L"saved.txt"));
}

TEST(AReportTest, RestoreThatThrowsInTheDerivedClassLeavesTheReportOpen) {
    Report report;
    EXPECT_CALL(report, restore(std::wstring(L"p"))).WillOnce(Throw(std::runtime_error("torn")));
    EXPECT_EQ(messageOf([&] { report.Restore(L"p"); }), "torn");
    EXPECT_FALSE(report.IsDefined());
}

TEST(AReportTest, ContentOperationsOfADefinedReportThrowAndCallNothing) {
    for (const auto& [name, operation] : contentOperations()) {
        SCOPED_TRACE(name);
        Report report;
        report._name = "name";
        report.define();
        EXPECT_EQ(messageOf([&report, &call = operation] { call(report); }), finalized);
        EXPECT_TRUE(report.IsDefined());
        EXPECT_EQ(report.GetName(), "name");
    }
}

TEST(AReportTest, ToTextForwardsOnceDefined) {
    Report report;
    report.define();
    EXPECT_CALL(report, toText()).WillOnce(Return(L"whole text"));
    EXPECT_EQ(std::as_const(report).ToText(), L"whole text");
}

TEST(AReportTest, ToTextOfAnOpenReportThrowsAndCallsNothing) {
    const Report report;
    EXPECT_EQ(messageOf([&] { report.ToText(); }), "Report has not been completed");
    EXPECT_FALSE(report.IsDefined());
}

TEST(AReportTest, SaveToForwardsOnceDefined) {
    Report report;
    report.define();
    EXPECT_CALL(report, saveTo(std::wstring(L"path")))
        .WillOnce(Return(true))
        .WillOnce(Return(false));
    EXPECT_TRUE(std::as_const(report).SaveTo(L"path"));
    EXPECT_FALSE(std::as_const(report).SaveTo(L"path"));
}

TEST(AReportTest, SaveToOfAnOpenReportThrowsAndCallsNothing) {
    const Report report;
    EXPECT_EQ(messageOf([&] { report.SaveTo(L"path"); }), "Report has not been completed");
}

TEST(AReportTest, CompareForwardsTheCallersOwnObjects) {
    Report report;
    Report other;
    std::wstring difference = L"before";
    std::string detail = "before";
    report.define();
    other.define();
    EXPECT_CALL(report, compare(Ref(other), Ref(difference), Ref(detail)))
        .WillOnce([](const AReport&, std::wstring& where, std::string& what) {
            where = L"at Node";
            what = "ID";
            return true;
        })
        .WillOnce(Return(false));
    EXPECT_TRUE(std::as_const(report).Compare(other, difference, detail));
    EXPECT_EQ(difference, L"at Node");
    EXPECT_EQ(detail, "ID");
    EXPECT_FALSE(std::as_const(report).Compare(other, difference, detail));
}

TEST(AReportTest, CompareDoesNotAskWhetherTheOtherIsDefined) {
    Report report;
    const Report open;
    std::wstring difference;
    std::string detail;
    report.define();
    EXPECT_CALL(report, compare(Ref(open), Ref(difference), Ref(detail))).WillOnce(Return(true));
    EXPECT_TRUE(report.Compare(open, difference, detail));
}

TEST(AReportTest, CompareOfAnOpenReportThrowsAndCallsNothing) {
    const Report report;
    Report other;
    other.define();
    std::wstring difference = L"before";
    std::string detail = "before";
    EXPECT_EQ(messageOf([&] { report.Compare(other, difference, detail); }),
              "Report is not complete");
    EXPECT_EQ(difference, L"before");
    EXPECT_EQ(detail, "before");
}

TEST(AReportTest, AssertNotDefinedThrowsOfADefinedReportOnly) {
    Report report;
    EXPECT_NO_THROW(report.assertNotDefined());
    report.define();
    EXPECT_EQ(messageOf([&] { report.assertNotDefined(); }), finalized);
}

TEST(AReportTest, DefineMakesTheReportDefined) {
    Report report;
    report.define();
    EXPECT_TRUE(report.IsDefined());
}

TEST(AReportTest, DefineTwiceThrows) {
    Report report;
    report.define();
    EXPECT_EQ(messageOf([&] { report.define(); }), finalized);
    EXPECT_TRUE(report.IsDefined());
}

}  // namespace
}  // namespace KesVizCore
