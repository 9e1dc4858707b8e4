#include "occ/Measures.h"
#include "occ/StepWriting.h"
#include "reading/occ/ReadCadFile.h"
#include "support/FileContent.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <BRepPrimAPI_MakeBox.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <algorithm>
#include <filesystem>
#include <stdexcept>

namespace kesview {
namespace {

using support::contentOfFile;
using support::TemporaryFolder;

Document readMachine(const ReadOptions& options = {}) {
    const TemporaryFolder folder;
    writeStep(machine(), folder.File("machine.stp"));
    return readCadFile(folder.File("machine.stp"), FileFormat::Step, options, {});
}

const Product& product(const Document& document, const std::string& name) {
    const auto found =
        std::find_if(document.products.begin(), document.products.end(),
                     [&name](const Product& candidate) { return candidate.name == name; });
    if (found == document.products.end()) {
        throw std::runtime_error("no product " + name);
    }
    return *found;
}

TEST(StepFileTest, AnAssemblyIsProductsAndTheirUses) {
    const Document document = readMachine();
    ASSERT_EQ(document.roots.size(), 1U);
    EXPECT_EQ(document.roots[0].name, "machine");
    ASSERT_EQ(document.products.size(), 3U);
    const Product& assembly = document.products[document.roots[0].product];
    ASSERT_EQ(assembly.components.size(), 3U);
    EXPECT_TRUE(assembly.bodies.empty());
    EXPECT_EQ(assembly.components[0].name, "bolt:1");
    EXPECT_EQ(assembly.components[1].name, "bolt:2");
    EXPECT_EQ(assembly.components[2].name, "plate:1");
    EXPECT_EQ(assembly.components[0].product, assembly.components[1].product);
    EXPECT_EQ(document.products[assembly.components[0].product].name, "Bolzen \xC3\xA4");
}

TEST(StepFileTest, UsesStandWhereTheFilePutsThem) {
    const Document document = readMachine();
    const std::vector<Component>& uses = product(document, "machine").components;
    EXPECT_EQ(uses[0].parentFromChild, identityMatrix);
    // a right turn about y takes z to x and x to -z
    const Matrix expected = {0, 0, -1, 0, 0, 1, 0, 0, 1, 0, 0, 0, 100, 0, 0, 1};
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_NEAR(uses[1].parentFromChild[i], expected[i], 1e-12) << i;
    }
}

TEST(StepFileTest, ColoursStandWhereTheFilePutsThem) {
    const Document document = readMachine();
    EXPECT_EQ(product(document, "Bolzen \xC3\xA4").color, (Color{128, 128, 128, 255}));
    const Product& plate = product(document, "plate");
    EXPECT_EQ(plate.color, (Color{0, 0, 255, 255}));
    int green = 0;
    for (const Face& face : plate.bodies.at(0).faces) {
        green += face.color == Color{0, 255, 0, 128} || face.color == Color{0, 255, 0, 127} ? 1 : 0;
    }
    EXPECT_EQ(green, 1);
    const std::vector<Component>& uses = product(document, "machine").components;
    EXPECT_FALSE(uses[0].color.has_value());
    EXPECT_EQ(uses[1].color, (Color{255, 0, 0, 255}));
}

TEST(StepFileTest, LayersAreKept) {
    EXPECT_EQ(product(readMachine(), "plate").layers, std::vector<std::string>{"plates"});
}

TEST(StepFileTest, ShapesAreMeshedOnceHoweverOftenTheyAreUsed) {
    const Document document = readMachine();
    EXPECT_EQ(product(document, "Bolzen \xC3\xA4").bodies.size(), 1U);
    const Counts counts = countsOf(document);
    EXPECT_EQ(counts.leaves, 3U);
    EXPECT_EQ(counts.solids, 3U);
    EXPECT_EQ(counts.faces, 2U * 3 + 6);
    EXPECT_EQ(counts.edges, 2U * 3 + 12);
    EXPECT_NEAR(volumeOf(product(document, "plate").bodies[0]), 6000, 1e-2);
}

TEST(StepFileTest, HeaderIsRead) {
    const Document document = readMachine();
    EXPECT_EQ(document.format, "STEP");
    EXPECT_EQ(document.schema, "AP242 edition 1");
    EXPECT_EQ(document.unit, "millimetre");
    EXPECT_THAT(document.originatingSystem, testing::HasSubstr("Open CASCADE"));
    EXPECT_THAT(document.timeStamp, testing::MatchesRegex("20..-..-..T.*"));
}

TEST(StepFileTest, LengthsInInchesBecomeMillimetres) {
    const TemporaryFolder folder;
    writeStep(machine(), folder.File("machine.stp"), "INCH", "AP214IS");
    const Document document = readCadFile(folder.File("machine.stp"), FileFormat::Step, {}, {});
    EXPECT_EQ(document.unit, "inch");
    EXPECT_NEAR(document.millimetresPerUnit, 25.4, 1e-9);
    EXPECT_EQ(document.schema, "AP214");
    EXPECT_NEAR(volumeOf(product(document, "plate").bodies[0]), 6000, 1e-2);
}

TEST(StepFileTest, AFreeShapeIsARootOfItsOwn) {
    const TemporaryFolder folder;
    Handle(TDocStd_Document) source = new TDocStd_Document("BinXCAF");
    const auto shapes = XCAFDoc_DocumentTool::ShapeTool(source->Main());
    shapes->AddShape(BRepPrimAPI_MakeBox(1, 2, 3).Shape(), false);
    shapes->AddShape(BRepPrimAPI_MakeBox(4, 5, 6).Shape(), false);
    writeStep(source, folder.File("two.stp"));
    const Document document = readCadFile(folder.File("two.stp"), FileFormat::Step, {}, {});
    EXPECT_EQ(document.roots.size(), 2U);
    EXPECT_EQ(countsOf(document).solids, 2U);
}

TEST(StepFileTest, InvisibleShapesAreHidden) {
    const TemporaryFolder folder;
    const Handle(TDocStd_Document) source = machine();
    const auto shapes = XCAFDoc_DocumentTool::ShapeTool(source->Main());
    TDF_LabelSequence labels;
    shapes->GetShapes(labels);
    for (const TDF_Label& label : labels) {
        if (XCAFDoc_ShapeTool::IsSimpleShape(label)) {
            XCAFDoc_DocumentTool::ColorTool(source->Main())->SetVisibility(label, false);
        }
    }
    writeStep(source, folder.File("hidden.stp"));
    const Document document = readCadFile(folder.File("hidden.stp"), FileFormat::Step, {}, {});
    for (const Component& use : product(document, "machine").components) {
        EXPECT_TRUE(use.hidden) << use.name;
    }
}

TEST(StepFileTest, WithoutAUnitNumbersAreTakenAsMillimetres) {
    const TemporaryFolder folder;
    writeStep(machine(), folder.File("machine.stp"));
    std::string content = contentOfFile(folder.File("machine.stp"));
    const std::string unit = "SI_UNIT(.MILLI.,.METRE.)";
    for (auto at = content.find(unit); at != std::string::npos; at = content.find(unit)) {
        content.replace(at, unit.size(), "SI_UNIT($,$)");
    }
    const Document document =
        readCadFile(folder.Write("none.stp", content), FileFormat::Step, {}, {});
    EXPECT_EQ(document.unit, "");
    EXPECT_EQ(findingCount(document, "unit.missing"), 1U);
    EXPECT_NEAR(volumeOf(product(document, "plate").bodies[0]), 6000, 1e-2);
}

TEST(StepFileTest, AContextWithoutAnyLengthUnitIsAMissingUnitToo) {
    const TemporaryFolder folder;
    writeStep(machine(), folder.File("machine.stp"));
    std::string content = contentOfFile(folder.File("machine.stp"));
    const std::string units = "GLOBAL_UNIT_ASSIGNED_CONTEXT";
    for (auto at = content.find(units); at != std::string::npos; at = content.find(units, at + 1)) {
        const auto first = content.find('#', at);  // the length comes first
        content.erase(first, content.find(',', first) + 1 - first);
    }
    const Document document =
        readCadFile(folder.Write("none.stp", content), FileFormat::Step, {}, {});
    EXPECT_EQ(findingCount(document, "unit.missing"), 1U);
    EXPECT_NEAR(volumeOf(product(document, "plate").bodies[0]), 6000, 1e-2);
}

TEST(StepFileTest, PartsInFilesBesideItAreReadAndTheirLackIsTold) {
    const TemporaryFolder folder;
    const std::string path = writeStepWithParts(machine(), folder);
    EXPECT_EQ(countsOf(readCadFile(path, FileFormat::Step, {}, {})).solids, 3U);
    std::filesystem::remove(folder.File("part_plate.stp"));
    const Document document = readCadFile(path, FileFormat::Step, {}, {});
    EXPECT_EQ(countsOf(document).solids, 2U);
    EXPECT_EQ(findingCount(document, "reference.unresolved"), 1U);
}

TEST(StepFileTest, ASolidThatLostAFaceIsTold) {
    const TemporaryFolder folder;
    writeStep(machine(), folder.File("machine.stp"));
    std::string content = contentOfFile(folder.File("machine.stp"));
    const auto face = content.find("ADVANCED_FACE");
    const auto start = content.rfind('#', face);
    content.erase(start, content.find(';', face) + 1 - start);
    const Document document =
        readCadFile(folder.Write("open.stp", content), FileFormat::Step, {}, {});
    EXPECT_EQ(findingCount(document, "shape.no-solid"), 1U);
    EXPECT_GT(findingCount(document, "record.damaged"), 0U);
}

TEST(StepFileTest, TriangulatedShapesAreToldAsNotRead) {
    const TemporaryFolder folder;
    writeStep(machine(), folder.File("machine.stp"));
    std::string content = contentOfFile(folder.File("machine.stp"));
    content.insert(content.rfind("ENDSEC;"),
                   "#99001=COORDINATES_LIST('',3,((0.,0.,0.),(1.,0.,0.),(0.,1.,0.)));\n"
                   "#99002=TRIANGULATED_FACE('',#99001,3,((0.,0.,1.)),$,(),((1,2,3)));\n"
                   "#99003=TESSELLATED_SOLID('',(#99002),$);\n");
    const Document document =
        readCadFile(folder.Write("tess.stp", content), FileFormat::Step, {}, {});
    EXPECT_EQ(findingCount(document, "shape.tessellated"), 2U);
}

TEST(StepFileTest, ACutFileIsDamaged) {
    const TemporaryFolder folder;
    writeStep(machine(), folder.File("machine.stp"));
    const std::string content = contentOfFile(folder.File("machine.stp"));
    const std::string cut = folder.Write("cut.stp", content.substr(0, content.size() / 2));
    EXPECT_THROW(readCadFile(cut, FileFormat::Step, {}, {}), ReadError);
}

TEST(StepFileTest, AFileWithoutShapesSaysSo) {
    const TemporaryFolder folder;
    const std::string path = folder.Write(
        "empty.stp",
        "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\nFILE_NAME('x','',(''),(''),'','',"
        "'');\nFILE_SCHEMA(('AUTOMOTIVE_DESIGN'));\nENDSEC;\nDATA;\nENDSEC;\nEND-ISO-10303-21;\n");
    const Document document = readCadFile(path, FileFormat::Step, {}, {});
    EXPECT_TRUE(document.roots.empty());
    EXPECT_EQ(findingCount(document, "shape.none"), 1U);
}

}  // namespace
}  // namespace kesview
