#include "occ/Measures.h"
#include "reading/occ/ReadCadFile.h"
#include "support/FileContent.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepTools.hxx>
#include <BinTools.hxx>
#include <TopoDS_Shape.hxx>

namespace kesview {
namespace {

using support::contentOfFile;
using support::TemporaryFolder;

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
    const TemporaryFolder folder;
    BRepTools::Write(BRepPrimAPI_MakeBox(2, 3, 4).Shape(), folder.File("box.brep").c_str());
    expectBox(readCadFile(folder.File("box.brep"), FileFormat::Brep, {}, {}));
}

TEST(BrepFileTest, ReadsBinary) {
    const TemporaryFolder folder;
    BinTools::Write(BRepPrimAPI_MakeBox(2, 3, 4).Shape(), folder.File("box.bin").c_str());
    expectBox(readCadFile(folder.File("box.bin"), FileFormat::Brep, {}, {}));
}

/// Up to the last line, which names the shape: what is cut behind it is lost blanks.
void expectEveryCutToBeDamaged(const TemporaryFolder& folder, const std::string& content) {
    for (std::size_t percent = 0; percent < 100; percent += 3) {
        SCOPED_TRACE(percent);
        const std::string cut =
            folder.Write("cut.brep", content.substr(0, content.size() * percent / 100));
        EXPECT_THROW(readCadFile(cut, FileFormat::Brep, {}, {}), ReadError);
    }
}

TEST(BrepFileTest, ACutTextFileIsDamaged) {
    const TemporaryFolder folder;
    BRepTools::Write(BRepPrimAPI_MakeBox(2, 3, 4).Shape(), folder.File("box.brep").c_str());
    expectEveryCutToBeDamaged(folder, contentOfFile(folder.File("box.brep")));
}

TEST(BrepFileTest, ACutBinaryFileIsDamaged) {
    const TemporaryFolder folder;
    BinTools::Write(BRepPrimAPI_MakeBox(2, 3, 4).Shape(), folder.File("box.bin").c_str());
    expectEveryCutToBeDamaged(folder, contentOfFile(folder.File("box.bin")));
}

TEST(BrepFileTest, OtherTextIsDamaged) {
    const TemporaryFolder folder;
    EXPECT_THROW(readCadFile(folder.Write("x.brep", "not a shape\n"), FileFormat::Brep, {}, {}),
                 ReadError);
}

}  // namespace
}  // namespace kesview
