#include "occ/Measures.h"
#include "reading/occ/ReadCadFile.h"
#include "support/FileContent.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <BRepPrimAPI_MakeBox.hxx>
#include <IGESCAFControl_Writer.hxx>
#include <IGESControl_Controller.hxx>
#include <Interface_Static.hxx>
#include <Quantity_Color.hxx>
#include <TDocStd_Document.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <cmath>

namespace kesview {
namespace {

using support::contentOfFile;
using support::TemporaryFolder;

/// A red box, written as a solid.
std::string writeBox(const TemporaryFolder& folder, const char* unit) {
    IGESControl_Controller::Init();
    Handle(TDocStd_Document) source = new TDocStd_Document("BinXCAF");
    const TDF_Label label = XCAFDoc_DocumentTool::ShapeTool(source->Main())
                                ->AddShape(BRepPrimAPI_MakeBox(25.4, 50.8, 76.2).Shape(), false);
    XCAFDoc_DocumentTool::ColorTool(source->Main())
        ->SetColor(label, Quantity_Color(1, 0, 0, Quantity_TOC_sRGB), XCAFDoc_ColorSurf);
    Interface_Static::SetCVal("write.iges.unit", unit);
    Interface_Static::SetIVal("write.iges.brep.mode", 1);
    IGESCAFControl_Writer writer;
    writer.Perform(source, folder.File("box.igs").c_str());
    return folder.File("box.igs");
}

TEST(IgesFileTest, ReadsSolidsWithColourAndUnit) {
    const TemporaryFolder folder;
    const Document document = readCadFile(writeBox(folder, "MM"), FileFormat::Iges, {}, {});
    EXPECT_EQ(document.format, "IGES");
    EXPECT_EQ(document.unit, "millimetre");
    EXPECT_EQ(document.millimetresPerUnit, 1);
    EXPECT_FALSE(document.schema.empty());
    EXPECT_EQ(countsOf(document).faces, 6U);
    EXPECT_EQ(distinctColors(document), 1U);
    EXPECT_NEAR(extentOf(document).Diagonal(), 25.4 * std::sqrt(14.0), 1e-3);
    EXPECT_TRUE(document.findings.empty());
}

TEST(IgesFileTest, LengthsInInchesBecomeMillimetres) {
    const TemporaryFolder folder;
    const Document document = readCadFile(writeBox(folder, "INCH"), FileFormat::Iges, {}, {});
    EXPECT_EQ(document.unit, "inch");
    EXPECT_DOUBLE_EQ(document.millimetresPerUnit, 25.4);
    EXPECT_NEAR(extentOf(document).Diagonal(), 25.4 * std::sqrt(14.0), 1e-3);
}

TEST(IgesFileTest, ACutFileIsTold) {
    const TemporaryFolder folder;
    const std::string content = contentOfFile(writeBox(folder, "MM"));
    const Document document = readCadFile(
        folder.Write("cut.igs", content.substr(0, content.size() - 300)), FileFormat::Iges, {}, {});
    EXPECT_EQ(findingCount(document, "file.truncated"), 1U);
}

TEST(IgesFileTest, OtherTextIsDamagedOrWithoutShape) {
    const TemporaryFolder folder;
    try {
        const Document document =
            readCadFile(folder.Write("x.igs", "not a model\n"), FileFormat::Iges, {}, {});
        EXPECT_EQ(findingCount(document, "shape.none"), 1U);
    } catch (const ReadError& error) {
        EXPECT_EQ(error.Failure(), ReadFailure::Damaged);
    }
}

}  // namespace
}  // namespace kesview
