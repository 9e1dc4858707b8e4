#include "reading/occ/Findings.h"

#include <gtest/gtest.h>

namespace kesview {
namespace {

Remark faceLost(const std::string& where) {
    return {Finding::Severity::Error, "shape.lost-face", "Faces are lost.", where};
}

TEST(FindingsTest, TheSameRemarkCountsUpAndKeepsItsFirstPlace) {
    Document document;
    addFinding(document, faceLost("#7"));
    addFinding(document, faceLost("#9"), 3);
    ASSERT_EQ(document.findings.size(), 1U);
    EXPECT_EQ(document.findings[0].count, 4U);
    EXPECT_EQ(document.findings[0].where, "#7");
}

TEST(FindingsTest, AnotherMessageIsAnotherFinding) {
    Document document;
    addFinding(document, faceLost("#7"));
    Remark other = faceLost("#7");
    other.message = "Other faces are lost.";
    addFinding(document, other);
    EXPECT_EQ(document.findings.size(), 2U);
}

TEST(FindingsTest, NothingCountedIsNothingFound) {
    Document document;
    addFinding(document, faceLost(""), 0);
    EXPECT_TRUE(document.findings.empty());
}

}  // namespace
}  // namespace kesview
