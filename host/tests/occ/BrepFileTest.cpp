#include "occ/Measures.h"
#include "occ/TestFiles.h"
#include "reading/occ/ReadCadFile.h"

#include <gtest/gtest.h>

#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepTools.hxx>
#include <BinTools.hxx>
#include <TopoDS_Shape.hxx>

namespace kesview {
namespace {

void expectBox(const Document& document) {
    EXPECT_EQ(document.format, "BREP");
    EXPECT_EQ(document.unit, "");
    ASSERT_EQ(document.roots.size(), 1U);
    ASSERT_EQ(document.products.size(), 1U);
    EXPECT_EQ(document.products[0].name, "box");
    ASSERT_EQ(document.products[0].bodies.size(), 1U);
    EXPECT_NEAR(volumeOf(document.products[0].bodies[0]), 24, 1e-5);
    EXPECT_TRUE(document.findings.empty());
}

TEST(BrepFileTest, ReadsText) {
    const TestFolder folder;
    BRepTools::Write(BRepPrimAPI_MakeBox(2, 3, 4).Shape(), folder.Path("box.brep").c_str());
    expectBox(readCadFile(folder.Path("box.brep"), FileFormat::Brep, {}, {}));
}

TEST(BrepFileTest, ReadsBinary) {
    const TestFolder folder;
    BinTools::Write(BRepPrimAPI_MakeBox(2, 3, 4).Shape(), folder.Path("box.bin").c_str());
    expectBox(readCadFile(folder.Path("box.bin"), FileFormat::Brep, {}, {}));
}

/// Up to the last line, which names the shape: what is cut behind it is lost blanks.
void expectEveryCutToBeDamaged(const TestFolder& folder, const std::string& content) {
    for (std::size_t percent = 0; percent < 100; percent += 3) {
        SCOPED_TRACE(percent);
        const std::string cut =
            folder.Write("cut.brep", content.substr(0, content.size() * percent / 100));
        EXPECT_THROW(readCadFile(cut, FileFormat::Brep, {}, {}), ReadError);
    }
}

TEST(BrepFileTest, ACutTextFileIsDamaged) {
    const TestFolder folder;
    BRepTools::Write(BRepPrimAPI_MakeBox(2, 3, 4).Shape(), folder.Path("box.brep").c_str());
    expectEveryCutToBeDamaged(folder, contentOfFile(folder.Path("box.brep")));
}

TEST(BrepFileTest, ACutBinaryFileIsDamaged) {
    const TestFolder folder;
    BinTools::Write(BRepPrimAPI_MakeBox(2, 3, 4).Shape(), folder.Path("box.bin").c_str());
    expectEveryCutToBeDamaged(folder, contentOfFile(folder.Path("box.bin")));
}

TEST(BrepFileTest, OtherTextIsDamaged) {
    const TestFolder folder;
    EXPECT_THROW(readCadFile(folder.Write("x.brep", "not a shape\n"), FileFormat::Brep, {}, {}),
                 ReadError);
}

}  // namespace
}  // namespace kesview
