#include "reading/occ/PmiViewCheck.h"

#include <gtest/gtest.h>

namespace kesview {
namespace {

PmiBox cube() {
    PmiBox box;
    box.Add({-10, -10, -10});
    box.Add({10, 10, 10});
    return box;
}

SavedView viewFrom(const Vector& eye, const Vector& target, double size) {
    SavedView view;
    view.eye = eye;
    view.target = target;
    view.width = size;
    view.height = size;
    return view;
}

TEST(PmiViewCheckTest, AViewOfTheSceneStaysAsItIs) {
    Document document;
    SavedView view = viewFrom({0, 0, 100}, {0, 0, 0}, 30);
    aimAtScene(cube(), view, document);
    EXPECT_EQ(view.target, (Vector{0, 0, 0}));
    EXPECT_EQ(view.width, 30);
    EXPECT_TRUE(document.findings.empty());
}

TEST(PmiViewCheckTest, ADetailOfTheSceneStaysAsItIs) {
    Document document;
    SavedView view = viewFrom({9, 9, 100}, {9, 9, 0}, 3);
    aimAtScene(cube(), view, document);
    EXPECT_EQ(view.width, 3);
    EXPECT_TRUE(document.findings.empty());
}

TEST(PmiViewCheckTest, AViewThatLooksAwayIsTurnedRound) {
    Document document;
    SavedView view = viewFrom({0, 0, 100}, {0, 0, 150}, 30);
    aimAtScene(cube(), view, document);
    EXPECT_EQ(view.eye, (Vector{0, 0, 100}));
    EXPECT_EQ(view.target, (Vector{0, 0, 50}));
    ASSERT_EQ(document.findings.size(), 1U);
    EXPECT_EQ(document.findings[0].code, "view.reversed");
}

TEST(PmiViewCheckTest, AViewThatMissesIsCentredInItsDirection) {
    Document document;
    SavedView view = viewFrom({500, 0, 100}, {500, 0, 0}, 30);
    aimAtScene(cube(), view, document);
    EXPECT_EQ(view.target, (Vector{0, 0, 0}));
    EXPECT_EQ(view.eye, (Vector{0, 0, 100}));
    EXPECT_EQ(view.width, 0);
    ASSERT_EQ(document.findings.size(), 1U);
    EXPECT_EQ(document.findings[0].code, "view.recentred");
}

TEST(PmiViewCheckTest, AnEmptySceneChangesNothing) {
    Document document;
    SavedView view = viewFrom({0, 0, 100}, {0, 0, 150}, 30);
    aimAtScene(PmiBox(), view, document);
    EXPECT_EQ(view.target, (Vector{0, 0, 150}));
}

}  // namespace
}  // namespace kesview
