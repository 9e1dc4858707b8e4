#include "CommandKit.h"
#include "commands/ViewsCommand.h"

#include <gmock/gmock.h>

#include <limits>

namespace kesview {
namespace {

using support::annotatedMachine;
using support::Answer;
using support::golden;
using support::run;
using testing::HasSubstr;

/// The front view, and one with everything that a view can have.
Document machineWithViews() {
    Document document = annotatedMachine();
    SavedView section;
    section.id = 71;
    section.key = "#710";
    section.name = "Section A-A";
    section.perspective = true;
    section.viewAngle = 30;
    section.showsAll = true;
    section.clipping = SavedView::Plane{{0, 0, 2.5}, {0, 0, -1}};
    document.views.push_back(section);
    return document;
}

TEST(ViewsCommandTest, TextOfTwoViews) {
    const Answer answer = run({"views", "machine.stp", "-q"}, machineWithViews());
    EXPECT_EQ(answer.code, ExitCode::Done);
    EXPECT_EQ(answer.out, golden("views.txt", answer.out));
}

TEST(ViewsCommandTest, JsonOfTwoViews) {
    const Answer answer =
        run({"views", "machine.stp", "-q", "--format", "json"}, machineWithViews());
    EXPECT_EQ(answer.out, golden("views.json", answer.out));
    EXPECT_EQ(support::violations("views", answer.out), "");
}

TEST(ViewsCommandTest, AViewThatShowsAllListsEveryAnnotation) {
    const ViewsResult result = viewsOf(machineWithViews());
    ASSERT_EQ(result.views.size(), 2U);
    EXPECT_EQ(result.views[0].members.size(), 1U);
    EXPECT_EQ(result.views[1].members.size(), 3U);
}

TEST(ViewsCommandTest, AMemberThatTheFileDoesNotHoldHasNoName) {
    Document document = annotatedMachine();
    document.views[0].members = {"#999"};
    const ViewsResult result = viewsOf(document);
    EXPECT_EQ(result.views[0].members[0].key, "#999");
    EXPECT_EQ(result.views[0].members[0].name, "");
}

TEST(ViewsCommandTest, NumbersThatAreNoneAreNullInJson) {
    Document document = annotatedMachine();
    document.views[0].eye[0] = std::numeric_limits<double>::infinity();
    document.views[0].width = std::numeric_limits<double>::quiet_NaN();
    const Answer answer = run({"views", "a.stp", "-q", "--format", "json"}, document);
    EXPECT_EQ(support::violations("views", answer.out), "");
    EXPECT_THAT(answer.out, HasSubstr("\"window\": null"));
}

TEST(ViewsCommandTest, AFileWithoutViewsSaysSo) {
    EXPECT_EQ(run({"views", "a.stp"}, Document()).out, "no saved views\n");
}

}  // namespace
}  // namespace kesview
