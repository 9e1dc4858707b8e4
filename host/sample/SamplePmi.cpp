#include "sample/SamplePmi.h"

#include "sample/SampleDrawings.h"

#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRep_Builder.hxx>
#include <TCollection_HAsciiString.hxx>
#include <TDF_LabelSequence.hxx>
#include <TopoDS_Compound.hxx>
#include <XCAFDimTolObjects_DatumObject.hxx>
#include <XCAFDimTolObjects_DimensionObject.hxx>
#include <XCAFDimTolObjects_GeomToleranceObject.hxx>
#include <XCAFDoc_Datum.hxx>
#include <XCAFDoc_DimTolTool.hxx>
#include <XCAFDoc_Dimension.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_GeomTolerance.hxx>

namespace kesview {
namespace {

Handle(TCollection_HAsciiString) text(const char* letters) {
    return new TCollection_HAsciiString(letters);
}

TopoDS_Compound edgesOf(const PlaneDrawing& drawing) {
    BRep_Builder builder;
    TopoDS_Compound compound;
    builder.MakeCompound(compound);
    for (const std::vector<gp_Pnt>& line : drawing.Lines()) {
        for (std::size_t i = 1; i < line.size(); ++i)
            builder.Add(compound, BRepBuilderAPI_MakeEdge(line[i - 1], line[i]).Edge());
    }
    return compound;
}

template <class Object>
void setDrawing(Object& object, const PlaneDrawing& drawing, const char* name) {
    object->SetPlane(drawing.plane);
    object->SetPointTextAttach(drawing.plane.Location());
    object->SetPresentation(edgesOf(drawing), text(name));
}

/// Adds to the annotations of one document.
class Annotator {
public:
    explicit Annotator(const SampleAssembly& sample)
        : _sample(sample), _tool(XCAFDoc_DocumentTool::DimTolTool(sample.document->Main())) {}

    void AddHeight() {
        const TDF_Label label = _tool->AddDimension();
        _tool->SetDimension(faces("Bottom"), faces("Top of the upright"), label);
        Handle(XCAFDimTolObjects_DimensionObject) object = new XCAFDimTolObjects_DimensionObject;
        object->SetSemanticName(text("Height"));
        object->SetType(XCAFDimTolObjects_DimensionType_Location_LinearDistance);
        object->SetValue(60);
        object->SetUpperTolValue(0.2);
        object->SetLowerTolValue(0.2);
        setDrawing(object, drawHeight(), SampleDrawing::height);
        set(label, object);
    }

    void AddDiameter() {
        const TDF_Label label = _tool->AddDimension();
        _tool->SetDimension(faces("Bore"), {}, label);
        Handle(XCAFDimTolObjects_DimensionObject) object = new XCAFDimTolObjects_DimensionObject;
        object->SetSemanticName(text("Bore diameter"));
        object->SetType(XCAFDimTolObjects_DimensionType_Size_Diameter);
        object->SetValue(20);
        object->SetUpperTolValue(0.05);
        object->SetLowerTolValue(0);
        setDrawing(object, drawDiameter(), SampleDrawing::diameter);
        set(label, object);
    }

    void AddPosition() {
        const TDF_Label label = _tool->AddGeomTolerance();
        _tool->SetGeomTolerance(faces("Bore"), label);
        Handle(XCAFDimTolObjects_GeomToleranceObject) object =
            new XCAFDimTolObjects_GeomToleranceObject;
        object->SetSemanticName(text("Bore position"));
        object->SetType(XCAFDimTolObjects_GeomToleranceType_Position);
        object->SetTypeOfValue(XCAFDimTolObjects_GeomToleranceTypeValue_Diameter);
        object->SetMaterialRequirementModifier(XCAFDimTolObjects_GeomToleranceMatReqModif_M);
        object->SetValue(0.2);
        setDrawing(object, drawPosition(), SampleDrawing::position);
        Handle(XCAFDoc_GeomTolerance) tolerance;
        label.FindAttribute(XCAFDoc_GeomTolerance::GetID(), tolerance);
        tolerance->SetObject(object);
        addDatum(label, "A", 1, "Bottom", drawDatumA(), SampleDrawing::datumA);
        addDatum(label, "B", 2, "Back", drawDatumB(), SampleDrawing::datumB);
    }

private:
    TDF_LabelSequence faces(const char* name) const {
        TDF_LabelSequence labels;
        labels.Append(_sample.FaceLabel(name));
        return labels;
    }

    static void set(const TDF_Label& label,
                    const Handle(XCAFDimTolObjects_DimensionObject) & object) {
        Handle(XCAFDoc_Dimension) dimension;
        label.FindAttribute(XCAFDoc_Dimension::GetID(), dimension);
        dimension->SetObject(object);
    }

    void addDatum(const TDF_Label& tolerance, const char* letter, int place, const char* face,
                  const PlaneDrawing& drawing, const char* name) {
        const TDF_Label label = _tool->AddDatum();
        _tool->SetDatum(faces(face), label);
        Handle(XCAFDimTolObjects_DatumObject) object = new XCAFDimTolObjects_DatumObject;
        object->SetName(text(letter));
        object->SetSemanticName(text(name));
        object->SetPosition(place);
        setDrawing(object, drawing, name);
        Handle(XCAFDoc_Datum) datum;
        label.FindAttribute(XCAFDoc_Datum::GetID(), datum);
        datum->SetObject(object);
        _tool->SetDatumToGeomTol(label, tolerance);
    }

    const SampleAssembly& _sample;
    Handle(XCAFDoc_DimTolTool) _tool;
};

}  // namespace

void addSamplePmi(const SampleAssembly& sample) {
    Annotator annotator(sample);
    annotator.AddHeight();
    annotator.AddDiameter();
    annotator.AddPosition();
}

}  // namespace kesview
