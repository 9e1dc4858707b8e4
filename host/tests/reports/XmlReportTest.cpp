/// @file
#include "reports/XmlReport.h"
#include "reports/XmlReportFactory.h"
#include "reports/XmlText.h"
#include "support/FileContent.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <pthread.h>
#include <stdexcept>
#include <unistd.h>

namespace kesview {
namespace {

namespace fs = std::filesystem;
using support::contentOfFile;
using testing::EndsWith;

class XmlReportTest : public testing::Test {
protected:
    std::wstring path(const std::string& name) const { return (folder / name).wstring(); }

    /// Saves @p report and restores it into a new one.
    std::unique_ptr<XmlReport> savedAndRestored(const XmlReport& report) const {
        EXPECT_TRUE(report.SaveTo(path("r.xml"))) << report.Problem();
        auto restored = std::make_unique<XmlReport>();
        EXPECT_TRUE(restored->Restore(path("r.xml"))) << restored->Problem();
        return restored;
    }

    const support::TemporaryFolder temporary;
    const fs::path folder = temporary.Path();
};

std::string whyNot(const std::function<void()>& action) {
    try {
        action();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "";
}

/// Runs @p action in a thread whose stack has less than 60 bytes for each of 10,000 calls.
void onSmallStack(std::function<void()> action) {
    constexpr std::size_t size = 512 * 1024;
    pthread_attr_t attributes;
    pthread_t thread = 0;
    ASSERT_EQ(::pthread_attr_init(&attributes), 0);
    ASSERT_EQ(::pthread_attr_setstacksize(&attributes, size), 0);
    const auto run = [](void* given) -> void* {
        (*static_cast<std::function<void()>*>(given))();
        return nullptr;
    };
    ASSERT_EQ(::pthread_create(&thread, &attributes, run, &action), 0);
    ASSERT_EQ(::pthread_join(thread, nullptr), 0);
    ::pthread_attr_destroy(&attributes);
}

/// A report of one element that holds everything that there is.
void fill(XmlReport& report) {
    report.StartReport("Scene");
    report.AddAttribute("Visible", true);
    report.AddAttribute("Hidden", false);
    report.AddAttribute("ID", std::uint64_t{18446744073709551615U});
    report.AddAttribute("Size", 0.1);
    report.AddAttribute("Name", std::wstring(L"a<\"&'>⌀"));
    report.AddComment(L"made by hand");
    report.OpenElement("Node");
    report.AddText(L"one < two & ");
    report.AddText(L"⌀ three");
    report.CloseElement();
    report.OpenElement("Empty");
    report.CloseElement();
    report.EndReport();
}

const char* const filledText =
    "<?xml version=\"1.0\"?>\n"
    "<Scene Visible=\"true\" Hidden=\"false\" ID=\"18446744073709551615\" Size=\"0.1\" "
    "Name=\"a&lt;&quot;&amp;'>⌀\">\n"
    "  <!--made by hand-->\n"
    "  <Node>one &lt; two &amp; ⌀ three</Node>\n"
    "  <Empty />\n"
    "</Scene>\n";

// --- content ------------------------------------------------------------------------------------

TEST_F(XmlReportTest, HoldsElementsTypedAttributesTextsAndComments) {
    XmlReport report;
    fill(report);
    EXPECT_EQ(report.ToUtf8(), filledText);
    EXPECT_EQ(report.GetName(), "Scene");
}

TEST_F(XmlReportTest, ItsWideTextIsTheSame) {
    XmlReport report;
    fill(report);
    const std::wstring text = report.ToText();
    EXPECT_NE(text.find(L"⌀ three"), std::wstring::npos);
    EXPECT_EQ(pugi::as_utf8(text), filledText);
}

TEST_F(XmlReportTest, AnEmptyTextIsNoneAndTextsInARowAreOne) {
    XmlReport report;
    report.StartReport("R");
    report.AddText(L"");
    report.EndReport();
    EXPECT_EQ(report.ToUtf8(), "<?xml version=\"1.0\"?>\n<R />\n");
}

TEST_F(XmlReportTest, ContentBeforeTheStartIsRefused) {
    XmlReport report;
    EXPECT_EQ(whyNot([&] { report.OpenElement("A"); }),
              "An element needs a report that was started");
    EXPECT_EQ(whyNot([&] { report.AddAttribute("A", true); }),
              "An attribute needs a report that was started");
    EXPECT_EQ(whyNot([&] { report.AddText(L"A"); }), "A text needs a report that was started");
    EXPECT_EQ(whyNot([&] { report.AddComment(L"A"); }),
              "A comment needs a report that was started");
    EXPECT_EQ(whyNot([&] { report.CloseElement(); }),
              "The end of an element needs a report that was started");
    EXPECT_EQ(whyNot([&] { report.EndReport(); }), "The end needs a report that was started");
    EXPECT_FALSE(report.IsDefined());
}

TEST_F(XmlReportTest, WhatMakesNoTreeIsRefusedAndTheReportGoesOn) {
    XmlReport report;
    report.StartReport("R");
    EXPECT_EQ(whyNot([&] { report.StartReport("R"); }), "The report was started already");
    EXPECT_EQ(whyNot([&] { report.CloseElement(); }), "No element of the report is open");
    report.OpenElement("My Node");
    report.AddAttribute("A", true);
    EXPECT_EQ(whyNot([&] { report.AddAttribute("A", 1.0); }),
              "Element 'My Node' has an attribute 'A' already");
    EXPECT_EQ(whyNot([&] { report.EndReport(); }),
              "The report cannot end: element 'My Node' is still open");
    report.CloseElement();
    report.EndReport();
    EXPECT_EQ(report.ToUtf8(),
              "<?xml version=\"1.0\"?>\n<R>\n  <My_x20_Node A=\"true\" />\n</R>\n");
}

TEST_F(XmlReportTest, AnAttributeMayFollowContent) {
    XmlReport report;
    report.StartReport("R");
    report.AddText(L"text");
    report.AddAttribute("Late", true);
    report.EndReport();
    EXPECT_EQ(report.ToUtf8(), "<?xml version=\"1.0\"?>\n<R Late=\"true\">text</R>\n");
}

TEST_F(XmlReportTest, TheLifeCycleIsTheLibrarys) {
    XmlReport report;
    EXPECT_EQ(whyNot([&] { report.ToText(); }), "Report has not been completed");
    fill(report);
    EXPECT_EQ(whyNot([&] { report.AddText(L"x"); }),
              "Report has been finalized, can't add content");
}

// --- files --------------------------------------------------------------------------------------

TEST_F(XmlReportTest, ASavedReportIsItsTextAndComesBack) {
    XmlReport report;
    fill(report);
    const auto restored = savedAndRestored(report);
    EXPECT_EQ(contentOfFile(folder / "r.xml"), filledText);
    EXPECT_TRUE(restored->IsDefined());
    EXPECT_EQ(restored->GetName(), "Scene");
    EXPECT_EQ(restored->ToUtf8(), filledText);
}

TEST_F(XmlReportTest, TextsThatXmlCannotHoldComeBack) {
    XmlReport report;
    const std::wstring odd = std::wstring(L" \0\r\n\t\\u{1} ", 12) + L"\x1B[1m\xFFFF";
    report.StartReport("R");
    report.AddAttribute("Odd Name", odd);
    report.AddComment(L"-- " + odd);
    report.OpenElement("Blanks");
    report.AddText(L"  ");
    report.CloseElement();
    report.AddText(L"\n\n");
    report.OpenElement("Text");
    report.AddText(odd);
    report.CloseElement();
    report.EndReport();

    const auto restored = savedAndRestored(report);
    EXPECT_EQ(restored->ToUtf8(), report.ToUtf8());
    const pugi::xml_node root = restored->Root();
    EXPECT_EQ(fromXmlText(root.attribute("Odd_x20_Name").value()), odd);
    EXPECT_EQ(fromXmlText(root.first_child().value()), L"-- " + odd);
    EXPECT_EQ(fromXmlText(root.child("Blanks").child_value()), L"  ");
    EXPECT_EQ(fromXmlText(root.child("Blanks").next_sibling().value()), L"\n\n");
    EXPECT_EQ(fromXmlText(root.child("Text").child_value()), odd);
}

TEST_F(XmlReportTest, AnUnwritablePathIsToldAndNothingIsLeft) {
    XmlReport report;
    fill(report);
    EXPECT_FALSE(report.SaveTo(path("missing/r.xml")));
    EXPECT_EQ(report.Problem(), "'" + (folder / "missing/r.xml").string() +
                                    "' cannot be written: No such file or directory.");
    EXPECT_FALSE(report.SaveTo(L""));
    EXPECT_EQ(report.Problem(), "A report needs the name of a file.");
    EXPECT_FALSE(report.SaveTo(path("r.xml") + std::wstring(L"\0x", 2)));
    EXPECT_TRUE(fs::is_empty(folder));
    EXPECT_TRUE(report.SaveTo(path("r.xml")));
    EXPECT_EQ(report.Problem(), "");
}

TEST_F(XmlReportTest, AFileThatIsNotThereIsNotRestoredYetDefinesTheReport) {
    XmlReport report;
    EXPECT_FALSE(report.Restore(path("none.xml")));
    EXPECT_THAT(report.Problem(), EndsWith("cannot be read: No such file or directory."));
    EXPECT_TRUE(report.IsDefined());
    EXPECT_FALSE(report.Root());
}

TEST_F(XmlReportTest, AFolderIsNotRestored) {
    XmlReport report;
    EXPECT_FALSE(report.Restore(folder.wstring()));
    EXPECT_EQ(report.Problem(), "'" + folder.string() + "' cannot be read: Is a directory.");
}

TEST_F(XmlReportTest, DamagedXmlIsToldWithItsLineAndDropped) {
    std::ofstream(folder / "r.xml") << "<R>\n  <A>\n  </B>\n</R>\n";
    XmlReport report;
    report.StartReport("Before");
    EXPECT_FALSE(report.Restore(path("r.xml")));
    EXPECT_EQ(report.Problem(), "'" + (folder / "r.xml").string() +
                                    "' is no report: Start-end tags mismatch, in line 3.");
    EXPECT_FALSE(report.Root());
    EXPECT_EQ(report.GetName(), "");
}

TEST_F(XmlReportTest, AReportCutAnywhereIsNotRestored) {
    const std::string whole = filledText;
    for (std::size_t size = 0; size + 2 < whole.size(); ++size) {
        std::ofstream(folder / "r.xml", std::ios::trunc) << whole.substr(0, size);
        XmlReport report;
        ASSERT_FALSE(report.Restore(path("r.xml"))) << "cut to " << size;
        ASSERT_NE(report.Problem(), "");
    }
}

TEST_F(XmlReportTest, RestoreReplacesWhatWasThere) {
    std::ofstream(folder / "r.xml") << "<New A='1'>text</New>";
    XmlReport report;
    report.StartReport("Old");
    report.AddText(L"old text");
    EXPECT_TRUE(report.Restore(path("r.xml")));
    EXPECT_EQ(report.GetName(), "New");
    EXPECT_EQ(report.ToUtf8(), "<?xml version=\"1.0\"?>\n<New A=\"1\">text</New>\n");
}

TEST_F(XmlReportTest, TenThousandElementsInEachOtherAreSavedRestoredAndCompared) {
    // On a small stack, so that a call for each level would end the test.
    const auto run = [this](bool differ) {
        XmlReport report;
        XmlReport other;
        for (XmlReport* deep : {&report, &other}) {
            deep->StartReport("R");
            for (int level = 0; level < 10'000; ++level) {
                deep->OpenElement("Level");
            }
            deep->AddAttribute("A", deep == &other && differ);
            for (int level = 0; level < 10'000; ++level) {
                deep->CloseElement();
            }
            deep->EndReport();
        }
        EXPECT_LT(report.ToUtf8().size(), 400'000U);
        const auto restored = savedAndRestored(report);
        EXPECT_EQ(restored->ToUtf8(), report.ToUtf8());
        std::wstring difference;
        std::string detail;
        EXPECT_EQ(restored->Compare(other, difference, detail), !differ);
        EXPECT_EQ(detail.size(), differ ? 2 + 6 * 10'000U + 3 : 0U);
    };
    onSmallStack([&run] { run(false), run(true); });
}

// --- compared -----------------------------------------------------------------------------------

TEST_F(XmlReportTest, EqualReportsCompareEqualWithNothingToSay) {
    XmlReport first;
    XmlReport second;
    fill(first);
    fill(second);
    std::wstring difference = L"left over";
    std::string detail = "left over";
    EXPECT_TRUE(first.Compare(second, difference, detail));
    EXPECT_EQ(difference, L"");
    EXPECT_EQ(detail, "");
    EXPECT_TRUE(first.Compare(*savedAndRestored(second), difference, detail));
}

TEST_F(XmlReportTest, TheFirstDifferenceIsToldWithItsPath) {
    XmlReport first;
    XmlReport second;
    fill(first);
    second.StartReport("Scene");
    second.AddAttribute("Visible", false);
    second.EndReport();
    std::wstring difference;
    std::string detail;
    EXPECT_FALSE(first.Compare(second, difference, detail));
    EXPECT_EQ(difference, L"Attribute /Scene/@Visible changed from 'true' to 'false'.");
    EXPECT_EQ(detail, "/Scene/@Visible");
}

TEST_F(XmlReportTest, AnOpenReportIsNotCompared) {
    XmlReport first;
    XmlReport open;
    fill(first);
    open.StartReport("Scene");
    std::wstring difference;
    std::string detail;
    EXPECT_FALSE(first.Compare(open, difference, detail));
    EXPECT_EQ(difference, L"The other report is not complete.");
    EXPECT_EQ(whyNot([&] { open.Compare(first, difference, detail); }), "Report is not complete");
}

TEST_F(XmlReportTest, TheFactoryMakesOpenXmlReports) {
    XmlReportFactory factory;
    EXPECT_EQ(factory.GetName(), "XML");
    const std::unique_ptr<viz::AReport> report(factory.MakeReport());
    EXPECT_FALSE(report->IsDefined());
    EXPECT_NE(dynamic_cast<XmlReport*>(report.get()), nullptr);
}

TEST_F(XmlReportTest, TheLibraryTakesTheFactory) {
    viz::AReportFactory::SetActiveReportFactory(new XmlReportFactory);
    EXPECT_EQ(viz::AReportFactory::GetActiveReportFactory()->GetName(), "XML");
    viz::AReportFactory::SetActiveReportFactory(nullptr);
}

}  // namespace
}  // namespace kesview
