#include "occ/Measures.h"
#include "reading/occ/ReadCadFile.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <BRepMesh_IncrementalMesh.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <StlAPI_Writer.hxx>

namespace kesview {
namespace {

using support::TemporaryFolder;

std::string writeBox(const TemporaryFolder& folder, bool asText) {
    const TopoDS_Shape box = BRepPrimAPI_MakeBox(2, 3, 4).Shape();
    const BRepMesh_IncrementalMesh mesh(box, 0.1);
    StlAPI_Writer writer;
    writer.ASCIIMode() = asText;
    writer.Write(box, folder.File("box.stl").c_str());
    return folder.File("box.stl");
}

Document read(const std::string& path, const ReadOptions& options = {}) {
    return readCadFile(path, FileFormat::Stl, options, {});
}

class StlFileFormTest : public testing::TestWithParam<bool> {};

TEST_P(StlFileFormTest, ABoxIsOneClosedMeshBody) {
    const TemporaryFolder folder;
    const Document document = read(writeBox(folder, GetParam()));
    EXPECT_EQ(document.format, "STL");
    EXPECT_EQ(document.unit, "");
    EXPECT_EQ(document.millimetresPerUnit, 1);
    ASSERT_EQ(document.products.size(), 1U);
    EXPECT_EQ(document.products[0].name, "box");
    ASSERT_EQ(document.products[0].bodies.size(), 1U);
    const Body& body = document.products[0].bodies[0];
    EXPECT_EQ(body.kind, BodyKind::Mesh);
    EXPECT_TRUE(body.edges.empty());
    ASSERT_EQ(body.faces.size(), 1U);
    EXPECT_EQ(body.faces[0].triangles.size(), 12U * 3);
    EXPECT_EQ(body.faces[0].points.size(), 8U * 3);
    EXPECT_NEAR(volumeOf(body), 24, 1e-6);
}

INSTANTIATE_TEST_SUITE_P(TextAndBinary, StlFileFormTest, testing::Bool());

TEST(StlFileTest, EachSolidOfTheTextIsABody) {
    const TemporaryFolder folder;
    const std::string facet =
        "facet normal 0 0 1 outer loop vertex 0 0 0 vertex 1 0 0 vertex 0 1 0 endloop endfacet\n";
    const Document document = read(folder.Write(
        "two.stl", "solid a\n" + facet + "endsolid a\nsolid b\n" + facet + facet + "endsolid b\n"));
    ASSERT_EQ(document.products[0].bodies.size(), 2U);
    EXPECT_EQ(document.products[0].bodies[0].name, "a");
    EXPECT_EQ(document.products[0].bodies[1].name, "b");
    EXPECT_TRUE(document.findings.empty());
}

TEST(StlFileTest, WhatIsLeftOutIsTold) {
    const TemporaryFolder folder;
    const Document document = read(folder.Write(
        "cut.stl",
        "solid a\nfacet normal 0 0 1 outer loop vertex 0 0 0 vertex 1 0 0 vertex 2 0 0 endloop "
        "endfacet\nfacet normal 0 0 1 outer loop vertex 0 0"));
    EXPECT_EQ(findingCount(document, "mesh.degenerate"), 1U);
    EXPECT_EQ(findingCount(document, "mesh.damaged-facet"), 1U);
    EXPECT_EQ(findingCount(document, "file.truncated"), 1U);
}

TEST(StlFileTest, ASolidWithoutFacetsIsNoShape) {
    const TemporaryFolder folder;
    const Document document = read(folder.Write("none.stl", "solid a\nendsolid a\n"));
    EXPECT_EQ(findingCount(document, "shape.none"), 1U);
}

TEST(StlFileTest, WithoutTessellationTheFaceIsListedAlone) {
    const TemporaryFolder folder;
    ReadOptions options;
    options.withTessellation = false;
    const Document document = read(writeBox(folder, false), options);
    ASSERT_EQ(document.products[0].bodies[0].faces.size(), 1U);
    EXPECT_TRUE(document.products[0].bodies[0].faces[0].points.empty());
}

}  // namespace
}  // namespace kesview
