#include "reading/occ/StlAscii.h"

#include <gtest/gtest.h>

namespace kesview {
namespace {

std::string facet(const std::string& corners) {
    return "facet normal 0 0 1\nouter loop\n" + corners + "endloop\nendfacet\n";
}

const std::string corners = "vertex 0 0 0\nvertex 1 0 0\nvertex 0 1 0\n";

TEST(StlAsciiTest, ReadsAllSolidsWithTheirNames) {
    const StlText text = parseStlText("solid first part\n" + facet(corners) + "endsolid first\n" +
                                      "solid\n" + facet(corners) + facet(corners) + "endsolid\n");
    ASSERT_EQ(text.solids.size(), 2U);
    EXPECT_EQ(text.solids[0].name, "first part");
    EXPECT_EQ(text.solids[0].triangles.size(), 1U);
    EXPECT_EQ(text.solids[1].name, "");
    EXPECT_EQ(text.solids[1].triangles.size(), 2U);
    EXPECT_FALSE(text.isTruncated);
    EXPECT_EQ(text.damagedFacets, 0U);
}

TEST(StlAsciiTest, CaseLineBreaksAndWaysToWriteNumbersDoNotMatter) {
    const StlText text = parseStlText(
        "SOLID x\r\nFACET NORMAL 0 0 1 OUTER LOOP VERTEX +1.5e+001 -2E-1 .5 Vertex 1 2 3\r\n"
        "\tvertex 4 5 6 ENDLOOP ENDFACET\r\nENDSOLID\r\n");
    ASSERT_EQ(text.solids.size(), 1U);
    ASSERT_EQ(text.solids[0].triangles.size(), 1U);
    const StlCorner expected = {15.0F, -0.2F, 0.5F};
    EXPECT_EQ(text.solids[0].triangles[0][0], expected);
    EXPECT_EQ(text.solids[0].name, "x");
}

TEST(StlAsciiTest, FacetsWithoutThreeCornersOfNumbersAreCounted) {
    const StlText text =
        parseStlText("solid\n" + facet("vertex 0 0 0\nvertex 1 0 0\n") +
                     facet("vertex 0 0 zero\nvertex 1 0 0\nvertex 0 1 0\n") +
                     facet(corners + "vertex 1 1 1\n") + facet(corners) + "endsolid\n");
    EXPECT_EQ(text.damagedFacets, 3U);
    ASSERT_EQ(text.solids.size(), 1U);
    EXPECT_EQ(text.solids[0].triangles.size(), 1U);
}

TEST(StlAsciiTest, AnEndWithinASolidIsTold) {
    EXPECT_TRUE(parseStlText("solid\n" + facet(corners)).isTruncated);
    const StlText inFacet = parseStlText("solid\nfacet normal 0 0 1\nouter loop\nvertex 1 2");
    EXPECT_TRUE(inFacet.isTruncated);
    EXPECT_EQ(inFacet.damagedFacets, 1U);
}

TEST(StlAsciiTest, OtherTextHasNoSolids) {
    EXPECT_TRUE(parseStlText("version https://example.org\nsize 12\n").solids.empty());
    EXPECT_TRUE(parseStlText("").solids.empty());
}

}  // namespace
}  // namespace kesview
