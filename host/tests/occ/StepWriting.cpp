/// @file
/// See StepWriting.h.

#include "occ/StepWriting.h"

#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <Interface_Static.hxx>
#include <Quantity_ColorRGBA.hxx>
#include <STEPCAFControl_Writer.hxx>
#include <STEPControl_Controller.hxx>
#include <TDataStd_Name.hxx>
#include <TopExp_Explorer.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_LayerTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <gp_Ax1.hxx>
#include <gp_Trsf.hxx>

namespace kesview {

namespace {

void name(const TDF_Label& label, const char* text) {
    TDataStd_Name::Set(label, TCollection_ExtendedString(text, true));
}

Quantity_ColorRGBA color(double red, double green, double blue, float alpha = 1) {
    return {Quantity_Color(red, green, blue, Quantity_TOC_sRGB), alpha};
}

TopLoc_Location secondBolt() {
    gp_Trsf turn;
    turn.SetRotation(gp::OY(), 1.5707963267948966);
    gp_Trsf shift;
    shift.SetTranslation(gp_Vec(100, 0, 0));
    return {shift * turn};
}

}  // namespace

void writeStep(const Handle(TDocStd_Document) & source, const std::string& path,
               const std::string& unit, const std::string& schema) {
    STEPControl_Controller::Init();
    Interface_Static::SetCVal("write.step.unit", unit.c_str());
    Interface_Static::SetCVal("write.step.schema", schema.c_str());
    STEPCAFControl_Writer writer;
    writer.SetLayerMode(true);
    writer.Transfer(source);
    writer.Write(path.c_str());
}

std::string writeStepWithParts(const Handle(TDocStd_Document) & source,
                               const support::TemporaryFolder& folder) {
    STEPControl_Controller::Init();
    Interface_Static::SetCVal("write.step.unit", "MM");
    Interface_Static::SetCVal("write.step.schema", "AP214IS");
    STEPCAFControl_Writer writer;
    writer.Transfer(source, STEPControl_AsIs, "part_");
    const std::string path = folder.File("machine.stp");
    writer.Write(path.c_str());
    return path;
}

Handle(TDocStd_Document) machine() {
    XCAFDoc_ShapeTool::SetAutoNaming(false);
    Handle(TDocStd_Document) source = new TDocStd_Document("BinXCAF");
    const auto shapes = XCAFDoc_DocumentTool::ShapeTool(source->Main());
    const auto colors = XCAFDoc_DocumentTool::ColorTool(source->Main());

    const TDF_Label bolt = shapes->AddShape(BRepPrimAPI_MakeCylinder(5, 20).Shape(), false);
    name(bolt, "Bolzen \xC3\xA4");
    colors->SetColor(bolt, color(0.5, 0.5, 0.5), XCAFDoc_ColorSurf);

    const TopoDS_Shape box = BRepPrimAPI_MakeBox(10, 20, 30).Shape();
    const TDF_Label plate = shapes->AddShape(box, false);
    name(plate, "plate");
    colors->SetColor(plate, color(0, 0, 1), XCAFDoc_ColorSurf);
    XCAFDoc_DocumentTool::LayerTool(source->Main())->SetLayer(plate, "plates");
    const TDF_Label face = shapes->AddSubShape(plate, TopExp_Explorer(box, TopAbs_FACE).Current());
    colors->SetColor(face, color(0, 1, 0, 0.5F), XCAFDoc_ColorSurf);

    const TDF_Label assembly = shapes->NewShape();
    name(assembly, "machine");
    name(shapes->AddComponent(assembly, bolt, TopLoc_Location()), "bolt:1");
    const TDF_Label second = shapes->AddComponent(assembly, bolt, secondBolt());
    name(second, "bolt:2");
    colors->SetColor(second, color(1, 0, 0), XCAFDoc_ColorSurf);
    name(shapes->AddComponent(assembly, plate, TopLoc_Location()), "plate:1");
    shapes->UpdateAssemblies();
    return source;
}

}  // namespace kesview
