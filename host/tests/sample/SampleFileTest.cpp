#include "support/FileContent.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <BRepBndLib.hxx>
#include <BRepGProp.hxx>
#include <Bnd_Box.hxx>
#include <GProp_GProps.hxx>
#include <IFSelect_ReturnStatus.hxx>
#include <Interface_EntityIterator.hxx>
#include <Interface_Static.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Message_PrinterOStream.hxx>
#include <Quantity_ColorRGBA.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <STEPControl_Reader.hxx>
#include <StepData_StepModel.hxx>
#include <StepVisual_DraughtingCallout.hxx>
#include <TCollection_HAsciiString.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDataStd_Name.hxx>
#include <TDocStd_Document.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <XCAFApp_Application.hxx>
#include <XCAFDimTolObjects_DatumObject.hxx>
#include <XCAFDimTolObjects_DimensionObject.hxx>
#include <XCAFDimTolObjects_GeomToleranceObject.hxx>
#include <XCAFDoc_ClippingPlaneTool.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_Datum.hxx>
#include <XCAFDoc_DimTolTool.hxx>
#include <XCAFDoc_Dimension.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_GeomTolerance.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <XCAFDoc_View.hxx>
#include <XCAFDoc_ViewTool.hxx>
#include <XCAFView_Object.hxx>
#include <cmath>
#include <cstdlib>
#include <gp_Pln.hxx>
#include <map>
#include <string>
#include <vector>

namespace kesview {
namespace {

using support::contentOfFile;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

TEST(SampleFileTest, TheProgramWritesTheFileThatIsKept) {
    const support::TemporaryFolder folder;
    const std::string path = folder.File("bracket.step");
    const std::string command = std::string("'") + KESVIEW_SAMPLE_PROGRAM + "' '" + path + "'";
    ASSERT_EQ(std::system(command.c_str()), 0);
    const std::string made = contentOfFile(path);
    EXPECT_FALSE(made.empty());
    EXPECT_TRUE(made == contentOfFile(KESVIEW_SAMPLE_FILE))
        << "write the file again if that is meant";
}

std::string nameOf(const TDF_Label& label) {
    Handle(TDataStd_Name) name;
    if (!label.FindAttribute(TDataStd_Name::GetID(), name))
        return "";
    std::string text(std::size_t(name->Get().LengthOfCString()), '\0');
    Standard_PCharacter first = text.data();
    name->Get().ToUTF8CString(first);
    return text;
}

/// The kept file, read by Open CASCADE once for all tests.
class SampleFactsTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        Message::DefaultMessenger()->RemovePrinters(STANDARD_TYPE(Message_PrinterOStream));
        XCAFApp_Application::GetApplication()->NewDocument("BinXCAF", document());
        STEPCAFControl_Reader reader;
        Interface_Static::SetIVal("read.stepcaf.subshapes.name", 1);
        reader.SetNameMode(true);
        reader.SetColorMode(true);
        reader.SetGDTMode(true);
        reader.SetViewMode(true);
        ASSERT_EQ(reader.ReadFile(KESVIEW_SAMPLE_FILE), IFSelect_RetDone);
        ASSERT_TRUE(reader.Transfer(document()));
        drawings().clear();
        for (Interface_EntityIterator at = reader.Reader().StepModel()->Entities(); at.More();
             at.Next()) {
            const auto callout = Handle(StepVisual_DraughtingCallout)::DownCast(at.Value());
            if (!callout.IsNull())
                drawings().emplace_back(callout->Name()->ToCString());
        }
    }
    static void TearDownTestSuite() { document().Nullify(); }

    static Handle(TDocStd_Document) & document() {
        static Handle(TDocStd_Document) read;
        return read;
    }
    /// The names of all that is drawn.
    static std::vector<std::string>& drawings() {
        static std::vector<std::string> read;
        return read;
    }
    static Handle(XCAFDoc_ShapeTool) shapes() {
        return XCAFDoc_DocumentTool::ShapeTool(document()->Main());
    }
    static Handle(XCAFDoc_DimTolTool) annotations() {
        return XCAFDoc_DocumentTool::DimTolTool(document()->Main());
    }
    static TDF_Label top() {
        TDF_LabelSequence labels;
        shapes()->GetFreeShapes(labels);
        EXPECT_EQ(labels.Length(), 1);
        return labels.Value(1);
    }
    static std::vector<TDF_Label> componentsOf(const TDF_Label& assembly) {
        TDF_LabelSequence labels;
        XCAFDoc_ShapeTool::GetComponents(assembly, labels);
        return {labels.begin(), labels.end()};
    }
    static TDF_Label productOf(const TDF_Label& component) {
        TDF_Label product;
        XCAFDoc_ShapeTool::GetReferredShape(component, product);
        return product;
    }
    static TDF_Label productNamed(const std::string& name) {
        TDF_LabelSequence labels;
        shapes()->GetShapes(labels);
        for (const TDF_Label& label : labels) {
            if (nameOf(label) == name)
                return label;
        }
        ADD_FAILURE() << name;
        return {};
    }
    static TopoDS_Shape shapeOf(const std::string& product) {
        return XCAFDoc_ShapeTool::GetShape(productNamed(product));
    }
};

int count(const TopoDS_Shape& shape, TopAbs_ShapeEnum kind) {
    TopTools_IndexedMapOfShape map;
    TopExp::MapShapes(shape, kind, map);
    return map.Extent();
}

double volumeOf(const TopoDS_Shape& shape) {
    GProp_GProps properties;
    BRepGProp::VolumeProperties(shape, properties);
    return properties.Mass();
}

TEST_F(SampleFactsTest, AnAssemblyHoldsABracketAndTwiceASetOfABoltAndAWasher) {
    EXPECT_EQ(nameOf(top()), "Bracket assembly");
    const std::vector<TDF_Label> parts = componentsOf(top());
    ASSERT_EQ(parts.size(), std::size_t(3));
    EXPECT_EQ(nameOf(parts[0]), "Bracket");
    EXPECT_EQ(nameOf(parts[1]), "Fastener set 1");
    EXPECT_EQ(nameOf(parts[2]), "Fastener set 2");
    EXPECT_EQ(nameOf(productOf(parts[1])), "Fastener set");
    EXPECT_EQ(productOf(parts[1]), productOf(parts[2]));

    const std::vector<TDF_Label> set = componentsOf(productOf(parts[1]));
    ASSERT_EQ(set.size(), std::size_t(2));
    EXPECT_EQ(nameOf(set[0]), "Bolt");
    EXPECT_EQ(nameOf(productOf(set[0])), "Bolt M6x20");
    EXPECT_EQ(nameOf(set[1]), "Washer");
    EXPECT_EQ(nameOf(productOf(set[1])), "Washer 6");
}

TEST_F(SampleFactsTest, BodiesFacesAndEdgesAreThoseOfTheDrawing) {
    EXPECT_EQ(count(shapeOf("Bracket"), TopAbs_FACE), 14);
    EXPECT_EQ(count(shapeOf("Bolt M6x20"), TopAbs_FACE), 11);
    EXPECT_EQ(count(shapeOf("Washer 6"), TopAbs_FACE), 4);
    const TopoDS_Shape all = XCAFDoc_ShapeTool::GetShape(top());
    EXPECT_EQ(count(all, TopAbs_SOLID), 5);
    EXPECT_EQ(count(all, TopAbs_FACE), 44);
    EXPECT_EQ(count(all, TopAbs_EDGE), 94);
}

TEST_F(SampleFactsTest, VolumesAreThoseOfTheDrawing) {
    const double angle = (120 * 10 + 10 * 50) * 60;
    const double fillet = (1 - M_PI / 4) * 8 * 8 * 60;
    const double corners = 2 * (1 - M_PI / 4) * 10 * 10 * 10;
    const double holes = 2 * M_PI * 3.3 * 3.3 * 10 + M_PI * 10 * 10 * 10;
    EXPECT_NEAR(volumeOf(shapeOf("Bracket")), angle + fillet - corners - holes, 1e-3);

    const double head = std::sqrt(3.0) / 2 * 10 * 10 * 4;
    const double shank = M_PI * 3 * 3 * 19 + M_PI / 3 * (9 + 6 + 4) * 1;
    EXPECT_NEAR(volumeOf(shapeOf("Bolt M6x20")), head + shank, 1e-3);
    EXPECT_NEAR(volumeOf(shapeOf("Washer 6")), M_PI * (6.25 * 6.25 - 3.2 * 3.2) * 1.6, 1e-3);
}

TEST_F(SampleFactsTest, TheBoxIsInMillimetres) {
    Bnd_Box box;
    BRepBndLib::AddOptimal(XCAFDoc_ShapeTool::GetShape(top()), box, Standard_False);
    const gp_Pnt low = box.CornerMin();
    const gp_Pnt high = box.CornerMax();
    EXPECT_LT(low.Distance({0, 0, -8.4}), 1e-4);
    EXPECT_LT(high.Distance({120, 60, 60}), 1e-4);
    EXPECT_NE(contentOfFile(KESVIEW_SAMPLE_FILE).find("SI_UNIT(.MILLI.,.METRE.)"),
              std::string::npos);
}

TEST_F(SampleFactsTest, SevenFacesOfTheBracketHaveNames) {
    TDF_LabelSequence labels;
    XCAFDoc_ShapeTool::GetSubShapes(productNamed("Bracket"), labels);
    std::vector<std::string> names;
    for (const TDF_Label& label : labels) {
        if (!nameOf(label).empty())
            names.push_back(nameOf(label));
    }
    EXPECT_THAT(names, UnorderedElementsAre("Bottom", "Back", "Front of the upright",
                                            "Top of the upright", "Hole 1", "Hole 2", "Bore"));
}

/// Red, green, blue as on a screen and opacity in percent.
std::array<int, 4> screenColor(const Quantity_ColorRGBA& color) {
    double red = 0;
    double green = 0;
    double blue = 0;
    color.GetRGB().Values(red, green, blue, Quantity_TOC_sRGB);
    return {int(std::lround(255 * red)), int(std::lround(255 * green)),
            int(std::lround(255 * blue)), int(std::lround(100 * double(color.Alpha())))};
}

TEST_F(SampleFactsTest, PartsAndTwoFacesAreColoredOneOfThemTranslucent) {
    const Handle(XCAFDoc_ColorTool) colors = XCAFDoc_DocumentTool::ColorTool(document()->Main());
    const auto colorOf = [&](const TopoDS_Shape& shape) {
        Quantity_ColorRGBA color;
        EXPECT_TRUE(colors->GetColor(shape, XCAFDoc_ColorSurf, color) ||
                    colors->GetColor(shape, XCAFDoc_ColorGen, color));
        return screenColor(color);
    };
    EXPECT_THAT(colorOf(shapeOf("Bracket")), ElementsAre(96, 125, 166, 100));
    EXPECT_THAT(colorOf(shapeOf("Bolt M6x20")), ElementsAre(185, 187, 192, 100));
    EXPECT_THAT(colorOf(shapeOf("Washer 6")), ElementsAre(212, 175, 90, 100));

    TDF_LabelSequence labels;
    XCAFDoc_ShapeTool::GetSubShapes(productNamed("Bracket"), labels);
    std::map<std::string, std::array<int, 4>> faces;
    for (const TDF_Label& label : labels) {
        Quantity_ColorRGBA color;
        if (colors->GetColor(label, XCAFDoc_ColorSurf, color))
            faces[nameOf(label)] = screenColor(color);
    }
    const std::map<std::string, std::array<int, 4>> expected = {
        {"Bore", {235, 140, 40, 100}}, {"Front of the upright", {60, 180, 170, 40}}};
    EXPECT_EQ(faces, expected);
}

TEST_F(SampleFactsTest, AHeightAndADiameterHaveValuesLimitsAndDrawings) {
    TDF_LabelSequence labels;
    annotations()->GetDimensionLabels(labels);
    ASSERT_EQ(labels.Length(), 3);  // the note counts as one
    std::map<int, Handle(XCAFDimTolObjects_DimensionObject)> dimensions;
    for (const TDF_Label& label : labels) {
        Handle(XCAFDoc_Dimension) dimension;
        ASSERT_TRUE(label.FindAttribute(XCAFDoc_Dimension::GetID(), dimension));
        dimensions[dimension->GetObject()->GetType()] = dimension->GetObject();
        EXPECT_FALSE(dimension->GetObject()->GetPresentation().IsNull());
    }
    const auto height = dimensions[XCAFDimTolObjects_DimensionType_Location_LinearDistance];
    ASSERT_FALSE(height.IsNull());
    EXPECT_DOUBLE_EQ(height->GetValue(), 60);
    EXPECT_DOUBLE_EQ(height->GetUpperTolValue(), 0.2);
    EXPECT_DOUBLE_EQ(std::abs(height->GetLowerTolValue()), 0.2);
    const auto diameter = dimensions[XCAFDimTolObjects_DimensionType_Size_Diameter];
    ASSERT_FALSE(diameter.IsNull());
    EXPECT_DOUBLE_EQ(diameter->GetValue(), 20);
    EXPECT_DOUBLE_EQ(diameter->GetUpperTolValue(), 0.05);
    EXPECT_DOUBLE_EQ(std::abs(diameter->GetLowerTolValue()), 0);
}

TEST_F(SampleFactsTest, APositionRefersToTheDatumsAAndB) {
    TDF_LabelSequence labels;
    annotations()->GetGeomToleranceLabels(labels);
    ASSERT_EQ(labels.Length(), 1);
    Handle(XCAFDoc_GeomTolerance) tolerance;
    ASSERT_TRUE(labels.Value(1).FindAttribute(XCAFDoc_GeomTolerance::GetID(), tolerance));
    const Handle(XCAFDimTolObjects_GeomToleranceObject) object = tolerance->GetObject();
    EXPECT_EQ(object->GetType(), XCAFDimTolObjects_GeomToleranceType_Position);
    EXPECT_EQ(object->GetTypeOfValue(), XCAFDimTolObjects_GeomToleranceTypeValue_Diameter);
    EXPECT_EQ(object->GetMaterialRequirementModifier(),
              XCAFDimTolObjects_GeomToleranceMatReqModif_M);
    EXPECT_DOUBLE_EQ(object->GetValue(), 0.2);
    EXPECT_FALSE(object->GetPresentation().IsNull());

    TDF_LabelSequence datums;
    annotations()->GetDatumWithObjectOfTolerLabels(labels.Value(1), datums);
    std::vector<std::string> letters;
    for (const TDF_Label& label : datums) {
        Handle(XCAFDoc_Datum) datum;
        ASSERT_TRUE(label.FindAttribute(XCAFDoc_Datum::GetID(), datum));
        letters.emplace_back(datum->GetObject()->GetName()->ToCString());
    }
    EXPECT_THAT(letters, ElementsAre("A", "B"));
}

TEST_F(SampleFactsTest, SixAnnotationsAreDrawnANoteAmongThem) {
    EXPECT_THAT(drawings(), UnorderedElementsAre("linear dimension", "diameter dimension",
                                                 "position", "datum A", "datum B", "note"));
}

TEST_F(SampleFactsTest, TwoViewsAreSavedOneOfThemCut) {
    TDF_LabelSequence labels;
    const Handle(XCAFDoc_ViewTool) tool = XCAFDoc_DocumentTool::ViewTool(document()->Main());
    tool->GetViewLabels(labels);
    ASSERT_EQ(labels.Length(), 2);
    std::map<std::string, Handle(XCAFView_Object)> views;
    std::map<std::string, int> members;
    std::map<std::string, TDF_LabelSequence> planes;
    for (const TDF_Label& label : labels) {
        Handle(XCAFDoc_View) view;
        ASSERT_TRUE(label.FindAttribute(XCAFDoc_View::GetID(), view));
        const std::string name = view->GetObject()->Name()->ToCString();
        views[name] = view->GetObject();
        TDF_LabelSequence shown;
        tool->GetRefGDTLabel(label, shown);
        members[name] = shown.Length();
        tool->GetRefClippingPlaneLabel(label, planes[name]);
    }
    ASSERT_EQ(views.count("Bore") + views.count("Section A-A"), std::size_t(2));
    EXPECT_EQ(members["Bore"], 2);
    EXPECT_EQ(planes["Bore"].Length(), 0);
    EXPECT_DOUBLE_EQ(views["Bore"]->WindowHorizontalSize(), 240);
    EXPECT_DOUBLE_EQ(views["Bore"]->WindowVerticalSize(), 150);
    EXPECT_EQ(members["Section A-A"], 4);
    EXPECT_TRUE(views["Section A-A"]->ViewDirection().IsEqual(gp::DY(), 1e-9));

    ASSERT_EQ(planes["Section A-A"].Length(), 1);
    gp_Pln plane;
    Handle(TCollection_HAsciiString) name;
    Standard_Boolean capped = Standard_False;
    ASSERT_TRUE(XCAFDoc_DocumentTool::ClippingPlaneTool(document()->Main())
                    ->GetClippingPlane(planes["Section A-A"].Value(1), plane, name, capped));
    EXPECT_LT(plane.Distance(gp_Pnt(0, 30, 0)), 1e-9);
    EXPECT_TRUE(plane.Axis().Direction().IsEqual(gp::DY(), 1e-9));  // what lies behind is kept
}

}  // namespace
}  // namespace kesview
